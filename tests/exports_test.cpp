// The exports called as the spooler calls them: a caller's record and a call; result, last error, whole output checked.
#include "driver.h"
#include "guarded.h"
#include "model.h"
#include <algorithm>
#include <tuple>

namespace {

enum Base { NONE, PUBLIC, PUBLIC212, OWN, FOREIGN };

// A bare public part, or a whole record of ours (FOREIGN: another driver's private part), then the row's bytes.
Layout Input(int base, WORD extra, const Puts &puts)
{
    Layout in(0, base == PUBLIC212 ? 212 : 220, 0, base == PUBLIC212 ? 0x0400 : 0x0401);
    if (base == OWN || base == FOREIGN) {
        memcpy(in.bytes, Factory().data(), 3484);
        Apply(in.bytes, { { 72, 4, 0 }, { 70, 2, extra ? extra : 3264 }, { 220, 4, base == OWN ? 0x4453444D : 0 } });
    }
    Apply(in.bytes, puts);
    return in;
}

std::string Convert(LPCWSTR printer, PDEVMODEW in, PDEVMODEW out, LONG needed, DWORD mode)
{
    const Driver &d = TheDriver();    // loading the module may set the last error
    SetLastError(0xdeadbeef);
    BOOL ok = d.ConvertDevMode((LPWSTR)printer, in, out, &needed, mode);
    return Outcome(ok, needed);
}

TEST(Exports, ConvertDevMode)
{
    // A printer whose name has 40 characters: its defaults carry the first 31.
    WCHAR name[] = L"Quillora long name 0123456789ABCDEFGHIJK";
    PRINTER_INFO_2W pi = { NULL, name, NULL, (LPWSTR)L"FILE:", (LPWSTR)L"Quillora", NULL, NULL, NULL, NULL,
                           (LPWSTR)L"WinPrint", (LPWSTR)L"RAW", NULL, NULL, 0, 0, 0, 0, 0, 0, 0, 0 };
    HANDLE hLong = AddPrinterW(NULL, 2, (LPBYTE)&pi);
    if (!hLong)
        OpenPrinterW(name, &hLong, NULL);
    ASSERT_NE(nullptr, hLong) << GetLastError();
    const WORD V = 0x0401;
    const struct {
        const char *name; DWORD mode; LPCWSTR printer; WORD inSize, inExtra, inVersion; bool out;
        WORD outSize, outExtra, outVersion; LONG needed; const char *outcome;
    } rows[] = {
        { "into a smaller layout", CDM_CONVERT, 0, 220, 3264, V, true, 212, 100, 0x0400, 312, "1 - 312" },
        { "one byte short", CDM_CONVERT, 0, 220, 3264, V, true, 212, 100, 0x0400, 311, "0 87 311" },
        { "versionless input", CDM_CONVERT, 0, 200, 0, 0, true, 212, 100, 0x0400, 999, "0 87 999" },
        { "versionless output", CDM_CONVERT, 0, 220, 3264, V, true, 200, 10, 0, 999, "0 87 999" },
        { "no output", CDM_CONVERT, 0, 220, 3264, V, false, 0, 0, 0, 8192, "0 87 8192" },
        { "from the 3.51 layout", CDM_CONVERT, 0, 188, 3264, 0x0320, true, 220, 3264, V, 3484, "1 - 3484" },
        { "public part of 212", CDM_CONVERT, 0, 212, 0, 0, true, 220, 3264, V, 3484, "1 - 3484" },
        { "size by own version", CDM_CONVERT, 0, 300, 10, V, true, 220, 3264, 0, 3600, "1 - 3484" },
        { "3.51 too small", CDM_CONVERT351, 0, 220, 3264, V, true, 0, 0, 0, 100, "0 122 3452" },
        { "3.51 without output", CDM_CONVERT351, 0, 220, 3264, V, false, 0, 0, 0, 8192, "0 122 3452" },
        { "3.51", CDM_CONVERT351, 0, 220, 3264, V, true, 0, 0, 0, 3452, "1 - 3452" },
        { "3.51 of versionless", CDM_CONVERT351, 0, 200, 0, 0, true, 0, 0, 0, 3452, "0 87 3452" },
        { "defaults too small", CDM_DRIVER_DEFAULT, L"Quillora", 0, 0, 0, true, 0, 0, 0, 3483, "0 122 3484" },
        { "defaults without output", CDM_DRIVER_DEFAULT, L"Quillora", 0, 0, 0, false, 0, 0, 0, 9000, "0 122 3484" },
        { "defaults of no printer", CDM_DRIVER_DEFAULT, L"No Such Printer", 0, 0, 0, true, 0, 0, 0, 3484, "0 13 3484" },
        { "defaults", CDM_DRIVER_DEFAULT, L"Quillora", 0, 0, 0, true, 0, 0, 0, 3484, "1 - 3484" },
        { "defaults of a long name", CDM_DRIVER_DEFAULT, name, 0, 0, 0, true, 0, 0, 0, 3484, "1 - 3484" },
        { "unknown mode", 8, 0, 220, 3264, V, true, 220, 3264, V, 3484, "0 - 3484" },
    };
    for (const auto &r : rows) {
        Layout in, out(0xA5, r.outSize, r.outExtra, r.outVersion);
        for (size_t i = 0; i < sizeof(in.bytes); i++)
            in.bytes[i] = (BYTE)(i * 7 + 3);
        Header(in.dm(), r.inSize, r.inExtra, r.inVersion);
        Bytes want(out.bytes, out.bytes + sizeof(out.bytes));
        if (r.mode == CDM_CONVERT351 && r.out && r.needed >= 3452)
            Apply(want.data(), { { 64, 2, 0x0320 }, { 66, 2, 0x0350 }, { 68, 2, 188 }, { 70, 2, 3264 } });
        if (r.outcome[0] == '1' && r.mode == CDM_DRIVER_DEFAULT) {
            memcpy(want.data(), Factory().data(), 3484);
            lstrcpynW((WCHAR *)want.data(), r.printer, 32);
        } else if (r.outcome[0] == '1' || r.mode == CDM_CONVERT351)
            ConvertInto(in.bytes, want.data());
        EXPECT_EQ(r.outcome, Convert(r.printer, in.dm(), r.out ? out.dm() : NULL, r.needed, r.mode)) << r.name;
        EXPECT_EQ("", FirstDiff(out.bytes, want.data(), sizeof(out.bytes))) << r.name;
    }
    SetLastError(0xdeadbeef);
    EXPECT_EQ("0 87 0", Outcome(TheDriver().ConvertDevMode(NULL, NULL, NULL, NULL, CDM_CONVERT), 0)) << "no size given";
    EXPECT_TRUE(DeletePrinter(hLong));
    ClosePrinter(hLong);
}

// A caller's record of any layout, converted into ours and back and handed to the exports that keep it, in
// a buffer of exactly the size its header claims against a page that ends the test program when touched.
void EveryExport(WORD size, WORD extra, WORD version, BYTE pattern)
{
    SCOPED_TRACE(testing::Message() << size << "+" << extra << " v" << version << " fill " << (int)pattern);
    const LONG honest = std::max<LONG>(size, 76) + extra;
    const LONG fromOurs = std::min<LONG>(size, 220) + std::min<LONG>(extra, 3264);
    Guarded in(honest, pattern), ours(3484, 0), theirs(honest, 0), nt(3452, 0);
    Header(in.dm(), size, extra, version)->dmFields = 0xFFFFFFFF;
    Header(theirs.dm(), size, extra, version);
    Header(ours.dm(), 220, 3264, 0);
    // A layout converts by the version its size names, else by its own.
    const bool versioned = size == 188 || size == 212 || size == 220 || version;
    // Done when both layouts have a version and anything is copied, else refused with ERROR_INVALID_PARAMETER;
    // a header too short to reach dmFields may also be refused as one without a version.
    auto check = [&](PDEVMODEW from, PDEVMODEW into, DWORD mode, int copied, LONG needed, LONG whole) {
        const std::string got = Convert(NULL, from, into, needed, mode), refused = "0 87 " + std::to_string(needed);
        const std::string want = versioned && copied > 0 ? "1 - " + std::to_string(whole) : refused;
        EXPECT_EQ(size < 76 && got == refused ? refused : want, got) << "needing " << needed;
    };
    check(in.dm(), ours.dm(), CDM_CONVERT, fromOurs, 3484, 3484);
    check(ours.dm(), theirs.dm(), CDM_CONVERT, fromOurs, honest, size + extra);
    check(in.dm(), nt.dm(), CDM_CONVERT351, std::min<int>(size, 188) + std::min<int>(extra, 3264), 3452, 3452);
    // The answer comes in the smaller layout of the caller's and ours.
    Guarded answer(std::max<LONG>(fromOurs, 76), 0);
    DOCUMENTPROPERTYHEADER h = { sizeof(h), 0, NULL, (LPWSTR)L"Quillora", in.dm(), answer.dm(), (DWORD)fromOurs,
                                 DM_IN_BUFFER | DM_OUT_BUFFER };
    SetLastError(0xdeadbeef);
    EXPECT_EQ("1 - 0", Outcome(TheDriver().DocumentPropertySheets(NULL, (LPARAM)&h), 0));
}

TEST(Exports, EveryLayoutAgainstGuardPages)
{
    // Every boundary of a header: too short for dmFields, each public size and one either side, our private size.
    for (WORD size : { 0, 72, 75, 76, 77, 96, 98, 150, 187, 188, 189, 200, 211, 212, 213, 219, 220, 221, 300, 4000 })
        for (WORD extra : { 0, 1, 8, 9, 40, 3263, 3264, 3265, 5000 })
            for (WORD version : { 0, 0x0320, 0x0401 })
                for (BYTE pattern : { 0x00, 0x41, 0xFF })
                    EveryExport(size, extra, version, pattern);
}

DWORD WINAPI OtherThreadsCall(void *out)
{
    return TheDriver().DocumentProperties(NULL, NULL, (LPWSTR)L"Quillora", (PDEVMODEW)out, NULL, DM_OUT_BUFFER);
}

// Without a sheet or printer: the factory record with the caller's merged, written out in the smaller layout.
TEST(Exports, DocumentPropertiesMerge)
{
    const DWORD IO = DM_IN_BUFFER | DM_OUT_BUFFER;
    const std::wstring x260(260, L'x'), x259(259, L'x');
    auto with = [](Puts a, const Puts &b) { a.insert(a.end(), b.begin(), b.end()); return a; };
    // A caller's length and width (tenths of a mm) and fields; the custom size merged, w and h in the record's unit.
    auto sized = [&](int fields, int length, int width, const Puts &more = {}) {
        return with({ { 72, 4, fields }, { 80, 2, length }, { 82, 2, width } }, more);
    };
    auto custom = [&](int length, int width, int w, int h, int unit = 1, const Puts &more = {}) {
        return with({ { 72, 4, 0xFC0D }, { 78, 2, 256 }, { 102, 32, 0, L"" }, { 244, 4, 1 }, { 80, 2, length },
                      { 82, 2, width }, { 248, 4, w }, { 252, 4, h }, { 256, 4, unit } }, more);
    };
    auto dpi = [](int q) { return Puts{ { 90, 2, q }, { 96, 2, q }, { 236, 4, q } }; };
    // A record of ours gives its private fields, but for those that follow the public ones, and the comment.
    const Puts own = { { 228, 4, 5 }, { 232, 4, 1 }, { 236, 4, 600 }, { 240, 4, 1 }, { 244, 4, 1 }, { 248, 4, 111 },
                       { 252, 4, 222 }, { 256, 4, 2 }, { 260, 4, 4 }, { 264, 4, 8 }, { 276, 4, 16 }, { 308, 4, 55 },
                       { 340, 4, 8 }, { 364, 4, 0 }, { 368, 4, 0 }, { 372, 4, 1 }, { 376, 260, 0, L"d:\\out" },
                       { 896, 260, 0, L"&[Page]" }, { 1416, 260, 0, L"v.exe" }, { 1936, 260, 0, L"-x %f" },
                       { 2456, 512, 0, L"note" }, { 3480, 4, 1 } };
    const struct {
        const char *name; DWORD mode; int base; Puts in; LONG result; Puts expect; short inQuality = 0; WORD extra = 0;
    } rows[] = {
        { "landscape", IO, PUBLIC, { { 0, 32, 0, L"Other" }, { 72, 4, 1 }, { 76, 2, 2 } }, 1, { { 76, 2, 2 }, { 232, 4, 1 } } },
        { "orientation 3", IO, PUBLIC, { { 72, 4, 1 }, { 76, 2, 3 } }, 1, {} },
        { "orientation unflagged", IO, PUBLIC, { { 76, 2, 2 } }, 1, {} },
        { "quality 10", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, 10 }, { 96, 2, 7 } }, 1, dpi(50), 10 },
        { "quality 50", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, 50 } }, 1, dpi(50) },
        { "quality 2400", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, 2400 } }, 1, dpi(2400) },
        { "quality 5000", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, 5000 } }, 1, dpi(2400) },
        { "quality unflagged", IO, PUBLIC, { { 90, 2, 600 } }, 1, {} },
        { "DMRES_HIGH", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, -4 } }, 1, dpi(300), 300 },
        { "DMRES_DRAFT", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, -1 } }, 1, dpi(100), 100 },
        { "first paper id over a form name", IO, PUBLIC, { { 72, 4, 0x10002 }, { 78, 2, 1 }, { 102, 32, 0, L"A4" } }, 1,
          { { 72, 4, 0x1FC03 }, { 78, 2, 1 }, { 80, 2, 2794 }, { 82, 2, 2159 }, { 102, 32, 0, L"Letter/ANSI A" },
            { 228, 4, 0 } } },
        { "last paper id", IO, PUBLIC, { { 72, 4, 2 }, { 78, 2, 38 } }, 1, { { 72, 4, 0x1FC03 }, { 78, 2, 38 },
          { 80, 2, 1651 }, { 82, 2, 921 }, { 102, 32, 0, L"Кон. Personal" }, { 228, 4, 38 } } },
        { "unknown id, known name", IO, PUBLIC, { { 72, 4, 0x10002 }, { 78, 2, 999 }, { 102, 32, 0, L"Конверт B6 " } }, 1,
          { { 72, 4, 0x1FC03 }, { 78, 2, 35 }, { 80, 2, 1250 }, { 82, 2, 1760 }, { 102, 32, 0, L"Конверт B6 " }, { 228, 4, 36 } } },
        { "name in other case", IO, PUBLIC, sized(0x10000, 1000, 2000, { { 102, 32, 0, L"letter/ansi a" } }), 1,
          custom(1000, 2000, 2000, 1000) },
        { "custom clamped", IO, PUBLIC, sized(0xC, 15241, 99), 1, custom(15240, 100, 100, 15240) },
        { "custom at the limits", IO, PUBLIC, sized(0x8, -5, 15240), 1, custom(100, 15240, 15240, 100) },
        { "foreign, thousandths", IO, FOREIGN, sized(0x8, 1000, 2000, { { 256, 4, 0 }, { 260, 4, 5 } }), 1,
          custom(1000, 2000, 7874, 3937, 0) },
        { "foreign, pixels", IO, FOREIGN, sized(0x408, 2540, 2540, { { 90, 2, 300 }, { 256, 4, 3 } }), 1,
          custom(2540, 2540, 3000, 3000, 3, dpi(300)) },
        { "foreign, points", IO, FOREIGN, sized(0x8, 1000, 2000, { { 256, 4, 2 } }), 1, custom(1000, 2000, 567, 283, 2), 0, 40 },
        { "foreign, unit 7", IO, FOREIGN, sized(0x8, 1000, 2000, { { 256, 4, 7 } }), 1, custom(1000, 2000, 2000, 1000, 7) },
        { "own record", IO, OWN, own, 1,
          with(own, { { 228, 4, 14 }, { 232, 4, 0 }, { 236, 4, 200 }, { 244, 4, 0 }, { 2456, 512, 0, L"" } }) },
        { "unterminated strings", IO, OWN, { { 376, 260, 0, x260.c_str() }, { 1936, 260, 0, x260.c_str() } }, 1,
          { { 376, 260, 0, x259.c_str() }, { 1936, 260, 0, x259.c_str() } } },
        { "other private version", IO, OWN, { { 224, 4, 0x2011 }, { 260, 4, 4 }, { 3480, 4, 1 } }, 1, { { 3480, 4, 1 } } },
        { "public part of 212", IO, PUBLIC212, { { 72, 4, 1 }, { 76, 2, 2 } }, 1, { { 76, 2, 2 }, { 232, 4, 1 } } },
        { "oversized own record", IO, OWN, { { 72, 4, 1 }, { 76, 2, 2 }, { 260, 4, 0 } }, 1,
          { { 76, 2, 2 }, { 232, 4, 1 }, { 260, 4, 0 } }, 0, 7780 },
        { "input alone is remembered", DM_IN_BUFFER, OWN, { { 72, 4, 1 }, { 76, 2, 2 }, { 260, 4, 5 } }, -1, {} },
        { "output from the remembered", DM_OUT_BUFFER, NONE, {}, 1, { { 76, 2, 2 }, { 232, 4, 1 }, { 260, 4, 5 } } },
        { "update alone", DM_UPDATE, NONE, {}, 1, { { 76, 2, 2 }, { 232, 4, 1 }, { 260, 4, 5 } } },
        { "no permission", DM_OUT_BUFFER | DM_NOPERMISSION, NONE, {}, -1, {} },
        { "size query", 0, NONE, {}, 3484, {} },
        { "no output record", IO, PUBLIC, {}, 3484, {} },
    };
    const PFN_SHEETS sheets = TheDriver().DocumentPropertySheets;    // loading the module may set the last error
    for (const auto &r : rows) {
        Layout in = Input(r.base, r.extra, r.in), out;
        Bytes work = Factory();
        DOCUMENTPROPERTYHEADER h = { sizeof(h), 0, NULL, (LPWSTR)L"Quillora", r.base ? in.dm() : NULL,
                                     r.result == 3484 && r.mode ? NULL : out.dm(), 0, r.mode };
        SetLastError(0xdeadbeef);
        EXPECT_EQ(std::to_string(r.result) + " - 0", Outcome(sheets(NULL, (LPARAM)&h), 0))
            << r.name << ": the direct call sets no last error";
        Apply(work.data(), r.expect);
        EXPECT_EQ("", FirstDiff(out.bytes, r.result == 1 ? WriteOut(work, r.base ? in.bytes : NULL).data() : Layout().bytes,
                                sizeof(out.bytes))) << r.name;
        EXPECT_EQ(r.result == 3484 ? 3484u : 0u, h.cbOut) << r.name;
        if (r.inQuality) {
            EXPECT_EQ(r.inQuality * 0x10001, (Get(in.bytes, 90, 2) & 0xFFFF) | (Get(in.bytes, 96, 2) << 16)) << r.name;
        }
    }
    SetLastError(0xdeadbeef);
    EXPECT_EQ("-1 - 0", Outcome(TheDriver().DocumentPropertySheets(NULL, 0), 0)) << "no header";
    static Layout out;    // static: a call that never returns must not write into a finished test's stack
    EXPECT_EQ(3484, TheDriver().DocumentProperties(NULL, NULL, (LPWSTR)L"Quillora", out.dm(), NULL, 0));
    // Another thread's call after all of these: none left the remembered record's lock held.
    HANDLE other = CreateThread(NULL, 0, OtherThreadsCall, out.dm(), 0, NULL);
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(other, 10000)) << "another thread's call never returned";
    EXPECT_EQ(Get(out.bytes, 260, 4), 5) << "the old entry point answers from the same record";
}

