/*
 * The 12-pixel marks: a check box with a tick that breaks out of its top-right
 * corner, and a radio button's shaded bead with its dot.
 */
#include "painters.h"

#define COUNT(a) ((int)(sizeof(a) / sizeof((a)[0])))

/* Offsets from the mark's top-left corner, shifted into place. */
static void Offset(const POINT *pSrc, int count, int x, int y, POINT *pDst)
{
    for (int i = 0; i < count; i++) {
        pDst[i].x = x + pSrc[i].x;
        pDst[i].y = y + pSrc[i].y;
    }
}

#define MAX_POINTS 8

static void StrokeAt(HDC hdc, HPEN hpen, int x, int y, const POINT *ppt, int count)
{
    POINT pts[MAX_POINTS];
    Offset(ppt, count, x, y, pts);
    DrawStroke(hdc, hpen, pts, count);
}

static void PixelsAt(HDC hdc, COLORREF clr, int x, int y, const POINT *ppt, int count)
{
    POINT pts[MAX_POINTS];
    Offset(ppt, count, x, y, pts);
    SetPixels(hdc, clr, pts, count);
}

static void DrawTick(HDC hdc, int bx, int by, BOOL bDisabled)
{
    static const POINT underside[] = { { 5, 9 }, { 10, 4 }, { 10, 6 } };
    static const POINT shade1[] = { { 3, 7 }, { 5, 9 } };
    static const POINT shade2[] = { { 6, 9 }, { 10, 5 } };
    static const POINT tip[] = { { 12, 2 } };
    static const POINT tipShade[] = { { 13, 2 }, { 12, 3 } };
    static const POINT arm1[] = { { 2, 5 }, { 5, 8 }, { 13, 0 } };
    static const POINT arm2[] = { { 3, 5 }, { 5, 7 }, { 12, 0 } };

    StrokeAt(hdc, bDisabled ? g_Skin.hpenHalfShadow : g_Skin.hpenShadow, bx, by, underside, COUNT(underside));
    StrokeAt(hdc, g_Skin.hpenHalfShadow, bx, by, shade1, COUNT(shade1));
    StrokeAt(hdc, g_Skin.hpenHalfShadow, bx, by, shade2, COUNT(shade2));
    PixelsAt(hdc, bDisabled ? g_Skin.clrHalfShadow : g_Skin.clrShadow, bx, by, tip, COUNT(tip));
    PixelsAt(hdc, g_Skin.clrHalfShadow, bx, by, tipShade, COUNT(tipShade));
    HPEN hpenArm = bDisabled ? g_Skin.hpenShadow : g_Skin.hpenDkShadow;
    StrokeAt(hdc, hpenArm, bx, by, arm1, COUNT(arm1));
    StrokeAt(hdc, hpenArm, bx, by, arm2, COUNT(arm2));
}

static void DrawDash(HDC hdc, int bx, int by, BOOL bDisabled)
{
    static const POINT shade[] = { { 4, 7 }, { 10, 7 } };
    static const POINT dot[] = { { 9, 6 } };
    static const POINT bar1[] = { { 3, 5 }, { 9, 5 } };
    static const POINT bar2[] = { { 3, 6 }, { 9, 6 } };

    StrokeAt(hdc, g_Skin.hpenHalfShadow, bx, by, shade, COUNT(shade));
    PixelsAt(hdc, g_Skin.clrHalfShadow, bx, by, dot, COUNT(dot));
    HPEN hpenBar = bDisabled ? g_Skin.hpenShadow : g_Skin.hpenDkShadow;
    StrokeAt(hdc, hpenBar, bx, by, bar1, COUNT(bar1));
    StrokeAt(hdc, hpenBar, bx, by, bar2, COUNT(bar2));
}

