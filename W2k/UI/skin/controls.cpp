/*
 * The control list, the attach operations of the button kinds, their subclass
 * procedures and the double-buffered paint they share.
 */
#include "painters.h"

#define CAPTION_CHARS 160

static SKINCONTROL *g_pHead;

SKINCONTROL *GetSkinListHead(void)
{
    return g_pHead;
}

SKINCONTROL *FindSkinControl(HWND hwnd)
{
    for (SKINCONTROL *p = g_pHead; p; p = p->pNext)
        if (p->hwnd == hwnd)
            return p;
    return NULL;
}

static BOOL IsDefaultPushStyle(LONG_PTR style)
{
    return (style & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
}

/* The record is in the list before its procedure can receive a message. */
BOOL AppendSkinControl(HWND hDlg, int id, int nKind, WNDPROC pfnProc)
{
    HWND hwnd = GetDlgItem(hDlg, id);
    if (!hwnd)
        return FALSE;
    SKINCONTROL *pControl = (SKINCONTROL *)LocalAlloc(LPTR, sizeof(SKINCONTROL));
    if (!pControl)
        return FALSE;
    pControl->nKind = nKind;
    pControl->hwnd = hwnd;
    pControl->pfnOldProc = (WNDPROC)GetWindowLongPtrW(hwnd, GWLP_WNDPROC);

    if (!g_pHead) {
        BuildSkinPalette();
        g_pHead = pControl;
    } else {
        SKINCONTROL *pTail = g_pHead;
        while (pTail->pNext)
            pTail = pTail->pNext;
        pTail->pNext = pControl;
        pControl->pPrev = pTail;
    }
    SetWindowLongPtrW(hwnd, GWLP_WNDPROC, (LONG_PTR)pfnProc);
    return TRUE;
}

void RemoveSkinControl(SKINCONTROL *pControl)
{
    if (!pControl || (!pControl->pPrev && g_pHead != pControl))
        return;
    if (pControl->pPrev)
        pControl->pPrev->pNext = pControl->pNext;
    else
        g_pHead = pControl->pNext;
    if (pControl->pNext)
        pControl->pNext->pPrev = pControl->pPrev;
    if (!g_pHead)
        DeleteSkinPens();
    LocalFree(pControl);
}

void RedrawSkinControl(HWND hwnd)
{
    RedrawWindow(hwnd, NULL, NULL, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

void GetMarkRect(const RECT *prc, const SKINCONTROL *pControl, RECT *prcMark)
{
    int h = prc->bottom - prc->top;
    if (pControl->nKind == SKIN_CHECK) {
        prcMark->left = prc->left;
        prcMark->right = prc->left + 14;
    } else {
        prcMark->left = prc->left + 1;
        prcMark->right = prc->left + 13;
    }
    prcMark->top = ((h - 12) >> 1) - 1;
    prcMark->bottom = prcMark->top + 12;
}

static void DrawButtonText(HWND hwnd, HDC hdc, RECT *prcText, LPCWSTR pszCaption,
                           UINT itemState, const SKINCONTROL *pControl)
{
    HFONT hFont = (HFONT)SendMessageW(hwnd, WM_GETFONT, 0, 0);
    HGDIOBJ hOldFont = SelectObject(hdc, hFont);

    SIZE size = { 0, 0 };
    GetTextExtentPoint32W(hdc, pszCaption, lstrlenW(pszCaption), &size);
    int w = prcText->right - prcText->left, h = prcText->bottom - prcText->top;
    if (pControl->nKind == SKIN_PUSH) {
        prcText->left = (w - size.cx) >> 1;
        prcText->top = (h - size.cy) >> 1;
    } else {
        prcText->left = 17;
        prcText->top = ((h - size.cy) >> 1) - 1;
    }
    prcText->right = prcText->left + size.cx;
    prcText->bottom = prcText->top + size.cy;

    /* A caption at rest takes the user's button-text colour, read at each
     * paint.  Under any scheme whose button text is black that is the very
     * black a fresh memory DC draws in; under a dark scheme it stays readable
     * where the fresh DC's black would vanish into the face. */
    COLORREF clrText = GetSysColor(COLOR_BTNTEXT);
    if (itemState & ODS_DISABLED)
        clrText = g_Skin.clrShadow;
    else if (pControl->nKind == SKIN_PUSH && (itemState & ODS_SELECTED))
        clrText = g_Skin.clrHilight;
    SetTextColor(hdc, clrText);
    SetBkMode(hdc, TRANSPARENT);
    DrawTextW(hdc, pszCaption, -1, prcText, DT_CENTER);

    SelectObject(hdc, hOldFont);
}

static void DrawFocus(HDC hdc, const RECT *prc, const RECT *prcText, const SKINCONTROL *pControl)
{
    RECT rcFocus;
    if (pControl->nKind == SKIN_PUSH) {
        rcFocus = *prc;
        InflateRect(&rcFocus, -4, -4);
    } else {
        rcFocus.left = prcText->left - 1 < prc->left ? prc->left : prcText->left - 1;
        rcFocus.top = prcText->top - 1 < prc->top ? prc->top : prcText->top - 1;
        rcFocus.right = prcText->right + 1 > prc->right ? prc->right : prcText->right + 1;
        rcFocus.bottom = prcText->bottom + 2 > prc->bottom ? prc->bottom : prcText->bottom + 2;
    }
    DrawFocusRect(hdc, &rcFocus);
}

/* No attached control carries the flat, push-like, aligned or left-text
 * styles, so the painters read no style: such a control would get the plain
 * look of its kind rather than a half-made variant. */
void DrawSkinItem(HWND hwnd, const DRAWITEMSTRUCT *pdis, SKINCONTROL *pControl)
{
    RECT rc = pdis->rcItem;
    int w = rc.right - rc.left, h = rc.bottom - rc.top;
    HDC hdcMem = CreateCompatibleDC(pdis->hDC);
    HBITMAP hbm = CreateCompatibleBitmap(pdis->hDC, w, h);
    HGDIOBJ hOldBitmap = SelectObject(hdcMem, hbm);
    int nSaved = SaveDC(hdcMem);

    RECT rcLocal = { 0, 0, w, h };
    FillRectSolid(hdcMem, &rcLocal, g_Skin.clrFace);
    if (pControl->nKind == SKIN_PUSH)
        DrawPushFace(hdcMem, &rcLocal, pdis->itemState);

    WCHAR szCaption[CAPTION_CHARS];
    szCaption[0] = 0;
    GetWindowTextW(hwnd, szCaption, CAPTION_CHARS);
    RECT rcText = rcLocal;
    DrawButtonText(hwnd, hdcMem, &rcText, szCaption, pdis->itemState, pControl);
    if (pdis->itemState & ODS_FOCUS)
        DrawFocus(hdcMem, &rcLocal, &rcText, pControl);

    if (pControl->nKind != SKIN_PUSH) {
        RECT rcMark;
        GetMarkRect(&rcLocal, pControl, &rcMark);
        if (pControl->nKind == SKIN_CHECK)
            DrawCheckMark(hdcMem, &rcMark, pdis->itemState, pControl);
        else
            DrawRadioMark(hdcMem, &rcMark, pdis->itemState, pControl);
    }

    BitBlt(pdis->hDC, rc.left, rc.top, w, h, hdcMem, 0, 0, SRCCOPY);
    SelectObject(hdcMem, hOldBitmap);
    RestoreDC(hdcMem, nSaved);
    DeleteDC(hdcMem);
    DeleteObject(hbm);
}

static void PaintSkinControl(HWND hwnd, SKINCONTROL *pControl)
{
    LRESULT state = SendMessageW(hwnd, BM_GETSTATE, 0, 0);
    DRAWITEMSTRUCT dis = {};
    dis.CtlType = ODT_BUTTON;
    dis.CtlID = GetDlgCtrlID(hwnd);
    dis.itemAction = ODA_DRAWENTIRE;
    if (!IsWindowEnabled(hwnd))
        dis.itemState |= ODS_DISABLED;
    if (state & BST_PUSHED)
        dis.itemState |= ODS_SELECTED;
    if (state & BST_FOCUS)
        dis.itemState |= ODS_FOCUS;
    pControl->nCheck = (int)(pControl->nKind == SKIN_PUSH ? state & BST_CHECKED : state & 3);
    GetClientRect(hwnd, &dis.rcItem);

    PAINTSTRUCT ps;
    dis.hDC = BeginPaint(hwnd, &ps);
    DrawSkinItem(hwnd, &dis, pControl);
    EndPaint(hwnd, &ps);
}

/* What both button procedures do alike: find the record, paint, detach at
 * WM_NCDESTROY.  Returns TRUE when the message is answered in *pResult;
 * otherwise *ppControl is the record for the caller to go on with. */
static BOOL HandleCommon(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam,
                         SKINCONTROL **ppControl, LRESULT *pResult)
{
    SKINCONTROL *pControl = FindSkinControl(hwnd);
    *ppControl = pControl;
    *pResult = 0;
    if (!pControl) {
        *pResult = DefWindowProcW(hwnd, msg, wParam, lParam);
        return TRUE;
    }
    if (msg == WM_PAINT)
        PaintSkinControl(hwnd, pControl);
    else if (msg == WM_NCDESTROY)
        RemoveSkinControl(pControl);
    else
        return FALSE;
    return TRUE;
}

static LRESULT CALLBACK SkinButtonProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    SKINCONTROL *pControl;
    LRESULT result;
    if (HandleCommon(hwnd, msg, wParam, lParam, &pControl, &result))
        return result;

    if (msg == BM_SETSTYLE) {
        BOOL bDefault = IsDefaultPushStyle(wParam);
        if (bDefault != pControl->bDefault) {
            pControl->bDefault = bDefault;
            RedrawSkinControl(hwnd);
        }
    }
    result = CallWindowProcW(pControl->pfnOldProc, hwnd, msg, wParam, lParam);
    if (msg == WM_ENABLE || msg == BM_SETSTATE)
        RedrawSkinControl(hwnd);
    return result;
}

static LRESULT CALLBACK SkinCheckProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    SKINCONTROL *pControl;
    LRESULT result;
    if (HandleCommon(hwnd, msg, wParam, lParam, &pControl, &result))
        return result;

    result = CallWindowProcW(pControl->pfnOldProc, hwnd, msg, wParam, lParam);
    if (msg == BM_SETSTATE)
        pControl->bPressed = (INT)wParam;
    if (msg == WM_ENABLE || msg == BM_SETCHECK || msg == BM_SETSTATE)
        RedrawSkinControl(hwnd);
    return result;
}

void AttachPushButton(HWND hDlg, int id)
{
    AppendSkinControl(hDlg, id, SKIN_PUSH, SkinButtonProc);
}

void AttachCheckBox(HWND hDlg, int id)
{
    AppendSkinControl(hDlg, id, SKIN_CHECK, SkinCheckProc);
}

void AttachRadioButton(HWND hDlg, int id)
{
    AppendSkinControl(hDlg, id, SKIN_RADIO, SkinCheckProc);
}

void AttachGroupBox(HWND hDlg, int id)
{
    AppendSkinControl(hDlg, id, SKIN_GROUP, SkinGroupProc);
}
