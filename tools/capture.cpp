#include "capture.h"

BOOL DrawToPixels(int w, int h, const std::function<void(HDC)> &draw, std::vector<DWORD> *pPixels)
{
    BITMAPINFO bmi = {};
    bmi.bmiHeader.biSize = sizeof(bmi.bmiHeader);
    bmi.bmiHeader.biWidth = w;
    bmi.bmiHeader.biHeight = -h;
    bmi.bmiHeader.biPlanes = 1;
    bmi.bmiHeader.biBitCount = 32;
    void *pBits = NULL;
    HDC hdcMem = CreateCompatibleDC(NULL);
    HBITMAP hbm = CreateDIBSection(hdcMem, &bmi, DIB_RGB_COLORS, &pBits, NULL, 0);
    HGDIOBJ hOld = SelectObject(hdcMem, hbm);
    draw(hdcMem);
    GdiFlush();
    if (pBits)
        pPixels->assign((const DWORD *)pBits, (const DWORD *)pBits + (size_t)w * h);
    SelectObject(hdcMem, hOld);
    DeleteObject(hbm);
    DeleteDC(hdcMem);
    return pBits != NULL;
}

BOOL CaptureWindow(HWND hwnd, BOOL bWholeWindow, std::vector<DWORD> *pPixels, int *pWidth, int *pHeight)
{
    RECT rc;
    if (bWholeWindow) {
        GetWindowRect(hwnd, &rc);
        OffsetRect(&rc, -rc.left, -rc.top);
    } else {
        GetClientRect(hwnd, &rc);
    }
    int w = rc.right, h = rc.bottom;
    HDC hdcWindow = bWholeWindow ? GetWindowDC(hwnd) : GetDC(hwnd);
    BOOL ok = DrawToPixels(w, h, [&](HDC hdc) { BitBlt(hdc, 0, 0, w, h, hdcWindow, 0, 0, SRCCOPY); }, pPixels);
    ReleaseDC(hwnd, hdcWindow);
    *pWidth = w;
    *pHeight = h;
    return ok;
}
