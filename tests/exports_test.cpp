// The module's exports called directly, as the spooler calls them: each row a
// caller's record (bytes at offsets) and a call, checked against the result,
// the last error and the whole output buffer.
#include "driver.h"
#include "model.h"

namespace {

enum Base { NONE, PUBLIC, PUBLIC212, OWN, FOREIGN };

// A caller's record: a bare public part, or a whole record of this driver
// (FOREIGN: another driver's private part), then the row's bytes.
void MakeInput(Layout *in, int base, WORD extra, const Puts &puts)
{
    MakeLayout(in, base == PUBLIC212 ? 212 : 220, 0, base == PUBLIC212 ? 0x0400 : 0x0401, 0);
    if (base == OWN || base == FOREIGN) {
        memcpy(in->bytes, Factory().data(), 3484);
        Apply(in->bytes, { { 72, 4, 0 }, { 70, 2, extra ? extra : 3264 } });
        if (base == FOREIGN)
            Apply(in->bytes, { { 220, 4, 0 } });
    }
    Apply(in->bytes, puts);
}

// Outcome of a call as "result error needed", the error only on failure.
std::string Outcome(LONG result, LONG needed)
{
    return std::to_string(result) + " " + (result > 0 ? "-" : std::to_string(GetLastError())) + " " +
           std::to_string(needed);
}

TEST(Exports, ConvertDevMode)
{
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
        { "unknown mode", 8, 0, 220, 3264, V, true, 220, 3264, V, 3484, "0 3735928559 3484" },
    };
    for (const auto &r : rows) {
        Layout in, out;
        for (size_t i = 0; i < sizeof(in.bytes); i++)
            in.bytes[i] = (BYTE)(i * 7 + 3);
        Apply(in.bytes, { { 64, 2, r.inVersion }, { 68, 2, r.inSize }, { 70, 2, r.inExtra } });
        MakeLayout(&out, r.outSize, r.outExtra, r.outVersion, 0xA5);
        Bytes want(out.bytes, out.bytes + sizeof(out.bytes));
        if (r.mode == CDM_CONVERT351 && r.out && r.needed >= 3452)
            Apply(want.data(), { { 64, 2, 0x0320 }, { 66, 2, 0x0350 }, { 68, 2, 188 }, { 70, 2, 3264 } });
        if (r.outcome[0] == '1' && r.mode == CDM_DRIVER_DEFAULT)
            memcpy(want.data(), Factory().data(), 3484);
        else if (r.outcome[0] == '1' || r.mode == CDM_CONVERT351)
            ConvertInto(in.bytes, want.data());
        LONG needed = r.needed;
        SetLastError(0xdeadbeef);
        BOOL ok = TheDriver().ConvertDevMode((LPWSTR)r.printer, in.dm(), r.out ? out.dm() : NULL, &needed, r.mode);
        EXPECT_EQ(r.outcome, Outcome(ok, needed)) << r.name;
        EXPECT_EQ("", FirstDiff(out.bytes, want.data(), sizeof(out.bytes))) << r.name;
    }
    SetLastError(0xdeadbeef);
    EXPECT_EQ("0 87 0", Outcome(TheDriver().ConvertDevMode(NULL, NULL, NULL, NULL, CDM_CONVERT), 0)) << "no size given";
}

struct DirectRow {
    const char *name; DWORD mode; int base; Puts in; LONG result; Puts expect; short inQuality; WORD extra;
    DirectRow(const char *n, DWORD m, int b, Puts i, LONG r, Puts e, short q = 0, WORD x = 0)
        : name(n), mode(m), base(b), in(i), result(r), expect(e), inQuality(q), extra(x) {}
};

DWORD WINAPI OtherThreadsCall(void *)
{
    static Layout out;
    return TheDriver().DocumentProperties(NULL, NULL, (LPWSTR)L"Quillora", out.dm(), NULL, DM_OUT_BUFFER);
}

