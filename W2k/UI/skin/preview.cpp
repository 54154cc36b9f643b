/*
 * The paper preview: a white sheet with a black outline and a drop shadow,
 * scaled to the control and turned for landscape, with rows of mock text.
 * With cropping on only the block the text covers is white.
 */
#include "painters.h"

typedef struct _PREVIEW {
    DWORD nPaperWidth;      /* any unit: only the ratio counts */
    DWORD nPaperHeight;
    INT bCrop;
    INT bLandscape;
    WNDPROC pfnOldProc;
    HWND hwnd;
} PREVIEW;

#define PREVIEW_INSET 5

/* Line lengths in percent of the text width; 0 is a gap between paragraphs. */
static const int g_MockText[] = { 70, 50, 30, 0, 70, 70, 60, 40, 0, 70, 50, 30, 0, 70, 70, 60, 40 };
#define MOCK_ROWS     ((int)(sizeof(g_MockText) / sizeof(g_MockText[0])))
#define MOCK_WIDEST   70
#define MOCK_HEIGHT   (MOCK_ROWS * 4 - 2)

/* One scale for both orientations, so turning the sheet keeps its size. */
void FitPageToArea(int aw, int ah, DWORD nPaperWidth, DWORD nPaperHeight, BOOL bLandscape,
                   int *ppw, int *pph)
{
    double W = nPaperWidth, H = nPaperHeight;
    double s = aw / W;
    if (ah / H < s) s = ah / H;
    if (aw / H < s) s = aw / H;
    if (ah / W < s) s = ah / W;
    double w = bLandscape ? H : W, h = bLandscape ? W : H;
    *ppw = (int)(w * s);
    *pph = (int)(h * s);
}

static void DrawMockText(HDC hdc, const RECT *prcSheet)
{
    RECT rcText = *prcSheet;
    InflateRect(&rcText, -PREVIEW_INSET, -PREVIEW_INSET);
    int tw = rcText.right - rcText.left;
    int y = rcText.top + 1;
    for (int i = 0; i < MOCK_ROWS && y + 2 < rcText.bottom; i++, y += 4) {
        if (!g_MockText[i])
            continue;
        int len = MulDiv(tw, g_MockText[i], 100);
        MoveToEx(hdc, rcText.left, y - 1, NULL);
        LineTo(hdc, rcText.left + len, y - 1);
        MoveToEx(hdc, rcText.left, y, NULL);
        LineTo(hdc, rcText.left + len, y);
    }
}

static void PaintPagePreview(HWND hwnd, const PREVIEW *pPreview)
{
    HPEN hpenBlack = CreatePen(PS_SOLID, 1, RGB(0, 0, 0));
    HPEN hpenShadow = CreatePen(PS_SOLID, 1, GetSysColor(COLOR_BTNSHADOW));
    PAINTSTRUCT ps;
    HDC hdc = BeginPaint(hwnd, &ps);

    RECT area;
    GetClientRect(hwnd, &area);
    InflateRect(&area, -PREVIEW_INSET, -PREVIEW_INSET);
    int aw = area.right - area.left, ah = area.bottom - area.top;
    int pw, ph;
    FitPageToArea(aw, ah, pPreview->nPaperWidth, pPreview->nPaperHeight, pPreview->bLandscape, &pw, &ph);
    RECT sheet;
    sheet.left = area.left + (aw - pw) / 2;
    sheet.top = area.top + (ah - ph) / 2;
    sheet.right = sheet.left + pw;
    sheet.bottom = sheet.top + ph;

    HGDIOBJ hOldPen = SelectObject(hdc, hpenShadow);
    MoveToEx(hdc, sheet.left + 1, sheet.bottom + 1, NULL);
    LineTo(hdc, sheet.right + 1, sheet.bottom + 1);
    LineTo(hdc, sheet.right + 1, sheet.top);
    SelectObject(hdc, hpenBlack);
    MoveToEx(hdc, sheet.left, sheet.top, NULL);
    LineTo(hdc, sheet.right, sheet.top);
    LineTo(hdc, sheet.right, sheet.bottom);
    LineTo(hdc, sheet.left, sheet.bottom);
    LineTo(hdc, sheet.left, sheet.top);

    sheet.left++;
    sheet.top++;
    RECT white = sheet;
    if (pPreview->bCrop) {
        InflateRect(&white, -PREVIEW_INSET, -PREVIEW_INSET);
        int height = white.bottom - white.top;
        white.right = white.left + MulDiv(white.right - white.left, MOCK_WIDEST, 100);
        white.bottom = white.top + (height < MOCK_HEIGHT ? height : MOCK_HEIGHT);
    }
    FillRectSolid(hdc, &white, RGB(255, 255, 255));
    DrawMockText(hdc, &sheet);

    SelectObject(hdc, hOldPen);
    DeleteObject(hpenBlack);
    DeleteObject(hpenShadow);
    EndPaint(hwnd, &ps);
}

static LRESULT CALLBACK PagePreviewProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    PREVIEW *pPreview = (PREVIEW *)GetWindowLongPtrW(hwnd, GWLP_USERDATA);
    if (!pPreview)
        return DefWindowProcW(hwnd, msg, wParam, lParam);
    switch (msg) {
    case WM_PAINT:
        PaintPagePreview(hwnd, pPreview);
        return 0;
    case WM_ERASEBKGND: {
        RECT rc;
        GetClientRect(hwnd, &rc);
        FillRectSolid((HDC)wParam, &rc, GetSysColor(COLOR_BTNFACE));
        return 1;
    }
    case WM_NCDESTROY:
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
        LocalFree(pPreview);
        return 0;
    case PVM_SETPAPER:
        pPreview->nPaperWidth = (DWORD)wParam;
        pPreview->nPaperHeight = (DWORD)lParam;
        RedrawSkinControl(hwnd);
        return 0;
    case PVM_SETORIENTATION:
        pPreview->bLandscape = (INT)wParam;
        if (lParam)
            RedrawSkinControl(hwnd);
        return 0;
    case PVM_SETCROP:
        pPreview->bCrop = (INT)wParam;
        if (lParam)
            RedrawSkinControl(hwnd);
        return 0;
    }
    return CallWindowProcW(pPreview->pfnOldProc, hwnd, msg, wParam, lParam);
}

void AttachPagePreview(HWND hDlg, int id)
{
    HWND hwnd = GetDlgItem(hDlg, id);
    if (!hwnd)
        return;
    PREVIEW *pPreview = (PREVIEW *)LocalAlloc(LPTR, sizeof(PREVIEW));
    if (!pPreview)
        return;
    pPreview->nPaperWidth = 2100;      /* A4 in tenths of a millimetre */
    pPreview->nPaperHeight = 2970;
    pPreview->hwnd = hwnd;
    pPreview->pfnOldProc = (WNDPROC)GetWindowLongPtrW(hwnd, GWLP_WNDPROC);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, (LONG_PTR)pPreview);
    SetWindowLongPtrW(hwnd, GWLP_WNDPROC, (LONG_PTR)PagePreviewProc);
}
