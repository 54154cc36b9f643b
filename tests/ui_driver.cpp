#include "ui_driver.h"
#include "res/resource.h"
#include <gtest/gtest.h>
#include <commctrl.h>
#include <dlgs.h>
#include <prsht.h>
#include <algorithm>
#include "files.h"
#include "pictures.h"

namespace {

enum { TICK_MS = 15, MAX_TICKS = 3000 };
enum Played { DONE, DONE_WAIT, AGAIN };     // next step now; next step on a later tick; this step again then

const char *g_name;
const std::vector<Step> *g_steps;
size_t g_next, g_sub;    // the step being played, and how far a step of several ticks has come
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
         : GetDlgItem(hDlg, IDC_PROFILE_NAME) ? SAVE : FindWindowExW(hDlg, NULL, WC_TREEVIEWW, NULL) ? FOLDER_DLG
         : GetDlgItem(hDlg, 0xFFFF) ? BOX : ABOUT_BOX;
}

// The window a step acts on: a page (brought to the front as a click on its tab would), a panel, or the dialog.
HWND Target(HWND hDlg, int where)
{
    if (where >= SAVE)
        return hDlg;
    int index = where >= P_BMP ? FORMAT_PAGE : where;
    if (PropSheet_GetCurrentPageHwnd(g_sheet) != (HWND)SendMessageW(g_sheet, PSM_INDEXTOHWND, index, 0))
        SendMessageW(g_sheet, PSM_SETCURSEL, index, 0);    // it paints when the loop gets to it, as after a click
    HWND hPage = PropSheet_GetCurrentPageHwnd(g_sheet), hPanel = NULL;
    for (int i = P_BMP; where >= P_BMP && i <= where; i++)
        hPanel = FindWindowExW(hPage, hPanel, L"#32770", NULL);
    return where >= P_BMP ? hPanel : hPage;
}

// A control of the window or of the format panel it shows (a page's tab stops run through its panel).
HWND Control(HWND t, int id)
{
    HWND c = GetDlgItem(t, id);
    for (HWND panel = NULL; !c && (panel = FindWindowExW(t, panel, L"#32770", NULL));)
        c = IsWindowVisible(panel) ? GetDlgItem(panel, id) : NULL;
    return c;
}

// The control with the focus; the edit of a combo box counts as the combo.
HWND Focused()
{
    HWND f = GetFocus();
    return f && ClassIs(GetParent(f), L"ComboBox") ? GetParent(f) : f;
}

// A real key, through the system's input queue to the active window, as a user presses it.
void Press(HWND t, WCHAR key, bool shift)
{
    const BYTE vk = key == L'\r' ? VK_RETURN : key == L'\t' ? VK_TAB : key == 0x1b ? VK_ESCAPE : (BYTE)towupper(key);
    SetForegroundWindow(GetAncestor(t, GA_ROOT));
    if (shift)
        keybd_event(VK_SHIFT, 0, 0, 0);
    keybd_event(vk, 0, 0, 0), keybd_event(vk, 0, KEYEVENTF_KEYUP, 0);
    if (shift)
        keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
}

// The module paints its controls through BeginPaint alone, where the system's controls paint into
// a device context that comes with WM_PAINT: one that stays blank tells a skinned control.
bool Skinned(HWND c)
{
    RECT rc;
    GetClientRect(c, &rc);
    BITMAPINFO bi = { { sizeof(BITMAPINFOHEADER), rc.right, -rc.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0 }, {} };
    DWORD *bits = NULL;
    HDC dc = CreateCompatibleDC(NULL);
    HBITMAP bm = CreateDIBSection(dc, &bi, DIB_RGB_COLORS, (void **)&bits, NULL, 0);
    HGDIOBJ old = SelectObject(dc, bm);
    std::fill(bits, bits + rc.right * rc.bottom, 0x123456);
    SendMessageW(c, WM_PAINT, (WPARAM)dc, 0);
    GdiFlush();
    bool blank = std::count(bits, bits + rc.right * rc.bottom, 0x123456) == rc.right * rc.bottom;
    DeleteObject(SelectObject(dc, old)), DeleteDC(dc);
    return blank;
}

