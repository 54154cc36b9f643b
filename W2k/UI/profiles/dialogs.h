/*
 * What the pages use of profiles beyond the store: the profile list of a
 * page's combo or of the manager's list box, and the two profile dialogs.
 * The dialogs are modal, owned by a page, and take the sheet state as their
 * creation parameter; the page framework collects the pages before one opens
 * and refreshes them after it closes.
 */
#ifndef QLR_PROFILE_DIALOGS_H
#define QLR_PROFILE_DIALOGS_H

#include "profiles.h"
#include "../sheet.h"

/* profilelist.cpp */
enum ProfileListMode { PROFILE_LIST_COMBO = 0, PROFILE_LIST_BOX = 1 };
#define MODIFIED_MARK  L"*"
WORD FillProfileList(HWND hwndList, int nListMode, BOOL bModified);

/* saveas.cpp: TRUE when a profile was saved and made the current profile. */
BOOL RunSaveProfileDialog(PSHEETSTATE pSheet, HWND hOwner);
void TrimBlanks(WCHAR *pszName);

/* manager.cpp */
void RunProfileManager(PSHEETSTATE pSheet, HWND hOwner);

#endif
