/*
 * What the painters share and nobody outside this folder sees: the palette,
 * the list of attached controls, and the drawing helpers.
 */
#ifndef QLR_SKIN_PAINTERS_H
#define QLR_SKIN_PAINTERS_H

#include "skin.h"

typedef struct _SKINPALETTE {
    COLORREF clrFace, clrShadow, clrHilight, clrDkShadow, clrLight, clrHalfShadow, clrHalfDark;
    HPEN hpenFace, hpenShadow, hpenHilight, hpenDkShadow, hpenLight, hpenHalfShadow, hpenHalfDark;
} SKINPALETTE;

/* Built at the first attach, its pens deleted after the last listed control. */
extern SKINPALETTE g_Skin;

enum SkinKind { SKIN_PUSH = 0, SKIN_CHECK = 1, SKIN_RADIO = 2, SKIN_GROUP = 4 };

typedef struct _SKINCONTROL {
    INT bPressed;       /* last BM_SETSTATE of a check box or radio button */
    INT nKind;
    INT nCheck;         /* captured at each paint */
    INT bDefault;       /* last BM_SETSTYLE's BS_DEFPUSHBUTTON, only to repaint on a
                         * change: the default button looks like every other */
    INT nMarkStyle;     /* 0: the tick */
    WNDPROC pfnOldProc;
    HWND hwnd;
    struct _SKINCONTROL *pNext, *pPrev;
} SKINCONTROL;

/* palette.cpp */
void BuildSkinPalette(void);
void RebuildSkinPens(void);
void DeleteSkinPens(void);
COLORREF DarkenColor(COLORREF clr, int n);
COLORREF LightenColor(COLORREF clr, int n);
void FillRectSolid(HDC hdc, const RECT *prc, COLORREF clr);
void FrameRect3D(HDC hdc, const RECT *prc, COLORREF clrTopLeft, COLORREF clrBottomRight);

/* controls.cpp */
SKINCONTROL *FindSkinControl(HWND hwnd);
BOOL AppendSkinControl(HWND hDlg, int id, int nKind, WNDPROC pfnProc);
void RemoveSkinControl(SKINCONTROL *pControl);
SKINCONTROL *GetSkinListHead(void);
void RedrawSkinControl(HWND hwnd);
void DrawSkinItem(HWND hwnd, const DRAWITEMSTRUCT *pdis, SKINCONTROL *pControl);
void GetMarkRect(const RECT *prc, const SKINCONTROL *pControl, RECT *prcMark);

/* Strokes: a chain of points joined by MoveToEx/LineTo, each segment stopping
 * one pixel short of its end, as GDI draws them. */
void DrawStroke(HDC hdc, HPEN hpen, const POINT *ppt, int count);
void SetPixels(HDC hdc, COLORREF clr, const POINT *ppt, int count);

/* pushface.cpp, marks.cpp */
void DrawPushFace(HDC hdc, const RECT *prc, UINT itemState);
void DrawCheckMark(HDC hdc, const RECT *prcMark, UINT itemState, const SKINCONTROL *pControl);
void DrawRadioMark(HDC hdc, const RECT *prcMark, UINT itemState, const SKINCONTROL *pControl);

/* groupbox.cpp, preview.cpp */
LRESULT CALLBACK SkinGroupProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
void FitPageToArea(int aw, int ah, DWORD nPaperWidth, DWORD nPaperHeight, BOOL bLandscape,
                   int *ppw, int *pph);

#endif
