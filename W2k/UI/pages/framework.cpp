/*
 * The page framework: the profile row every page carries, the modified mark,
 * change reports to the sheet, the apply step, tool tips, and the lifecycle
 * every page's dialog procedure follows.
 */
#include "pages.h"
#include "../profiles/dialogs.h"
#include "../skin/skin.h"
#include "../res/resource.h"
#include <commctrl.h>

#define TIP_WIDTH               640

/* The profile row stands at the top of every page with the same ids: the
 * combo of stored profiles (choosing one loads it), "Save profile as...",
 * "Profile manager...", the never-shown "Restore defaults" (reloads the
 * current profile), and Help at the bottom left.  It is the framework's:
 * attached, given tool tips and answered here, so a page lists only its own
 * controls.  Where Help's tip falls among a page's tips is the page's own. */
static const int g_ProfileRowButtons[] = { IDC_SAVE_PROFILE, IDC_PROFILE_MANAGER, IDC_RESTORE_PROFILE, IDC_HELP_BUTTON };
static const int g_ProfileRowTips[] = { IDC_PROFILE_COMBO, IDC_SAVE_PROFILE, IDC_PROFILE_MANAGER, IDC_RESTORE_PROFILE };

static HWND ProfileCombo(HWND hPage)
{
    return GetDlgItem(hPage, IDC_PROFILE_COMBO);
}

/* Pages that exist, in sheet order; a page never shown has no window. */
static BOOL PageExists(const SHEETSTATE *pSheet, int i)
{
    return pSheet->hwndPages[i] && IsWindow(pSheet->hwndPages[i]);
}

static void RefillProfileCombos(PSHEETSTATE pSheet, BOOL bModified)
{
    for (int i = 0; i < PAGE_COUNT; i++)
        if (PageExists(pSheet, i))
            FillProfileList(ProfileCombo(pSheet->hwndPages[i]), PROFILE_LIST_COMBO, bModified);
}

static void LoadPages(PSHEETSTATE pSheet)
{
    for (int i = 0; i < PAGE_COUNT; i++)
        if (PageExists(pSheet, i) && g_PageDescs[i].Load)
            g_PageDescs[i].Load(pSheet->hwndPages[i], pSheet);
}

/* A value typed into a box counts when the box loses the focus.  A click on
 * OK or on a button takes the focus first; Enter, or a button reached by its
 * mnemonic, leaves it in the box.  So before the pages are read, the box that
 * holds the focus is told it lost it, exactly as the click would have told
 * it: without this the resolution or size typed last would reach the record
 * only after the pages were collected, half applied, or not at all.  The
 * box's page or panel answers as it answers a real loss of focus; answering
 * twice changes nothing, since each answer rewrites the box in the form it
 * reads back unchanged. */
static void CommitFocusedBox(PSHEETSTATE pSheet)
{
    HWND hBox = GetFocus();
    WCHAR szClass[16];
    if (!hBox || !GetClassNameW(hBox, szClass, ARRAY_COUNT(szClass)) || lstrcmpiW(szClass, WC_EDITW) != 0)
        return;
    WORD code = EN_KILLFOCUS;
    HWND hParent = GetParent(hBox);
    if (GetClassNameW(hParent, szClass, ARRAY_COUNT(szClass)) && lstrcmpiW(szClass, WC_COMBOBOXW) == 0) {
        hBox = hParent;
        code = CBN_KILLFOCUS;
    }
    for (int i = 0; i < PAGE_COUNT; i++)
        if (PageExists(pSheet, i) && IsChild(pSheet->hwndPages[i], hBox))
            SendMessageW(GetParent(hBox), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(hBox), code), (LPARAM)hBox);
}

static void CollectPages(PSHEETSTATE pSheet)
{
    for (int i = 0; i < PAGE_COUNT; i++)
        if (PageExists(pSheet, i) && g_PageDescs[i].Collect)
            g_PageDescs[i].Collect(pSheet->hwndPages[i], pSheet);
}

