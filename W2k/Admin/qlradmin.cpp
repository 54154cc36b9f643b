/*
 * qlradmin: the administrator's tool for Quillora profiles and settings
 * records, built from the driver module's own code.
 *
 *   qlradmin list                          the profiles; "*" marks the current one
 *   qlradmin show <name>                   a profile's settings, field by field
 *   qlradmin export <name> <file.qlr>      a profile to a file
 *   qlradmin import <file.qlr>             a file to a profile (replacing one of that name)
 *   qlradmin deploy <file.qlr>             import, then make it the current profile
 *   qlradmin capture <printer> <name>      a printer's default settings saved as a profile
 *   qlradmin rename <old> <new>
 *   qlradmin delete <name>
 *   qlradmin print printer <printer>       a printer's default settings record
 *   qlradmin print file <file.qlr>         the record inside a profile file
 *   qlradmin print raw <file>              a raw 3484-byte settings record
 *
 * Exit codes: 0 done, 1 refused or failed (with a message on stderr),
 * 2 bad command line.  Nothing is stored when a command is refused.
 */
#include "profiles/profiles.h"
#include "console.h"
#include "recorddump.h"

/* The module's code looks its resources up here; the tool uses none. */
HINSTANCE g_hModule;

static int Fail(LPCWSTR pszFormat, LPCWSTR pszArg)
{
    WCHAR sz[600];
    wsprintfW(sz, pszFormat, pszArg);
    DWORD cb;
    char utf8[1800];
    int n = WideCharToMultiByte(CP_UTF8, 0, sz, -1, utf8, sizeof(utf8), NULL, NULL);
    if (n > 1)
        WriteFile(GetStdHandle(STD_ERROR_HANDLE), utf8, n - 1, &cb, NULL);
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), "\n", 1, &cb, NULL);
    return 1;
}

/* The current profile is marked as the pages' combo selects it: with case. */
static BOOL PrintProfileName(LPCWSTR pszName, void *pContext)
{
    Print(L"%s%s\n", wcscmp(pszName, (LPCWSTR)pContext) == 0 ? L"* " : L"  ", pszName);
    return TRUE;
}

static int List(void)
{
    WCHAR szCurrent[PROFILE_NAME_CHARS];
    ReadCurrentProfileName(szCurrent);
    EnumProfileNames(PrintProfileName, szCurrent);
    return 0;
}

static int Show(LPCWSTR pszName)
{
    QLRDEVMODE dm;
    if (!ReadProfile(pszName, &dm))
        return Fail(L"No readable profile \"%s\".", pszName);
    Print(L"Profile \"%s\":\n", pszName);
    PrintRecord(&dm);
    return 0;
}

static BOOL ReadWhole(LPCWSTR pszPath, void *pBuffer, DWORD cb)
{
    HANDLE h = CreateFileW(pszPath, GENERIC_READ, FILE_SHARE_READ, NULL, OPEN_EXISTING, 0, NULL);
    if (h == INVALID_HANDLE_VALUE)
        return FALSE;
    DWORD cbRead = 0;
    BOOL ok = GetFileSize(h, NULL) == cb && ReadFile(h, pBuffer, cb, &cbRead, NULL) && cbRead == cb;
    CloseHandle(h);
    return ok;
}

#define NO_PRINTER_RECORD L"The printer \"%s\" is missing or keeps no Quillora settings record."

/* A printer's record is this driver's only when its layout is: a record of
 * another driver would decode as nonsense. */
static BOOL IsDriverRecord(const QLRDEVMODE *pdm)
{
    return pdm->dmPublic.dmSize == QLR_PUBLIC_SIZE && pdm->dmPublic.dmDriverExtra == QLR_PRIVATE_SIZE &&
           pdm->dwSignature == QLR_SIGNATURE && pdm->dwPrivVersion == QLR_PRIV_VERSION;
}

/* The printer's default settings record, when it is one of this driver. */
static BOOL PrinterRecord(LPCWSTR pszPrinter, QLRDEVMODE *pdm)
{
    HANDLE hPrinter;
    if (!OpenPrinterW((LPWSTR)pszPrinter, &hPrinter, NULL))
        return FALSE;
    PRINTER_INFO_2W *pInfo = (PRINTER_INFO_2W *)GetPrinterInfo(hPrinter, 2);
    ClosePrinter(hPrinter);
    const QLRDEVMODE *pStored = pInfo ? (const QLRDEVMODE *)pInfo->pDevMode : NULL;
    BOOL ok = pStored && IsDriverRecord(pStored);
    if (ok)
        *pdm = *pStored;
    LocalFree(pInfo);
    return ok;
}

