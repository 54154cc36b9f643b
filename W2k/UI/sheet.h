/*
 * The document property sheet: its state, shared by its three pages and the
 * profile dialogs they open, the hosting of sheets through the common
 * property-sheet library, and the help that every page and dialog opens.
 */
#ifndef QLR_SHEET_H
#define QLR_SHEET_H

#include "qlrui.h"
#include <prsht.h>

enum { PAGE_SETUP, PAGE_FORMAT, PAGE_OUTPUT, PAGE_COUNT };

typedef struct _SHEETSTATE {
    HANDLE hPrinter;
    QLRDEVMODE work;                /* all pages edit it */
    PROPSHEETUI_INFO psui;          /* the library's callback and handle */
    PDEVMODEW pdmIn;
    PDEVMODEW pdmOut;               /* null unless the caller may receive output */
    HWND hwndPages[PAGE_COUNT];     /* each page's window once it exists */
    HANDLE hPageResults[PAGE_COUNT];/* the library's page handles, for SET_RESULT */
    HWND hwndToolTips[PAGE_COUNT];
    HWND hwndFormatPanels[FORMAT_COUNT]; /* one child dialog per output format */
    BOOL bProfiled;                 /* the settings equal the current profile */
    BOOL bTrackChanges;             /* change reports mark the settings modified */
    BOOL bApplied;                  /* nothing changed since the last apply */
    int nApplyCalls;                /* apply notifications, one per page, modulo PAGE_COUNT */
} SHEETSTATE, *PSHEETSTATE;

LONG RunPropertySheet(HWND hWndOwner, PFNPROPSHEETUI_CB pfnPropSheetUI, LPARAM lParam, DWORD *pResult);
INT_PTR CALLBACK AboutDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

/* The pages the host adds, in sheet order (pages/pagelist.cpp). */
INT_PTR CALLBACK PageSetupDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK FormatPageDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK OutputPageDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

/* help.cpp: the help file beside this module, at a page's or dialog's topic. */
enum HelpTopic { HELP_PAGE_SETUP, HELP_FORMAT, HELP_OUTPUT, HELP_PROFILE_ADD, HELP_PROFILE_EDIT };
BOOL ShowHelpTopic(HWND hwnd, int nTopic);

/* docprops.cpp */
LONG DirectDocumentProperties(PDOCUMENTPROPERTYHEADER pHeader);

#endif
