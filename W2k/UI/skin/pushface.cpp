/*
 * The push-button face: a rounded outline filled with the face colour,
 * bevelled out at rest and in while held down.  Every point is anchored to a
 * corner of the button, so the tables read as the bevel looks.
 */
#include "painters.h"

/* A point relative to the left or right edge and the top or bottom edge. */
typedef struct { BYTE fromRight, fromBottom; signed char dx, dy; } ANCHORED;

#define LT(dx, dy) { 0, 0, dx, dy }
#define RT(dx, dy) { 1, 0, dx, dy }
#define LB(dx, dy) { 0, 1, dx, dy }
#define RB(dx, dy) { 1, 1, dx, dy }
#define COUNT(a)   ((int)(sizeof(a) / sizeof((a)[0])))

#define MAX_POINTS 8

static void Resolve(const RECT *prc, const ANCHORED *pa, int count, POINT *ppt)
{
    for (int i = 0; i < count; i++) {
        ppt[i].x = (pa[i].fromRight ? prc->right : prc->left) + pa[i].dx;
        ppt[i].y = (pa[i].fromBottom ? prc->bottom : prc->top) + pa[i].dy;
    }
}

static void Stroke(HDC hdc, const RECT *prc, HPEN hpen, const ANCHORED *pa, int count)
{
    POINT pts[MAX_POINTS];
    Resolve(prc, pa, count, pts);
    DrawStroke(hdc, hpen, pts, count);
}

static void Pixels(HDC hdc, const RECT *prc, COLORREF clr, const ANCHORED *pa, int count)
{
    POINT pts[MAX_POINTS];
    Resolve(prc, pa, count, pts);
    SetPixels(hdc, clr, pts, count);
}

/* The eight pixels that soften the outline's rounded corners in both looks. */
static const ANCHORED g_Corners[] = {
    LT(0, 2), LT(2, 0), RT(-3, 0), RT(-1, 2), RB(-1, -3), RB(-3, -1), LB(2, -1), LB(0, -3),
};

static void DrawRaisedBevel(HDC hdc, const RECT *prc)
{
    static const ANCHORED hilight[] = { LB(2, -4), LT(2, 2), RT(-3, 2) };
    static const ANCHORED hilightDot[] = { LT(3, 3) };
    static const ANCHORED halfShadow[] = { LB(3, -3), RB(-4, -3), RB(-4, -4), RB(-3, -4), RT(-3, 2) };
    static const ANCHORED shadow[] = { LB(3, -2), RB(-3, -2), RB(-3, -3), RB(-2, -3), RT(-2, 2) };
    static const ANCHORED halfShadowDots[] = {
        LT(1, 2), LT(2, 1), RT(-3, 1), RT(-2, 2), LB(2, -2), LB(1, -3),
    };

    RoundRect(hdc, prc->left, prc->top, prc->right, prc->bottom, 6, 6);
    Stroke(hdc, prc, g_Skin.hpenHilight, hilight, COUNT(hilight));
    Pixels(hdc, prc, g_Skin.clrHilight, hilightDot, COUNT(hilightDot));
    Stroke(hdc, prc, g_Skin.hpenHalfShadow, halfShadow, COUNT(halfShadow));
    Stroke(hdc, prc, g_Skin.hpenShadow, shadow, COUNT(shadow));
    Pixels(hdc, prc, g_Skin.clrHalfDark, g_Corners, COUNT(g_Corners));
    Pixels(hdc, prc, g_Skin.clrHalfShadow, halfShadowDots, COUNT(halfShadowDots));
    Pixels(hdc, prc, g_Skin.clrHalfDark, g_Corners, COUNT(g_Corners));
}

static void DrawSunkenBevel(HDC hdc, const RECT *prc)
{
    static const ANCHORED halfDark[] = { LB(1, -4), LT(1, 2), LT(2, 2), LT(2, 1), RT(-3, 1) };
    static const ANCHORED shadow[] = { LB(2, -4), LT(2, 3), LT(3, 3), LT(3, 2), RT(-3, 2) };
    static const ANCHORED light[] = { LB(3, -2), RB(-4, -2), RB(-2, -4), RT(-2, 2) };
    static const ANCHORED face[] = { LB(3, -3), RB(-4, -3), RB(-4, -4), RB(-3, -4), RT(-3, 2) };
    static const ANCHORED faceDots[] = { RT(-2, 2), LB(2, -2) };
    static const ANCHORED shadowDots[] = { RT(-3, 1), LB(1, -3) };

    RoundRect(hdc, prc->left, prc->top, prc->right, prc->bottom, 6, 6);
    Stroke(hdc, prc, g_Skin.hpenHalfDark, halfDark, COUNT(halfDark));
    Stroke(hdc, prc, g_Skin.hpenShadow, shadow, COUNT(shadow));
    Stroke(hdc, prc, g_Skin.hpenLight, light, COUNT(light));
    Stroke(hdc, prc, g_Skin.hpenFace, face, COUNT(face));
    Pixels(hdc, prc, g_Skin.clrFace, faceDots, COUNT(faceDots));
    Pixels(hdc, prc, g_Skin.clrShadow, shadowDots, COUNT(shadowDots));
    Pixels(hdc, prc, g_Skin.clrHalfDark, g_Corners, COUNT(g_Corners));
}

/* The default button's face is that of any other; only its caption differs. */
void DrawPushFace(HDC hdc, const RECT *prc, UINT itemState)
{
    BOOL bPressed = (itemState & ODS_SELECTED) != 0;
    HBRUSH hbr = CreateSolidBrush(bPressed ? g_Skin.clrHalfShadow : g_Skin.clrFace);
    HPEN hpenOutline = CreatePen(PS_SOLID, 1, GetSysColor(COLOR_WINDOWFRAME));
    HGDIOBJ hOldBrush = SelectObject(hdc, hbr);
    HGDIOBJ hOldPen = SelectObject(hdc, hpenOutline);

    if (itemState & ODS_DISABLED)
        RoundRect(hdc, prc->left, prc->top, prc->right, prc->bottom, 6, 6);
    else if (bPressed)
        DrawSunkenBevel(hdc, prc);
    else
        DrawRaisedBevel(hdc, prc);

    SelectObject(hdc, hOldPen);
    SelectObject(hdc, hOldBrush);
    DeleteObject(hpenOutline);
    DeleteObject(hbr);
}
