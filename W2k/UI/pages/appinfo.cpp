/*
 * Which program opens the result: the user's application, or the one the
 * system associates with the output format's extension; the output page
 * shows its icon, description, file version and copyright.
 */
#include "pages.h"
#include "../res/resource.h"
#include <shellapi.h>

#define CLASS_CHARS   128

static const int g_AppBlock[] = {
    IDC_APP_ICON, IDC_APP_DESC_LABEL, IDC_APP_VERSION_LABEL, IDC_APP_COPYRIGHT_LABEL,
    IDC_APP_DESC, IDC_APP_VERSION, IDC_APP_COPYRIGHT,
};

/* The value is read with the full size cb; pszValue holds one character more,
 * so a value stored without its NUL can still be terminated. */
static BOOL ReadClassesValue(LPCWSTR pszKey, WCHAR *pszValue, DWORD cb)
{
    HKEY hKey;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, pszKey, 0, KEY_READ, &hKey) != ERROR_SUCCESS)
        return FALSE;
    DWORD cbRead = cb;
    LONG rc = RegQueryValueExW(hKey, NULL, NULL, NULL, (BYTE *)pszValue, &cbRead);
    RegCloseKey(hKey);
    if (rc != ERROR_SUCCESS)
        return FALSE;
    pszValue[cbRead / sizeof(WCHAR)] = 0;
    return TRUE;
}

/* The program is the token holding the command line's last dot.  A command
 * line without any dot gives its first token, which names the program when
 * nothing better can be told. */
void LookupAssociatedApplication(LPCWSTR pszExtension, WCHAR szPath[COMMAND_CHARS])
{
    szPath[0] = 0;
    WCHAR szKey[300], szClass[CLASS_CHARS + 1], szCommand[COMMAND_CHARS + 1];
    wsprintfW(szKey, L".%s", pszExtension);
    if (!ReadClassesValue(szKey, szClass, CLASS_CHARS * sizeof(WCHAR)))
        return;
    if (lstrlenW(szClass) + 20 >= (int)ARRAY_COUNT(szKey))
        return;
    wsprintfW(szKey, L"%s\\shell\\open\\command", szClass);
    if (!ReadClassesValue(szKey, szCommand, COMMAND_CHARS * sizeof(WCHAR)))
        return;

    int n = lstrlenW(szCommand);
    if (n && szCommand[n - 1] != L'.')
        while (n > 0 && szCommand[n - 1] != L'.')
            n--;
    while (szCommand[n] && szCommand[n] >= 33)
        n++;
    szCommand[n] = 0;
    if (n && szCommand[n - 1] == L'"')
        szCommand[--n] = 0;
    lstrcpynW(szPath, szCommand[0] == L'"' ? szCommand + 1 : szCommand, COMMAND_CHARS);
}

/* The control's own visibility: while the page itself is hidden (as during
 * its creation) IsWindowVisible would answer FALSE for every control. */
static void ShowBlock(HWND hPage, BOOL bShow)
{
    BOOL bVisible = (GetWindowLongPtrW(GetDlgItem(hPage, IDC_APP_ICON), GWL_STYLE) & WS_VISIBLE) != 0;
    if (!bVisible == !bShow)
        return;
    for (int id : g_AppBlock)
        ShowWindow(GetDlgItem(hPage, id), bShow ? SW_SHOW : SW_HIDE);
}

/* The shell's icons are the page's to destroy; the system's default icon is
 * shared and never is.  A static control destroys nothing it is given. */
static void SetIcon(HWND hPage, HICON hIcon)
{
    HICON hOld = (HICON)SendDlgItemMessageW(hPage, IDC_APP_ICON, STM_SETICON, (WPARAM)hIcon, 0);
    if (hOld && hOld != hIcon && hOld != LoadIconW(NULL, IDI_APPLICATION))
        DestroyIcon(hOld);
}

void ReleaseApplicationIcon(HWND hPage)
{
    SetIcon(hPage, NULL);
}

