#include "skin_host.h"
#include "skin/skin.h"

// Face 192, shadow 128, dark shadow 0: the mixes halve -64 and -128 exactly.
const Scheme CLASSIC = { "classic", RGB(192, 192, 192), RGB(128, 128, 128), RGB(0, 0, 0), RGB(255, 255, 255),
                         RGB(223, 223, 223), RGB(0, 0, 0), RGB(160, 160, 160), RGB(64, 64, 64), RGB(0, 0, 0) };

static const int g_Indices[] = { COLOR_BTNFACE, COLOR_BTNSHADOW, COLOR_3DDKSHADOW, COLOR_BTNHIGHLIGHT,
                                 COLOR_3DLIGHT, COLOR_WINDOWFRAME, COLOR_BTNTEXT };
static const COLORREF g_Saved[] = { GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_BTNSHADOW),    // at start
                                    GetSysColor(COLOR_3DDKSHADOW), GetSysColor(COLOR_BTNHIGHLIGHT),
                                    GetSysColor(COLOR_3DLIGHT), GetSysColor(COLOR_WINDOWFRAME),
                                    GetSysColor(COLOR_BTNTEXT) };

void UseScheme(const Scheme &s)
{
    const COLORREF colours[] = { s.face, s.shadow, s.dark, s.hilight, s.light, s.frame, s.text };
    SetSysColors(ARRAYSIZE(g_Indices), g_Indices, colours);
}

void RestoreColours() { SetSysColors(ARRAYSIZE(g_Indices), g_Indices, g_Saved); }

HWND SkinHost::Add(const Item &i)
{
    HWND c = CreateWindowExW(0, i.attach == AttachPagePreview ? L"STATIC" : L"BUTTON", i.text,
                             WS_CHILD | WS_VISIBLE | i.style, i.x, i.y, i.w, i.h, hwnd, (HMENU)(INT_PTR)i.id,
                             GetModuleHandleW(NULL), NULL);
    SendMessageW(c, WM_SETFONT, (WPARAM)GetStockObject(DEFAULT_GUI_FONT), FALSE);
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
    for (const SkinHost::Item &i : host->items)
        host->Add(i);
    return TRUE;    // the dialog manager focuses the first tab stop
}

bool SkinHost::Create()
{
    alignas(4) static const struct { DLGTEMPLATE t; WORD menu, cls, title; } tmpl = {
        { WS_POPUP | WS_VISIBLE, 0, 0, 0, 0, 320, 240 }, 0, 0, 0 };
    bool ok = CreateDialogIndirectParamW(GetModuleHandleW(NULL), &tmpl.t, NULL, HostProc, (LPARAM)this) != NULL;
    Pump();
    return ok;
}

void SkinHost::Pump()
{
    for (MSG msg; PeekMessageW(&msg, NULL, 0, 0, PM_REMOVE);)
        if (!IsDialogMessageW(hwnd, &msg))
            DispatchMessageW(&msg);
}
