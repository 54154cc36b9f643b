// Malformed records at every export, each in a buffer of exactly the size
// its header claims, ending against a page the process may not touch: any
// read or write past what the header describes ends the test program.
#include "driver.h"
#include "guarded.h"

namespace {

size_t Honest(WORD size, WORD extra)
{
    return (size_t)(size < 76 ? 76 : size) + extra;
}

// A caller's record of the given layout, converted into ours, back into its
// own, and handed to every export that reads a caller's record.
void EveryExport(WORD size, WORD extra, WORD version, BYTE pattern, bool all)
{
    const Driver &d = TheDriver();
    Guarded in(Honest(size, extra), pattern), ours(3484, 0), theirs(Honest(size, extra), 0), nt(3452, 0);
    for (DEVMODEW *dm : { in.dm(), theirs.dm() }) {
        dm->dmSize = size;
        dm->dmDriverExtra = extra;
        dm->dmSpecVersion = version;
    }
    in.dm()->dmFields = 0xFFFFFFFF;
    ours.dm()->dmSize = 220;
    ours.dm()->dmDriverExtra = 3264;
    LONG needed = 3484;
    d.ConvertDevMode(NULL, in.dm(), ours.dm(), &needed, CDM_CONVERT);
    needed = (LONG)Honest(size, extra);
    d.ConvertDevMode(NULL, ours.dm(), theirs.dm(), &needed, CDM_CONVERT);
    if (!all)
        return;
    needed = 3452;
    d.ConvertDevMode(NULL, in.dm(), nt.dm(), &needed, CDM_CONVERT351);
    static BYTE out[64 * 41 * 2];
    for (WORD cap : { DC_FIELDS, DC_PAPERSIZE, DC_ENUMRESOLUTIONS, DC_PAPERNAMES })
        d.DeviceCapabilities(NULL, NULL, cap, out, in.dm());
    // The answer comes in the smaller layout of the caller's and ours.
    size_t cb = (size_t)(size < 220 ? size : 220) + (extra < 3264 ? extra : 3264);
    Guarded answer(cb < 76 ? 76 : cb, 0), whole(3484, 0);
    DOCUMENTPROPERTYHEADER h = { sizeof(h), 0, NULL, (LPWSTR)L"Quillora", in.dm(), answer.dm(), (DWORD)cb,
                                 DM_IN_BUFFER | DM_OUT_BUFFER };
    d.DocumentPropertySheets(NULL, (LPARAM)&h);
    d.DocumentProperties(NULL, NULL, (LPWSTR)L"Quillora", whole.dm(), in.dm(), DM_IN_BUFFER | DM_OUT_BUFFER);
}

TEST(Robustness, EveryLayoutAtEveryExport)
{
    for (WORD size : { 72, 76, 96, 98, 150, 188, 200, 212, 219, 220, 221, 300, 1000, 4000 })
        for (WORD extra : { 0, 1, 8, 9, 40, 3263, 3264, 3265, 5000 })
            for (WORD version : { 0, 0x0320, 0x0401 })
                for (BYTE pattern : { 0x00, 0x41, 0xFF })
                    EveryExport(size, extra, version, pattern, true);
    // Conversion for every header size up to well past the largest public
    // part, and every private size up to well past ours.
    for (WORD size = 0; size <= 1100; size++)
        for (WORD extra : { 0, 3264, 5000 })
            EveryExport(size, extra, 0x0401, 0xFF, false);
    for (WORD extra = 0; extra <= 3600; extra++)
        for (WORD size : { 76, 188, 220 })
            EveryExport(size, extra, 0x0401, 0x41, false);
}

}  // namespace
