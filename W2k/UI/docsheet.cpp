/*
 * The document property sheet: DrvDocumentPropertySheets as the common
 * property-sheet library calls it, and the older entry points on top of it.
 */
#include "sheet.h"
#include "res/resource.h"

/* The pages in the order they are added and shown. */
static const struct { int idTemplate; DLGPROC pfnProc; } g_SheetPages[PAGE_COUNT] = {
    { IDD_PAGE_SETUP,  PageSetupDlgProc },
    { IDD_FORMAT_PAGE, FormatPageDlgProc },
    { IDD_OUTPUT_PAGE, OutputPageDlgProc },
};

static LONG Refuse(void)
{
    SetLastError(ERROR_INVALID_DATA);
    return -1;
}

static LONG InitSheet(PPROPSHEETUI_INFO pPSUIInfo, PDOCUMENTPROPERTYHEADER pHeader)
{
    if (!pHeader)
        return Refuse();
    NormalizePrintQuality(pHeader->pdmIn);
    PSHEETSTATE pSheet = (PSHEETSTATE)LocalAlloc(LPTR, sizeof(SHEETSTATE));
    if (!pSheet)
        return Refuse();
    pSheet->hPrinter = pHeader->hPrinter;
    BuildWorkingRecord(pHeader->hPrinter, pHeader->pdmIn, &pSheet->work);
    pSheet->pdmIn = pHeader->pdmIn;
    if ((pHeader->fMode & (DM_UPDATE | DM_COPY)) && !(pHeader->fMode & DM_NOPERMISSION))
        pSheet->pdmOut = pHeader->pdmOut;
    pSheet->bProfiled = TRUE;
    pSheet->bApplied = TRUE;        /* nothing to apply until a page reports a change */
    pPSUIInfo->UserData = (ULONG_PTR)pSheet;
    pSheet->psui = *pPSUIInfo;

    for (int i = 0; i < PAGE_COUNT; i++) {
        PROPSHEETPAGEW psp = {};
        psp.dwSize = PROPSHEETPAGEW_V2_SIZE;
        psp.hInstance = g_hModule;
        psp.pszTemplate = MAKEINTRESOURCEW(g_SheetPages[i].idTemplate);
        psp.pfnDlgProc = g_SheetPages[i].pfnProc;
        psp.lParam = (LPARAM)pSheet;
        HANDLE hPage = (HANDLE)pPSUIInfo->pfnComPropSheet(pPSUIInfo->hComPropSheet,
                                                          CPSFUNC_ADD_PROPSHEETPAGEW, (LPARAM)&psp, 0);
        if (!hPage)
            return -1;      /* the state stays in UserData; DESTROY releases it */
        pSheet->hPageResults[i] = hPage;
    }
    return 1;
}

static LONG GetInfoHeader(PPROPSHEETUI_INFO pPSUIInfo, PPROPSHEETUI_INFO_HEADER pInfoHeader)
{
    PDOCUMENTPROPERTYHEADER pHeader = (PDOCUMENTPROPERTYHEADER)pPSUIInfo->lParamInit;
    if (!pHeader)
        return Refuse();
    if (!pInfoHeader)
        return -1;
    pInfoHeader->Flags = PSUIHDRF_NOAPPLYNOW | PSUIHDRF_PROPTITLE;
    pInfoHeader->pTitle = pHeader->pszPrinterName;
    pInfoHeader->hInst = g_hModule;
    pInfoHeader->IconID = 0;
    return 1;
}

static LONG SetSheetResult(PPROPSHEETUI_INFO pPSUIInfo, PSETRESULT_INFO pResult)
{
    PSHEETSTATE pSheet = (PSHEETSTATE)pPSUIInfo->UserData;
    /* This trace's wording is fixed: keep it as it stands, do not tidy it. */
    Trace(L"pPI: %d", (int)(INT_PTR)pSheet);
    if (!pSheet || !pResult)
        return -1;
    for (int i = 0; i < PAGE_COUNT; i++) {
        if (pResult->hSetResult != pSheet->hPageResults[i])
            continue;
        if (pSheet->pdmOut)
            WriteOutRecord(&pSheet->work, pSheet->pdmIn, pSheet->pdmOut);
        pPSUIInfo->Result = pResult->Result;
        return 1;
    }
    return -1;
}

