// The job window as the spooler's events create it and as the rendering
// module, a second process, talks to it.
#include "driver.h"
#include "guarded.h"
#include <tlhelp32.h>
#include <string>
#include <vector>

namespace {

typedef int (WINAPI *PFN_EVENT)(HANDLE, HDC, int, ULONG, PVOID, ULONG, PVOID);

std::wstring Beside(LPCWSTR name)
{
    WCHAR path[MAX_PATH];
    GetModuleFileNameW(NULL, path, MAX_PATH);
    lstrcpyW(wcsrchr(path, L'\\') + 1, name);
    return path;
}

std::wstring RecordFile()
{
    WCHAR path[MAX_PATH];
    GetTempPathW(MAX_PATH, path);
    return std::wstring(path) + L"qlr-recorded.txt";
}

// Waits for the recorder's file; empty when nothing was started.
std::wstring Recorded(DWORD ms = 5000)
{
    for (DWORD waited = 0; waited < ms; waited += 50) {
        HANDLE h = CreateFileW(RecordFile().c_str(), GENERIC_READ, 0, NULL, OPEN_EXISTING, 0, NULL);
        if (h != INVALID_HANDLE_VALUE) {
            WCHAR text[1024] = L"";
            DWORD cb = 0;
            ReadFile(h, text, sizeof(text) - sizeof(WCHAR), &cb, NULL);
            CloseHandle(h);
            if (cb)
                return std::wstring(text, cb / sizeof(WCHAR));
        }
        Sleep(50);
    }
    return L"";
}

DWORD RunClient(const std::wstring &args)
{
    std::wstring line = L"\"" + Beside(L"jobclient.exe") + L"\" " + args;
    STARTUPINFOW si = {};
    si.cb = sizeof(si);
    PROCESS_INFORMATION pi;
    if (!CreateProcessW(NULL, &line[0], NULL, NULL, FALSE, 0, NULL, NULL, &si, &pi))
        return 1000;
    WaitForSingleObject(pi.hProcess, 10000);
    DWORD code = 1001;
    GetExitCodeProcess(pi.hProcess, &code);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    return code;
}

int ThreadCount()
{
    HANDLE snap = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 te = {};
    te.dwSize = sizeof(te);
    int n = 0;
    for (BOOL ok = Thread32First(snap, &te); ok; ok = Thread32Next(snap, &te))
        n += te.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(snap);
    return n;
}

// The module's calls of ShellExecuteA, seen through its import table: the
// Open With route runs a system program whose own window Wine does not show.
struct ShellCall { std::string file, params; int show; INT_PTR result; };
std::vector<ShellCall> g_shellCalls;
typedef HINSTANCE (WINAPI *PFN_SHELLEXECUTEA)(HWND, LPCSTR, LPCSTR, LPCSTR, LPCSTR, INT);
PFN_SHELLEXECUTEA g_realShellExecute;

// A dry run records the call without starting anything, and counts the
// strings that do not end inside the block the request came in.
bool g_bDryRun;
const BYTE *g_blockStart, *g_blockEnd;
int g_overruns;

bool EndsInBlock(LPCSTR s)
{
    const BYTE *p = (const BYTE *)s;
    return !s || p < g_blockStart || p >= g_blockEnd || memchr(p, 0, g_blockEnd - p);
}

HINSTANCE WINAPI RecordShellExecute(HWND hwnd, LPCSTR verb, LPCSTR file, LPCSTR params, LPCSTR dir, INT show)
{
    if (g_bDryRun && !(EndsInBlock(file) && EndsInBlock(params))) {
        g_overruns++;
        return (HINSTANCE)42;
    }
    HINSTANCE result = g_bDryRun ? (HINSTANCE)42 : g_realShellExecute(hwnd, verb, file, params, dir, show);
    g_shellCalls.push_back({ file ? file : "", params ? params : "", show, (INT_PTR)result });
    return result;
}

// Points the module's import of one function at a recorder; returns the
// function the import pointed at before.
void *HookImport(HMODULE hModule, LPCWSTR dll, const char *name, void *replacement)
{
    BYTE *base = (BYTE *)hModule;
    IMAGE_NT_HEADERS *nt = (IMAGE_NT_HEADERS *)(base + ((IMAGE_DOS_HEADER *)base)->e_lfanew);
    IMAGE_DATA_DIRECTORY dir = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    void *real = (void *)GetProcAddress(GetModuleHandleW(dll), name);
    for (IMAGE_IMPORT_DESCRIPTOR *d = (IMAGE_IMPORT_DESCRIPTOR *)(base + dir.VirtualAddress); d->Name; d++)
        for (IMAGE_THUNK_DATA *t = (IMAGE_THUNK_DATA *)(base + d->FirstThunk); t->u1.Function; t++) {
            if ((void *)t->u1.Function != real)
                continue;
            DWORD old;
            VirtualProtect(&t->u1.Function, sizeof(void *), PAGE_READWRITE, &old);
            t->u1.Function = (ULONG_PTR)replacement;
            VirtualProtect(&t->u1.Function, sizeof(void *), old, &old);
            return real;
        }
    return NULL;
}

bool HookShellExecute(HMODULE hModule)
{
    if (!g_realShellExecute)
        g_realShellExecute = (PFN_SHELLEXECUTEA)HookImport(hModule, L"shell32.dll", "ShellExecuteA",
                                                           (void *)RecordShellExecute);
    return g_realShellExecute != NULL;
}

std::vector<HDC> g_aborted;
int WINAPI RecordAbortDoc(HDC hdc)
{
    g_aborted.push_back(hdc);
    return 1;
}

class JobWindow : public ::testing::Test {
protected:
    PFN_EVENT Event = NULL;
    void SetUp() override
    {
        ASSERT_NE(nullptr, TheDriver().hModule);
        Event = (PFN_EVENT)(void *)GetProcAddress(TheDriver().hModule, "DrvDocumentEvent");
        ASSERT_NE(nullptr, Event);
        DeleteFileW(RecordFile().c_str());
    }
};

// Runs first: before any CREATEDCPRE this process knows no job window.
TEST_F(JobWindow, AStartsOnceAndServesEveryLaterJob)
{
    EXPECT_EQ(1, Event(NULL, (HDC)0x1234, DOCUMENTEVENT_CREATEDCPOST, 0, NULL, 0, NULL));
    ASSERT_EQ(nullptr, FindWindowW(L"QLR_UW", L"")) << "another job window is already on this desktop";

    EXPECT_EQ(1, Event(NULL, NULL, DOCUMENTEVENT_CREATEDCPRE, 0, NULL, 0, NULL));
    HWND hwnd = FindWindowW(L"QLR_UW", L"");
    ASSERT_NE(nullptr, hwnd);
    EXPECT_NE(GetCurrentThreadId(), GetWindowThreadProcessId(hwnd, NULL)) << "a thread of its own";
    EXPECT_FALSE(IsWindowVisible(hwnd));
    EXPECT_EQ(WS_POPUP, (DWORD)GetWindowLongW(hwnd, GWL_STYLE) & ~(WS_CLIPSIBLINGS | WS_CLIPCHILDREN));

    int threads = ThreadCount();
    EXPECT_EQ(1, Event(NULL, NULL, DOCUMENTEVENT_CREATEDCPRE, 0, NULL, 0, NULL));
    EXPECT_EQ(threads, ThreadCount()) << "a second job starts no second thread";
    EXPECT_EQ(hwnd, FindWindowW(L"QLR_UW", L""));

    EXPECT_EQ(1, Event(NULL, (HDC)0x5678, DOCUMENTEVENT_CREATEDCPOST, 0, NULL, 0, NULL));
    EXPECT_EQ((HANDLE)0x5678, GetPropW(hwnd, L"PRN_HDC"));
    for (int other : { DOCUMENTEVENT_STARTDOC, DOCUMENTEVENT_ENDDOC, DOCUMENTEVENT_DELETEDC, 99 })
        EXPECT_EQ(1, Event(NULL, NULL, other, 0, NULL, 0, NULL)) << "event " << other;
    EXPECT_EQ((HANDLE)0x5678, GetPropW(hwnd, L"PRN_HDC"));
}

TEST_F(JobWindow, OpenRequestsRunTheChosenProgramWithTheFileAsItsParameters)
{
    ASSERT_EQ(1, Event(NULL, NULL, DOCUMENTEVENT_CREATEDCPRE, 0, NULL, 0, NULL));
    EXPECT_EQ(1u, RunClient(L"open \"" + Beside(L"recorder.exe") + L"\" C:\\out\\doc_1.jpg"));
    std::wstring line = Recorded();
    ASSERT_FALSE(line.empty()) << "the application was not started";
    EXPECT_EQ(L" C:\\out\\doc_1.jpg", line.substr(line.size() - 17));
}

TEST_F(JobWindow, OpenRequestsWithoutAProgramUseTheAssociationOrOpenWith)
{
    ASSERT_EQ(1, Event(NULL, NULL, DOCUMENTEVENT_CREATEDCPRE, 0, NULL, 0, NULL));
    std::wstring command = L"\"" + Beside(L"recorder.exe") + L"\" \"%1\"";
    RegSetValueW(HKEY_CLASSES_ROOT, L".qlrjob", REG_SZ, L"QlrJob.Test", 0);
    RegSetValueW(HKEY_CLASSES_ROOT, L"QlrJob.Test\\shell\\open\\command", REG_SZ, command.c_str(), 0);
    WCHAR temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    std::wstring image = std::wstring(temp) + L"doc_1.qlrjob";
    CloseHandle(CreateFileW(image.c_str(), GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL));
    EXPECT_EQ(1u, RunClient(L"open \"\" \"" + image + L"\""));
    std::wstring line = Recorded();
    EXPECT_NE(std::wstring::npos, line.find(image)) << "recorded: " << line.size();

    // A type without a program: the system's Open With dialog for the file.
    ASSERT_TRUE(HookShellExecute(TheDriver().hModule));
    g_shellCalls.clear();
    std::wstring orphan = std::wstring(temp) + L"doc_1.qlrnone";
    CloseHandle(CreateFileW(orphan.c_str(), GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL));
    EXPECT_EQ(1u, RunClient(L"open \"\" \"" + orphan + L"\""));
    std::string orphanA(orphan.begin(), orphan.end());
    ASSERT_EQ(2u, g_shellCalls.size());
    EXPECT_EQ(orphanA, g_shellCalls[0].file);
    EXPECT_EQ("", g_shellCalls[0].params);
    EXPECT_EQ(SW_SHOW, g_shellCalls[0].show);
    EXPECT_EQ(SE_ERR_NOASSOC, g_shellCalls[0].result);
    EXPECT_EQ("RUNDLL32.EXE", g_shellCalls[1].file);
    EXPECT_EQ("shell32.dll,OpenAs_RunDLL " + orphanA, g_shellCalls[1].params);
    EXPECT_EQ(SW_SHOWNORMAL, g_shellCalls[1].show);

    DeleteFileW(image.c_str());
    DeleteFileW(orphan.c_str());
    RegDeleteKeyW(HKEY_CLASSES_ROOT, L"QlrJob.Test\\shell\\open\\command");
    RegDeleteKeyW(HKEY_CLASSES_ROOT, L"QlrJob.Test\\shell\\open");
    RegDeleteKeyW(HKEY_CLASSES_ROOT, L"QlrJob.Test\\shell");
    RegDeleteKeyW(HKEY_CLASSES_ROOT, L"QlrJob.Test");
    RegDeleteKeyW(HKEY_CLASSES_ROOT, L".qlrjob");
}

TEST_F(JobWindow, MalformedRequestsAreIgnoredAndAbortEndsTheLatestJob)
{
    ASSERT_EQ(1, Event(NULL, NULL, DOCUMENTEVENT_CREATEDCPRE, 0, NULL, 0, NULL));
    ASSERT_TRUE(HookShellExecute(TheDriver().hModule));
    g_shellCalls.clear();
    EXPECT_EQ(0u, RunClient(L"short"));
    EXPECT_EQ(0u, RunClient(L"unterminated"));
    EXPECT_TRUE(g_shellCalls.empty()) << "nothing is opened for a malformed block";

    ASSERT_NE(nullptr, HookImport(TheDriver().hModule, L"gdi32.dll", "AbortDoc", (void *)RecordAbortDoc));
    EXPECT_EQ(1, Event(NULL, (HDC)0x4321, DOCUMENTEVENT_CREATEDCPOST, 0, NULL, 0, NULL));
    EXPECT_EQ(0u, RunClient(L"abort"));
    ASSERT_EQ(1u, g_aborted.size());
    EXPECT_EQ((HDC)0x4321, g_aborted[0]) << "the device context of the latest job";
    EXPECT_NE(nullptr, FindWindowW(L"QLR_UW", L"")) << "the window survives";
}

// Blocks of every length up to 600 bytes, each ending against a page the
// process may not touch: without NULs, with the file name ended but not the
// program, and all zeros.  Only a block holding both strings opens anything.
TEST_F(JobWindow, RequestsOfEveryLengthAreReadOnlyWithinTheirBlock)
{
    ASSERT_EQ(1, Event(NULL, NULL, DOCUMENTEVENT_CREATEDCPRE, 0, NULL, 0, NULL));
    HWND hwnd = FindWindowW(L"QLR_UW", L"");
    ASSERT_NE(nullptr, hwnd);
    ASSERT_TRUE(HookShellExecute(TheDriver().hModule));
    g_shellCalls.clear();
    g_bDryRun = true;
    g_overruns = 0;
    const DWORD FILE_AT = 4, APP_AT = 264;
    int tried = 0, whole = 0;
    for (DWORD len = 0; len <= 600; len++)
        for (int shape = 0; shape < 3; shape++) {
            Guarded block(len, shape == 2 ? 0 : 'A');
            if (len >= 4)
                memset(block.p, 0, 4);                      // an open request
            if (shape == 1 && len > FILE_AT + 259)
                block.p[FILE_AT + 259] = 0;
            COPYDATASTRUCT cds = { 0, len, block.p };
            g_blockStart = block.p;
            g_blockEnd = block.p + len;
            SendMessageW(hwnd, WM_COPYDATA, 0, (LPARAM)&cds);
            whole += shape == 2 && len > APP_AT;
            tried++;
        }
    g_bDryRun = false;
    printf("copy-data blocks tried: %d, %d of them whole requests\n", tried, whole);
    EXPECT_EQ(0, g_overruns) << "strings read past the end of their block";
    EXPECT_EQ((size_t)whole, g_shellCalls.size());
    for (const ShellCall &call : g_shellCalls)
        EXPECT_EQ("", call.file + call.params);
}

}  // namespace
