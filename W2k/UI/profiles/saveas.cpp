/*
 * "Save profile as": the working settings saved under a name the user types,
 * with a comment that travels inside the saved record.
 */
#include "dialogs.h"
#include "../skin/skin.h"
#include "../res/resource.h"

/* The trailing blanks belong to the texts. */
#define MSG_EMPTY_NAME  L"Вы должны определить имя профиля       "
#define MSG_NAME_EXISTS L"Профиль с таким именем существует.\nВы хотите заменить его?           "
#define MSG_SAVE_FAILED L"Ошибка сохранения профиля!            "
#define CAPTION_ERROR   L"Error"
#define CAPTION_ADD     L"Add profile..."

/* Blanks only: tabs and other white space belong to the name. */
void TrimBlanks(WCHAR *pszName)
{
    int end = lstrlenW(pszName);
    while (end > 0 && pszName[end - 1] == L' ')
        end--;
    pszName[end] = 0;
    int start = 0;
    while (pszName[start] == L' ')
        start++;
    MoveMemory(pszName, pszName + start, (end - start + 1) * sizeof(WCHAR));
}

static void InitSaveDialog(HWND hDlg)
{
    static const int buttons[] = { IDOK, IDCANCEL, IDC_HELP_BUTTON };
    for (int id : buttons)
        AttachPushButton(hDlg, id);
    SendDlgItemMessageW(hDlg, IDC_PROFILE_NAME, EM_LIMITTEXT, PROFILE_NAME_CHARS, 0);
    SendDlgItemMessageW(hDlg, IDC_PROFILE_COMMENT, EM_LIMITTEXT, QLR_COMMENT_CHARS, 0);

    /* The comment offered is the stored profile's, not the working record's. */
    WCHAR szName[PROFILE_NAME_CHARS];
    ReadCurrentProfileName(szName);
    PQLRDEVMODE pStored = (PQLRDEVMODE)LocalAlloc(LPTR, sizeof(QLRDEVMODE));
    if (pStored && szName[0] && ReadProfile(szName, pStored))
        SetDlgItemTextW(hDlg, IDC_PROFILE_COMMENT, pStored->szComments);
    LocalFree(pStored);
    SetDlgItemTextW(hDlg, IDC_PROFILE_NAME, szName);
}

static void StayOnName(HWND hDlg)
{
    SetFocus(GetDlgItem(hDlg, IDC_PROFILE_NAME));
}

static void OnSave(HWND hDlg, PSHEETSTATE pSheet)
{
    WCHAR szName[PROFILE_NAME_CHARS];
    int cch = GetDlgItemTextW(hDlg, IDC_PROFILE_NAME, szName, PROFILE_NAME_CHARS);
    if (cch)
        TrimBlanks(szName);
    if (!cch || !szName[0]) {
        MessageBoxW(hDlg, MSG_EMPTY_NAME, CAPTION_ERROR, MB_OK | MB_ICONINFORMATION);
        StayOnName(hDlg);
        return;
    }
    /* The comment is taken even if nothing is saved in the end. */
    GetDlgItemTextW(hDlg, IDC_PROFILE_COMMENT, pSheet->work.szComments, QLR_COMMENT_CHARS);
    if (ProfileExists(szName) &&
        MessageBoxW(hDlg, MSG_NAME_EXISTS, CAPTION_ADD, MB_YESNO | MB_ICONQUESTION) != IDYES) {
        StayOnName(hDlg);
        return;
    }
    if (!WriteProfile(szName, &pSheet->work)) {
        MessageBoxW(hDlg, MSG_SAVE_FAILED, CAPTION_ERROR, MB_OK | MB_ICONSTOP);
        return;
    }
    WriteCurrentProfileName(szName);
    EndDialog(hDlg, IDOK);
}

static INT_PTR CALLBACK SaveProfileDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_INITDIALOG:
        SetWindowLongPtrW(hDlg, GWLP_USERDATA, lParam);
        InitSaveDialog(hDlg);
        return TRUE;
    case WM_COMMAND: {
        PSHEETSTATE pSheet = (PSHEETSTATE)GetWindowLongPtrW(hDlg, GWLP_USERDATA);
        switch (LOWORD(wParam)) {
        case IDOK:
            OnSave(hDlg, pSheet);
            break;
        case IDCANCEL:
            EndDialog(hDlg, IDCANCEL);
            break;
        case IDC_HELP_BUTTON:
            ShowHelpTopic(hDlg, HELP_PROFILE_ADD);
            break;
        }
        return TRUE;
    }
    }
    return FALSE;
}

BOOL RunSaveProfileDialog(PSHEETSTATE pSheet, HWND hOwner)
{
    return DialogBoxParamW(g_hModule, MAKEINTRESOURCEW(IDD_SAVE_PROFILE), hOwner, SaveProfileDlgProc,
                           (LPARAM)pSheet) == IDOK;
}
