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
        }
    }
    return driver;
}

void MakeLayout(Layout *p, WORD size, WORD extra, WORD spec, BYTE fill)
{
    memset(p->bytes, fill, sizeof(p->bytes));
    p->dm()->dmSize = size;
    p->dm()->dmDriverExtra = extra;
    p->dm()->dmSpecVersion = spec;
}

bool UntouchedFrom(const Layout &l, size_t from, BYTE fill)
{
    for (size_t i = from; i < sizeof(l.bytes); i++)
        if (l.bytes[i] != fill)
            return false;
    return true;
}
