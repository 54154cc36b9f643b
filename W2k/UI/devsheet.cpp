/*
 * The device property sheet (only the product's About page: the printer's
 * default settings change through the document sheet's apply step), the
 * About box, and the entry points that have nothing to do.
 */
#include "sheet.h"
#include "skin/skin.h"
#include "res/resource.h"

static INT_PTR CALLBACK AboutPageProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    (void)hDlg; (void)wParam; (void)lParam;
    return msg == WM_INITDIALOG;
}

INT_PTR CALLBACK AboutDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    (void)wParam; (void)lParam;
    switch (msg) {
    case WM_INITDIALOG:
        AttachPushButton(hDlg, IDOK);
        return TRUE;
    case WM_COMMAND:
    case WM_DESTROY:
        EndDialog(hDlg, 1);
        return TRUE;
    }
    return FALSE;
}

LONG WINAPI DrvDevicePropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam)
{
    (void)lParam;
    Trace(L"DrvDevicePropertySheets: info %lx, reason %d", (DWORD)(DWORD_PTR)pPSUIInfo,
          pPSUIInfo ? pPSUIInfo->Reason : -1);
    if (!pPSUIInfo || !pPSUIInfo->lParamInit) {
        SetLastError(ERROR_INVALID_DATA);
        return -1;
    }
    if (pPSUIInfo->Reason != PROPSHEETUI_REASON_INIT)
        return 1;

    PDEVICEPROPERTYHEADER pHeader = (PDEVICEPROPERTYHEADER)pPSUIInfo->lParamInit;
    PROPSHEETPAGEW psp = {};
    psp.dwSize = PROPSHEETPAGEW_V2_SIZE;
    psp.hInstance = g_hModule;
    psp.pszTemplate = MAKEINTRESOURCEW(IDD_ABOUT_PAGE);
    psp.pfnDlgProc = AboutPageProc;
    psp.pszTitle = pHeader->pszPrinterName;
    pPSUIInfo->pfnComPropSheet(pPSUIInfo->hComPropSheet, CPSFUNC_ADD_PROPSHEETPAGEW, (LPARAM)&psp, 0);
    return 1;
}

extern "C" BOOL WINAPI PrinterProperties(HWND hWnd, HANDLE hPrinter)
{
    Trace(L"PrinterProperties: printer %lx", (DWORD)(DWORD_PTR)hPrinter);
    PRINTER_INFO_4W *pInfo = (PRINTER_INFO_4W *)GetPrinterInfo(hPrinter, 4);
    DEVICEPROPERTYHEADER header = {};
    header.cbSize = sizeof(header);
    header.hPrinter = hPrinter;
    header.pszPrinterName = pInfo ? pInfo->pPrinterName : NULL;
    DWORD result = 0;
    RunPropertySheet(hWnd, DrvDevicePropertySheets, (LPARAM)&header, &result);
    LocalFree(pInfo);
    return result == 1;
}

extern "C" BOOL WINAPI DrvPrinterEvent(LPWSTR pPrinterName, INT DriverEvent, DWORD Flags, LPARAM lParam)
{
    (void)Flags; (void)lParam;
    Trace(L"DrvPrinterEvent: printer %s, event %d", pPrinterName ? pPrinterName : L"(none)", DriverEvent);
    return TRUE;
}

/* The spooler asks only for printers that hold mismatched jobs
 * (PRINTER_ATTRIBUTE_ENABLE_DEVQ); this driver gives no error text. */
extern "C" BOOL WINAPI DevQueryPrintEx(PDEVQUERYPRINT_INFO pDQPInfo)
{
    Trace(L"DevQueryPrintEx: info %lx", (DWORD)(DWORD_PTR)pDQPInfo);
    return FALSE;
}
