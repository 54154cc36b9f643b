// The installed printer "Quillora" as applications meet it: winspool loads
// the module from the spooler's driver folder, and the printer's own record
// is the layer between the factory record and the caller's.
#include "driver.h"
#include "model.h"

namespace {

#define PRINTER L"Quillora"

// The printer's level-2 information, by the two-call protocol; with a record
// given, that record is stored as the printer's own.
bool PrinterRecord(HANDLE hPrinter, Bytes *saved, const BYTE *store)
{
    DWORD cb = 0;
    GetPrinterW(hPrinter, 2, NULL, 0, &cb);
    std::vector<BYTE> buffer(cb);
    PRINTER_INFO_2W *info = (PRINTER_INFO_2W *)buffer.data();
    if (!cb || !GetPrinterW(hPrinter, 2, buffer.data(), cb, &cb) || !info->pDevMode)
        return false;
    saved->assign((BYTE *)info->pDevMode, (BYTE *)info->pDevMode + 3484);
    info->pDevMode = (DEVMODEW *)store;
    info->pSecurityDescriptor = NULL;
    return !store || SetPrinterW(hPrinter, 2, buffer.data(), 0);
}

TEST(Spooler, ThePrintersRecordIsTheMiddleLayer)
{
    HANDLE hPrinter;
    ASSERT_TRUE(OpenPrinterW((LPWSTR)PRINTER, &hPrinter, NULL)) << "printer not installed: " << GetLastError();
    Bytes printer = Factory(), saved, work = Factory();
    const Puts landscapeA3 = { { 76, 2, 2 }, { 78, 2, 8 }, { 90, 2, 600 }, { 96, 2, 600 }, { 260, 4, 3 },
                               { 896, 260, 0, L"&[Page]-printer" } };
    Apply(printer.data(), landscapeA3);
    Apply(work.data(), landscapeA3);
    Apply(work.data(), { { 72, 4, 0x1FC03 }, { 80, 2, 4200 }, { 82, 2, 2970 }, { 102, 32, 0, L"A3" },
                         { 228, 4, 13 }, { 232, 4, 1 }, { 236, 4, 600 } });
    ASSERT_TRUE(PrinterRecord(hPrinter, &saved, printer.data())) << GetLastError();

    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    EXPECT_EQ(3484, DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, NULL, NULL, 0));
    EXPECT_EQ(IDOK, DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, out.dm(), NULL, DM_OUT_BUFFER));
    EXPECT_EQ("", FirstDiff(out.bytes, WriteOut(work, NULL).data(), sizeof(out.bytes))) << "printer's record";

    // Capabilities from the printer's record, and through winspool from a
    // caller's record that names the same paper and resolution.
    Layout caller;
    MakeLayout(&caller, 220, 0, 0x0401, 0);
    Apply(caller.bytes, { { 72, 4, DM_PAPERSIZE | DM_PRINTQUALITY }, { 78, 2, 8 }, { 90, 2, 600 } });
    static BYTE got[8192], want[8192];
    for (WORD cap = 1; cap <= 33; cap++)
        for (bool viaSpooler : { false, true }) {
            memset(got, 0x77, sizeof(got));
            memset(want, 0x77, sizeof(want));
            int answer = (int)ExpectedCap(cap, want, 600, { 2970, 4200 });
            if (cap == DC_FIELDS)
                answer = viaSpooler ? DM_PAPERSIZE | DM_PRINTQUALITY : 0x1FC03;
            int got1 = viaSpooler ? DeviceCapabilitiesW(PRINTER, L"FILE:", cap, (LPWSTR)got, caller.dm())
                                  : (int)TheDriver().DeviceCapabilities(hPrinter, NULL, cap, got, NULL);
            EXPECT_EQ(answer, got1) << "capability " << cap << (viaSpooler ? " through winspool" : "");
            EXPECT_EQ("", FirstDiff(got, want, sizeof(got))) << "capability " << cap << (viaSpooler ? " through winspool" : "");
        }

    // A public-only caller's record overrides what it names, in its layout.
    Layout in;
    MakeLayout(&in, 220, 0, 0x0401, 0);
    Apply(in.bytes, { { 72, 4, DM_ORIENTATION }, { 76, 2, 1 } });
    MakeLayout(&out, 0, 0, 0, 0xA5);
    Apply(work.data(), { { 76, 2, 1 }, { 232, 4, 0 } });
    EXPECT_EQ(IDOK, DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, out.dm(), in.dm(), DM_IN_BUFFER | DM_OUT_BUFFER));
    EXPECT_EQ("", FirstDiff(out.bytes, WriteOut(work, in.bytes).data(), sizeof(out.bytes))) << "caller's record";

    Bytes ignored;
    EXPECT_TRUE(PrinterRecord(hPrinter, &ignored, saved.data()));
    ClosePrinter(hPrinter);
}

TEST(Spooler, DriverDefaultsCarryTheFirst31CharactersOfTheName)
{
    WCHAR name[] = L"Quillora long name 0123456789ABCDEFGHIJK";   // 40 characters
    PRINTER_INFO_2W pi = {};
    pi.pPrinterName = name;
    pi.pPortName = (LPWSTR)L"FILE:";
    pi.pDriverName = (LPWSTR)PRINTER;
    pi.pPrintProcessor = (LPWSTR)L"WinPrint";
    pi.pDatatype = (LPWSTR)L"RAW";
    HANDLE hLong = AddPrinterW(NULL, 2, (LPBYTE)&pi);
    if (!hLong)
        OpenPrinterW(name, &hLong, NULL);
    ASSERT_NE(nullptr, hLong) << GetLastError();
    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    Bytes want = Factory();
    want.resize(sizeof(out.bytes), 0xA5);
    memcpy(want.data(), name, 31 * sizeof(WCHAR));
    LONG needed = 3484;
    EXPECT_TRUE(TheDriver().ConvertDevMode(name, NULL, out.dm(), &needed, CDM_DRIVER_DEFAULT)) << GetLastError();
    EXPECT_EQ("", FirstDiff(out.bytes, want.data(), sizeof(out.bytes)));
    EXPECT_TRUE(DeletePrinter(hLong));
    ClosePrinter(hLong);
}

}  // namespace
