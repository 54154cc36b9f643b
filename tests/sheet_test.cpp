// The document sheet as applications open it (winspool, DM_PROMPT, on the installed printer): each script drives
// the real pages and dialogs with messages and checks what they show; after OK the caller's record, the printer's
// default and the current profile are compared field by field with the record the script's changes must give.
#include <gtest/gtest.h>
#include <stddef.h>
#include <algorithm>
#include <functional>
#include <type_traits>
#include <windows.h>
#include <prsht.h>
#include <shlobj.h>
#include "driver.h"
#include "files.h"
#include "model.h"
#include "pictures.h"
#include "record.h"
#include "res/resource.h"
#include "ui_driver.h"

namespace {

#define PRINTER L"Quillora"
#define PROFILES_KEY L"Software\\Moravel\\Quillora\\Profile"
const LPCWSTR NAMES[] = { L"qlr A", L"qlr B", L"qlr C", L"Case A", L"_qlr renamed", L"zqlr renamed" };
// A program with a version resource, one without, a profile file, a text too long for any field; today as the
// date macro gives it, month first, and the folder the shell's folder browser starts at when given no root.
const std::wstring g_viewer = Beside(L"versioned.exe"), g_self = Beside(L"sheet_test.exe");
const std::wstring g_file = g_viewer + L".qlr", g_long(300, L'x');
const std::wstring g_date = [] {
    WCHAR text[16] = L"";
    GetDateFormatW(LOCALE_USER_DEFAULT, 0, NULL, L"MM'-'dd'-'yyyy", text, 16);
    return std::wstring(text);
}();
const std::wstring g_desktop = [] {
    WCHAR path[MAX_PATH] = L"";
    SHGetSpecialFolderPathW(NULL, path, CSIDL_DESKTOPDIRECTORY, FALSE);
    return std::wstring(path);
}();
// The class .dcx is given, as long as the lookup's buffer allows: 127 characters.
const std::wstring g_class = L"qlr.test" + std::wstring(119, L'c');

QLRDEVMODE Defaults()
{
    return *(const QLRDEVMODE *)Factory().data();
}

// "" when the records hold the same settings, else the first differing offset; what follows a string's NUL is none.
std::string Differs(const void *got, QLRDEVMODE want)
{
    QLRDEVMODE g;
    memcpy(&g, got, sizeof(g));
    auto cut = [](auto &s) { std::fill(s + wcsnlen(s, std::size(s)), s + std::size(s), 0); };
    for (QLRDEVMODE *r : { &g, &want })
        cut(r->dmPublic.dmDeviceName), cut(r->dmPublic.dmFormName), cut(r->szOutputFolder), cut(r->szFileNameMask),
            cut(r->szViewerPath), cut(r->szViewerParams), cut(r->szComments);
    return FirstDiff((const BYTE *)&g, (const BYTE *)&want, sizeof(g));
}

void SetCurrentName(LPCWSTR name)
{
    SetValue(HKEY_CURRENT_USER, PROFILES_KEY, REG_SZ, name, (lstrlenW(name) + 1) * sizeof(WCHAR));
}

std::wstring CurrentName()
{
    return StringOf(HKEY_CURRENT_USER, PROFILES_KEY);
}

// What a custom length's edit shows: inches with three decimals, millimetres with one, trailing
// zeros cut but one kept after the point; points and pixels whole.
std::wstring Length(int v, int unit)
{
    if (unit > 1)
        return std::to_wstring(v);
    int scale = unit ? 10 : 1000;
    std::wstring frac = std::to_wstring(v % scale + scale).substr(1);
    while (frac.size() > 1 && frac.back() == L'0')
        frac.pop_back();
    return std::to_wstring(v / scale) + L"." + frac;
}

// Steps per inch of the custom units; a unit outside the four keeps its numbers.
int PerInch(int unit, int dpi)
{
    return unit == 0 ? 1000 : unit == 1 ? 254 : unit == 2 ? 72 : unit == 3 ? dpi : 0;
}

// The unit list's choice: both lengths carried into the new unit at the resolution, unclamped.
void ToUnit(QLRDEVMODE &e, int unit)
{
    int from = PerInch(e.iCustomUnit, e.iResolution), to = PerInch(unit, e.iResolution);
    e.iCustomWidth = MulDiv(e.iCustomWidth, to, from), e.iCustomHeight = MulDiv(e.iCustomHeight, to, from);
    e.iCustomUnit = unit;
}

// The unit table's limits at a resolution, compared as unsigned: the largest first, then the smallest.
int Clamp(int v, int unit, int dpi)
{
    const int m = MulDiv(144000, 1000, dpi), lo[] = { 39, 10, 29, dpi },
              hi[] = { m, MulDiv(m, 254, 1000), MulDiv(m, 72, 1000), 144000 };
    return (unsigned)v > (unsigned)hi[unit] ? hi[unit] : (unsigned)v < (unsigned)lo[unit] ? lo[unit] : v;
}

// What OK writes besides the controls' values: the paper's public fields from its row or the custom size,
// the resolution and orientation, colour and depth, and whether the record was saved as a profile.
void Collected(QLRDEVMODE &e, bool saved)
{
    DEVMODEW &p = e.dmPublic;
    int per = e.bCustomPaper ? PerInch(e.iCustomUnit, e.iResolution) : 0;
    POINT size = !e.bCustomPaper ? PaperSize(e.iPaper)
               : POINT{ MulDiv(e.iCustomWidth, 254, per ? per : 254), MulDiv(e.iCustomHeight, 254, per ? per : 254) };
    p.dmFields = (p.dmFields & ~0x1000E) | (e.bCustomPaper ? 0xE : 0x10002);
    p.dmPaperSize = (short)(e.bCustomPaper ? 256 : PaperId(e.iPaper));
    p.dmPaperWidth = (short)size.x, p.dmPaperLength = (short)size.y;
    lstrcpyW(p.dmFormName, e.bCustomPaper ? L"Custom Paper" : PaperName(e.iPaper).c_str());
    p.dmPrintQuality = p.dmYResolution = (short)e.iResolution, p.dmOrientation = e.iOrientation ? 2 : 1;
    p.dmColor = 2, p.dmBitsPerPel = 32, e.m_bProfiled = saved;
}

// What the page preview is told: the paper's width and height in its own unit, landscape, crop.
std::wstring Preview(POINT paper, int landscape, int crop)
{
    return std::to_wstring(paper.x) + L" " + std::to_wstring(paper.y) + L" " + std::to_wstring(landscape) + L" " +
           std::to_wstring(crop);
}

// Every control of the three pages and six panels as the record says they show it: texts, checks, enabling,
// visibility, and which the module paints; from the pages' tables of ids, depth values and enabling rules.
std::vector<Step> View(const QLRDEVMODE &e, bool skins)
{
    std::vector<Step> v;
    auto is = [&](int where, int id, int op, int n) { v.push_back({ where, id, op, n }); };
    auto text = [&](int where, int id, const std::wstring &t) { v.push_back({ where, id, TEXT, 0, t }); };
    auto skin = [&](int where, std::initializer_list<int> ids) { for (int id : ids) skins ? is(where, id, SKIN, 1) : (void)0; };
    static const LPCWSTR units[] = { L"дюйм", L"мм", L"точек ", L"pixels" };
    static const LPCWSTR formats[] = { L"BMP Image", L"GIF Image", L"JPEG Image", L"TIFF Image", L"PCX Image",
                                       L"DCX Image" };
    auto row = [&](int page) {    // the profile row and Help: each page's first, so that a view turns pages twice
        skin(page, { IDC_SAVE_PROFILE, IDC_PROFILE_MANAGER, IDC_RESTORE_PROFILE, IDC_HELP_BUTTON });
        is(page, IDC_RESTORE_PROFILE, SHOWN, 0);
    };
    const bool custom = e.bCustomPaper;
    row(PAGE_SETUP);
    skin(PAGE_SETUP, { IDC_STANDARD_PAPER, IDC_CUSTOM_PAPER, IDC_PORTRAIT, IDC_LANDSCAPE, IDC_CROP, IDC_PREVIEW,
                       IDC_SIZE_GROUP, IDC_ORIENTATION_GROUP });
    for (int id : { IDC_PAPER_LIST, IDC_SIZE_LABEL })
        is(PAGE_SETUP, id, ON, !custom);
    for (int id : { IDC_CUSTOM_WIDTH, IDC_CUSTOM_HEIGHT, IDC_UNIT_LIST, IDC_BY_LABEL, IDC_IN_LABEL })
        is(PAGE_SETUP, id, ON, custom);
    is(PAGE_SETUP, IDC_STANDARD_PAPER, CHECK, !custom), is(PAGE_SETUP, IDC_CUSTOM_PAPER, CHECK, custom);
    is(PAGE_SETUP, IDC_PORTRAIT, CHECK, !e.iOrientation), is(PAGE_SETUP, IDC_LANDSCAPE, CHECK, e.iOrientation != 0);
    is(PAGE_SETUP, IDC_CROP, CHECK, e.bCropEdges);
    text(PAGE_SETUP, IDC_PAPER_LIST, PaperName(e.iPaper)), text(PAGE_SETUP, IDC_SIZE_LABEL, SizeLabel(e.iPaper));
    text(PAGE_SETUP, IDC_CUSTOM_WIDTH, Length(e.iCustomWidth, e.iCustomUnit));
    text(PAGE_SETUP, IDC_CUSTOM_HEIGHT, Length(e.iCustomHeight, e.iCustomUnit));
    text(PAGE_SETUP, IDC_UNIT_LIST, units[e.iCustomUnit]), text(PAGE_SETUP, IDC_RESOLUTION, std::to_wstring(e.iResolution));
    text(PAGE_SETUP, IDC_PREVIEW, Preview(custom ? POINT{ e.iCustomWidth, e.iCustomHeight } : PaperSize(e.iPaper, true),
                                          e.iOrientation, e.bCropEdges)), v.back().op = PREVIEW;

    row(FORMAT_PAGE), skin(FORMAT_PAGE, { IDC_ABOUT });
    text(FORMAT_PAGE, IDC_FORMAT_LIST, formats[e.iOutputFormat]);
    for (int f = 0; f < 6; f++)
        is(P_BMP + f, 0, SHOWN, f == e.iOutputFormat);
    // Depth radios with their values: 1 bit (and JPEG's 8) only in greyscale, above 8 only in colour; TIFF's all.
    auto depths = [&](int where, std::initializer_list<std::pair<int, int>> radios, int depth, bool grey) {
        for (auto r : radios) {
            bool greyOnly = r.second == 1 || (where == P_JPEG && r.second == 8), colourOnly = r.second > 8;
            is(where, r.first, CHECK, r.second == depth), skin(where, { r.first });
            is(where, r.first, ON, where == P_TIFF || (greyOnly ? grey : colourOnly ? !grey : true));
        }
    };
    auto box = [&](int where, int id, bool checked) { is(where, id, CHECK, checked), skin(where, { id }); };
    depths(P_BMP, { { IDC_DEPTH_1, 1 }, { IDC_DEPTH_4, 4 }, { IDC_DEPTH_8, 8 }, { IDC_DEPTH_16, 16 },
                    { IDC_DEPTH_24, 24 }, { IDC_DEPTH_32, 32 } }, e.iBmpBitsPerPixel, e.bBmpGrayscale);
    box(P_BMP, IDC_GRAYSCALE, e.bBmpGrayscale), box(P_BMP, IDC_DITHER, e.bBmpDither);
    is(P_BMP, IDC_DITHER, ON, e.iBmpBitsPerPixel <= 8);
    text(P_GIF, IDC_COLORS, std::to_wstring(e.iGifColors));
    box(P_GIF, IDC_GRAYSCALE, e.bGifGrayscale), box(P_GIF, IDC_DITHER, e.bGifDither);
    box(P_GIF, IDC_INTERLACED, e.bGifInterlaced), box(P_GIF, IDC_MULTIPAGE, e.bGifMultiPage);
    depths(P_JPEG, { { IDC_DEPTH_8, 8 }, { IDC_DEPTH_24, 24 }, { IDC_DEPTH_32, 32 } }, e.iJpegBitsPerPixel,
           e.bJpegGrayscale);
    box(P_JPEG, IDC_GRAYSCALE, e.bJpegGrayscale), box(P_JPEG, IDC_DITHER, e.bJpegDither);
    is(P_JPEG, IDC_DITHER, ON, e.iJpegBitsPerPixel == 8), text(P_JPEG, IDC_QUALITY, std::to_wstring(e.iJpegQuality));
    for (int i = 0; i < 3; i++)    // subsampling 1, 2, 4: kept in radios nobody sees
        box(P_JPEG, IDC_SUBSAMPLING_1 + i, e.iJpegSubsampling == 1 << i), is(P_JPEG, IDC_SUBSAMPLING_1 + i, SHOWN, 0);
    is(P_JPEG, IDC_DEPTH_32, SHOWN, 0);
    depths(P_TIFF, { { IDC_DEPTH_1, 1 }, { IDC_DEPTH_8, 8 }, { IDC_DEPTH_24, 24 } }, e.iTiffBitsPerPixel, false);
    box(P_TIFF, IDC_DITHER, e.bTiffDither), box(P_TIFF, IDC_MULTIPAGE, e.bTiffMultiPage);
    is(P_TIFF, IDC_DITHER, ON, e.iTiffBitsPerPixel <= 8);
    for (int code = 0; code < 7; code++) {
        bool oneBit = e.iTiffBitsPerPixel == 1;
        box(P_TIFF, IDC_COMPRESSION_NONE + code, e.iTiffCompression == code);
        is(P_TIFF, IDC_COMPRESSION_NONE + code, ON, code >= 1 && code <= 3 ? oneBit : code == 5 ? !oneBit : true);
    }
    for (int id : { IDC_QUALITY, IDC_QUALITY_SPIN, IDC_QUALITY_LABEL, IDC_PERCENT_LABEL })
        is(P_TIFF, id, ON, e.iTiffCompression == 5);
    text(P_TIFF, IDC_QUALITY, std::to_wstring(e.iTiffQuality));
    for (int where : { P_PCX, P_DCX }) {
        // Each format's depth, greyscale and dithering stand side by side in the record.
        const int *f = where == P_PCX ? &e.iPcxBitsPerPixel : &e.iDcxBitsPerPixel;
        depths(where, { { IDC_DEPTH_1, 1 }, { IDC_DEPTH_4, 4 }, { IDC_DEPTH_8, 8 }, { IDC_DEPTH_24, 24 } }, f[0], f[1]);
        box(where, IDC_GRAYSCALE, f[1]), box(where, IDC_DITHER, f[2]), is(where, IDC_DITHER, ON, f[0] <= 8);
    }
    box(P_DCX, IDC_MULTIPAGE, e.bDcxMultiPage);

    const bool show = e.bShowResult, chosen = show && e.bUseCustomViewer;
    row(OUTPUT_PAGE), skin(OUTPUT_PAGE, { IDC_BROWSE_FOLDER, IDC_MACRO, IDC_BROWSE_VIEWER });
    box(OUTPUT_PAGE, IDC_SHOW_RESULT, show), box(OUTPUT_PAGE, IDC_DEFAULT_VIEWER, !e.bUseCustomViewer);
    box(OUTPUT_PAGE, IDC_CUSTOM_VIEWER, e.bUseCustomViewer);
    is(OUTPUT_PAGE, IDC_DEFAULT_VIEWER, ON, show), is(OUTPUT_PAGE, IDC_CUSTOM_VIEWER, ON, show);
    for (int id : { IDC_VIEWER_PARAMS, IDC_PARAMS_LABEL, IDC_VIEWER_PATH, IDC_BROWSE_VIEWER })
        is(OUTPUT_PAGE, id, ON, chosen);
    for (int id : { IDC_APP_ICON, IDC_APP_DESC_LABEL, IDC_APP_VERSION_LABEL, IDC_APP_COPYRIGHT_LABEL, IDC_APP_DESC,
                    IDC_APP_VERSION, IDC_APP_COPYRIGHT })
        is(OUTPUT_PAGE, id, SHOWN, show);
    text(OUTPUT_PAGE, IDC_OUTPUT_FOLDER, e.szOutputFolder), text(OUTPUT_PAGE, IDC_FILE_MASK, e.szFileNameMask);
    text(OUTPUT_PAGE, IDC_VIEWER_PATH, e.szViewerPath), text(OUTPUT_PAGE, IDC_VIEWER_PARAMS, e.szViewerParams);
    return v;
}

// Keyboard probes, each key pressed from a control the focus is put on: TABS s the ids Tab stops at in reading
// order, each reached by Tab from the one before and left by Shift+Tab back to it; ARROWS s one radio group: from
// each radio the record leaves shown and enabled, Down and Right land on the next such one, Up and Left on the
// one before, round the group.
enum { LISTED = 100, TABS, ARROWS };
std::vector<Step> Keyboard(const Step &a, const QLRDEVMODE &e)
{
    const std::vector<Step> view = View(e, false);
    auto usable = [&](int id) {
        return a.op == TABS || std::none_of(view.begin(), view.end(), [&](const Step &s) {
            return s.where == a.where && s.id == id && (s.op == ON || s.op == SHOWN) && !s.n; });
    };
    std::vector<int> ids;
    for (WCHAR *end, *at = (WCHAR *)a.s.c_str(); *at; at = end)
        if (int id = (int)wcstol(at, &end, 10); usable(id))
            ids.push_back(id);
    std::vector<Step> v;
    auto press = [&](int from, const std::wstring &key, int shift, int to) {
        v.insert(v.end(), { { a.where, from, GO }, { a.where, 0, KEYS, shift, key }, { a.where, to, FOCUS } });
    };
    const size_t n = ids.size();
    for (size_t i = 1; a.op == TABS && i < n; i++)    // forward to the last
        press(ids[i - 1], L"\t", 0, ids[i]);
    for (size_t i = n; a.op == TABS && i-- > 1;)    // then back to the first
        press(ids[i], L"\t", 1, ids[i - 1]);
    for (size_t i = 0; a.op == ARROWS && i < 4 * n; i++)
        press(ids[i / 4], std::wstring(1, L"\x28\x27\x26\x25"[i % 4]), 0, ids[(i / 4 + (i % 4 < 2 ? 1 : n - 1)) % n]);
    return v;
}

// The profile manager as a step LISTED shows it: n the selected entry (-1 none), s the entries in order, each
// ended by "|", then the selected profile's comment.  The editing group works only while there are entries; the
// name takes at most 128 characters typed, the comment 512.
std::vector<Step> Listed(const Step &a)
{
    const std::wstring &all = a.s;
    std::vector<Step> v;
    int n = 0;
    for (size_t at = 0, bar; (bar = all.find(L'|', at)) != std::wstring::npos; at = bar + 1, n++)
        v.push_back({ MANAGER, IDC_PROFILE_LIST, ITEM, n, all.substr(at, bar - at) });
    const bool some = n > 0;
    v.push_back({ MANAGER, IDC_PROFILE_NAME, TEXT, 0, a.n < 0 || a.n >= n ? L"" : v[a.n].s });
    v.push_back({ MANAGER, IDC_PROFILE_COMMENT, TEXT, 0, all.substr(all.rfind(L'|') + 1) });
    for (int id : { IDC_DELETE_PROFILE, IDC_PROFILE_NAME, IDC_PROFILE_COMMENT, IDC_EXPORT_PROFILE, IDC_IMPORT_PROFILE })
        v.push_back({ MANAGER, id, ON, some || id == IDC_IMPORT_PROFILE });
    v.push_back({ MANAGER, IDC_PROFILE_LIST, COUNT, n }), v.push_back({ MANAGER, IDC_PROFILE_LIST, SEL, a.n });
    v.push_back({ MANAGER, IDC_PROFILE_NAME, LIMIT, 128 }), v.push_back({ MANAGER, IDC_PROFILE_COMMENT, LIMIT, 512 });
    return v;
}

// LAZY: no page opened ahead, so no view of them either; BLIND: just before OK a page shows what no record holds.
// HELP: the help control's registration points at a recorder, whose addresses (after the file) must be these.
// BROKEN_B: a profile "qlr B" whose record is cut short; NO_KEY: no profile key at all, as before the first save.
// LEAKS: ten more plays of the sheet leave the GDI objects, windows, handles and heap blocks as they were.
enum { CANCELLED = 1, WITH_B = 2, NOT_SAVED = 8, LAZY = 16, BLIND = 32, HELP = 64, BROKEN_B = 128, NO_KEY = 256,
       LEAKS = 512 };

BOOL CALLBACK CountWindow(HWND hwnd, LPARAM n)
{
    return ++*(int *)n, EnumChildWindows(hwnd, CountWindow, n), TRUE;
}

// What the process holds: GDI objects, this thread's windows, kernel handles (found by asking after every handle
// value: GetProcessHandleCount answers 0 under Wine) and the blocks in use on the heap the module allocates from.
std::vector<int> Held()
{
    int windows = 0, handles = 0, blocks = 0;
    DWORD flags;
    EnumThreadWindows(GetCurrentThreadId(), CountWindow, (LPARAM)&windows);
    for (ULONG_PTR h = 4; h < 0x10000; h += 4)
        handles += GetHandleInformation((HANDLE)h, &flags) != FALSE;
    PROCESS_HEAP_ENTRY e = {};
    HeapLock(GetProcessHeap());
    while (HeapWalk(GetProcessHeap(), &e))
        blocks += (e.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
    HeapUnlock(GetProcessHeap());
    return { GdiObjects(), windows, handles, blocks };
}

// A step of a script, or a change of the record the pages hold (after OK: what OK collects that no page showed).
// The changes in order, with what OK collects, make the record OK must give.
typedef std::function<void(QLRDEVMODE &)> Change;
struct Act : Step {
    Change change;
    Act(int where, int id, int op, int n = 0, const std::wstring &s = L"") : Step{ where, id, op, n, s } {}
    template <class F, class = std::enable_if_t<std::is_invocable_v<F, QLRDEVMODE &>>>
    Act(F f) : Step{ 0, 0, -1 }, change(f) {}
};
const Change LOOK = [](QLRDEVMODE &) {};

struct Script {
    const char *name;
    LPCWSTR profile;                    // the current profile, NULL for none
    void (*stored)(QLRDEVMODE &);       // its contents: the factory settings changed thus
    int flags;
    std::vector<Act> acts;
    LPCWSTR after = NULL;               // the current profile after OK, NULL for the same
};

#define TO(...) [](QLRDEVMODE &e) { __VA_ARGS__; }
// The second profile, "qlr B": the factory settings saved as PCX, with a comment.
const Change SECOND = TO(e = Defaults(), e.m_bProfiled = TRUE, e.iOutputFormat = 4, lstrcpyW(e.szComments, L"second"));

class Sheet : public ::testing::TestWithParam<size_t> {
protected:
    HANDLE hPrinter = NULL;
    std::wstring savedName;
    std::vector<BYTE> savedPrinter;

    void SetUp() override
    {
        SetErrorMode(SEM_NOGPFAULTERRORBOX);        // a crash ends the run instead of waiting for a debugger
        ASSERT_TRUE(OpenPrinterW((LPWSTR)PRINTER, &hPrinter, NULL));
        savedName = CurrentName();
        savedPrinter = PrinterRecord();
    }
    void TearDown() override
    {
        Clean();
        SetCurrentName(savedName.c_str());
        std::vector<BYTE> replaced;
        if (savedPrinter.size() >= QLR_RECORD_SIZE)
            ::PrinterRecord(hPrinter, &replaced, savedPrinter.data());
        ClosePrinter(hPrinter);
    }
    void Clean()
    {
        for (LPCWSTR name : NAMES)
            RegDeleteKeyW(HKEY_CURRENT_USER, (PROFILES_KEY L"\\" + std::wstring(name)).c_str());
        for (LPCWSTR key : { L"\\shell\\open\\command", L"\\shell\\open", L"\\shell", L"" })
            RegDeleteKeyW(HKEY_CLASSES_ROOT, (g_class + key).c_str());
        RegDeleteKeyW(HKEY_CLASSES_ROOT, L".dcx");
        DeleteFileW(g_file.c_str());
    }
    std::vector<BYTE> PrinterRecord()
    {
        std::vector<BYTE> record;
        return ::PrinterRecord(hPrinter, &record, NULL), record;
    }

    // The steps to play, every page made first and every control viewed after each change while the sheet is open.
    static std::vector<Step> Plan(const Script &s, QLRDEVMODE *e)
    {
        std::vector<Step> steps = { { OUTPUT_PAGE, 0, SHOWN, 1 }, { FORMAT_PAGE, 0, SHOWN, 1 },
                                    { PAGE_SETUP, 0, SHOWN, 1 } };
        bool open = !(s.flags & LAZY), collected = false;
        if (!open)
            steps.clear();
        auto add = [&](const std::vector<Step> &v) { steps.insert(steps.end(), v.begin(), v.end()); };
        for (const Act &a : s.acts) {
            if (a.change) {
                a.change(*e);
                if (open)
                    add(View(*e, false));
                continue;
            }
            if (a.op >= LISTED) {
                add(a.op == LISTED ? Listed(a) : Keyboard(a, *e));
                continue;
            }
            if (a.op == PRESS && a.n == PSBTN_OK) {
                if (open && !(s.flags & BLIND))
                    add(View(*e, true));
                Collected(*e, !(s.flags & NOT_SAVED)), collected = true;
            }
            open = open && a.op != PRESS && !(a.op == KEYS && a.where < SAVE && a.s.find_first_of(L"\r\x1b") != std::wstring::npos);
            steps.push_back(a);
        }
        if (!collected)
            Collected(*e, !(s.flags & NOT_SAVED));
        return steps;
    }

    void Run(const Script &s)
    {
        SCOPED_TRACE(s.name);
        Clean();
        QLRDEVMODE stored = Defaults(), second;
        SECOND(second);
        stored.m_bProfiled = TRUE;
        if (s.profile)
            s.stored(stored), SetValue(HKEY_CURRENT_USER, PROFILES_KEY L"\\" + std::wstring(s.profile), REG_BINARY,
                                       &stored, sizeof(stored));
        if (s.flags & (WITH_B | BROKEN_B))
            SetValue(HKEY_CURRENT_USER, PROFILES_KEY L"\\qlr B", REG_BINARY, &second, s.flags & WITH_B ? sizeof(second) : 100);
        SetCurrentName(s.profile ? s.profile : L"");
        if (s.flags & NO_KEY)
            RegDeleteKeyW(HKEY_CURRENT_USER, PROFILES_KEY);
        const std::wstring help = s.flags & HELP ? SetHelpControl(Beside(L"fakehh.dll")) : L"";
        std::vector<BYTE> before = PrinterRecord(), out(8192, 0xA5);
        QLRDEVMODE e = s.profile ? stored : Defaults();
        const std::vector<Step> steps = Plan(s, &e);
        LONG result = -100;
        auto open = [&] {
            result = DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, (DEVMODEW *)out.data(), NULL,
                                         DM_PROMPT | DM_OUT_BUFFER);
        };
        EXPECT_EQ(steps.size(), RunScript(s.name, steps, open)) << "the script stopped at this step";
        if (s.flags & LEAKS) {    // the libraries' first-use objects are made by now: ten more sheets hold no more
            const std::vector<int> held = Held();
            ASSERT_GT(held[0] * held[2], 0) << "no way to count GDI objects or handles here";
            for (int i = 0; i < 10; i++)
                ASSERT_EQ(steps.size(), RunScript(s.name, steps, open)) << "sheet " << i;
            EXPECT_EQ(held, Held()) << "GDI objects, windows, handles, heap blocks";
        }
        if (s.flags & HELP) {    // each address names the help file beside the module that asked (the spooler's copy)
            SetHelpControl(help);
            WCHAR file[MAX_PATH] = L"";
            GetModuleFileNameW(GetModuleHandleW(L"QLRDRVUI.DLL"), file, MAX_PATH);
            lstrcpyW(wcsrchr(file, L'\\') + 1, L"qlrhlp.chm::/");
            std::wstring want;
            for (LPCWSTR topic : { L"set_paper", L"set_advanced", L"set_finish", L"prof_add", L"prof_edit" })
                want += file + std::wstring(topic) + L".htm>main|";
            HMODULE fake = GetModuleHandleW(L"fakehh.dll");
            EXPECT_EQ(want, fake ? ((LPCWSTR(WINAPI *)())(void *)GetProcAddress(fake, MAKEINTRESOURCEA(2)))() : L"");
        }
        // Cancelled: only the public part may be written, the printer's default and the profile stay.
        const bool ok = !(s.flags & CANCELLED), saved = ok && !(s.flags & NOT_SAVED);
        EXPECT_EQ(ok, result == IDOK) << result;
        for (size_t i = ok ? QLR_RECORD_SIZE : 220; i < out.size(); i++)
            ASSERT_EQ(0xA5, out[i]) << "output written at byte " << i;
        EXPECT_EQ("", ok ? Differs(out.data(), e) : "") << "output record";
        std::vector<BYTE> printer = PrinterRecord();
        ASSERT_EQ(before.size(), printer.size());
        ASSERT_EQ((size_t)QLR_RECORD_SIZE, printer.size());
        if (saved && !(e.dmPublic.dmFields & DM_FORMNAME))      // the spooler keeps no form name without its bit
            memcpy(printer.data() + offsetof(DEVMODEW, dmFormName), e.dmPublic.dmFormName, CCHFORMNAME * 2);
        EXPECT_EQ("", Differs(printer.data(), saved ? e : *(QLRDEVMODE *)before.data())) << "printer's default";
        EXPECT_EQ(ok && s.after ? s.after : s.profile ? s.profile : L"", CurrentName());
        if (saved || s.profile) {
            const std::vector<BYTE> now = ValueOf(HKEY_CURRENT_USER, PROFILES_KEY L"\\" + CurrentName());
            ASSERT_EQ(sizeof(QLRDEVMODE), now.size());
            EXPECT_EQ("", Differs(now.data(), saved ? e : stored)) << "stored profile";
        }
    }
};

#define OK { PAGE_SETUP, 0, PRESS, PSBTN_OK }
#define CANCEL { PAGE_SETUP, 0, PRESS, PSBTN_CANCEL }

// Every row of the pages' tables in one sheet: each page's tool tips; every paper with its name, size label and
// preview; lengths typed into the custom width in each unit at a resolution and what they read as (-2: no number,
// so the field and the typed text stay), the value kept being that, clamped; last, as they change the format
// without a view, masks and the example name they give for a format.
std::vector<Act> EveryRow()
{
    // Each page's tool tips in the order the page adds them, each with its text; the profile row's come first.
    const std::wstring row = L"1001 Список доступных профилей пользователя|"
                             L"1002 Сохранить текущие настройки квк профиль пользователя|"
                             L"1003 Редактировать список профилей пользователя|"
                             L"1005 Восстановить настройки из текущего профиля|",
                       help = L"1017 Изображает оглавление файла помощи|";
    const std::wstring tips[] = {
        row + L"1006 Окно просмотра для выбранного формата бумаги|1007 Список доступных форматов бумаги|"
              L"1016 Размеры выбранного формата бумаги|1008 Изменение ориентации бумаги на книжную(портретную)|"
              L"1009 Изменение ориентации бумаги на альбомную(ландшафтную)|"
              L"1012 Определение DPI(точек на дюйм) для выходного рисунка.|"
              L"1013 Переключение удаления окаймления документа|" + help,
        row + help + L"1020 Выбор формата файла выходного рисунка|"
                     L"1004 Нажмите эту кнопку для просмотра информации о версии и копирайте|",
        row + help + L"1050 Папка, где будет сохранен выходной рисунок|1052 Маска имени выходного рисунк(а,ов)|"
                     L"1051 Выбор папки|1053 Выбор макро-имени для формирования имени выходного рисунка|"
                     L"1057 Пример имени выходного рисунка|"
                     L"1054 Выберите этот пункт, если Вы хотите выполнить некоторое приложение после печати|"
                     L"1058 Выполняет приложение по умолчанию для выбранного типа файла|"
                     L"1059 Выполняет выбранное приложение после печати|"
                     L"1055 Выберите приложение, выполняемое после печати|1056 Выбор приложения|",
    };
    static const struct { int unit, dpi; LPCWSTR text; int read; } lengths[] = {
        { 0, 200, L"8.27", 8270 }, { 0, 200, L"1.001", 1001 }, { 0, 200, L"0.0395", 39 }, { 0, 200, L"12", 12000 },
        { 0, 200, L"1.23456", 1234 }, { 0, 200, L"0", 0 }, { 0, 200, L"99999999999", -1 }, { 0, 200, L"abc", -2 },
        { 0, 200, L".5", -2 }, { 1, 200, L" +12.75", 127 }, { 1, 200, L"297", 2970 }, { 1, 200, L"5 mm", 50 },
        { 1, 200, L"20000", 200000 }, { 1, 200, L"0.5", 5 }, { 1, 200, L"", -2 }, { 2, 200, L"12.9", 12 },
        { 2, 200, L"60000", 60000 }, { 2, 200, L"842", 842 }, { 3, 200, L"-3", 3 }, { 3, 200, L"150", 150 },
        { 3, 600, L"200", 200 }, { 3, 50, L"200000", 200000 }, { 0, 2400, L"100", 100000 },
    };
    SYSTEMTIME t;
    GetLocalTime(&t);
    const std::wstring clock = g_date.substr(6) + L"-" + g_date.substr(0, 5) + L" " + g_date + L" " +
                               std::to_wstring(t.wHour + 100).substr(1);    // g_date is month-day-year
    const struct { int format; LPCWSTR mask; std::wstring example; } masks[] = {
        { 2, L"plain name", L"plain name" }, { 2, L"a&b&&c", L"a&b&&c" }, { 2, L"x&[Nothing]y&[]z", L"xyz" },
        { 2, L"&[docname]-&[PAGE]", L"example_document_name-01" }, { 2, L"before&[", L"before&[" },
        { 2, L"&[Page]&[", L"01&[" }, { 2, L"&[&[Year]]", L"]" }, { 2, L"a&[Page]b&[Page]c", L"a01b01c" },
        { 2, L"&[Year]-&[Month]-&[Day] &[Date] &[Hour]", clock }, { 0, L"&[Type]", L"bmp" },
        { 1, L"&[Type]", L"gif" }, { 3, L"&[Type]", L"tif" }, { 4, L"&[Type]", L"pcx" }, { 5, L"&[Type]", L"dcx" },
    };
    std::vector<Act> acts;
    for (int page = 0; page < 3; page++)
        acts.push_back({ page, 0, TIPS, 0, tips[page] });
    for (int row = 0; row < 39; row++)
        acts.insert(acts.end(), { { PAGE_SETUP, IDC_PAPER_LIST, CHOOSE, row }, { PAGE_SETUP, IDC_PAPER_LIST, TEXT, 0, PaperName(row) },
                                  { PAGE_SETUP, IDC_SIZE_LABEL, TEXT, 0, SizeLabel(row) },
                                  { PAGE_SETUP, IDC_PREVIEW, PREVIEW, 0, Preview(PaperSize(row, true), 0, 0) } });
    acts.insert(acts.end(), { TO(e.iPaper = 38), { PAGE_SETUP, IDC_CUSTOM_PAPER, CLICK }, TO(e.bCustomPaper = 1) });
    int unit = 1, dpi = 200;
    for (const auto &r : lengths) {
        if (r.dpi != dpi)    // the limits move with the resolution, the unit stays
            acts.insert(acts.end(), { { PAGE_SETUP, IDC_RESOLUTION, TYPE, 0, std::to_wstring(r.dpi) }, [r](QLRDEVMODE &e) {
                e.iResolution = r.dpi, e.iCustomWidth = Clamp(e.iCustomWidth, e.iCustomUnit, r.dpi);
                e.iCustomHeight = Clamp(e.iCustomHeight, e.iCustomUnit, r.dpi); } });
        if (r.unit != unit)
            acts.insert(acts.end(), { { PAGE_SETUP, IDC_UNIT_LIST, CHOOSE, r.unit }, [r](QLRDEVMODE &e) { ToUnit(e, r.unit); } });
        acts.push_back({ PAGE_SETUP, IDC_CUSTOM_WIDTH, TYPE, 0, r.text });
        acts.push_back(r.read == -2 ? Act(PAGE_SETUP, IDC_CUSTOM_WIDTH, TEXT, 0, r.text)
                                    : Act([r](QLRDEVMODE &e) { e.iCustomWidth = Clamp(r.read, r.unit, r.dpi); }));
        unit = r.unit, dpi = r.dpi;
    }
    for (const auto &r : masks)
        acts.insert(acts.end(), { { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, r.format },
                                  { OUTPUT_PAGE, IDC_FILE_MASK, SET, 0, r.mask }, { OUTPUT_PAGE, IDC_EXAMPLE_NAME, TEXT, 0, r.example } });
    return acts.push_back(CANCEL), acts;
}

// The open command of .dcx's class as the output page reads it (the program is the token holding the last dot,
// which only a blank or control character ends), with the test viewer found or nothing: first a command as long
// as the lookup's buffer allows, 519 characters, last none at all (the key deleted).
std::vector<Act> EveryCommand()
{
    const std::wstring quoted = L"|\"" + g_viewer + L"\"", plain = L"|" + g_viewer;
    const struct { std::wstring command; bool found; } rows[] = {
        { quoted + L" /" + std::wstring(518 - quoted.size(), L'x'), true }, { quoted + L" \"%1\"", true },
        { plain + L" %1", true }, { plain + L" /opt=a.b %1", false }, { L"|viewer %1", false },
        { quoted + std::wstring(550, L'x'), false }, { plain + L"!x %1", false }, { L"", false } };
    std::vector<Act> acts = { { OUTPUT_PAGE, 0, CLASSES, 0, L".dcx|" + g_class } };
    for (const auto &r : rows)
        acts.insert(acts.end(), { { OUTPUT_PAGE, 0, CLASSES, 0, g_class + L"\\shell\\open\\command" + r.command },
                                  { OUTPUT_PAGE, IDC_SHOW_RESULT, CLICK }, { OUTPUT_PAGE, IDC_SHOW_RESULT, CLICK },
                                  { OUTPUT_PAGE, IDC_APP_ICON, ICON, !r.found },
                                  { OUTPUT_PAGE, IDC_APP_DESC, TEXT, 0, r.found ? L"Quillora test viewer" : L"" },
                                  { OUTPUT_PAGE, IDC_APP_VERSION, TEXT, 0, r.found ? L"1.2.3.4" : L"" },
                                  { OUTPUT_PAGE, IDC_APP_COPYRIGHT, TEXT, 0, r.found ? L"(c) test copyright" : L"" } });
    return acts.push_back(CANCEL), acts;
}

const Script g_scripts[] = {
    { "every row of the pages' tables: tool tips, papers, lengths in every unit at each resolution, masks", L"qlr A",
      [](QLRDEVMODE &) {}, CANCELLED, EveryRow() },
    { "every page shown, a program's icon and texts, then the format's with none: ten sheets give back their "
      "objects, windows and handles", L"qlr A",
      TO(e.iOutputFormat = 5, e.bUseCustomViewer = 1, lstrcpyW(e.szViewerPath, g_viewer.c_str())), CANCELLED | LEAKS, {
        { OUTPUT_PAGE, IDC_APP_DESC, TEXT, 0, L"Quillora test viewer" }, { OUTPUT_PAGE, IDC_APP_ICON, ICON, 0 },
        { OUTPUT_PAGE, IDC_DEFAULT_VIEWER, CLICK }, TO(e.bUseCustomViewer = 0), { OUTPUT_PAGE, IDC_APP_ICON, ICON, 1 },
        { OUTPUT_PAGE, IDC_APP_DESC, TEXT, 0, L"" }, { OUTPUT_PAGE, IDC_APP_VERSION, TEXT, 0, L"" },
        { OUTPUT_PAGE, IDC_APP_COPYRIGHT, TEXT, 0, L"" }, CANCEL } },
    { "no profile stored yet: factory settings, a change, OK asks for a name", NULL, NULL, NO_KEY, {
        LOOK, { OUTPUT_PAGE, IDC_PROFILE_COMBO, TEXT, 0, L"<Default Profile>" },
        { PAGE_SETUP, IDC_LANDSCAPE, CLICK }, TO(e.iOrientation = 1),
        { OUTPUT_PAGE, IDC_PROFILE_COMBO, TEXT, 0, L"<Default Profile>*" }, OK,
        { SAVE, IDC_PROFILE_NAME, TEXT, 0, L"" }, { SAVE, IDC_PROFILE_COMMENT, TEXT, 0, L"" },
        { SAVE, IDC_PROFILE_NAME, SET, 0, L"qlr A" }, { SAVE, IDC_PROFILE_COMMENT, SET, 0, L"note" },
        { SAVE, IDOK, CLICK }, TO(lstrcpyW(e.szComments, L"note")) }, L"qlr A" },
    { "cancel keeps everything", L"qlr A", TO(e.iOutputFormat = 3), CANCELLED, {
        { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, 4 }, { PAGE_SETUP, IDC_LANDSCAPE, CLICK },
        { OUTPUT_PAGE, IDC_SHOW_RESULT, CLICK }, TO(e.iOutputFormat = 4, e.iOrientation = 1, e.bShowResult = 0),
        { PAGE_SETUP, IDC_PROFILE_COMBO, TEXT, 0, L"qlr A*" }, CANCEL } },
    { "BMP depth follows greyscale, dithering only up to 8 bits", L"qlr A",
      TO(e.iOutputFormat = 0, e.iBmpBitsPerPixel = 16, e.bBmpDither = 1), 0, {
        TO(e.bBmpDither = 0), { P_BMP, IDC_GRAYSCALE, CLICK }, TO(e.bBmpGrayscale = 1, e.iBmpBitsPerPixel = 8),
        { P_BMP, IDC_DEPTH_1, CLICK }, TO(e.iBmpBitsPerPixel = 1),
        { P_BMP, IDC_GRAYSCALE, CLICK }, TO(e.bBmpGrayscale = 0, e.iBmpBitsPerPixel = 4),
        { P_BMP, IDC_DITHER, CLICK }, TO(e.bBmpDither = 1), OK } },
    { "GIF colours 2 to 256", L"qlr A", TO(e.iOutputFormat = 1, e.iGifColors = 200), 0, {
        LOOK, { P_GIF, IDC_COLORS, TYPE, 0, L"1" }, TO(e.iGifColors = 2), { P_GIF, IDC_COLORS, TYPE, 0, L"999" },
        TO(e.iGifColors = 256), { P_GIF, IDC_COLORS, TYPE, 0, L"" }, LOOK, { P_GIF, IDC_INTERLACED, CLICK },
        { P_GIF, IDC_MULTIPAGE, CLICK }, TO(e.bGifInterlaced = 1, e.bGifMultiPage = 0), OK } },
    { "JPEG greyscale switches the depth; quality falls back to 75", L"qlr A", TO(e.iJpegSubsampling = 4), BLIND, {
        { P_JPEG, IDC_GRAYSCALE, CLICK }, TO(e.bJpegGrayscale = 1, e.iJpegBitsPerPixel = 8),
        { P_JPEG, IDC_DITHER, CLICK }, TO(e.bJpegDither = 1),
        { P_JPEG, IDC_GRAYSCALE, CLICK }, TO(e.bJpegGrayscale = 0, e.iJpegBitsPerPixel = 24, e.bJpegDither = 0),
        { P_JPEG, IDC_QUALITY, SET, 0, L"" }, OK, TO(e.iJpegQuality = 75) } },
    { "TIFF compression and dithering follow the depth", L"qlr A",
      TO(e.iOutputFormat = 3, e.iTiffBitsPerPixel = 1, e.iTiffCompression = 1, e.bTiffDither = 1), 0, {
        LOOK, { P_TIFF, IDC_DEPTH_24, CLICK }, TO(e.iTiffBitsPerPixel = 24, e.iTiffCompression = 4, e.bTiffDither = 0),
        { P_TIFF, IDC_COMPRESSION_JPEG, CLICK }, TO(e.iTiffCompression = 5),
        { P_TIFF, IDC_QUALITY, SET, 0, L"42" }, { P_TIFF, IDC_MULTIPAGE, CLICK },
        TO(e.iTiffQuality = 42, e.bTiffMultiPage = 0), OK } },
    { "TIFF at 1 bit shows JPEG compression as CCITT 4; dithering ticked outlives a depth chosen again", L"qlr A",
      TO(e.iOutputFormat = 3, e.iTiffBitsPerPixel = 1, e.iTiffCompression = 5), 0, {
        TO(e.iTiffCompression = 3), { P_TIFF, IDC_DITHER, CLICK }, { P_TIFF, IDC_DEPTH_1, CLICK }, TO(e.bTiffDither = 1),
        OK } },
    { "PCX: unknown depth shows 24, greyscale refreshes the depth", L"qlr A",
      TO(e.iOutputFormat = 4, e.iPcxBitsPerPixel = 16, e.bPcxDither = 1), 0, {
        TO(e.iPcxBitsPerPixel = 24, e.bPcxDither = 0),
        { P_PCX, IDC_GRAYSCALE, CLICK }, TO(e.bPcxGrayscale = 1, e.iPcxBitsPerPixel = 8),
        { P_PCX, IDC_DEPTH_1, CLICK }, { P_PCX, IDC_GRAYSCALE, CLICK }, TO(e.bPcxGrayscale = 0, e.iPcxBitsPerPixel = 4),
        OK } },
    { "PCX greyscale without a depth of its own shows 8", L"qlr A",
      TO(e.iOutputFormat = 4, e.iPcxBitsPerPixel = 2, e.bPcxGrayscale = 1, e.bPcxDither = 1), 0, {
        TO(e.iPcxBitsPerPixel = 8), { P_PCX, IDC_DEPTH_1, CLICK }, TO(e.iPcxBitsPerPixel = 1), OK } },
    { "DCX: unticking only the multi-page box survives OK", L"qlr A", TO(e.iOutputFormat = 5, e.bDcxDither = 1), 0, {
        TO(e.bDcxDither = 0), { P_DCX, IDC_MULTIPAGE, CLICK }, TO(e.bDcxMultiPage = 0), OK } },
    { "switching formats keeps each format's options", L"qlr A", [](QLRDEVMODE &) {}, 0, {
        { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, 3 }, TO(e.iOutputFormat = 3),
        { P_TIFF, IDC_DEPTH_1, CLICK }, { P_TIFF, IDC_COMPRESSION_PACKBIT, CLICK }, { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, 1 },
        { P_GIF, IDC_INTERLACED, CLICK }, { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, 4 }, { P_PCX, IDC_GRAYSCALE, CLICK },
        { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, 5 }, { P_DCX, IDC_DEPTH_4, CLICK }, { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, 3 },
        TO(e.iTiffBitsPerPixel = 1, e.iTiffCompression = 6, e.bGifInterlaced = 1, e.bPcxGrayscale = 1,
           e.iPcxBitsPerPixel = 8, e.iDcxBitsPerPixel = 4), OK } },
    { "no format chosen: BMP shown, JPEG collected", L"qlr A", TO(e.iOutputFormat = 3), BLIND, {
        { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, -1 }, { P_BMP, 0, SHOWN, 1 }, { P_TIFF, 0, SHOWN, 0 }, OK,
        TO(e.iOutputFormat = 2) } },
    { "paper list, custom size, resolution typed and chosen, orientation", L"qlr A", [](QLRDEVMODE &) {}, 0, {
        { PAGE_SETUP, IDC_PAPER_LIST, COUNT, 39 }, { PAGE_SETUP, IDC_PAPER_LIST, CHOOSE, 0 }, TO(e.iPaper = 0),
        { PAGE_SETUP, IDC_CUSTOM_PAPER, CLICK }, TO(e.bCustomPaper = 1), { PAGE_SETUP, IDC_UNIT_LIST, CHOOSE, 2 },
        TO(ToUnit(e, 2)), { PAGE_SETUP, IDC_UNIT_LIST, CHOOSE, 1 }, TO(ToUnit(e, 1)), { PAGE_SETUP, IDC_UNIT_LIST, CHOOSE, 0 },
        TO(ToUnit(e, 0)), { PAGE_SETUP, IDC_CUSTOM_WIDTH, TYPE, 0, L" +8.27" }, { PAGE_SETUP, IDC_CUSTOM_HEIGHT, TYPE, 0, L"11.6905" },
        TO(e.iCustomWidth = 8270, e.iCustomHeight = 11690),
        { PAGE_SETUP, IDC_RESOLUTION, TYPE, 0, L"9999" }, TO(e.iResolution = 2400),
        { PAGE_SETUP, IDC_RESOLUTION, TYPE, 0, L"abc" }, TO(e.iResolution = 200),
        { PAGE_SETUP, IDC_RESOLUTION, CHOOSE, 6 }, { PAGE_SETUP, IDC_LANDSCAPE, CLICK }, { PAGE_SETUP, IDC_CROP, CLICK },
        TO(e.iResolution = 300, e.iOrientation = 1, e.bCropEdges = 1), OK } },
    { "pixels keep their number and meet the limits of the resolution", L"qlr A",
      TO(e.bCustomPaper = 1, e.iCustomUnit = 0, e.iCustomWidth = 750, e.iCustomHeight = 11000), 0, {
        LOOK, { PAGE_SETUP, IDC_UNIT_LIST, CHOOSE, 3 }, TO(ToUnit(e, 3)),
        { PAGE_SETUP, IDC_CUSTOM_WIDTH, LEAVE }, TO(e.iCustomWidth = 200),
        { PAGE_SETUP, IDC_RESOLUTION, CHOOSE, 8 }, TO(e.iResolution = 600, e.iCustomWidth = 600), OK } },
    { "a stored paper past the table shows A4; an odd resolution its number", L"qlr A",
      TO(e.iPaper = 39, e.iResolution = e.dmPublic.dmPrintQuality = e.dmPublic.dmYResolution = 120), 0, {
        TO(e.iPaper = 14), { PAGE_SETUP, IDC_RESOLUTION, CHOOSE, 4 }, TO(e.iResolution = 150), OK } },
    { "output page: enabling, hiding, the example", L"qlr A", TO(e.bShowResult = 0), 0, {
        LOOK, { OUTPUT_PAGE, IDC_EXAMPLE_NAME, TEXT, 0, L"example_document_name_01.jpg" },
        { OUTPUT_PAGE, IDC_SHOW_RESULT, CLICK }, TO(e.bShowResult = 1),
        { OUTPUT_PAGE, IDC_CUSTOM_VIEWER, CLICK }, TO(e.bUseCustomViewer = 1),
        { OUTPUT_PAGE, IDC_FILE_MASK, SET, 0, L"&[Date]" }, { OUTPUT_PAGE, IDC_EXAMPLE_NAME, TEXT, 0, g_date },
        { OUTPUT_PAGE, IDC_FILE_MASK, SET, 0, L"a&b&[PAGE]&[]&[Pa\u00ADge]&[x&[Year]]-&[Type]&[Page" },
        { OUTPUT_PAGE, IDC_EXAMPLE_NAME, TEXT, 0, L"a&b01]-jpg&[Page" }, { OUTPUT_PAGE, IDC_OUTPUT_FOLDER, SET, 0, L"d:\\images" },
        { OUTPUT_PAGE, IDC_VIEWER_PARAMS, SET, 0, L"/view %f" },
        TO(lstrcpyW(e.szFileNameMask, L"a&b&[PAGE]&[]&[Pa\u00ADge]&[x&[Year]]-&[Type]&[Page");
           lstrcpyW(e.szOutputFolder, L"d:\\images"), lstrcpyW(e.szViewerParams, L"/view %f")), OK } },
    { "the folder browser accepted", L"qlr A", [](QLRDEVMODE &) {}, 0, {
        { OUTPUT_PAGE, IDC_BROWSE_FOLDER, CLICK }, { FOLDER_DLG, IDOK, CLICK },
        TO(lstrcpyW(e.szOutputFolder, g_desktop.c_str())), OK } },
    { "the macro menu replaces the selected text", L"qlr A", TO(e.iOutputFormat = 3), 0, {
        { OUTPUT_PAGE, IDC_FILE_MASK, SET, 0, L"abcXYZ" }, { OUTPUT_PAGE, IDC_FILE_MASK, SELECT, MAKELONG(3, 6) },
        { OUTPUT_PAGE, IDC_MACRO, CLICK }, { MENU, 0, KEY, 0x0422 },
        { OUTPUT_PAGE, IDC_EXAMPLE_NAME, TEXT, 0, L"abctif" }, TO(lstrcpyW(e.szFileNameMask, L"abc&[Type]")), OK } },
    { "the program associated with the format, found at full length and in every form of command", L"qlr A",
      TO(e.iOutputFormat = 5, e.bUseCustomViewer = 1), CANCELLED, EveryCommand() },
    { "choosing profiles from the list", L"qlr A", TO(e.iOutputFormat = 3), WITH_B, {
        { PAGE_SETUP, IDC_PROFILE_COMBO, COUNT, 3 }, { PAGE_SETUP, IDC_PROFILE_COMBO, ITEM, 2, L"qlr B" },
        { PAGE_SETUP, IDC_PROFILE_COMBO, CHOOSE, 0 }, TO(e = Defaults()), { FORMAT_PAGE, IDC_PROFILE_COMBO, CHOOSE, 2 },
        SECOND, { OUTPUT_PAGE, IDC_PROFILE_COMBO, TEXT, 0, L"qlr B" }, { PAGE_SETUP, IDC_CROP, CLICK },
        TO(e.bCropEdges = 1), { OUTPUT_PAGE, IDC_PROFILE_COMBO, TEXT, 0, L"qlr B*" }, OK }, L"qlr B" },
    { "save dialog: blank name, a name that exists, a name the store refuses", L"qlr A",
      TO(lstrcpyW(e.szComments, L"first")), WITH_B, {
        { PAGE_SETUP, IDC_SAVE_PROFILE, CLICK },
        { SAVE, IDC_PROFILE_NAME, TEXT, 0, L"qlr A" }, { SAVE, IDC_PROFILE_COMMENT, TEXT, 0, L"first" },
        { SAVE, IDC_PROFILE_NAME, LIMIT, 128 }, { SAVE, IDC_PROFILE_COMMENT, LIMIT, 512 },
        { SAVE, IDC_PROFILE_COMMENT, SET, 0, L"other" }, { SAVE, IDC_PROFILE_NAME, SET, 0, L"   " },
        { SAVE, IDC_PROFILE_COMMENT, GO }, { SAVE, IDOK, CLICK },
        { BOX, 0xFFFF, TEXT, 0, L"Вы должны определить имя профиля       " }, { BOX, 0, TEXT, 0, L"Error" },
        { BOX, IDOK, CLICK }, { SAVE, IDC_PROFILE_NAME, FOCUS }, { SAVE, IDC_PROFILE_NAME, SET, 0, L"QLR b" },
        { SAVE, IDC_PROFILE_COMMENT, GO }, { SAVE, IDOK, CLICK },
        { BOX, 0xFFFF, TEXT, 0, L"Профиль с таким именем существует.\nВы хотите заменить его?           " },
        { BOX, 0, TEXT, 0, L"Add profile..." }, { BOX, IDNO, CLICK }, { SAVE, IDC_PROFILE_NAME, FOCUS },
        { SAVE, IDC_PROFILE_NAME, SET, 0, L"\\qlr bad" },
        { SAVE, IDOK, CLICK }, { BOX, 0xFFFF, TEXT, 0, L"Ошибка сохранения профиля!            " },
        { BOX, 0, TEXT, 0, L"Error" }, { BOX, IDOK, CLICK }, { SAVE, IDCANCEL, CLICK },
        { PAGE_SETUP, IDC_PROFILE_COMBO, TEXT, 0, L"qlr A" }, { PAGE_SETUP, IDC_SAVE_PROFILE, CLICK },
        { SAVE, IDC_PROFILE_COMMENT, TEXT, 0, L"first" }, { SAVE, IDC_PROFILE_NAME, SET, 0, L"  qlr C  " },
        { SAVE, IDC_PROFILE_COMMENT, SET, 0, L"line 1\r\nline 2" },
        { SAVE, IDOK, CLICK }, { OUTPUT_PAGE, IDC_PROFILE_COMBO, TEXT, 0, L"qlr C" }, { PAGE_SETUP, IDC_CROP, CLICK },
        TO(e.bCropEdges = 1, lstrcpyW(e.szComments, L"line 1\r\nline 2")),
        { FORMAT_PAGE, IDC_PROFILE_COMBO, TEXT, 0, L"qlr C*" }, OK }, L"qlr C" },
    { "the name asked for at OK refused: the record goes out unsaved", NULL, NULL, NOT_SAVED, {
        { PAGE_SETUP, IDC_CROP, CLICK }, TO(e.bCropEdges = 1), OK, { SAVE, IDCANCEL, CLICK } }, L"" },
    { "saved again under the profile's name in other letters", L"Case A", TO(e.iOutputFormat = 3), 0, {
        { PAGE_SETUP, IDC_LANDSCAPE, CLICK }, TO(e.iOrientation = 1),
        { PAGE_SETUP, IDC_PROFILE_COMBO, TEXT, 0, L"Case A*" }, { PAGE_SETUP, IDC_SAVE_PROFILE, CLICK },
        { SAVE, IDC_PROFILE_NAME, TEXT, 0, L"Case A" }, { SAVE, IDC_PROFILE_NAME, SET, 0, L"case a" }, { SAVE, IDOK, CLICK },
        { BOX, IDYES, CLICK }, { PAGE_SETUP, IDC_PROFILE_COMBO, TEXT, 0, L"Case A" },
        { OUTPUT_PAGE, IDC_PROFILE_COMBO, TEXT, 0, L"Case A" }, OK } },
    { "manager: choose, rename, refuse a taken name, delete to the end, import into the empty list", L"qlr A",
      TO(e.iOutputFormat = 3, lstrcpyW(e.szComments, L"first")), WITH_B, {
        { PAGE_SETUP, IDC_PROFILE_MANAGER, CLICK }, { MANAGER, 0, LISTED, 0, L"qlr A|qlr B|first" },
        { MANAGER, IDC_EXPORT_PROFILE, CLICK }, { FILE_DLG, 0x47c, SET, 0, g_file }, { FILE_DLG, IDOK, CLICK },
        { MANAGER, IDC_PROFILE_LIST, CHOOSE, 1 }, { MANAGER, 0, LISTED, 1, L"qlr A|qlr B|second" },
        { MANAGER, IDC_PROFILE_LIST, CHOOSE, 0 }, { MANAGER, IDC_PROFILE_NAME, TYPE, 0, L"  \\qlr renamed  " },
        { MANAGER, IDC_PROFILE_NAME, TEXT, 0, L"_qlr renamed" }, { MANAGER, IDC_PROFILE_NAME, TYPE, 0, L"zqlr renamed" },
        { MANAGER, 0, LISTED, 1, L"qlr B|zqlr renamed|first" }, { MANAGER, IDC_PROFILE_NAME, TYPE, 0, L"QLR B" },
        { MANAGER, IDC_PROFILE_NAME, SET, 0, L"zqlr renamed" }, { MANAGER, 0, LISTED, 1, L"qlr B|zqlr renamed|first" },
        { MANAGER, IDC_DELETE_PROFILE, CLICK }, { BOX, 0, TEXT, 0, L"Edit profile..." },
        { BOX, 0xFFFF, TEXT, 0, L"Вы хотите удалить выбранный профиль?          " }, { BOX, IDYES, CLICK },
        { MANAGER, 0, LISTED, 0, L"qlr B|second" }, { MANAGER, IDC_DELETE_PROFILE, CLICK }, { BOX, IDYES, CLICK },
        { MANAGER, 0, LISTED, -1, L"" }, { MANAGER, IDC_IMPORT_PROFILE, CLICK }, { FILE_DLG, 0x47c, SET, 0, g_file },
        { FILE_DLG, IDOK, CLICK }, { MANAGER, 0, LISTED, 0, L"qlr A|first" },
        { MANAGER, IDCANCEL, CLICK }, { PAGE_SETUP, IDC_PROFILE_COMBO, TEXT, 0, L"<Default Profile>" }, TO(e = Defaults()),
        OK, { SAVE, IDC_PROFILE_NAME, TEXT, 0, L"" }, { SAVE, IDC_PROFILE_NAME, SET, 0, L"qlr C" }, { SAVE, IDOK, CLICK } },
      L"qlr C" },
    { "manager: a profile that cannot be read, renamed or given a comment", L"qlr A",
      TO(lstrcpyW(e.szComments, L"first")), CANCELLED | BROKEN_B, {
        { PAGE_SETUP, IDC_PROFILE_MANAGER, CLICK }, { MANAGER, IDC_PROFILE_LIST, CHOOSE, 1 },
        { MANAGER, IDC_PROFILE_LIST, SEL, 1 }, { MANAGER, IDC_PROFILE_NAME, TEXT, 0, L"qlr A" },
        { MANAGER, IDC_PROFILE_COMMENT, TEXT, 0, L"first" }, { MANAGER, IDC_PROFILE_COMMENT, TYPE, 0, L"lost" },
        { MANAGER, IDC_PROFILE_NAME, TYPE, 0, L"qlr C" }, { MANAGER, 0, LISTED, 1, L"qlr A|qlr B|lost" },
        { MANAGER, IDC_PROFILE_LIST, CHOOSE, 0 }, { MANAGER, 0, LISTED, 0, L"qlr A|qlr B|first" },
        { MANAGER, IDCANCEL, CLICK }, CANCEL } },
    { "manager: the current profile second in the list: export, change the comment, import over it", L"qlr C",
      TO(e.iOutputFormat = 3, lstrcpyW(e.szComments, L"first")), WITH_B, {
        { OUTPUT_PAGE, IDC_PROFILE_MANAGER, CLICK },
        { MANAGER, IDC_EXPORT_PROFILE, CLICK }, { FILE_DLG, 0x47c, SET, 0, g_file },
        { FILE_DLG, IDOK, CLICK }, { MANAGER, IDC_PROFILE_COMMENT, TYPE, 0, L"changed" }, { MANAGER, IDC_IMPORT_PROFILE, CLICK },
        { FILE_DLG, 0x47c, SET, 0, g_file }, { FILE_DLG, IDOK, CLICK }, { MANAGER, 0, LISTED, 1, L"qlr B|qlr C|first" },
        { MANAGER, IDOK, CLICK }, OK } },
    { "each Help button opens its own topic", L"qlr A", [](QLRDEVMODE &) {}, CANCELLED | HELP, {
        { PAGE_SETUP, IDC_HELP_BUTTON, CLICK }, { FORMAT_PAGE, IDC_HELP_BUTTON, CLICK },
        { OUTPUT_PAGE, IDC_HELP_BUTTON, CLICK }, { PAGE_SETUP, IDC_SAVE_PROFILE, CLICK }, { SAVE, IDC_HELP_BUTTON, CLICK },
        { SAVE, IDCANCEL, CLICK }, { PAGE_SETUP, IDC_PROFILE_MANAGER, CLICK }, { MANAGER, IDC_HELP_BUTTON, CLICK },
        { MANAGER, IDCANCEL, CLICK }, CANCEL } },
    { "a change made before a page is first shown still counts at OK", L"qlr A", [](QLRDEVMODE &) {}, LAZY, {
        { PAGE_SETUP, IDC_CROP, CLICK }, TO(e.bCropEdges = 1), { OUTPUT_PAGE, 0, SHOWN, 1 }, OK,
        TO(e.dmPublic.dmBitsPerPel = 24) } },    // the format page never made
    { "stored values the panels cannot show: a JPEG subsampling outside 1, 2 and 4, a grey JPEG depth above 8, "
      "CCITT compression above 1 bit, a grey PCX depth above 8", L"qlr A",
      TO(e.iJpegSubsampling = 3, e.bJpegGrayscale = 1, e.iJpegBitsPerPixel = 9, e.iTiffBitsPerPixel = 8,
         e.iTiffCompression = 3, e.bPcxGrayscale = 1, e.iPcxBitsPerPixel = 9), 0, {
        TO(e.iJpegSubsampling = 1, e.iJpegBitsPerPixel = 8, e.iTiffCompression = 4, e.iPcxBitsPerPixel = 8),
        { PAGE_SETUP, IDC_CROP, CLICK },
        TO(e.bCropEdges = 1), OK } },
    { "the manager with no profiles: only import works", NULL, NULL, CANCELLED, {
        { PAGE_SETUP, IDC_PROFILE_MANAGER, CLICK }, { MANAGER, 0, LISTED, -1, L"" }, { MANAGER, IDCANCEL, CLICK }, CANCEL } },
    { "OK with nothing changed writes nothing", L"qlr A", [](QLRDEVMODE &) {}, NOT_SAVED, {
        OK, TO(e.dmPublic = Defaults().dmPublic, e.m_bProfiled = 1) } },
    { "About box; quality typed 0 and 150; a stored 32-bit JPEG; a format past the list", L"qlr A",
      TO(e.iOutputFormat = 9, e.iJpegBitsPerPixel = 32), 0, {
        TO(e.iOutputFormat = 2), { FORMAT_PAGE, IDC_ABOUT, CLICK }, { ABOUT_BOX, IDOK, CLICK },
        { P_JPEG, IDC_QUALITY, SET, 0, L"0" }, { P_TIFF, IDC_QUALITY, SET, 0, L"150" },
        TO(e.iJpegQuality = 0, e.iTiffQuality = 150), OK,
        TO(e.iJpegQuality = 1, e.iTiffQuality = 100) } },
    { "output texts are cut to 259 characters", L"qlr A", [](QLRDEVMODE &) {}, BLIND, {
        { OUTPUT_PAGE, IDC_OUTPUT_FOLDER, SET, 0, g_long }, { OUTPUT_PAGE, IDC_FILE_MASK, SET, 0, g_long },
        { OUTPUT_PAGE, IDC_VIEWER_PARAMS, SET, 0, g_long }, OK,
        TO(for (WCHAR *p : { e.szOutputFolder, e.szFileNameMask, e.szViewerParams })
               lstrcpyW(p, g_long.substr(0, 259).c_str())) } },
    { "keyboard: page setup in reading order, arrows kept in their group, Space, Esc", L"qlr A",
      [](QLRDEVMODE &) {}, CANCELLED, {
        { PAGE_SETUP, 0, TABS, 0, L"1001 1002 1003 1096 1007 1008 1012 1013 1017" },
        { PAGE_SETUP, 0, ARROWS, 0, L"1096 1097" }, { PAGE_SETUP, 0, ARROWS, 0, L"1008 1009" },
        { PAGE_SETUP, IDC_CUSTOM_PAPER, CLICK }, { PAGE_SETUP, 0, TABS, 0, L"1001 1002 1003 1097 1098 1099 1014 1008 1012 1013 1017" },
        { PAGE_SETUP, IDC_CROP, GO }, { PAGE_SETUP, 0, KEYS, 0, L" " }, { PAGE_SETUP, IDC_CROP, CHECK, 1 },
        { PAGE_SETUP, 0, KEYS, 0, L" " }, { PAGE_SETUP, IDC_CROP, CHECK, 0 }, { PAGE_SETUP, 0, KEYS, 0, L"\x1b" } } },
    { "keyboard: the format page and its panels; a profile loaded hides the focused panel", L"qlr A",
      [](QLRDEVMODE &) {}, CANCELLED, {
        { FORMAT_PAGE, 0, TABS, 0, L"1001 1002 1003 1020 1025 1030 1037 1017 1004" },
        { P_JPEG, 0, ARROWS, 0, L"1023 1025 1026" }, { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, 0 },
        { P_BMP, 0, ARROWS, 0, L"1021 1022 1023 1024 1025 1026" }, { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, 3 },
        { FORMAT_PAGE, 0, TABS, 0, L"1001 1002 1003 1020 1025 1028 1046 1017 1004" },
        { P_TIFF, 0, ARROWS, 0, L"1021 1023 1025" }, { P_TIFF, 0, ARROWS, 0, L"1042 1043 1044 1045 1046 1047 1048" },
        { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, 4 }, { P_PCX, 0, ARROWS, 0, L"1021 1022 1023 1025" },
        { FORMAT_PAGE, IDC_FORMAT_LIST, CHOOSE, 5 }, { P_DCX, 0, ARROWS, 0, L"1021 1022 1023 1025" },
        { P_DCX, IDC_MULTIPAGE, GO }, { FORMAT_PAGE, IDC_PROFILE_COMBO, CHOOSE, 1 }, { P_JPEG, 0, SHOWN, 1 },
        { FORMAT_PAGE, IDC_FORMAT_LIST, FOCUS }, { FORMAT_PAGE, 0, KEYS, 0, L"\x1b" } } },
    { "keyboard: the output page skips what is hidden, disabled or empty; the program dialog cancelled", L"qlr A",
      TO(e.bUseCustomViewer = 1, lstrcpyW(e.szViewerPath, g_viewer.c_str())), CANCELLED, {
        { OUTPUT_PAGE, 0, TABS, 0, L"1001 1002 1003 1050 1051 1052 1053 1057 1054 1059 1055 1056 1060 1088 1090 1092 1017" },
        { OUTPUT_PAGE, 0, ARROWS, 0, L"1058 1059" }, { OUTPUT_PAGE, IDC_CUSTOM_VIEWER, CLICK },
        { OUTPUT_PAGE, IDC_BROWSE_VIEWER, CLICK }, { FILE_DLG, IDCANCEL, CLICK }, LOOK,
        { OUTPUT_PAGE, IDC_FILE_MASK, SET, 0, L"" }, { OUTPUT_PAGE, IDC_BROWSE_VIEWER, CLICK },
        { FILE_DLG, 0x47c, SET, 0, g_self }, { FILE_DLG, IDOK, CLICK },
        { OUTPUT_PAGE, 0, TABS, 0, L"1001 1002 1003 1050 1051 1052 1053 1054 1059 1055 1056 1060 1017" },
        { OUTPUT_PAGE, IDC_SHOW_RESULT, CLICK }, { OUTPUT_PAGE, 0, TABS, 0, L"1001 1002 1003 1050 1051 1052 1053 1054 1017" },
        { OUTPUT_PAGE, 0, KEYS, 0, L"\x1b" } } },
    { "keyboard: a resolution typed and confirmed with Enter, a name typed", NULL, NULL, 0, {
        { PAGE_SETUP, IDC_RESOLUTION, CHOOSE, 0 }, { PAGE_SETUP, IDC_RESOLUTION, GO },
        { PAGE_SETUP, IDC_RESOLUTION, SET, 0, L"300" }, { PAGE_SETUP, 0, KEYS, 0, L"\r" },
        { SAVE, 0, TABS, 0, L"1081 1082 1017 1 2" }, { SAVE, IDC_PROFILE_NAME, FOCUS }, { SAVE, 0, KEYS, 0, L"qlr a\r" },
        TO(e.iResolution = 300) }, L"qlr a" },
    { "keyboard: a width typed and confirmed with Enter", L"qlr A", TO(e.bCustomPaper = 1), 0, {
        { PAGE_SETUP, IDC_CUSTOM_WIDTH, GO }, { PAGE_SETUP, IDC_CUSTOM_WIDTH, SET, 0, L"500" },
        { PAGE_SETUP, 0, KEYS, 0, L"\r" }, TO(e.iCustomWidth = 5000) } },
    { "keyboard: the manager keeps a name typed before Enter, a comment typed before Esc", L"qlr A",
      TO(e.iOutputFormat = 3), 0, {
        { PAGE_SETUP, IDC_PROFILE_MANAGER, CLICK }, { MANAGER, 0, TABS, 0, L"1083 1086 1087 1081 1082 1088 1017 1 2" },
        { MANAGER, IDC_PROFILE_NAME, GO }, { MANAGER, IDC_PROFILE_NAME, SET, 0, L"qlr C" }, { MANAGER, 0, KEYS, 0, L"\r" },
        { PAGE_SETUP, IDC_PROFILE_COMBO, TEXT, 0, L"qlr C" }, { PAGE_SETUP, IDC_PROFILE_MANAGER, CLICK },
        { MANAGER, IDC_PROFILE_COMMENT, GO }, { MANAGER, IDC_PROFILE_COMMENT, SET, 0, L"typed" },
        { MANAGER, 0, KEYS, 0, L"\x1b" }, TO(lstrcpyW(e.szComments, L"typed")), OK }, L"qlr C" },
};

TEST_P(Sheet, Play)
{
    Run(g_scripts[GetParam()]);
}

std::string ScriptName(const ::testing::TestParamInfo<size_t> &info)
{
    std::string name = g_scripts[info.param].name;
    for (char &c : name)
        c = isalnum((unsigned char)c) ? c : '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Scripts, Sheet, ::testing::Range<size_t>(0, std::size(g_scripts)), ScriptName);

}  // namespace
