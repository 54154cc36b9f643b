/*
 * The page-setup page: the paper from the paper table or a custom size in
 * four units, the orientation, the resolution and cropping, with a preview.
 * The command handler keeps the working record current; Collect also writes
 * the paper and resolution into the public part for applications.
 */
#include "pages.h"
#include "../skin/skin.h"
#include "../res/resource.h"

static const LPCWSTR g_Units[] = { L"дюйм", L"мм", L"точек ", L"pixels" };

/* The controls that belong to the custom size, enabled together. */
static const int g_CustomControls[] = {
    IDC_CUSTOM_WIDTH, IDC_CUSTOM_HEIGHT, IDC_UNIT_LIST, IDC_BY_LABEL, IDC_IN_LABEL,
};
static const int g_TableControls[] = { IDC_PAPER_LIST, IDC_SIZE_LABEL };

#define MAX_TYPED_CHARS 128

/* A record that reaches the controls must have a paper row and a usable
 * resolution; a profile loaded later gets the same repair as the first one,
 * since the store keeps whatever it was given. */
static void RepairRecord(PQLRDEVMODE pdm)
{
    if (pdm->iPaper < 0 || pdm->iPaper >= PAPER_COUNT)
        pdm->iPaper = PAPER_DEFAULT_ROW;
    pdm->iResolution = ClampInt(pdm->iResolution, QLR_MIN_RESOLUTION, QLR_MAX_RESOLUTION);
}

void InitPageSetup(HWND hPage, PSHEETSTATE pSheet)
{
    RepairRecord(&pSheet->work);
    HWND hPapers = GetDlgItem(hPage, IDC_PAPER_LIST);
    SendMessageW(hPapers, CB_RESETCONTENT, 0, 0);
    for (int i = 0; i < PAPER_COUNT; i++)
        SendMessageW(hPapers, CB_ADDSTRING, 0, (LPARAM)g_Papers[i].szName);

    HWND hResolution = GetDlgItem(hPage, IDC_RESOLUTION);
    SendMessageW(hResolution, CB_RESETCONTENT, 0, 0);
    SendMessageW(hResolution, CB_LIMITTEXT, 4, 0);
    int selected = -1;
    for (size_t i = 0; i < ARRAY_COUNT(g_Resolutions); i++) {
        WCHAR sz[8];
        wsprintfW(sz, L"%d", g_Resolutions[i]);
        SendMessageW(hResolution, CB_ADDSTRING, 0, (LPARAM)sz);
        if (g_Resolutions[i] == pSheet->work.iResolution)
            selected = (int)i;
    }
    if (selected >= 0)
        SendMessageW(hResolution, CB_SETCURSEL, selected, 0);
    else
        SetDlgItemInt(hPage, IDC_RESOLUTION, pSheet->work.iResolution, TRUE);

    HWND hUnits = GetDlgItem(hPage, IDC_UNIT_LIST);
    for (LPCWSTR unit : g_Units)
        SendMessageW(hUnits, CB_ADDSTRING, 0, (LPARAM)unit);
}

