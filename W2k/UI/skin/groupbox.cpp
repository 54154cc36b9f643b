/*
 * The group box: a thin shadow-coloured frame whose corners step in by single
 * pixels, with the caption set into a gap of its top line.  Painted straight
 * onto the paint DC; the interior is left to the previous procedure's erase.
 */
#include "painters.h"

#define GROUP_CAPTION_CHARS 128

static void PaintGroupBox(HWND hwnd)
{
    RECT rc;
    GetClientRect(hwnd, &rc);
    PAINTSTRUCT ps;
    HDC hdc = BeginPaint(hwnd, &ps);

    WCHAR szCaption[GROUP_CAPTION_CHARS];
    szCaption[0] = 0;
    GetWindowTextW(hwnd, szCaption, GROUP_CAPTION_CHARS);
    HGDIOBJ hOldFont = SelectObject(hdc, (HFONT)SendMessageW(hwnd, WM_GETFONT, 0, 0));
    SIZE size = { 0, 0 };
    GetTextExtentPoint32W(hdc, szCaption, lstrlenW(szCaption), &size);

    int R = rc.right, B = rc.bottom;
    int y = rc.top + size.cy / 2;
    int gapEnd = size.cx + 14 < R - 10 ? size.cx + 14 : R - 10;
    /* Right and bottom lie on the values GetClientRect returns. */
    const POINT frame[22] = {
        { 6, y },      { 2, y },      { 2, y + 1 },  { 1, y + 1 },  { 1, y + 2 },  { 0, y + 2 },
        { 0, B - 2 },  { 1, B - 2 },  { 1, B - 1 },  { 2, B - 1 },  { 2, B },      { R - 2, B },
        { R - 2, B - 1 }, { R - 1, B - 1 }, { R - 1, B - 2 }, { R, B - 2 }, { R, y + 2 },
        { R - 1, y + 2 }, { R - 1, y + 1 }, { R - 2, y + 1 }, { R - 2, y }, { gapEnd, y },
    };
    HGDIOBJ hOldPen = SelectObject(hdc, g_Skin.hpenShadow);
    Polyline(hdc, frame, 22);

    RECT rcCaption = { 10, 0, size.cx + 10 < gapEnd - 4 ? size.cx + 10 : gapEnd - 4, size.cy };
    /* The paint DC's default text colour is black whatever the user chose;
     * the caption follows the button-text colour as the buttons' do. */
    SetTextColor(hdc, GetSysColor(COLOR_BTNTEXT));
    SetBkMode(hdc, TRANSPARENT);
    DrawTextW(hdc, szCaption, -1, &rcCaption, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);

    SelectObject(hdc, hOldPen);
    SelectObject(hdc, hOldFont);
    EndPaint(hwnd, &ps);
}

LRESULT CALLBACK SkinGroupProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    SKINCONTROL *pControl = FindSkinControl(hwnd);
    if (!pControl)
        return DefWindowProcW(hwnd, msg, wParam, lParam);
    switch (msg) {
    case WM_PAINT:
        PaintGroupBox(hwnd);
        return 0;
    case WM_NCDESTROY:
        RemoveSkinControl(pControl);
        return 0;
    }
    return CallWindowProcW(pControl->pfnOldProc, hwnd, msg, wParam, lParam);
}
