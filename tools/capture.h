/* Pixels of a window as the screen shows it, or of a drawing: 32-bit,
 * top-down, 0x00RRGGBB. */
#ifndef QLR_TOOLS_CAPTURE_H
#define QLR_TOOLS_CAPTURE_H

#include <windows.h>
#include <functional>
#include <vector>

/* Whatever `draw` paints on a w x h memory DC. */
BOOL DrawToPixels(int w, int h, const std::function<void(HDC)> &draw, std::vector<DWORD> *pPixels);

/* bWholeWindow: frame and caption too, else the client area only. */
BOOL CaptureWindow(HWND hwnd, BOOL bWholeWindow, std::vector<DWORD> *pPixels, int *pWidth, int *pHeight);

#endif
