/* Module attach: the module handle every resource is loaded from. */
#include "qlrui.h"

HINSTANCE g_hModule;

extern "C" BOOL WINAPI DrvUIDLLEntryFunc(HINSTANCE hModule, DWORD dwReason, LPVOID pReserved)
{
    (void)pReserved;
    if (dwReason != DLL_PROCESS_ATTACH)
        return TRUE;
    ForgetRememberedRecord();
    g_hModule = hModule;

    /* The extra reference is never released: a thread this module starts may
     * outlive the caller's FreeLibrary, so the code stays until the process
     * ends. */
    WCHAR szPath[MAX_PATH];
    DWORD cch = GetModuleFileNameW(hModule, szPath, ARRAY_COUNT(szPath));
    if (cch && cch < ARRAY_COUNT(szPath))
        LoadLibraryW(szPath);
    return TRUE;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE hModule, DWORD dwReason, LPVOID pReserved)
{
    if (dwReason == DLL_PROCESS_ATTACH) {
        InitRememberedRecord();
        InitJobWindowLock();
    }
    return DrvUIDLLEntryFunc(hModule, dwReason, pReserved);
}
