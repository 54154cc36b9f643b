// The driver's answers against the platform work they stand on, measured side
// by side in one run: each line is a ratio.  Not a test: it never fails.
#include <windows.h>
#include <winspool.h>
#include <stdio.h>
#include <algorithm>
#include <functional>
#include <vector>
#include "drvapi.h"
#include "record.h"

enum { ROUNDS = 21, CALLS = 300 };

static double Microseconds(const std::function<void()> &work)
{
    LARGE_INTEGER f, a, b;
    QueryPerformanceFrequency(&f);
    QueryPerformanceCounter(&a);
    for (int i = 0; i < CALLS; i++)
        work();
    QueryPerformanceCounter(&b);
    return double(b.QuadPart - a.QuadPart) * 1e6 / f.QuadPart / CALLS;
}

static void Line(const char *what, const std::function<void()> &ours, const std::function<void()> &floor)
{
    std::vector<double> o, p;
    for (int r = 0; r < ROUNDS; r++) {          // alternate, so both share the machine's moods
        o.push_back(Microseconds(ours));
        p.push_back(Microseconds(floor));
    }
    std::sort(o.begin(), o.end());
    std::sort(p.begin(), p.end());
    double mo = o[ROUNDS / 2], mp = p[ROUNDS / 2];
    printf("%-44s %8.2f %12.2f %12.2f\n", what, mo / mp, mo, mp);
}

int main()
{
    WCHAR path[MAX_PATH];
    GetModuleFileNameW(NULL, path, MAX_PATH);
    lstrcpyW(wcsrchr(path, L'\\') + 1, L"QLRDRVUI.DLL");
    HMODULE h = LoadLibraryW(path);
    HANDLE hPrinter;
    if (!h || !OpenPrinterW((LPWSTR)L"Quillora", &hPrinter, NULL)) {
        printf("the module or the printer is missing\n");
        return 1;
    }
    auto caps = (DWORD (WINAPI *)(HANDLE, PWSTR, WORD, VOID *, PDEVMODEW))(void *)GetProcAddress(h, "DrvDeviceCapabilities");
    auto convert = (BOOL (WINAPI *)(LPWSTR, PDEVMODEW, PDEVMODEW, PLONG, DWORD))(void *)GetProcAddress(h, "DrvConvertDevMode");
    auto sheets = (LONG (WINAPI *)(PPROPSHEETUI_INFO, LPARAM))(void *)GetProcAddress(h, "DrvDocumentPropertySheets");

    static BYTE info[16384], out[64 * 41 * 2];
    static QLRDEVMODE in, result;
    auto printerRoundTrip = [&] {
        DWORD cb = 0;
        GetPrinterW(hPrinter, 2, NULL, 0, &cb);
        GetPrinterW(hPrinter, 2, info, cb <= sizeof(info) ? cb : 0, &cb);
    };
    DOCUMENTPROPERTYHEADER hdr = {};
    hdr.cbSize = sizeof(hdr);
    hdr.hPrinter = hPrinter;
    hdr.pdmOut = &result.dmPublic;
    hdr.fMode = DM_OUT_BUFFER;
    sheets(NULL, (LPARAM)&hdr);
    in = result;

    printf("%-44s %8s %12s %12s\n", "measure", "ratio", "ours (us)", "floor (us)");
    Line("DC_PAPERS / GetPrinterW level 2 round trip", [&] { caps(hPrinter, NULL, DC_PAPERS, out, NULL); }, printerRoundTrip);
    Line("DC_PAPERSIZE / GetPrinterW round trip", [&] { caps(hPrinter, NULL, DC_PAPERSIZE, out, NULL); }, printerRoundTrip);
    Line("DC_ENUMRESOLUTIONS / GetPrinterW round trip", [&] { caps(hPrinter, NULL, DC_ENUMRESOLUTIONS, out, NULL); }, printerRoundTrip);
    Line("DocumentProperties in+out / GetPrinterW", [&] {
        hdr.pdmIn = &in.dmPublic;
        hdr.fMode = DM_IN_BUFFER | DM_OUT_BUFFER;
        sheets(NULL, (LPARAM)&hdr);
    }, printerRoundTrip);
    Line("DrvConvertDevMode / 3484-byte copy", [&] {
        LONG needed = QLR_RECORD_SIZE;
        convert(NULL, &in.dmPublic, &result.dmPublic, &needed, CDM_CONVERT);
    }, [&] { memcpy(&result, &in, sizeof(in)); });
    ClosePrinter(hPrinter);
    return 0;
}
