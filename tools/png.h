/* A PNG file from 32-bit top-down pixels (0x00RRGGBB), for screenshots. */
#ifndef QLR_TOOLS_PNG_H
#define QLR_TOOLS_PNG_H

#include <windows.h>

BOOL WritePng(LPCWSTR pszPath, const DWORD *pPixels, int width, int height);

#endif
