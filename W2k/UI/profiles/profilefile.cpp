/*
 * Profile files: one stored profile written out whole, so that it can move
 * between machines, and read back only when every check passes.
 */
#include "profiles.h"

BOOL ExportProfileFile(LPCWSTR pszName, LPCWSTR pszPath)
{
    PROFILEFILE *pFile = (PROFILEFILE *)LocalAlloc(LPTR, sizeof(PROFILEFILE));
    if (!pFile)
        return FALSE;
    BOOL ok = ReadProfile(pszName, &pFile->settings);
    if (ok) {
        CopyMemory(pFile->magic, PROFILE_FILE_MAGIC, 4);
        pFile->dwVersion = PROFILE_FILE_VERSION;
        CopyBounded(pFile->szName, pszName, PROFILE_NAME_CHARS);   /* zeros after the name */
        HANDLE h = CreateFileW(pszPath, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, NULL);
        DWORD cbWritten = 0;
        ok = h != INVALID_HANDLE_VALUE && WriteFile(h, pFile, sizeof(PROFILEFILE), &cbWritten, NULL);
        if (h != INVALID_HANDLE_VALUE)
            CloseHandle(h);
    }
    LocalFree(pFile);
    return ok;
}

/* A name the store can use as one subkey: not empty, terminated inside its
 * field, no backslash (which would name a nested key). */
static BOOL IsUsableName(const WCHAR *pszName)
{
    int i = 0;
    for (; i < PROFILE_NAME_CHARS && pszName[i]; i++)
        if (pszName[i] == L'\\')
            return FALSE;
    return i > 0 && i < PROFILE_NAME_CHARS;
}

static BOOL ReadWholeFile(LPCWSTR pszPath, PROFILEFILE *pFile)
{
    HANDLE h = CreateFileW(pszPath, GENERIC_READ, 0, NULL, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, NULL);
    if (h == INVALID_HANDLE_VALUE)
        return FALSE;
    LARGE_INTEGER size;
    DWORD cbRead = 0;
    BOOL ok = GetFileSizeEx(h, &size) && size.QuadPart == sizeof(PROFILEFILE) &&
              ReadFile(h, pFile, sizeof(PROFILEFILE), &cbRead, NULL) && cbRead == sizeof(PROFILEFILE);
    CloseHandle(h);
    return ok;
}

/* Everything is checked before anything is stored: a refused file leaves the
 * registry as it was.  The record inside is stored as it came, whatever
 * driver wrote it, as the store keeps it. */
BOOL ImportProfileFile(LPCWSTR pszPath, WCHAR szName[PROFILE_NAME_CHARS])
{
    PROFILEFILE *pFile = (PROFILEFILE *)LocalAlloc(LPTR, sizeof(PROFILEFILE));
    if (!pFile)
        return FALSE;
    BOOL ok = ReadWholeFile(pszPath, pFile) && memcmp(pFile->magic, PROFILE_FILE_MAGIC, 4) == 0 &&
              pFile->dwVersion == PROFILE_FILE_VERSION && IsUsableName(pFile->szName);
    if (ok) {
        CopyBounded(szName, pFile->szName, PROFILE_NAME_CHARS);
        ok = WriteProfile(szName, &pFile->settings);
    }
    LocalFree(pFile);
    return ok;
}
