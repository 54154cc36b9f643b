/*
 * The profile list: a page's combo, with the default entry first and the
 * modified mark, or the profile manager's list box, with neither.
 */
#include "dialogs.h"

#define DEFAULT_PROFILE_ENTRY  L"<Default Profile>"

typedef struct _PROFILELIST {
    HWND hwndList;
    BOOL bCombo;
    BOOL bModified;
    WCHAR szCurrent[PROFILE_NAME_CHARS];
} PROFILELIST;

/* The current profile is matched with case here, unlike in the store: a
 * current name that differs from its key only in case selects no entry.
 * Character for character, too: lstrcmpW is linguistic and would also take
 * "Case A" for a key spelt with a soft hyphen inside it. */
static BOOL AddProfileEntry(LPCWSTR pszName, void *pContext)
{
    const PROFILELIST *pList = (const PROFILELIST *)pContext;
    BOOL bCurrent = wcscmp(pszName, pList->szCurrent) == 0;
    WCHAR szEntry[PROFILE_NAME_CHARS + 1];
    lstrcpyW(szEntry, pszName);
    if (bCurrent && pList->bModified && pList->bCombo)
        lstrcatW(szEntry, MODIFIED_MARK);
    LRESULT index = SendMessageW(pList->hwndList, pList->bCombo ? CB_ADDSTRING : LB_ADDSTRING, 0, (LPARAM)szEntry);
    if (bCurrent)
        SendMessageW(pList->hwndList, pList->bCombo ? CB_SETCURSEL : LB_SETCURSEL, index, 0);
    return TRUE;
}

WORD FillProfileList(HWND hwndList, int nListMode, BOOL bModified)
{
    PROFILELIST list = { hwndList, nListMode == PROFILE_LIST_COMBO, bModified, L"" };
    ReadCurrentProfileName(list.szCurrent);
    SendMessageW(hwndList, list.bCombo ? CB_RESETCONTENT : LB_RESETCONTENT, 0, 0);
    if (list.bCombo) {
        SendMessageW(hwndList, CB_ADDSTRING, 0, (LPARAM)(bModified && !list.szCurrent[0]
                                                        ? DEFAULT_PROFILE_ENTRY MODIFIED_MARK : DEFAULT_PROFILE_ENTRY));
        SendMessageW(hwndList, CB_SETCURSEL, 0, 0);
    }
    return EnumProfileNames(AddProfileEntry, &list);
}
