/*
 * The property pages and the machinery they share: the profile row, the
 * modified mark, change reports, the apply step, tool tips and help.
 */
#ifndef QLR_PAGES_H
#define QLR_PAGES_H

#include "../sheet.h"

/* Control ids of one page, with their count. */
typedef struct _IDLIST {
    const int *pIds;
    int count;
} IDLIST;

#define ID_LIST(a) { a, (int)ARRAY_COUNT(a) }

/* What tells the three pages apart.  The lifecycle and the profile row at
 * the top of every page are the framework's: a page lists only its own
 * controls, and an empty list, a zero id or a null operation means that the
 * page has none. */
typedef struct _PAGEDESC {
    int iPage;                          /* PAGE_SETUP, PAGE_FORMAT or PAGE_OUTPUT */
    int nHelpTopic;                     /* for Help and F1 */
    BOOL bResetsProfiled;               /* the first page starts from the profile */
    IDLIST pushButtons;                 /* handed to the custom-drawn controls */
    IDLIST checkBoxes;
    IDLIST radios;
    IDLIST groupBoxes;
    int idPreview;                      /* the paper preview's static control */
    IDLIST toolTips;                    /* after the profile row's, in this order */
    void (*Init)(HWND hPage, PSHEETSTATE pSheet);       /* the page's own creation */
    void (*Load)(HWND hPage, PSHEETSTATE pSheet);       /* working record into controls */
    void (*Collect)(HWND hPage, PSHEETSTATE pSheet);    /* controls into working record */
    void (*Command)(HWND hPage, PSHEETSTATE pSheet, WORD id, WORD code);
    void (*Shown)(HWND hPage, PSHEETSTATE pSheet);      /* WM_SHOWWINDOW showing the page */
    void (*Destroyed)(HWND hPage);      /* WM_DESTROY: what the page owns beyond its windows */
} PAGEDESC;

extern const PAGEDESC g_PageDescs[PAGE_COUNT];

/* framework.cpp: a page reports every change of its settings here. */
LRESULT NotifySheetChanged(HWND hPage, PSHEETSTATE pSheet);
HWND CreatePageToolTips(HWND hPage, PSHEETSTATE pSheet, const int *pIds, int count);
INT_PTR PageDialogProc(const PAGEDESC *pDesc, HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

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
void SetReadOnlyText(HWND hPage, int id, LPCWSTR pszText);

/* appinfo.cpp: the program the shell opens an image type with */
#define COMMAND_CHARS 520
void LookupAssociatedApplication(LPCWSTR pszExtension, WCHAR szPath[COMMAND_CHARS]);
void RefreshApplicationInfo(HWND hPage, PSHEETSTATE pSheet);
void ReleaseApplicationIcon(HWND hPage);

/* lengths.cpp: custom paper lengths in whole steps of their unit */
int  ConvertLength(int value, int fromUnit, int toUnit, int resolution);
void ClampCustomLength(const SHEETSTATE *pSheet, INT *pValue);
void FormatLength(int value, int unit, WCHAR *pszText, int cch);
int  ParseLength(LPCWSTR pszText, int unit, BOOL *pOk);

#endif