// Every capability, the whole output buffer compared, so that a list that writes one element too many shows.
void CheckCapabilities(const char *name, HANDLE hPrinter, PDEVMODEW dm, int resolution, POINT paper, DWORD fields)
{
    for (WORD cap = 0; cap <= 40; cap++) {
        SCOPED_TRACE(testing::Message() << name << ", capability " << cap);
        Bytes got(8192, 0x77), want(8192, 0x77);
        DWORD answer = cap == DC_FIELDS ? fields : ExpectedCap(cap, want.data(), resolution, paper);
        EXPECT_EQ(answer, TheDriver().DeviceCapabilities(hPrinter, NULL, cap, NULL, dm));
        EXPECT_EQ(answer, TheDriver().DeviceCapabilities(hPrinter, NULL, cap, got.data(), dm));
        EXPECT_EQ("", FirstDiff(got.data(), want.data(), got.size()));
    }
}

TEST(Exports, Capabilities)
{
    const struct { const char *name; int base; Puts in; int resolution; POINT paper; } records[] = {
        { "no record", NONE, {}, 200, { 2100, 2970 } },
        { "custom size, 250 dpi", PUBLIC, { { 72, 4, 0x40C }, { 90, 2, 250 }, { 80, 2, 1500 }, { 82, 2, 1000 } }, 250, { 1000, 1500 } },
        { "Executive rounds", PUBLIC, { { 72, 4, 2 }, { 78, 2, 7 } }, 200, { 1842, 2667 } },
        { "custom in thousandths", OWN, { { 72, 4, 0x40C }, { 90, 2, 300 }, { 248, 4, 8500 }, { 252, 4, 11000 }, { 256, 4, 0 } },
          300, { 2159, 2794 } },
        { "custom in points", OWN, { { 72, 4, 0xC }, { 248, 4, 720 }, { 252, 4, 72 }, { 256, 4, 2 } }, 200, { 2540, 254 } },
        { "custom in pixels", OWN, { { 72, 4, 0x40C }, { 90, 2, 400 }, { 248, 4, 1000 }, { 252, 4, 400 }, { 256, 4, 3 } },
          400, { 635, 254 } },
    };
    for (const auto &rec : records) {
        Layout in = Input(rec.base, 0, rec.in);
        CheckCapabilities(rec.name, NULL, rec.base ? in.dm() : NULL, rec.resolution, rec.paper,
                          rec.base ? in.dm()->dmFields : 0x1FC0F);
    }
}