// Document properties without a sheet: the working record is the factory
// record with the caller's record merged (no printer handle, no printer layer),
// written out in the smaller layout of the caller's and ours.
TEST(Exports, DocumentPropertiesMerge)
{
    const DWORD IO = DM_IN_BUFFER | DM_OUT_BUFFER;
    const std::wstring x260(260, L'x'), x259(259, L'x');
    const Puts custom = { { 72, 4, 0xFC0D }, { 78, 2, 256 }, { 102, 32, 0, L"" }, { 244, 4, 1 } };
    auto with = [](Puts a, const Puts &b) { a.insert(a.end(), b.begin(), b.end()); return a; };
    const DirectRow rows[] = {
        { "landscape", IO, PUBLIC, { { 0, 32, 0, L"Other" }, { 72, 4, 1 }, { 76, 2, 2 } }, 1, { { 76, 2, 2 }, { 232, 4, 1 } } },
        { "orientation 3", IO, PUBLIC, { { 72, 4, 1 }, { 76, 2, 3 } }, 1, {} },
        { "orientation unflagged", IO, PUBLIC, { { 76, 2, 2 } }, 1, {} },
        { "quality 10", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, 10 }, { 96, 2, 7 } }, 1,
          { { 90, 2, 50 }, { 96, 2, 50 }, { 236, 4, 50 } }, 10 },
        { "quality 50", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, 50 } }, 1, { { 90, 2, 50 }, { 96, 2, 50 }, { 236, 4, 50 } } },
        { "quality 2400", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, 2400 } }, 1,
          { { 90, 2, 2400 }, { 96, 2, 2400 }, { 236, 4, 2400 } } },
        { "quality 5000", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, 5000 } }, 1,
          { { 90, 2, 2400 }, { 96, 2, 2400 }, { 236, 4, 2400 } } },
        { "quality unflagged", IO, PUBLIC, { { 90, 2, 600 } }, 1, {} },
        { "DMRES_HIGH", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, -4 } }, 1, { { 90, 2, 300 }, { 96, 2, 300 }, { 236, 4, 300 } }, 300 },
        { "DMRES_DRAFT", IO, PUBLIC, { { 72, 4, 0x400 }, { 90, 2, -1 } }, 1, { { 90, 2, 100 }, { 96, 2, 100 }, { 236, 4, 100 } }, 100 },
        { "first paper id", IO, PUBLIC, { { 72, 4, 2 }, { 78, 2, 1 } }, 1, { { 72, 4, 0x1FC03 }, { 78, 2, 1 },
          { 80, 2, 2794 }, { 82, 2, 2159 }, { 102, 32, 0, L"Letter/ANSI A" }, { 228, 4, 0 } } },
        { "last paper id", IO, PUBLIC, { { 72, 4, 2 }, { 78, 2, 38 } }, 1, { { 72, 4, 0x1FC03 }, { 78, 2, 38 },
          { 80, 2, 1651 }, { 82, 2, 921 }, { 102, 32, 0, L"Кон. Personal" }, { 228, 4, 38 } } },
        { "unknown id, known name", IO, PUBLIC, { { 72, 4, 0x10002 }, { 78, 2, 999 }, { 102, 32, 0, L"Конверт B6 " } }, 1,
          { { 72, 4, 0x1FC03 }, { 78, 2, 35 }, { 80, 2, 1250 }, { 82, 2, 1760 }, { 102, 32, 0, L"Конверт B6 " }, { 228, 4, 36 } } },
        { "name in other case", IO, PUBLIC, { { 72, 4, 0x10000 }, { 102, 32, 0, L"letter/ansi a" }, { 80, 2, 1000 }, { 82, 2, 2000 } }, 1,
          with(custom, { { 80, 2, 1000 }, { 82, 2, 2000 }, { 248, 4, 2000 }, { 252, 4, 1000 } }) },
        { "custom clamped", IO, PUBLIC, { { 72, 4, 0xC }, { 80, 2, 15241 }, { 82, 2, 99 } }, 1,
          with(custom, { { 80, 2, 15240 }, { 82, 2, 100 }, { 248, 4, 100 }, { 252, 4, 15240 } }) },
        { "custom at the limits", IO, PUBLIC, { { 72, 4, 0x8 }, { 80, 2, -5 }, { 82, 2, 15240 } }, 1,
          with(custom, { { 80, 2, 100 }, { 82, 2, 15240 }, { 248, 4, 15240 }, { 252, 4, 100 } }) },
        { "foreign, thousandths", IO, FOREIGN, { { 72, 4, 0x8 }, { 80, 2, 1000 }, { 82, 2, 2000 }, { 256, 4, 0 }, { 260, 4, 5 } }, 1,
          with(custom, { { 80, 2, 1000 }, { 82, 2, 2000 }, { 248, 4, 7874 }, { 252, 4, 3937 }, { 256, 4, 0 } }) },
        { "foreign, pixels", IO, FOREIGN, { { 72, 4, 0x408 }, { 90, 2, 300 }, { 80, 2, 2540 }, { 82, 2, 2540 }, { 256, 4, 3 } }, 1,
          with(custom, { { 90, 2, 300 }, { 96, 2, 300 }, { 236, 4, 300 }, { 80, 2, 2540 }, { 82, 2, 2540 },
                         { 248, 4, 3000 }, { 252, 4, 3000 }, { 256, 4, 3 } }) },
        { "foreign, points", IO, FOREIGN, { { 72, 4, 0x8 }, { 80, 2, 1000 }, { 82, 2, 2000 }, { 256, 4, 2 } }, 1,
          with(custom, { { 80, 2, 1000 }, { 82, 2, 2000 }, { 248, 4, 567 }, { 252, 4, 283 }, { 256, 4, 2 } }), 0, 40 },
        { "foreign, unit 7", IO, FOREIGN, { { 72, 4, 0x8 }, { 80, 2, 1000 }, { 82, 2, 2000 }, { 256, 4, 7 } }, 1,
          with(custom, { { 80, 2, 1000 }, { 82, 2, 2000 }, { 248, 4, 2000 }, { 252, 4, 1000 }, { 256, 4, 7 } }) },
        { "own record", IO, OWN, { { 228, 4, 5 }, { 232, 4, 1 }, { 236, 4, 600 }, { 240, 4, 1 }, { 244, 4, 1 },
          { 248, 4, 111 }, { 252, 4, 222 }, { 256, 4, 2 }, { 260, 4, 4 }, { 264, 4, 8 }, { 276, 4, 16 },
          { 308, 4, 55 }, { 340, 4, 8 }, { 364, 4, 0 }, { 368, 4, 0 }, { 372, 4, 1 }, { 376, 260, 0, L"d:\\out" },
          { 896, 260, 0, L"&[Page]" }, { 1416, 260, 0, L"v.exe" }, { 1936, 260, 0, L"-x %f" },
          { 2456, 512, 0, L"note" }, { 3480, 4, 1 } }, 1,
          { { 240, 4, 1 }, { 248, 4, 111 }, { 252, 4, 222 }, { 256, 4, 2 }, { 260, 4, 4 }, { 264, 4, 8 },
            { 276, 4, 16 }, { 308, 4, 55 }, { 340, 4, 8 }, { 364, 4, 0 }, { 368, 4, 0 }, { 372, 4, 1 },
            { 376, 260, 0, L"d:\\out" }, { 896, 260, 0, L"&[Page]" }, { 1416, 260, 0, L"v.exe" },
            { 1936, 260, 0, L"-x %f" }, { 3480, 4, 1 } } },
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
    for (const DirectRow &r : rows) {
        Layout in, out;
        MakeInput(&in, r.base, r.extra, r.in);
        MakeLayout(&out, 0, 0, 0, 0xA5);
        Bytes work = Factory(), want(out.bytes, out.bytes + sizeof(out.bytes));
        DOCUMENTPROPERTYHEADER h = { sizeof(h), 0, NULL, (LPWSTR)L"Quillora", r.base ? in.dm() : NULL,
                                     r.result == 3484 && r.mode ? NULL : out.dm(), 0, r.mode };
        EXPECT_EQ(r.result, TheDriver().DocumentPropertySheets(NULL, (LPARAM)&h)) << r.name;
        Apply(work.data(), r.expect);
        if (r.result == 1)
            want = WriteOut(work, r.base ? in.bytes : NULL);
        EXPECT_EQ("", FirstDiff(out.bytes, want.data(), sizeof(out.bytes))) << r.name;
        if (r.result == 3484) {
            EXPECT_EQ(3484u, h.cbOut) << r.name;
        }
        if (r.inQuality) {
            EXPECT_EQ(r.inQuality * 0x10001, (Get(in.bytes, 90, 2) & 0xFFFF) | (Get(in.bytes, 96, 2) << 16)) << r.name;
        }
    }
    EXPECT_EQ(-1, TheDriver().DocumentPropertySheets(NULL, 0)) << "no header";
    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    EXPECT_EQ(3484, TheDriver().DocumentProperties(NULL, NULL, (LPWSTR)L"Quillora", out.dm(), NULL, 0));
    EXPECT_EQ(1, TheDriver().DocumentProperties(NULL, NULL, (LPWSTR)L"Quillora", out.dm(), NULL, DM_OUT_BUFFER));
    EXPECT_EQ(Get(out.bytes, 260, 4), 5) << "the old entry point answers from the same record";

    // Another thread's call after all of these: none left the remembered
    // record's lock held.
    HANDLE other = CreateThread(NULL, 0, OtherThreadsCall, NULL, 0, NULL);
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(other, 10000)) << "another thread's call never returned";
}

