// Stands in for the HTML help control: its export 15 records the addresses it is asked to show, showing nothing.
#include <windows.h>

// Every address since loading, each followed by "|", or by "!|" when the command was not HH_DISPLAY_TOPIC.
static WCHAR g_szLog[4096];

extern "C" HWND WINAPI FakeHtmlHelpW(HWND, LPCWSTR pszFile, UINT uCommand, DWORD_PTR)
{
    if (lstrlenW(g_szLog) + lstrlenW(pszFile ? pszFile : L"") < 4000)
        lstrcatW(lstrcatW(lstrcatW(g_szLog, pszFile ? pszFile : L""), uCommand ? L"!" : L""), L"|");
    return NULL;
}

extern "C" LPCWSTR WINAPI HelpAddresses(void) { return g_szLog; }
