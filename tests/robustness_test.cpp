// Malformed records at every export, each in a buffer of exactly the size
// its header claims, ending against a page the process may not touch: any
// read or write past what the header describes ends the test program.  Each
// call's result and last error are what a record of that layout allows.
#include "driver.h"
#include "guarded.h"
#include <algorithm>

namespace {

size_t Honest(WORD size, WORD extra)
{
    return (size_t)(size < 76 ? 76 : size) + extra;
}

// The version a layout converts by: the one its size names, else its own.
WORD Version(WORD size, WORD version)
{
    return size == 188 ? 0x0320 : size == 212 ? 0x0400 : size == 220 ? 0x0401 : version;
}

// A conversion as "result error needed", the error "-" when the sentinel is
// left alone; and what it must be: done when both layouts have a version and
// anything is copied, else refused with ERROR_INVALID_PARAMETER.
std::string Convert(PDEVMODEW in, PDEVMODEW out, LONG needed, DWORD mode)
{
    PFN_CONVERT convert = TheDriver().ConvertDevMode;
    SetLastError(0xdeadbeef);
    BOOL ok = convert(NULL, in, out, &needed, mode);
    return Outcome(ok, needed);
}

std::string Converts(bool versions, int copied, LONG needed, LONG whole)
{
    return versions && copied > 0 ? "1 - " + std::to_string(whole) : "0 87 " + std::to_string(needed);
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
    const bool versioned = Version(size, version) != 0;
    const int fromOurs = std::min<int>(size, 220) + std::min<int>(extra, 3264);
    const LONG honest = (LONG)Honest(size, extra);
    const std::string layout = std::to_string(size) + "+" + std::to_string(extra) + " v" + std::to_string(version) +
                               " fill " + std::to_string(pattern);
    // A header too short to reach dmFields may also be refused as one without a version.
    auto check = [&](int copied, LONG needed, LONG whole, const std::string &got, const char *what) {
        const std::string refused = Converts(false, 0, needed, whole);
        const std::string want = size < 76 && got == refused ? refused : Converts(versioned, copied, needed, whole);
        EXPECT_EQ(want, got) << layout << what;
    };
    check(fromOurs, 3484, 3484, Convert(in.dm(), ours.dm(), 3484, CDM_CONVERT), "");
    check(fromOurs, honest, size + extra, Convert(ours.dm(), theirs.dm(), honest, CDM_CONVERT), ", back");
    if (!all)
        return;
    const int into351 = std::min<int>(size, 188) + std::min<int>(extra, 3264);
    check(into351, 3452, 3452, Convert(in.dm(), nt.dm(), 3452, CDM_CONVERT351), ", 3.51");
    // DC_FIELDS answers the caller's own fields; the lists have fixed lengths.
    static BYTE out[64 * 41 * 2];
    const struct { WORD cap; DWORD answer; } caps[] = {
        { DC_FIELDS, 0xFFFFFFFF }, { DC_PAPERSIZE, 40 }, { DC_ENUMRESOLUTIONS, 10 }, { DC_PAPERNAMES, 40 },
    };
    for (const auto &c : caps)
        EXPECT_EQ(c.answer, d.DeviceCapabilities(NULL, NULL, c.cap, out, in.dm())) << layout << ", cap " << c.cap;
    // The answer comes in the smaller layout of the caller's and ours.
    size_t cb = (size_t)(size < 220 ? size : 220) + (extra < 3264 ? extra : 3264);
    Guarded answer(cb < 76 ? 76 : cb, 0), whole(3484, 0);
    DOCUMENTPROPERTYHEADER h = { sizeof(h), 0, NULL, (LPWSTR)L"Quillora", in.dm(), answer.dm(), (DWORD)cb,
                                 DM_IN_BUFFER | DM_OUT_BUFFER };
    SetLastError(0xdeadbeef);
    EXPECT_EQ(1, d.DocumentPropertySheets(NULL, (LPARAM)&h)) << layout;
    EXPECT_EQ(1, d.DocumentProperties(NULL, NULL, h.pszPrinterName, whole.dm(), in.dm(), h.fMode)) << layout;
    EXPECT_EQ(0xdeadbeefu, GetLastError()) << layout;
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