// A stand-in for the property-sheet library the module loads by name: the reasons in the library's order, the pages
// listed as "size flags template title", the device page with its procedure's answers.  OK reaches a document sheet
// only as a page's SET_RESULT, as from the pages' apply step; the device sheet has none, so the library's OK counts.
enum Fault { NO_FAULT, NO_LIBRARY, NO_EXPORT, SIZING_FAILS, SIZE_CHANGES };
// What the stand-ins are told and what they saw, reset for every call; the sheet's state block outlives it.
struct Seen {
    bool ok = true;
    int fault = NO_FAULT, refuseAt = 99, added = 0;
    DWORD mode = 0;
    std::string pages = "", calls = "";
} g;
PROPSHEETUI_INFO g_info;

// The About page's procedure answers TRUE to WM_INITDIALOG and FALSE to the rest, whatever the window.
std::string About(DLGPROC proc)
{
    return " " + std::to_string(proc(NULL, WM_INITDIALOG, 0, 0)) + std::to_string(proc(NULL, WM_COMMAND, IDOK, 0));
}

LONG_PTR CALLBACK AddPage(HANDLE, UINT function, LPARAM page, LPARAM)
{
    const PROPSHEETPAGEW *p = (const PROPSHEETPAGEW *)page;
    if (function != CPSFUNC_ADD_PROPSHEETPAGEW || g.added == g.refuseAt)
        return 0;
    g.pages += std::to_string(p->dwSize) + " " + std::to_string(p->dwFlags) + " " +
               std::to_string((ULONG_PTR)p->pszTemplate) + (p->hInstance == TheDriver().hModule ? "" : " other module") +
               (p->pszTitle ? " " + Utf8(p->pszTitle) : "") +
               (p->pszTemplate == MAKEINTRESOURCEW(113) ? About(p->pfnDlgProc) :
               p->lParam == (LPARAM)g_info.UserData ? "" : " other state") + ";";
    return 0x100 + ++g.added;
}

