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

BOOL WriteCurrentProfileName(LPCWSTR pszName)
{
    HKEY hKey;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, PROFILE_KEY, 0, NULL, 0, KEY_WRITE, NULL, &hKey, NULL) != ERROR_SUCCESS)
        return FALSE;
    LONG rc = RegSetValueExW(hKey, NULL, 0, REG_SZ, (const BYTE *)pszName,
                             lstrlenW(pszName) * sizeof(WCHAR));
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

/* Only a whole record of this driver's layout is a profile.  A value of
 * another size or type, or a record of another layout, was not written by
 * this store and would load as nonsense settings, so it reads as missing. */
BOOL IsProfileRecord(const QLRDEVMODE *pdm)
{
    return pdm->dmPublic.dmSize == QLR_PUBLIC_SIZE && pdm->dmPublic.dmDriverExtra == QLR_PRIVATE_SIZE &&
           pdm->dwSignature == QLR_SIGNATURE && pdm->dwPrivVersion == QLR_PRIV_VERSION;
}

static BOOL IsStoredRecord(DWORD dwType, DWORD cb, const QLRDEVMODE *pdm)
{
    return dwType == REG_BINARY && cb == sizeof(QLRDEVMODE) && IsProfileRecord(pdm);
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
    return rc == ERROR_SUCCESS && IsStoredRecord(dwType, cb, pdm);
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

static BOOL IsCurrentProfile(LPCWSTR pszName)
{
    WCHAR szCurrent[PROFILE_NAME_CHARS];
    ReadCurrentProfileName(szCurrent);
    return szCurrent[0] && lstrcmpiW(szCurrent, pszName) == 0;
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
    if (lstrcmpiW(pszOldName, pszNewName) == 0)
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
