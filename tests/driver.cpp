#include "driver.h"

#define LOOKUP(field, name) driver.field = (decltype(driver.field))(void *)GetProcAddress(driver.hModule, name)

const Driver &TheDriver()
{
    static Driver driver;
    if (!driver.hModule) {
        WCHAR szPath[MAX_PATH];
        GetModuleFileNameW(NULL, szPath, MAX_PATH);
        lstrcpyW(wcsrchr(szPath, L'\\') + 1, L"QLRDRVUI.DLL");
        driver.hModule = LoadLibraryW(szPath);
        LOOKUP(ConvertDevMode, "DrvConvertDevMode");
        LOOKUP(DeviceCapabilities, "DrvDeviceCapabilities");
        LOOKUP(DocumentPropertySheets, "DrvDocumentPropertySheets");
        LOOKUP(DocumentProperties, "DrvDocumentProperties");
        LOOKUP(AdvancedDocumentProperties, "DrvAdvancedDocumentProperties");
        LOOKUP(DevicePropertySheets, "DrvDevicePropertySheets");
        LOOKUP(PrinterProperties, "PrinterProperties");
        LOOKUP(DevQueryPrintEx, "DevQueryPrintEx");
        LOOKUP(PrinterEvent, "DrvPrinterEvent");
    }
    return driver;
}