LONG Reason(PFN_SHEETS entry, WORD reason, LPARAM lParam)
{
    g_info.Reason = reason;
    SetLastError(0xdeadbeef);
    return entry(&g_info, lParam);
}

LONG WINAPI Library(HWND, PFN_SHEETS entry, LPARAM lParam, LPDWORD pResult)
{
    const DOCUMENTPROPERTYHEADER *h =
        entry == TheDriver().DocumentPropertySheets ? (DOCUMENTPROPERTYHEADER *)lParam : NULL;
    g.mode = h ? h->fMode : 0;
    g_info = { sizeof(g_info), 0x100, 0, 0, (HANDLE)1, AddPage, lParam, 0, h ? 0 : (ULONG_PTR)g.ok };
    g.pages.insert(0, std::to_string(Reason(entry, PROPSHEETUI_REASON_INIT, lParam)) + ":");    // INIT's answer first
    PROPSHEETUI_INFO_HEADER ih = {};
    EXPECT_EQ(1, Reason(entry, PROPSHEETUI_REASON_GET_INFO_HEADER, (LPARAM)&ih));
    if (h) {
        EXPECT_EQ(std::make_tuple(6ul, h->pszPrinterName, TheDriver().hModule),
                  std::make_tuple(ih.Flags, ih.pTitle, ih.hInst));
        EXPECT_EQ(-1, Reason(entry, PROPSHEETUI_REASON_GET_INFO_HEADER, 0)) << "no info header";
        SETRESULT_INFO result = { sizeof(result), 0, (HANDLE)0x999, 1 };
        EXPECT_EQ(-1, Reason(entry, PROPSHEETUI_REASON_SET_RESULT, (LPARAM)&result)) << "a handle of no page";
        result.hSetResult = (HANDLE)0x103;
        EXPECT_EQ(1, g.ok ? Reason(entry, PROPSHEETUI_REASON_SET_RESULT, (LPARAM)&result) : 1) << "OK";
    }
    EXPECT_EQ(1, Reason(entry, PROPSHEETUI_REASON_DESTROY, 0));
    EXPECT_EQ(0u, g_info.UserData);
    EXPECT_EQ(h ? -1 : 1, Reason(entry, 7, 0)) << "another reason";
    *pResult = (DWORD)g_info.Result;
    return 1;
}

