// The administrator's tool as an administrator runs it: commands on the real
// registry and files, refusals that store nothing.
#include "driver.h"
#include <string>
#include <vector>

namespace {

#define KEY L"Software\\Moravel\\Quillora\\Profile"

struct Result { DWORD code; std::string out; };

Result Admin(const std::wstring &args)
{
    WCHAR exe[MAX_PATH];
    GetModuleFileNameW(NULL, exe, MAX_PATH);
    lstrcpyW(wcsrchr(exe, L'\\') + 1, L"qlradmin.exe");
    std::wstring line = L"\"" + std::wstring(exe) + L"\" " + args;
    SECURITY_ATTRIBUTES sa = { sizeof(sa), NULL, TRUE };
    HANDLE hRead, hWrite;
    CreatePipe(&hRead, &hWrite, &sa, 0);
    SetHandleInformation(hRead, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW si = {};
    si.cb = sizeof(si);
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdOutput = si.hStdError = hWrite;
    PROCESS_INFORMATION pi;
    Result r = { 1000, "" };
    if (!CreateProcessW(NULL, &line[0], NULL, NULL, TRUE, 0, NULL, NULL, &si, &pi))
        return r;
    CloseHandle(hWrite);
    char buf[4096];
    DWORD cb;
    while (ReadFile(hRead, buf, sizeof(buf), &cb, NULL) && cb)
        r.out.append(buf, cb);
    WaitForSingleObject(pi.hProcess, 10000);
    GetExitCodeProcess(pi.hProcess, &r.code);
    CloseHandle(pi.hProcess);
    CloseHandle(pi.hThread);
    CloseHandle(hRead);
    return r;
}

std::wstring Temp(LPCWSTR name)
{
    WCHAR dir[MAX_PATH];
    GetTempPathW(MAX_PATH, dir);
    return std::wstring(dir) + name;
}

bool Stored(LPCWSTR name, QLRDEVMODE *dm)
{
    DWORD cb = sizeof(*dm);
    std::wstring path = std::wstring(KEY) + L"\\" + name;
    return RegGetValueW(HKEY_CURRENT_USER, path.c_str(), NULL, RRF_RT_REG_BINARY, NULL, dm, &cb) == ERROR_SUCCESS;
}

class AdminTool : public ::testing::Test {
protected:
    WCHAR savedCurrent[130] = L"";
    void SetUp() override
    {
        DWORD cb = sizeof(savedCurrent);
        RegGetValueW(HKEY_CURRENT_USER, KEY, NULL, RRF_RT_REG_SZ, NULL, savedCurrent, &cb);
        Layout l;
        MakeLayout(&l, 0, 0, 0, 0);
        LONG needed = QLR_RECORD_SIZE;
        TheDriver().ConvertDevMode((LPWSTR)L"Quillora", NULL, l.dm(), &needed, CDM_DRIVER_DEFAULT);
        l.record()->iOutputFormat = FORMAT_GIF;
        lstrcpyW(l.record()->szComments, L"admin");
        l.record()->m_bProfiled = TRUE;
        HKEY h;
        RegCreateKeyExW(HKEY_CURRENT_USER, KEY L"\\qlr admin A", 0, NULL, 0, KEY_WRITE, NULL, &h, NULL);
        RegSetValueExW(h, NULL, 0, REG_BINARY, l.bytes, QLR_RECORD_SIZE);
        RegCloseKey(h);
    }
    void TearDown() override
    {
        for (LPCWSTR name : { L"qlr admin A", L"qlr admin B" })
            RegDeleteKeyW(HKEY_CURRENT_USER, (std::wstring(KEY) + L"\\" + name).c_str());
        HKEY h;
        RegCreateKeyExW(HKEY_CURRENT_USER, KEY, 0, NULL, 0, KEY_WRITE, NULL, &h, NULL);
        RegSetValueExW(h, NULL, 0, REG_SZ, (const BYTE *)savedCurrent, lstrlenW(savedCurrent) * 2);
        RegCloseKey(h);
    }
};

TEST_F(AdminTool, ListShowRenameAndDelete)
{
    Result list = Admin(L"list");
    EXPECT_EQ(0u, list.code);
    EXPECT_NE(std::string::npos, list.out.find("  qlr admin A"));
    Result show = Admin(L"show \"qlr admin A\"");
    EXPECT_EQ(0u, show.code);
    EXPECT_NE(std::string::npos, show.out.find("iOutputFormat      1"));
    EXPECT_NE(std::string::npos, show.out.find("\"admin\""));

    EXPECT_EQ(0u, Admin(L"rename \"qlr admin A\" \"qlr admin B\"").code);
    QLRDEVMODE dm;
    EXPECT_TRUE(Stored(L"qlr admin B", &dm));
    EXPECT_FALSE(Stored(L"qlr admin A", &dm));
    EXPECT_EQ(1u, Admin(L"rename \"qlr admin A\" \"qlr admin C\"").code);
    EXPECT_EQ(0u, Admin(L"delete \"qlr admin B\"").code);
    EXPECT_FALSE(Stored(L"qlr admin B", &dm));
    EXPECT_EQ(1u, Admin(L"delete \"qlr admin B\"").code);
    EXPECT_EQ(1u, Admin(L"show \"qlr admin B\"").code);
    EXPECT_EQ(2u, Admin(L"frobnicate").code);
}

TEST_F(AdminTool, FilesRoundTripAndBadFilesAreRefused)
{
    std::wstring file = Temp(L"qlr-admin.qlr");
    DeleteFileW(file.c_str());
    ASSERT_EQ(0u, Admin(L"export \"qlr admin A\" \"" + file + L"\"").code);
    QLRDEVMODE before;
    ASSERT_TRUE(Stored(L"qlr admin A", &before));
    RegDeleteKeyW(HKEY_CURRENT_USER, KEY L"\\qlr admin A");

    Result deploy = Admin(L"deploy \"" + file + L"\"");
    EXPECT_EQ(0u, deploy.code) << deploy.out;
    QLRDEVMODE after;
    ASSERT_TRUE(Stored(L"qlr admin A", &after));
    EXPECT_EQ(0, memcmp(&before, &after, sizeof(after)));
    WCHAR current[130] = L"";
    DWORD cb = sizeof(current);
    RegGetValueW(HKEY_CURRENT_USER, KEY, NULL, RRF_RT_REG_SZ, NULL, current, &cb);
    EXPECT_STREQ(L"qlr admin A", current);

    Result printed = Admin(L"print file \"" + file + L"\"");
    EXPECT_EQ(0u, printed.code);
    EXPECT_NE(std::string::npos, printed.out.find("dwSignature        0x4453444D"));

    // A file one byte short: refused, nothing stored.
    RegDeleteKeyW(HKEY_CURRENT_USER, KEY L"\\qlr admin A");
    HANDLE h = CreateFileW(file.c_str(), GENERIC_WRITE, 0, NULL, OPEN_EXISTING, 0, NULL);
    SetFilePointer(h, 3747, NULL, FILE_BEGIN);
    SetEndOfFile(h);
    CloseHandle(h);
    Result refused = Admin(L"import \"" + file + L"\"");
    EXPECT_EQ(1u, refused.code);
    EXPECT_NE(std::string::npos, refused.out.find("refused"));
    EXPECT_FALSE(Stored(L"qlr admin A", &after));
    EXPECT_EQ(1u, Admin(L"print raw \"" + file + L"\"").code);
    DeleteFileW(file.c_str());
}

TEST_F(AdminTool, PrintsThePrintersDefaultRecord)
{
    Result r = Admin(L"print printer Quillora");
    EXPECT_EQ(0u, r.code) << r.out;
    EXPECT_NE(std::string::npos, r.out.find("dmDeviceName       \"Quillora\""));
    EXPECT_EQ(1u, Admin(L"print printer \"No Such Printer\"").code);
}

}  // namespace
