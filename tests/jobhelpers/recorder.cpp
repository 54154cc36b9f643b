// Stands in for a viewer (and, copied under the name RUNDLL32.EXE beside the
// tests, for the Open With route): records the command line it was started
// with in %TEMP%\qlr-recorded.txt.
#include <windows.h>

int wmain()
{
    WCHAR path[MAX_PATH];
    GetTempPathW(MAX_PATH, path);
    lstrcatW(path, L"qlr-recorded.txt");
    HANDLE h = CreateFileW(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL);
    if (h == INVALID_HANDLE_VALUE)
        return 1;
    LPCWSTR line = GetCommandLineW();
    DWORD cb;
    WriteFile(h, line, lstrlenW(line) * sizeof(WCHAR), &cb, NULL);
    CloseHandle(h);
    return 0;
}
