/*
 * Moving settings between device-mode layouts.  A layout is named by its
 * header: dmSize says how far the public part reaches, dmDriverExtra how many
 * private bytes follow it.  Nothing here reads or writes past either.
 */
#include "qlrui.h"

/* A header too short to reach dmFields describes no device mode at all. */
#define MIN_HEADER_SIZE (offsetof(DEVMODEW, dmFields) + sizeof(DWORD))

static WORD SpecVersionOf(WORD dmSize, WORD dmSpecVersion)
{
    switch (dmSize) {
    case QLR_PUBLIC_SIZE_351: return QLR_SPEC_VERSION_351;
    case QLR_PUBLIC_SIZE_400: return QLR_SPEC_VERSION_400;
    case QLR_PUBLIC_SIZE:     return QLR_SPEC_VERSION;
    }
    return dmSize < MIN_HEADER_SIZE ? 0 : dmSpecVersion;
}

WORD GetSpecVersion(const DEVMODEW *pdm)
{
    return pdm ? SpecVersionOf(pdm->dmSize, pdm->dmSpecVersion) : 0;
}

int ConvertRecord(const DEVMODEW *pdmSource, DEVMODEW *pdmTarget)
{
    WORD wTargetVersion = GetSpecVersion(pdmTarget);
    if (!GetSpecVersion(pdmSource) || !wTargetVersion)
        return -1;

    WORD wDriverVersion = pdmTarget->dmDriverVersion;
    WORD wSize = pdmTarget->dmSize;
    WORD wExtra = pdmTarget->dmDriverExtra;

    int cbPublic = MinInt(pdmSource->dmSize, wSize);
    MoveMemory(pdmTarget, pdmSource, cbPublic);
    pdmTarget->dmSpecVersion = wTargetVersion;
    pdmTarget->dmDriverVersion = wDriverVersion;
    pdmTarget->dmSize = wSize;
    pdmTarget->dmDriverExtra = wExtra;

    int cbPrivate = MinInt(pdmSource->dmDriverExtra, wExtra);
    MoveMemory((BYTE *)pdmTarget + wSize, (const BYTE *)pdmSource + pdmSource->dmSize, cbPrivate);

    SetProductName(pdmTarget);
    return cbPublic + cbPrivate;
}

BOOL WriteOutRecord(const QLRDEVMODE *pWork, const DEVMODEW *pdmCallerIn, DEVMODEW *pdmCallerOut)
{
    const DEVMODEW *pdmWork = &pWork->dmPublic;
    if (!pdmCallerIn) {
        CopyMemory(pdmCallerOut, pWork, pdmWork->dmSize + pdmWork->dmDriverExtra);
        return TRUE;
    }

    /* The caller gets the smaller of its own layout and ours, so its buffer,
     * sized for its input, always holds the output. */
    DEVMODEW header = *pdmWork;
    if (pdmCallerIn->dmSize < header.dmSize) {
        header.dmSpecVersion = pdmCallerIn->dmSpecVersion;
        header.dmSize = pdmCallerIn->dmSize;
    }
    if (pdmCallerIn->dmDriverExtra < header.dmDriverExtra) {
        header.dmDriverVersion = pdmCallerIn->dmDriverVersion;
        header.dmDriverExtra = pdmCallerIn->dmDriverExtra;
    }
    /* Checked before the caller's buffer is touched: a refused layout leaves
     * the caller's output as it was. */
    if (!GetSpecVersion(&header))
        return FALSE;

    pdmCallerOut->dmSpecVersion = header.dmSpecVersion;
    pdmCallerOut->dmDriverVersion = header.dmDriverVersion;
    pdmCallerOut->dmSize = header.dmSize;
    pdmCallerOut->dmDriverExtra = header.dmDriverExtra;
    return ConvertRecord(pdmWork, pdmCallerOut) > 0;
}

static BOOL Fail(DWORD dwError)
{
    SetLastError(dwError);
    return FALSE;
}

static BOOL ConvertToCallerLayout(PDEVMODEW pdmIn, PDEVMODEW pdmOut, PLONG pcbNeeded)
{
    if (!pdmOut)
        return Fail(ERROR_INVALID_PARAMETER);
    LONG cbOut = (LONG)pdmOut->dmSize + pdmOut->dmDriverExtra;
    if (*pcbNeeded < cbOut || ConvertRecord(pdmIn, pdmOut) <= 0)
        return Fail(ERROR_INVALID_PARAMETER);
    *pcbNeeded = cbOut;
    return TRUE;
}

static BOOL ConvertTo351(PDEVMODEW pdmIn, PDEVMODEW pdmOut, PLONG pcbNeeded)
{
    if (*pcbNeeded < QLR_RECORD_SIZE_351 || !pdmOut) {
        *pcbNeeded = QLR_RECORD_SIZE_351;
        return Fail(ERROR_INSUFFICIENT_BUFFER);
    }
    pdmOut->dmSpecVersion = QLR_SPEC_VERSION_351;
    pdmOut->dmSize = QLR_PUBLIC_SIZE_351;
    pdmOut->dmDriverVersion = QLR_DRIVER_VERSION_351;
    pdmOut->dmDriverExtra = QLR_PRIVATE_SIZE;
    if (ConvertRecord(pdmIn, pdmOut) <= 0)
        return Fail(ERROR_INVALID_PARAMETER);
    *pcbNeeded = QLR_RECORD_SIZE_351;
    return TRUE;
}

static BOOL WriteDriverDefault(LPWSTR pPrinterName, PDEVMODEW pdmOut, PLONG pcbNeeded)
{
    if (*pcbNeeded < QLR_RECORD_SIZE || !pdmOut) {
        *pcbNeeded = QLR_RECORD_SIZE;
        return Fail(ERROR_INSUFFICIENT_BUFFER);
    }
    *pcbNeeded = QLR_RECORD_SIZE;
    HANDLE hPrinter = NULL;
    if (!OpenPrinterW(pPrinterName, &hPrinter, NULL))
        return Fail(ERROR_INVALID_DATA);
    SetDefDM(pPrinterName, (PQLRDEVMODE)pdmOut);
    ClosePrinter(hPrinter);
    return TRUE;
}

BOOL WINAPI DrvConvertDevMode(LPWSTR pPrinterName, PDEVMODEW pdmIn, PDEVMODEW pdmOut,
                              PLONG pcbNeeded, DWORD fMode)
{
    /* No trace here: the spooler converts on every job and every exchange of
     * settings, and one OutputDebugStringW (an exception raised and passed
     * over) costs a few hundred times the copy itself. */
    if (!pcbNeeded)
        return Fail(ERROR_INVALID_PARAMETER);

    switch (fMode) {
    case CDM_CONVERT:        return ConvertToCallerLayout(pdmIn, pdmOut, pcbNeeded);
    case CDM_CONVERT351:     return ConvertTo351(pdmIn, pdmOut, pcbNeeded);
    case CDM_DRIVER_DEFAULT: return WriteDriverDefault(pPrinterName, pdmOut, pcbNeeded);
    }
    return FALSE;
}
