/*
 * What an application learns from the printer "Quillora": its papers,
 * resolutions and other capabilities through DeviceCapabilitiesW, and its
 * default settings record through DocumentPropertiesW, decoded field by field.
 * Everything goes through winspool, which loads the driver's UI module.
 */
#include <windows.h>
#include <winspool.h>
#include <stddef.h>
#include "console.h"
#include "record.h"
#include "recorddump.h"

#define PRINTER L"Quillora"
#define PORT    L"FILE:"

static int Caps(WORD cap, void *pOutput)
{
    return DeviceCapabilitiesW(PRINTER, PORT, cap, (LPWSTR)pOutput, NULL);
}

static void PrintPapers(void)
{
    WORD ids[64];
    WCHAR names[64][64];
    POINT sizes[64];
    int n = Caps(DC_PAPERS, NULL);
    if (n <= 0 || n > 64 || Caps(DC_PAPERS, ids) != n || Caps(DC_PAPERNAMES, names) != n ||
        Caps(DC_PAPERSIZE, sizes) != n) {
        Print(L"Papers: not available (%d)\n", n);
        return;
    }
    Print(L"Papers (%d):\n  %-4s %-6s %-16s %s\n", n, L"row", L"id", L"name", L"width x height, mm");
    for (int i = 0; i < n; i++)
        Print(L"  %-4d %-6u \"%s\"%*s %ld.%ld x %ld.%ld\n", i, ids[i], names[i],
              (int)(14 - wcslen(names[i])), L"", sizes[i].x / 10, sizes[i].x % 10,
              sizes[i].y / 10, sizes[i].y % 10);
}

static void PrintResolutionsAndLists(void)
{
    LONG pairs[64][2];
    int n = Caps(DC_ENUMRESOLUTIONS, NULL);
    if (n > 0 && n <= 64 && Caps(DC_ENUMRESOLUTIONS, pairs) == n) {
        Print(L"Resolutions (%d), dpi:", n);
        for (int i = 0; i < n; i++)
            Print(L" %ld", pairs[i][0]);
        Print(L"   (the last is the current one)\n");
    }
    DWORD nup[32];
    n = Caps(DC_NUP, NULL);
    if (n > 0 && n <= 32 && Caps(DC_NUP, nup) == n) {
        Print(L"Pages per sheet:");
        for (int i = 0; i < n; i++)
            Print(L" %lu", nup[i]);
        Print(L"\n");
    }
    WCHAR bin[24];
    if (Caps(DC_BINNAMES, bin) == 1)
        Print(L"Paper source: \"%s\"\n", bin);
    DWORD minExt = Caps(DC_MINEXTENT, NULL), maxExt = Caps(DC_MAXEXTENT, NULL);
    Print(L"Custom paper: %u x %u to %u x %u tenths of a millimetre\n",
          LOWORD(minExt), HIWORD(minExt), LOWORD(maxExt), HIWORD(maxExt));
    Print(L"Orientation: landscape turns by %d degrees; colour device: %d; copies: %d\n",
          Caps(DC_ORIENTATION, NULL), Caps(DC_COLORDEVICE, NULL), Caps(DC_COPIES, NULL));
    Print(L"Settings record: %d public + %d private bytes, DEVMODE version 0x%04X, driver version 0x%04X\n",
          Caps(DC_SIZE, NULL), Caps(DC_EXTRA, NULL), Caps(DC_VERSION, NULL), Caps(DC_DRIVER, NULL));
}

static BOOL PrintDefaultRecord(HANDLE hPrinter)
{
    LONG cb = DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, NULL, NULL, 0);
    if (cb < (LONG)sizeof(QLRDEVMODE)) {
        Print(L"Default settings: the driver reports a record of %ld bytes\n", cb);
        return FALSE;
    }
    BYTE *pRecord = (BYTE *)LocalAlloc(LPTR, cb);
    LONG result = DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, (PDEVMODEW)pRecord, NULL,
                                      DM_OUT_BUFFER);
    if (result == IDOK) {
        Print(L"Default settings record (%ld bytes):\n", cb);
        PrintRecord((const QLRDEVMODE *)pRecord);
    } else {
        Print(L"Default settings: DocumentPropertiesW answered %ld\n", result);
    }
    LocalFree(pRecord);
    return result == IDOK;
}

int wmain(void)
{
    HANDLE hPrinter;
    if (!OpenPrinterW((LPWSTR)PRINTER, &hPrinter, NULL)) {
        Print(L"The printer \"%s\" is not installed (error %lu)\n", PRINTER, GetLastError());
        return 1;
    }
    Print(L"Printer \"%s\" on port %s\n\n", PRINTER, PORT);
    PrintPapers();
    Print(L"\n");
    PrintResolutionsAndLists();
    Print(L"\n");
    BOOL ok = PrintDefaultRecord(hPrinter);
    ClosePrinter(hPrinter);
    return ok ? 0 : 1;
}
