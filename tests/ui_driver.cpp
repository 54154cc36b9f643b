#include "ui_driver.h"
#include "res/resource.h"
#include <gtest/gtest.h>
#include <commctrl.h>
#include <dlgs.h>
#include <prsht.h>
#include <algorithm>

namespace {

enum { TICK_MS = 30, MAX_TICKS = 400 };

const char *g_name;
const std::vector<Step> *g_steps;
size_t g_next;
int g_ticks;
HWND g_sheet;
std::vector<HWND> g_driving;    // dialogs whose steps are being played, outermost first

bool ClassIs(HWND hwnd, LPCWSTR name)
{
    WCHAR cls[16];
    GetClassNameW(hwnd, cls, 16);
    return !lstrcmpiW(cls, name);
}

int KindOf(HWND hDlg)
{
    return ClassIs(hDlg, L"#32768") ? MENU : FindWindowExW(hDlg, NULL, WC_TABCONTROLW, NULL) ? PAGE_SETUP
         : GetDlgItem(hDlg, IDC_PROFILE_LIST) ? MANAGER : GetDlgItem(hDlg, cmb13) ? FILE_DLG
         : GetDlgItem(hDlg, IDC_PROFILE_NAME) ? SAVE : GetDlgItem(hDlg, 0xFFFF) ? BOX : ABOUT_BOX;
}

// The window a step acts on: a page (brought to the front as a click on its
// tab would), one of the format page's panels, or the dialog itself.
HWND Target(HWND hDlg, int where)
{
    if (where >= SAVE)
        return hDlg;
    int index = where >= P_BMP ? FORMAT_PAGE : where;
    if (PropSheet_GetCurrentPageHwnd(g_sheet) != (HWND)SendMessageW(g_sheet, PSM_INDEXTOHWND, index, 0)) {
        SendMessageW(g_sheet, PSM_SETCURSEL, index, 0);
        RedrawWindow(g_sheet, NULL, NULL, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
    HWND hPage = PropSheet_GetCurrentPageHwnd(g_sheet), hPanel = NULL;
    for (int i = P_BMP; where >= P_BMP && i <= where; i++)
        hPanel = FindWindowExW(hPage, hPanel, L"#32770", NULL);
    return where >= P_BMP ? hPanel : hPage;
}

void Play(HWND hDlg, const Step &s, size_t index)
{
    HWND t = Target(hDlg, s.where), c = s.id ? GetDlgItem(t, s.id) : t;
    bool combo = ClassIs(c, L"ComboBox");
    std::string at = std::string(g_name) + ", step " + std::to_string(index) + ", control " + std::to_string(s.id);
    ASSERT_NE(nullptr, c) << at << " missing";
    std::wstring text = s.s ? s.s : L"";
    WCHAR item[300] = L"";
    switch (s.op) {
    case CLICK: SendMessageW(c, BM_CLICK, 0, 0); break;
    case CHOOSE:
        SendMessageW(c, combo ? CB_SETCURSEL : LB_SETCURSEL, s.n, 0);
        SendMessageW(t, WM_COMMAND, MAKEWPARAM(s.id, combo ? CBN_SELCHANGE : LBN_SELCHANGE), (LPARAM)c);
        break;
    case SELECT: SendMessageW(c, EM_SETSEL, LOWORD(s.n), HIWORD(s.n)); break;
    case SET: SetWindowTextW(c, s.s); break;
    case TYPE: SetWindowTextW(c, s.s); /* fall through */
    case LEAVE:
        SendMessageW(t, WM_COMMAND, MAKEWPARAM(s.id, combo ? CBN_KILLFOCUS : EN_KILLFOCUS), (LPARAM)c);
        break;
    case KEY: PostMessageW(c, WM_CHAR, s.n, 0); break;
    case PRESS: PostMessageW(g_sheet, PSM_PRESSBUTTON, s.n, 0); break;
    case TEXT: EXPECT_EQ(text, TextOf(c)) << at << " text"; break;
    case CHECK: EXPECT_EQ(s.n, SendMessageW(c, BM_GETCHECK, 0, 0)) << at << " check"; break;
    case ON: EXPECT_EQ(s.n != 0, IsWindowEnabled(c) != FALSE) << at << " enabled"; break;
    case SHOWN: EXPECT_EQ(s.n != 0, IsWindowVisible(c) != FALSE) << at << " visible"; break;
    case ITEM:
        SendMessageW(c, combo ? CB_GETLBTEXT : LB_GETTEXT, s.n, (LPARAM)item);
        EXPECT_EQ(text, item) << at << " entry " << s.n;
        break;
    case COUNT: EXPECT_EQ(s.n, SendMessageW(c, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0)) << at << " size"; break;
    case SEL: EXPECT_EQ(s.n, SendMessageW(c, combo ? CB_GETCURSEL : LB_GETCURSEL, 0, 0)) << at << " choice"; break;
    }
}

BOOL CALLBACK FindInputDialog(HWND hwnd, LPARAM lParam)
{
    bool found = (ClassIs(hwnd, L"#32768") || ClassIs(hwnd, L"#32770")) && IsWindowVisible(hwnd) && IsWindowEnabled(hwnd);
    return found ? (*(HWND *)lParam = hwnd, FALSE) : TRUE;
}

// Ticks come again inside the modal loops that a step opens: the dialog of
// such a loop gets the steps aimed at it, and the outer step goes on once
// it has closed.
void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD)
{
    HWND h = NULL;
    EnumThreadWindows(GetCurrentThreadId(), FindInputDialog, (LPARAM)&h);
    if (++g_ticks > MAX_TICKS) {
        if (h)
            PostMessageW(h, WM_COMMAND, IDCANCEL, 0);
        return;
    }
    if (!h || std::find(g_driving.begin(), g_driving.end(), h) != g_driving.end())
        return;
    int kind = KindOf(h);
    if (kind == PAGE_SETUP)
        g_sheet = h;
    g_driving.push_back(h);
    while (g_next < g_steps->size()) {
        const Step &s = (*g_steps)[g_next];
        if (s.where < SAVE ? kind != PAGE_SETUP : s.where != kind)
            break;
        Play(h, s, g_next++);
    }
    g_driving.pop_back();
}

// A sheet that never lets the timer run (a page answering every message
// itself) is ended from a second thread instead.
DWORD WINAPI Watchdog(LPVOID done)
{
    if (WaitForSingleObject(done, 60000) == WAIT_TIMEOUT)
        fprintf(stderr, "%s: the sheet hung\n", g_name), fflush(stderr), TerminateProcess(GetCurrentProcess(), 3);
    return 0;
}

}  // namespace

std::wstring TextOf(HWND hwnd)
{
    WCHAR sz[1100] = L"";
    GetWindowTextW(hwnd, sz, 1100);
    return sz;
}

size_t RunScript(const char *name, const std::vector<Step> &steps, const std::function<void()> &open)
{
    g_name = name, g_steps = &steps, g_next = 0, g_ticks = 0, g_sheet = NULL;
    HANDLE done = CreateEventW(NULL, TRUE, FALSE, NULL), watch = CreateThread(NULL, 0, Watchdog, done, 0, NULL);
    UINT_PTR timer = SetTimer(NULL, 0, TICK_MS, Tick);
    open();
    KillTimer(NULL, timer);
    SetEvent(done), WaitForSingleObject(watch, INFINITE), CloseHandle(watch), CloseHandle(done);
    return g_next;
}
