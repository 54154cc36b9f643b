// Stands in for the HTML help control in one test: its export 15 records the
// address it is asked to open instead of opening anything.
#include <windows.h>

static WCHAR g_szLast[1024];
static UINT g_uCommand = 0xFFFF;

extern "C" HWND WINAPI FakeHtmlHelpW(HWND, LPCWSTR pszFile, UINT uCommand, DWORD_PTR)
{
    lstrcpynW(g_szLast, pszFile ? pszFile : L"", 1024);
    g_uCommand = uCommand;
    return NULL;
}

extern "C" LPCWSTR WINAPI LastHelpAddress(UINT *puCommand)
{
    *puCommand = g_uCommand;
    return g_szLast;
}
