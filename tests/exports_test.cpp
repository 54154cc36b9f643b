// The module's exports called directly, as the spooler calls them.
#include "driver.h"

namespace {

class Exports : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_NE(nullptr, TheDriver().hModule) << "QLRDRVUI.DLL did not load: " << GetLastError();
        ASSERT_NE(nullptr, TheDriver().ConvertDevMode);
        ASSERT_NE(nullptr, TheDriver().DeviceCapabilities);
        ASSERT_NE(nullptr, TheDriver().DocumentPropertySheets);
    }
    BOOL Convert(LPCWSTR printer, PDEVMODEW in, PDEVMODEW out, PLONG needed, DWORD mode)
    {
        return TheDriver().ConvertDevMode((LPWSTR)printer, in, out, needed, mode);
    }
    DWORD Caps(WORD cap, void *out, PDEVMODEW dm = NULL)
    {
        return TheDriver().DeviceCapabilities(NULL, (PWSTR)L"Quillora", cap, out, dm);
    }
    LONG Direct(DOCUMENTPROPERTYHEADER *header)
    {
        return TheDriver().DocumentPropertySheets(NULL, (LPARAM)header);
    }
    // The record a plain output call answers with now.
    QLRDEVMODE CurrentRecord()
    {
        QLRDEVMODE dm;
        DOCUMENTPROPERTYHEADER h = Header(DM_OUT_BUFFER, NULL, (PDEVMODEW)&dm);
        EXPECT_EQ(1, Direct(&h));
        return dm;
    }
    static DOCUMENTPROPERTYHEADER Header(DWORD fMode, PDEVMODEW in, PDEVMODEW out)
    {
        DOCUMENTPROPERTYHEADER h = {};
        h.cbSize = sizeof(h);
        h.pszPrinterName = (LPWSTR)L"Quillora";
        h.pdmIn = in;
        h.pdmOut = out;
        h.cbOut = QLR_RECORD_SIZE;
        h.fMode = fMode;
        return h;
    }
};

// ---- DrvConvertDevMode ------------------------------------------------------

TEST_F(Exports, ConvertDevModeRefusesMissingSizesAndUnknownModes)
{
    Layout in, out;
    MakeLayout(&in, 220, 0, 0x401, 0);
    SetLastError(0xdeadbeef);
    EXPECT_FALSE(Convert(NULL, in.dm(), out.dm(), NULL, CDM_CONVERT));
    EXPECT_EQ((DWORD)ERROR_INVALID_PARAMETER, GetLastError());

    LONG needed = 8192;
    SetLastError(0xdeadbeef);
    EXPECT_FALSE(Convert(NULL, in.dm(), out.dm(), &needed, 8));
    EXPECT_EQ(0xdeadbeefu, GetLastError());
    EXPECT_EQ(8192, needed);
}

TEST_F(Exports, ConvertDevModeIntoTheCallersLayout)
{
    Layout in, out;
    MakeLayout(&in, 220, QLR_PRIVATE_SIZE, 0x401, 0);
    in.record()->dwSignature = QLR_SIGNATURE;
    in.record()->iOutputFormat = FORMAT_PCX;
    MakeLayout(&out, 212, 100, 0x400, 0xA5);
    LONG fits = 312;
    EXPECT_TRUE(Convert(NULL, in.dm(), out.dm(), &fits, CDM_CONVERT));
    EXPECT_EQ(312, fits);
    EXPECT_EQ(212, out.dm()->dmSize);
    EXPECT_EQ(100, out.dm()->dmDriverExtra);
    EXPECT_STREQ(L"Quillora", out.dm()->dmDeviceName);
    EXPECT_EQ(0, memcmp(out.bytes + 212, in.bytes + 220, 100));
    EXPECT_TRUE(UntouchedFrom(out, 312, 0xA5));

    // Too small a size for the asked layout, a versionless input, no output:
    // each refused with the output left alone.
    Layout versionless;
    MakeLayout(&versionless, 200, 0, 0, 0);
    struct { Layout *in; bool output; LONG needed; } refusals[] = {
        { &in, true, 311 }, { &versionless, true, 8192 }, { &in, false, 8192 },
    };
    for (size_t i = 0; i < ARRAYSIZE(refusals); i++) {
        MakeLayout(&out, 212, 100, 0x400, 0xA5);
        LONG needed = refusals[i].needed;
        SetLastError(0xdeadbeef);
        EXPECT_FALSE(Convert(NULL, refusals[i].in->dm(), refusals[i].output ? out.dm() : NULL,
                             &needed, CDM_CONVERT)) << "case " << i;
        EXPECT_EQ((DWORD)ERROR_INVALID_PARAMETER, GetLastError()) << "case " << i;
        EXPECT_TRUE(UntouchedFrom(out, 72, 0xA5)) << "case " << i;
    }
}

