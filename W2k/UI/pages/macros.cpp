/*
 * File-name mask macros: "&[" name "]" in the mask, expanded for the output
 * page's example name, and inserted from the macro menu.  The rendering
 * module expands the same syntax when it names the files it writes.
 */
#include "pages.h"
#include "../res/resource.h"


enum MacroValue { M_TEXT, M_DATE, M_YEAR, M_MONTH, M_DAY, M_TIME, M_HOUR, M_MINUTE, M_SECOND, M_TYPE };

/* In the order they are tried; the menu's item IDM_MACRO_FIRST + k inserts row k. */
static const struct { LPCWSTR pszName; MacroValue value; LPCWSTR pszText; } g_Macros[] = {
    { L"DocName", M_TEXT, L"example_document_name" },
    { L"Page",    M_TEXT, L"01" },
    { L"Date",    M_DATE, NULL },
    { L"Year",    M_YEAR, NULL },
    { L"Month",   M_MONTH, NULL },
    { L"Day",     M_DAY, NULL },
    { L"Time",    M_TIME, NULL },
    { L"Hour",    M_HOUR, NULL },
    { L"Minute",  M_MINUTE, NULL },
    { L"Second",  M_SECOND, NULL },
    { L"Type",    M_TYPE, NULL },
};
static_assert(ARRAY_COUNT(g_Macros) == IDM_MACRO_LAST - IDM_MACRO_FIRST + 1, "one menu item per macro");

static const LPCWSTR g_Extensions[FORMAT_COUNT] = { L"bmp", L"gif", L"jpg", L"tif", L"pcx", L"dcx" };

LPCWSTR FormatExtension(int iOutputFormat)
{
    return g_Extensions[ClampInt(iOutputFormat, 0, (int)ARRAY_COUNT(g_Extensions) - 1)];
}

void ExpandMacro(const QLRDEVMODE *pdm, LPCWSTR pszName, WCHAR szOut[MACRO_TEXT_CHARS])
{
    szOut[0] = 0;
    for (const auto &macro : g_Macros) {
        if (!EqualNoCase(macro.pszName, pszName))
            continue;
        SYSTEMTIME t;
        GetLocalTime(&t);
        switch (macro.value) {
        case M_TEXT:   lstrcpyW(szOut, macro.pszText); break;
        case M_DATE:   wsprintfW(szOut, L"%02d-%02d-%04d", t.wMonth, t.wDay, t.wYear); break;
        case M_YEAR:   wsprintfW(szOut, L"%04d", t.wYear); break;
        case M_MONTH:  wsprintfW(szOut, L"%02d", t.wMonth); break;
        case M_DAY:    wsprintfW(szOut, L"%02d", t.wDay); break;
        case M_TIME:   wsprintfW(szOut, L"%02d-%02d-%02d", t.wHour, t.wMinute, t.wSecond); break;
        case M_HOUR:   wsprintfW(szOut, L"%02d", t.wHour); break;
        case M_MINUTE: wsprintfW(szOut, L"%02d", t.wMinute); break;
        case M_SECOND: wsprintfW(szOut, L"%02d", t.wSecond); break;
        case M_TYPE:   lstrcpyW(szOut, FormatExtension(pdm->iOutputFormat)); break;
        }
        return;
    }
}

/* Appends within the example's fixed size: the rest of a long result is cut,
 * never written past the buffer. */
typedef struct { WCHAR *pszOut; int cch; } OUTPUT;

static void Append(OUTPUT *pOut, LPCWSTR pszText, int cch)
{
    int have = lstrlenW(pOut->pszOut);
    int room = EXAMPLE_CHARS - 1 - have;
    if (cch > room)
        cch = room;
    if (cch <= 0)
        return;
    CopyMemory(pOut->pszOut + have, pszText, cch * sizeof(WCHAR));
    pOut->pszOut[have + cch] = 0;
}

/* The next "&[" at or after `from`; a "&" followed by anything else is text. */
static const WCHAR *FindOpening(const WCHAR *from)
{
    for (; *from; from++)
        if (from[0] == L'&' && from[1] == L'[')
            return from;
    return NULL;
}

void ExpandFileNameMask(HWND hPage, PSHEETSTATE pSheet, LPCWSTR pszMask, WCHAR szOut[EXAMPLE_CHARS])
{
    (void)hPage;
    OUTPUT out = { szOut, EXAMPLE_CHARS };
    szOut[0] = 0;               /* Append measures what is already there */
    const WCHAR *s = pszMask;
    const WCHAR *p = FindOpening(s);
    while (p) {
        Append(&out, s, (int)(p - s));
        const WCHAR *close = p[2] ? wcschr(p + 2, L']') : NULL;
        if (!close)
            break;                      /* an unclosed opening stays as text */
        int cchName = (int)(close - (p + 2));
        if (cchName > 0) {
            WCHAR szName[QLR_PATH_CHARS];
            lstrcpynW(szName, p + 2, cchName + 1 < (int)ARRAY_COUNT(szName) ? cchName + 1 : (int)ARRAY_COUNT(szName));
            WCHAR szValue[MACRO_TEXT_CHARS];
            /* A name longer than any mask can hold is no macro name. */
            ExpandMacro(&pSheet->work, cchName < (int)ARRAY_COUNT(szName) ? szName : L"", szValue);
            Append(&out, szValue, lstrlenW(szValue));
        }
        s = close + 1;
        p = FindOpening(s);
    }
    Append(&out, p ? p : s, lstrlenW(p ? p : s));
}

void InsertMacro(HWND hPage, PSHEETSTATE pSheet)
{
    HMENU hMenu = LoadMenuW(g_hModule, MAKEINTRESOURCEW(IDM_MACROS));
    if (!hMenu)
        return;
    RECT rc;
    GetWindowRect(GetDlgItem(hPage, IDC_MACRO), &rc);
    int cmd = TrackPopupMenu(GetSubMenu(hMenu, 0), TPM_RETURNCMD | TPM_LEFTALIGN, rc.left, rc.bottom + 1, 0,
                             hPage, NULL);
    if (cmd >= IDM_MACRO_FIRST && cmd <= IDM_MACRO_LAST) {
        WCHAR szMacro[32];
        wsprintfW(szMacro, L"&[%s]", g_Macros[cmd - IDM_MACRO_FIRST].pszName);
        SendDlgItemMessageW(hPage, IDC_FILE_MASK, EM_REPLACESEL, TRUE, (LPARAM)szMacro);
        SetFocus(GetDlgItem(hPage, IDC_FILE_MASK));
        NotifySheetChanged(hPage, pSheet);
    }
    DestroyMenu(hMenu);
}
