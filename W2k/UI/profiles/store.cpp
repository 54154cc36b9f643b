/*
 * The profile store.  Under HKEY_CURRENT_USER\Software\Moravel\Quillora\Profile
 * the unnamed value names the current profile, and each subkey is one profile
 * whose unnamed value holds the whole settings record.
 */
#include "profiles.h"

/* The subkey path of a profile; FALSE when the name cannot be a profile. */
static BOOL ProfilePath(LPCWSTR pszName, WCHAR *pszPath, int cchPath)
{
    int cchName = lstrlenW(pszName);
    if (cchName < 1 || cchName >= PROFILE_NAME_CHARS ||
        (int)ARRAY_COUNT(PROFILE_KEY) + 1 + cchName > cchPath)
        return FALSE;
    wsprintfW(pszPath, L"%s\\%s", PROFILE_KEY, pszName);
    return TRUE;
}

#define PROFILE_PATH_CHARS (ARRAY_COUNT(PROFILE_KEY) + 1 + PROFILE_NAME_CHARS)

void ReadCurrentProfileName(WCHAR szName[PROFILE_NAME_CHARS])
{
    szName[0] = 0;
    HKEY hKey;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, PROFILE_KEY, 0, KEY_READ, &hKey) != ERROR_SUCCESS)
        return;
    /* The value is stored without its NUL, and the registry may want room to
     * add one: read into a buffer one character larger, then terminate. */
    WCHAR szValue[PROFILE_NAME_CHARS + 1];
    DWORD cb = PROFILE_NAME_CHARS * sizeof(WCHAR);
    DWORD dwType;
    if (RegQueryValueExW(hKey, NULL, NULL, &dwType, (BYTE *)szValue, &cb) == ERROR_SUCCESS) {
        szValue[cb / sizeof(WCHAR)] = 0;
        CopyBounded(szName, szValue, PROFILE_NAME_CHARS);
    }
    RegCloseKey(hKey);
}

typedef struct _SPELLING {
    LPCWSTR pszName;
    WCHAR *pszStored;
} SPELLING;

static BOOL TakeSpellingOfKey(LPCWSTR pszKey, void *pContext)
{
    SPELLING *pSpelling = (SPELLING *)pContext;
    if (!EqualNoCase(pszKey, pSpelling->pszName))
        return TRUE;
    lstrcpyW(pSpelling->pszStored, pszKey);
    return FALSE;
}

/* The registry finds a key in any letter case but keeps the case it was
 * created with, while the pages match the current name with case.  So the
 * current name is stored as the profile's own key spells it: a profile saved
 * or deployed as "case a" over "Case A" stays the one the pages select, and
 * OK keeps the user's settings instead of falling back to the defaults. */
static void StoredSpelling(LPCWSTR pszName, WCHAR szStored[PROFILE_NAME_CHARS])
{
    CopyBounded(szStored, pszName, PROFILE_NAME_CHARS);
    SPELLING spelling = { pszName, szStored };
    if (pszName[0])
        EnumProfileNames(TakeSpellingOfKey, &spelling);
}

BOOL WriteCurrentProfileName(LPCWSTR pszName)
{
    WCHAR szStored[PROFILE_NAME_CHARS];
    StoredSpelling(pszName, szStored);
    HKEY hKey;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, PROFILE_KEY, 0, NULL, 0, KEY_WRITE, NULL, &hKey, NULL) != ERROR_SUCCESS)
        return FALSE;
    LONG rc = RegSetValueExW(hKey, NULL, 0, REG_SZ, (const BYTE *)szStored,
                             lstrlenW(szStored) * sizeof(WCHAR));
    RegCloseKey(hKey);
    return rc == ERROR_SUCCESS;
}

BOOL ProfileExists(LPCWSTR pszName)
{
    WCHAR szPath[PROFILE_PATH_CHARS];
    HKEY hKey;
    if (!ProfilePath(pszName, szPath, ARRAY_COUNT(szPath)) ||
        RegOpenKeyExW(HKEY_CURRENT_USER, szPath, 0, KEY_READ, &hKey) != ERROR_SUCCESS)
        return FALSE;
    RegCloseKey(hKey);
    return TRUE;
}

