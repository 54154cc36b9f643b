// A host window for skinned controls, a fixed colour scheme, and pixels read
// back from a DIB or from a window.
#ifndef QLR_TESTS_SKIN_HOST_H
#define QLR_TESTS_SKIN_HOST_H

#include <windows.h>
#include <vector>
#include "capture.h"

enum { IDC_PUSH = 1002, IDC_PREVIEW = 1006, IDC_CHECK = 1013, IDC_RADIO = 1096, IDC_GROUP = 1100 };

// Classic scheme: face 192, shadow 128, dark shadow 0, highlight 255, light
// 223, window frame 0.  SetSysColors reaches every process on the wineserver
// until it stops, so the originals are put back at the end.
void UseClassicColours();
void SetColour(int index, COLORREF clr);
void RestoreColours();

struct Dib {
    int width = 0, height = 0;
    std::vector<DWORD> bits;    // top-down, 0x00RRGGBB
    COLORREF Pixel(int x, int y) const;
    bool Contains(const RECT &rc, COLORREF clr) const;
    bool SameAs(const Dib &other, const RECT &rc) const;
};

COLORREF ScreenPixel(HWND hwnd, int x, int y);

struct SkinHost {
    HWND hwnd = NULL;
    HFONT hFont = NULL;
    bool Create();
    void Destroy();
    HWND AddButton(int id, DWORD style, LPCWSTR text, int w, int h, int x = 0, int y = 0);
    HWND AddStatic(int id, int w, int h);
    void Show();
    // Paints an attached button kind with DrawSkinItem into a DIB.
    Dib Render(int id, UINT itemState);
    Dib RenderMark(int id, UINT itemState, int nCheck);
    SIZE TextSize(LPCWSTR text);
    bool ScreenContains(HWND control, const RECT &rc, COLORREF clr);
};

// Draws into a DIB section of the given size; draw receives its DC.
inline Dib DrawToDib(int w, int h, const std::function<void(HDC)> &draw)
{
    Dib dib;
    dib.width = w;
    dib.height = h;
    DrawToPixels(w, h, draw, &dib.bits);
    return dib;
}

#endif
