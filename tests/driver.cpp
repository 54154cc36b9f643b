#include "driver.h"

const Driver &TheDriver()
{
    static Driver driver;
    if (!driver.hModule) {
        WCHAR szPath[MAX_PATH];
        GetModuleFileNameW(NULL, szPath, MAX_PATH);
        lstrcpyW(wcsrchr(szPath, L'\\') + 1, L"QLRDRVUI.DLL");
        driver.hModule = LoadLibraryW(szPath);
        if (driver.hModule) {
            driver.ConvertDevMode = (PFN_CONVERT)(void *)GetProcAddress(driver.hModule, "DrvConvertDevMode");
            driver.DeviceCapabilities = (PFN_CAPS)(void *)GetProcAddress(driver.hModule, "DrvDeviceCapabilities");
            driver.DocumentPropertySheets = (PFN_SHEETS)(void *)GetProcAddress(driver.hModule, "DrvDocumentPropertySheets");
            driver.DocumentProperties = (PFN_DOCPROPS)(void *)GetProcAddress(driver.hModule, "DrvDocumentProperties");
            driver.AdvancedDocumentProperties =
                (PFN_ADVDOCPROPS)(void *)GetProcAddress(driver.hModule, "DrvAdvancedDocumentProperties");
            driver.DevicePropertySheets = (PFN_SHEETS)(void *)GetProcAddress(driver.hModule, "DrvDevicePropertySheets");
            driver.PrinterProperties = (PFN_PRINTERPROPS)(void *)GetProcAddress(driver.hModule, "PrinterProperties");
            driver.DevQueryPrintEx = (PFN_QUERYPRINT)(void *)GetProcAddress(driver.hModule, "DevQueryPrintEx");
            driver.PrinterEvent = (PFN_PRINTEREVENT)(void *)GetProcAddress(driver.hModule, "DrvPrinterEvent");
        }
    }
    return driver;
}
