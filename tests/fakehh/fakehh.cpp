// Stands in for the HTML help control: its export 15 records the addresses it
// is asked to open instead of opening anything.
#include <windows.h>

static WCHAR g_szLast[1024], g_szLog[4096];
static UINT g_uCommand = 0xFFFF;

extern "C" HWND WINAPI FakeHtmlHelpW(HWND, LPCWSTR pszFile, UINT uCommand, DWORD_PTR)
{
    lstrcpynW(g_szLast, pszFile ? pszFile : L"", 1024);
    g_uCommand = uCommand;
    if (lstrlenW(g_szLog) + lstrlenW(g_szLast) < 4000)
        lstrcatW(lstrcatW(g_szLog, g_szLast), L"|");
    return NULL;
}

extern "C" LPCWSTR WINAPI LastHelpAddress(UINT *puCommand)
{
    *puCommand = g_uCommand;
    return g_szLast;
}

// Every address since the library was loaded, each followed by "|".
extern "C" LPCWSTR WINAPI HelpAddresses(void)
{
    return g_szLog;
}