LONG WINAPI DrvDocumentPropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam)
{
    Trace(L"DrvDocumentPropertySheets: info %lx, reason %d, lParam %lx", (DWORD)(DWORD_PTR)pPSUIInfo,
          pPSUIInfo ? pPSUIInfo->Reason : -1, (DWORD)lParam);
    if (!pPSUIInfo)
        return DirectDocumentProperties((PDOCUMENTPROPERTYHEADER)lParam);

    switch (pPSUIInfo->Reason) {
    case PROPSHEETUI_REASON_INIT:
        return InitSheet(pPSUIInfo, (PDOCUMENTPROPERTYHEADER)lParam);
    case PROPSHEETUI_REASON_GET_INFO_HEADER:
        return GetInfoHeader(pPSUIInfo, (PPROPSHEETUI_INFO_HEADER)lParam);
    case PROPSHEETUI_REASON_DESTROY:
        if (pPSUIInfo->UserData)
            LocalFree((HLOCAL)pPSUIInfo->UserData);
        pPSUIInfo->UserData = 0;
        return 1;
    case PROPSHEETUI_REASON_SET_RESULT:
        return SetSheetResult(pPSUIInfo, (PSETRESULT_INFO)lParam);
    }
    return -1;
}

/* The library is loaded only while a sheet is shown. */
LONG RunPropertySheet(HWND hWndOwner, PFNPROPSHEETUI_CB pfnPropSheetUI, LPARAM lParam, DWORD *pResult)
{
    typedef LONG (WINAPI *PFN_CPSUI)(HWND, PFNPROPSHEETUI_CB, LPARAM, LPDWORD);
    HMODULE hLib = LoadLibraryA("compstui.dll");
    if (!hLib)
        return -1;
    PFN_CPSUI pfn = (PFN_CPSUI)(void *)GetProcAddress(hLib, "CommonPropertySheetUIW");
    LONG result = pfn ? pfn(hWndOwner, pfnPropSheetUI, lParam, pResult) : -1;
    FreeLibrary(hLib);
    return result;
}

extern "C" LONG WINAPI DrvDocumentProperties(HWND hWnd, HANDLE hPrinter, LPWSTR pDeviceName,
                                             PDEVMODEW pdmOutput, PDEVMODEW pdmInput, DWORD fMode)
{
    Trace(L"DrvDocumentProperties: printer %s, out %lx, in %lx, mode %d", pDeviceName ? pDeviceName : L"(none)",
          (DWORD)(DWORD_PTR)pdmOutput, (DWORD)(DWORD_PTR)pdmInput, (int)fMode);
    DOCUMENTPROPERTYHEADER header = {};
    header.cbSize = sizeof(header);
    header.hPrinter = hPrinter;
    header.pszPrinterName = pDeviceName;
    header.pdmIn = pdmInput;
    header.pdmOut = pdmOutput;
    header.cbOut = QLR_RECORD_SIZE;
    header.fMode = fMode;
    if (!(fMode & DM_PROMPT))
        return DrvDocumentPropertySheets(NULL, (LPARAM)&header);

    DWORD result = 0;
    if (RunPropertySheet(hWnd, DrvDocumentPropertySheets, (LPARAM)&header, &result) < 0)
        result = 0;
    return result == 1 ? IDOK : IDCANCEL;
}

extern "C" LONG WINAPI DrvAdvancedDocumentProperties(HWND hWnd, HANDLE hPrinter, LPWSTR pDeviceName,
                                                     PDEVMODEW pdmOutput, PDEVMODEW pdmInput)
{
    return DrvDocumentProperties(hWnd, hPrinter, pDeviceName, pdmOutput, pdmInput,
                                 DM_COPY | DM_PROMPT | DM_MODIFY | DM_ADVANCED) == IDOK ? 1 : 0;
}
