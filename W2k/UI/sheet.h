/*
 * The document property sheet's state, shared by its three pages, and the
 * hosting of sheets through the common property-sheet library.
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
    HWND hwndFormatPanels[6];       /* one child dialog per output format */
    BOOL bProfiled;                 /* the settings equal the current profile */
    BOOL bTrackChanges;             /* change reports mark the settings modified */
    BOOL bApplied;                  /* nothing changed since the last apply */
    int nApplyCalls;                /* apply notifications, modulo 3 */
} SHEETSTATE, *PSHEETSTATE;

LONG RunPropertySheet(HWND hWndOwner, PFNPROPSHEETUI_CB pfnPropSheetUI, LPARAM lParam, DWORD *pResult);
INT_PTR CALLBACK AboutDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);

/* docprops.cpp */
LONG DirectDocumentProperties(PDOCUMENTPROPERTYHEADER pHeader);

#endif
