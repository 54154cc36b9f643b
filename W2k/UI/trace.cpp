/* Debug output only: a debugger or DebugView shows it, no file is written. */
#include "qlrui.h"

void Trace(LPCWSTR pszFormat, ...)
{
    /* OutputDebugStringW looks for a debugger's shared buffer and leaves its
     * own error behind; callers' last errors are part of their contract. */
    DWORD dwError = GetLastError();
    WCHAR szText[1025];     /* wvsprintfW never writes more than 1024 characters */
    va_list args;
    va_start(args, pszFormat);
    wvsprintfW(szText, pszFormat, args);
    va_end(args);
    OutputDebugStringW(szText);
    SetLastError(dwError);
}
