// Controls as the screen shows them, compared whole with pictures drawn here; a real dialog to host skinned controls.
#ifndef QLR_TESTS_PICTURES_H
#define QLR_TESTS_PICTURES_H

#include <windows.h>
#include <functional>
#include <initializer_list>
#include <string>

// The seven system colours the skin reads, and the two mixes expected of them.
struct Scheme { const char *name; COLORREF face, shadow, dark, hilight, light, frame, halfShadow, halfDark, text; };
extern const Scheme CLASSIC;
void UseScheme(const Scheme &s);    // by SetSysColors: every wineserver process sees it until restored
void RestoreColours();    // the colours the process started with

// "" when the screen shows in the control what paint draws, else the first pixel that differs.
std::string Compare(HWND c, const std::function<void(HDC, int, int)> &paint);
// Points x, y... joined by MoveToEx/LineTo or set as dots, optionally turned round in a 12-pixel square.
void Stroke(HDC dc, COLORREF c, std::initializer_list<int> xy, bool turn = false, bool dots = false);
inline void Dots(HDC dc, COLORREF c, std::initializer_list<int> xy, bool turn = false) { Stroke(dc, c, xy, turn, true); }
// A rounded rectangle in a pen and a brush; a rectangle all in one colour.
void Round(HDC dc, COLORREF pen, COLORREF brush, int l, int t, int r, int b, int e);
void Fill(HDC dc, COLORREF c, int l, int t, int r, int b);
// The page preview of a W x H paper (any unit: only the ratio counts), turned for landscape, cropped or not.
std::string ComparePreview(HWND c, const Scheme &s, double W, double H, bool landscape, bool crop);
int GdiObjects();    // the GDI objects the process holds

// The host's own control ids; the skin reads no id.
enum { HOST_PUSH = 101, HOST_CHECK, HOST_RADIO, HOST_RADIO2, HOST_GROUP, HOST_GROUP2, HOST_PREVIEW, HOST_PLAIN };
// A modeless dialog, shown by Create; its controls in the default GUI font.
struct SkinHost {
    HWND hwnd = NULL;
    bool Create();
    HWND AddButton(int id, DWORD style, LPCWSTR text, int w, int h, int x = 0, int y = 0, LPCWSTR cls = L"BUTTON");
    void Destroy() { if (hwnd) DestroyWindow(hwnd); hwnd = NULL; }
    ~SkinHost() { Destroy(); }
    void Show() { ShowWindow(hwnd, SW_SHOW); Pump(); }
    void Pump();
};

#endif
