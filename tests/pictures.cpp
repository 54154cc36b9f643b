#include "pictures.h"
#include <algorithm>
#include <stdio.h>
#include <vector>
#include "capture.h"

// Face 192, shadow 128, dark shadow 0: the mixes halve -64 and -128 exactly.
const Scheme CLASSIC = { "classic", RGB(192, 192, 192), RGB(128, 128, 128), RGB(0, 0, 0), RGB(255, 255, 255),
                         RGB(223, 223, 223), RGB(0, 0, 0), RGB(160, 160, 160), RGB(64, 64, 64), RGB(0, 0, 0) };

static const int g_Indices[] = { COLOR_BTNFACE, COLOR_BTNSHADOW, COLOR_3DDKSHADOW, COLOR_BTNHIGHLIGHT,
                                 COLOR_3DLIGHT, COLOR_WINDOWFRAME, COLOR_BTNTEXT };
static const COLORREF g_Saved[] = { GetSysColor(g_Indices[0]), GetSysColor(g_Indices[1]), GetSysColor(g_Indices[2]),
                                    GetSysColor(g_Indices[3]), GetSysColor(g_Indices[4]), GetSysColor(g_Indices[5]),
                                    GetSysColor(g_Indices[6]) };    // the colours at start, put back by RestoreColours

void UseScheme(const Scheme &s)
{
    const COLORREF colours[] = { s.face, s.shadow, s.dark, s.hilight, s.light, s.frame, s.text };
    SetSysColors(ARRAYSIZE(g_Indices), g_Indices, colours);
}

void RestoreColours() { SetSysColors(ARRAYSIZE(g_Indices), g_Indices, g_Saved); }

HWND SkinHost::AddButton(int id, DWORD style, LPCWSTR text, int w, int h, int x, int y, LPCWSTR cls)
{
    HWND c = CreateWindowExW(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, hwnd, (HMENU)(INT_PTR)id,
                             GetModuleHandleW(NULL), NULL);
    SendMessageW(c, WM_SETFONT, (WPARAM)GetStockObject(DEFAULT_GUI_FONT), FALSE);
    return c;
}

bool SkinHost::Create()
{
    alignas(4) static const struct { DLGTEMPLATE t; WORD menu, cls, title; } tmpl = {
        { WS_POPUP | WS_VISIBLE, 0, 0, 0, 0, 320, 240 }, 0, 0, 0 };
    hwnd = CreateDialogIndirectParamW(GetModuleHandleW(NULL), &tmpl.t, NULL, NULL, 0);    // no procedure: all default
    return hwnd != NULL;
}

void SkinHost::Pump()
{
    for (MSG msg; PeekMessageW(&msg, NULL, 0, 0, PM_REMOVE);)
        if (!IsDialogMessageW(hwnd, &msg))
            DispatchMessageW(&msg);
}

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

// GetGuiResources answers 0 under Wine, so the GDI handle table the x64 PEB points at (offset 0xF8) is counted:
// 24-byte entries of object, owner (process id in the low word), unique, type, flags, user.
int GdiObjects()
{
    struct Entry { UINT64 object; ULONG owner; USHORT unique; UCHAR type, flags; UINT64 user; };
    static_assert(sizeof(Entry) == 24, "the tests run as x64 programs");
    auto peb = (BYTE *(WINAPI *)(void))(void *)GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb");
    const Entry *table = peb ? *(const Entry *const *)(peb() + 0xF8) : NULL;
    return table ? (int)std::count_if(table, table + 0x10000, [](const Entry &e) {
        return e.type && (!LOWORD(e.owner) || LOWORD(e.owner) == GetCurrentProcessId());
    }) : 0;
}