// The tools that tool-tip windows hold for the page's controls, as "id text|" each, in the order they were added;
// "!" marks a tool that is not the control's own window, subclassed and transparent.
std::wstring Tips(HWND page)
{
    std::wstring all;
    for (HWND tip = NULL; (tip = FindWindowExW(NULL, tip, TOOLTIPS_CLASSW, NULL));) {
        WCHAR text[300];
        TTTOOLINFOW ti = {};
        ti.cbSize = TTTOOLINFOW_V2_SIZE;
        const UINT flags = TTF_IDISHWND | TTF_SUBCLASS | TTF_TRANSPARENT;
        for (int i = 0; ti.lpszText = text, SendMessageW(tip, TTM_ENUMTOOLSW, i, (LPARAM)&ti); i++) {
            if (GetParent((HWND)ti.uId) != page || ti.hwnd != page)
                continue;
            ti.lpszText = text, text[0] = 0;
            SendMessageW(tip, TTM_GETTEXTW, 300, (LPARAM)&ti);    // a resource string comes back loaded
            all += std::to_wstring(GetDlgCtrlID((HWND)ti.uId)) + ((ti.uFlags & flags) == flags ? L" " : L" !") + text + L"|";
        }
    }
    return all;
}

Played Play(HWND hDlg, const Step &s, size_t index)
{
    HWND t = Target(hDlg, s.where), c = s.id ? Control(t, s.id) : t;
    bool combo = ClassIs(c, L"ComboBox");
    std::string at = std::string(g_name) + ", step " + std::to_string(index) + ", control " + std::to_string(s.id);
    EXPECT_NE(nullptr, c) << at << " missing";
    if (!c)
        return DONE;
    const std::wstring &text = s.s;
    WCHAR item[1100] = L"";
    switch (s.op) {
    case CLICK: SendMessageW(c, BM_CLICK, 0, 0); break;
    case CHOOSE:
        SendMessageW(c, combo ? CB_SETCURSEL : LB_SETCURSEL, s.n, 0);
        SendMessageW(t, WM_COMMAND, MAKEWPARAM(s.id, combo ? CBN_SELCHANGE : LBN_SELCHANGE), (LPARAM)c);
        break;
    case SELECT: SendMessageW(c, EM_SETSEL, LOWORD(s.n), HIWORD(s.n)); break;
    case SET: SetWindowTextW(c, s.s.c_str()); break;
    case TYPE: SetWindowTextW(c, s.s.c_str()); /* fall through */
    case LEAVE:
        SendMessageW(t, WM_COMMAND, MAKEWPARAM(s.id, combo ? CBN_KILLFOCUS : EN_KILLFOCUS), (LPARAM)c);
        break;
    case KEY: PostMessageW(c, WM_CHAR, s.n, 0); break;
    case PRESS: PostMessageW(g_sheet, PSM_PRESSBUTTON, s.n, 0); break;
    case TEXT:
        GetWindowTextW(c, item, ARRAYSIZE(item));
        EXPECT_EQ(text, item) << at << " text";
        break;
    case CHECK: EXPECT_EQ(s.n, SendMessageW(c, BM_GETCHECK, 0, 0)) << at << " check"; break;
    case ON: EXPECT_EQ(s.n != 0, IsWindowEnabled(c) != FALSE) << at << " enabled"; break;
    case SHOWN: EXPECT_EQ(s.n != 0, IsWindowVisible(c) != FALSE) << at << " visible"; break;
    case ITEM:
        SendMessageW(c, combo ? CB_GETLBTEXT : LB_GETTEXT, s.n, (LPARAM)item);
        EXPECT_EQ(text, item) << at << " entry " << s.n;
        break;
    case COUNT: EXPECT_EQ(s.n, SendMessageW(c, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0)) << at << " size"; break;
    case SEL: EXPECT_EQ(s.n, SendMessageW(c, combo ? CB_GETCURSEL : LB_GETCURSEL, 0, 0)) << at << " choice"; break;
    case LIMIT: EXPECT_EQ(s.n, SendMessageW(c, EM_GETLIMITTEXT, 0, 0)) << at << " limit"; break;
    case GO: SendMessageW(GetAncestor(c, GA_ROOT), WM_NEXTDLGCTL, (WPARAM)c, TRUE); break;
    case KEYS:
        Press(t, s.s[g_sub], s.n);
        return ++g_sub < s.s.size() ? AGAIN : DONE_WAIT;
    case FOCUS: EXPECT_EQ(c, Focused()) << at << " focus on " << GetDlgCtrlID(Focused()); break;
    case SKIN: EXPECT_EQ(s.n != 0, Skinned(c)) << at << " skin"; break;
    case TIPS: EXPECT_EQ(text, Tips(t)) << at << " tool tips"; break;
    case PREVIEW: {
        int w = 0, h = 0, landscape = 0, crop = 0;
        swscanf(s.s.c_str(), L"%d %d %d %d", &w, &h, &landscape, &crop);
        const Scheme now = { "", GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_BTNSHADOW), 0, 0, 0, 0, 0, 0, 0 };
        RedrawWindow(c, NULL, NULL, RDW_UPDATENOW);
        EXPECT_EQ("", ComparePreview(c, now, w, h, landscape, crop)) << at << " preview " << text;
        break;
    }
    case CLASSES:
        if (text.find(L'|') == std::wstring::npos)
            RegDeleteKeyW(HKEY_CLASSES_ROOT, text.c_str());
        else
            SetValue(HKEY_CLASSES_ROOT, text.substr(0, text.find(L'|')), REG_SZ, &text[text.find(L'|') + 1],
                     (text.size() - text.find(L'|')) * sizeof(WCHAR));
        break;
    case ICON:
        EXPECT_EQ(s.n != 0, SendMessageW(c, STM_GETICON, 0, 0) == (LRESULT)LoadIconW(NULL, IDI_APPLICATION)) << at << " icon";
        break;
    }
    return DONE;
}

