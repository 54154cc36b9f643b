// The output-format page and its six panels inside the real sheet: every
// repair and enabling rule, driven through the controls as a user would.
#include "sheet_fixture.h"

namespace {

enum { BMP, GIF, JPEG, TIFF, PCX, DCX };

class FormatPage : public Sheet {
protected:
    HWND page = NULL;
    HWND panels[6] = {};

    // The format page on a current profile holding `stored`, or the factory
    // defaults; `panels` are its six panels in format order.
    QLRDEVMODE Run(const QLRDEVMODE *stored, const std::function<void()> &drive)
    {
        return RunOnPage(1, stored ? *stored : Profile(FORMAT_JPEG, L""), [&](HWND p) {
            page = p;
            HWND panel = NULL;
            for (int i = 0; i < 6; i++)
                panels[i] = panel = FindWindowExW(page, panel, L"#32770", NULL);
            drive();
        });
    }
    QLRDEVMODE Stored(int format)
    {
        QLRDEVMODE dm = Profile(format, L"first");
        return dm;
    }
    void SelectFormat(int format) { Choose(page, 1020, format); }
    void Click(int panel, int id) { SendDlgItemMessageW(panels[panel], id, BM_CLICK, 0, 0); }
    bool Checked(int panel, int id) { return IsDlgButtonChecked(panels[panel], id) == BST_CHECKED; }
    bool Enabled(int panel, int id) { return IsWindowEnabled(GetDlgItem(panels[panel], id)) != FALSE; }
    std::wstring Text(int panel, int id) { return TextOf(GetDlgItem(panels[panel], id)); }
    void TypeInto(int panel, int id, LPCWSTR text, WORD leave)
    {
        SetDlgItemTextW(panels[panel], id, text);
        SendMessageW(panels[panel], WM_COMMAND, MAKEWPARAM(id, leave), (LPARAM)GetDlgItem(panels[panel], id));
    }
};

TEST_F(FormatPage, FactoryDefaultsOpenOnJpegAt24Bits)
{
    QLRDEVMODE out = Run(NULL, [&] {
        EXPECT_EQ(L"JPEG Image", TextOf(GetDlgItem(page, 1020)));
        EXPECT_TRUE(IsWindowVisible(panels[JPEG]));
        for (int other : { BMP, GIF, TIFF, PCX, DCX })
            EXPECT_FALSE(IsWindowVisible(panels[other])) << "panel " << other;
        EXPECT_TRUE(Checked(JPEG, 1025));
        EXPECT_FALSE(Checked(JPEG, 1030));
        EXPECT_FALSE(Checked(JPEG, 1029));
        EXPECT_FALSE(Enabled(JPEG, 1029));
        EXPECT_FALSE(Enabled(JPEG, 1023));
        EXPECT_EQ(L"100", Text(JPEG, 1037));
        ReportChange(page);
    });
    EXPECT_EQ(FORMAT_JPEG, out.iOutputFormat);
    EXPECT_EQ(24, out.iJpegBitsPerPixel);
    EXPECT_EQ(100, out.iJpegQuality);
    EXPECT_EQ(2, out.iJpegSubsampling) << "the hidden subsampling stays";
    EXPECT_EQ(DMCOLOR_COLOR, out.dmPublic.dmColor);
    EXPECT_EQ(32u, out.dmPublic.dmBitsPerPel);
}

TEST_F(FormatPage, BmpDepthFollowsGreyscaleAndDithering)
{
    QLRDEVMODE stored = Stored(FORMAT_BMP);
    stored.iBmpBitsPerPixel = 16;
    stored.bBmpDither = TRUE;
    QLRDEVMODE out = Run(&stored, [&] {
        EXPECT_TRUE(IsWindowVisible(panels[BMP]));
        EXPECT_TRUE(Checked(BMP, 1024));
        EXPECT_FALSE(Checked(BMP, 1029)) << "no dithering at 16 bits";
        EXPECT_FALSE(Enabled(BMP, 1029));
        EXPECT_FALSE(Enabled(BMP, 1021));
        Click(BMP, 1030);               // greyscale: 16 bits is too deep
        EXPECT_TRUE(Checked(BMP, 1023));
        EXPECT_TRUE(Enabled(BMP, 1029));
        EXPECT_TRUE(Enabled(BMP, 1021));
        EXPECT_FALSE(Enabled(BMP, 1024));
        Click(BMP, 1021);               // 1 bit, then back to colour: 4 bits
        Click(BMP, 1030);
        EXPECT_TRUE(Checked(BMP, 1022));
        Click(BMP, 1029);
    });
    EXPECT_EQ(FORMAT_BMP, out.iOutputFormat);
    EXPECT_EQ(4, out.iBmpBitsPerPixel);
    EXPECT_FALSE(out.bBmpGrayscale);
    EXPECT_TRUE(out.bBmpDither);
}

TEST_F(FormatPage, JpegGreyscaleSwitchesTheDepth)
{
    QLRDEVMODE out = Run(NULL, [&] {
        Click(JPEG, 1030);
        EXPECT_TRUE(Checked(JPEG, 1023));
        EXPECT_FALSE(Enabled(JPEG, 1025));
        EXPECT_TRUE(Enabled(JPEG, 1029));
        Click(JPEG, 1029);
        EXPECT_TRUE(Checked(JPEG, 1029));
        Click(JPEG, 1030);
        EXPECT_TRUE(Checked(JPEG, 1025));
        EXPECT_FALSE(Checked(JPEG, 1029)) << "dithering is cleared above 8 bits";
        EXPECT_FALSE(Enabled(JPEG, 1029));
    });
    EXPECT_EQ(24, out.iJpegBitsPerPixel);
    EXPECT_FALSE(out.bJpegDither);
    EXPECT_FALSE(out.bJpegGrayscale);
}

TEST_F(FormatPage, TiffCompressionFollowsTheDepth)
{
    struct { int depth, stored, shownId; bool quality; } rows[] = {
        { 8, 1, 1046, false },          // RLE at 8 bits: LZW
        { 1, 5, 1045, false },          // JPEG at 1 bit: CCITT Fax 4, no quality
        { 24, 5, 1047, true },          // JPEG at 24 bits stays, with quality
    };
    for (const auto &row : rows) {
        QLRDEVMODE stored = Stored(FORMAT_TIFF);
        stored.iTiffBitsPerPixel = row.depth;
        stored.iTiffCompression = row.stored;
        Run(&stored, [&] {
            EXPECT_TRUE(Checked(TIFF, row.shownId)) << "depth " << row.depth;
            EXPECT_EQ(row.quality, Enabled(TIFF, 1037)) << "depth " << row.depth;
            EXPECT_EQ(row.depth == 1, Enabled(TIFF, 1044)) << "depth " << row.depth;
            EXPECT_EQ(row.depth != 1, Enabled(TIFF, 1047)) << "depth " << row.depth;
        });
    }

    QLRDEVMODE stored = Stored(FORMAT_TIFF);
    stored.iTiffBitsPerPixel = 1;
    stored.iTiffCompression = 2;
    stored.bTiffDither = TRUE;
    QLRDEVMODE out = Run(&stored, [&] {
        EXPECT_TRUE(Checked(TIFF, 1044));
        EXPECT_TRUE(Enabled(TIFF, 1029));
        Click(TIFF, 1025);
        EXPECT_TRUE(Checked(TIFF, 1046)) << "CCITT at 24 bits becomes LZW";
        EXPECT_FALSE(Checked(TIFF, 1029));
        EXPECT_FALSE(Enabled(TIFF, 1029));
        Click(TIFF, 1047);
        EXPECT_TRUE(Enabled(TIFF, 1037));
        TypeInto(TIFF, 1037, L"42", EN_CHANGE);
    });
    EXPECT_EQ(24, out.iTiffBitsPerPixel);
    EXPECT_EQ(5, out.iTiffCompression);
    EXPECT_EQ(42, out.iTiffQuality);
    EXPECT_FALSE(out.bTiffDither);
}

TEST_F(FormatPage, NumberEditsFallBackAndClamp)
{
    struct { LPCWSTR colours, shown; LPCWSTR quality; int collected; } rows[] = {
        { L"1", L"2", L"", 75 }, { L"999", L"256", L"0", 1 }, { L"", L"256", L"150", 100 },
    };
    for (const auto &row : rows) {
        QLRDEVMODE out = Run(NULL, [&] {
            SelectFormat(GIF);
            TypeInto(GIF, 1035, row.colours, EN_KILLFOCUS);
            EXPECT_EQ(row.shown, Text(GIF, 1035)) << "shown after typing";
            SelectFormat(JPEG);
            TypeInto(JPEG, 1037, row.quality, EN_CHANGE);
        });
        EXPECT_EQ(row.collected, out.iJpegQuality);
        EXPECT_EQ(_wtoi(row.shown), out.iGifColors);
    }
}

TEST_F(FormatPage, SwitchingFormatsKeepsEveryFormatsOptionsAndCollectReadsAllPanels)
{
    QLRDEVMODE out = Run(NULL, [&] {
        SelectFormat(TIFF);
        EXPECT_TRUE(IsWindowVisible(panels[TIFF]));
        EXPECT_FALSE(IsWindowVisible(panels[JPEG]));
        Click(TIFF, 1021);
        Click(TIFF, 1048);
        Click(TIFF, 1028);
        SelectFormat(GIF);
        Click(GIF, 1027);
        SelectFormat(PCX);
        Click(PCX, 1030);
        SelectFormat(DCX);
        Click(DCX, 1022);
        Click(DCX, 1028);
        SelectFormat(JPEG);
        SelectFormat(TIFF);
        EXPECT_TRUE(Checked(TIFF, 1021));
        EXPECT_TRUE(Checked(TIFF, 1048));
    });
    EXPECT_EQ(FORMAT_TIFF, out.iOutputFormat);
    EXPECT_EQ(1, out.iTiffBitsPerPixel);
    EXPECT_EQ(6, out.iTiffCompression);
    EXPECT_FALSE(out.bTiffMultiPage);
    EXPECT_TRUE(out.bGifInterlaced);
    EXPECT_TRUE(out.bPcxGrayscale);
    EXPECT_EQ(8, out.iPcxBitsPerPixel);
    EXPECT_EQ(4, out.iDcxBitsPerPixel);
    EXPECT_FALSE(out.bDcxMultiPage);
    EXPECT_EQ(24, out.iJpegBitsPerPixel);
}

TEST_F(FormatPage, NoSelectionCollectsJpegAndShowsBmp)
{
    QLRDEVMODE out = Run(NULL, [&] {
        Choose(page, 1020, -1);
        EXPECT_TRUE(IsWindowVisible(panels[BMP])) << "a change without a selection shows BMP";
    });
    EXPECT_EQ(FORMAT_JPEG, out.iOutputFormat);

    QLRDEVMODE stored = Stored(FORMAT_JPEG);
    stored.iOutputFormat = 17;
    out = Run(&stored, [&] {
        EXPECT_EQ(L"JPEG Image", TextOf(GetDlgItem(page, 1020)));
        EXPECT_TRUE(IsWindowVisible(panels[JPEG]));
    });
    EXPECT_EQ(FORMAT_JPEG, out.iOutputFormat) << "a format without a panel is shown and kept as JPEG";
}

}  // namespace
