// The document property sheet as an application opens it (winspool's
// DocumentPropertiesW with DM_PROMPT) until all three pages have been shown
// and painted, against a bare three-page PropertySheetW built from the same
// dialog templates with do-nothing page procedures.  Both are walked the same
// way from a message hook on the sheet's own thread, so the difference is the
// driver's work: settings, profiles, skinned controls, tool tips, panels.
// Not a test: it prints a ratio and never fails.
#include <windows.h>
#include <winspool.h>
#include <commctrl.h>
#include <prsht.h>
#include <stdio.h>
#include <algorithm>
#include <vector>
#include "res/resource.h"

#define PRINTER L"Quillora"

enum { ROUNDS = 15, PAGES = 3 };
static const WORD g_Templates[PAGES] = { IDD_PAGE_SETUP, IDD_FORMAT_PAGE, IDD_OUTPUT_PAGE };   // the driver's order

static UINT g_msgWalk;
static HHOOK g_hCbt, g_hGetMessage;
static LARGE_INTEGER g_painted;

static LRESULT CALLBACK OnCbt(int code, WPARAM wParam, LPARAM lParam)
{
    HWND hwnd = (HWND)wParam;
    WCHAR cls[16];
    if (code == HCBT_ACTIVATE && GetClassNameW(hwnd, cls, 16) && lstrcmpW(cls, L"#32770") == 0 &&
        FindWindowExW(hwnd, NULL, WC_TABCONTROLW, NULL))
        PostMessageW(hwnd, g_msgWalk, 0, 0);
    return CallNextHookEx(g_hCbt, code, wParam, lParam);
}

// Shows every page in turn and lets each paint before the clock stops; then
// cancels, so the printer's settings are never touched.
static LRESULT CALLBACK OnGetMessage(int code, WPARAM wParam, LPARAM lParam)
{
    MSG *pMsg = (MSG *)lParam;
    if (code == HC_ACTION && wParam == PM_REMOVE && pMsg->message == g_msgWalk) {
        HWND hSheet = pMsg->hwnd;
        for (int i = 0; i < PAGES; i++) {
            SendMessageW(hSheet, PSM_SETCURSEL, i, 0);
            RedrawWindow(hSheet, NULL, NULL, RDW_UPDATENOW | RDW_ALLCHILDREN);
        }
        QueryPerformanceCounter(&g_painted);
        PostMessageW(hSheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
        pMsg->message = WM_NULL;
    }
    return CallNextHookEx(g_hGetMessage, code, wParam, lParam);
}

static INT_PTR CALLBACK BarePage(HWND, UINT msg, WPARAM, LPARAM)
{
    return msg == WM_INITDIALOG;
}

static void OpenBareSheet(HINSTANCE hTemplates)
{
    PROPSHEETPAGEW pages[PAGES] = {};
    for (int i = 0; i < PAGES; i++) {
        pages[i].dwSize = sizeof(pages[i]);
        pages[i].hInstance = hTemplates;
        pages[i].pszTemplate = MAKEINTRESOURCEW(g_Templates[i]);
        pages[i].pfnDlgProc = BarePage;
    }
    PROPSHEETHEADERW psh = {};
    psh.dwSize = sizeof(psh);
    psh.dwFlags = PSH_PROPSHEETPAGE | PSH_NOAPPLYNOW;
    psh.pszCaption = PRINTER;
    psh.nPages = PAGES;
    psh.ppsp = pages;
    PropertySheetW(&psh);
}

static void OpenDriverSheet(HANDLE hPrinter, DEVMODEW *pdm)
{
    DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, pdm, NULL, DM_PROMPT | DM_OUT_BUFFER);
}

// Milliseconds from the call until the last page was painted.
template <typename F> static double Milliseconds(F open)
{
    LARGE_INTEGER f, start;
    QueryPerformanceFrequency(&f);
    g_painted.QuadPart = 0;
    QueryPerformanceCounter(&start);
    open();
    return g_painted.QuadPart ? double(g_painted.QuadPart - start.QuadPart) * 1e3 / f.QuadPart : -1;
}

static double Median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

int main()
{
    WCHAR path[MAX_PATH];
    GetModuleFileNameW(NULL, path, MAX_PATH);
    lstrcpyW(wcsrchr(path, L'\\') + 1, L"QLRDRVUI.DLL");
    HMODULE hTemplates = LoadLibraryW(path);   // as a module, like the driver's own sheet has it
    HANDLE hPrinter;
    if (!hTemplates || !OpenPrinterW((LPWSTR)PRINTER, &hPrinter, NULL)) {
        printf("the module or the printer is missing\n");
        return 1;
    }
    INITCOMMONCONTROLSEX icc = { sizeof(icc), ICC_WIN95_CLASSES };
    InitCommonControlsEx(&icc);
    LONG cb = DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, NULL, NULL, 0);
    std::vector<BYTE> record(cb > 0 ? cb : 0);
    g_msgWalk = RegisterWindowMessageW(L"Quillora sheet bench walk");
    g_hCbt = SetWindowsHookExW(WH_CBT, OnCbt, NULL, GetCurrentThreadId());
    g_hGetMessage = SetWindowsHookExW(WH_GETMESSAGE, OnGetMessage, NULL, GetCurrentThreadId());

    auto driver = [&] { OpenDriverSheet(hPrinter, (DEVMODEW *)record.data()); };
    auto bare = [&] { OpenBareSheet(hTemplates); };
    Milliseconds(driver);       // the first of each loads its libraries
    Milliseconds(bare);
    std::vector<double> ours, floor;
    for (int r = 0; r < ROUNDS; r++) {      // alternate, so both share the machine's moods
        ours.push_back(Milliseconds(driver));
        floor.push_back(Milliseconds(bare));
    }
    double mo = Median(ours), mp = Median(floor);
    printf("%-44s %8s %12s %12s\n", "measure", "ratio", "ours (us)", "floor (us)");
    if (*std::min_element(ours.begin(), ours.end()) < 0 || *std::min_element(floor.begin(), floor.end()) < 0)
        printf("%-44s %8s\n", "sheet to all pages painted / bare sheet", "no sheet");
    else
        printf("%-44s %8.2f %12.0f %12.0f\n", "sheet to all pages painted / bare sheet", mo / mp, mo * 1e3,
               mp * 1e3);
    UnhookWindowsHookEx(g_hGetMessage);
    UnhookWindowsHookEx(g_hCbt);
    ClosePrinter(hPrinter);
    return 0;
}
