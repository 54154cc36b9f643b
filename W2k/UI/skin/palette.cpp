/*
 * The skin palette and the small drawing helpers every painter shares.
 */
#include "painters.h"

SKINPALETTE g_Skin;

/* Creation and deletion order of the seven pens, each with its colour. */
static const struct { HPEN SKINPALETTE::*pen; COLORREF SKINPALETTE::*clr; } g_PenOrder[] = {
    { &SKINPALETTE::hpenFace,       &SKINPALETTE::clrFace },
    { &SKINPALETTE::hpenLight,      &SKINPALETTE::clrLight },
    { &SKINPALETTE::hpenHalfShadow, &SKINPALETTE::clrHalfShadow },
    { &SKINPALETTE::hpenShadow,     &SKINPALETTE::clrShadow },
    { &SKINPALETTE::hpenDkShadow,   &SKINPALETTE::clrDkShadow },
    { &SKINPALETTE::hpenHilight,    &SKINPALETTE::clrHilight },
    { &SKINPALETTE::hpenHalfDark,   &SKINPALETTE::clrHalfDark },
};

/* Halfway from a to b per channel; the halved difference is shifted
 * arithmetically, so it rounds toward minus infinity. */
static COLORREF MixHalf(COLORREF a, COLORREF b)
{
    int r = GetRValue(a) + ((GetRValue(b) - GetRValue(a)) >> 1);
    int g = GetGValue(a) + ((GetGValue(b) - GetGValue(a)) >> 1);
    int bl = GetBValue(a) + ((GetBValue(b) - GetBValue(a)) >> 1);
    return RGB(r, g, bl);
}

void DeleteSkinPens(void)
{
    for (const auto &entry : g_PenOrder) {
        HPEN &hpen = g_Skin.*entry.pen;
        if (hpen)
            DeleteObject(hpen);
        hpen = NULL;
    }
}

void RebuildSkinPens(void)
{
    DeleteSkinPens();
    for (const auto &entry : g_PenOrder)
        g_Skin.*entry.pen = CreatePen(PS_SOLID, 1, g_Skin.*entry.clr);
}

void BuildSkinPalette(void)
{
    g_Skin.clrHilight = GetSysColor(COLOR_BTNHIGHLIGHT);
    g_Skin.clrLight = GetSysColor(COLOR_3DLIGHT);
    g_Skin.clrFace = GetSysColor(COLOR_BTNFACE);
    g_Skin.clrShadow = GetSysColor(COLOR_BTNSHADOW);
    g_Skin.clrDkShadow = GetSysColor(COLOR_3DDKSHADOW);
    g_Skin.clrHalfShadow = MixHalf(g_Skin.clrFace, g_Skin.clrShadow);
    g_Skin.clrHalfDark = MixHalf(g_Skin.clrShadow, g_Skin.clrDkShadow);
    RebuildSkinPens();
}

static BYTE DarkenChannel(BYTE v, int n) { return v < n ? 0 : (BYTE)(v - n); }
static BYTE LightenChannel(BYTE v, int n) { return v + n > 255 ? 255 : (BYTE)(v + n); }

COLORREF DarkenColor(COLORREF clr, int n)
{
    return RGB(DarkenChannel(GetRValue(clr), n), DarkenChannel(GetGValue(clr), n),
               DarkenChannel(GetBValue(clr), n));
}

COLORREF LightenColor(COLORREF clr, int n)
{
    return RGB(LightenChannel(GetRValue(clr), n), LightenChannel(GetGValue(clr), n),
               LightenChannel(GetBValue(clr), n));
}

/* ExtTextOut with ETO_OPAQUE fills without creating a brush; the device
 * context keeps the background colour. */
void FillRectSolid(HDC hdc, const RECT *prc, COLORREF clr)
{
    SetBkColor(hdc, clr);
    ExtTextOutW(hdc, 0, 0, ETO_OPAQUE, prc, NULL, 0, NULL);
}

void FrameRect3D(HDC hdc, const RECT *prc, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    int x = prc->left, y = prc->top;
    int w = prc->right - prc->left, h = prc->bottom - prc->top;
    RECT top = { x, y, x + w - 1, y + 1 };
    RECT left = { x, y, x + 1, y + h - 1 };
    RECT right = { x + w - 1, y, x + w, y + h };
    RECT bottom = { x, y + h - 1, x + w, y + h };
    FillRectSolid(hdc, &top, clrTopLeft);
    FillRectSolid(hdc, &left, clrTopLeft);
    FillRectSolid(hdc, &right, clrBottomRight);
    FillRectSolid(hdc, &bottom, clrBottomRight);
}

void DrawStroke(HDC hdc, HPEN hpen, const POINT *ppt, int count)
{
    HGDIOBJ hOld = SelectObject(hdc, hpen);
    MoveToEx(hdc, ppt[0].x, ppt[0].y, NULL);
    for (int i = 1; i < count; i++)
        LineTo(hdc, ppt[i].x, ppt[i].y);
    SelectObject(hdc, hOld);
}

void SetPixels(HDC hdc, COLORREF clr, const POINT *ppt, int count)
{
    for (int i = 0; i < count; i++)
        SetPixel(hdc, ppt[i].x, ppt[i].y, clr);
}