TEST_F(Exports, ConvertDevModeToTheNT351Layout)
{
    Layout in, out;
    MakeLayout(&in, 220, QLR_PRIVATE_SIZE, 0x401, 0x3C);
    MakeLayout(&out, 0, 0, 0, 0xA5);
    LONG needed = 100;
    SetLastError(0xdeadbeef);
    EXPECT_FALSE(Convert(NULL, in.dm(), out.dm(), &needed, CDM_CONVERT351));
    EXPECT_EQ(3452, needed);
    EXPECT_EQ((DWORD)ERROR_INSUFFICIENT_BUFFER, GetLastError());
    EXPECT_TRUE(UntouchedFrom(out, 72, 0xA5));

    needed = 8192;
    EXPECT_FALSE(Convert(NULL, in.dm(), NULL, &needed, CDM_CONVERT351));
    EXPECT_EQ(3452, needed);

    needed = 3452;
    EXPECT_TRUE(Convert(NULL, in.dm(), out.dm(), &needed, CDM_CONVERT351));
    EXPECT_EQ(3452, needed);
    EXPECT_EQ(188, out.dm()->dmSize);
    EXPECT_EQ(0x0320, out.dm()->dmSpecVersion);
    EXPECT_EQ(0x0350, out.dm()->dmDriverVersion);
    EXPECT_EQ(QLR_PRIVATE_SIZE, out.dm()->dmDriverExtra);
    EXPECT_EQ(0, memcmp(out.bytes + 188, in.bytes + 220, QLR_PRIVATE_SIZE));
    EXPECT_TRUE(UntouchedFrom(out, 3452, 0xA5));
}

TEST_F(Exports, ConvertDevModeDriverDefaults)
{
    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    LONG needed = 3483;
    SetLastError(0xdeadbeef);
    EXPECT_FALSE(Convert(L"Quillora", NULL, out.dm(), &needed, CDM_DRIVER_DEFAULT));
    EXPECT_EQ(3484, needed);
    EXPECT_EQ((DWORD)ERROR_INSUFFICIENT_BUFFER, GetLastError());

    needed = 3484;
    SetLastError(0xdeadbeef);
    EXPECT_FALSE(Convert(L"No Such Printer", NULL, out.dm(), &needed, CDM_DRIVER_DEFAULT));
    EXPECT_EQ((DWORD)ERROR_INVALID_DATA, GetLastError());
    EXPECT_TRUE(UntouchedFrom(out, 72, 0xA5));

    needed = 3484;
    ASSERT_TRUE(Convert(L"Quillora", NULL, out.dm(), &needed, CDM_DRIVER_DEFAULT)) << GetLastError();
    EXPECT_STREQ(L"Quillora", out.dm()->dmDeviceName);
    EXPECT_EQ(QLR_SIGNATURE, out.record()->dwSignature);
    EXPECT_EQ(200, out.record()->iResolution);
    EXPECT_STREQ(L"A4", out.dm()->dmFormName);
    EXPECT_TRUE(UntouchedFrom(out, 3484, 0xA5));
}

// ---- DrvDeviceCapabilities --------------------------------------------------

