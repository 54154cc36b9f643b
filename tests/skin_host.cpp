#include "skin_host.h"
#include <vector>

// Face 192, shadow 128, dark shadow 0: the mixes halve -64 and -128 exactly.
const Scheme CLASSIC = { "classic", RGB(192, 192, 192), RGB(128, 128, 128), RGB(0, 0, 0), RGB(255, 255, 255),
                         RGB(223, 223, 223), RGB(0, 0, 0), RGB(160, 160, 160), RGB(64, 64, 64), RGB(0, 0, 0) };

static const int g_Indices[] = { COLOR_BTNFACE, COLOR_BTNSHADOW, COLOR_3DDKSHADOW, COLOR_BTNHIGHLIGHT,
                                 COLOR_3DLIGHT, COLOR_WINDOWFRAME, COLOR_BTNTEXT };
// The colours at start, which RestoreColours puts back.
static const std::vector<COLORREF> g_Saved = [] {
    std::vector<COLORREF> colours;
    for (int index : g_Indices)
        colours.push_back(GetSysColor(index));
    return colours;
}();

void UseScheme(const Scheme &s)
{
    const COLORREF colours[] = { s.face, s.shadow, s.dark, s.hilight, s.light, s.frame, s.text };
    SetSysColors(ARRAYSIZE(g_Indices), g_Indices, colours);
}

void RestoreColours() { SetSysColors(ARRAYSIZE(g_Indices), g_Indices, g_Saved.data()); }

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
    Pump();
    return hwnd != NULL;
}

void SkinHost::Pump()
{
    for (MSG msg; PeekMessageW(&msg, NULL, 0, 0, PM_REMOVE);)
        if (!IsDialogMessageW(hwnd, &msg))
            DispatchMessageW(&msg);
}