HMODULE WINAPI FakeLoadLibrary(LPCSTR name)
{
    return g.fault == NO_LIBRARY && !lstrcmpiA(name, "compstui.dll") ? NULL : LoadLibraryA(name);
}

FARPROC WINAPI FakeGetProcAddress(HMODULE h, LPCSTR name)
{
    if (IS_INTRESOURCE(name) || strcmp(name, "CommonPropertySheetUIW"))
        return GetProcAddress(h, name);
    return g.fault == NO_EXPORT ? NULL : (FARPROC)(void *)Library;
}

// The spooler's calls as "level:buffer size;"; faults: sizing failing not for a small buffer (size given), or growing.
BOOL WINAPI FakeGetPrinter(HANDLE hPrinter, DWORD level, LPBYTE buffer, DWORD cb, LPDWORD needed)
{
    g.calls += std::to_string(level) + ":" + std::to_string(cb) + ";";
    BOOL ok = GetPrinterW(hPrinter, level, buffer, cb, needed);
    if (g.fault == SIZING_FAILS && !cb)
        SetLastError(ERROR_ACCESS_DENIED);
    *needed += g.fault == SIZE_CHANGES && cb ? 8 : 0;
    return ok;
}

TEST(Exports, SheetsThroughTheLibrary)
{
    const Driver &d = TheDriver();
    ASSERT_TRUE(HookImport(L"kernel32.dll", "LoadLibraryA", (void *)FakeLoadLibrary));
    ASSERT_TRUE(HookImport(L"kernel32.dll", "GetProcAddress", (void *)FakeGetProcAddress));
    ASSERT_TRUE(HookImport(L"winspool.drv", "GetPrinterW", (void *)FakeGetPrinter));
    HANDLE hPrinter;
    ASSERT_TRUE(OpenPrinterW((LPWSTR)L"Quillora", &hPrinter, NULL));
    DWORD cb4 = 0;
    GetPrinterW(hPrinter, 4, NULL, 0, &cb4);
    const std::string v2 = std::to_string(PROPSHEETPAGEW_V2_SIZE), calls = "4:0;4:" + std::to_string(cb4) + ";";
    const std::string doc = "1:" + v2 + " 0 111;" + v2 + " 0 110;" + v2 + " 0 114;";
    const std::string about = " 10;";
    const std::string device = "1:" + v2 + " 0 113 Quillora" + about, untitled = "1:" + v2 + " 0 113" + about;
    const DWORD IOP = DM_IN_BUFFER | DM_OUT_BUFFER | DM_PROMPT;
    enum { LIBRARY, PROMPT, ADVANCED, PRINTER };
    // Entry, mode, OK or Cancel, fault -> result, pages given, mode the library saw, spooler calls, output written.
    const struct { const char *name; int entry; DWORD mode; bool ok; int fault; LONG result; std::string pages;
                   DWORD seen; std::string calls; bool writes; } rows[] = {
        { "in and out", LIBRARY, IOP, true, NO_FAULT, 1, doc, IOP, "", true },
        { "update", LIBRARY, DM_UPDATE | DM_PROMPT, true, NO_FAULT, 1, doc, DM_UPDATE | DM_PROMPT, "", true },
        { "no output asked", LIBRARY, DM_PROMPT, true, NO_FAULT, 1, doc, DM_PROMPT, "", false },
        { "no permission", LIBRARY, DM_OUT_BUFFER | DM_NOPERMISSION, true, NO_FAULT, 1, doc, 0x22, "", false },
        { "cancelled", LIBRARY, IOP, false, NO_FAULT, 0, doc, IOP, "", false },
        { "document properties, OK", PROMPT, IOP, true, NO_FAULT, IDOK, doc, IOP, "", true },
        { "document properties, Cancel", PROMPT, IOP, false, NO_FAULT, IDCANCEL, doc, IOP, "", false },
        { "document properties, no entry", PROMPT, IOP, true, NO_EXPORT, IDCANCEL, "", 0, "", false },
        { "advanced, OK", ADVANCED, 0, true, NO_FAULT, 1, doc, 0x1E, "", true },
        { "advanced, Cancel", ADVANCED, 0, false, NO_FAULT, 0, doc, 0x1E, "", false },
        { "advanced, no library", ADVANCED, 0, true, NO_LIBRARY, 0, "", 0, "", false },
        { "printer, OK", PRINTER, 0, true, NO_FAULT, TRUE, device, 0, calls, false },
        { "printer, Cancel", PRINTER, 0, false, NO_FAULT, FALSE, device, 0, calls, false },
        { "printer, sizing refused", PRINTER, 0, true, SIZING_FAILS, TRUE, untitled, 0, "4:0;", false },
        { "printer, size changed", PRINTER, 0, true, SIZE_CHANGES, TRUE, untitled, 0, calls, false },
        { "printer, no library", PRINTER, 0, true, NO_LIBRARY, FALSE, "", 0, calls, false },
    };
    Bytes work = Factory();
    Apply(work.data(), { { 76, 2, 2 }, { 232, 4, 1 }, { 90, 2, 300 }, { 96, 2, 300 }, { 236, 4, 300 } });
    for (const auto &r : rows) {
        Layout in = Input(PUBLIC, 0, { { 72, 4, 0x401 }, { 76, 2, 2 }, { 90, 2, -4 } }), out;
        DOCUMENTPROPERTYHEADER h = { sizeof(h), 0, NULL, (LPWSTR)L"Quillora", in.dm(), out.dm(), 3484, r.mode };
        g = { r.ok, r.fault };
        DWORD result = 0;
        LONG got = r.entry == LIBRARY ? (Library(NULL, d.DocumentPropertySheets, (LPARAM)&h, &result), (LONG)result)
                   : r.entry == PROMPT ? d.DocumentProperties(NULL, NULL, h.pszPrinterName, out.dm(), in.dm(), r.mode)
                   : r.entry == ADVANCED ? d.AdvancedDocumentProperties(NULL, NULL, h.pszPrinterName, out.dm(), in.dm())
                   : d.PrinterProperties(NULL, hPrinter);
        EXPECT_EQ(std::make_tuple(r.result, r.pages, r.seen, r.calls), std::make_tuple(got, g.pages, g.mode, g.calls))
            << r.name << ": result, pages, mode the library saw, spooler calls";
        EXPECT_EQ("", FirstDiff(out.bytes, r.writes ? WriteOut(work, in.bytes).data() : Layout().bytes, sizeof(out.bytes)))
            << r.name;
        EXPECT_EQ(r.seen ? 300 : -4, in.dm()->dmPrintQuality) << r.name << ": normalised in place";
    }
    ClosePrinter(hPrinter);
    g_info.lParamInit = 0;
    const PFN_SHEETS sheet = d.DocumentPropertySheets;
    EXPECT_EQ("-1 13 0", Outcome(Reason(sheet, PROPSHEETUI_REASON_INIT, 0), 0)) << "no document header";
    EXPECT_EQ("-1 13 0", Outcome(Reason(sheet, PROPSHEETUI_REASON_GET_INFO_HEADER, 0), 0)) << "no document header";
    EXPECT_EQ("-1 13 0", Outcome(Reason(d.DevicePropertySheets, PROPSHEETUI_REASON_INIT, 0), 0)) << "no device header";
    SetLastError(0xdeadbeef);
    EXPECT_EQ("-1 13 0", Outcome(d.DevicePropertySheets(NULL, 0), 0)) << "no information";
    DOCUMENTPROPERTYHEADER h = { sizeof(h), 0, NULL, (LPWSTR)L"Quillora", NULL, NULL, 3484, DM_PROMPT };
    g_info.lParamInit = (LPARAM)&h;
    g = { true, NO_FAULT, 1 };
    EXPECT_EQ(-1, Reason(sheet, PROPSHEETUI_REASON_INIT, (LPARAM)&h)) << "a page refused";
    EXPECT_NE(0u, g_info.UserData) << "the state stays for DESTROY";
    EXPECT_EQ(1, Reason(sheet, PROPSHEETUI_REASON_DESTROY, 0));
    DEVQUERYPRINT_INFO query = { sizeof(query), 1, NULL, NULL, NULL, 0, 0 };
    EXPECT_FALSE(d.DevQueryPrintEx(&query));
    for (INT event = 0; event <= 6; event++)
        EXPECT_TRUE(d.PrinterEvent((LPWSTR)L"Quillora", event, 0, 0)) << "event " << event;
}

