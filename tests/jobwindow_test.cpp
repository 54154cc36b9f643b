// The job window document events start: open requests and the abort message, ShellExecuteA and AbortDoc hooked.
#include "driver.h"
#include "guarded.h"
#include <algorithm>
#include <thread>

namespace {

// The calls as "verb|file|parameters|show;", "(dir)" when a folder is given; *.none files have no registered program.
// Reading the strings runs into the guard page after a block whose string the module let through unended.
std::string g_calls;
HINSTANCE WINAPI FakeShellExecute(HWND hwnd, LPCSTR verb, LPCSTR file, LPCSTR params, LPCSTR dir, INT show)
{
    g_calls += std::string(hwnd ? "(owner)" : "") + (verb ? verb : "") + "|" + (file ? file : "") + "|" +
               (params ? params : "") + "|" + std::to_string(show) + (dir ? "(dir);" : ";");
    return (HINSTANCE)(INT_PTR)(strstr(file ? file : "", ".none") ? SE_ERR_NOASSOC : 42);
}

volatile LONG g_nAborted;    // called on the window's thread; counts aborts of the latest job's device context
int WINAPI FakeAbortDoc(HDC hdc)
{
    return hdc == (HDC)0x5678 ? InterlockedIncrement(&g_nAborted) : 0;
}

int Event(int escape, HDC hdc = NULL)
{
    static auto event = (decltype(&DrvDocumentEvent))(void *)GetProcAddress(TheDriver().hModule, "DrvDocumentEvent");
    return event(NULL, hdc, escape, 0, NULL, 0, NULL);
}

TEST(JobWindow, StartsOnceAndServesEveryLaterJob)
{
    ASSERT_EQ(nullptr, FindWindowW(L"QLR_UW", L"")) << "a job window is already on this desktop";
    EXPECT_EQ(1, Event(DOCUMENTEVENT_CREATEDCPOST, (HDC)0x1234)) << "no window yet";
    HANDLE go = CreateEventW(NULL, TRUE, FALSE, NULL);
    auto race = [&] { WaitForSingleObject(go, INFINITE); EXPECT_EQ(1, Event(DOCUMENTEVENT_CREATEDCPRE)) << "racing"; };
    std::thread a(race), b(race);
    SetEvent(go);
    a.join();
    b.join();
    HWND hwnd = FindWindowW(L"QLR_UW", L"");
    ASSERT_NE(nullptr, hwnd);
    EXPECT_EQ(nullptr, FindWindowExW(NULL, hwnd, L"QLR_UW", L"")) << "two racing jobs start one window";
    EXPECT_NE(GetCurrentThreadId(), GetWindowThreadProcessId(hwnd, NULL)) << "a thread of its own";
    EXPECT_EQ((DWORD)WS_POPUP, (DWORD)GetWindowLongW(hwnd, GWL_STYLE) & ~(WS_CLIPSIBLINGS | WS_CLIPCHILDREN));
    EXPECT_EQ(nullptr, GetPropW(hwnd, L"PRN_HDC"));
    RECT rc;
    GetWindowRect(hwnd, &rc);
    EXPECT_TRUE(rc.left == -1 && rc.top == -1 && rc.right == -1 && rc.bottom == -1) << "at (-1, -1), 0 by 0";
    EXPECT_EQ(1, Event(DOCUMENTEVENT_CREATEDCPRE));
    EXPECT_EQ(hwnd, FindWindowW(L"QLR_UW", L"")) << "a later job starts no window (found first if it did)";
    EXPECT_EQ(1, Event(DOCUMENTEVENT_CREATEDCPOST, (HDC)0x5678));
    EXPECT_EQ((HANDLE)0x5678, GetPropW(hwnd, L"PRN_HDC"));
    for (int other : { DOCUMENTEVENT_STARTDOC, DOCUMENTEVENT_ENDDOC, DOCUMENTEVENT_DELETEDC, 99 })
        EXPECT_EQ(1, Event(other, (HDC)0x9999)) << "event " << other;
    EXPECT_EQ((HANDLE)0x5678, GetPropW(hwnd, L"PRN_HDC"));
    // Requests: command, file field, application field (the block ends with its NUL) -> result, calls.
    ASSERT_TRUE(HookImport(L"shell32.dll", "ShellExecuteA", (void *)FakeShellExecute));
    ASSERT_TRUE(HookImport(L"gdi32.dll", "AbortDoc", (void *)FakeAbortDoc));
#define OPEN_AS "open|RUNDLL32.EXE|shell32.dll,OpenAs_RunDLL "
    const struct { int command; const char *file, *app; LRESULT result; const char *calls; } rows[] = {
        { 0, "C:\\out\\doc_1.jpg", "C:\\apps\\view.exe", TRUE, "open|C:\\apps\\view.exe|C:\\out\\doc_1.jpg|5;" },
        { 0, "C:\\out\\doc_1.jpg", "", TRUE, "open|C:\\out\\doc_1.jpg||5;" },
        { 0, "C:\\out\\doc_1.none", "", TRUE, "open|C:\\out\\doc_1.none||5;" OPEN_AS "C:\\out\\doc_1.none|1;" },
        { 0, "C:\\out\\b.jpg", "C:\\v.none", TRUE, "open|C:\\v.none|C:\\out\\b.jpg|5;" OPEN_AS "C:\\out\\b.jpg|1;" },
        { 1, "C:\\out\\doc_1.jpg", "", FALSE, "" },
    };
    for (const auto &r : rows) {
        char block[4 + 260 + 260] = {};
        memcpy(block, &r.command, 4);
        strcpy(block + 4, r.file);
        strcpy(block + 264, r.app);
        COPYDATASTRUCT request = { 0, 265 + (DWORD)strlen(r.app), block };
        g_calls.clear();
        EXPECT_EQ(r.result, SendMessageW(hwnd, WM_COPYDATA, 0, (LPARAM)&request)) << r.file << " with " << r.app;
        EXPECT_EQ(r.calls, g_calls) << r.file << " with " << r.app;
    }
    // Sent, and posted (handled when the window's thread gets to it): its loop goes on after either.
    EXPECT_EQ(0, SendMessageW(hwnd, 0x9000, 1, 2));
    EXPECT_TRUE(PostMessageW(hwnd, 0x9000, 1, 2));
    for (int i = 0; i < 500 && g_nAborted < 2; i++)
        Sleep(10);
    ASSERT_EQ(2, g_nAborted) << "aborts of the latest job's device context";
    // Blocks of every length up to 600 bytes against a page the process may not touch: without NULs, with the file
    // ended but not the program, and all zeros.  Only a block holding both strings (longer than 264) opens anything.
    g_calls.clear();
    for (DWORD len = 0; len <= 600; len++)
        for (int shape = 0; shape < 3; shape++) {
            Guarded block(len, shape == 2 ? 0 : 'A');
            memset(block.p, 0, std::min<DWORD>(len, 4));
            if (shape == 1 && len > 263)
                block.p[263] = 0;
            COPYDATASTRUCT request = { 0, len, block.p };
            SendMessageW(hwnd, WM_COPYDATA, 0, (LPARAM)&request);
        }
    EXPECT_EQ(600u - 264, (size_t)std::count(g_calls.begin(), g_calls.end(), ';'));
    // The window's thread runs in the module: the caller's last FreeLibrary must leave it loaded.
    FreeLibrary(TheDriver().hModule);
    EXPECT_EQ(TheDriver().hModule, GetModuleHandleW(L"QLRDRVUI.DLL"));
    EXPECT_EQ(0, SendMessageW(hwnd, 0x9000, 0, 0)) << "the window still answers";
}

}  // namespace
