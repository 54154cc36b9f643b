// White-box tests of the merge that builds every working record: each layer
// may only change what it validly names.
#include <gtest/gtest.h>
#include <string.h>
#include "qlrui.h"

namespace {

QLRDEVMODE Defaults()
{
    QLRDEVMODE dm;
    SetDefDM(NULL, &dm);
    return dm;
}

// A public-only caller record: the fields set below and nothing else.
DEVMODEW PublicRecord(DWORD fields)
{
    DEVMODEW dm = {};
    dm.dmSize = sizeof(DEVMODEW);
    dm.dmSpecVersion = DM_SPECVERSION;
    dm.dmFields = fields;
    return dm;
}

TEST(MergeOrientation, OnlyPortraitAndLandscapeCount)
{
    struct { short value; int iOrientation; } rows[] = { { 2, 1 }, { 3, 1 }, { 0, 1 }, { 1, 0 } };
    QLRDEVMODE work = Defaults();
    for (const auto &row : rows) {
        DEVMODEW in = PublicRecord(DM_ORIENTATION);
        in.dmOrientation = row.value;
        MergeRecord(&in, &work);
        EXPECT_EQ(row.iOrientation, work.iOrientation) << "dmOrientation " << row.value;
        EXPECT_EQ(row.iOrientation + 1, work.dmPublic.dmOrientation) << "dmOrientation " << row.value;
    }
    DEVMODEW unnamed = PublicRecord(0);
    unnamed.dmOrientation = 2;
    MergeRecord(&unnamed, &work);
    EXPECT_EQ(0, work.iOrientation);
}

TEST(MergeResolution, ClampsAndKeepsTheThreeFieldsEqual)
{
    struct { short asked; int dpi; } rows[] = {
        { 10, 50 }, { 0, 50 }, { 5000, 2400 }, { 250, 250 }, { 2400, 2400 },
        { DMRES_HIGH, 300 }, { DMRES_DRAFT, 100 }, { -7, 100 },  // -7 leaves the last value
    };
    QLRDEVMODE work = Defaults();
    for (const auto &row : rows) {
        DEVMODEW in = PublicRecord(DM_PRINTQUALITY);
        in.dmPrintQuality = row.asked;
        in.dmYResolution = 1234;
        MergeRecord(&in, &work);
        EXPECT_EQ(row.dpi, work.iResolution) << "asked " << row.asked;
        EXPECT_EQ(row.dpi, work.dmPublic.dmPrintQuality) << "asked " << row.asked;
        EXPECT_EQ(row.dpi, work.dmPublic.dmYResolution) << "asked " << row.asked;
    }
}

TEST(MergePaper, TableRowsByIdThenExactName)
{
    QLRDEVMODE work = Defaults();
    DEVMODEW in = PublicRecord(DM_PAPERSIZE | DM_PAPERLENGTH);
    in.dmPaperSize = DMPAPER_A3;
    in.dmPaperLength = 20;
    MergeRecord(&in, &work);
    EXPECT_EQ(13, work.iPaper);
    EXPECT_FALSE(work.bCustomPaper);
    EXPECT_EQ(2970, work.dmPublic.dmPaperWidth);
    EXPECT_EQ(4200, work.dmPublic.dmPaperLength);
    EXPECT_STREQ(L"A3", work.dmPublic.dmFormName);
    EXPECT_EQ((DWORD)(DM_PAPERSIZE | DM_FORMNAME),
              work.dmPublic.dmFields & (DM_PAPERSIZE | DM_FORMNAME | DM_PAPERLENGTH | DM_PAPERWIDTH));

    in = PublicRecord(DM_PAPERSIZE | DM_FORMNAME);
    in.dmPaperSize = 999;
    lstrcpyW(in.dmFormName, L"Letter/ANSI A");
    MergeRecord(&in, &work);
    EXPECT_EQ(0, work.iPaper);
    EXPECT_EQ(DMPAPER_LETTER, work.dmPublic.dmPaperSize);
    EXPECT_EQ(2159, work.dmPublic.dmPaperWidth);

    // A form name filling its whole field, unterminated, matches no row.
    in = PublicRecord(DM_FORMNAME);
    for (int i = 0; i < CCHFORMNAME; i++)
        in.dmFormName[i] = L'A';
    in.dmPaperWidth = 1000;
    in.dmPaperLength = 1500;
    MergeRecord(&in, &work);
    EXPECT_TRUE(work.bCustomPaper);
}

TEST(MergePaper, UnknownFormsBecomeACustomSizeInTheRecordsUnit)
{
    struct { int unit, dpi; short width, length; int cx, cy, tenthsX, tenthsY; } rows[] = {
        { UNIT_THOU, 200, 2000, 1000, 7874, 3937, 2000, 1000 },
        { UNIT_PIXEL, 300, 2540, 1270, 3000, 1500, 2540, 1270 },
        { UNIT_TENTHMM, 200, 50, 20000, 100, 15240, 100, 15240 },
        { UNIT_POINT, 200, -5, 2540, 28, 720, 100, 2540 },
    };
    for (size_t i = 0; i < ARRAY_COUNT(rows); i++) {
        QLRDEVMODE work = Defaults();
        work.iCustomUnit = rows[i].unit;
        work.iPaper = 7;
        DEVMODEW in = PublicRecord(DM_PAPERSIZE | DM_PAPERWIDTH | DM_PAPERLENGTH | DM_PRINTQUALITY);
        in.dmPaperSize = DMPAPER_USER;
        in.dmPaperWidth = rows[i].width;
        in.dmPaperLength = rows[i].length;
        in.dmPrintQuality = (short)rows[i].dpi;
        MergeRecord(&in, &work);
        EXPECT_TRUE(work.bCustomPaper) << "row " << i;
        EXPECT_EQ(DMPAPER_USER, work.dmPublic.dmPaperSize) << "row " << i;
        EXPECT_EQ(rows[i].cx, work.iCustomWidth) << "row " << i;
        EXPECT_EQ(rows[i].cy, work.iCustomHeight) << "row " << i;
        EXPECT_EQ(rows[i].tenthsX, work.dmPublic.dmPaperWidth) << "row " << i;
        EXPECT_EQ(rows[i].tenthsY, work.dmPublic.dmPaperLength) << "row " << i;
        EXPECT_EQ(7, work.iPaper) << "row " << i;
        EXPECT_STREQ(L"", work.dmPublic.dmFormName) << "row " << i;
        EXPECT_EQ((DWORD)(DM_PAPERWIDTH | DM_PAPERLENGTH),
                  work.dmPublic.dmFields & (DM_PAPERSIZE | DM_FORMNAME | DM_PAPERLENGTH | DM_PAPERWIDTH))
            << "row " << i;
    }
}

// A record of this driver with every private field changed from the defaults.
QLRDEVMODE OwnRecord()
{
    QLRDEVMODE dm = Defaults();
    dm.dmPublic.dmFields = 0;
    dm.iPaper = 3;
    dm.iOrientation = 1;
    dm.iResolution = 600;
    dm.bCustomPaper = TRUE;
    dm.iCustomWidth = 500;
    dm.iCustomHeight = 700;
    dm.iCustomUnit = UNIT_POINT;
    dm.bCropEdges = TRUE;
    dm.iOutputFormat = FORMAT_TIFF;
    dm.iBmpBitsPerPixel = 8;
    dm.iTiffCompression = 6;
    dm.bDcxMultiPage = FALSE;
    dm.bShowResult = FALSE;
    dm.bUseCustomViewer = TRUE;
    lstrcpyW(dm.szOutputFolder, L"d:\\out");
    lstrcpyW(dm.szFileNameMask, L"&[Page]");
    lstrcpyW(dm.szViewerPath, L"c:\\view.exe");
    lstrcpyW(dm.szViewerParams, L"/p %f");
    lstrcpyW(dm.szComments, L"comment");
    dm.m_bProfiled = TRUE;
    return dm;
}

TEST(MergePrivate, OwnRecordsPassTheirOptionsButNotTheirPaperState)
{
    QLRDEVMODE in = OwnRecord();
    QLRDEVMODE work = Defaults();
    MergeRecord(&in.dmPublic, &work);

    EXPECT_EQ(UNIT_POINT, work.iCustomUnit);
    EXPECT_EQ(500, work.iCustomWidth);
    EXPECT_EQ(700, work.iCustomHeight);
    EXPECT_TRUE(work.bCropEdges);
    EXPECT_EQ(FORMAT_TIFF, work.iOutputFormat);
    EXPECT_EQ(8, work.iBmpBitsPerPixel);
    EXPECT_EQ(6, work.iTiffCompression);
    EXPECT_FALSE(work.bDcxMultiPage);
    EXPECT_FALSE(work.bShowResult);
    EXPECT_TRUE(work.bUseCustomViewer);
    EXPECT_STREQ(L"d:\\out", work.szOutputFolder);
    EXPECT_STREQ(L"&[Page]", work.szFileNameMask);
    EXPECT_STREQ(L"c:\\view.exe", work.szViewerPath);
    EXPECT_STREQ(L"/p %f", work.szViewerParams);
    EXPECT_TRUE(work.m_bProfiled);

    EXPECT_EQ(14, work.iPaper);
    EXPECT_EQ(0, work.iOrientation);
    EXPECT_EQ(200, work.iResolution);
    EXPECT_FALSE(work.bCustomPaper);
    EXPECT_STREQ(L"", work.szComments);
    EXPECT_STREQ(QLR_PRODUCT_NAME, work.dmPublic.dmDeviceName);
}

TEST(MergePrivate, UnterminatedStringsArriveTerminated)
{
    QLRDEVMODE in = OwnRecord();
    for (int i = 0; i < QLR_PATH_CHARS; i++)
        in.szOutputFolder[i] = L'x';
    QLRDEVMODE work = Defaults();
    MergeRecord(&in.dmPublic, &work);
    EXPECT_EQ((size_t)QLR_PATH_CHARS - 1, wcslen(work.szOutputFolder));
}

TEST(MergePrivate, ForeignAndShortRecordsContributeOnlyPublicFields)
{
    QLRDEVMODE foreign = OwnRecord();
    foreign.dwSignature = 0x12345678;
    QLRDEVMODE other = OwnRecord();
    other.dwPrivVersion = 0x2011;
    for (QLRDEVMODE *in : { &foreign, &other }) {
        QLRDEVMODE work = Defaults();
        in->dmPublic.dmFields = DM_ORIENTATION;
        in->dmPublic.dmOrientation = 2;
        MergeRecord(&in->dmPublic, &work);
        EXPECT_EQ(1, work.iOrientation);
        EXPECT_EQ(FORMAT_JPEG, work.iOutputFormat);
        EXPECT_STREQ(L"c:\\QLR Output Files", work.szOutputFolder);
    }

    // A public-only record keeps the private part, custom size aside.
    QLRDEVMODE work = OwnRecord();
    QLRDEVMODE before = work;
    DEVMODEW in = PublicRecord(DM_PAPERWIDTH | DM_PAPERLENGTH);
    in.dmPaperWidth = 720;
    in.dmPaperLength = 1440;
    MergeRecord(&in, &work);
    EXPECT_EQ(0, memcmp(&before.bCropEdges, &work.bCropEdges, sizeof(BOOL)));
    EXPECT_EQ(0, memcmp(&before.iOutputFormat, &work.iOutputFormat,
                        sizeof(QLRDEVMODE) - offsetof(QLRDEVMODE, iOutputFormat)));
    EXPECT_EQ(UNIT_POINT, work.iCustomUnit);
    EXPECT_EQ(204, work.iCustomWidth);   // 72 mm in points
}

TEST(MergeRecord, VersionlessOrMissingRecordsChangeNothingButTheName)
{
    QLRDEVMODE work = OwnRecord();
    CopyBounded(work.dmPublic.dmDeviceName, L"Other", CCHDEVICENAME);
    QLRDEVMODE before = work;
    BYTE bad[512] = {};
    ((DEVMODEW *)bad)->dmSize = 200;
    ((DEVMODEW *)bad)->dmFields = DM_ORIENTATION;
    MergeRecord((DEVMODEW *)bad, &work);
    EXPECT_STREQ(QLR_PRODUCT_NAME, work.dmPublic.dmDeviceName);
    CopyBounded(work.dmPublic.dmDeviceName, L"Other", CCHDEVICENAME);
    EXPECT_EQ(0, memcmp(&before, &work, sizeof(work)));

    MergeRecord(NULL, &work);
    EXPECT_EQ(0, memcmp(&before, &work, sizeof(work)));
}

TEST(NormalizePrintQuality, ReplacesDmresCodesInPlace)
{
    struct { short in, out; } rows[] = {
        { DMRES_DRAFT, 100 }, { DMRES_LOW, 150 }, { DMRES_MEDIUM, 200 }, { DMRES_HIGH, 300 },
        { -5, -5 }, { 600, 600 },
    };
    for (const auto &row : rows) {
        DEVMODEW dm = PublicRecord(0);
        dm.dmPrintQuality = row.in;
        dm.dmYResolution = 77;
        NormalizePrintQuality(&dm);
        EXPECT_EQ(row.out, dm.dmPrintQuality) << "in " << row.in;
        EXPECT_EQ(row.out, dm.dmYResolution) << "in " << row.in;
    }
    // A record whose public part stops short of dmYResolution is left alone.
    DEVMODEW shortRecord = PublicRecord(0);
    shortRecord.dmSize = 90;
    shortRecord.dmPrintQuality = DMRES_HIGH;
    NormalizePrintQuality(&shortRecord);
    EXPECT_EQ(DMRES_HIGH, shortRecord.dmPrintQuality);
    NormalizePrintQuality(NULL);
}

TEST(BuildWorkingRecord, WithoutAPrinterHandleMergesOnlyTheCaller)
{
    QLRDEVMODE work;
    memset(&work, 0xCC, sizeof(work));
    BuildWorkingRecord(NULL, NULL, &work);
    QLRDEVMODE expected = Defaults();
    SetProductName(&expected.dmPublic);
    EXPECT_EQ(0, memcmp(&expected, &work, sizeof(work)));

    DEVMODEW in = PublicRecord(DM_PRINTQUALITY);
    in.dmPrintQuality = 600;
    BuildWorkingRecord(NULL, &in, &work);
    EXPECT_EQ(600, work.iResolution);
    EXPECT_STREQ(QLR_PRODUCT_NAME, work.dmPublic.dmDeviceName);
}

}  // namespace
