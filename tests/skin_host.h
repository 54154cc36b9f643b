// A real dialog hosting skinned controls; schemes set by SetSysColors reach every wineserver process until restored.
#ifndef QLR_TESTS_SKIN_HOST_H
#define QLR_TESTS_SKIN_HOST_H

#include <windows.h>
#include "pictures.h"

// The host's own control ids; the skin reads no id.
enum { HOST_PUSH = 101, HOST_CHECK, HOST_RADIO, HOST_RADIO2, HOST_GROUP, HOST_GROUP2, HOST_PREVIEW, HOST_PLAIN };

extern const Scheme CLASSIC;
void UseScheme(const Scheme &s);
inline void UseClassicColours() { UseScheme(CLASSIC); }
void RestoreColours();

// A modeless dialog, shown by Create; its controls in the default GUI font.
struct SkinHost {
    HWND hwnd = NULL;
    bool Create();
    HWND AddButton(int id, DWORD style, LPCWSTR text, int w, int h, int x = 0, int y = 0, LPCWSTR cls = L"BUTTON");
    void Destroy() { if (hwnd) DestroyWindow(hwnd); hwnd = NULL; }
    ~SkinHost() { Destroy(); }
    void Show() { ShowWindow(hwnd, SW_SHOW); Pump(); }
    void Pump();
};

#endif
