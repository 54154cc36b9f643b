#include "console.h"
#include <stdarg.h>
#include <stdio.h>

void Print(LPCWSTR pszFormat, ...)
{
    WCHAR szText[2048];
    va_list args;
    va_start(args, pszFormat);
    _vsnwprintf(szText, ARRAYSIZE(szText) - 1, pszFormat, args);
    va_end(args);
    szText[ARRAYSIZE(szText) - 1] = 0;

    /* Cyrillic paper names must reach a Unix terminal or pipe intact, which
     * the console code page would not guarantee. */
    char szUtf8[ARRAYSIZE(szText) * 3];
    int cb = WideCharToMultiByte(CP_UTF8, 0, szText, -1, szUtf8, sizeof(szUtf8), NULL, NULL);
    DWORD cbWritten;
    if (cb > 1)
        WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), szUtf8, cb - 1, &cbWritten, NULL);
}
