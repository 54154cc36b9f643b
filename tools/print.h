/* Console output of the Wine-hosted tools: UTF-8 bytes, whatever stdout is. */
#ifndef QLR_TOOLS_PRINT_H
#define QLR_TOOLS_PRINT_H

#include <windows.h>

void Print(LPCWSTR pszFormat, ...);

#endif