BOOL CALLBACK FindInputDialog(HWND hwnd, LPARAM lParam)
{
    bool found = (ClassIs(hwnd, L"#32768") || ClassIs(hwnd, L"#32770")) && IsWindowVisible(hwnd) && IsWindowEnabled(hwnd);
    return found ? (*(HWND *)lParam = hwnd, FALSE) : TRUE;
}

// Ticks come again inside the modal loops that a step opens: the dialog of such a loop gets the steps aimed at it,
// and the outer step goes on once it has closed.
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
        size_t index = g_next++;    // a step that opens a modal loop is past when its dialog's steps come
        Played played = Play(h, s, index);
        if (played == AGAIN)
            g_next = index;
        else
            g_sub = 0;
        if (played != DONE)
            break;
    }
    g_driving.pop_back();
}

// A sheet that never lets the timer run (a page answering every message itself) is ended from a second thread.
DWORD WINAPI Watchdog(LPVOID done)
{
    if (WaitForSingleObject(done, 60000) == WAIT_TIMEOUT)
        fprintf(stderr, "%s: the sheet hung\n", g_name), fflush(stderr), TerminateProcess(GetCurrentProcess(), 3);
    return 0;
}

}  // namespace

size_t RunScript(const char *name, const std::vector<Step> &steps, const std::function<void()> &open)
{
    g_name = name, g_steps = &steps, g_next = 0, g_sub = 0, g_ticks = 0, g_sheet = NULL;
    HANDLE done = CreateEventW(NULL, TRUE, FALSE, NULL), watch = CreateThread(NULL, 0, Watchdog, done, 0, NULL);
    UINT_PTR timer = SetTimer(NULL, 0, TICK_MS, Tick);
    open();
    KillTimer(NULL, timer);
    SetEvent(done), WaitForSingleObject(watch, INFINITE), CloseHandle(watch), CloseHandle(done);
    return g_next;
}
