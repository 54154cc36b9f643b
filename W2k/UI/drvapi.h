/*
 * Printer-driver UI declarations that the SDK at hand lacks, written from the
 * platform's documented layouts: mingw-w64 has compstui.h and winddiui.h but
 * not the driver-UI structures and prototypes; Wine's SDK has neither header.
 * Never hard-code their sizes: the 32-bit byte counts (28 for the document
 * header, 12 for the device header) grow on x64, so callers and this module
 * both use sizeof.
 */
#ifndef QLR_DRVAPI_H
#define QLR_DRVAPI_H

#include <windows.h>
#include <winspool.h>

#if __has_include(<compstui.h>)
#include <compstui.h>
#endif
#if __has_include(<winddiui.h>)
#include <winddiui.h>
#endif

#ifdef __cplusplus
extern "C" {
#endif

#if !__has_include(<compstui.h>)
/* The part of the common property-sheet library's interface the module uses. */
typedef LONG_PTR (CALLBACK *PFNCOMPROPSHEET)(HANDLE hComPropSheet, UINT Function,
                                             LPARAM lParam1, LPARAM lParam2);

typedef struct _PROPSHEETUI_INFO {
    WORD     cbSize;
    WORD     Version;
    WORD     Flags;
    WORD     Reason;
    HANDLE   hComPropSheet;
    PFNCOMPROPSHEET pfnComPropSheet;
    LPARAM   lParamInit;
    ULONG_PTR UserData;
    ULONG_PTR Result;
} PROPSHEETUI_INFO, *PPROPSHEETUI_INFO;

typedef struct _PROPSHEETUI_INFO_HEADER {
    WORD     cbSize;
    WORD     Flags;
    LPWSTR   pTitle;
    HWND     hWndParent;
    HINSTANCE hInst;
    union {
        HICON     hIcon;
        ULONG_PTR IconID;
    };
} PROPSHEETUI_INFO_HEADER, *PPROPSHEETUI_INFO_HEADER;

typedef struct _SETRESULT_INFO {
    WORD     cbSize;
    WORD     wReserved;
    HANDLE   hSetResult;
    LRESULT  Result;
} SETRESULT_INFO, *PSETRESULT_INFO;

#define CPSFUNC_ADD_PROPSHEETPAGEW          1
#define CPSFUNC_SET_RESULT                  9

#define PROPSHEETUI_REASON_INIT             0
#define PROPSHEETUI_REASON_GET_INFO_HEADER  1
#define PROPSHEETUI_REASON_DESTROY          2
#define PROPSHEETUI_REASON_SET_RESULT       3

#define PSUIHDRF_NOAPPLYNOW                 0x0002
#define PSUIHDRF_PROPTITLE                  0x0004
#endif

#if !__has_include(<winddiui.h>)
#define DOCUMENTEVENT_CREATEDCPRE   1
#define DOCUMENTEVENT_CREATEDCPOST  2
#define DOCUMENTEVENT_SUCCESS       1
#define DOCUMENTEVENT_FAILURE       (-1)

int  WINAPI DrvDocumentEvent(HANDLE hPrinter, HDC hdc, int iEsc, ULONG cbIn, PVOID pvIn,
                             ULONG cbOut, PVOID pvOut);
BOOL WINAPI DrvPrinterEvent(LPWSTR pPrinterName, INT DriverEvent, DWORD Flags, LPARAM lParam);
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
