#include "model.h"
#include <stdio.h>
#include <string.h>
#include <algorithm>

const Paper g_Papers[39] = {
    { L"Letter/ANSI A", 1, 0, 8500, 11000 }, { L"Tabloid/ANSI B", 3, 0, 11000, 17000 },
    { L"ANSI Super B", 257, 0, 13000, 19000 }, { L"ANSI C", 24, 0, 17000, 22000 },
    { L"ANSI D", 25, 0, 22000, 34000 }, { L"ANSI E", 26, 0, 34000, 44000 },
    { L"ANSI F", 258, 0, 28000, 40000 }, { L"US Legal", 5, 0, 8500, 14000 },
    { L"Statement", 6, 0, 5500, 8500 }, { L"Executive", 7, 0, 7250, 10500 },
    { L"A0", 259, 1, 841, 1189 }, { L"A1", 260, 1, 594, 841 }, { L"A2", 66, 1, 420, 594 },
    { L"A3", 8, 1, 297, 420 }, { L"A4", 9, 1, 210, 297 }, { L"A5", 11, 1, 148, 210 },
    { L"B0", 261, 1, 1000, 1414 }, { L"B1", 262, 1, 707, 1000 }, { L"B2", 263, 1, 500, 707 },
    { L"B4", 12, 1, 250, 354 }, { L"B5", 13, 1, 182, 257 }, { L"Folio", 14, 0, 8500, 13000 },
    { L"Quarto", 15, 1, 215, 275 }, { L"Note", 18, 0, 8500, 11000 },
    { L"Конверт #9 ", 19, 0, 3875, 8875 }, { L"Конверт #10 ", 20, 0, 4125, 9500 },
    { L"Конверт #11 ", 21, 0, 4500, 10375 }, { L"Конверт #14 ", 23, 0, 5000, 11500 },
    { L"Конверт DL ", 27, 1, 110, 220 }, { L"Конверт C5 ", 28, 1, 162, 229 },
    { L"Конверт C3 ", 29, 1, 324, 458 }, { L"Конверт C4 ", 30, 1, 229, 324 },
    { L"Конверт C6 ", 31, 1, 114, 162 }, { L"Конверт C65 ", 32, 1, 114, 229 },
    { L"Конверт B4 ", 33, 1, 250, 353 }, { L"Конверт B5 ", 34, 1, 176, 250 },
    { L"Конверт B6 ", 35, 1, 176, 125 }, { L"Кон. Monarch", 37, 0, 3875, 7500 },
    { L"Кон. Personal", 38, 0, 3625, 6500 },
};

static WORD SpecVersion(const BYTE *r)
{
    WORD size = (WORD)Get(r, 68, 2);
    return size == 188 ? 0x0320 : size == 212 ? 0x0400 : size == 220 ? 0x0401 : (WORD)Get(r, 64, 2);
}

void Apply(BYTE *record, const Puts &puts)
{
    for (const Put &p : puts)
        if (p.text) {
            memset(record + p.off, 0, p.width * sizeof(WCHAR));
            memcpy(record + p.off, p.text, wcslen(p.text) * sizeof(WCHAR));
        } else
            memcpy(record + p.off, &p.value, p.width);    // the low bytes, the machine being little-endian
}

int Get(const BYTE *record, int off, int width)
{
    return width == 2 ? *(const short *)(record + off) : *(const int *)(record + off);
}

Bytes Factory()
{
    Bytes r(3484, 0);
    Apply(r.data(), {
        { 0, 32, 0, L"Quillora" }, { 64, 2, 0x0401 }, { 66, 2, 0x0246 }, { 68, 2, 220 },
        { 70, 2, 3264 }, { 72, 4, 0x0001FC0F }, { 76, 2, 1 }, { 78, 2, 9 }, { 80, 2, 2970 },
        { 82, 2, 2100 }, { 84, 2, 100 }, { 86, 2, 1 }, { 90, 2, 200 }, { 92, 2, 2 },
        { 94, 2, 1 }, { 96, 2, 200 }, { 98, 2, 1 }, { 102, 32, 0, L"A4" }, { 168, 4, 24 },
        { 172, 4, 2100 }, { 176, 4, 2970 }, { 220, 4, 0x4453444D }, { 224, 4, 0x2010 },
        { 228, 4, 14 }, { 236, 4, 200 }, { 248, 4, 2100 }, { 252, 4, 2970 }, { 256, 4, 1 },
        { 260, 4, 2 }, { 264, 4, 24 }, { 276, 4, 256 }, { 284, 4, 1 }, { 292, 4, 1 },
        { 296, 4, 24 }, { 308, 4, 100 }, { 312, 4, 2 }, { 316, 4, 24 }, { 328, 4, 100 },
        { 332, 4, 4 }, { 336, 4, 1 }, { 340, 4, 24 }, { 352, 4, 24 }, { 364, 4, 1 },
        { 368, 4, 1 }, { 376, 260, 0, L"c:\\QLR Output Files" },
        { 896, 260, 0, L"&[DocName]_&[Page].&[Type]" }, { 1936, 260, 0, L"%f" },
    });
    return r;
}

