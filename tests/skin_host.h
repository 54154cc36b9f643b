// A real dialog hosting skinned controls, colour schemes set through
// SetSysColors, and the drawing helpers of the reference pictures.
#ifndef QLR_TESTS_SKIN_HOST_H
#define QLR_TESTS_SKIN_HOST_H

#include <windows.h>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

enum { IDC_PUSH = 1002, IDC_PREVIEW = 1006, IDC_CHECK = 1013, IDC_RADIO = 1096, IDC_GROUP = 1100 };

// The six system colours the skin reads, and the two mixes expected of them.
struct Scheme { const char *name; COLORREF face, shadow, dark, hilight, light, frame, halfShadow, halfDark; };
extern const Scheme CLASSIC;
void UseScheme(const Scheme &s);
inline void UseClassicColours() { UseScheme(CLASSIC); }
void RestoreColours();    // SetSysColors reaches every process on the wineserver

struct Dib { int width = 0, height = 0; std::vector<DWORD> bits; };    // top-down 0x00RRGGBB
// The control as the screen shows it, or paint's picture of its size.
Dib Capture(HWND control, const std::function<void(HDC)> &paint = nullptr);
std::string Diff(const Dib &got, const Dib &want);                 // "" or the first differing pixel

// Points x, y, x, y... from an origin, each optionally turned through half a
// circle in a 12-pixel square (x -> 11 - x): joined by MoveToEx/LineTo, or dots.
void Stroke(HDC dc, COLORREF c, std::initializer_list<int> xy, int ox = 0, int oy = 0, bool turn = false,
            bool dots = false);
inline void Dots(HDC dc, COLORREF c, std::initializer_list<int> xy, int ox = 0, int oy = 0, bool turn = false)
{
    Stroke(dc, c, xy, ox, oy, turn, true);
}
void Round(HDC dc, COLORREF pen, COLORREF brush, int l, int t, int r, int b, int e);
void Fill(HDC dc, COLORREF c, int l, int t, int r, int b);

// A modeless dialog; its WM_INITDIALOG creates and attaches the items.
struct SkinHost {
    struct Item { LPCWSTR cls; int id; DWORD style; LPCWSTR text; int x, y, w, h; void (*attach)(HWND, int); };
    std::vector<Item> items;
    HWND hwnd = NULL;
    HFONT hFont = (HFONT)GetStockObject(DEFAULT_GUI_FONT);
    bool Create();
    HWND Add(const Item &item);
    HWND AddButton(int id, DWORD style, LPCWSTR text, int w, int h, int x = 0, int y = 0)
    {
        return Add({ L"BUTTON", id, style, text, x, y, w, h, nullptr });
    }
    void Destroy() { if (hwnd) DestroyWindow(hwnd); hwnd = NULL; }
    void Show() { ShowWindow(hwnd, SW_SHOW); Pump(); }
    void Pump();
};

#endif
