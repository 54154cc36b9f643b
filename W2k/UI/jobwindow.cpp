/*
 * The job window: one hidden window per desktop, class "QLR_UW" with an empty
 * title, on a thread of its own.  The rendering module finds it by class and
 * title and asks it to open a finished image (WM_COPYDATA) or to abort the
 * job (0x9000) whose device context it keeps in the property "PRN_HDC".
 */
#include "qlrui.h"

#define JOB_CLASS        L"QLR_UW"
#define JOB_TITLE        L""
#define JOB_DC_PROPERTY  L"PRN_HDC"
#define WM_QLR_ABORT     (WM_APP + 0x1000)
#define START_WAIT_MS    1000

/* The open request's block: command at 0, the image at 4, the program from 264. */
#define REQUEST_OPEN     0
#define FILE_OFFSET      4
#define FILE_CHARS       260
#define APP_OFFSET       (FILE_OFFSET + FILE_CHARS)

static HWND g_hJobWindow;
static CRITICAL_SECTION g_csJobWindow;

void InitJobWindowLock(void)
{
    InitializeCriticalSection(&g_csJobWindow);
}

static HWND FindJobWindow(void)
{
    return FindWindowW(JOB_CLASS, JOB_TITLE);
}

static void OpenResult(LPCSTR pszApplication, LPCSTR pszFile)
{
    INT_PTR rc = pszApplication[0]
                     ? (INT_PTR)ShellExecuteA(NULL, "open", pszApplication, pszFile, NULL, SW_SHOW)
                     : (INT_PTR)ShellExecuteA(NULL, "open", pszFile, NULL, NULL, SW_SHOW);
    if (rc != SE_ERR_NOASSOC)
        return;
    /* No program for the type: the system's Open With dialog asks the user. */
    char szParams[sizeof("shell32.dll,OpenAs_RunDLL ") + FILE_CHARS];
    wsprintfA(szParams, "shell32.dll,OpenAs_RunDLL %s", pszFile);
    ShellExecuteA(NULL, "open", "RUNDLL32.EXE", szParams, NULL, SW_SHOWNORMAL);
}

/* A request is read only within its block: both strings must end inside it. */
static BOOL ParseOpenRequest(const COPYDATASTRUCT *pcds, LPCSTR *ppszFile, LPCSTR *ppszApplication)
{
    const char *p = (const char *)pcds->lpData;
    if (!p || pcds->cbData <= APP_OFFSET || *(const DWORD *)p != REQUEST_OPEN)
        return FALSE;
    if (!memchr(p + FILE_OFFSET, 0, FILE_CHARS) || !memchr(p + APP_OFFSET, 0, pcds->cbData - APP_OFFSET))
        return FALSE;
    *ppszFile = p + FILE_OFFSET;
    *ppszApplication = p + APP_OFFSET;
    return TRUE;
}

static LRESULT CALLBACK JobWindowProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_COPYDATA) {
        LPCSTR pszFile, pszApplication;
        if (ParseOpenRequest((const COPYDATASTRUCT *)lParam, &pszFile, &pszApplication)) {
            OpenResult(pszApplication, pszFile);
            return TRUE;
        }
    } else if (msg == WM_QLR_ABORT) {
        AbortDoc((HDC)GetPropW(hwnd, JOB_DC_PROPERTY));
        return 0;
    }
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}

/* The semaphore handle is the thread's own: it is released and closed here,
 * so a release after the creator stopped waiting never meets a closed handle. */
static DWORD WINAPI JobWindowThread(LPVOID pSemaphore)
{
    HANDLE hSemaphore = (HANDLE)pSemaphore;
    WNDCLASSW wc = {};
    wc.lpfnWndProc = JobWindowProc;
    wc.hInstance = g_hModule;
    wc.lpszClassName = JOB_CLASS;
    RegisterClassW(&wc);
    HWND hwnd = CreateWindowExW(0, JOB_CLASS, JOB_TITLE, WS_POPUP, -1, -1, 0, 0, NULL, NULL, g_hModule, NULL);
    g_hJobWindow = hwnd;
    if (hwnd)
        ReleaseSemaphore(hSemaphore, 1, NULL);
    CloseHandle(hSemaphore);
    if (!hwnd)
        return 0;
    MSG msg;
    while (GetMessageW(&msg, hwnd, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    return 0;
}

static BOOL StartJobWindow(void)
{
    HANDLE hSemaphore = CreateSemaphoreW(NULL, 0, 1, NULL), hThreadCopy = NULL;
    if (!hSemaphore)
        return FALSE;
    if (!DuplicateHandle(GetCurrentProcess(), hSemaphore, GetCurrentProcess(), &hThreadCopy, 0, FALSE,
                         DUPLICATE_SAME_ACCESS)) {
        CloseHandle(hSemaphore);
        return FALSE;
    }
    HANDLE hThread = CreateThread(NULL, 0, JobWindowThread, hThreadCopy, 0, NULL);
    if (!hThread) {
        CloseHandle(hThreadCopy);
        CloseHandle(hSemaphore);
        return FALSE;
    }
    CloseHandle(hThread);
    WaitForSingleObject(hSemaphore, START_WAIT_MS);
    CloseHandle(hSemaphore);
    return TRUE;
}

/* Two printing threads of one process must not start two windows: the look-up
 * and the start happen under one lock. */
static int OnCreateDcPre(void)
{
    EnterCriticalSection(&g_csJobWindow);
    g_hJobWindow = FindJobWindow();
    if (!g_hJobWindow)
        StartJobWindow();
    g_hJobWindow = FindJobWindow();
    HWND hwnd = g_hJobWindow;
    LeaveCriticalSection(&g_csJobWindow);
    return hwnd ? DOCUMENTEVENT_SUCCESS : DOCUMENTEVENT_FAILURE;
}

extern "C" int WINAPI DrvDocumentEvent(HANDLE hPrinter, HDC hdc, int iEsc, ULONG cbIn, PVOID pvIn, ULONG cbOut,
                                       PVOID pvOut)
{
    (void)hPrinter; (void)cbIn; (void)pvIn; (void)cbOut; (void)pvOut;
    switch (iEsc) {
    case DOCUMENTEVENT_CREATEDCPRE:
        return OnCreateDcPre();
    case DOCUMENTEVENT_CREATEDCPOST:
        /* This trace's wording is fixed: keep it as it stands, do not tidy it. */
        Trace(L"WND: %.8lx; DC: %.8lx\n", (DWORD)(DWORD_PTR)g_hJobWindow, (DWORD)(DWORD_PTR)hdc);
        if (g_hJobWindow)
            SetPropW(g_hJobWindow, JOB_DC_PROPERTY, (HANDLE)hdc);
        return DOCUMENTEVENT_SUCCESS;
    }
    return DOCUMENTEVENT_SUCCESS;
}
