/*
 * Opens the printer's document properties as an application does, through
 * winspool's DocumentPropertiesW with DM_PROMPT.  On a desktop the sheet is
 * the user's to work with; with --screenshots DIR it shows each page, each
 * format panel and each of the sheet's dialogs in turn, saves them as PNG
 * files in DIR, and cancels, changing nothing.
 */
#include <windows.h>
#include <winspool.h>
#include <commctrl.h>
#include <prsht.h>
#include <vector>
#include "capture.h"
#include "png.h"
#include "console.h"
#include "record.h"
#include "res/resource.h"

#define PRINTER L"Quillora"

static WCHAR g_szFolder[MAX_PATH];
static HWND g_hSheet;
static int g_nStep;
static BOOL g_bAwaitingDialog;

/* What the headless run shows, in order: a step either shows something in
 * the sheet and saves it, or presses a button whose modal dialog is saved
 * and closed on a later tick. */
enum StepKind { SHOW_PAGE, SHOW_PANEL, OPEN_DIALOG, FINISH };
static const struct { StepKind kind; int page; int value; LPCWSTR pszFile; } g_Steps[] = {
    { SHOW_PAGE, 0, 0, L"page-1" }, { SHOW_PAGE, 1, 0, L"page-2" }, { SHOW_PAGE, 2, 0, L"page-3" },
    { SHOW_PANEL, 1, 0, L"panel-bmp" }, { SHOW_PANEL, 1, 1, L"panel-gif" }, { SHOW_PANEL, 1, 2, L"panel-jpeg" },
    { SHOW_PANEL, 1, 3, L"panel-tiff" }, { SHOW_PANEL, 1, 4, L"panel-pcx" }, { SHOW_PANEL, 1, 5, L"panel-dcx" },
    { OPEN_DIALOG, 0, IDC_SAVE_PROFILE, L"save-profile" }, { OPEN_DIALOG, 0, IDC_PROFILE_MANAGER, L"profile-manager" },
    { OPEN_DIALOG, 1, IDC_ABOUT, L"about" }, { FINISH, 0, 0, NULL },
};

struct DIALOGSEARCH { HWND hSheet, hFound; };

static BOOL CALLBACK FindDialog(HWND hwnd, LPARAM lParam)
{
    DIALOGSEARCH *pSearch = (DIALOGSEARCH *)lParam;
    WCHAR cls[16];
    GetClassNameW(hwnd, cls, 16);
    if (lstrcmpW(cls, L"#32770") != 0 || !IsWindowVisible(hwnd))
        return TRUE;
    if (FindWindowExW(hwnd, NULL, WC_TABCONTROLW, NULL))
        pSearch->hSheet = hwnd;
    else if (IsWindowEnabled(hwnd))
        pSearch->hFound = hwnd;
    return TRUE;
}

static BOOL SaveWindow(HWND hwnd, LPCWSTR pszName)
{
    WCHAR szPath[MAX_PATH + 64];
    wsprintfW(szPath, L"%s\\%s.png", g_szFolder, pszName);
    RedrawWindow(hwnd, NULL, NULL, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    std::vector<DWORD> pixels;
    int w, h;
    BOOL ok = CaptureWindow(hwnd, TRUE, &pixels, &w, &h) && WritePng(szPath, pixels.data(), w, h);
    Print(ok ? L"%s\n" : L"could not save %s\n", szPath);
    return ok;
}

static void CALLBACK ScreenshotTick(HWND, UINT, UINT_PTR, DWORD)
{
    DIALOGSEARCH search = { NULL, NULL };
    EnumThreadWindows(GetCurrentThreadId(), FindDialog, (LPARAM)&search);
    if (!search.hSheet)
        return;
    g_hSheet = search.hSheet;
    if (g_bAwaitingDialog) {
        if (!search.hFound)
            return;
        SaveWindow(search.hFound, g_Steps[g_nStep].pszFile);
        PostMessageW(search.hFound, WM_COMMAND, IDCANCEL, 0);
        g_bAwaitingDialog = FALSE;
        g_nStep++;
        return;
    }
    if (search.hFound)
        return;                 /* a dialog from the last step is still closing */
    const auto &step = g_Steps[g_nStep];
    SendMessageW(g_hSheet, PSM_SETCURSEL, step.page, 0);
    HWND hPage = (HWND)SendMessageW(g_hSheet, PSM_INDEXTOHWND, step.page, 0);
    switch (step.kind) {
    case SHOW_PAGE:
        SaveWindow(g_hSheet, step.pszFile);
        g_nStep++;
        break;
    case SHOW_PANEL:
        SendDlgItemMessageW(hPage, IDC_FORMAT_LIST, CB_SETCURSEL, step.value, 0);
        SendMessageW(hPage, WM_COMMAND, MAKEWPARAM(IDC_FORMAT_LIST, CBN_SELCHANGE),
                     (LPARAM)GetDlgItem(hPage, IDC_FORMAT_LIST));
        SaveWindow(g_hSheet, step.pszFile);
        g_nStep++;
        break;
    case OPEN_DIALOG:
        g_bAwaitingDialog = TRUE;
        PostMessageW(hPage, WM_COMMAND, MAKEWPARAM(step.value, BN_CLICKED), (LPARAM)GetDlgItem(hPage, step.value));
        break;
    case FINISH:
        PostMessageW(g_hSheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
        break;
    }
}

int wmain(int argc, WCHAR **argv)
{
    BOOL bScreenshots = argc > 2 && lstrcmpW(argv[1], L"--screenshots") == 0;
    if (bScreenshots)
        GetFullPathNameW(argv[2], MAX_PATH, g_szFolder, NULL);

    HANDLE hPrinter;
    if (!OpenPrinterW((LPWSTR)PRINTER, &hPrinter, NULL)) {
        Print(L"The printer \"%s\" is not installed (error %lu)\n", PRINTER, GetLastError());
        return 1;
    }
    LONG cb = DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, NULL, NULL, 0);
    std::vector<BYTE> record(cb > 0 ? cb : 0);
    UINT_PTR timer = bScreenshots ? SetTimer(NULL, 0, 200, ScreenshotTick) : 0;
    LONG result = cb > 0 ? DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, (PDEVMODEW)record.data(), NULL,
                                               DM_PROMPT | DM_OUT_BUFFER) : -1;
    if (timer)
        KillTimer(NULL, timer);
    ClosePrinter(hPrinter);

    Print(L"DocumentPropertiesW with DM_PROMPT answered %ld (%s)\n", result,
          result == IDOK ? L"OK" : result < 0 ? L"failed" : L"cancelled");
    if (result == IDOK && cb >= (LONG)sizeof(QLRDEVMODE)) {
        const QLRDEVMODE *pdm = (const QLRDEVMODE *)record.data();
        Print(L"Settings now: format %d, %d dpi, %s, output folder \"%s\", mask \"%s\"\n", pdm->iOutputFormat,
              pdm->iResolution, pdm->iOrientation ? L"landscape" : L"portrait", pdm->szOutputFolder,
              pdm->szFileNameMask);
    }
    return result < 0 ? 1 : 0;
}
