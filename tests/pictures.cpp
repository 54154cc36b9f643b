#include "pictures.h"
#include <algorithm>
#include <stdio.h>
#include <vector>
#include "capture.h"

std::string Compare(HWND c, const std::function<void(HDC, int, int)> &paint)
{
    std::vector<DWORD> got, want;
    int w, h;
    if (!CaptureWindow(c, FALSE, &got, &w, &h) || got.empty())
        return "no picture of the control";
    DrawToPixels(w, h, [&](HDC dc) { paint(dc, w, h); }, &want);
    const size_t i = std::mismatch(got.begin(), got.end(), want.begin(), want.end(),
                                   [](DWORD a, DWORD b) { return !((a ^ b) & 0xFFFFFF); }).first - got.begin();
    char text[80] = "";
    if (i < std::min(got.size(), want.size()))
        snprintf(text, sizeof(text), "first difference at (%d,%d): %06lx, want %06lx", int(i % w), int(i / w),
                 got[i] & 0xFFFFFFul, want[i] & 0xFFFFFFul);
    return text;
}

void Stroke(HDC dc, COLORREF c, std::initializer_list<int> xy, bool turn, bool dots)
{
    HGDIOBJ old = SelectObject(dc, CreatePen(PS_SOLID, 1, c));
    for (const int *p = xy.begin(); p < xy.end(); p += 2) {
        int x = turn ? 11 - p[0] : p[0], y = turn ? 11 - p[1] : p[1];
        dots ? (void)SetPixelV(dc, x, y, c) : p > xy.begin() ? (void)LineTo(dc, x, y) : (void)MoveToEx(dc, x, y, NULL);
    }
    DeleteObject(SelectObject(dc, old));
}

void Round(HDC dc, COLORREF pen, COLORREF brush, int l, int t, int r, int b, int e)
{
    HGDIOBJ oldPen = SelectObject(dc, CreatePen(PS_SOLID, 1, pen));
    HGDIOBJ oldBrush = SelectObject(dc, CreateSolidBrush(brush));
    RoundRect(dc, l, t, r, b, e, e);
    DeleteObject(SelectObject(dc, oldPen)), DeleteObject(SelectObject(dc, oldBrush));
}

// As the skin fills: an opaque ExtTextOutW, which also fills a rectangle given the wrong way round.
void Fill(HDC dc, COLORREF c, int l, int t, int r, int b)
{
    const RECT rc = { l, t, r, b };
    SetBkColor(dc, c), ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rc, NULL, 0, NULL);
}

std::string ComparePreview(HWND c, const Scheme &s, double W, double H, bool landscape, bool crop)
{
    return Compare(c, [&](HDC dc, int R, int B) {
        Fill(dc, s.face, 0, 0, R, B);
        const int aw = R - 10, ah = B - 10;
        double scale = std::min(std::min(aw / W, ah / H), std::min(aw / H, ah / W));
        int pw = int((landscape ? H : W) * scale), ph = int((landscape ? W : H) * scale);
        int l = 5 + (aw - pw) / 2, t = 5 + (ah - ph) / 2, r = l + pw, b = t + ph;
        Stroke(dc, s.shadow, { l + 1, b + 1, r + 1, b + 1, r + 1, t });
        Stroke(dc, RGB(0, 0, 0), { l, t, r, t, r, b, l, b, l, t });
        const int tl = l + 6, tt = t + 6, tw = r - 5 - tl, tb = b - 5;
        Fill(dc, RGB(255, 255, 255), crop ? tl : l + 1, crop ? tt : t + 1, crop ? tl + MulDiv(tw, 70, 100) : r,
             crop ? tt + std::min(tb - tt, 66) : b);    // cropped: only the block the text covers
        static const int rows[] = { 70, 50, 30, 0, 70, 70, 60, 40, 0, 70, 50, 30, 0, 70, 70, 60, 40 };
        for (int i = 0, y = tt + 1; i < 17 && y + 2 < tb; i++, y += 4)
            for (int dy = -1; rows[i] && dy <= 0; dy++)
                Stroke(dc, RGB(0, 0, 0), { tl, y + dy, tl + MulDiv(tw, rows[i], 100), y + dy });
    });
}

// GetGuiResources answers 0 under Wine, so the GDI handle table the x64 PEB points at (offset 0xF8) is counted instead:
// 24-byte entries of object, owner (process id in the low word), unique, type, flags, user.
int GdiObjects()
{
    struct Entry { UINT64 object; ULONG owner; USHORT unique; UCHAR type, flags; UINT64 user; };
    static_assert(sizeof(Entry) == 24, "the tests run as x64 programs");
    if (DWORD n = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS))
        return (int)n;
    auto peb = (BYTE *(WINAPI *)(void))(void *)GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb");
    const Entry *table = peb ? *(const Entry *const *)(peb() + 0xF8) : NULL;
    return table ? (int)std::count_if(table, table + 0x10000, [](const Entry &e) {
        return e.type && (!LOWORD(e.owner) || LOWORD(e.owner) == GetCurrentProcessId());
    }) : 0;
}