// Every capability, the whole output buffer compared, so that a list that
// writes one element too many shows.
void CheckCapabilities(const char *name, HANDLE hPrinter, PDEVMODEW dm, int resolution, POINT paper, DWORD fields)
{
    static BYTE got[8192], want[8192];
    for (WORD cap = 0; cap <= 40; cap++) {
        memset(got, 0x77, sizeof(got));
        memset(want, 0x77, sizeof(want));
        DWORD answer = cap == DC_FIELDS ? fields : ExpectedCap(cap, want, resolution, paper);
        EXPECT_EQ(answer, TheDriver().DeviceCapabilities(hPrinter, NULL, cap, NULL, dm)) << name << ", capability " << cap;
        EXPECT_EQ(answer, TheDriver().DeviceCapabilities(hPrinter, NULL, cap, got, dm)) << name << ", capability " << cap;
        EXPECT_EQ("", FirstDiff(got, want, sizeof(got))) << name << ", capability " << cap;
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
        Layout in;
        MakeInput(&in, rec.base, 0, rec.in);
        CheckCapabilities(rec.name, NULL, rec.base ? in.dm() : NULL, rec.resolution, rec.paper,
                          rec.base ? in.dm()->dmFields : 0x1FC0F);
    }
}

// The sheet's reasons as the property-sheet library gives them, with a
// stand-in for the library's callback that lists the pages it is given as
// "size flags template" and whether they carry the module and the sheet state.
std::string g_pages;
int g_added, g_refuseAt = 99;
PROPSHEETUI_INFO g_info;
LPCWSTR g_title = L"Quillora";
LONG_PTR CALLBACK AddPage(HANDLE, UINT function, LPARAM page, LPARAM)
{
    const PROPSHEETPAGEW *p = (const PROPSHEETPAGEW *)page;
    if (function != CPSFUNC_ADD_PROPSHEETPAGEW || g_added == g_refuseAt)
        return 0;
    g_pages += std::to_string(p->dwSize) + " " + std::to_string(p->dwFlags) + " " +
               std::to_string((ULONG_PTR)p->pszTemplate) + (p->hInstance == TheDriver().hModule ? "" : " other module") +
               (p->lParam == (LPARAM)g_info.UserData ? "" : " other state") +
               (p->pszTitle ? (p->pszTitle == g_title ? " titled;" : " wrong title;") : ";");
    return 0x100 + ++g_added;
}

