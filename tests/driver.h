// The driver module as applications reach it: loaded by file name, entry points looked up by name.
#ifndef QLR_TESTS_DRIVER_H
#define QLR_TESTS_DRIVER_H

#include <gtest/gtest.h>
#include <string.h>
#include <string>
#include <vector>
#include "drvapi.h"

// Each entry point: result, field, exported name, parameters.
#define QLR_EXPORTS(X) \
    X(BOOL, ConvertDevMode, "DrvConvertDevMode", (LPWSTR, PDEVMODEW, PDEVMODEW, PLONG, DWORD)) \
    X(DWORD, DeviceCapabilities, "DrvDeviceCapabilities", (HANDLE, PWSTR, WORD, VOID *, PDEVMODEW)) \
    X(LONG, DocumentPropertySheets, "DrvDocumentPropertySheets", (PPROPSHEETUI_INFO, LPARAM)) \
    X(LONG, DocumentProperties, "DrvDocumentProperties", (HWND, HANDLE, LPWSTR, PDEVMODEW, PDEVMODEW, DWORD)) \
    X(LONG, AdvancedDocumentProperties, "DrvAdvancedDocumentProperties", (HWND, HANDLE, LPWSTR, PDEVMODEW, PDEVMODEW)) \
    X(LONG, DevicePropertySheets, "DrvDevicePropertySheets", (PPROPSHEETUI_INFO, LPARAM)) \
    X(BOOL, PrinterProperties, "PrinterProperties", (HWND, HANDLE)) \
    X(BOOL, DevQueryPrintEx, "DevQueryPrintEx", (PDEVQUERYPRINT_INFO)) \
    X(BOOL, PrinterEvent, "DrvPrinterEvent", (LPWSTR, INT, DWORD, LPARAM))
#define QLR_FIELD(result, field, name, params) result (WINAPI *field) params;

struct Driver {
    HMODULE hModule;
    QLR_EXPORTS(QLR_FIELD)
};
typedef decltype(Driver::DocumentPropertySheets) PFN_SHEETS;

inline DEVMODEW *Header(DEVMODEW *dm, WORD size, WORD extra, WORD version)
{
    dm->dmSize = size, dm->dmDriverExtra = extra, dm->dmSpecVersion = version;
    return dm;
}

// A caller's device mode of any layout in a pattern-filled buffer with room to spare: writes past it show.
struct Layout {
    BYTE bytes[8192];
    explicit Layout(BYTE fill = 0xA5, WORD size = 0, WORD extra = 0, WORD version = 0)
    {
        memset(bytes, fill, sizeof(bytes));
        Header(dm(), size, extra, version);
    }
    DEVMODEW *dm() { return (DEVMODEW *)bytes; }
};

// QLRDRVUI.DLL from the test program's folder, or the (MSVC-dialect) build QLR_MODULE names, loaded once.
const Driver &TheDriver();
// The printer's own record, by the level-2 two-call protocol; a record given is stored as the printer's own.
bool PrinterRecord(HANDLE hPrinter, std::vector<BYTE> *saved, const BYTE *store);
// Points the module's import of one function at a stand-in; false when the module does not import it.
bool HookImport(LPCWSTR dll, const char *name, void *replacement);

inline std::string Utf8(const std::wstring &s)
{
    std::string u(s.size() * 3, 0);
    u.resize(WideCharToMultiByte(CP_UTF8, 0, s.c_str(), (int)s.size(), &u[0], (int)u.size(), NULL, NULL));
    return u;
}

// A call's outcome as "result error needed", the error "-" when the sentinel set before it was left alone.
inline std::string Outcome(LONG result, LONG needed)
{
    const DWORD e = GetLastError();
    return std::to_string(result) + " " + (e == 0xdeadbeef ? "-" : std::to_string(e)) + " " + std::to_string(needed);
}

#endif
