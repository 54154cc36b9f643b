// The driver module as applications reach it: loaded by file name, entry
// points looked up by name.
#ifndef QLR_TESTS_DRIVER_H
#define QLR_TESTS_DRIVER_H

#include <gtest/gtest.h>
#include <string.h>
#include <string>
#include <vector>
#include "drvapi.h"

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

// A caller's device mode of any layout, in a buffer with room to spare that
// is filled with a pattern, so that writes past the layout show.
struct Layout {
    BYTE bytes[8192];
    DEVMODEW *dm() { return (DEVMODEW *)bytes; }
};

inline void MakeLayout(Layout *p, WORD size, WORD extra, WORD version, BYTE fill)
{
    memset(p->bytes, fill, sizeof(p->bytes));
    p->dm()->dmSize = size, p->dm()->dmDriverExtra = extra, p->dm()->dmSpecVersion = version;
}

// Loads QLRDRVUI.DLL from the test program's own folder, or the build that
// QLR_MODULE names (the MSVC-dialect one), once per process.
const Driver &TheDriver();

// The printer's own record, by the level-2 two-call protocol; with a record
// given, that record is stored as the printer's own.
bool PrinterRecord(HANDLE hPrinter, std::vector<BYTE> *saved, const BYTE *store);

inline std::string Utf8(const std::wstring &s)
{
    std::string u(s.size() * 3, 0);
    u.resize(WideCharToMultiByte(CP_UTF8, 0, s.c_str(), (int)s.size(), &u[0], (int)u.size(), NULL, NULL));
    return u;
}

// Outcome of a call as "result error needed", the error "-" when the
// sentinel set before the call was left alone.
inline std::string Outcome(LONG result, LONG needed)
{
    DWORD error = GetLastError();
    return std::to_string(result) + " " + (error == 0xdeadbeef ? "-" : std::to_string(error)) + " " +
           std::to_string(needed);
}

// Points the module's import of one function at a stand-in; false when the
// module does not import it.
bool HookImport(LPCWSTR dll, const char *name, void *replacement);

#endif