// Through winspool, which loads the installed module: the printer's own record merged over the factory's.
TEST(Spooler, ThePrintersRecordOverTheFactorys)
{
    HANDLE hPrinter;
    ASSERT_TRUE(OpenPrinterW((LPWSTR)L"Quillora", &hPrinter, NULL)) << "printer not installed: " << GetLastError();
    Bytes printer = Factory(), saved;
    Apply(printer.data(), { { 76, 2, 2 }, { 78, 2, 8 }, { 90, 2, 600 }, { 96, 2, 600 }, { 260, 4, 3 },
                            { 896, 260, 0, L"&[Page]-printer" } });
    Bytes work = printer;
    Apply(work.data(), { { 72, 4, 0x1FC03 }, { 80, 2, 4200 }, { 82, 2, 2970 }, { 102, 32, 0, L"A3" },
                         { 228, 4, 13 }, { 232, 4, 1 }, { 236, 4, 600 } });
    ASSERT_TRUE(PrinterRecord(hPrinter, &saved, printer.data())) << GetLastError();
    Layout out;
    EXPECT_EQ(IDOK, DocumentPropertiesW(NULL, hPrinter, (LPWSTR)L"Quillora", out.dm(), NULL, DM_OUT_BUFFER));
    EXPECT_EQ("", FirstDiff(out.bytes, WriteOut(work, NULL).data(), sizeof(out.bytes))) << "printer's record";
    CheckCapabilities("the printer's record", hPrinter, NULL, 600, { 2970, 4200 }, 0x1FC03);
    EXPECT_TRUE(PrinterRecord(hPrinter, &printer, saved.data()));
    ClosePrinter(hPrinter);
}

}  // namespace
