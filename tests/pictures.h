// Controls as the screen shows them, compared whole with pictures drawn here, and the drawing helpers both sides use.
#ifndef QLR_TESTS_PICTURES_H
#define QLR_TESTS_PICTURES_H

#include <windows.h>
#include <functional>
#include <initializer_list>
#include <string>

// The seven system colours the skin reads, and the two mixes expected of them.
struct Scheme { const char *name; COLORREF face, shadow, dark, hilight, light, frame, halfShadow, halfDark, text; };

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

// The GDI objects the process holds.
int GdiObjects();

#endif