TEST_F(Exports, CapabilitiesWithFixedAnswers)
{
    struct { WORD cap; DWORD answer; } rows[] = {
        { DC_DUPLEX, 0 }, { DC_SIZE, 220 }, { DC_EXTRA, 3264 }, { DC_VERSION, 0x0401 },
        { DC_DRIVER, 0x0246 }, { DC_TRUETYPE, DCTT_BITMAP }, { DC_ORIENTATION, 90 },
        { DC_COPIES, 1 }, { DC_COLLATE, 0 }, { DC_PRINTRATE, 12 },
        { DC_PRINTRATEUNIT, PRINTRATEUNIT_PPM }, { DC_PRINTERMEM, 0 }, { DC_STAPLE, 0 },
        { DC_PRINTRATEPPM, 12 }, { DC_COLORDEVICE, 1 }, { DC_FIELDS, 0x0001FC0F },
        { DC_PAPERS, 40 }, { DC_PAPERSIZE, 40 }, { DC_PAPERNAMES, 40 }, { DC_MEDIAREADY, 40 },
        { DC_BINS, 1 }, { DC_BINNAMES, 1 }, { DC_ENUMRESOLUTIONS, 10 }, { DC_NUP, 6 },
        { DC_FILEDEPENDENCIES, 0 }, { DC_MINEXTENT, 0x00640064 }, { DC_MAXEXTENT, 0x3B883B88 },
        { DC_BINADJUST, (DWORD)-1 }, { DC_EMF_COMPLIANT, (DWORD)-1 },
        { DC_DATATYPE_PRODUCED, (DWORD)-1 }, { DC_MANUFACTURER, (DWORD)-1 },
        { DC_MODEL, (DWORD)-1 }, { DC_PERSONALITY, (DWORD)-1 }, { 34, (DWORD)-1 }, { 0, (DWORD)-1 },
    };
    for (const auto &row : rows)
        EXPECT_EQ(row.answer, Caps(row.cap, NULL)) << "capability " << row.cap;
}

TEST_F(Exports, CapabilitiesWriteNothingWhenUnsupportedOrScalar)
{
    WORD caps[] = { DC_MANUFACTURER, DC_PERSONALITY, 40, DC_DUPLEX, DC_SIZE, DC_FIELDS, DC_COPIES };
    for (WORD cap : caps) {
        Layout out;
        memset(out.bytes, 0x77, sizeof(out.bytes));
        Caps(cap, out.bytes);
        EXPECT_TRUE(UntouchedFrom(out, 0, 0x77)) << "capability " << cap;
    }
}

TEST_F(Exports, PaperListsFollowTheTable)
{
    WORD papers[41];
    memset(papers, 0xFF, sizeof(papers));
    EXPECT_EQ(40u, Caps(DC_PAPERS, papers));
    EXPECT_EQ(DMPAPER_LETTER, papers[0]);
    EXPECT_EQ(257, papers[2]);
    EXPECT_EQ(DMPAPER_A4, papers[14]);
    EXPECT_EQ(DMPAPER_ENV_PERSONAL, papers[38]);
    EXPECT_EQ(DMPAPER_USER, papers[39]);
    EXPECT_EQ(0xFFFF, papers[40]);

    WCHAR names[41][64];
    memset(names, 0xFF, sizeof(names));
    EXPECT_EQ(40u, Caps(DC_PAPERNAMES, names));
    EXPECT_STREQ(L"Letter/ANSI A", names[0]);
    EXPECT_STREQ(L"A4", names[14]);
    EXPECT_STREQ(L"Конверт DL ", names[28]);
    EXPECT_STREQ(L"Кон. Personal", names[38]);
    EXPECT_STREQ(L"Custom Paper", names[39]);
    EXPECT_EQ(0, names[14][63]);
    EXPECT_EQ(0xFFFF, names[40][0]);

    WCHAR ready[40][64];
    EXPECT_EQ(40u, Caps(DC_MEDIAREADY, ready));
    EXPECT_EQ(0, memcmp(names, ready, sizeof(ready)));
}

TEST_F(Exports, PaperSizesTruncateAndEndWithTheCurrentPaper)
{
    POINT sizes[41];
    memset(sizes, 0xFF, sizeof(sizes));
    EXPECT_EQ(40u, Caps(DC_PAPERSIZE, sizes));
    struct { int row; LONG x, y; } rows[] = {
        { 0, 2159, 2794 }, { 14, 2100, 2970 }, { 24, 984, 2254 }, { 25, 1047, 2413 },
        { 36, 1760, 1250 }, { 39, 2100, 2970 },
    };
    for (const auto &r : rows) {
        EXPECT_EQ(r.x, sizes[r.row].x) << "row " << r.row;
        EXPECT_EQ(r.y, sizes[r.row].y) << "row " << r.row;
    }
    EXPECT_EQ(-1, sizes[40].x);

    DEVMODEW custom = {};
    custom.dmSize = sizeof(custom);
    custom.dmFields = DM_PAPERWIDTH | DM_PAPERLENGTH;
    custom.dmPaperWidth = 1000;
    custom.dmPaperLength = 1500;
    EXPECT_EQ(40u, Caps(DC_PAPERSIZE, sizes, &custom));
    EXPECT_EQ(1000, sizes[39].x);
    EXPECT_EQ(1500, sizes[39].y);
}

