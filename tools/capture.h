/* Pixels of a window as the screen shows it: 32-bit, top-down, 0x00RRGGBB. */
#ifndef QLR_TOOLS_CAPTURE_H
#define QLR_TOOLS_CAPTURE_H

#include <windows.h>
#include <vector>

/* bWholeWindow: frame and caption too, else the client area only. */
BOOL CaptureWindow(HWND hwnd, BOOL bWholeWindow, std::vector<DWORD> *pPixels, int *pWidth, int *pHeight);

#endif
