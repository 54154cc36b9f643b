/*
 * The profile manager: list, rename, comment, delete, import and export the
 * stored profiles.  Every change goes to the store at once; OK and Cancel
 * only close the dialog.
 */
#include "dialogs.h"
#include "../skin/skin.h"
#include "../res/resource.h"
#include <commdlg.h>

#define MSG_DELETE_PROFILE  L"Вы хотите удалить выбранный профиль?          "
#define CAPTION_EDIT        L"Edit profile..."
#define FILE_FILTER         L"Quillora profile (*.qlr)\0*.qlr\0"
#define FILE_EXTENSION      L"qlr"

static const int g_EditingGroup[] = {
    IDC_DELETE_PROFILE, IDC_NAME_LABEL, IDC_PROFILE_NAME, IDC_COMMENT_LABEL, IDC_PROFILE_COMMENT, IDC_EXPORT_PROFILE,
};

static void Beep(void)
{
    MessageBeep((UINT)-1);
}

static HWND List(HWND hDlg)
{
    return GetDlgItem(hDlg, IDC_PROFILE_LIST);
}

static int RefillList(HWND hDlg)
{
    FillProfileList(List(hDlg), PROFILE_LIST_BOX, FALSE);
    return (int)SendMessageW(List(hDlg), LB_GETCOUNT, 0, 0);
}

/* The selected entry's text; FALSE when nothing usable is selected. */
static BOOL SelectedName(HWND hDlg, WCHAR szName[PROFILE_NAME_CHARS], LRESULT *pIndex)
{
    LRESULT sel = SendMessageW(List(hDlg), LB_GETCURSEL, 0, 0);
    if (pIndex)
        *pIndex = sel;
    return sel != LB_ERR && SendMessageW(List(hDlg), LB_GETTEXTLEN, sel, 0) < PROFILE_NAME_CHARS &&
           SendMessageW(List(hDlg), LB_GETTEXT, sel, (LPARAM)szName) != LB_ERR;
}

static void EnableEditing(HWND hDlg, BOOL bEnable)
{
    if (!IsWindowEnabled(GetDlgItem(hDlg, IDC_DELETE_PROFILE)) == !bEnable)
        return;
    for (int id : g_EditingGroup)
        EnableWindow(GetDlgItem(hDlg, id), bEnable);
}

static void ShowSelected(HWND hDlg)
{
    WCHAR szName[PROFILE_NAME_CHARS] = L"";
    PQLRDEVMODE pTemp = (PQLRDEVMODE)LocalAlloc(LPTR, sizeof(QLRDEVMODE));
    if (!pTemp)
        return;
    if (SelectedName(hDlg, szName, NULL) && !ReadProfile(szName, pTemp)) {
        Beep();
        LocalFree(pTemp);
        return;
    }
    SetDlgItemTextW(hDlg, IDC_PROFILE_NAME, szName);
    SetDlgItemTextW(hDlg, IDC_PROFILE_COMMENT, pTemp->szComments);
    LocalFree(pTemp);
}

static void SelectByName(HWND hDlg, LPCWSTR pszName)
{
    LRESULT index = SendMessageW(List(hDlg), LB_FINDSTRINGEXACT, (WPARAM)-1, (LPARAM)pszName);
    if (index != LB_ERR)
        SendMessageW(List(hDlg), LB_SETCURSEL, index, 0);
}

static void OnDelete(HWND hDlg)
{
    WCHAR szName[PROFILE_NAME_CHARS];
    LRESULT sel;
    if (!SelectedName(hDlg, szName, &sel) ||
        MessageBoxW(hDlg, MSG_DELETE_PROFILE, CAPTION_EDIT, MB_YESNO | MB_ICONQUESTION) != IDYES)
        return;
    DeleteProfile(szName);
    int count = RefillList(hDlg);
    if (count)
        SendMessageW(List(hDlg), LB_SETCURSEL, sel < count ? sel : count - 1, 0);
    else
        EnableEditing(hDlg, FALSE);
    ShowSelected(hDlg);
}