LONG Reason(const Driver &d, WORD reason, LPARAM lParam, PFN_SHEETS entry = NULL)
{
    g_info.Reason = reason;
    SetLastError(0);
    return (entry ? entry : d.DocumentPropertySheets)(&g_info, lParam);
}

TEST(Exports, SheetReasons)
{
    const Driver &d = TheDriver();
    const std::string v2 = std::to_string(PROPSHEETPAGEW_V2_SIZE);
    for (DWORD mode : { DM_IN_BUFFER | DM_OUT_BUFFER | DM_PROMPT, DM_UPDATE | DM_PROMPT, DM_PROMPT,
                        DM_OUT_BUFFER | DM_NOPERMISSION }) {
        Layout in, out;
        MakeInput(&in, PUBLIC, 0, { { 72, 4, 0x401 }, { 76, 2, 2 }, { 90, 2, -4 } });
        MakeLayout(&out, 0, 0, 0, 0xA5);
        Bytes work = Factory(), want(out.bytes, out.bytes + sizeof(out.bytes));
        DOCUMENTPROPERTYHEADER h = { sizeof(h), 0, NULL, (LPWSTR)L"Quillora", in.dm(), out.dm(), 3484, mode };
        g_info = { sizeof(g_info), 0x100, 0, 0, (HANDLE)1, AddPage, (LPARAM)&h, 0, 0 };
        g_pages.clear();
        g_added = 0;
        ASSERT_EQ(1, Reason(d, PROPSHEETUI_REASON_INIT, (LPARAM)&h)) << mode;
        EXPECT_EQ(v2 + " 0 111;" + v2 + " 0 110;" + v2 + " 0 114;", g_pages) << mode;
        EXPECT_EQ(300, in.dm()->dmPrintQuality) << "normalised in place";
        PROPSHEETUI_INFO_HEADER ih = {};
        EXPECT_EQ(1, Reason(d, PROPSHEETUI_REASON_GET_INFO_HEADER, (LPARAM)&ih));
        EXPECT_EQ(6, ih.Flags);
        EXPECT_EQ(h.pszPrinterName, ih.pTitle);
        EXPECT_EQ(d.hModule, ih.hInst);
        EXPECT_EQ(-1, Reason(d, PROPSHEETUI_REASON_GET_INFO_HEADER, 0)) << "no info header";

        SETRESULT_INFO result = { sizeof(result), 0, (HANDLE)0x999, 1 };
        EXPECT_EQ(-1, Reason(d, PROPSHEETUI_REASON_SET_RESULT, (LPARAM)&result)) << "a handle of no page";
        EXPECT_EQ("", FirstDiff(out.bytes, want.data(), sizeof(out.bytes))) << mode;
        result.hSetResult = (HANDLE)0x103;
        EXPECT_EQ(1, Reason(d, PROPSHEETUI_REASON_SET_RESULT, (LPARAM)&result));
        EXPECT_EQ(1u, g_info.Result);
        Apply(work.data(), { { 76, 2, 2 }, { 232, 4, 1 }, { 90, 2, 300 }, { 96, 2, 300 }, { 236, 4, 300 } });
        if (mode & (DM_UPDATE | DM_COPY) && !(mode & DM_NOPERMISSION))
            want = WriteOut(work, in.bytes);
        EXPECT_EQ("", FirstDiff(out.bytes, want.data(), sizeof(out.bytes))) << mode;
        EXPECT_EQ(1, Reason(d, PROPSHEETUI_REASON_DESTROY, 0));
        EXPECT_EQ(0u, g_info.UserData);
        EXPECT_EQ(-1, Reason(d, 7, 0)) << "unknown reason";
    }
    g_info.lParamInit = 0;
    EXPECT_EQ("-1 13 0", Outcome(Reason(d, PROPSHEETUI_REASON_INIT, 0), 0)) << "no document header";
    EXPECT_EQ("-1 13 0", Outcome(Reason(d, PROPSHEETUI_REASON_GET_INFO_HEADER, 0), 0)) << "no document header";
    EXPECT_EQ("-1 13 0", Outcome(Reason(d, PROPSHEETUI_REASON_INIT, 0, d.DevicePropertySheets), 0)) << "no device header";
    DOCUMENTPROPERTYHEADER h = { sizeof(h), 0, NULL, (LPWSTR)L"Quillora", NULL, NULL, 3484, DM_PROMPT };
    g_added = 0;
    g_refuseAt = 1;
    EXPECT_EQ(-1, Reason(d, PROPSHEETUI_REASON_INIT, (LPARAM)&h)) << "a page refused";
    EXPECT_NE(0u, g_info.UserData) << "the state stays for DESTROY";
    EXPECT_EQ(1, Reason(d, PROPSHEETUI_REASON_DESTROY, 0));

    // The device sheet: the About page only, titled with the printer's name.
    DEVICEPROPERTYHEADER dh = { sizeof(dh), 0, NULL, (LPWSTR)g_title };
    g_info.lParamInit = (LPARAM)&dh;
    g_pages.clear();
    g_refuseAt = 99;
    EXPECT_EQ(1, Reason(d, PROPSHEETUI_REASON_DESTROY, 0, d.DevicePropertySheets));
    EXPECT_EQ(1, Reason(d, PROPSHEETUI_REASON_INIT, 0, d.DevicePropertySheets));
    EXPECT_EQ(v2 + " 0 113 titled;", g_pages);
    SetLastError(0);
    EXPECT_EQ("-1 13 0", Outcome(d.DevicePropertySheets(NULL, 0), 0)) << "no information";

    DEVQUERYPRINT_INFO query = { sizeof(query), 1, NULL, NULL, NULL, 0, 0 };
    EXPECT_FALSE(d.DevQueryPrintEx(&query));
    for (INT event = 0; event <= 6; event++)
        EXPECT_TRUE(d.PrinterEvent((LPWSTR)L"Quillora", event, 0, 0)) << "event " << event;
}

