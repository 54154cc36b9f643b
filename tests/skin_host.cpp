#include "skin_host.h"
#include <stdio.h>
#include "capture.h"

// Face 192, shadow 128, dark shadow 0: the mixes halve -64 and -128 exactly.
const Scheme CLASSIC = { "classic", RGB(192, 192, 192), RGB(128, 128, 128), RGB(0, 0, 0), RGB(255, 255, 255),
                         RGB(223, 223, 223), RGB(0, 0, 0), RGB(160, 160, 160), RGB(64, 64, 64) };

static const int g_Indices[] = { COLOR_BTNFACE, COLOR_BTNSHADOW, COLOR_3DDKSHADOW, COLOR_BTNHIGHLIGHT,
                                 COLOR_3DLIGHT, COLOR_WINDOWFRAME };
static COLORREF g_Saved[ARRAYSIZE(g_Indices)];
static bool g_bSaved;

void UseScheme(const Scheme &s)
{
    for (size_t i = 0; !g_bSaved && i < ARRAYSIZE(g_Indices); i++)
        g_Saved[i] = GetSysColor(g_Indices[i]);
    g_bSaved = true;
    const COLORREF colours[] = { s.face, s.shadow, s.dark, s.hilight, s.light, s.frame };
    SetSysColors(ARRAYSIZE(g_Indices), g_Indices, colours);
}

void RestoreColours()
{
    if (g_bSaved)
        SetSysColors(ARRAYSIZE(g_Indices), g_Indices, g_Saved);
}

Dib Capture(HWND control, const std::function<void(HDC)> &paint)
{
    Dib dib;
    if (!paint)
        CaptureWindow(control, FALSE, &dib.bits, &dib.width, &dib.height);
    RECT rc;
    if (paint && GetClientRect(control, &rc))
        DrawToPixels(dib.width = rc.right, dib.height = rc.bottom, paint, &dib.bits);
    return dib;
}

std::string Diff(const Dib &got, const Dib &want)
{
    char text[80] = "";
    if (got.width != want.width || got.height != want.height || got.bits.size() != want.bits.size())
        snprintf(text, sizeof(text), "size %dx%d, want %dx%d", got.width, got.height, want.width, want.height);
    for (size_t i = 0; !*text && i < got.bits.size(); i++)
        if ((got.bits[i] ^ want.bits[i]) & 0xFFFFFF)
            snprintf(text, sizeof(text), "first difference at (%d,%d): %06lx, want %06lx", int(i % got.width),
                     int(i / got.width), got.bits[i] & 0xFFFFFFul, want.bits[i] & 0xFFFFFFul);
    return text;
}

void Stroke(HDC dc, COLORREF c, std::initializer_list<int> xy, int ox, int oy, bool turn, bool dots)
{
    HPEN pen = CreatePen(PS_SOLID, 1, c);
    HGDIOBJ old = SelectObject(dc, pen);
    const int *p = xy.begin();
    for (size_t i = 0; i < xy.size(); i += 2) {
        int x = ox + (turn ? 11 - p[i] : p[i]), y = oy + (turn ? 11 - p[i + 1] : p[i + 1]);
        dots ? (void)SetPixelV(dc, x, y, c) : i ? (void)LineTo(dc, x, y) : (void)MoveToEx(dc, x, y, NULL);
    }
    SelectObject(dc, old);
    DeleteObject(pen);
}

void Round(HDC dc, COLORREF pen, COLORREF brush, int l, int t, int r, int b, int e)
{
    HGDIOBJ oldPen = SelectObject(dc, CreatePen(PS_SOLID, 1, pen));
    HGDIOBJ oldBrush = SelectObject(dc, CreateSolidBrush(brush));
    RoundRect(dc, l, t, r, b, e, e);
    DeleteObject(SelectObject(dc, oldPen));
    DeleteObject(SelectObject(dc, oldBrush));
}

void Fill(HDC dc, COLORREF c, int l, int t, int r, int b)
{
    RECT rc = { l, t, r, b };
    HBRUSH hbr = CreateSolidBrush(c);
    FillRect(dc, &rc, hbr);
    DeleteObject(hbr);
}

HWND SkinHost::Add(const Item &i)
{
    HWND c = CreateWindowExW(0, i.cls, i.text, WS_CHILD | WS_VISIBLE | i.style, i.x, i.y, i.w, i.h, hwnd,
                             (HMENU)(INT_PTR)i.id, GetModuleHandleW(NULL), NULL);
    SendMessageW(c, WM_SETFONT, (WPARAM)hFont, FALSE);
    if (i.attach)
        i.attach(hwnd, i.id);
    return c;
}

static INT_PTR CALLBACK HostProc(HWND dlg, UINT msg, WPARAM, LPARAM lParam)
{
    if (msg != WM_INITDIALOG)
        return FALSE;
    SkinHost *host = (SkinHost *)lParam;
    host->hwnd = dlg;
    SetWindowPos(dlg, NULL, 0, 0, 640, 480, SWP_NOZORDER | SWP_NOACTIVATE);
    for (const SkinHost::Item &i : host->items)
        host->Add(i);
    return TRUE;    // the dialog manager focuses the first tab stop
}

bool SkinHost::Create()
{
    alignas(4) static const struct { DLGTEMPLATE t; WORD menu, cls, title; } tmpl = { { WS_POPUP, 0, 0, 0, 0, 9, 9 }, 0, 0, 0 };
    return CreateDialogIndirectParamW(GetModuleHandleW(NULL), &tmpl.t, NULL, HostProc, (LPARAM)this) != NULL;
}

void SkinHost::Pump()
{
    MSG msg;
    while (PeekMessageW(&msg, NULL, 0, 0, PM_REMOVE))
        if (!IsDialogMessageW(hwnd, &msg))
            DispatchMessageW(&msg);
}
