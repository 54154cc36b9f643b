/*
 * Help: the product's help file beside this module, opened at a page's or a
 * profile dialog's topic through the HTML help control's wide entry point (export 15).
 */
#include "sheet.h"

typedef HWND (WINAPI *PFN_HTMLHELPW)(HWND, LPCWSTR, UINT, DWORD_PTR);

#define HH_DISPLAY_TOPIC  0
#define HTMLHELPW_ORDINAL 15
#define HHCTRL_CLSID_KEY  "CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32"

/* Found on first use and kept for the module's life; a failure is final. */
static HMODULE g_hHelpModule;
static PFN_HTMLHELPW g_pfnHtmlHelp;
static BOOL g_bHelpFailed;

static const LPCWSTR g_HelpTopics[] = {
    L"/set_paper.htm", L"/set_advanced.htm", L"/set_finish.htm", L"/prof_add.htm", L"/prof_edit.htm",
};

static HMODULE LoadHelpControl(void)
{
    char szPath[MAX_PATH + 1] = "";
    HKEY hKey;
    if (RegOpenKeyExA(HKEY_CLASSES_ROOT, HHCTRL_CLSID_KEY, 0, KEY_READ, &hKey) == ERROR_SUCCESS) {
        DWORD cb = MAX_PATH;
        if (RegQueryValueExA(hKey, NULL, NULL, NULL, (BYTE *)szPath, &cb) != ERROR_SUCCESS)
            szPath[0] = 0;
        szPath[MAX_PATH] = 0;
        RegCloseKey(hKey);
    }
    HMODULE hModule = szPath[0] ? LoadLibraryA(szPath) : NULL;
    return hModule ? hModule : LoadLibraryA("hhctrl.ocx");
}

static PFN_HTMLHELPW HelpEntryPoint(void)
{
    if (g_bHelpFailed)
        return NULL;
    if (!g_hHelpModule && !(g_hHelpModule = LoadHelpControl())) {
        g_bHelpFailed = TRUE;
        return NULL;
    }
    if (!g_pfnHtmlHelp)
        g_pfnHtmlHelp = (PFN_HTMLHELPW)(void *)GetProcAddress(g_hHelpModule, MAKEINTRESOURCEA(HTMLHELPW_ORDINAL));
    if (!g_pfnHtmlHelp)
        g_bHelpFailed = TRUE;
    return g_pfnHtmlHelp;
}

BOOL ShowHelpTopic(HWND hwnd, int nTopic)
{
    WCHAR szFolder[MAX_PATH];
    DWORD cch = GetModuleFileNameW(g_hModule, szFolder, MAX_PATH);
    if (cch >= MAX_PATH)
        cch = 0;
    szFolder[cch] = 0;
    /* A path without a backslash names no folder: the help file is then
     * looked for in the current one. */
    WCHAR *pSlash = wcsrchr(szFolder, L'\\');
    if (pSlash)
        *pSlash = 0;
    else
        lstrcpyW(szFolder, L".");

    LPCWSTR pszTopic = nTopic >= 0 && nTopic < (int)ARRAY_COUNT(g_HelpTopics) ? g_HelpTopics[nTopic] : L"";
    WCHAR szAddress[MAX_PATH + 64];
    wsprintfW(szAddress, L"%s\\qlrhlp.chm::%s>main", szFolder, pszTopic);

    PFN_HTMLHELPW pfn = HelpEntryPoint();
    return pfn ? pfn(hwnd, szAddress, HH_DISPLAY_TOPIC, 0) != NULL : FALSE;
}