// The installed printer as applications meet it: winspool loads the module
// from the spooler's driver folder, and the printer's own record is the layer
// between the factory record and the caller's.
#define PRINTER L"Quillora"

// The printer's level-2 information, by the two-call protocol; with a record
// given, that record is stored as the printer's own.
bool PrinterRecord(HANDLE hPrinter, Bytes *saved, const BYTE *store)
{
    DWORD cb = 0;
    GetPrinterW(hPrinter, 2, NULL, 0, &cb);
    std::vector<BYTE> buffer(cb);
    PRINTER_INFO_2W *info = (PRINTER_INFO_2W *)buffer.data();
    if (!cb || !GetPrinterW(hPrinter, 2, buffer.data(), cb, &cb) || !info->pDevMode)
        return false;
    saved->assign((BYTE *)info->pDevMode, (BYTE *)info->pDevMode + 3484);
    info->pDevMode = (DEVMODEW *)store;
    info->pSecurityDescriptor = NULL;
    return !store || SetPrinterW(hPrinter, 2, buffer.data(), 0);
}

TEST(Spooler, ThePrintersRecordIsTheMiddleLayer)
{
    HANDLE hPrinter;
    ASSERT_TRUE(OpenPrinterW((LPWSTR)PRINTER, &hPrinter, NULL)) << "printer not installed: " << GetLastError();
    Bytes printer = Factory(), saved, work = Factory();
    const Puts landscapeA3 = { { 76, 2, 2 }, { 78, 2, 8 }, { 90, 2, 600 }, { 96, 2, 600 }, { 260, 4, 3 },
                               { 896, 260, 0, L"&[Page]-printer" } };
    Apply(printer.data(), landscapeA3);
    Apply(work.data(), landscapeA3);
    Apply(work.data(), { { 72, 4, 0x1FC03 }, { 80, 2, 4200 }, { 82, 2, 2970 }, { 102, 32, 0, L"A3" },
                         { 228, 4, 13 }, { 232, 4, 1 }, { 236, 4, 600 } });
    ASSERT_TRUE(PrinterRecord(hPrinter, &saved, printer.data())) << GetLastError();

    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    EXPECT_EQ(3484, DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, NULL, NULL, 0));
    EXPECT_EQ(IDOK, DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, out.dm(), NULL, DM_OUT_BUFFER));
    EXPECT_EQ("", FirstDiff(out.bytes, WriteOut(work, NULL).data(), sizeof(out.bytes))) << "printer's record";

    CheckCapabilities("the printer's record", hPrinter, NULL, 600, { 2970, 4200 }, 0x1FC03);

    // A public-only caller's record overrides what it names, in its layout.
    Layout in;
    MakeLayout(&in, 220, 0, 0x0401, 0);
    Apply(in.bytes, { { 72, 4, DM_ORIENTATION }, { 76, 2, 1 } });
    MakeLayout(&out, 0, 0, 0, 0xA5);
    Apply(work.data(), { { 76, 2, 1 }, { 232, 4, 0 } });
    EXPECT_EQ(IDOK, DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, out.dm(), in.dm(), DM_IN_BUFFER | DM_OUT_BUFFER));
    EXPECT_EQ("", FirstDiff(out.bytes, WriteOut(work, in.bytes).data(), sizeof(out.bytes))) << "caller's record";

    Bytes ignored;
    EXPECT_TRUE(PrinterRecord(hPrinter, &ignored, saved.data()));
    ClosePrinter(hPrinter);
}

