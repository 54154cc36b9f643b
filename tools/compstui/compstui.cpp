/*
 * A stand-in for the common property-sheet library, used only under Wine,
 * whose own CPSFUNC_SET_RESULT never calls the owner back.  Written from the
 * library's documented protocol: a tree of PFNPROPSHEETUI owners, each with
 * its own hComPropSheet; pages added by any of them; the reasons INIT,
 * GET_INFO_HEADER, SET_RESULT and DESTROY; and a modal property sheet.
 * It is loaded by a DLL override and never ships with the driver.
 */
#include <windows.h>
#include <prsht.h>
#include <compstui.h>

/* Owners are called as CALLBACK, which mingw-w64's PFNPROPSHEETUI omits. */
typedef LONG (CALLBACK *PFNOWNER)(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam);

#define MAX_OWNERS 16
#define MAX_PAGES  64

struct OWNER {
    PFNOWNER pfn;
    PROPSHEETUI_INFO info;
    OWNER *pParent;
};

struct SHEET {
    OWNER owners[MAX_OWNERS];
    int nOwners;
    HPROPSHEETPAGE pages[MAX_PAGES];
    int nPages;
};

static LONG_PTR CALLBACK ComPropSheet(HANDLE hComPropSheet, UINT uFunction, LPARAM lParam1, LPARAM lParam2);

/* The sheet being run; its owners live in its array, so their addresses
 * serve as hComPropSheet handles until it ends. */
static SHEET *g_pSheet;

static OWNER *NewOwner(SHEET *pSheet, PFNOWNER pfn, LPARAM lParamInit, OWNER *pParent)
{
    if (pSheet->nOwners == MAX_OWNERS)
        return NULL;
    OWNER *pOwner = &pSheet->owners[pSheet->nOwners++];
    pOwner->pfn = pfn;
    pOwner->pParent = pParent;
    ZeroMemory(&pOwner->info, sizeof(pOwner->info));
    pOwner->info.cbSize = sizeof(pOwner->info);
    pOwner->info.Version = PROPSHEETUI_INFO_VERSION;
    pOwner->info.hComPropSheet = (HANDLE)pOwner;
    pOwner->info.pfnComPropSheet = ComPropSheet;
    pOwner->info.lParamInit = lParamInit;
    return pOwner;
}

static LONG CallOwner(OWNER *pOwner, WORD wReason, LPARAM lParam)
{
    pOwner->info.Reason = wReason;
    return pOwner->pfn(&pOwner->info, lParam);
}

static LONG_PTR AddPage(HPROPSHEETPAGE hPage)
{
    if (!hPage || g_pSheet->nPages == MAX_PAGES)
        return 0;
    g_pSheet->pages[g_pSheet->nPages++] = hPage;
    return (LONG_PTR)hPage;
}

/* The owner reports its result; the library passes it on to the owner's
 * parent under the handle the parent got when it added this owner. */
static LONG_PTR SetResult(OWNER *pOwner, HANDLE hSetResult, LPARAM lResult)
{
    SETRESULT_INFO sri = {};
    sri.cbSize = sizeof(sri);
    sri.hSetResult = hSetResult;
    sri.Result = lResult;
    LONG r = CallOwner(pOwner, PROPSHEETUI_REASON_SET_RESULT, (LPARAM)&sri);
    if (pOwner->pParent)
        SetResult(pOwner->pParent, (HANDLE)pOwner, (LPARAM)pOwner->info.Result);
    return r;
}

