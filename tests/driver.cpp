#include "driver.h"
#include "files.h"

#define LOOKUP(result, field, name, params) \
    driver.field = (decltype(driver.field))(void *)GetProcAddress(driver.hModule, name);

const Driver &TheDriver()
{
    static Driver driver;
    if (!driver.hModule) {
        WCHAR szPath[MAX_PATH];
        const bool named = GetEnvironmentVariableW(L"QLR_MODULE", szPath, MAX_PATH);
        driver.hModule = LoadLibraryW(named ? szPath : Beside(L"QLRDRVUI.DLL").c_str());
        QLR_EXPORTS(LOOKUP)
    }
    return driver;
}

bool PrinterRecord(HANDLE hPrinter, std::vector<BYTE> *saved, const BYTE *store)
{
    // The answer may grow between a call that finds it too big and the next: each asks with the room last named.
    std::vector<BYTE> buffer;
    DWORD cb = 0;
    bool got;
    while (!(got = GetPrinterW(hPrinter, 2, buffer.data(), (DWORD)buffer.size(), &cb)) && cb > buffer.size())
        buffer.assign(cb, 0);
    PRINTER_INFO_2W *info = (PRINTER_INFO_2W *)buffer.data();
    if (!got || !info->pDevMode)
        return false;
    saved->assign((BYTE *)info->pDevMode, (BYTE *)info->pDevMode + info->pDevMode->dmSize + info->pDevMode->dmDriverExtra);
    info->pDevMode = (DEVMODEW *)store;
    info->pSecurityDescriptor = NULL;
    return !store || SetPrinterW(hPrinter, 2, buffer.data(), 0);
}

bool HookImport(LPCWSTR dll, const char *name, void *replacement)
{
    BYTE *base = (BYTE *)TheDriver().hModule;
    IMAGE_NT_HEADERS *nt = (IMAGE_NT_HEADERS *)(base + ((IMAGE_DOS_HEADER *)base)->e_lfanew);
    DWORD rva = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    void *real = (void *)GetProcAddress(GetModuleHandleW(dll), name);
    for (IMAGE_IMPORT_DESCRIPTOR *d = (IMAGE_IMPORT_DESCRIPTOR *)(base + rva); d->Name; d++)
        for (IMAGE_THUNK_DATA *t = (IMAGE_THUNK_DATA *)(base + d->FirstThunk); t->u1.Function; t++)
            if ((void *)t->u1.Function == real) {
                DWORD old;
                VirtualProtect(&t->u1.Function, sizeof(void *), PAGE_READWRITE, &old);
                t->u1.Function = (ULONG_PTR)replacement;
                return true;
            }
    return false;
}