void ConvertInto(const BYTE *source, BYTE *target)
{
    WORD version = SpecVersion(target);
    if (!SpecVersion(source) || !version)
        return;
    const int srcSize = Get(source, 68, 2), dstSize = Get(target, 68, 2), driver = Get(target, 66, 2);
    const int srcExtra = (WORD)Get(source, 70, 2), dstExtra = (WORD)Get(target, 70, 2);
    memcpy(target, source, std::min(srcSize, dstSize));
    Apply(target, { { 0, 32, 0, L"Quillora" }, { 64, 2, version }, { 66, 2, driver }, { 68, 2, dstSize },
                    { 70, 2, dstExtra } });
    memcpy(target + dstSize, source + srcSize, std::min(srcExtra, dstExtra));
}

Bytes WriteOut(const Bytes &work, const BYTE *in)
{
    Bytes out(8192, 0xA5);
    memcpy(out.data() + 64, work.data() + 64, 8);
    if (in && Get(in, 68, 2) < 220)
        Apply(out.data(), { { 64, 2, Get(in, 64, 2) }, { 68, 2, Get(in, 68, 2) } });
    if (in && (WORD)Get(in, 70, 2) < 3264)
        Apply(out.data(), { { 66, 2, Get(in, 66, 2) }, { 70, 2, Get(in, 70, 2) } });
    ConvertInto(work.data(), out.data());    // nothing when the smaller layout has no version
    return out;
}

std::string FirstDiff(const BYTE *got, const BYTE *want, size_t n)
{
    const size_t i = std::mismatch(got, got + n, want).first - got;
    char text[80] = "";
    if (i < n)
        sprintf(text, "first difference at offset %u: %02x, expected %02x", (unsigned)i, got[i], want[i]);
    return text;
}

DWORD ExpectedCap(WORD cap, BYTE *out, int resolution, POINT paper)
{
    static const struct { WORD cap; DWORD answer; Puts data = {}; } answers[] = {
        { DC_FIELDS, 0x1FC0F }, { DC_DUPLEX, 0 }, { DC_SIZE, 220 }, { DC_EXTRA, 3264 }, { DC_VERSION, 0x0401 },
        { DC_DRIVER, 0x0246 }, { DC_TRUETYPE, 1 }, { DC_ORIENTATION, 90 }, { DC_COPIES, 1 }, { DC_COLLATE, 0 },
        { DC_PRINTRATE, 12 }, { DC_PRINTRATEUNIT, 1 }, { DC_PRINTERMEM, 0 }, { DC_STAPLE, 0 }, { DC_PRINTRATEPPM, 12 },
        { DC_COLORDEVICE, 1 }, { DC_BINS, 1, { { 0, 2, DMBIN_AUTO } } }, { DC_FILEDEPENDENCIES, 0, { { 0, 2, 0 } } },
        { DC_BINNAMES, 1, { { 0, 16, 0, L"Main paper tray" } } }, { DC_MINEXTENT, 0x00640064, { { 0, 4, 0x00640064 } } },
        { DC_MAXEXTENT, 0x3B883B88, { { 0, 4, 0x3B883B88 } } }, { DC_PAPERS, 40 }, { DC_PAPERSIZE, 40 },
        { DC_NUP, 6, { { 0, 4, 1 }, { 4, 4, 2 }, { 8, 4, 4 }, { 12, 4, 6 }, { 16, 4, 9 }, { 20, 4, 16 } } },
        { DC_PAPERNAMES, 40 }, { DC_MEDIAREADY, 40 }, { DC_ENUMRESOLUTIONS, 10 },
    };
    const LONG resolutions[10] = { 50, 72, 96, 100, 150, 200, 300, 400, 600, resolution };
    for (int i = 0; i < 40; i++) {
        const Paper &p = g_Papers[std::min(i, 38)];
        if (cap == DC_PAPERS)
            ((WORD *)out)[i] = (WORD)(i < 39 ? p.id : DMPAPER_USER);
        else if (cap == DC_PAPERNAMES || cap == DC_MEDIAREADY)
            Apply(out, { { 128 * i, 64, 0, i < 39 ? p.name : L"Custom Paper" } });
        else if (cap == DC_ENUMRESOLUTIONS && i < 10)
            ((POINT *)out)[i] = { resolutions[i], resolutions[i] };
        else if (cap == DC_PAPERSIZE)    // a row's size truncated, unlike the current paper's
            ((POINT *)out)[i] = i == 39 ? paper : p.mm ? POINT{ p.w * 10, p.h * 10 }
                                                       : POINT{ p.w * 254 / 1000, p.h * 254 / 1000 };
    }
    for (const auto &a : answers)
        if (a.cap == cap) {
            Apply(out, a.data);
            return a.answer;
        }
    return (DWORD)-1;
}

std::wstring SizeLabel(int row)
{
    wchar_t text[96];
    const auto &p = g_Papers[row];
    if (p.mm)
        swprintf(text, 96, L"%ls (%d x %d мм)", p.name, p.w, p.h);
    else
        swprintf(text, 96, L"%ls (%d.%03d x %d.%03d дюйм)", p.name, p.w / 1000, p.w % 1000, p.h / 1000, p.h % 1000);
    return text;
}

POINT PaperSize(int row, bool raw)
{
    const auto &p = g_Papers[row];
    return raw ? POINT{ p.w, p.h } : p.mm ? POINT{ p.w * 10, p.h * 10 } : POINT{ MulDiv(p.w, 254, 1000), MulDiv(p.h, 254, 1000) };
}
