/*
 * Installs the printer "Quillora" through the spooler, the way a driver
 * package is installed: the UI module copied into the spooler's driver folder,
 * the driver registered with it as its configuration file, and a printer on
 * the port "FILE:".  Run again, it refreshes the module and keeps the printer.
 *
 *   qlrsetup [path-of-QLRDRVUI.DLL]     (default: beside this program)
 */
#include <windows.h>
#include <winspool.h>
#include "console.h"

#define PRINTER_NAME  L"Quillora"
#define MODULE_NAME   L"QLRDRVUI.DLL"

static BOOL ModuleBesideProgram(WCHAR *pszPath, DWORD cch)
{
    DWORD n = GetModuleFileNameW(NULL, pszPath, cch);
    if (!n || n >= cch)
        return FALSE;
    WCHAR *pSlash = wcsrchr(pszPath, L'\\');
    if (!pSlash || (DWORD)(pSlash - pszPath) + 1 + ARRAYSIZE(MODULE_NAME) > cch)
        return FALSE;
    lstrcpyW(pSlash + 1, MODULE_NAME);
    return TRUE;
}

static BOOL CopyModuleToDriverFolder(LPCWSTR pszModule)
{
    WCHAR szFolder[MAX_PATH], szTarget[MAX_PATH + 32];
    DWORD cb = sizeof(szFolder);
    if (!GetPrinterDriverDirectoryW(NULL, NULL, 1, (LPBYTE)szFolder, cb, &cb)) {
        Print(L"qlrsetup: no printer driver folder (error %lu)\n", GetLastError());
        return FALSE;
    }
    /* Version-3 drivers live in the "3" subfolder; the spooler does not copy
     * the files itself here. */
    wsprintfW(szTarget, L"%s\\3", szFolder);
    CreateDirectoryW(szTarget, NULL);
    lstrcatW(szTarget, L"\\" MODULE_NAME);
    if (!CopyFileW(pszModule, szTarget, FALSE)) {
        Print(L"qlrsetup: cannot copy %s to %s (error %lu)\n", pszModule, szTarget, GetLastError());
        return FALSE;
    }
    Print(L"qlrsetup: module copied to %s\n", szTarget);
    return TRUE;
}

static BOOL AddDriver(void)
{
    DRIVER_INFO_3W di = {};
    di.cVersion = 3;
    di.pName = (LPWSTR)PRINTER_NAME;
    di.pDriverPath = (LPWSTR)MODULE_NAME;
    di.pDataFile = (LPWSTR)MODULE_NAME;
    di.pConfigFile = (LPWSTR)MODULE_NAME;
    if (!AddPrinterDriverExW(NULL, 3, (LPBYTE)&di, APD_COPY_NEW_FILES) &&
        GetLastError() != ERROR_PRINTER_DRIVER_ALREADY_INSTALLED) {
        Print(L"qlrsetup: AddPrinterDriverExW failed (error %lu)\n", GetLastError());
        return FALSE;
    }
    return TRUE;
}

static BOOL AddQuilloraPrinter(void)
{
    PRINTER_INFO_2W pi = {};
    pi.pPrinterName = (LPWSTR)PRINTER_NAME;
    pi.pPortName = (LPWSTR)L"FILE:";
    pi.pDriverName = (LPWSTR)PRINTER_NAME;
    pi.pPrintProcessor = (LPWSTR)L"WinPrint";
    pi.pDatatype = (LPWSTR)L"RAW";
    HANDLE hPrinter = AddPrinterW(NULL, 2, (LPBYTE)&pi);
    if (hPrinter) {
        ClosePrinter(hPrinter);
        Print(L"qlrsetup: printer \"%s\" added\n", PRINTER_NAME);
        return TRUE;
    }
    if (GetLastError() == ERROR_PRINTER_ALREADY_EXISTS) {
        Print(L"qlrsetup: printer \"%s\" already installed\n", PRINTER_NAME);
        return TRUE;
    }
    Print(L"qlrsetup: AddPrinterW failed (error %lu)\n", GetLastError());
    return FALSE;
}

int wmain(int argc, WCHAR **argv)
{
    WCHAR szModule[MAX_PATH];
    if (argc > 1)
        lstrcpynW(szModule, argv[1], ARRAYSIZE(szModule));
    else if (!ModuleBesideProgram(szModule, ARRAYSIZE(szModule)))
        return 2;
    return CopyModuleToDriverFolder(szModule) && AddDriver() && AddQuilloraPrinter() ? 0 : 1;
}