static void ClearTexts(HWND hPage)
{
    SetReadOnlyText(hPage, IDC_APP_DESC, L"");
    SetReadOnlyText(hPage, IDC_APP_VERSION, L"");
    SetReadOnlyText(hPage, IDC_APP_COPYRIGHT, L"");
}

static void QueryString(void *pBlock, WORD lang, WORD cp, LPCWSTR pszName, WCHAR *pszOut, int cch)
{
    WCHAR szQuery[80];
    wsprintfW(szQuery, L"\\StringFileInfo\\%04x%04x\\%s", lang, cp, pszName);
    LPWSTR pszValue = NULL;
    UINT cchValue = 0;
    pszOut[0] = 0;
    if (VerQueryValueW(pBlock, szQuery, (void **)&pszValue, &cchValue) && pszValue)
        lstrcpynW(pszOut, pszValue, cch);
}

/* Description, version and copyright from the program's version resource;
 * what the resource lacks stays empty. */
static void ShowVersionInfo(HWND hPage, LPCWSTR pszProgram)
{
    DWORD dwHandle = 0;
    DWORD cb = GetFileVersionInfoSizeW(pszProgram, &dwHandle);
    ClearTexts(hPage);
    void *pBlock = cb ? LocalAlloc(LPTR, cb) : NULL;
    if (!pBlock)
        return;
    if (GetFileVersionInfoW(pszProgram, 0, cb, pBlock)) {
        WCHAR szDesc[260] = L"", szCopyright[260] = L"", szVersion[64] = L"";
        WORD *pTrans = NULL;
        UINT cbTrans = 0;
        if (VerQueryValueW(pBlock, L"\\VarFileInfo\\Translation", (void **)&pTrans, &cbTrans) && cbTrans >= 4) {
            QueryString(pBlock, pTrans[0], pTrans[1], L"FileDescription", szDesc, ARRAY_COUNT(szDesc));
            QueryString(pBlock, pTrans[0], pTrans[1], L"LegalCopyright", szCopyright, ARRAY_COUNT(szCopyright));
        }
        VS_FIXEDFILEINFO *pFixed = NULL;
        UINT cbFixed = 0;
        if (VerQueryValueW(pBlock, L"\\", (void **)&pFixed, &cbFixed) && pFixed && cbFixed >= sizeof(*pFixed))
            wsprintfW(szVersion, L"%d.%d.%d.%d", HIWORD(pFixed->dwFileVersionMS), LOWORD(pFixed->dwFileVersionMS),
                      HIWORD(pFixed->dwFileVersionLS), LOWORD(pFixed->dwFileVersionLS));
        SetReadOnlyText(hPage, IDC_APP_DESC, szDesc);
        SetReadOnlyText(hPage, IDC_APP_VERSION, szVersion);
        SetReadOnlyText(hPage, IDC_APP_COPYRIGHT, szCopyright);
    }
    LocalFree(pBlock);
}

void RefreshApplicationInfo(HWND hPage, PSHEETSTATE pSheet)
{
    const QLRDEVMODE *pdm = &pSheet->work;
    ShowBlock(hPage, pdm->bShowResult);
    if (!pdm->bShowResult)
        return;
    WCHAR szProgram[COMMAND_CHARS];
    if (pdm->bUseCustomViewer && pdm->szViewerPath[0])
        lstrcpynW(szProgram, pdm->szViewerPath, COMMAND_CHARS);
    else
        LookupAssociatedApplication(FormatExtension(pdm->iOutputFormat), szProgram);
    if (!szProgram[0]) {
        SetIcon(hPage, LoadIconW(NULL, IDI_APPLICATION));
        ClearTexts(hPage);
        return;
    }
    ShowVersionInfo(hPage, szProgram);
    SHFILEINFOW sfi = {};
    SHGetFileInfoW(szProgram, 0, &sfi, sizeof(sfi), SHGFI_ICON);
    SetIcon(hPage, sfi.hIcon ? sfi.hIcon : LoadIconW(NULL, IDI_APPLICATION));
}
