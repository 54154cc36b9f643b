#include "layout.h"
#include <string.h>

void MakeLayout(Layout *p, WORD size, WORD extra, WORD version, BYTE fill)
{
    memset(p->bytes, fill, sizeof(p->bytes));
    p->dm()->dmSize = size;
    p->dm()->dmDriverExtra = extra;
    p->dm()->dmSpecVersion = version;
}

bool UntouchedFrom(const Layout &l, size_t from, BYTE fill)
{
    for (size_t i = from; i < sizeof(l.bytes); i++)
        if (l.bytes[i] != fill)
            return false;
    return true;
}
