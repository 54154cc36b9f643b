// The installed printer "Quillora" as applications meet it: winspool loads
// the module from the spooler's driver folder and asks it.
#include "driver.h"

namespace {

#define PRINTER L"Quillora"

class Spooler : public ::testing::Test {
protected:
    HANDLE hPrinter = NULL;
    void SetUp() override
    {
        ASSERT_TRUE(OpenPrinterW((LPWSTR)PRINTER, &hPrinter, NULL))
            << "printer not installed (error " << GetLastError() << ")";
    }
    void TearDown() override
    {
        if (hPrinter)
            ClosePrinter(hPrinter);
    }
    LONG Properties(PDEVMODEW out, PDEVMODEW in, DWORD mode)
    {
        return DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, out, in, mode);
    }
    // The printer's own record as the spooler keeps it, by the two-call protocol.
    bool PrinterRecord(Layout *out)
    {
        DWORD cb = 0;
        SetLastError(0xdeadbeef);
        EXPECT_FALSE(GetPrinterW(hPrinter, 2, NULL, 0, &cb));
        EXPECT_EQ((DWORD)ERROR_INSUFFICIENT_BUFFER, GetLastError());
        BYTE *buffer = (BYTE *)LocalAlloc(LPTR, cb);
        bool ok = GetPrinterW(hPrinter, 2, buffer, cb, &cb) && ((PRINTER_INFO_2W *)buffer)->pDevMode;
        if (ok) {
            DEVMODEW *dm = ((PRINTER_INFO_2W *)buffer)->pDevMode;
            memcpy(out->bytes, dm, dm->dmSize + dm->dmDriverExtra);
        }
        LocalFree(buffer);
        return ok;
    }
    bool SetPrinterRecord(DEVMODEW *dm)
    {
        DWORD cb = 0;
        GetPrinterW(hPrinter, 2, NULL, 0, &cb);
        BYTE *buffer = (BYTE *)LocalAlloc(LPTR, cb);
        bool ok = GetPrinterW(hPrinter, 2, buffer, cb, &cb);
        if (ok) {
            PRINTER_INFO_2W *info = (PRINTER_INFO_2W *)buffer;
            info->pDevMode = dm;
            info->pSecurityDescriptor = NULL;
            ok = SetPrinterW(hPrinter, 2, buffer, 0);
        }
        LocalFree(buffer);
        return ok;
    }
};

TEST_F(Spooler, ApplicationsLearnThePapers)
{
    EXPECT_EQ(40, DeviceCapabilitiesW(PRINTER, L"FILE:", DC_PAPERS, NULL, NULL));
    WORD papers[40];
    EXPECT_EQ(40, DeviceCapabilitiesW(PRINTER, L"FILE:", DC_PAPERS, (LPWSTR)papers, NULL));
    EXPECT_EQ(DMPAPER_A4, papers[14]);
    EXPECT_EQ(DMPAPER_USER, papers[39]);

    WCHAR names[40][64];
    EXPECT_EQ(40, DeviceCapabilitiesW(PRINTER, L"FILE:", DC_PAPERNAMES, (LPWSTR)names, NULL));
    EXPECT_STREQ(L"Tabloid/ANSI B", names[1]);
    EXPECT_STREQ(L"Конверт #9 ", names[24]);

    POINT sizes[40];
    EXPECT_EQ(40, DeviceCapabilitiesW(PRINTER, L"FILE:", DC_PAPERSIZE, (LPWSTR)sizes, NULL));
    EXPECT_EQ(8410, sizes[10].x);
    EXPECT_EQ(11890, sizes[10].y);
}

TEST_F(Spooler, ApplicationsLearnResolutionsAndLayout)
{
    LONG pairs[20];
    EXPECT_EQ(10, DeviceCapabilitiesW(PRINTER, L"FILE:", DC_ENUMRESOLUTIONS, (LPWSTR)pairs, NULL));
    EXPECT_EQ(600, pairs[16]);
    EXPECT_EQ(200, pairs[18]);
    EXPECT_EQ(220, DeviceCapabilitiesW(PRINTER, L"FILE:", DC_SIZE, NULL, NULL));
    EXPECT_EQ(3264, DeviceCapabilitiesW(PRINTER, L"FILE:", DC_EXTRA, NULL, NULL));
    WCHAR bin[24];
    EXPECT_EQ(1, DeviceCapabilitiesW(PRINTER, L"FILE:", DC_BINNAMES, bin, NULL));
    EXPECT_STREQ(L"Main paper tray", bin);
    EXPECT_EQ(-1, DeviceCapabilitiesW(PRINTER, L"FILE:", DC_MANUFACTURER, NULL, NULL));
}

TEST_F(Spooler, DocumentPropertiesSizeQueryAndDefaults)
{
    EXPECT_EQ(3484, Properties(NULL, NULL, 0));

    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    ASSERT_EQ(IDOK, Properties(out.dm(), NULL, DM_OUT_BUFFER));
    EXPECT_EQ(QLR_PUBLIC_SIZE, out.dm()->dmSize);
    EXPECT_EQ(QLR_PRIVATE_SIZE, out.dm()->dmDriverExtra);
    EXPECT_STREQ(L"Quillora", out.dm()->dmDeviceName);
    EXPECT_EQ(QLR_SIGNATURE, out.record()->dwSignature);
    EXPECT_EQ(out.dm()->dmPrintQuality, out.record()->iResolution);
    EXPECT_EQ(out.dm()->dmYResolution, out.record()->iResolution);
    EXPECT_TRUE(UntouchedFrom(out, QLR_RECORD_SIZE, 0xA5));
}

