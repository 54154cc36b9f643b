// Malformed records at every export, each in a buffer of exactly the size
// its header claims, ending against a page the process may not touch: any
// read or write past what the header describes ends the test program.
#include "driver.h"
#include "guarded.h"
#include <stdio.h>
#include <thread>
#include <vector>

namespace {

const WORD g_Sizes[] = { 72, 76, 96, 98, 100, 150, 156, 188, 200, 212, 219, 220, 221, 300, 1000, 4000 };
const WORD g_Extras[] = { 0, 1, 7, 8, 9, 40, 100, 3263, 3264, 3265, 5000 };
const WORD g_Versions[] = { 0, 0x0320, 0x0401 };

// A caller's record of the given layout in an honestly sized buffer.
void Fill(Guarded *g, WORD size, WORD extra, WORD version)
{
    DEVMODEW *dm = g->dm();
    dm->dmSize = size;
    dm->dmDriverExtra = extra;
    dm->dmSpecVersion = version;
    dm->dmFields = 0xFFFFFFFF;
}

size_t Honest(WORD size, WORD extra)
{
    return (size_t)(size < 76 ? 76 : size) + extra;
}

// Conversion of a caller's record into our layout, then back into the
// caller's own layout in a buffer of its honest size.
void ConvertBothWays(const Driver &d, DEVMODEW *in, WORD version)
{
    Guarded ours(QLR_RECORD_SIZE, 0);
    ours.dm()->dmSize = QLR_PUBLIC_SIZE;
    ours.dm()->dmDriverExtra = QLR_PRIVATE_SIZE;
    LONG needed = QLR_RECORD_SIZE;
    d.ConvertDevMode(NULL, in, ours.dm(), &needed, CDM_CONVERT);
    Guarded theirs(Honest(in->dmSize, in->dmDriverExtra), 0);
    Fill(&theirs, in->dmSize, in->dmDriverExtra, version);
    needed = (LONG)Honest(in->dmSize, in->dmDriverExtra);
    d.ConvertDevMode(NULL, ours.dm(), theirs.dm(), &needed, CDM_CONVERT);
}

TEST(Robustness, EveryLayoutAtEveryExport)
{
    const Driver &d = TheDriver();
    ASSERT_NE(nullptr, d.ConvertDevMode);
    int tried = 0;
    for (WORD size : g_Sizes)
        for (WORD extra : g_Extras)
            for (WORD version : g_Versions)
                for (BYTE pattern : { (BYTE)0x00, (BYTE)0x41, (BYTE)0xFF }) {
                    Guarded in(Honest(size, extra), pattern);
                    Fill(&in, size, extra, version);

                    ConvertBothWays(d, in.dm(), version);
                    Guarded nt(3452, 0);
                    LONG needed = 3452;
                    d.ConvertDevMode(NULL, in.dm(), nt.dm(), &needed, CDM_CONVERT351);

                    // Capabilities that build a record from the caller's.
                    static BYTE out[64 * 41 * 2];
                    for (WORD cap : { DC_FIELDS, DC_PAPERSIZE, DC_ENUMRESOLUTIONS, DC_PAPERNAMES })
                        d.DeviceCapabilities(NULL, (PWSTR)L"Quillora", cap, out, in.dm());

                    // Document properties: the answer in the smaller layout.
                    size_t outSize = (size_t)(size < QLR_PUBLIC_SIZE ? size : QLR_PUBLIC_SIZE) +
                                     (extra < QLR_PRIVATE_SIZE ? extra : QLR_PRIVATE_SIZE);
                    Guarded answer(outSize < 76 ? 76 : outSize, 0);
                    DOCUMENTPROPERTYHEADER h = {};
                    h.cbSize = sizeof(h);
                    h.pszPrinterName = (LPWSTR)L"Quillora";
                    h.pdmIn = in.dm();
                    h.pdmOut = answer.dm();
                    h.cbOut = (DWORD)outSize;
                    h.fMode = DM_IN_BUFFER | DM_OUT_BUFFER;
                    d.DocumentPropertySheets(NULL, (LPARAM)&h);

                    // The old entry point answers into a buffer of the size
                    // it gives for a query; the print check ignores records.
                    Guarded whole(QLR_RECORD_SIZE, 0);
                    d.DocumentProperties(NULL, NULL, (LPWSTR)L"Quillora", whole.dm(), in.dm(),
                                         DM_IN_BUFFER | DM_OUT_BUFFER);
                    DEVQUERYPRINT_INFO query = {};
                    query.cbSize = sizeof(query);
                    query.pDevMode = in.dm();
                    d.DevQueryPrintEx(&query);
                    tried++;
                }
    printf("malformed records tried at every export: %d\n", tried);
}

// Conversion both ways for every header size up to well past the largest
// public part, and every private size up to well past ours.
TEST(Robustness, EverySizeAndExtraTheHeaderClaimsInConversion)
{
    const Driver &d = TheDriver();
    ASSERT_NE(nullptr, d.ConvertDevMode);
    auto convert = [&](WORD size, WORD extra, BYTE pattern) {
        Guarded in(Honest(size, extra), pattern);
        Fill(&in, size, extra, 0x0401);
        ConvertBothWays(d, in.dm(), 0x0401);
    };
    int tried = 0;
    for (WORD size = 0; size <= 1100; size++)
        for (WORD extra : { 0, 3264, 5000 })
            for (BYTE pattern : { (BYTE)0x00, (BYTE)0xFF }) {
                convert(size, extra, pattern);
                tried++;
            }
    for (WORD extra = 0; extra <= 3600; extra++)
        for (WORD size : { 76, 188, 220 }) {
            convert(size, extra, 0x41);
            tried++;
        }
    printf("header sizes converted both ways: %d\n", tried);
}

// Eight threads asking with their own records: every answer is whole, never
// a mixture of two callers' settings.
TEST(Concurrency, DirectCallsFromEightThreadsGiveWholeRecords)
{
    const Driver &d = TheDriver();
    std::vector<std::thread> threads;
    int torn[8] = {};
    for (int t = 0; t < 8; t++)
        threads.emplace_back([&, t] {
            QLRDEVMODE in;
            DOCUMENTPROPERTYHEADER h = {};
            h.cbSize = sizeof(h);
            h.pdmOut = (PDEVMODEW)&in;
            h.fMode = DM_OUT_BUFFER;
            d.DocumentPropertySheets(NULL, (LPARAM)&h);
            for (int i = 0; i < 200; i++) {
                in.iOutputFormat = t % 6;
                for (int k = 0; k < QLR_PATH_CHARS - 1; k++)
                    in.szOutputFolder[k] = (WCHAR)(L'a' + t);
                in.szOutputFolder[QLR_PATH_CHARS - 1] = 0;
                QLRDEVMODE out;
                h.pdmIn = (PDEVMODEW)&in;
                h.pdmOut = (PDEVMODEW)&out;
                h.fMode = DM_IN_BUFFER | DM_OUT_BUFFER;
                d.DocumentPropertySheets(NULL, (LPARAM)&h);
                WCHAR c = out.szOutputFolder[0];
                for (int k = 1; k < QLR_PATH_CHARS - 1; k++)
                    if (out.szOutputFolder[k] != c) {
                        torn[t]++;
                        break;
                    }
                if (out.iOutputFormat != (c - L'a') % 6)
                    torn[t]++;
            }
        });
    for (auto &th : threads)
        th.join();
    for (int t = 0; t < 8; t++)
        EXPECT_EQ(0, torn[t]) << "thread " << t;
}

BOOL CALLBACK CountJobWindows(HWND hwnd, LPARAM lParam)
{
    WCHAR cls[16], title[4];
    GetClassNameW(hwnd, cls, 16);
    if (lstrcmpW(cls, L"QLR_UW") == 0 && GetWindowTextW(hwnd, title, 4) == 0)
        ++*(int *)lParam;
    return TRUE;
}

// Two printing threads creating device contexts at once start one window.
TEST(Concurrency, RacingDocumentEventsStartOneJobWindow)
{
    typedef int (WINAPI *PFN_EVENT)(HANDLE, HDC, int, ULONG, PVOID, ULONG, PVOID);
    PFN_EVENT event = (PFN_EVENT)(void *)GetProcAddress(TheDriver().hModule, "DrvDocumentEvent");
    ASSERT_NE(nullptr, event);
    int before = 0;
    EnumWindows(CountJobWindows, (LPARAM)&before);
    ASSERT_EQ(0, before) << "a job window is already on this desktop";
    HANDLE go = CreateEventW(NULL, TRUE, FALSE, NULL);
    int results[2] = {};
    std::thread a([&] { WaitForSingleObject(go, INFINITE); results[0] = event(NULL, NULL, DOCUMENTEVENT_CREATEDCPRE, 0, NULL, 0, NULL); });
    std::thread b([&] { WaitForSingleObject(go, INFINITE); results[1] = event(NULL, NULL, DOCUMENTEVENT_CREATEDCPRE, 0, NULL, 0, NULL); });
    SetEvent(go);
    a.join();
    b.join();
    CloseHandle(go);
    EXPECT_EQ(1, results[0]);
    EXPECT_EQ(1, results[1]);
    int after = 0;
    EnumWindows(CountJobWindows, (LPARAM)&after);
    EXPECT_EQ(1, after);
}

}  // namespace