static LONG_PTR CALLBACK ComPropSheet(HANDLE hComPropSheet, UINT uFunction, LPARAM lParam1, LPARAM lParam2)
{
    OWNER *pOwner = (OWNER *)hComPropSheet;
    if (!g_pSheet || !pOwner)
        return 0;
    switch (uFunction) {
    case CPSFUNC_ADD_PROPSHEETPAGEW:
        return lParam1 ? AddPage(CreatePropertySheetPageW((LPCPROPSHEETPAGEW)lParam1)) : 0;
    case CPSFUNC_ADD_HPROPSHEETPAGE:
        return AddPage((HPROPSHEETPAGE)lParam1);
    case CPSFUNC_ADD_PFNPROPSHEETUIW: {
        OWNER *pChild = NewOwner(g_pSheet, (PFNOWNER)lParam1, lParam2, pOwner);
        if (!pChild)
            return 0;
        if (CallOwner(pChild, PROPSHEETUI_REASON_INIT, lParam2) < 0)
            return 0;
        return (LONG_PTR)pChild;
    }
    case CPSFUNC_SET_RESULT:
        return SetResult(pOwner, (HANDLE)lParam1, lParam2);
    }
    return 0;
}

static void DestroyOwners(SHEET *pSheet, BOOL bOk)
{
    for (int i = pSheet->nOwners - 1; i >= 0; i--)
        CallOwner(&pSheet->owners[i], PROPSHEETUI_REASON_DESTROY, bOk);
}

/* The first owner that names the sheet gives its title and flags. */
static void GetInfoHeader(SHEET *pSheet, HWND hWndOwner, PROPSHEETUI_INFO_HEADER *pHeader)
{
    for (int i = 0; i < pSheet->nOwners && !pHeader->pTitle; i++) {
        ZeroMemory(pHeader, sizeof(*pHeader));
        pHeader->cbSize = sizeof(*pHeader);
        pHeader->hWndParent = hWndOwner;
        CallOwner(&pSheet->owners[i], PROPSHEETUI_REASON_GET_INFO_HEADER, (LPARAM)pHeader);
    }
}

static INT_PTR RunSheet(SHEET *pSheet, HWND hWndOwner)
{
    PROPSHEETUI_INFO_HEADER header = {};
    GetInfoHeader(pSheet, hWndOwner, &header);
    PROPSHEETHEADERW psh = {};
    psh.dwSize = sizeof(psh);
    if (header.Flags & PSUIHDRF_NOAPPLYNOW)
        psh.dwFlags |= PSH_NOAPPLYNOW;
    if (header.Flags & PSUIHDRF_PROPTITLE)
        psh.dwFlags |= PSH_PROPTITLE;
    psh.hwndParent = hWndOwner;
    psh.hInstance = header.hInst;
    psh.pszCaption = header.pTitle ? header.pTitle : L"";
    psh.nPages = pSheet->nPages;
    psh.phpage = pSheet->pages;
    return PropertySheetW(&psh);
}

/* The header's prototype names the owner with its own type, which on x86 is
 * another calling convention than the owners use: keep the prototype and call
 * the owner as it really is. */
extern "C" LONG WINAPI CommonPropertySheetUIW(HWND hWndOwner, PFNPROPSHEETUI pfnDeclared,
                                              LPARAM lParam, LPDWORD pResult)
{
    PFNOWNER pfnPropSheetUI = (PFNOWNER)(void *)pfnDeclared;
    if (g_pSheet || !pfnPropSheetUI)
        return ERR_CPSUI_GETLASTERROR;      /* one sheet at a time per process */
    SHEET *pSheet = (SHEET *)LocalAlloc(LPTR, sizeof(SHEET));
    if (!pSheet)
        return ERR_CPSUI_GETLASTERROR;
    g_pSheet = pSheet;

    OWNER *pTop = NewOwner(pSheet, pfnPropSheetUI, lParam, NULL);
    LONG result = ERR_CPSUI_GETLASTERROR;
    if (CallOwner(pTop, PROPSHEETUI_REASON_INIT, lParam) >= 0 && pSheet->nPages > 0) {
        INT_PTR r = RunSheet(pSheet, hWndOwner);
        result = r > 0 ? CPSUI_OK : CPSUI_CANCEL;
        if (pResult)
            *pResult = (DWORD)pTop->info.Result;
        DestroyOwners(pSheet, r > 0);
    } else {
        for (int i = 0; i < pSheet->nPages; i++)
            DestroyPropertySheetPage(pSheet->pages[i]);
        DestroyOwners(pSheet, FALSE);
    }
    g_pSheet = NULL;
    LocalFree(pSheet);
    return result;
}
