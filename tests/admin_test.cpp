// The administrator's tool as an administrator runs it: a script of commands
// on the real registry and files, refusals that store nothing.
#include "driver.h"
#include "files.h"
#include <string>

namespace {

#define KEY L"Software\\Moravel\\Quillora\\Profile"

// Runs the tool beside the test program; its exit code and what it printed.
std::string Admin(const std::wstring &args, DWORD *code)
{
    std::wstring line = L"\"" + Beside(L"qlradmin.exe") + L"\" " + args;
    SECURITY_ATTRIBUTES sa = { sizeof(sa), NULL, TRUE };
    HANDLE hRead, hWrite;
    CreatePipe(&hRead, &hWrite, &sa, 0);
    SetHandleInformation(hRead, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW si = {};
    si.cb = sizeof(si);
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdOutput = si.hStdError = hWrite;
    PROCESS_INFORMATION pi;
    std::string out;
    *code = CreateProcessW(NULL, &line[0], NULL, NULL, TRUE, 0, NULL, NULL, &si, &pi) ? 0 : 1000;
    CloseHandle(hWrite);
    char buf[4096];
    DWORD cb;
    while (!*code && ReadFile(hRead, buf, sizeof(buf), &cb, NULL) && cb)
        out.append(buf, cb);
    if (!*code && !WaitForSingleObject(pi.hProcess, 10000))
        GetExitCodeProcess(pi.hProcess, code);
    if (*code != 1000) {
        CloseHandle(pi.hProcess);
        CloseHandle(pi.hThread);
    }
    CloseHandle(hRead);
    return out;
}

std::vector<BYTE> Stored(const std::wstring &name)
{
    std::vector<BYTE> record(QLR_RECORD_SIZE);
    DWORD cb = QLR_RECORD_SIZE;
    if (RegGetValueW(HKEY_CURRENT_USER, (KEY L"\\" + name).c_str(), NULL, RRF_RT_REG_BINARY, NULL, record.data(), &cb))
        record.clear();
    return record;
}

void SetValue(LPCWSTR key, DWORD type, const void *data, DWORD cb)
{
    HKEY h;
    RegCreateKeyExW(HKEY_CURRENT_USER, key, 0, NULL, 0, KEY_WRITE, NULL, &h, NULL);
    RegSetValueExW(h, NULL, 0, type, (const BYTE *)data, cb);
    RegCloseKey(h);
}

TEST(AdminTool, CommandsOnProfilesFilesAndPrinters)
{
    WCHAR current[130] = L"";
    DWORD cb = sizeof(current);
    RegGetValueW(HKEY_CURRENT_USER, KEY, NULL, RRF_RT_REG_SZ, NULL, current, &cb);
    Layout l;
    MakeLayout(&l, 0, 0, 0, 0);
    LONG needed = QLR_RECORD_SIZE;
    ASSERT_TRUE(TheDriver().ConvertDevMode((LPWSTR)L"Quillora", NULL, l.dm(), &needed, CDM_DRIVER_DEFAULT));
    l.record()->iOutputFormat = FORMAT_GIF;
    lstrcpyW(l.record()->szComments, L"admin");
    l.record()->m_bProfiled = TRUE;
    SetValue(KEY L"\\qlr admin A", REG_BINARY, l.bytes, QLR_RECORD_SIZE);
    const std::wstring file = L"\"" + TempFile(L"qlr-admin.qlr") + L"\"";
    DeleteFileW(TempFile(L"qlr-admin.qlr").c_str());

    const struct { std::wstring args; DWORD code; const char *printed; } script[] = {
        { L"list", 0, "  qlr admin A" },
        { L"show \"qlr admin A\"", 0, "iOutputFormat      1" },
        { L"show \"qlr admin A\"", 0, "\"admin\"" },
        { L"export \"qlr admin A\" " + file, 0, "" },
        { L"rename \"qlr admin A\" \"qlr admin B\"", 0, "" },
        { L"rename \"qlr admin A\" \"qlr admin C\"", 1, "" },
        { L"show \"qlr admin A\"", 1, "" },
        { L"deploy " + file, 0, "" },
        { L"list", 0, "* qlr admin A" },
        { L"print file " + file, 0, "dwSignature        0x4453444D" },
        { L"delete \"qlr admin B\"", 0, "" },
        { L"delete \"qlr admin B\"", 1, "" },
        { L"print printer Quillora", 0, "dmDeviceName       \"Quillora\"" },
        { L"print printer \"No Such Printer\"", 1, "" },
        { L"frobnicate", 2, "" },
    };
    for (const auto &step : script) {
        DWORD code;
        std::string out = Admin(step.args, &code);
        EXPECT_EQ(step.code, code) << std::string(step.args.begin(), step.args.end()) << ": " << out;
        EXPECT_NE(std::string::npos, out.find(step.printed)) << std::string(step.args.begin(), step.args.end()) << ": " << out;
    }
    EXPECT_EQ(std::vector<BYTE>(l.bytes, l.bytes + QLR_RECORD_SIZE), Stored(L"qlr admin A")) << "deployed whole";
    EXPECT_TRUE(Stored(L"qlr admin B").empty());

    // A file one byte short is refused, and nothing is stored.
    std::vector<BYTE> bytes = ReadBytes(TempFile(L"qlr-admin.qlr"));
    ASSERT_EQ(3748u, bytes.size());
    bytes.pop_back();
    WriteBytes(TempFile(L"qlr-admin.qlr"), bytes);
    RegDeleteKeyW(HKEY_CURRENT_USER, KEY L"\\qlr admin A");
    DWORD code;
    EXPECT_NE(std::string::npos, Admin(L"import " + file, &code).find("refused"));
    EXPECT_EQ(1u, code);
    EXPECT_TRUE(Stored(L"qlr admin A").empty());
    Admin(L"print raw " + file, &code);
    EXPECT_EQ(1u, code);
    DeleteFileW(TempFile(L"qlr-admin.qlr").c_str());
    SetValue(KEY, REG_SZ, current, (lstrlenW(current) + 1) * 2);
}

}  // namespace
