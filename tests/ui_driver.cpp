#include "ui_driver.h"
#include <commctrl.h>
#include <prsht.h>

static std::function<void(HWND, DialogKind)> g_script;
static HWND g_hLast;
static int g_nTicks;
static bool g_bCutShort;

enum { TICK_MS = 40, MAX_TICKS = 250 };

static HWND FindChildOfClass(HWND hParent, LPCWSTR pszClass)
{
    return FindWindowExW(hParent, NULL, pszClass, NULL);
}

DialogKind KindOf(HWND hDlg)
{
    WCHAR cls[16];
    GetClassNameW(hDlg, cls, 16);
    if (lstrcmpW(cls, L"#32768") == 0)
        return DIALOG_POPUP_MENU;
    if (FindChildOfClass(hDlg, WC_TABCONTROLW))
        return DIALOG_SHEET;
    if (GetDlgItem(hDlg, 1083))
        return DIALOG_PROFILE_MANAGER;
    if (GetDlgItem(hDlg, 0x47c))        // the file-name box of the file dialogs
        return DIALOG_FILE;
    if (GetDlgItem(hDlg, 1081))
        return DIALOG_SAVE_PROFILE;
    if (GetDlgItem(hDlg, 0xFFFF))
        return DIALOG_MESSAGE_BOX;
    return DIALOG_OTHER;
}

std::wstring TextOf(HWND hwnd)
{
    WCHAR sz[1024] = L"";
    GetWindowTextW(hwnd, sz, 1024);
    return sz;
}

std::wstring MessageBoxText(HWND hBox)
{
    return TextOf(GetDlgItem(hBox, 0xFFFF));
}

HWND SheetPage(HWND hSheet, int index)
{
    SendMessageW(hSheet, PSM_SETCURSEL, index, 0);
    return (HWND)SendMessageW(hSheet, PSM_INDEXTOHWND, index, 0);
}

void Click(HWND hDlg, int id)
{
    PostMessageW(hDlg, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), (LPARAM)GetDlgItem(hDlg, id));
}

struct FindState { HWND hFound; };

static BOOL CALLBACK FindInputDialog(HWND hwnd, LPARAM lParam)
{
    WCHAR cls[16];
    GetClassNameW(hwnd, cls, 16);
    bool bMenu = lstrcmpW(cls, L"#32768") == 0;
    if ((bMenu || lstrcmpW(cls, L"#32770") == 0) && IsWindowVisible(hwnd) && IsWindowEnabled(hwnd)) {
        ((FindState *)lParam)->hFound = hwnd;
        return FALSE;
    }
    return TRUE;
}

static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD)
{
    FindState state = { NULL };
    EnumThreadWindows(GetCurrentThreadId(), FindInputDialog, (LPARAM)&state);
    if (++g_nTicks > MAX_TICKS) {
        g_bCutShort = true;
        if (state.hFound)
            PostMessageW(state.hFound, WM_COMMAND, IDCANCEL, 0);
        return;
    }
    if (!state.hFound || state.hFound == g_hLast)
        return;
    g_hLast = state.hFound;
    g_script(state.hFound, KindOf(state.hFound));
}

bool RunDriven(const std::function<void()> &open, const std::function<void(HWND, DialogKind)> &script)
{
    g_script = script;
    g_hLast = NULL;
    g_nTicks = 0;
    g_bCutShort = false;
    UINT_PTR timer = SetTimer(NULL, 0, TICK_MS, Tick);
    open();
    KillTimer(NULL, timer);
    return !g_bCutShort;
}
