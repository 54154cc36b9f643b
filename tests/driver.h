// The driver module as applications reach it: loaded by file name, entry
// points looked up by name.
#ifndef QLR_TESTS_DRIVER_H
#define QLR_TESTS_DRIVER_H

#include <gtest/gtest.h>
#include <string.h>
#include "drvapi.h"
#include "record.h"
#include "layout.h"

typedef BOOL (WINAPI *PFN_CONVERT)(LPWSTR, PDEVMODEW, PDEVMODEW, PLONG, DWORD);
typedef DWORD (WINAPI *PFN_CAPS)(HANDLE, PWSTR, WORD, VOID *, PDEVMODEW);
typedef LONG (WINAPI *PFN_SHEETS)(PPROPSHEETUI_INFO, LPARAM);
typedef LONG (WINAPI *PFN_DOCPROPS)(HWND, HANDLE, LPWSTR, PDEVMODEW, PDEVMODEW, DWORD);
typedef LONG (WINAPI *PFN_ADVDOCPROPS)(HWND, HANDLE, LPWSTR, PDEVMODEW, PDEVMODEW);
typedef BOOL (WINAPI *PFN_PRINTERPROPS)(HWND, HANDLE);
typedef BOOL (WINAPI *PFN_QUERYPRINT)(PDEVQUERYPRINT_INFO);
typedef BOOL (WINAPI *PFN_PRINTEREVENT)(LPWSTR, INT, DWORD, LPARAM);

struct Driver {
    HMODULE hModule;
    PFN_CONVERT ConvertDevMode;
    PFN_CAPS DeviceCapabilities;
    PFN_SHEETS DocumentPropertySheets;
    PFN_DOCPROPS DocumentProperties;
    PFN_ADVDOCPROPS AdvancedDocumentProperties;
    PFN_SHEETS DevicePropertySheets;
    PFN_PRINTERPROPS PrinterProperties;
    PFN_QUERYPRINT DevQueryPrintEx;
    PFN_PRINTEREVENT PrinterEvent;
};

// Loads QLRDRVUI.DLL from the test program's own folder, once per process.
const Driver &TheDriver();

#endif