TEST_F(Exports, ResolutionsEndWithTheRecordsOwn)
{
    LONG pairs[22];
    memset(pairs, 0xFF, sizeof(pairs));
    DEVMODEW dm = {};
    dm.dmSize = sizeof(dm);
    dm.dmFields = DM_PRINTQUALITY;
    dm.dmPrintQuality = 250;
    EXPECT_EQ(10u, Caps(DC_ENUMRESOLUTIONS, pairs, &dm));
    const LONG expected[] = { 50, 72, 96, 100, 150, 200, 300, 400, 600, 250 };
    for (int i = 0; i < 10; i++) {
        EXPECT_EQ(expected[i], pairs[2 * i]) << "pair " << i;
        EXPECT_EQ(expected[i], pairs[2 * i + 1]) << "pair " << i;
    }
    EXPECT_EQ(-1, pairs[20]);

    DEVMODEW fields = {};
    fields.dmSize = sizeof(fields);
    fields.dmFields = DM_ORIENTATION;
    EXPECT_EQ((DWORD)DM_ORIENTATION, Caps(DC_FIELDS, NULL, &fields));
}

TEST_F(Exports, SmallListsAndStrings)
{
    DWORD nup[7];
    memset(nup, 0xFF, sizeof(nup));
    EXPECT_EQ(6u, Caps(DC_NUP, nup));
    const DWORD expected[] = { 1, 2, 4, 6, 9, 16, 0xFFFFFFFF };
    EXPECT_EQ(0, memcmp(expected, nup, sizeof(nup)));

    WORD bins[2] = { 0xFFFF, 0xFFFF };
    EXPECT_EQ(1u, Caps(DC_BINS, bins));
    EXPECT_EQ(DMBIN_AUTO, bins[0]);
    EXPECT_EQ(0xFFFF, bins[1]);

    WCHAR binName[25];
    memset(binName, 0xFF, sizeof(binName));
    EXPECT_EQ(1u, Caps(DC_BINNAMES, binName));
    EXPECT_STREQ(L"Main paper tray", binName);
    EXPECT_EQ(0xFFFF, binName[24]);

    WCHAR deps[2] = { L'x', L'y' };
    EXPECT_EQ(0u, Caps(DC_FILEDEPENDENCIES, deps));
    EXPECT_EQ(0, deps[0]);
    EXPECT_EQ(L'y', deps[1]);

    DWORD extent = 0;
    EXPECT_EQ(0x3B883B88u, Caps(DC_MAXEXTENT, &extent));
    EXPECT_EQ(0x3B883B88u, extent);
    EXPECT_EQ(0x00640064u, Caps(DC_MINEXTENT, &extent));
    EXPECT_EQ(0x00640064u, extent);
}

// ---- DrvDocumentPropertySheets without a sheet ------------------------------

TEST_F(Exports, DirectCallSizeQueries)
{
    DOCUMENTPROPERTYHEADER h = Header(0, NULL, NULL);
    h.cbOut = 0;
    EXPECT_EQ(3484, Direct(&h));
    EXPECT_EQ(3484u, h.cbOut);

    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    h = Header(DM_IN_BUFFER | DM_OUT_BUFFER, NULL, NULL);
    h.cbOut = 0;
    EXPECT_EQ(3484, Direct(&h));
    EXPECT_EQ(3484u, h.cbOut);

    EXPECT_EQ(-1, Direct(NULL));
    h = Header(DM_OUT_BUFFER, NULL, out.dm());
    h.cbSize = 8;
    EXPECT_EQ(-1, Direct(&h));
    EXPECT_TRUE(UntouchedFrom(out, 72, 0xA5));
}

