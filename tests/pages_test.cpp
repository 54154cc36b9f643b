// White-box tests of the page framework's pieces that need no sheet:
// lengths, macros, associations and help.
#include <gtest/gtest.h>
#include <string>
#include "pages/pages.h"
#include "res/resource.h"
#include "files.h"
#include "guarded.h"
#include <commctrl.h>

namespace {

// The numbers and names the pages are documented with, not the module's own.
const size_t EXAMPLE = 1024, COMMAND = 520;
const int JPEG = 2;

TEST(Lengths, ClampFollowsUnitAndResolution)
{
    SHEETSTATE sheet = {};
    struct { int unit, dpi, value, clamped; } rows[] = {
        { 0, 200, 0, 39 }, { 0, 200, 999999, 720000 },
        { 1, 200, 200000, 182880 }, { 1, 200, 5, 10 },
        { 2, 200, 60000, 51840 }, { 2, 200, 1, 29 },
        { 3, 200, 150, 200 }, { 3, 600, 200, 600 }, { 3, 50, 200000, 144000 },
        { 0, 2400, 100000, 60000 }, { 0, 200, -5, 720000 },  // compared without sign
        { 7, 200, 123456789, 123456789 },
    };
    for (const auto &row : rows) {
        sheet.work.iCustomUnit = row.unit;
        sheet.work.iResolution = row.dpi;
        INT v = row.value;
        ClampCustomLength(&sheet, &v);
        EXPECT_EQ(row.clamped, v) << "unit " << row.unit << " at " << row.dpi << " dpi, value " << row.value;
    }
}

TEST(Lengths, FormatAndParseAgreeWithEachOther)
{
    struct { int value, unit; const wchar_t *text; } shown[] = {
        { 8500, 0, L"8.5" }, { 8000, 0, L"8.0" }, { 1050, 0, L"1.05" }, { 39, 0, L"0.039" }, { 11690, 0, L"11.69" },
        { 2970, 1, L"297.0" }, { 2971, 1, L"297.1" }, { 612, 2, L"612" }, { 1500, 3, L"1500" }, { 42, 9, L"42" },
    };
    for (const auto &row : shown) {
        WCHAR text[32];
        FormatLength(row.value, row.unit, text, 32);
        EXPECT_STREQ(row.text, text) << row.value << " in unit " << row.unit;
    }
    struct { const wchar_t *text; int unit, value; BOOL ok; } read[] = {
        { L"8.27", 0, 8270, TRUE }, { L"1.001", 0, 1001, TRUE }, { L"0.0395", 0, 39, TRUE }, { L"12", 0, 12000, TRUE },
        { L" +12.75", 1, 127, TRUE }, { L"297", 1, 2970, TRUE }, { L"12.9", 2, 12, TRUE }, { L"-3", 3, 3, TRUE },
        { L"1.23456", 0, 1234, TRUE }, { L"5 mm", 1, 50, TRUE }, { L"99999999999", 0, -1, TRUE },
        { L"abc", 0, 0, FALSE }, { L".5", 0, 0, FALSE }, { L"", 1, 0, FALSE },
    };
    for (const auto &row : read) {
        BOOL ok = !row.ok;
        EXPECT_EQ(row.value, ParseLength(row.text, row.unit, &ok)) << "unit " << row.unit;
        EXPECT_EQ(row.ok, ok) << "unit " << row.unit;
    }
    // Whatever is shown reads back as the same value.
    for (int unit = 0; unit < 4; unit++)
        for (int v = 0; v < 200000; v += 7) {
            WCHAR text[32];
            FormatLength(v, unit, text, 32);
            BOOL ok;
            ASSERT_EQ(v, ParseLength(text, unit, &ok)) << text << " in unit " << unit;
        }
}

std::wstring Expand(LPCWSTR mask, int format = JPEG)
{
    SHEETSTATE sheet = {};
    sheet.work.iOutputFormat = format;
    WCHAR out[EXAMPLE] = L"";
    ExpandFileNameMask(NULL, &sheet, mask, out);
    return out;
}

TEST(Macros, MasksExpandAsTheRenderingModuleReadsThem)
{
    struct { LPCWSTR mask, expected; } rows[] = {
        { L"plain name", L"plain name" },
        { L"a&b&&c", L"a&b&&c" },
        { L"&[DocName]_&[Page].&[Type]", L"example_document_name_01.jpg" },
        { L"&[docname]-&[PAGE]", L"example_document_name-01" },
        { L"x&[Nothing]y&[]z", L"xyz" },
        { L"before&[Page", L"before&[Page" },
        { L"before&[", L"before&[" },
        { L"&[Page]&[", L"01&[" },
        { L"&[&[Year]]", L"]" },
        { L"&[Pa\u00adge]", L"" },        // a soft hyphen makes another name, not "Page"
        { L"a&[Page]b&[Page]c", L"a01b01c" },
    };
    for (const auto &row : rows)
        EXPECT_EQ(std::wstring(row.expected), Expand(row.mask));
    EXPECT_EQ(L"tif", Expand(L"&[Type]", 3));
    EXPECT_EQ(L"bmp", Expand(L"&[Type]", -1));
    EXPECT_EQ(L"dcx", Expand(L"&[Type]", 9));
}

TEST(Macros, DateAndTimeComeFromTheLocalClock)
{
    SYSTEMTIME t, after;
    std::wstring got;
    do {    // again when the clock turned over between the reads
        GetLocalTime(&t);
        got = Expand(L"&[Year]-&[Month]-&[Day] &[Date] &[Hour]:&[Minute] &[Time]");
        GetLocalTime(&after);
    } while (t.wMinute != after.wMinute);
    WCHAR want[64];
    wsprintfW(want, L"%04d-%02d-%02d %02d-%02d-%04d %02d:%02d %02d-%02d-", t.wYear, t.wMonth, t.wDay, t.wMonth,
              t.wDay, t.wYear, t.wHour, t.wMinute, t.wHour, t.wMinute);
    EXPECT_EQ(want, got.substr(0, lstrlenW(want)));
    EXPECT_EQ(lstrlenW(want) + 2u, got.size()) << "seconds in two digits";
}

// File associations as the shell keeps them, made for one test and removed.
struct Association {
    std::wstring extension, cls;
    Association(LPCWSTR ext, LPCWSTR command) : extension(ext), cls(std::wstring(L"QlrTest.") + ext)
    {
        RegSetValueW(HKEY_CLASSES_ROOT, (L"." + extension).c_str(), REG_SZ, cls.c_str(), 0);
        if (command)
            RegSetValueW(HKEY_CLASSES_ROOT, (cls + L"\\shell\\open\\command").c_str(), REG_SZ, command, 0);
    }
    ~Association()
    {
        RegDeleteKeyW(HKEY_CLASSES_ROOT, (cls + L"\\shell\\open\\command").c_str());
        RegDeleteKeyW(HKEY_CLASSES_ROOT, (cls + L"\\shell\\open").c_str());
        RegDeleteKeyW(HKEY_CLASSES_ROOT, (cls + L"\\shell").c_str());
        RegDeleteKeyW(HKEY_CLASSES_ROOT, cls.c_str());
        RegDeleteKeyW(HKEY_CLASSES_ROOT, (L"." + extension).c_str());
    }
};

TEST(Associations, TheProgramIsTheTokenHoldingTheLastDot)
{
    // A command line is read with at most 520 characters: 519 and the NUL fit, 550 do not.
    const std::wstring fits = L"C:\\" + std::wstring(512, L'v') + L".exe", tooLong = fits + std::wstring(31, L'v');
    struct { LPCWSTR ext, command, program; } rows[] = {
        { L"qlra", L"\"C:\\Program Files\\Viewer App\\view.exe\" \"%1\"", L"C:\\Program Files\\Viewer App\\view.exe" },
        { L"qlrb", L"C:\\tools\\view.exe %1", L"C:\\tools\\view.exe" },
        { L"qlrc", L"C:\\tools\\view.exe /opt=a.b %1", L"C:\\tools\\view.exe /opt=a.b" },
        { L"qlrd", L"viewer %1", L"viewer" },     // no dot: the first token
        { L"qlre", NULL, L"" },                   // a class without an open command
        { L"qlrf", fits.c_str(), fits.c_str() }, { L"qlrg", tooLong.c_str(), L"" },
    };
    // The path written and its NUL, the rest of the buffer left as it was.
    for (const auto &row : rows) {
        Association a(row.ext, row.command);
        Guarded path(COMMAND * sizeof(WCHAR), 0xCC);
        LookupAssociatedApplication(row.ext, path.as<WCHAR>());
        EXPECT_STREQ(row.program, path.as<WCHAR>());
        EXPECT_TRUE(path.TailUntouched()) << row.program;
    }
    Guarded path(COMMAND * sizeof(WCHAR), 0xCC);
    LookupAssociatedApplication(L"qlr-no-such-type", path.as<WCHAR>());
    EXPECT_STREQ(L"", path.as<WCHAR>());
    EXPECT_TRUE(path.TailUntouched()) << "no class at all";
}

// The help control is found through its class registration; the test points
// that registration at a recorder for the length of one test.
TEST(Help, AddressesNameTheFileBesideTheModuleAndTheTopic)
{
    const std::wstring saved = SetHelpControl(Beside(L"fakehh.dll"));
    WCHAR folder[MAX_PATH];
    GetModuleFileNameW(NULL, folder, MAX_PATH);
    *wcsrchr(folder, L'\\') = 0;
    struct { int topic; const wchar_t *name; } rows[] = {
        { 0, L"/set_paper.htm" }, { 1, L"/set_advanced.htm" }, { 2, L"/set_finish.htm" },
        { 3, L"/prof_add.htm" }, { 4, L"/prof_edit.htm" }, { 7, L"" },
    };
    typedef LPCWSTR (WINAPI *PFN_LAST)(UINT *);
    for (const auto &row : rows) {
        ShowHelpTopic(NULL, row.topic);
        HMODULE hFake = GetModuleHandleA("fakehh.dll");
        ASSERT_NE(nullptr, hFake) << "the help control was not loaded from its registration";
        UINT command = 99;
        std::wstring address = ((PFN_LAST)(void *)GetProcAddress(hFake, MAKEINTRESOURCEA(1)))(&command);
        EXPECT_EQ(std::wstring(folder) + L"\\qlrhlp.chm::" + row.name + L">main", address) << "topic " << row.topic;
        EXPECT_EQ(0u, command) << "HH_DISPLAY_TOPIC";
    }
    SetHelpControl(saved);
}

}  // namespace