/* Another profile of that name, in any letter case? */
static BOOL NameTakenByOther(HWND hDlg, LPCWSTR pszName, LRESULT sel)
{
    LRESULT count = SendMessageW(List(hDlg), LB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; i++) {
        WCHAR szEntry[PROFILE_NAME_CHARS];
        if (i != sel && SendMessageW(List(hDlg), LB_GETTEXTLEN, i, 0) < PROFILE_NAME_CHARS &&
            SendMessageW(List(hDlg), LB_GETTEXT, i, (LPARAM)szEntry) != LB_ERR && EqualNoCase(szEntry, pszName))
            return TRUE;
    }
    return FALSE;
}

/* A backslash would make the store nest one profile inside another key: a
 * leading one, and any later one too, becomes "_" so the name the user sees
 * is the name that is stored. */
static void ReplaceBackslashes(WCHAR *pszName)
{
    for (; *pszName; pszName++)
        if (*pszName == L'\\')
            *pszName = L'_';
}

static void RefuseName(HWND hDlg)
{
    Beep();
    SetFocus(GetDlgItem(hDlg, IDC_PROFILE_NAME));
}

/* FALSE when the name is refused and the focus is sent back to it. */
static BOOL OnRename(HWND hDlg)
{
    WCHAR szOld[PROFILE_NAME_CHARS], szNew[PROFILE_NAME_CHARS];
    LRESULT sel;
    if (!SelectedName(hDlg, szOld, &sel)) {
        SetFocus(GetDlgItem(hDlg, IDC_PROFILE_NAME));
        return FALSE;
    }
    GetDlgItemTextW(hDlg, IDC_PROFILE_NAME, szNew, PROFILE_NAME_CHARS);
    TrimBlanks(szNew);
    if (!szNew[0]) {
        RefuseName(hDlg);
        return FALSE;
    }
    ReplaceBackslashes(szNew);
    SetDlgItemTextW(hDlg, IDC_PROFILE_NAME, szNew);
    if (NameTakenByOther(hDlg, szNew, sel)) {
        RefuseName(hDlg);
        return FALSE;
    }
    if (EqualNoCase(szOld, szNew))
        return TRUE;
    LPCWSTR pszNow = szNew;
    if (!RenameProfile(szOld, szNew)) {
        Beep();
        SetDlgItemTextW(hDlg, IDC_PROFILE_NAME, szOld);
        pszNow = szOld;
    }
    RefillList(hDlg);
    SelectByName(hDlg, pszNow);
    return TRUE;
}

static void OnSaveComment(HWND hDlg)
{
    WCHAR szName[PROFILE_NAME_CHARS];
    if (!SelectedName(hDlg, szName, NULL)) {
        SetFocus(GetDlgItem(hDlg, IDC_PROFILE_COMMENT));
        return;
    }
    PQLRDEVMODE pTemp = (PQLRDEVMODE)LocalAlloc(LPTR, sizeof(QLRDEVMODE));
    BOOL ok = pTemp && ReadProfile(szName, pTemp);
    if (ok) {
        GetDlgItemTextW(hDlg, IDC_PROFILE_COMMENT, pTemp->szComments, QLR_COMMENT_CHARS);
        ok = WriteProfile(szName, pTemp);
    }
    LocalFree(pTemp);
    if (!ok)
        Beep();
}

/* The name and the comment are stored when their edit loses the focus.  A
 * click on OK or Cancel takes the focus first; Enter and Esc leave it in the
 * edit, so the edit is served here as the click would have served it.  A
 * refused name keeps the dialog open with the focus on it, so the user hears
 * the refusal and can mend the name instead of losing it. */
static BOOL CommitFocusedEdit(HWND hDlg)
{
    HWND hFocus = GetFocus();
    if (hFocus == GetDlgItem(hDlg, IDC_PROFILE_NAME))
        return OnRename(hDlg);
    if (hFocus == GetDlgItem(hDlg, IDC_PROFILE_COMMENT))
        OnSaveComment(hDlg);
    return TRUE;
}

