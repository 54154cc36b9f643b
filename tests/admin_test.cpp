// The administrator's tool on the real registry and files: what the store and the profile file format refuse,
// storing nothing; the tool's commands at work are the two-prefix round trip's.
#include "driver.h"
#include "files.h"
#include <algorithm>

namespace {

#define KEY L"Software\\Moravel\\Quillora\\Profile"
const DWORD RECORD = 3484;

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

// Every profile key in the registry's order, then the current name.
std::vector<std::wstring> Store()
{
    std::vector<std::wstring> names;
    HKEY h = NULL;
    WCHAR name[256];
    RegOpenKeyExW(HKEY_CURRENT_USER, KEY, 0, KEY_READ, &h);    // no key: none
    for (DWORD i = 0, cch = 256; !RegEnumKeyExW(h, i, name, &cch, NULL, NULL, NULL, NULL); i++, cch = 256)
        names.push_back(name);
    RegCloseKey(h);
    names.push_back(StringOf(HKEY_CURRENT_USER, KEY));
    return names;
}

TEST(AdminTool, RefusesWhatTheStoreAndTheFileFormatRefuse)
{
    // Holding the printer open keeps Wine's spooler running between the tool's runs (else each waits for it).
    HANDLE hPrinter;
    ASSERT_TRUE(OpenPrinterW((LPWSTR)L"Quillora", &hPrinter, NULL));
    std::vector<BYTE> record;
    ASSERT_TRUE(PrinterRecord(hPrinter, &record, NULL));
    const std::wstring path = Beside(L"qlr-admin.qlr"), file = L"\"" + path + L"\"";
    const std::vector<std::wstring> before = Store();
    // The longest name, 127 characters, and one beyond ASCII are taken, and found again whatever their letter case.
    for (const std::wstring &name : { L"qlr admin " + std::wstring(117, L'x'), std::wstring(L"qlr admin \u00e9") }) {
        std::wstring upper = name;
        CharUpperW(&upper[0]);
        WriteBytes(path, FileOf(name.c_str(), record));
        EXPECT_EQ(0u, Admin(L"import " + file)) << Utf8(name);
        EXPECT_EQ(0u, Admin(L"delete \"" + upper + L"\"")) << Utf8(name);
        EXPECT_EQ(1u, Admin(L"delete \"" + name + L"\"")) << Utf8(name) << ", deleted before";
    }
    // One character more, or none, and the store takes no name.
    for (const std::wstring &name : { L"qlr admin " + std::wstring(118, L'x'), std::wstring() })
        EXPECT_EQ(1u, Admin(L"capture Quillora \"" + name + L"\"")) << Utf8(name);
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
    const std::vector<BYTE> good = FileOf(L"qlr admin C", record);
    std::vector<std::vector<BYTE>> bad;
    for (size_t size : { 0, 1, 264, 3747, 3749, 4096 })
        bad.push_back(good), bad.back().resize(size);
    for (size_t at = 0; at < 8; at++)
        for (int value : { 0, 0xFF })
            if (value != good[at])
                bad.push_back(good), bad.back()[at] = (BYTE)value;
    for (const std::wstring &name :
         std::vector<std::wstring>{ L"", L"\\lr admin C", L"qlr ad\\in C", L"qlr admin\\C", std::wstring(128, L'n') })
        bad.push_back(FileOf(name.c_str(), record));
    for (size_t i = 0; i < bad.size(); i++) {
        WriteBytes(path, bad[i]);
        EXPECT_EQ(1u, Admin(L"import " + file)) << "damaged file " << i;
        EXPECT_EQ(before, Store()) << "damaged file " << i;
    }
    // A damaged file stored all the same must not break later runs: every profile this test left is taken out.
    const std::vector<std::wstring> after = Store();
    for (auto name = after.begin(); name + 1 < after.end(); name++)
        if (std::find(before.begin(), before.end() - 1, *name) == before.end() - 1)
            RegDeleteKeyW(HKEY_CURRENT_USER, (KEY L"\\" + *name).c_str());
    DeleteFileW(path.c_str());
    ClosePrinter(hPrinter);
}

}  // namespace
