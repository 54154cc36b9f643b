/* Debug output only: a debugger or DebugView shows it, no file is written. */
#include "qlrui.h"

void Trace(LPCWSTR pszFormat, ...)
{
    WCHAR szText[1025];     /* wvsprintfW never writes more than 1024 characters */
    va_list args;
    va_start(args, pszFormat);
    wvsprintfW(szText, pszFormat, args);
    va_end(args);
    OutputDebugStringW(szText);
}
