/*
 * Printer-driver UI declarations that mingw-w64's headers lack, written from the
 * platform's documented layouts.  Never hard-code their sizes: the 32-bit byte
 * counts (28 for the document header, 12 for the device header) grow on x64,
 * so callers and this module both use sizeof.
 */
#ifndef QLR_DRVAPI_H
#define QLR_DRVAPI_H

#include <windows.h>
#include <winspool.h>
#include <compstui.h>
#include <winddiui.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct _DOCUMENTPROPERTYHEADER {
    WORD     cbSize;
    WORD     Reserved;
    HANDLE   hPrinter;
    LPWSTR   pszPrinterName;
    PDEVMODEW pdmIn;
    PDEVMODEW pdmOut;
    DWORD    cbOut;
    DWORD    fMode;
} DOCUMENTPROPERTYHEADER, *PDOCUMENTPROPERTYHEADER;

typedef struct _DEVICEPROPERTYHEADER {
    WORD     cbSize;
    WORD     Flags;
    HANDLE   hPrinter;
    LPWSTR   pszPrinterName;
} DEVICEPROPERTYHEADER, *PDEVICEPROPERTYHEADER;

typedef struct _DEVQUERYPRINT_INFO {
    WORD     cbSize;
    WORD     Level;
    HANDLE   hPrinter;
    PDEVMODEW pDevMode;
    LPWSTR   pszErrorStr;
    DWORD    cchErrorStr;
    DWORD    cchNeeded;
} DEVQUERYPRINT_INFO, *PDEVQUERYPRINT_INFO;

/* The library calls a sheet owner as CALLBACK (stdcall on x86); mingw-w64's
 * PFNPROPSHEETUI lacks the calling convention, so the module uses this one. */
typedef LONG (CALLBACK *PFNPROPSHEETUI_CB)(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam);

#define CDM_CONVERT          0x01
#define CDM_CONVERT351       0x02
#define CDM_DRIVER_DEFAULT   0x04

#ifndef DM_ADVANCED
#define DM_ADVANCED          0x10
#endif
#ifndef DM_NOPERMISSION
#define DM_NOPERMISSION      0x20
#endif
#ifndef DM_USER_DEFAULT
#define DM_USER_DEFAULT      0x40
#endif

BOOL  WINAPI DrvConvertDevMode(LPWSTR pPrinterName, PDEVMODEW pdmIn, PDEVMODEW pdmOut,
                               PLONG pcbNeeded, DWORD fMode);
DWORD WINAPI DrvDeviceCapabilities(HANDLE hPrinter, PWSTR pDeviceName, WORD iDevCap,
                                   VOID *pvOutput, PDEVMODEW pDevMode);
LONG  WINAPI DrvDocumentPropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam);
LONG  WINAPI DrvDevicePropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam);

#ifdef __cplusplus
}
#endif

#endif