static void ApplyProfile(LPCWSTR pszName, PSHEETSTATE pSheet, HWND hPage)
{
    (void)hPage;
    WCHAR szDevice[CCHDEVICENAME];
    CopyMemory(szDevice, pSheet->work.dmPublic.dmDeviceName, sizeof(szDevice));
    szDevice[CCHDEVICENAME - 1] = 0;
    PQLRDEVMODE pTemp = (PQLRDEVMODE)LocalAlloc(LPTR, sizeof(QLRDEVMODE));
    if (!pTemp)
        return;
    if (pszName[0]) {
        /* A failed read may leave the record half written: the working
         * settings are replaced only by a whole profile. */
        if (!ReadProfile(pszName, pTemp)) {
            MessageBeep((UINT)-1);
            LocalFree(pTemp);
            return;
        }
        CopyBounded(pTemp->dmPublic.dmDeviceName, szDevice, CCHDEVICENAME);
    } else {
        SetDefDM(szDevice, pTemp);
    }
    pSheet->work = *pTemp;
    LocalFree(pTemp);
    WriteCurrentProfileName(pszName);
    RefillProfileCombos(pSheet, FALSE);
    LoadPages(pSheet);
}

static LONG ApplySelectedProfile(PSHEETSTATE pSheet, HWND hPage)
{
    HWND hCombo = ProfileCombo(hPage);
    LRESULT sel = SendMessageW(hCombo, CB_GETCURSEL, 0, 0);
    if (sel == CB_ERR)
        return -1;
    WCHAR szName[PROFILE_NAME_CHARS + 1] = L"";
    if (sel > 0 && SendMessageW(hCombo, CB_GETLBTEXTLEN, sel, 0) < (LRESULT)ARRAY_COUNT(szName)) {
        SendMessageW(hCombo, CB_GETLBTEXT, sel, (LPARAM)szName);
        int cch = lstrlenW(szName);
        if (cch && szName[cch - 1] == MODIFIED_MARK[0])
            szName[cch - 1] = 0;
    }
    pSheet->bTrackChanges = FALSE;
    ApplyProfile(szName, pSheet, hPage);
    NotifySheetChanged(hPage, pSheet);
    pSheet->bTrackChanges = TRUE;
    pSheet->bProfiled = TRUE;
    return 1;
}

static void RestoreCurrentProfile(PSHEETSTATE pSheet, HWND hPage)
{
    WCHAR szName[PROFILE_NAME_CHARS];
    ReadCurrentProfileName(szName);
    ApplyProfile(szName, pSheet, hPage);
    NotifySheetChanged(hPage, pSheet);
}

static void MarkPagesModified(PSHEETSTATE pSheet)
{
    RefillProfileCombos(pSheet, TRUE);
    pSheet->bProfiled = FALSE;
}

LRESULT NotifySheetChanged(HWND hPage, PSHEETSTATE pSheet)
{
    if (pSheet) {
        if (pSheet->bTrackChanges)
            MarkPagesModified(pSheet);
        pSheet->bApplied = FALSE;
    }
    return SendMessageW(GetParent(hPage), PSM_CHANGED, (WPARAM)hPage, 0);
}

/* The save-profile-as command: the dialog stores what the pages show, and
 * the profile it saved is then the one every combo selects, unmarked. */
static BOOL SaveProfileAs(PSHEETSTATE pSheet, HWND hPage)
{
    CommitFocusedBox(pSheet);
    CollectPages(pSheet);
    if (!RunSaveProfileDialog(pSheet, hPage))
        return FALSE;
    pSheet->bProfiled = TRUE;
    RefillProfileCombos(pSheet, FALSE);
    return TRUE;
}

/* The manager changes the store at once and may delete or rename the current
 * profile, so the pages reload whatever is current when it closes: settings
 * not saved to a profile are replaced. */
static LONG OpenProfileManager(PSHEETSTATE pSheet, HWND hPage)
{
    CommitFocusedBox(pSheet);
    CollectPages(pSheet);
    RunProfileManager(pSheet, hPage);
    RefillProfileCombos(pSheet, FALSE);
    return ApplySelectedProfile(pSheet, hPage);
}

static void MakePrinterDefault(PSHEETSTATE pSheet)
{
    PRINTER_INFO_2W *pInfo = (PRINTER_INFO_2W *)GetPrinterInfo(pSheet->hPrinter, 2);
    if (!pInfo)
        return;
    pInfo->pDevMode = &pSheet->work.dmPublic;
    SetPrinterW(pSheet->hPrinter, 2, (BYTE *)pInfo, 0);
    LocalFree(pInfo);
}