BOOL ReadProfile(LPCWSTR pszName, PQLRDEVMODE pdm)
{
    WCHAR szPath[PROFILE_PATH_CHARS];
    HKEY hKey;
    if (!ProfilePath(pszName, szPath, ARRAY_COUNT(szPath)) ||
        RegOpenKeyExW(HKEY_CURRENT_USER, szPath, 0, KEY_READ, &hKey) != ERROR_SUCCESS)
        return FALSE;
    DWORD cb = sizeof(QLRDEVMODE), dwType = REG_NONE;
    LONG rc = RegQueryValueExW(hKey, NULL, NULL, &dwType, (BYTE *)pdm, &cb);
    RegCloseKey(hKey);
    pdm->dmPublic.dmDriverVersion = QLR_DRIVER_VERSION;
    /* Only a whole binary record is a profile: a shorter value would leave the
     * rest of the record as the caller had it.  What the record holds is the
     * pages' to repair, so a profile of an older driver still loads. */
    return rc == ERROR_SUCCESS && dwType == REG_BINARY && cb == sizeof(QLRDEVMODE);
}

BOOL WriteProfile(LPCWSTR pszName, PQLRDEVMODE pdm)
{
    pdm->m_bProfiled = TRUE;
    if (lstrlenW(pszName) < 1 || lstrlenW(pszName) >= PROFILE_NAME_CHARS)
        return FALSE;
    HKEY hProfiles, hProfile;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, PROFILE_KEY, 0, NULL, 0, KEY_WRITE, NULL, &hProfiles, NULL) != ERROR_SUCCESS)
        return FALSE;
    LONG rc = RegCreateKeyExW(hProfiles, pszName, 0, NULL, 0, KEY_WRITE, NULL, &hProfile, NULL);
    if (rc == ERROR_SUCCESS) {
        rc = RegSetValueExW(hProfile, NULL, 0, REG_BINARY, (const BYTE *)pdm, sizeof(QLRDEVMODE));
        RegCloseKey(hProfile);
    }
    RegCloseKey(hProfiles);
    return rc == ERROR_SUCCESS;
}

/* By index from 0, stopping at the first index the registry refuses: a key
 * whose name is too long to be a profile's ends the walk. */
WORD EnumProfileNames(PROFILENAMEPROC pfnProc, void *pContext)
{
    HKEY hKey;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, PROFILE_KEY, 0, KEY_READ, &hKey) != ERROR_SUCCESS)
        return 0;
    WORD nNames = 0;
    WCHAR szName[PROFILE_NAME_CHARS];
    for (DWORD i = 0;; i++) {
        DWORD cch = PROFILE_NAME_CHARS;
        if (RegEnumKeyExW(hKey, i, szName, &cch, NULL, NULL, NULL, NULL) != ERROR_SUCCESS)
            break;
        nNames++;
        if (!pfnProc(szName, pContext))
            break;
    }
    RegCloseKey(hKey);
    return nNames;
}

static BOOL IsCurrentProfile(LPCWSTR pszName)
{
    WCHAR szCurrent[PROFILE_NAME_CHARS];
    ReadCurrentProfileName(szCurrent);
    return szCurrent[0] && EqualNoCase(szCurrent, pszName);
}

BOOL DeleteProfile(LPCWSTR pszName)
{
    WCHAR szPath[PROFILE_PATH_CHARS];
    if (!ProfilePath(pszName, szPath, ARRAY_COUNT(szPath)) ||
        RegDeleteKeyW(HKEY_CURRENT_USER, szPath) != ERROR_SUCCESS)
        return FALSE;
    return IsCurrentProfile(pszName) ? WriteCurrentProfileName(L"") : TRUE;
}

BOOL RenameProfile(LPCWSTR pszOldName, LPCWSTR pszNewName)
{
    if (EqualNoCase(pszOldName, pszNewName))
        return TRUE;
    BOOL bWasCurrent = IsCurrentProfile(pszOldName);
    if (ProfileExists(pszNewName))
        return FALSE;
    /* A failed read may leave the record partly written: never the caller's. */
    QLRDEVMODE *pTemp = (QLRDEVMODE *)LocalAlloc(LPTR, sizeof(QLRDEVMODE));
    BOOL bCopied = pTemp && ReadProfile(pszOldName, pTemp) && WriteProfile(pszNewName, pTemp);
    LocalFree(pTemp);
    if (!bCopied)
        return FALSE;
    if (bWasCurrent)
        WriteCurrentProfileName(pszNewName);
    DeleteProfile(pszOldName);
    return TRUE;
}