static void InitFileDialog(OPENFILENAMEW *pOfn, HWND hDlg, WCHAR *pszFile, LPCWSTR pszTitle, DWORD dwFlags)
{
    ZeroMemory(pOfn, sizeof(*pOfn));
    pOfn->lStructSize = sizeof(*pOfn);
    pOfn->hwndOwner = hDlg;
    pOfn->hInstance = g_hModule;
    pOfn->lpstrFilter = FILE_FILTER;
    pOfn->lpstrFile = pszFile;
    pOfn->nMaxFile = MAX_PATH;
    pOfn->lpstrTitle = pszTitle;
    pOfn->Flags = dwFlags;
    pOfn->lpstrDefExt = FILE_EXTENSION;
    pszFile[0] = 0;
}

static void OnImport(HWND hDlg)
{
    WCHAR szFile[MAX_PATH], szName[PROFILE_NAME_CHARS];
    OPENFILENAMEW ofn;
    InitFileDialog(&ofn, hDlg, szFile, L"Import profile",
                   OFN_LONGNAMES | OFN_EXPLORER | OFN_NOTESTFILECREATE | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST);
    if (!GetOpenFileNameW(&ofn) || !ImportProfileFile(szFile, szName))
        return;
    EnableEditing(hDlg, RefillList(hDlg) > 0);
    SelectByName(hDlg, szName);
    ShowSelected(hDlg);
}

static void OnExport(HWND hDlg)
{
    WCHAR szFile[MAX_PATH], szName[PROFILE_NAME_CHARS];
    if (!SelectedName(hDlg, szName, NULL))
        return;
    OPENFILENAMEW ofn;
    InitFileDialog(&ofn, hDlg, szFile, L"Export profile",
                   OFN_LONGNAMES | OFN_EXPLORER | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT);
    if (GetSaveFileNameW(&ofn))
        ExportProfileFile(szName, szFile);
}

static void InitManager(HWND hDlg)
{
    static const int buttons[] = {
        IDC_DELETE_PROFILE, IDC_IMPORT_PROFILE, IDC_EXPORT_PROFILE, IDC_HELP_BUTTON, IDOK, IDCANCEL,
    };
    for (int id : buttons)
        AttachPushButton(hDlg, id);
    SendDlgItemMessageW(hDlg, IDC_PROFILE_NAME, EM_LIMITTEXT, PROFILE_NAME_CHARS, 0);
    SendDlgItemMessageW(hDlg, IDC_PROFILE_COMMENT, EM_LIMITTEXT, QLR_COMMENT_CHARS, 0);
    int count = RefillList(hDlg);
    EnableEditing(hDlg, count > 0);
    if (count && SendMessageW(List(hDlg), LB_GETCURSEL, 0, 0) == LB_ERR)
        SendMessageW(List(hDlg), LB_SETCURSEL, 0, 0);
    ShowSelected(hDlg);
}

static void OnManagerCommand(HWND hDlg, WORD id, WORD code)
{
    switch (id) {
    case IDC_PROFILE_LIST:
        if (code == LBN_SELCHANGE)
            ShowSelected(hDlg);
        break;
    case IDC_DELETE_PROFILE: OnDelete(hDlg); break;
    case IDC_IMPORT_PROFILE: OnImport(hDlg); break;
    case IDC_EXPORT_PROFILE: OnExport(hDlg); break;
    case IDOK:
    case IDCANCEL:
        if (CommitFocusedEdit(hDlg))
            EndDialog(hDlg, id);
        break;
    case IDC_HELP_BUTTON:
        ShowHelpTopic(hDlg, HELP_PROFILE_EDIT);
        break;
    case IDC_PROFILE_NAME:
        if (code == EN_KILLFOCUS)
            OnRename(hDlg);
        break;
    case IDC_PROFILE_COMMENT:
        if (code == EN_KILLFOCUS)
            OnSaveComment(hDlg);
        break;
    }
}

static INT_PTR CALLBACK ProfileManagerDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_INITDIALOG:
        SetWindowLongPtrW(hDlg, GWLP_USERDATA, lParam);
        InitManager(hDlg);
        return TRUE;
    case WM_COMMAND:
        OnManagerCommand(hDlg, LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    }
    return FALSE;
}

/* Its result says nothing: every change is in the store already. */
void RunProfileManager(PSHEETSTATE pSheet, HWND hOwner)
{
    DialogBoxParamW(g_hModule, MAKEINTRESOURCEW(IDD_PROFILE_MANAGER), hOwner, ProfileManagerDlgProc, (LPARAM)pSheet);
}