/* The sheet sends its apply notification to every page that exists; the
 * work is done for the first of them only.  A value still waiting in its box
 * is a change like any other, so it is taken before the sheet asks whether
 * anything changed. */
static void ApplySheetChanges(HWND hPage, PSHEETSTATE pSheet)
{
    int c = pSheet->nApplyCalls;
    pSheet->nApplyCalls = (c + 1) % PAGE_COUNT;
    if (c == 0)
        CommitFocusedBox(pSheet);
    if (pSheet->bApplied || c != 0)
        return;
    CollectPages(pSheet);

    WCHAR szName[PROFILE_NAME_CHARS];
    ReadCurrentProfileName(szName);
    if (szName[0])
        WriteProfile(szName, &pSheet->work);
    else if (!SaveProfileAs(pSheet, hPage))
        return;
    pSheet->bProfiled = TRUE;
    ApplySelectedProfile(pSheet, hPage);
    pSheet->bApplied = TRUE;
    MakePrinterDefault(pSheet);
}

/* Each tip's text is the string resource numbered as its control. */
static void AddToolTips(HWND hwndTips, HWND hPage, const int *pIds, int count)
{
    for (int i = 0; i < count; i++) {
        HWND hControl = GetDlgItem(hPage, pIds[i]);
        if (!hControl)
            continue;
        TTTOOLINFOW ti = {};
        ti.cbSize = TTTOOLINFOW_V2_SIZE;
        ti.uFlags = TTF_IDISHWND | TTF_SUBCLASS | TTF_TRANSPARENT;
        ti.hwnd = hPage;
        ti.uId = (UINT_PTR)hControl;
        ti.hinst = g_hModule;
        ti.lpszText = MAKEINTRESOURCEW(pIds[i]);
        SendMessageW(hwndTips, TTM_ADDTOOLW, 0, (LPARAM)&ti);
    }
}