void DrawCheckMark(HDC hdc, const RECT *prcMark, UINT itemState, const SKINCONTROL *pControl)
{
    int bx = prcMark->left, by = prcMark->top;
    BOOL bDisabled = (itemState & ODS_DISABLED) != 0;
    HGDIOBJ hOldPen = GetCurrentObject(hdc, OBJ_PEN);

    RECT rcBox = { bx, by, bx + 12, by + 12 };
    HBRUSH hbrOutline = CreateSolidBrush(bDisabled ? g_Skin.clrShadow : GetSysColor(COLOR_WINDOWFRAME));
    FrameRect(hdc, &rcBox, hbrOutline);
    DeleteObject(hbrOutline);

    RECT rcInside = { bx + 1, by + 1, bx + 11, by + 11 };
    if (pControl->bPressed) {
        HBRUSH hbrPressed = CreateSolidBrush(g_Skin.clrHalfShadow);
        FillRect(hdc, &rcInside, hbrPressed);
        DeleteObject(hbrPressed);
        FrameRect3D(hdc, &rcInside, g_Skin.clrShadow, g_Skin.clrLight);
    } else {
        FillRectSolid(hdc, &rcInside, g_Skin.clrFace);
        if (!bDisabled)
            FrameRect3D(hdc, &rcInside, g_Skin.clrHilight, g_Skin.clrShadow);
    }
    /* Where the inner frame's two colours meet. */
    static const POINT meet[] = { { 10, 1 }, { 1, 10 } };
    PixelsAt(hdc, g_Skin.clrFace, bx, by, meet, COUNT(meet));

    if (pControl->nCheck == BST_CHECKED)
        DrawTick(hdc, bx, by, bDisabled);
    else if (pControl->nCheck == BST_INDETERMINATE)
        DrawDash(hdc, bx, by, bDisabled);
    SelectObject(hdc, hOldPen);
}

/* ---- radio button -------------------------------------------------------- */

/* The bead's shading in mark coordinates, before mirroring. */
typedef struct { HPEN SKINPALETTE::*pen; POINT pts[5]; int count; } BEADSTROKE;

static const BEADSTROKE g_BeadStrokes[] = {
    { &SKINPALETTE::hpenLight,      { { 1, 6 }, { 1, 4 }, { 4, 1 }, { 7, 1 } }, 4 },
    { &SKINPALETTE::hpenLight,      { { 2, 8 }, { 9, 1 } }, 2 },
    { &SKINPALETTE::hpenLight,      { { 3, 8 }, { 9, 2 } }, 2 },
    { &SKINPALETTE::hpenLight,      { { 4, 8 }, { 9, 3 } }, 2 },
    { &SKINPALETTE::hpenHilight,    { { 2, 7 }, { 2, 4 }, { 6, 4 } }, 3 },
    { &SKINPALETTE::hpenHilight,    { { 4, 5 }, { 4, 2 }, { 8, 2 } }, 3 },
    { &SKINPALETTE::hpenHalfShadow, { { 6, 9 }, { 10, 5 } }, 2 },
    { &SKINPALETTE::hpenHalfShadow, { { 7, 9 }, { 10, 6 } }, 2 },
    { &SKINPALETTE::hpenShadow,     { { 4, 10 }, { 7, 10 }, { 10, 7 }, { 10, 3 } }, 4 },
};

typedef struct { COLORREF SKINPALETTE::*clr; POINT pt; } BEADPIXEL;

static const BEADPIXEL g_BeadPixels[] = {
    { &SKINPALETTE::clrHilight, { 3, 5 } }, { &SKINPALETTE::clrHilight, { 5, 3 } },
    { &SKINPALETTE::clrFace, { 2, 2 } },
    { &SKINPALETTE::clrLight, { 3, 3 } }, { &SKINPALETTE::clrLight, { 3, 6 } },
    { &SKINPALETTE::clrLight, { 6, 3 } },
};

/* Raised, the light falls on the upper left; sunk in, the same shading is
 * turned through half a circle about the centre. */
static POINT Mirror(POINT pt, BOOL bSunk)
{
    POINT out = { bSunk ? 11 - pt.x : pt.x, bSunk ? 11 - pt.y : pt.y };
    return out;
}

