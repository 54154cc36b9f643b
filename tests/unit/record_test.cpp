// White-box tests of the settings record: the default image, units, paper
// sizes and the conversion between device-mode layouts.
#include <gtest/gtest.h>
#include <string.h>
#include "qlrui.h"
#include "layout.h"

namespace {

QLRDEVMODE Defaults()
{
    QLRDEVMODE dm;
    memset(&dm, 0xCC, sizeof(dm));
    SetDefDM(NULL, &dm);
    return dm;
}

TEST(DefaultRecord, IdentifiesItselfAndSizesMatchTheFormat)
{
    QLRDEVMODE dm = Defaults();
    EXPECT_EQ(QLR_RECORD_SIZE, dm.dmPublic.dmSize + dm.dmPublic.dmDriverExtra);
    EXPECT_EQ(0x0401, dm.dmPublic.dmSpecVersion);
    EXPECT_EQ(0x0246, dm.dmPublic.dmDriverVersion);
    const BYTE *p = (const BYTE *)&dm;
    const BYTE magic[] = { 0x4D, 0x44, 0x53, 0x44 };
    EXPECT_EQ(0, memcmp(p + 220, magic, 4));
    EXPECT_EQ(0x2010u, dm.dwPrivVersion);
}

TEST(DefaultRecord, HoldsTheFactorySettings)
{
    QLRDEVMODE dm = Defaults();
    const DEVMODEW &pub = dm.dmPublic;
    struct { const char *name; long actual, expected; } rows[] = {
        { "dmFields", (long)pub.dmFields, 0x0001FC0F },
        { "dmOrientation", pub.dmOrientation, 1 },
        { "dmPaperSize", pub.dmPaperSize, 9 },
        { "dmPaperLength", pub.dmPaperLength, 2970 },
        { "dmPaperWidth", pub.dmPaperWidth, 2100 },
        { "dmScale", pub.dmScale, 100 },
        { "dmCopies", pub.dmCopies, 1 },
        { "dmPrintQuality", pub.dmPrintQuality, 200 },
        { "dmYResolution", pub.dmYResolution, 200 },
        { "dmColor", pub.dmColor, 2 },
        { "dmDuplex", pub.dmDuplex, 1 },
        { "dmTTOption", pub.dmTTOption, 1 },
        { "dmCollate", pub.dmCollate, 0 },
        { "dmLogPixels", pub.dmLogPixels, 0 },
        { "dmBitsPerPel", (long)pub.dmBitsPerPel, 24 },
        { "dmPelsWidth", (long)pub.dmPelsWidth, 2100 },
        { "dmPelsHeight", (long)pub.dmPelsHeight, 2970 },
        { "dmNup", (long)pub.dmNup, 0 },
        { "iPaper", dm.iPaper, 14 },
        { "iOrientation", dm.iOrientation, 0 },
        { "iResolution", dm.iResolution, 200 },
        { "bCustomPaper", dm.bCustomPaper, 0 },
        { "iCustomWidth", dm.iCustomWidth, 2100 },
        { "iCustomHeight", dm.iCustomHeight, 2970 },
        { "iCustomUnit", dm.iCustomUnit, 1 },
        { "iOutputFormat", dm.iOutputFormat, 2 },
        { "iGifColors", dm.iGifColors, 256 },
        { "bGifDither", dm.bGifDither, 1 },
        { "bGifMultiPage", dm.bGifMultiPage, 1 },
        { "iJpegQuality", dm.iJpegQuality, 100 },
        { "iJpegSubsampling", dm.iJpegSubsampling, 2 },
        { "iTiffCompression", dm.iTiffCompression, 4 },
        { "bTiffMultiPage", dm.bTiffMultiPage, 1 },
        { "iDcxBitsPerPixel", dm.iDcxBitsPerPixel, 24 },
        { "bDcxMultiPage", dm.bDcxMultiPage, 1 },
        { "bShowResult", dm.bShowResult, 1 },
        { "bUseCustomViewer", dm.bUseCustomViewer, 0 },
        { "m_bProfiled", dm.m_bProfiled, 0 },
    };
    for (const auto &row : rows)
        EXPECT_EQ(row.expected, row.actual) << row.name;
    EXPECT_STREQ(L"A4", pub.dmFormName);
    EXPECT_STREQ(L"c:\\QLR Output Files", dm.szOutputFolder);
    EXPECT_STREQ(L"&[DocName]_&[Page].&[Type]", dm.szFileNameMask);
    EXPECT_STREQ(L"", dm.szViewerPath);
    EXPECT_STREQ(L"%f", dm.szViewerParams);
    EXPECT_STREQ(L"", dm.szComments);
}

TEST(DefaultRecord, UnnamedBytesAreZero)
{
    QLRDEVMODE dm = Defaults();
    const BYTE *p = (const BYTE *)&dm;
    // Behind each string's terminator, and the public fields nobody names.
    size_t tail = offsetof(QLRDEVMODE, szViewerParams) + 3 * sizeof(WCHAR);
    for (size_t i = tail; i < offsetof(QLRDEVMODE, m_bProfiled); i++)
        ASSERT_EQ(0, p[i]) << "byte " << i;
    for (size_t i = offsetof(DEVMODEW, dmDisplayFrequency); i < sizeof(DEVMODEW); i++)
        ASSERT_EQ(0, p[i]) << "byte " << i;
}

TEST(SetDefDM, DeviceNameIsBoundedAndPadded)
{
    QLRDEVMODE dm;
    memset(&dm, 0xCC, sizeof(dm));
    SetDefDM(L"0123456789012345678901234567890123456789", &dm);
    EXPECT_EQ(0, wcsncmp(L"0123456789012345678901234567890", dm.dmPublic.dmDeviceName, 31));
    EXPECT_EQ(0, dm.dmPublic.dmDeviceName[31]);

    SetDefDM(L"Q", &dm);
    EXPECT_STREQ(L"Q", dm.dmPublic.dmDeviceName);
    for (int i = 1; i < CCHDEVICENAME; i++)
        ASSERT_EQ(0, dm.dmPublic.dmDeviceName[i]) << "character " << i;

    SetDefDM(NULL, &dm);
    EXPECT_STREQ(L"A4", dm.dmPublic.dmDeviceName);
}

TEST(CustomUnits, ConvertWithRoundedArithmetic)
{
    struct { int value, unit, dpi, tenths; } rows[] = {
        { 1000, UNIT_PIXEL, 200, 1270 },
        { 8500, UNIT_THOU, 200, 2159 },
        { 2100, UNIT_TENTHMM, 200, 2100 },
        { 72, UNIT_POINT, 200, 254 },
        { 777, 9, 200, 777 },          // unknown units count as tenths of a millimetre
        { 50, UNIT_PIXEL, 0, 254 },    // a damaged resolution counts as the lowest
        { 3875, UNIT_THOU, 200, 984 },  // 984.25 rounds down
        { 4125, UNIT_THOU, 200, 1048 }, // 1047.75 rounds up
    };
    for (size_t i = 0; i < ARRAY_COUNT(rows); i++)
        EXPECT_EQ(rows[i].tenths, CustomToTenthsMm(rows[i].value, rows[i].unit, rows[i].dpi)) << "row " << i;
    EXPECT_EQ(7874, TenthsMmToCustom(2000, UNIT_THOU, 200));
    EXPECT_EQ(3000, TenthsMmToCustom(2540, UNIT_PIXEL, 300));
}

TEST(ComputePaperSize, TableRowsCustomSizesAndDamagedRows)
{
    QLRDEVMODE dm = Defaults();
    struct { int iPaper, cx, cy; } rows[] = {
        { 0, 2159, 2794 }, { 14, 2100, 2970 }, { 36, 1760, 1250 }, { 25, 1048, 2413 },
        { 39, 2100, 2970 }, { -1, 2100, 2970 }, { 100000, 2100, 2970 },
    };
    for (const auto &row : rows) {
        dm.iPaper = row.iPaper;
        INT cx = -1, cy = -1;
        ComputePaperSize(&dm, &cx, &cy);
        EXPECT_EQ(row.cx, cx) << "iPaper " << row.iPaper;
        EXPECT_EQ(row.cy, cy) << "iPaper " << row.iPaper;
    }

    dm.bCustomPaper = TRUE;
    dm.iCustomUnit = UNIT_PIXEL;
    dm.iResolution = 200;
    dm.iCustomWidth = 1000;
    dm.iCustomHeight = 2000;
    INT cx, cy;
    ComputePaperSize(&dm, &cx, &cy);
    EXPECT_EQ(1270, cx);
    EXPECT_EQ(2540, cy);
}

TEST(PaperTable, LooksUpByIdAndExactName)
{
    EXPECT_EQ(14, FindPaperById(DMPAPER_A4));
    EXPECT_EQ(-1, FindPaperById(DMPAPER_USER));
    EXPECT_EQ(0, FindPaperByName(L"Letter/ANSI A", CCHFORMNAME));
    EXPECT_EQ(-1, FindPaperByName(L"letter/ansi a", CCHFORMNAME));
    EXPECT_EQ(28, FindPaperByName(L"Конверт DL ", CCHFORMNAME));
    EXPECT_EQ(-1, FindPaperByName(L"Конверт DL", CCHFORMNAME));
    for (int i = 0; i < PAPER_COUNT; i++)
        EXPECT_LT(wcslen(g_Papers[i].szName), (size_t)CCHFORMNAME) << "row " << i;
}

TEST(GetSpecVersion, FollowsSizeThenOwnVersion)
{
    Layout l;
    struct { WORD size, version, expected; } rows[] = {
        { 188, 0, 0x0320 }, { 212, 0, 0x0400 }, { 220, 7, 0x0401 },
        { 200, 0x0333, 0x0333 }, { 200, 0, 0 }, { 40, 0x0401, 0 },
    };
    for (size_t i = 0; i < ARRAY_COUNT(rows); i++) {
        MakeLayout(&l, rows[i].size, 0, rows[i].version, 0);
        EXPECT_EQ(rows[i].expected, GetSpecVersion(l.dm())) << "row " << i;
    }
    EXPECT_EQ(0, GetSpecVersion(NULL));
}

TEST(ConvertRecord, CopiesTheCommonPartsIntoTheTargetsLayout)
{
    QLRDEVMODE src = Defaults();
    src.iOutputFormat = FORMAT_TIFF;
    src.dmPublic.dmOrientation = 2;
    Layout target;
    MakeLayout(&target, 188, 100, 0x0320, 0xAB);
    target.dm()->dmDriverVersion = 0x1234;

    EXPECT_EQ(188 + 100, ConvertRecord(&src.dmPublic, target.dm()));
    EXPECT_EQ(188, target.dm()->dmSize);
    EXPECT_EQ(100, target.dm()->dmDriverExtra);
    EXPECT_EQ(0x0320, target.dm()->dmSpecVersion);
    EXPECT_EQ(0x1234, target.dm()->dmDriverVersion);
    EXPECT_STREQ(QLR_PRODUCT_NAME, target.dm()->dmDeviceName);
    EXPECT_EQ(2, target.dm()->dmOrientation);
    // The private part moves to the target's dmSize and stops at its extra.
    EXPECT_EQ(0, memcmp(target.bytes + 188, &src.dwSignature, 100));
    EXPECT_EQ(0xAB, target.bytes[288]);
}

TEST(ConvertRecord, RefusesRecordsWithoutAVersion)
{
    QLRDEVMODE work = Defaults();
    Layout bad;
    MakeLayout(&bad, 200, 0, 0, 0x11);
    QLRDEVMODE before = work;
    EXPECT_EQ(-1, ConvertRecord(bad.dm(), &work.dmPublic));
    EXPECT_EQ(0, memcmp(&before, &work, sizeof(work)));

    Layout untouched;
    MakeLayout(&untouched, 200, 0, 0, 0x22);
    Layout copy = untouched;
    EXPECT_EQ(-1, ConvertRecord(&work.dmPublic, untouched.dm()));
    EXPECT_EQ(0, memcmp(copy.bytes, untouched.bytes, sizeof(copy.bytes)));
    EXPECT_EQ(-1, ConvertRecord(NULL, &work.dmPublic));
}

TEST(WriteOutRecord, TakesTheSmallerLayoutOfCallerAndWork)
{
    QLRDEVMODE work = Defaults();
    work.iResolution = 300;
    Layout in, out;

    MakeLayout(&in, 212, 4000, 0x0400, 0);
    memset(out.bytes, 0xEE, sizeof(out.bytes));
    EXPECT_TRUE(WriteOutRecord(&work, in.dm(), out.dm()));
    EXPECT_EQ(212, out.dm()->dmSize);
    EXPECT_EQ(0x0400, out.dm()->dmSpecVersion);
    EXPECT_EQ(QLR_PRIVATE_SIZE, out.dm()->dmDriverExtra);
    EXPECT_EQ(QLR_DRIVER_VERSION, out.dm()->dmDriverVersion);
    INT iResolution;
    memcpy(&iResolution, out.bytes + 212 + offsetof(QLRDEVMODE, iResolution) - QLR_PUBLIC_SIZE,
           sizeof(iResolution));
    EXPECT_EQ(300, iResolution);
    EXPECT_EQ(0xEE, out.bytes[212 + QLR_PRIVATE_SIZE]);

    MakeLayout(&in, 220, 0, 0x0401, 0);
    memset(out.bytes, 0xEE, sizeof(out.bytes));
    EXPECT_TRUE(WriteOutRecord(&work, in.dm(), out.dm()));
    EXPECT_EQ(0, out.dm()->dmDriverExtra);
    EXPECT_EQ(0xEE, out.bytes[220]);

    memset(out.bytes, 0xEE, sizeof(out.bytes));
    EXPECT_TRUE(WriteOutRecord(&work, NULL, out.dm()));
    EXPECT_EQ(0, memcmp(&work, out.bytes, sizeof(work)));
    EXPECT_EQ(0xEE, out.bytes[QLR_RECORD_SIZE]);
}

TEST(WriteOutRecord, AVersionlessCallerLayoutLeavesTheOutputAlone)
{
    QLRDEVMODE work = Defaults();
    Layout in, out;
    MakeLayout(&in, 200, 0, 0, 0);
    memset(out.bytes, 0x5A, sizeof(out.bytes));
    EXPECT_FALSE(WriteOutRecord(&work, in.dm(), out.dm()));
    for (size_t i = 0; i < sizeof(out.bytes); i++)
        ASSERT_EQ(0x5A, out.bytes[i]) << "byte " << i;
}

}  // namespace