TEST_F(Spooler, PrinterRecordIsALayerUnderTheCallers)
{
    Layout saved;
    ASSERT_TRUE(PrinterRecord(&saved)) << "no record kept for the printer";

    Layout printer;
    MakeLayout(&printer, 0, 0, 0, 0);
    ASSERT_EQ(IDOK, Properties(printer.dm(), NULL, DM_OUT_BUFFER));
    printer.dm()->dmFields |= DM_PRINTQUALITY | DM_ORIENTATION;
    printer.dm()->dmPrintQuality = 600;
    printer.dm()->dmOrientation = DMORIENT_LANDSCAPE;
    printer.record()->iOutputFormat = FORMAT_TIFF;
    lstrcpyW(printer.record()->szFileNameMask, L"&[Page]-printer");
    ASSERT_TRUE(SetPrinterRecord(printer.dm())) << GetLastError();

    Layout kept;
    ASSERT_TRUE(PrinterRecord(&kept));
    // Wine's spooler keeps the two names as strings, not their padding.
    const size_t formName = offsetof(DEVMODEW, dmFormName), afterForm = formName + 64;
    EXPECT_STREQ(printer.dm()->dmDeviceName, kept.dm()->dmDeviceName);
    EXPECT_STREQ(printer.dm()->dmFormName, kept.dm()->dmFormName);
    EXPECT_EQ(0, memcmp(printer.bytes + 64, kept.bytes + 64, formName - 64));
    EXPECT_EQ(0, memcmp(printer.bytes + afterForm, kept.bytes + afterForm, QLR_RECORD_SIZE - afterForm));

    // The caller's public-only record overrides what it names and nothing else.
    DEVMODEW caller = {};
    caller.dmSize = sizeof(caller);
    caller.dmSpecVersion = DM_SPECVERSION;
    caller.dmFields = DM_ORIENTATION;
    caller.dmOrientation = DMORIENT_PORTRAIT;
    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    EXPECT_EQ(IDOK, Properties(out.dm(), &caller, DM_IN_BUFFER | DM_OUT_BUFFER));
    EXPECT_EQ(0, out.dm()->dmDriverExtra);        // the caller's smaller layout
    EXPECT_EQ(DMORIENT_PORTRAIT, out.dm()->dmOrientation);
    EXPECT_EQ(600, out.dm()->dmPrintQuality);

    QLRDEVMODE full;
    memcpy(&full, saved.bytes, sizeof(full));
    full.dmPublic.dmFields = 0;
    full.iOutputFormat = FORMAT_BMP;
    lstrcpyW(full.szFileNameMask, L"&[Page]-caller");
    MakeLayout(&out, 0, 0, 0, 0xA5);
    EXPECT_EQ(IDOK, Properties(out.dm(), &full.dmPublic, DM_IN_BUFFER | DM_OUT_BUFFER));
    EXPECT_EQ(FORMAT_BMP, out.record()->iOutputFormat);
    EXPECT_EQ(600, out.record()->iResolution);
    EXPECT_EQ(1, out.record()->iOrientation);
    EXPECT_STREQ(L"&[Page]-caller", out.record()->szFileNameMask);

    EXPECT_TRUE(SetPrinterRecord(saved.dm()));
}

TEST_F(Spooler, DriverDefaultsCarryTheFirst31CharactersOfTheName)
{
    const WCHAR *longName = L"Quillora long name 0123456789ABCDEFGHIJ";
    ASSERT_EQ(39u, wcslen(longName));
    WCHAR name[41];
    wsprintfW(name, L"%sK", longName);   // 40 characters
    PRINTER_INFO_2W pi = {};
    pi.pPrinterName = name;
    pi.pPortName = (LPWSTR)L"FILE:";
    pi.pDriverName = (LPWSTR)PRINTER;
    pi.pPrintProcessor = (LPWSTR)L"WinPrint";
    pi.pDatatype = (LPWSTR)L"RAW";
    HANDLE hLong = AddPrinterW(NULL, 2, (LPBYTE)&pi);
    if (!hLong && GetLastError() == ERROR_PRINTER_ALREADY_EXISTS)
        OpenPrinterW(name, &hLong, NULL);
    ASSERT_NE(nullptr, hLong) << GetLastError();

    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    LONG needed = QLR_RECORD_SIZE;
    EXPECT_TRUE(TheDriver().ConvertDevMode(name, NULL, out.dm(), &needed, CDM_DRIVER_DEFAULT))
        << GetLastError();
    EXPECT_EQ(0, wcsncmp(name, out.dm()->dmDeviceName, 31));
    EXPECT_EQ(0, out.dm()->dmDeviceName[31]);
    EXPECT_TRUE(UntouchedFrom(out, QLR_RECORD_SIZE, 0xA5));

    EXPECT_TRUE(DeletePrinter(hLong));
    ClosePrinter(hLong);
}

}  // namespace
