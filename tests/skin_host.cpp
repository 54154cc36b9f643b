#include "skin_host.h"
#include "skin/skin.h"

static const int g_Indices[] = {
    COLOR_BTNFACE, COLOR_BTNSHADOW, COLOR_3DDKSHADOW, COLOR_BTNHIGHLIGHT, COLOR_3DLIGHT, COLOR_WINDOWFRAME,
};
static COLORREF g_Saved[ARRAYSIZE(g_Indices)];
static bool g_bSaved;

void SetColour(int index, COLORREF clr)
{
    if (!g_bSaved) {
        for (size_t i = 0; i < ARRAYSIZE(g_Indices); i++)
            g_Saved[i] = GetSysColor(g_Indices[i]);
        g_bSaved = true;
    }
    SetSysColors(1, &index, &clr);
}

void UseClassicColours()
{
    static const COLORREF classic[] = {
        RGB(192, 192, 192), RGB(128, 128, 128), RGB(0, 0, 0), RGB(255, 255, 255), RGB(223, 223, 223), RGB(0, 0, 0),
    };
    for (size_t i = 0; i < ARRAYSIZE(g_Indices); i++)
        SetColour(g_Indices[i], classic[i]);
}

void RestoreColours()
{
    if (g_bSaved)
        SetSysColors(ARRAYSIZE(g_Indices), g_Indices, g_Saved);
}

COLORREF Dib::Pixel(int x, int y) const
{
    if (x < 0 || y < 0 || x >= width || y >= height)
        return CLR_INVALID;
    DWORD v = bits[y * width + x];
    return RGB((v >> 16) & 0xFF, (v >> 8) & 0xFF, v & 0xFF);
}

bool Dib::Contains(const RECT &rc, COLORREF clr) const
{
    for (int y = rc.top; y < rc.bottom; y++)
        for (int x = rc.left; x < rc.right; x++)
            if (Pixel(x, y) == clr)
                return true;
    return false;
}

bool Dib::SameAs(const Dib &other, const RECT &rc) const
{
    for (int y = rc.top; y < rc.bottom; y++)
        for (int x = rc.left; x < rc.right; x++)
            if (Pixel(x, y) != other.Pixel(x, y))
                return false;
    return true;
}

COLORREF ScreenPixel(HWND hwnd, int x, int y)
{
    HDC hdc = GetDC(hwnd);
    COLORREF clr = GetPixel(hdc, x, y);
    ReleaseDC(hwnd, hdc);
    return clr;
}

bool SkinHost::Create()
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = GetModuleHandleW(NULL);
    wc.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    wc.lpszClassName = L"QlrSkinHost";
    RegisterClassW(&wc);
    hwnd = CreateWindowExW(0, L"QlrSkinHost", L"", WS_POPUP, 0, 0, 400, 300, NULL, NULL,
                           wc.hInstance, NULL);
    hFont = (HFONT)GetStockObject(DEFAULT_GUI_FONT);
    return hwnd != NULL;
}

void SkinHost::Destroy()
{
    if (hwnd)
        DestroyWindow(hwnd);
    hwnd = NULL;
}

HWND SkinHost::AddButton(int id, DWORD style, LPCWSTR text, int w, int h, int x, int y)
{
    HWND h2 = CreateWindowExW(0, L"BUTTON", text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, hwnd,
                              (HMENU)(INT_PTR)id, GetModuleHandleW(NULL), NULL);
    SendMessageW(h2, WM_SETFONT, (WPARAM)hFont, FALSE);
    return h2;
}

HWND SkinHost::AddStatic(int id, int w, int h)
{
    return CreateWindowExW(0, L"STATIC", L"Preview", WS_CHILD | WS_VISIBLE, 0, 0, w, h, hwnd,
                           (HMENU)(INT_PTR)id, GetModuleHandleW(NULL), NULL);
}

void SkinHost::Show()
{
    ShowWindow(hwnd, SW_SHOWNOACTIVATE);
    RedrawWindow(hwnd, NULL, NULL, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    MSG msg;
    while (PeekMessageW(&msg, NULL, 0, 0, PM_REMOVE))
        DispatchMessageW(&msg);
}

Dib SkinHost::RenderMark(int id, UINT itemState, int nCheck)
{
    HWND control = GetDlgItem(hwnd, id);
    SKINCONTROL *pControl = FindSkinControl(control);
    pControl->nCheck = nCheck;
    RECT rc;
    GetClientRect(control, &rc);
    return DrawToDib(rc.right, rc.bottom, [&](HDC hdc) {
        DRAWITEMSTRUCT dis = {};
        dis.CtlType = ODT_BUTTON;
        dis.CtlID = id;
        dis.itemAction = ODA_DRAWENTIRE;
        dis.itemState = itemState;
        dis.hDC = hdc;
        dis.rcItem = rc;
        DrawSkinItem(control, &dis, pControl);
    });
}

Dib SkinHost::Render(int id, UINT itemState)
{
    return RenderMark(id, itemState, 0);
}

SIZE SkinHost::TextSize(LPCWSTR text)
{
    HDC hdc = GetDC(hwnd);
    HGDIOBJ hOld = SelectObject(hdc, hFont);
    SIZE size = {};
    GetTextExtentPoint32W(hdc, text, lstrlenW(text), &size);
    SelectObject(hdc, hOld);
    ReleaseDC(hwnd, hdc);
    return size;
}

bool SkinHost::ScreenContains(HWND control, const RECT &rc, COLORREF clr)
{
    for (int y = rc.top; y < rc.bottom; y++)
        for (int x = rc.left; x < rc.right; x++)
            if (ScreenPixel(control, x, y) == clr)
                return true;
    return false;
}