static void DrawBead(HDC hdc, int x, int y, BOOL bSunk)
{
    static const POINT diagonals[4][2] = {
        { { 0, 4 }, { 5, -1 } }, { { 7, 0 }, { 12, 5 } }, { { 11, 7 }, { 6, 12 } }, { { 4, 11 }, { -1, 6 } },
    };
    for (const auto &d : diagonals)
        StrokeAt(hdc, g_Skin.hpenHalfDark, x, y, d, 2);

    for (const auto &s : g_BeadStrokes) {
        POINT pts[5];
        for (int i = 0; i < s.count; i++)
            pts[i] = Mirror(s.pts[i], bSunk);
        StrokeAt(hdc, g_Skin.*s.pen, x, y, pts, s.count);
    }
    for (const auto &p : g_BeadPixels) {
        POINT pt = Mirror(p.pt, bSunk);
        SetPixel(hdc, x + pt.x, y + pt.y, g_Skin.*p.clr);
    }
}

static void DrawRing(HDC hdc, const RECT *prcMark, BOOL bDisabled)
{
    HPEN hpen = CreatePen(PS_SOLID, 1, bDisabled ? g_Skin.clrShadow : GetSysColor(COLOR_WINDOWFRAME));
    HBRUSH hbr = CreateSolidBrush(g_Skin.clrFace);
    HGDIOBJ hOldPen = SelectObject(hdc, hpen);
    HGDIOBJ hOldBrush = SelectObject(hdc, hbr);
    RoundRect(hdc, prcMark->left, prcMark->top, prcMark->right, prcMark->bottom, 10, 10);
    SelectObject(hdc, hOldBrush);
    SelectObject(hdc, hOldPen);
    DeleteObject(hbr);
    DeleteObject(hpen);
}

static void DrawDot(HDC hdc, int x, int y, BOOL bDisabled)
{
    COLORREF clr = bDisabled ? g_Skin.clrShadow : g_Skin.clrDkShadow;
    HPEN hpen = CreatePen(PS_SOLID, 1, clr);
    HBRUSH hbr = CreateSolidBrush(clr);
    HGDIOBJ hOldPen = SelectObject(hdc, hpen);
    HGDIOBJ hOldBrush = SelectObject(hdc, hbr);
    RoundRect(hdc, x + 3, y + 3, x + 9, y + 9, 2, 2);
    SelectObject(hdc, hOldBrush);
    SelectObject(hdc, hOldPen);
    DeleteObject(hbr);
    DeleteObject(hpen);
}

/* Held down, the bead is drawn with the palette darkened; the five colours
 * are put back exactly as they were, not lightened again, so channels that
 * the darkening clipped at 0 are not lost. */
static COLORREF SKINPALETTE::*const g_PressedColours[] = {
    &SKINPALETTE::clrFace, &SKINPALETTE::clrShadow, &SKINPALETTE::clrHilight,
    &SKINPALETTE::clrHalfShadow, &SKINPALETTE::clrLight,
};

void DrawRadioMark(HDC hdc, const RECT *prcMark, UINT itemState, const SKINCONTROL *pControl)
{
    int x = prcMark->left, y = prcMark->top;
    BOOL bDisabled = (itemState & ODS_DISABLED) != 0;
    COLORREF saved[COUNT(g_PressedColours)];
    if (pControl->bPressed) {
        for (int i = 0; i < COUNT(g_PressedColours); i++) {
            saved[i] = g_Skin.*g_PressedColours[i];
            g_Skin.*g_PressedColours[i] = DarkenColor(saved[i], 40);
        }
        RebuildSkinPens();
    }

    HGDIOBJ hOldPen = GetCurrentObject(hdc, OBJ_PEN);
    DrawRing(hdc, prcMark, bDisabled);
    COLORREF clrCorner = g_Skin.clrHalfShadow;
    if (!bDisabled) {
        DrawBead(hdc, x, y, pControl->nCheck || pControl->bPressed);
        SelectObject(hdc, hOldPen);
        clrCorner = g_Skin.clrShadow;
    }
    static const POINT corners[] = {
        { 0, 3 }, { 3, 0 }, { 8, 0 }, { 11, 3 }, { 11, 8 }, { 8, 11 }, { 3, 11 }, { 0, 8 },
    };
    PixelsAt(hdc, clrCorner, x, y, corners, COUNT(corners));
    if (pControl->nCheck)
        DrawDot(hdc, x, y, bDisabled);

    if (pControl->bPressed) {
        for (int i = 0; i < COUNT(g_PressedColours); i++)
            g_Skin.*g_PressedColours[i] = saved[i];
        RebuildSkinPens();
    }
}
