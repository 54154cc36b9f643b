/*
 * Opens the printer's document properties as an application does, through
 * winspool's DocumentPropertiesW with DM_PROMPT.  On a desktop the sheet is
 * the user's to work with; with --screenshots DIR it shows each page in turn,
 * saves it as a PNG in DIR, and cancels, changing nothing.
 */
#include <windows.h>
#include <winspool.h>
#include <commctrl.h>
#include <prsht.h>
#include <vector>
#include "png.h"
#include "print.h"
#include "record.h"

#define PRINTER L"Quillora"

static WCHAR g_szFolder[MAX_PATH];
static int g_nPage;
static HWND g_hSheet;

static BOOL CALLBACK FindSheet(HWND hwnd, LPARAM)
{
    WCHAR cls[16];
    GetClassNameW(hwnd, cls, 16);
    if (lstrcmpW(cls, L"#32770") == 0 && IsWindowVisible(hwnd) && FindWindowExW(hwnd, NULL, WC_TABCONTROLW, NULL)) {
        g_hSheet = hwnd;
        return FALSE;
    }
    return TRUE;
}

static BOOL SaveWindow(HWND hwnd, LPCWSTR pszPath)
{
    RECT rc;
    GetWindowRect(hwnd, &rc);
    int w = rc.right - rc.left, h = rc.bottom - rc.top;
    BITMAPINFO bmi = {};
    bmi.bmiHeader.biSize = sizeof(bmi.bmiHeader);
    bmi.bmiHeader.biWidth = w;
    bmi.bmiHeader.biHeight = -h;
    bmi.bmiHeader.biPlanes = 1;
    bmi.bmiHeader.biBitCount = 32;
    void *pBits = NULL;
    HDC hdcWindow = GetWindowDC(hwnd);
    HDC hdcMem = CreateCompatibleDC(hdcWindow);
    HBITMAP hbm = CreateDIBSection(hdcMem, &bmi, DIB_RGB_COLORS, &pBits, NULL, 0);
    HGDIOBJ hOld = SelectObject(hdcMem, hbm);
    BitBlt(hdcMem, 0, 0, w, h, hdcWindow, 0, 0, SRCCOPY);
    GdiFlush();
    BOOL ok = pBits && WritePng(pszPath, (const DWORD *)pBits, w, h);
    SelectObject(hdcMem, hOld);
    DeleteObject(hbm);
    DeleteDC(hdcMem);
    ReleaseDC(hwnd, hdcWindow);
    return ok;
}

/* One step per tick: show a page, let it paint, save it; then cancel. */
static void CALLBACK ScreenshotTick(HWND, UINT, UINT_PTR, DWORD)
{
    if (!g_hSheet)
        EnumThreadWindows(GetCurrentThreadId(), FindSheet, 0);
    if (!g_hSheet)
        return;
    HWND hTabs = (HWND)SendMessageW(g_hSheet, PSM_GETTABCONTROL, 0, 0);
    int nPages = (int)SendMessageW(hTabs, TCM_GETITEMCOUNT, 0, 0);
    if (g_nPage >= nPages) {
        PostMessageW(g_hSheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
        return;
    }
    SendMessageW(g_hSheet, PSM_SETCURSEL, g_nPage, 0);
    RedrawWindow(g_hSheet, NULL, NULL, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    WCHAR szPath[MAX_PATH + 32];
    wsprintfW(szPath, L"%s\\page-%d.png", g_szFolder, g_nPage + 1);
    if (SaveWindow(g_hSheet, szPath))
        Print(L"%s\n", szPath);
    else
        Print(L"could not save %s\n", szPath);
    g_nPage++;
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
