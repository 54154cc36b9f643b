/* Console output of the command-line programs: UTF-8, whatever stdout is. */
#ifndef QLR_ADMIN_CONSOLE_H
#define QLR_ADMIN_CONSOLE_H

#include <windows.h>

void Print(LPCWSTR pszFormat, ...);

#endif
