// The driver module as applications reach it: loaded by file name, entry
// points looked up by name.
#ifndef QLR_TESTS_DRIVER_H
#define QLR_TESTS_DRIVER_H

#include <gtest/gtest.h>
#include <string.h>
#include "drvapi.h"
#include "record.h"

typedef BOOL (WINAPI *PFN_CONVERT)(LPWSTR, PDEVMODEW, PDEVMODEW, PLONG, DWORD);
typedef DWORD (WINAPI *PFN_CAPS)(HANDLE, PWSTR, WORD, VOID *, PDEVMODEW);
typedef LONG (WINAPI *PFN_SHEETS)(PPROPSHEETUI_INFO, LPARAM);

struct Driver {
    HMODULE hModule;
    PFN_CONVERT ConvertDevMode;
    PFN_CAPS DeviceCapabilities;
    PFN_SHEETS DocumentPropertySheets;
};

// Loads QLRDRVUI.DLL from the test program's own folder, once per process.
const Driver &TheDriver();

// A caller's record of any layout, in a buffer with room to spare that is
// filled with a pattern, so writes past the layout show.
struct Layout {
    BYTE bytes[8192];
    DEVMODEW *dm() { return (DEVMODEW *)bytes; }
    QLRDEVMODE *record() { return (QLRDEVMODE *)bytes; }
};
void MakeLayout(Layout *p, WORD size, WORD extra, WORD spec, BYTE fill);
bool UntouchedFrom(const Layout &l, size_t from, BYTE fill);

#endif
