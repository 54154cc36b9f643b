/*
 * The property pages and the machinery they share: the profile row, the
 * modified mark, change reports, the apply step, tool tips and help.
 */
#ifndef QLR_PAGES_H
#define QLR_PAGES_H

#include "../sheet.h"

#define PAGE_FRAMEWORK_LIST_COMBO  0
#define PAGE_FRAMEWORK_LIST_BOX    1

enum HelpTopic { HELP_PAGE_SETUP, HELP_FORMAT, HELP_OUTPUT, HELP_PROFILE_ADD, HELP_PROFILE_EDIT };

/* What tells the three pages apart; the lifecycle is the framework's. */
typedef struct _PAGEDESC {
    int iPage;
    int nHelpTopic;
    BOOL bResetsProfiled;               /* the first page starts from the profile */
    const int *pPushButtons; int nPushButtons;
    const int *pCheckBoxes;  int nCheckBoxes;
    const int *pRadios;      int nRadios;
    const int *pGroupBoxes;  int nGroupBoxes;
    int idPreview;                      /* 0: none */
    const int *pToolTips;    int nToolTips;
    void (*Init)(HWND hPage, PSHEETSTATE pSheet);       /* the page's own creation; null: none */
    void (*Load)(HWND hPage, PSHEETSTATE pSheet);
    void (*Collect)(HWND hPage, PSHEETSTATE pSheet);
    void (*Command)(HWND hPage, PSHEETSTATE pSheet, WORD id, WORD code);
    void (*Shown)(HWND hPage, PSHEETSTATE pSheet);      /* WM_SHOWWINDOW showing the page */
    void (*Destroyed)(HWND hPage);      /* WM_DESTROY: what the page owns beyond its windows */
} PAGEDESC;

extern const PAGEDESC g_PageDescs[PAGE_COUNT];

INT_PTR CALLBACK PageSetupDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK FormatPageDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK OutputPageDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

/* framework.cpp */
WORD FillProfileList(HWND hwndList, int nListMode, BOOL bModified);
void RefillProfileCombos(PSHEETSTATE pSheet, BOOL bModified);
void ApplyProfile(LPCWSTR pszName, PSHEETSTATE pSheet, HWND hPage);
LONG ApplySelectedProfile(PSHEETSTATE pSheet, HWND hPage);
void RestoreCurrentProfile(PSHEETSTATE pSheet, HWND hPage);
void CollectPages(PSHEETSTATE pSheet);
void MarkPagesModified(PSHEETSTATE pSheet);
LRESULT NotifySheetChanged(HWND hPage, PSHEETSTATE pSheet);
void ApplySheetChanges(HWND hPage, PSHEETSTATE pSheet);
HWND CreatePageToolTips(HWND hPage, PSHEETSTATE pSheet, const int *pIds, int count);
INT_PTR PageDialogProc(const PAGEDESC *pDesc, HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

/* help.cpp */
BOOL ShowHelpTopic(HWND hwnd, int nTopic);

/* pagesetup.cpp */
void InitPageSetup(HWND hPage, PSHEETSTATE pSheet);
void LoadPageSetup(HWND hPage, PSHEETSTATE pSheet);
void CollectPageSetup(HWND hPage, PSHEETSTATE pSheet);
void OnPageSetupCommand(HWND hPage, PSHEETSTATE pSheet, WORD id, WORD code);

/* formatpage.cpp */
void InitFormatPage(HWND hPage, PSHEETSTATE pSheet);
void LoadFormatPage(HWND hPage, PSHEETSTATE pSheet);
void CollectFormatPage(HWND hPage, PSHEETSTATE pSheet);
void OnFormatPageCommand(HWND hPage, PSHEETSTATE pSheet, WORD id, WORD code);

/* macros.cpp: "&[" name "]" in file-name masks */
#define MACRO_TEXT_CHARS  32
#define EXAMPLE_CHARS     1024
LPCWSTR FormatExtension(int iOutputFormat);
void ExpandMacro(const QLRDEVMODE *pdm, LPCWSTR pszName, WCHAR szOut[MACRO_TEXT_CHARS]);
void ExpandFileNameMask(HWND hPage, PSHEETSTATE pSheet, LPCWSTR pszMask, WCHAR szOut[EXAMPLE_CHARS]);
void InsertMacro(HWND hPage, PSHEETSTATE pSheet);

/* outputpage.cpp */
void LoadOutputPage(HWND hPage, PSHEETSTATE pSheet);
void CollectOutputPage(HWND hPage, PSHEETSTATE pSheet);
void OnOutputPageCommand(HWND hPage, PSHEETSTATE pSheet, WORD id, WORD code);

/* appinfo.cpp */
void LookupAssociatedApplication(LPCWSTR pszExtension, WCHAR szPath[520]);
void RefreshApplicationInfo(HWND hPage, PSHEETSTATE pSheet);
void ReleaseApplicationIcon(HWND hPage);

/* lengths.cpp: custom paper lengths in whole steps of their unit */
int  ConvertLength(int value, int fromUnit, int toUnit, int resolution);
void ClampCustomLength(const SHEETSTATE *pSheet, INT *pValue);
void FormatLength(int value, int unit, WCHAR *pszText, int cch);
int  ParseLength(LPCWSTR pszText, int unit, BOOL *pOk);

/* ../profiles/manager.cpp */
LONG OpenProfileManager(PSHEETSTATE pSheet, HWND hPage);

/* ../profiles/saveas.cpp */
BOOL SaveProfileAs(PSHEETSTATE pSheet, HWND hPage);
void TrimBlanks(WCHAR *pszName);

#endif
