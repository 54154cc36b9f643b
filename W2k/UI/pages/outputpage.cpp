/*
 * The output page: the folder, the file-name mask with its macros, and what
 * opens the result.  So far it answers the macro button; its fields are
 * still loaded and collected by nobody.
 */
#include "pages.h"
#include "../res/resource.h"

void OnOutputPageCommand(HWND hPage, PSHEETSTATE pSheet, WORD id, WORD code)
{
    if (id == IDC_MACRO && code == BN_CLICKED)
        InsertMacro(hPage, pSheet);
}
