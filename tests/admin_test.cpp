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
    return ValueOf(HKEY_CURRENT_USER, KEY L"\\" + name);
}

TEST(AdminTool, CommandsOnProfilesFilesAndPrinters)
{
    // Holding the printer open keeps Wine's spooler running between the
    // tool's runs; otherwise every run waits for it to start again.
    HANDLE hPrinter;
    ASSERT_TRUE(OpenPrinterW((LPWSTR)L"Quillora", &hPrinter, NULL));
    WCHAR current[130] = L"";
    DWORD cb = sizeof(current);
    RegGetValueW(HKEY_CURRENT_USER, KEY, NULL, RRF_RT_REG_SZ, NULL, current, &cb);
    const std::wstring path = TempFile(L"qlr-admin.qlr"), file = L"\"" + path + L"\"";
    DeleteFileW(path.c_str());
    std::vector<BYTE> captured, deployed;
    const struct { std::wstring args; DWORD code; const char *printed; } script[] = {
        { L"capture Quillora \"qlr admin A\"", 0, "" },
        { L"capture \"No Such Printer\" \"qlr admin C\"", 1, "" },
        { L"list", 0, "  qlr admin A" },
        { L"show \"qlr admin A\"", 0, "dwSignature        0x4453444D" },
        { L"export \"qlr admin A\" " + file, 0, "" },
        { L"rename \"qlr admin A\" \"qlr admin B\"", 0, "" },
        { L"rename \"qlr admin A\" \"qlr admin C\"", 1, "" },
        { L"show \"qlr admin A\"", 1, "" },
        // Deployed over a profile spelt in other case: the current name
        // follows the stored key, so the pages still find it.
        { L"rename \"qlr admin B\" \"QLR ADMIN A\"", 0, "" },
        { L"deploy " + file, 0, "" },
        { L"list", 0, "* QLR ADMIN A" },
        { L"print file " + file, 0, "dwSignature        0x4453444D" },
        { L"delete \"qlr admin a\"", 0, "" },
        { L"delete \"qlr admin a\"", 1, "" },
        { L"import \"" + path + L".missing\"", 1, "refused" },
        { L"print raw \"" + path + L".missing\"", 1, "" },
        { L"print printer Quillora", 0, "dmDeviceName       \"Quillora\"" },
        { L"print printer \"No Such Printer\"", 1, "" },
        { L"frobnicate", 2, "" },
    };
    for (const auto &step : script) {
        DWORD code;
        std::string out = Admin(step.args, &code);
        EXPECT_EQ(step.code, code) << std::string(step.args.begin(), step.args.end()) << ": " << out;
        EXPECT_NE(std::string::npos, out.find(step.printed)) << std::string(step.args.begin(), step.args.end()) << ": " << out;
        if (&step == script)
            captured = Stored(L"qlr admin A");
        if (step.args.find(L"deploy") == 0)
            deployed = Stored(L"qlr admin A");
    }
    ASSERT_EQ(QLR_RECORD_SIZE, (int)captured.size()) << "captured whole";
    EXPECT_EQ(captured, deployed) << "deployed whole";
    EXPECT_TRUE(Stored(L"qlr admin B").empty() && Stored(L"qlr admin C").empty());

    DeleteFileW(path.c_str());
    RegSetValueW(HKEY_CURRENT_USER, KEY, REG_SZ, current, 0);
    ClosePrinter(hPrinter);
}

}  // namespace
