/*
 * The six format panels: child dialogs of the output-format page, one per
 * image format, each keeping its own format's options in the record.
 */
#ifndef QLR_PANELS_H
#define QLR_PANELS_H

#include "pages.h"

typedef struct _PANELDESC {
    DLGPROC pfnProc;
    void (*Show)(HWND hPanel, PSHEETSTATE pSheet);      /* the full Show */
    void (*Read)(HWND hPanel, PSHEETSTATE pSheet);
} PANELDESC;

extern const PANELDESC g_Panels[FORMAT_COUNT];

#endif