HWND CreatePageToolTips(HWND hPage, PSHEETSTATE pSheet, const int *pIds, int count)
{
    (void)pSheet;
    HWND hwndTips = CreateWindowExW(0, TOOLTIPS_CLASSW, NULL, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP,
                                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                                    hPage, NULL, g_hModule, NULL);
    if (!hwndTips)
        return NULL;
    SetWindowPos(hwndTips, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SendMessageW(hwndTips, TTM_SETMAXTIPWIDTH, 0, TIP_WIDTH);
    SendMessageW(hwndTips, TTM_ACTIVATE, TRUE, 0);
    AddToolTips(hwndTips, hPage, pIds, count);
    return hwndTips;
}

static void AttachEach(HWND hPage, const int *pIds, int count, void (*Attach)(HWND hDlg, int id))
{
    for (int i = 0; i < count; i++)
        Attach(hPage, pIds[i]);
}

static void AttachPageControls(const PAGEDESC *pDesc, HWND hPage)
{
    AttachEach(hPage, g_ProfileRowButtons, ARRAY_COUNT(g_ProfileRowButtons), AttachPushButton);
    AttachEach(hPage, pDesc->pushButtons.pIds, pDesc->pushButtons.count, AttachPushButton);
    AttachEach(hPage, pDesc->radios.pIds, pDesc->radios.count, AttachRadioButton);
    AttachEach(hPage, pDesc->checkBoxes.pIds, pDesc->checkBoxes.count, AttachCheckBox);
    if (pDesc->idPreview)
        AttachPagePreview(hPage, pDesc->idPreview);
    AttachEach(hPage, pDesc->groupBoxes.pIds, pDesc->groupBoxes.count, AttachGroupBox);
}

static HWND CreateRowAndPageToolTips(const PAGEDESC *pDesc, HWND hPage, PSHEETSTATE pSheet)
{
    HWND hwndTips = CreatePageToolTips(hPage, pSheet, g_ProfileRowTips, ARRAY_COUNT(g_ProfileRowTips));
    if (hwndTips)
        AddToolTips(hwndTips, hPage, pDesc->toolTips.pIds, pDesc->toolTips.count);
    return hwndTips;
}

/* Creation cancels the change reports its own Load raises, and only those:
 * a change made on another page before this one was first shown must still
 * reach the profile and the printer at OK, so the apply flag is put back as
 * the creation found it. */
static void InitPage(const PAGEDESC *pDesc, HWND hPage, PSHEETSTATE pSheet)
{
    BOOL bWasApplied = pSheet->bApplied;
    pSheet->bTrackChanges = FALSE;
    if (pDesc->bResetsProfiled)
        pSheet->bProfiled = TRUE;
    pSheet->hwndPages[pDesc->iPage] = hPage;
    AttachPageControls(pDesc, hPage);
    if (pDesc->Init)
        pDesc->Init(hPage, pSheet);
    pSheet->hwndToolTips[pDesc->iPage] = CreateRowAndPageToolTips(pDesc, hPage, pSheet);
    FillProfileList(ProfileCombo(hPage), PROFILE_LIST_COMBO, !pSheet->bProfiled);
    if (pDesc->Load)
        pDesc->Load(hPage, pSheet);
    if (pSheet->bProfiled)
        ApplySelectedProfile(pSheet, hPage);
    pSheet->nApplyCalls = 0;
    pSheet->bTrackChanges = TRUE;
    pSheet->bApplied = bWasApplied;
}

static BOOL OnProfileRowCommand(const PAGEDESC *pDesc, HWND hPage, PSHEETSTATE pSheet, WORD id, WORD code)
{
    if (id != IDC_PROFILE_COMBO && code != BN_CLICKED)
        return FALSE;
    switch (id) {
    case IDC_PROFILE_COMBO:
        if (code == CBN_SELCHANGE)
            ApplySelectedProfile(pSheet, hPage);
        return TRUE;
    case IDC_SAVE_PROFILE:
        SaveProfileAs(pSheet, hPage);
        return TRUE;
    case IDC_PROFILE_MANAGER:
        OpenProfileManager(pSheet, hPage);
        return TRUE;
    case IDC_RESTORE_PROFILE:
        RestoreCurrentProfile(pSheet, hPage);
        return TRUE;
    case IDC_HELP_BUTTON:
        ShowHelpTopic(hPage, pDesc->nHelpTopic);
        return TRUE;
    }
    return FALSE;
}

static INT_PTR OnNotify(const PAGEDESC *pDesc, HWND hPage, PSHEETSTATE pSheet, const NMHDR *pnmh)
{
    switch (pnmh->code) {
    case PSN_APPLY:
        ApplySheetChanges(hPage, pSheet);
        pSheet->psui.pfnComPropSheet(pSheet->psui.hComPropSheet, CPSFUNC_SET_RESULT,
                                     (LPARAM)pSheet->hPageResults[pDesc->iPage], 1);
        return TRUE;
    case PSN_RESET:
        return FALSE;
    }
    return TRUE;
}

INT_PTR PageDialogProc(const PAGEDESC *pDesc, HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    PSHEETSTATE pSheet = (PSHEETSTATE)GetWindowLongPtrW(hDlg, GWLP_USERDATA);
    switch (msg) {
    case WM_INITDIALOG:
        pSheet = (PSHEETSTATE)((LPPROPSHEETPAGEW)lParam)->lParam;
        SetWindowLongPtrW(hDlg, GWLP_USERDATA, (LONG_PTR)pSheet);
        InitPage(pDesc, hDlg, pSheet);
        return TRUE;
    case WM_COMMAND:
        if (!pSheet)
            return FALSE;
        if (!OnProfileRowCommand(pDesc, hDlg, pSheet, LOWORD(wParam), HIWORD(wParam)) && pDesc->Command)
            pDesc->Command(hDlg, pSheet, LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    case WM_NOTIFY:
        return pSheet ? OnNotify(pDesc, hDlg, pSheet, (const NMHDR *)lParam) : FALSE;
    case WM_HELP:
        ShowHelpTopic(hDlg, pDesc->nHelpTopic);
        return TRUE;
    case WM_SHOWWINDOW:
        if (wParam && pSheet && pDesc->Shown)
            pDesc->Shown(hDlg, pSheet);
        return FALSE;
    case WM_DESTROY:
        if (pDesc->Destroyed)
            pDesc->Destroyed(hDlg);
        if (pSheet) {
            if (pSheet->hwndToolTips[pDesc->iPage])
                DestroyWindow(pSheet->hwndToolTips[pDesc->iPage]);
            pSheet->hwndToolTips[pDesc->iPage] = NULL;
            pSheet->hwndPages[pDesc->iPage] = NULL;
        }
        return FALSE;
    }
    return FALSE;
}