TEST_F(Exports, DirectCallNormalisesAndMergesTheCallersRecord)
{
    QLRDEVMODE in = CurrentRecord();
    Layout out;

    in.dmPublic.dmFields |= DM_PRINTQUALITY | DM_ORIENTATION;
    in.dmPublic.dmPrintQuality = DMRES_HIGH;
    in.dmPublic.dmOrientation = DMORIENT_LANDSCAPE;
    in.iOutputFormat = FORMAT_GIF;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    DOCUMENTPROPERTYHEADER h = Header(DM_IN_BUFFER | DM_OUT_BUFFER, &in.dmPublic, out.dm());
    EXPECT_EQ(1, Direct(&h));
    EXPECT_EQ(300, in.dmPublic.dmPrintQuality);
    EXPECT_EQ(300, in.dmPublic.dmYResolution);
    EXPECT_EQ(300, out.record()->iResolution);
    EXPECT_EQ(1, out.record()->iOrientation);
    EXPECT_EQ(FORMAT_GIF, out.record()->iOutputFormat);
    EXPECT_STREQ(L"Quillora", out.dm()->dmDeviceName);
    EXPECT_TRUE(UntouchedFrom(out, QLR_RECORD_SIZE, 0xA5));
}

TEST_F(Exports, DirectCallRemembersTheLastInputRecord)
{
    QLRDEVMODE in = CurrentRecord();
    in.iOutputFormat = FORMAT_DCX;
    lstrcpyW(in.szOutputFolder, L"e:\\remembered");

    Layout out;
    DOCUMENTPROPERTYHEADER h = Header(DM_IN_BUFFER, &in.dmPublic, out.dm());
    MakeLayout(&out, 0, 0, 0, 0xA5);
    EXPECT_EQ(-1, Direct(&h));
    EXPECT_TRUE(UntouchedFrom(out, 72, 0xA5));

    h = Header(DM_OUT_BUFFER, NULL, out.dm());
    EXPECT_EQ(1, Direct(&h));
    EXPECT_EQ(FORMAT_DCX, out.record()->iOutputFormat);
    EXPECT_STREQ(L"e:\\remembered", out.record()->szOutputFolder);

    MakeLayout(&out, 0, 0, 0, 0xA5);
    h = Header(DM_OUT_BUFFER | DM_NOPERMISSION, NULL, out.dm());
    EXPECT_EQ(-1, Direct(&h));
    EXPECT_TRUE(UntouchedFrom(out, 72, 0xA5));
}

TEST_F(Exports, DirectCallAnswersInTheSmallerLayout)
{
    Layout in, out;
    MakeLayout(&in, 212, 0, 0x0400, 0);
    in.dm()->dmFields = DM_ORIENTATION;
    in.dm()->dmOrientation = DMORIENT_LANDSCAPE;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    DOCUMENTPROPERTYHEADER h = Header(DM_IN_BUFFER | DM_OUT_BUFFER, in.dm(), out.dm());
    EXPECT_EQ(1, Direct(&h));
    EXPECT_EQ(212, out.dm()->dmSize);
    EXPECT_EQ(0x0400, out.dm()->dmSpecVersion);
    EXPECT_EQ(0, out.dm()->dmDriverExtra);
    EXPECT_EQ(DMORIENT_LANDSCAPE, out.dm()->dmOrientation);
    EXPECT_TRUE(UntouchedFrom(out, 212, 0xA5));
}

TEST_F(Exports, DirectCallKeepsOnlyWhatAnOversizedRecordCanHold)
{
    // A record claiming more private bytes than a settings record holds is
    // remembered in part; answering from it must stay inside that part.
    static Layout big;
    MakeLayout(&big, 220, 8000 - 220, 0x0401, 0);
    big.dm()->dmFields = DM_ORIENTATION;
    big.dm()->dmOrientation = DMORIENT_LANDSCAPE;
    big.record()->dwSignature = QLR_SIGNATURE;
    big.record()->dwPrivVersion = QLR_PRIV_VERSION;
    big.record()->iOutputFormat = FORMAT_BMP;
    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    DOCUMENTPROPERTYHEADER h = Header(DM_IN_BUFFER, big.dm(), out.dm());
    EXPECT_EQ(-1, Direct(&h));
    h = Header(DM_OUT_BUFFER, NULL, out.dm());
    EXPECT_EQ(1, Direct(&h));
    EXPECT_EQ(FORMAT_BMP, out.record()->iOutputFormat);
    EXPECT_EQ(1, out.record()->iOrientation);
    EXPECT_EQ(QLR_PRIVATE_SIZE, out.dm()->dmDriverExtra);
}

}  // namespace