TEST(Spooler, DriverDefaultsCarryTheFirst31CharactersOfTheName)
{
    WCHAR name[] = L"Quillora long name 0123456789ABCDEFGHIJK";   // 40 characters
    PRINTER_INFO_2W pi = {};
    pi.pPrinterName = name;
    pi.pPortName = (LPWSTR)L"FILE:";
    pi.pDriverName = (LPWSTR)PRINTER;
    pi.pPrintProcessor = (LPWSTR)L"WinPrint";
    pi.pDatatype = (LPWSTR)L"RAW";
    HANDLE hLong = AddPrinterW(NULL, 2, (LPBYTE)&pi);
    if (!hLong)
        OpenPrinterW(name, &hLong, NULL);
    ASSERT_NE(nullptr, hLong) << GetLastError();
    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    Bytes want = Factory();
    want.resize(sizeof(out.bytes), 0xA5);
    memcpy(want.data(), name, 31 * sizeof(WCHAR));
    LONG needed = 3484;
    EXPECT_TRUE(TheDriver().ConvertDevMode(name, NULL, out.dm(), &needed, CDM_DRIVER_DEFAULT)) << GetLastError();
    EXPECT_EQ("", FirstDiff(out.bytes, want.data(), sizeof(out.bytes)));
    EXPECT_TRUE(DeletePrinter(hLong));
    ClosePrinter(hLong);
}

}  // namespace
