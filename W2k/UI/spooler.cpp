/*
 * Variable-size printer information, fetched the way the spooler documents:
 * a sizing call that must fail with ERROR_INSUFFICIENT_BUFFER, then a call
 * into a block of exactly that size.  Anything else means "not available".
 */
#include "qlrui.h"

BYTE *GetPrinterInfo(HANDLE hPrinter, DWORD dwLevel)
{
    DWORD cbNeeded = 0;
    if (!hPrinter || GetPrinterW(hPrinter, dwLevel, NULL, 0, &cbNeeded) ||
        GetLastError() != ERROR_INSUFFICIENT_BUFFER || !cbNeeded)
        return NULL;

    BYTE *pInfo = (BYTE *)LocalAlloc(LPTR, cbNeeded);
    if (!pInfo)
        return NULL;
    DWORD cbSecond = 0;
    if (!GetPrinterW(hPrinter, dwLevel, pInfo, cbNeeded, &cbSecond) || cbSecond != cbNeeded) {
        LocalFree(pInfo);
        return NULL;
    }
    return pInfo;
}