static int PrintPrinter(LPCWSTR pszPrinter)
{
    QLRDEVMODE dm;
    if (!PrinterRecord(pszPrinter, &dm))
        return Fail(NO_PRINTER_RECORD, pszPrinter);
    Print(L"Default settings of \"%s\":\n", pszPrinter);
    PrintRecord(&dm);
    return 0;
}

static int Capture(LPCWSTR pszPrinter, LPCWSTR pszName)
{
    QLRDEVMODE dm;
    if (!PrinterRecord(pszPrinter, &dm))
        return Fail(NO_PRINTER_RECORD, pszPrinter);
    return WriteProfile(pszName, &dm) ? 0 : Fail(L"Could not store the profile \"%s\".", pszName);
}

static int PrintFile(LPCWSTR pszKind, LPCWSTR pszPath)
{
    static PROFILEFILE file;
    BOOL bProfileFile = lstrcmpW(pszKind, L"file") == 0;
    void *pBuffer = bProfileFile ? (void *)&file : (void *)&file.settings;
    DWORD cb = bProfileFile ? sizeof(PROFILEFILE) : sizeof(QLRDEVMODE);
    if (!ReadWhole(pszPath, pBuffer, cb))
        return Fail(L"\"%s\" is not a file of the expected size.", pszPath);
    if (bProfileFile && memcmp(file.magic, PROFILE_FILE_MAGIC, sizeof(file.magic)) != 0)
        return Fail(L"\"%s\" is not a Quillora profile file.", pszPath);
    PrintRecord(&file.settings);
    return 0;
}

static int Import(LPCWSTR pszPath, BOOL bMakeCurrent)
{
    WCHAR szName[PROFILE_NAME_CHARS];
    if (!ImportProfileFile(pszPath, szName))
        return Fail(L"\"%s\" was refused: not a readable Quillora profile file.", pszPath);
    if (bMakeCurrent && !WriteCurrentProfileName(szName))
        return Fail(L"\"%s\" was imported but could not be made the current profile.", szName);
    Print(L"Imported \"%s\"%s\n", szName, bMakeCurrent ? L" as the current profile" : L"");
    return 0;
}

static int Usage(void)
{
    Print(L"usage: qlradmin list | show <name> | export <name> <file> | import <file> | deploy <file>\n"
          L"                | capture <printer> <name> | rename <old> <new> | delete <name>\n"
          L"                | print printer|file|raw <what>\n");
    return 2;
}

int wmain(int argc, WCHAR **argv)
{
    if (argc < 2)
        return Usage();
    LPCWSTR cmd = argv[1];
    if (!lstrcmpW(cmd, L"list") && argc == 2)
        return List();
    if (!lstrcmpW(cmd, L"show") && argc == 3)
        return Show(argv[2]);
    if (!lstrcmpW(cmd, L"export") && argc == 4)
        return ExportProfileFile(argv[2], argv[3]) ? 0 : Fail(L"Could not export \"%s\".", argv[2]);
    if (!lstrcmpW(cmd, L"import") && argc == 3)
        return Import(argv[2], FALSE);
    if (!lstrcmpW(cmd, L"deploy") && argc == 3)
        return Import(argv[2], TRUE);
    if (!lstrcmpW(cmd, L"capture") && argc == 4)
        return Capture(argv[2], argv[3]);
    if (!lstrcmpW(cmd, L"rename") && argc == 4) {
        if (!ProfileExists(argv[2]))
            return Fail(L"No profile \"%s\".", argv[2]);
        return RenameProfile(argv[2], argv[3]) ? 0 : Fail(L"Could not rename to \"%s\": the name is taken.", argv[3]);
    }
    if (!lstrcmpW(cmd, L"delete") && argc == 3)
        return DeleteProfile(argv[2]) ? 0 : Fail(L"No profile \"%s\".", argv[2]);
    if (!lstrcmpW(cmd, L"print") && argc == 4) {
        if (!lstrcmpW(argv[2], L"printer"))
            return PrintPrinter(argv[3]);
        if (!lstrcmpW(argv[2], L"file") || !lstrcmpW(argv[2], L"raw"))
            return PrintFile(argv[2], argv[3]);
    }
    return Usage();
}
