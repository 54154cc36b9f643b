// A caller's device mode of any layout, in a buffer with room to spare that
// is filled with a pattern, so that writes past the layout show.
#ifndef QLR_TESTS_LAYOUT_H
#define QLR_TESTS_LAYOUT_H

#include <windows.h>
#include "record.h"

struct Layout {
    BYTE bytes[8192];
    DEVMODEW *dm() { return (DEVMODEW *)bytes; }
    QLRDEVMODE *record() { return (QLRDEVMODE *)bytes; }
};

void MakeLayout(Layout *p, WORD size, WORD extra, WORD version, BYTE fill);
bool UntouchedFrom(const Layout &l, size_t from, BYTE fill);

#endif
