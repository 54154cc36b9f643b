// The administrator's tool on the real registry and files: a script of commands, each with its exit code and what
// the store holds after it; refusals store nothing.
#include "driver.h"
#include "files.h"
#include <algorithm>

namespace {

#define KEY L"Software\\Moravel\\Quillora\\Profile"
const DWORD RECORD = 3484, AT_DRIVER_VERSION = 66, AT_PROFILED = 3480;

// Runs the tool beside the test program, its output thrown away: its exit code, STILL_ACTIVE after ten seconds.
DWORD Admin(const std::wstring &args)
{
    std::wstring line = L"\"" + Beside(L"qlradmin.exe") + L"\" " + args;
    SECURITY_ATTRIBUTES sa = { sizeof(sa), NULL, TRUE };
    STARTUPINFOW si = {};
    si.cb = sizeof(si);
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdOutput = si.hStdError = CreateFileW(L"NUL", GENERIC_WRITE, 0, &sa, OPEN_EXISTING, 0, NULL);
    PROCESS_INFORMATION pi = {};
    DWORD code = 1000;    // not started
    CreateProcessW(NULL, &line[0], NULL, NULL, TRUE, 0, NULL, NULL, &si, &pi);
    WaitForSingleObject(pi.hProcess, 10000);
    GetExitCodeProcess(pi.hProcess, &code);
    for (HANDLE h : { si.hStdOutput, pi.hProcess, pi.hThread })
        CloseHandle(h);
    return code;
}

TEST(AdminTool, CommandsOnProfilesFilesAndPrinters)
{
    // Holding the printer open keeps Wine's spooler running between the tool's runs (else each waits for it).
    HANDLE hPrinter;
    ASSERT_TRUE(OpenPrinterW((LPWSTR)L"Quillora", &hPrinter, NULL));
    std::vector<BYTE> printer;
    ASSERT_TRUE(PrinterRecord(hPrinter, &printer, NULL));
    // That record stored as a profile (marked saved), and read back from the store (the reading driver's version).
    std::vector<BYTE> stored = printer, read;
    memcpy(&stored[AT_PROFILED], "\1\0\0\0", 4);
    read = stored;
    memcpy(&read[AT_DRIVER_VERSION], "\x46\x02", 2);
    const std::wstring path = Beside(L"qlr-admin.qlr"), file = L"\"" + path + L"\"";
    // The current name in other case than a profile's.
    std::vector<BYTE> current = ValueOf(HKEY_CURRENT_USER, KEY);
    SetValue(HKEY_CURRENT_USER, KEY, REG_SZ, L"QLR admin b", 22);
    DeleteFileW(path.c_str());
    const LPCWSTR names[] = { L"qlr admin A", L"qlr admin B", L"qlr admin \u00c9" };
    const std::wstring longest = L"qlr admin " + std::wstring(117, L'x'), quotedLongest = L" \"" + longest + L"\"";
    for (LPCWSTR name : names)
        RegDeleteKeyW(HKEY_CURRENT_USER, (KEY L"\\" + std::wstring(name)).c_str());
    // What each test profile holds: "-" none, "s" the printer's record as captured, "r" as read back (the same when
    // the printer's record carries our version); then which the current name names, regardless of case ("." none).
    auto image = [&] {
        const std::vector<BYTE> v = ValueOf(HKEY_CURRENT_USER, KEY);
        const std::wstring now((const WCHAR *)v.data(), wcsnlen((const WCHAR *)v.data(), v.size() / 2));
        std::string text;
        char named = now.empty() ? '.' : '?';
        for (int i = 0; i < 3; i++) {
            const std::vector<BYTE> profile = ValueOf(HKEY_CURRENT_USER, KEY L"\\" + std::wstring(names[i]));
            text += profile.empty() ? '-' : profile == read ? 'r' : profile == stored ? 's' : '?';
            named = _wcsicmp(now.c_str(), names[i]) ? named : (char)('A' + i);
        }
        return text + named;
    };
    // Every profile key in the registry's order.
    auto keys = [] {
        std::vector<std::wstring> names;
        HKEY h = NULL;
        WCHAR name[256];
        RegOpenKeyExW(HKEY_CURRENT_USER, KEY, 0, KEY_READ, &h);    // no key: none
        for (DWORD i = 0, cch = 256; !RegEnumKeyExW(h, i, name, &cch, NULL, NULL, NULL, NULL); i++, cch = 256)
            names.push_back(name);
        RegCloseKey(h);
        return names;
    };
    const std::vector<std::wstring> existing = keys();
    const char s = stored == read ? 'r' : 's';
    // A row: the command, its exit code (2: a bad command line), the profiles after it.
    const struct { std::wstring args; DWORD code; std::string after; } script[] = {
        { L"capture Quillora \"qlr admin A\"", 0, { s, '-', '-', 'B' } },
        { L"capture \"No Such Printer\" \"qlr admin C\"", 1, { s, '-', '-', 'B' } },
        { L"show \"qlr admin A\"", 0, { s, '-', '-', 'B' } },
        { L"export \"qlr admin A\" " + file, 0, { s, '-', '-', 'B' } },
        { L"rename \"qlr admin A\" \"qlr admin B\"", 0, "-r-B" },
        // Names match whatever their letter case, beyond ASCII too; the current name follows a rename.
        { L"rename \"qlr admin B\" \"qlr admin \u00c9\"", 0, "--rC" },
        { L"show \"qlr admin \u00e9\"", 0, "--rC" },
        { L"rename \"qlr admin \u00e9\" \"qlr admin B\"", 0, "-r-B" },
        // 127 characters are the longest name; a name of none or 128 is refused.
        { L"capture Quillora" + quotedLongest, 0, "-r-B" },
        { L"delete" + quotedLongest, 0, "-r-B" },
        { L"capture Quillora \"" + longest + L"x\"", 1, "-r-B" },
        { L"capture Quillora \"\"", 1, "-r-B" },
        { L"rename \"qlr admin A\" \"qlr admin C\"", 1, "-r-B" },
        { L"show \"qlr admin A\"", 1, "-r-B" },
        // Imported over a profile spelt in other case: the current name follows the stored key, as the pages need.
        { L"rename \"qlr admin B\" \"QLR ADMIN A\"", 0, "r--A" },
        { L"import " + file, 0, "r--A" },
        { L"print file " + file, 0, "r--A" },
        { L"delete \"qlr admin a\"", 0, "---." },
        { L"delete \"qlr admin a\"", 1, "---." },
        { L"deploy " + file, 0, "r--A" },
        { L"import \"" + path + L".missing\"", 1, "r--A" },
        { L"print printer Quillora", 0, "r--A" },
        { L"print printer \"No Such Printer\"", 1, "r--A" },
        { L"frobnicate", 2, "r--A" },
        { L"delete \"qlr admin A\"", 0, "---." },
    };
    for (const auto &step : script) {
        EXPECT_EQ(step.code, Admin(step.args)) << Utf8(step.args);
        EXPECT_EQ(step.after, image()) << Utf8(step.args);
    }
    EXPECT_TRUE(FileOf(L"qlr admin A", read) == ReadBytes(path)) << "the exported file";
    // Only a whole binary record reads as a profile.
    const std::vector<BYTE> bytes(RECORD + 100, 0x5A);
    for (DWORD type : { REG_SZ, REG_BINARY, REG_DWORD })
        for (DWORD cb : { 0ul, RECORD - 1, RECORD, RECORD + 100 }) {
            SetValue(HKEY_CURRENT_USER, KEY L"\\qlr admin B", type, bytes.data(), cb);
            EXPECT_EQ(type == REG_BINARY && cb == RECORD ? 0u : 1u, Admin(L"show \"qlr admin B\""))
                << "type " << type << ", " << cb << " bytes";
        }
    RegDeleteKeyW(HKEY_CURRENT_USER, KEY L"\\qlr admin B");
    // Damaged files are refused, storing nothing: sizes, magic and version bytes, an empty name, backslashes, no NUL.
    const std::vector<BYTE> good = FileOf(L"qlr admin C", read);
    std::vector<std::vector<BYTE>> bad;
    for (size_t size : { 0, 1, 264, 3747, 3749, 4096 })
        bad.push_back(good), bad.back().resize(size);
    for (size_t at = 0; at < 8; at++)
        for (int value : { 0, 0xFF })
            if (value != good[at])
                bad.push_back(good), bad.back()[at] = (BYTE)value;
    for (const std::wstring &name :
         std::vector<std::wstring>{ L"", L"\\lr admin C", L"qlr ad\\in C", L"qlr admin\\C", std::wstring(128, L'n') })
        bad.push_back(FileOf(name.c_str(), read));
    const auto before = std::make_pair(keys(), image());
    for (size_t i = 0; i < bad.size(); i++) {
        WriteBytes(path, bad[i]);
        EXPECT_EQ(1u, Admin(L"import " + file)) << "damaged file " << i;
        EXPECT_TRUE(before == std::make_pair(keys(), image())) << "damaged file " << i;
    }
    // A damaged file stored all the same must not break later runs: every profile this test left is taken out.
    for (const std::wstring &name : keys())
        if (std::find(existing.begin(), existing.end(), name) == existing.end())
            RegDeleteKeyW(HKEY_CURRENT_USER, (KEY L"\\" + name).c_str());
    DeleteFileW(path.c_str());
    SetValue(HKEY_CURRENT_USER, KEY, REG_SZ, current.data(), current.size());
    ClosePrinter(hPrinter);
}

}  // namespace
