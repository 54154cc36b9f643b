// The administrator's tool on the real registry and files: a script of commands, refusals that store nothing.
#include "driver.h"
#include "files.h"
#include <algorithm>

namespace {

#define KEY L"Software\\Moravel\\Quillora\\Profile"
const DWORD RECORD = 3484, AT_DRIVER_VERSION = 66, AT_PROFILED = 3480;

struct Ran { DWORD code; std::string out, err; };

// Runs the tool beside the test program, its stdout and stderr written to files.
Ran Admin(const std::wstring &args)
{
    std::wstring line = L"\"" + Beside(L"qlradmin.exe") + L"\" " + args;
    const std::wstring out = Beside(L"qlr-admin.out"), err = Beside(L"qlr-admin.err");
    SECURITY_ATTRIBUTES sa = { sizeof(sa), NULL, TRUE };
    STARTUPINFOW si = {};
    si.cb = sizeof(si);
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdOutput = CreateFileW(out.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &sa, CREATE_ALWAYS, 0, NULL);
    si.hStdError = CreateFileW(err.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &sa, CREATE_ALWAYS, 0, NULL);
    PROCESS_INFORMATION pi = {};
    DWORD code = 1000;    // not started; one still running after ten seconds answers STILL_ACTIVE
    CreateProcessW(NULL, &line[0], NULL, NULL, TRUE, 0, NULL, NULL, &si, &pi);
    WaitForSingleObject(pi.hProcess, 10000);
    GetExitCodeProcess(pi.hProcess, &code);
    for (HANDLE h : { si.hStdOutput, si.hStdError, pi.hProcess, pi.hThread })
        CloseHandle(h);
    return { code, ReadBytes<std::string>(out), ReadBytes<std::string>(err) };
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
    const std::wstring path = Beside(L"qlr-admin.qlr"), file = L"\"" + path + L"\"", raw = Beside(L"qlr-admin.raw");
    // Each record as the tool decodes it: "print raw" of a file that holds it.
    WriteBytes(raw, printer);
    const std::string printerText = Admin(L"print raw \"" + raw + L"\"").out;
    WriteBytes(raw, read);
    const std::string readText = Admin(L"print raw \"" + raw + L"\"").out;
    // The current name in other case than a profile: "list" marks it as the pages' combo selects it, with case.
    std::vector<BYTE> current = ValueOf(HKEY_CURRENT_USER, KEY);
    SetValue(HKEY_CURRENT_USER, KEY, REG_SZ, L"QLR admin b", 22);
    DeleteFileW(path.c_str());
    WriteBytes(raw, std::vector<BYTE>(RECORD - 1, 0));
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
    // Every profile key in the registry's order; what "list" prints: the current one, matched with case, marked.
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
    auto listing = [&] {
        const std::vector<BYTE> v = ValueOf(HKEY_CURRENT_USER, KEY);
        const std::wstring current((const WCHAR *)v.data(), wcsnlen((const WCHAR *)v.data(), v.size() / 2));
        std::string text;
        for (const std::wstring &name : keys())
            text += (current == name ? "* " : "  ") + Utf8(name) + "\n";
        return text;
    };
    const std::vector<std::wstring> existing = keys();
    const char s = stored == read ? 'r' : 's';
    // A row: the command, its exit code, stdout compared whole, the profiles after it.  With a name, a refusal prints
    // one line on stderr that quotes it and nothing on stdout; a success prints a first line quoting it.
    const struct { std::wstring args; DWORD code; std::string out, quoted, after; } script[] = {
        { L"capture Quillora \"qlr admin A\"", 0, "", "", { s, '-', '-', 'B' } },
        { L"capture \"No Such Printer\" \"qlr admin C\"", 1, "", "No Such Printer", { s, '-', '-', 'B' } },
        { L"show \"qlr admin A\"", 0, readText, "qlr admin A", { s, '-', '-', 'B' } },
        { L"export \"qlr admin A\" " + file, 0, "", "", { s, '-', '-', 'B' } },
        { L"rename \"qlr admin A\" \"qlr admin B\"", 0, "", "", "-r-B" },
        // Names match whatever their letter case, beyond ASCII too; the current name follows a rename.
        { L"rename \"qlr admin B\" \"qlr admin \u00c9\"", 0, "", "", "--rC" },
        { L"show \"qlr admin \u00e9\"", 0, readText, "qlr admin é", "--rC" },
        { L"rename \"qlr admin \u00e9\" \"qlr admin B\"", 0, "", "", "-r-B" },
        // 127 characters are the longest name; a name of none or 128 is refused.
        { L"capture Quillora" + quotedLongest, 0, "", "", "-r-B" },
        { L"delete" + quotedLongest, 0, "", "", "-r-B" },
        { L"capture Quillora \"" + longest + L"x\"", 1, "", Utf8(longest) + "x", "-r-B" },
        { L"capture Quillora \"\"", 1, "", "", "-r-B" },
        { L"list", 0, "(listing)", "", "-r-B" },
        { L"rename \"qlr admin A\" \"qlr admin C\"", 1, "", "qlr admin A", "-r-B" },
        { L"show \"qlr admin A\"", 1, "", "qlr admin A", "-r-B" },
        // Imported over a profile spelt in other case: the current name follows the stored key, as the pages need.
        { L"rename \"qlr admin B\" \"QLR ADMIN A\"", 0, "", "", "r--A" },
        { L"import " + file, 0, "", "qlr admin A", "r--A" },
        { L"list", 0, "(listing)", "", "r--A" },
        { L"print file " + file, 0, readText, "", "r--A" },
        { L"delete \"qlr admin a\"", 0, "", "", "---." },
        { L"delete \"qlr admin a\"", 1, "", "qlr admin a", "---." },
        { L"deploy " + file, 0, "", "qlr admin A", "r--A" },
        { L"list", 0, "(listing)", "", "r--A" },
        { L"import \"" + path + L".missing\"", 1, "", Utf8(path) + ".missing", "r--A" },
        { L"print raw \"" + path + L".missing\"", 1, "", Utf8(path) + ".missing", "r--A" },
        { L"print raw \"" + raw + L"\"", 1, "", Utf8(raw), "r--A" },
        { L"print printer Quillora", 0, printerText, "Quillora", "r--A" },
        { L"print printer \"No Such Printer\"", 1, "", "No Such Printer", "r--A" },
        { L"delete \"qlr admin A\"", 0, "", "", "---." },
    };
    for (size_t i = 0; i < ARRAYSIZE(script); i++) {
        const auto &step = script[i];
        Ran run = Admin(step.args);
        const std::string where = "step " + std::to_string(i) + ": " + Utf8(step.args) + ": " + run.out + run.err;
        EXPECT_EQ(step.code, run.code) << where;
        EXPECT_EQ(step.after, image()) << where;
        if (!step.quoted.empty() || step.code) {
            std::string &text = step.code ? run.err : run.out;
            const size_t first = text.find('\n') + 1;
            EXPECT_NE(std::string::npos, text.substr(0, first).find("\"" + step.quoted + "\"")) << where;
            text.erase(0, first);
        }
        EXPECT_EQ(step.out == "(listing)" ? listing() : step.out, run.out) << where;
        EXPECT_EQ("", run.err) << where;
    }
    EXPECT_TRUE(FileOf(L"qlr admin A", read) == ReadBytes(path)) << "the exported file";
    const Ran usage = Admin(L"frobnicate");
    EXPECT_EQ(2u, usage.code);
    EXPECT_NE(std::string::npos, (usage.out + usage.err).find("usage")) << usage.out << usage.err;
    // Only a whole binary record reads as a profile.
    const std::vector<BYTE> bytes(RECORD + 100, 0x5A);
    for (DWORD type : { REG_SZ, REG_BINARY, REG_DWORD })
        for (DWORD cb : { 0ul, RECORD - 1, RECORD, RECORD + 100 }) {
            SetValue(HKEY_CURRENT_USER, KEY L"\\qlr admin B", type, bytes.data(), cb);
            EXPECT_EQ(type == REG_BINARY && cb == RECORD ? 0u : 1u, Admin(L"show \"qlr admin B\"").code)
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
    const std::string before = listing() + image();
    for (size_t i = 0; i < bad.size(); i++) {
        WriteBytes(path, bad[i]);
        EXPECT_EQ(1u, Admin(L"import " + file).code) << "damaged file " << i;
        EXPECT_EQ(before, listing() + image()) << "damaged file " << i;
    }
    // A damaged file stored all the same must not break later runs: every profile this test left is taken out.
    for (const std::wstring &name : keys())
        if (std::find(existing.begin(), existing.end(), name) == existing.end())
            RegDeleteKeyW(HKEY_CURRENT_USER, (KEY L"\\" + name).c_str());
    for (const std::wstring &name : { path, raw, Beside(L"qlr-admin.out"), Beside(L"qlr-admin.err") })
        DeleteFileW(name.c_str());
    SetValue(HKEY_CURRENT_USER, KEY, REG_SZ, current.data(), current.size());
    ClosePrinter(hPrinter);
}

}  // namespace
