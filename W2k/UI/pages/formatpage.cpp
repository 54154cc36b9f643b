/*
 * The output-format page: a format list and six panels, one per format, all
 * created with the page and shown one at a time in the hidden placeholder's
 * place.  Each format keeps its own options, so switching loses nothing.
 */
#include "panels.h"
#include "../res/resource.h"

static const LPCWSTR g_FormatNames[FORMAT_COUNT] = {
    L"BMP Image", L"GIF Image", L"JPEG Image", L"TIFF Image", L"PCX Image", L"DCX Image",
};

static BOOL IsFormat(int iFormat)
{
    return iFormat >= 0 && iFormat < FORMAT_COUNT;
}

static void ShowFormatPanel(PSHEETSTATE pSheet, int index, BOOL bShow)
{
    if (IsFormat(index) && pSheet->hwndFormatPanels[index])
        ShowWindow(pSheet->hwndFormatPanels[index], bShow ? SW_SHOW : SW_HIDE);
}

void InitFormatPage(HWND hPage, PSHEETSTATE pSheet)
{
    HWND hList = GetDlgItem(hPage, IDC_FORMAT_LIST);
    for (LPCWSTR name : g_FormatNames)
        SendMessageW(hList, CB_ADDSTRING, 0, (LPARAM)name);

    RECT rcPage, rcPlace;
    GetWindowRect(hPage, &rcPage);
    GetWindowRect(GetDlgItem(hPage, IDC_PANEL_PLACE), &rcPlace);
    OffsetRect(&rcPlace, -rcPage.left, -rcPage.top);
    HWND hAfter = GetDlgItem(hPage, IDC_PANEL_PLACE);
    for (int i = 0; i < FORMAT_COUNT; i++) {
        HWND hPanel = CreateDialogParamW(g_hModule, MAKEINTRESOURCEW(IDD_BMP_PANEL + i), hPage,
                                         g_Panels[i].pfnProc, (LPARAM)pSheet);
        pSheet->hwndFormatPanels[i] = hPanel;
        if (hPanel) {
            SetWindowPos(hPanel, hAfter, rcPlace.left, rcPlace.top, 0, 0, SWP_NOSIZE);
            hAfter = hPanel;
        }
    }
}

static BOOL FocusInPanel(const SHEETSTATE *pSheet, HWND hFocus)
{
    for (HWND hPanel : pSheet->hwndFormatPanels)
        if (hPanel && IsChild(hPanel, hFocus))
            return TRUE;
    return FALSE;
}

/* A profile loaded while the focus was inside a panel must not leave it on
 * a control now hidden or disabled, nor on the bare page where hiding its
 * panel put it: it goes back to its control while that is still usable, else
 * to the format list, which chose the panel. */
static void KeepFocusUsable(HWND hPage, HWND hFocus)
{
    HWND hTo = IsWindowVisible(hFocus) && IsWindowEnabled(hFocus) ? hFocus : GetDlgItem(hPage, IDC_FORMAT_LIST);
    if (GetFocus() != hTo)
        SetFocus(hTo);
}

/* A format outside the list, which a profile or a caller may bring, has no
 * panel: it is shown, and so collected, as JPEG, the choice Collect makes
 * for an empty selection, so that what the user sees is what is stored. */
void LoadFormatPage(HWND hPage, PSHEETSTATE pSheet)
{
    if (!IsFormat(pSheet->work.iOutputFormat))
        pSheet->work.iOutputFormat = FORMAT_JPEG;
    SendDlgItemMessageW(hPage, IDC_FORMAT_LIST, CB_SETCURSEL, pSheet->work.iOutputFormat, 0);
    HWND hFocus = GetFocus();
    BOOL bFocusInPanel = FocusInPanel(pSheet, hFocus);
    for (int i = 0; i < FORMAT_COUNT; i++)
        ShowFormatPanel(pSheet, i, FALSE);
    ShowFormatPanel(pSheet, pSheet->work.iOutputFormat, TRUE);
    for (int i = 0; i < FORMAT_COUNT; i++)
        if (pSheet->hwndFormatPanels[i])
            g_Panels[i].Show(pSheet->hwndFormatPanels[i], pSheet);
    if (bFocusInPanel)
        KeepFocusUsable(hPage, hFocus);
}

void CollectFormatPage(HWND hPage, PSHEETSTATE pSheet)
{
    LRESULT sel = SendDlgItemMessageW(hPage, IDC_FORMAT_LIST, CB_GETCURSEL, 0, 0);
    pSheet->work.iOutputFormat = sel == CB_ERR ? FORMAT_JPEG : (int)sel;
    for (int i = 0; i < FORMAT_COUNT; i++)
        if (pSheet->hwndFormatPanels[i])
            g_Panels[i].Read(pSheet->hwndFormatPanels[i], pSheet);
    pSheet->work.dmPublic.dmColor = DMCOLOR_COLOR;
    pSheet->work.dmPublic.dmBitsPerPel = 32;
}

void OnFormatPageCommand(HWND hPage, PSHEETSTATE pSheet, WORD id, WORD code)
{
    if (id == IDC_ABOUT && code == BN_CLICKED) {
        DialogBoxParamW(g_hModule, MAKEINTRESOURCEW(IDD_ABOUT_BOX), hPage, AboutDlgProc, 0);
        return;
    }
    if (id != IDC_FORMAT_LIST || code != CBN_SELCHANGE)
        return;
    LRESULT sel = SendDlgItemMessageW(hPage, IDC_FORMAT_LIST, CB_GETCURSEL, 0, 0);
    ShowFormatPanel(pSheet, pSheet->work.iOutputFormat, FALSE);
    pSheet->work.iOutputFormat = sel == CB_ERR ? FORMAT_BMP : (int)sel;
    ShowFormatPanel(pSheet, pSheet->work.iOutputFormat, TRUE);
    NotifySheetChanged(hPage, pSheet);
}