static void ShowPageSetupValues(HWND hPage, const QLRDEVMODE *pdm)
{
    CheckDlgButton(hPage, IDC_PORTRAIT, pdm->iOrientation == 0 ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(hPage, IDC_LANDSCAPE, pdm->iOrientation != 0 ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(hPage, IDC_CROP, pdm->bCropEdges ? BST_CHECKED : BST_UNCHECKED);
    SendDlgItemMessageW(hPage, IDC_PAPER_LIST, CB_SETCURSEL, pdm->iPaper, 0);
    CheckDlgButton(hPage, IDC_STANDARD_PAPER, pdm->bCustomPaper ? BST_UNCHECKED : BST_CHECKED);
    CheckDlgButton(hPage, IDC_CUSTOM_PAPER, pdm->bCustomPaper ? BST_CHECKED : BST_UNCHECKED);
    SendDlgItemMessageW(hPage, IDC_UNIT_LIST, CB_SETCURSEL, pdm->iCustomUnit, 0);
    WCHAR sz[32];
    FormatLength(pdm->iCustomWidth, pdm->iCustomUnit, sz, ARRAY_COUNT(sz));
    SetDlgItemTextW(hPage, IDC_CUSTOM_WIDTH, sz);
    FormatLength(pdm->iCustomHeight, pdm->iCustomUnit, sz, ARRAY_COUNT(sz));
    SetDlgItemTextW(hPage, IDC_CUSTOM_HEIGHT, sz);
}

static void ShowSizeLabel(HWND hPage, const PAPERROW *pRow)
{
    WCHAR sz[128];
    if (pRow->iUnit == PAPER_THOU)
        wsprintfW(sz, L"%ws (%d.%.3d x %d.%.3d дюйм)", pRow->szName, pRow->iWidth / THOU_PER_INCH,
                  pRow->iWidth % THOU_PER_INCH, pRow->iHeight / THOU_PER_INCH, pRow->iHeight % THOU_PER_INCH);
    else
        wsprintfW(sz, L"%ws (%d x %d мм)", pRow->szName, pRow->iWidth, pRow->iHeight);
    SetDlgItemTextW(hPage, IDC_SIZE_LABEL, sz);
}

static void EnableControls(HWND hPage, const int *pIds, size_t count, BOOL bEnable)
{
    for (size_t i = 0; i < count; i++)
        EnableWindow(GetDlgItem(hPage, pIds[i]), bEnable);
}

static void RefreshPageSetup(HWND hPage, PSHEETSTATE pSheet)
{
    const QLRDEVMODE *pdm = &pSheet->work;
    CheckDlgButton(hPage, IDC_PORTRAIT, pdm->iOrientation == 0 ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(hPage, IDC_LANDSCAPE, pdm->iOrientation != 0 ? BST_CHECKED : BST_UNCHECKED);
    const PAPERROW *pRow = GetPaperRow(pdm->iPaper);
    ShowSizeLabel(hPage, pRow);

    /* Orientation and crop wait for the paper message, so one refresh paints
     * the preview once. */
    SendDlgItemMessageW(hPage, IDC_PREVIEW, PVM_SETORIENTATION, pdm->iOrientation, 0);
    SendDlgItemMessageW(hPage, IDC_PREVIEW, PVM_SETCROP, pdm->bCropEdges, 0);
    SendDlgItemMessageW(hPage, IDC_PREVIEW, PVM_SETPAPER, pdm->bCustomPaper ? pdm->iCustomWidth : pRow->iWidth,
                        pdm->bCustomPaper ? pdm->iCustomHeight : pRow->iHeight);

    EnableControls(hPage, g_TableControls, ARRAY_COUNT(g_TableControls), !pdm->bCustomPaper);
    EnableControls(hPage, g_CustomControls, ARRAY_COUNT(g_CustomControls), pdm->bCustomPaper);
    NotifySheetChanged(hPage, pSheet);
    ShowPageSetupValues(hPage, pdm);
}

void LoadPageSetup(HWND hPage, PSHEETSTATE pSheet)
{
    RepairRecord(&pSheet->work);
    RefreshPageSetup(hPage, pSheet);
    SetDlgItemInt(hPage, IDC_RESOLUTION, pSheet->work.iResolution, TRUE);
}

/* The 16-bit public fields cannot hold every custom size the page allows at
 * low resolutions: a longer side is stored as the largest value the field
 * holds, never as a wrapped-around small one.  The private size stays exact. */
static short PublicLength(INT tenthsMm)
{
    return (short)ClampInt(tenthsMm, 0, SHRT_MAX);
}

void CollectPageSetup(HWND hPage, PSHEETSTATE pSheet)
{
    PQLRDEVMODE pdm = &pSheet->work;
    DEVMODEW *pub = &pdm->dmPublic;
    pdm->m_bProfiled = pSheet->bProfiled;
    pub->dmFields &= ~(DM_PAPERSIZE | DM_PAPERLENGTH | DM_PAPERWIDTH | DM_FORMNAME);
    pub->dmYResolution = pub->dmPrintQuality = (short)pdm->iResolution;
    pdm->iResolution = pub->dmPrintQuality;
    pdm->iPaper = (short)pdm->iPaper;
    if (pdm->bCustomPaper) {
        CopyBounded(pub->dmFormName, QLR_CUSTOM_PAPER_NAME, CCHFORMNAME);
        pub->dmFields |= DM_PAPERSIZE | DM_PAPERLENGTH | DM_PAPERWIDTH;
        pub->dmPaperSize = DMPAPER_USER;
    } else {
        const PAPERROW *pRow = GetPaperRow(pdm->iPaper);
        CopyBounded(pub->dmFormName, pRow->szName, CCHFORMNAME);
        pub->dmFields |= DM_FORMNAME | DM_PAPERSIZE;
        pub->dmPaperSize = (short)pRow->iPaperId;
    }
    INT cx, cy;
    ComputePaperSize(pdm, &cx, &cy);
    pub->dmPaperLength = PublicLength(cy);
    pub->dmPaperWidth = PublicLength(cx);
    pdm->bCropEdges = IsDlgButtonChecked(hPage, IDC_CROP) == BST_CHECKED;
    pdm->iOrientation = IsDlgButtonChecked(hPage, IDC_PORTRAIT) == BST_CHECKED ? 0 : 1;
    pub->dmOrientation = (short)(pdm->iOrientation ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT);
}

static void ClampCustomSize(PSHEETSTATE pSheet)
{
    ClampCustomLength(pSheet, &pSheet->work.iCustomWidth);
    ClampCustomLength(pSheet, &pSheet->work.iCustomHeight);
}

static BOOL OnResolutionChosen(HWND hPage, PSHEETSTATE pSheet)
{
    LRESULT sel = SendDlgItemMessageW(hPage, IDC_RESOLUTION, CB_GETCURSEL, 0, 0);
    if (sel < 0 || sel >= (LRESULT)ARRAY_COUNT(g_Resolutions))
        return FALSE;
    pSheet->work.iResolution = g_Resolutions[sel];
    ClampCustomSize(pSheet);
    return TRUE;
}

static void OnResolutionTyped(HWND hPage, PSHEETSTATE pSheet)
{
    BOOL bNumber = FALSE;
    UINT typed = GetDlgItemInt(hPage, IDC_RESOLUTION, &bNumber, FALSE);
    int dpi = bNumber ? ClampInt((int)typed, QLR_MIN_RESOLUTION, QLR_MAX_RESOLUTION) : QLR_DEFAULT_RESOLUTION;
    SetDlgItemInt(hPage, IDC_RESOLUTION, dpi, TRUE);
    pSheet->work.iResolution = dpi;
    ClampCustomSize(pSheet);
}

static void OnUnitChosen(HWND hPage, PSHEETSTATE pSheet)
{
    LRESULT sel = SendDlgItemMessageW(hPage, IDC_UNIT_LIST, CB_GETCURSEL, 0, 0);
    int unit = sel == CB_ERR ? UNIT_THOU : (int)sel;
    PQLRDEVMODE pdm = &pSheet->work;
    pdm->iCustomWidth = ConvertLength(pdm->iCustomWidth, pdm->iCustomUnit, unit, pdm->iResolution);
    pdm->iCustomHeight = ConvertLength(pdm->iCustomHeight, pdm->iCustomUnit, unit, pdm->iResolution);
    pdm->iCustomUnit = unit;
}

/* FALSE when the edit holds no number: the field and the typed text stay. */
static BOOL OnLengthTyped(HWND hPage, PSHEETSTATE pSheet, int id)
{
    WCHAR sz[MAX_TYPED_CHARS + 1];
    GetDlgItemTextW(hPage, id, sz, ARRAY_COUNT(sz));
    BOOL bNumber;
    INT value = ParseLength(sz, pSheet->work.iCustomUnit, &bNumber);
    if (!bNumber)
        return FALSE;
    ClampCustomLength(pSheet, &value);
    if (id == IDC_CUSTOM_WIDTH)
        pSheet->work.iCustomWidth = value;
    else
        pSheet->work.iCustomHeight = value;
    return TRUE;
}

void OnPageSetupCommand(HWND hPage, PSHEETSTATE pSheet, WORD id, WORD code)
{
    PQLRDEVMODE pdm = &pSheet->work;
    BOOL bChanged = TRUE;
    switch (id) {
    case IDC_STANDARD_PAPER: pdm->bCustomPaper = FALSE; break;
    case IDC_CUSTOM_PAPER:   pdm->bCustomPaper = TRUE; break;
    case IDC_PORTRAIT:       pdm->iOrientation = 0; break;
    case IDC_LANDSCAPE:      pdm->iOrientation = 1; break;
    case IDC_CROP:           pdm->bCropEdges = IsDlgButtonChecked(hPage, IDC_CROP) == BST_CHECKED; break;
    case IDC_PAPER_LIST: {
        if (code != CBN_SELCHANGE)
            return;
        LRESULT sel = SendDlgItemMessageW(hPage, IDC_PAPER_LIST, CB_GETCURSEL, 0, 0);
        pdm->iPaper = sel == CB_ERR ? PAPER_DEFAULT_ROW : (int)sel;
        break;
    }
    case IDC_RESOLUTION:
        if (code == CBN_SELCHANGE)
            bChanged = OnResolutionChosen(hPage, pSheet);
        else if (code == CBN_KILLFOCUS)
            OnResolutionTyped(hPage, pSheet);
        else
            return;
        break;
    case IDC_UNIT_LIST:
        if (code != CBN_SELCHANGE)
            return;
        OnUnitChosen(hPage, pSheet);
        break;
    case IDC_CUSTOM_WIDTH:
    case IDC_CUSTOM_HEIGHT:
        if (code != EN_KILLFOCUS)
            return;
        bChanged = OnLengthTyped(hPage, pSheet, id);
        break;
    default:
        return;
    }
    if (bChanged)
        RefreshPageSetup(hPage, pSheet);
}
