/* The core compiled into a test program has no DLL attach: resources are
 * looked up in the test program itself, which has none. */
#include "qlrui.h"

HINSTANCE g_hModule;
