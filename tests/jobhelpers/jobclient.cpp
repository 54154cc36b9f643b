// Plays the rendering module: finds the job window by class and title and
// sends it a request.  Exit code: the message's result, or 99 without window.
//   jobclient open <application> <file>   a well-formed open request
//   jobclient short                        a block too short for the file field
//   jobclient unterminated                 a file field without a NUL
//   jobclient abort                        the abort message
#include <windows.h>
#include <string.h>

int main(int argc, char **argv)
{
    HWND hwnd = FindWindowW(L"QLR_UW", L"");
    if (!hwnd || argc < 2)
        return 99;
    if (!strcmp(argv[1], "abort"))
        return (int)SendMessageW(hwnd, WM_APP + 0x1000, 0, 0);

    static char block[4 + 260 + 260];
    memset(block, 0, sizeof(block));
    DWORD cb = 4 + 260 + 1;
    if (!strcmp(argv[1], "open") && argc == 4) {
        lstrcpynA(block + 4, argv[3], 260);
        lstrcpynA(block + 264, argv[2], 260);
        cb = 264 + lstrlenA(argv[2]) + 1;
    } else if (!strcmp(argv[1], "short")) {
        lstrcpyA(block + 4, "C:\\out\\short.jpg");
        cb = 100;
    } else if (!strcmp(argv[1], "unterminated")) {
        memset(block + 4, 'a', 260);
    } else {
        return 98;
    }
    COPYDATASTRUCT cds = { 0, cb, block };
    return (int)SendMessageW(hwnd, WM_COPYDATA, 0, (LPARAM)&cds);
}
