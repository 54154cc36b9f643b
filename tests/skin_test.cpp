// The custom-drawn controls under a fixed classic colour scheme: painters
// rendered into a DIB and checked pixel by pixel, and real controls driven by
// messages and read back from their window.
#include <gtest/gtest.h>
#include "skin/skin.h"
#include "skin_host.h"
#include "capture.h"
#include "png.h"

namespace {

const COLORREF FACE = RGB(192, 192, 192), SHADOW = RGB(128, 128, 128), HILIGHT = RGB(255, 255, 255),
               DARK = RGB(0, 0, 0), LIGHT = RGB(223, 223, 223), FRAME = RGB(0, 0, 0),
               HALFSHADOW = RGB(160, 160, 160), HALFDARK = RGB(64, 64, 64), WHITE = RGB(255, 255, 255);

class Skin : public ::testing::Test {
protected:
    static void SetUpTestSuite() { UseClassicColours(); }
    static void TearDownTestSuite() { RestoreColours(); }
    void SetUp() override { ASSERT_TRUE(host.Create()); }
    void TearDown() override { host.Destroy(); }
    SkinHost host;
};

// ---- palette ----------------------------------------------------------------

TEST_F(Skin, PaletteLivesFromFirstAttachToLastControl)
{
    ASSERT_EQ(nullptr, GetSkinListHead()) << "another test left controls attached";
    EXPECT_EQ(nullptr, g_Skin.hpenFace);
    HWND a = host.AddButton(IDC_PUSH, BS_PUSHBUTTON, L"OK", 75, 23);
    HWND b = host.AddButton(IDC_CHECK, BS_AUTOCHECKBOX, L"Check", 120, 16);
    AttachPushButton(host.hwnd, IDC_PUSH);
    EXPECT_NE(nullptr, g_Skin.hpenHalfDark);
    EXPECT_EQ(HALFSHADOW, g_Skin.clrHalfShadow);
    EXPECT_EQ(HALFDARK, g_Skin.clrHalfDark);
    AttachCheckBox(host.hwnd, IDC_CHECK);
    AttachCheckBox(host.hwnd, 9999);          // a control the dialog lacks
    EXPECT_EQ(b, GetSkinListHead()->pNext->hwnd);
    EXPECT_EQ(nullptr, GetSkinListHead()->pNext->pNext);

    DestroyWindow(a);
    EXPECT_NE(nullptr, g_Skin.hpenFace) << "one control still listed";
    EXPECT_EQ(b, GetSkinListHead()->hwnd);
    DestroyWindow(b);
    EXPECT_EQ(nullptr, GetSkinListHead());
    EXPECT_EQ(nullptr, g_Skin.hpenFace);
    EXPECT_EQ(nullptr, g_Skin.hpenHalfDark);

    // The next attach reads the colours of that moment.
    SetColour(COLOR_BTNFACE, RGB(200, 100, 50));
    host.AddButton(IDC_PUSH, BS_PUSHBUTTON, L"OK", 75, 23);
    AttachPushButton(host.hwnd, IDC_PUSH);
    EXPECT_EQ(RGB(200, 100, 50), g_Skin.clrFace);
    EXPECT_EQ(RGB(164, 114, 89), g_Skin.clrHalfShadow);   // 200 + (-72 >> 1), 100 + (28 >> 1), 50 + (78 >> 1)
    UseClassicColours();
}

TEST(SkinColours, DarkenAndLightenClipPerChannel)
{
    EXPECT_EQ(RGB(0, 10, 215), DarkenColor(RGB(39, 50, 255), 40));
    EXPECT_EQ(RGB(255, 90, 41), LightenColor(RGB(216, 50, 1), 40));
    EXPECT_EQ(0u, DarkenColor(0xFF000000 | RGB(10, 10, 10), 40) >> 24);
}

// ---- push buttons -----------------------------------------------------------

TEST_F(Skin, PushButtonRaisedSunkenAndDisabled)
{
    host.AddButton(IDC_PUSH, BS_PUSHBUTTON, L"", 75, 23);
    AttachPushButton(host.hwnd, IDC_PUSH);
    const int R = 75, B = 23;
    struct { UINT state; int x, y; COLORREF expected; const char *what; } rows[] = {
        { 0, 0, 0, FACE, "outside the rounded corner" },
        { 0, 5, 0, FRAME, "outline" },
        { 0, 0, 2, HALFDARK, "softened corner" },
        { 0, R - 3, B - 1, HALFDARK, "softened corner" },
        { 0, 2, 2, HILIGHT, "highlight" },
        { 0, 3, 3, HILIGHT, "highlight dot" },
        { 0, 1, 2, HALFSHADOW, "beside the softened corner" },
        { 0, 2, 1, HALFSHADOW, "" },
        { 0, 10, B - 3, HALFSHADOW, "inner shadow" },
        { 0, 10, B - 2, SHADOW, "outer shadow" },
        { 0, R - 2, 10, SHADOW, "outer shadow" },
        { 0, R - 3, 10, HALFSHADOW, "inner shadow" },
        { 0, 10, 10, FACE, "face" },
        { ODS_SELECTED, 10, 10, HALFSHADOW, "pressed face" },
        { ODS_SELECTED, 1, 10, HALFDARK, "" },
        { ODS_SELECTED, 2, 10, SHADOW, "" },
        { ODS_SELECTED, 10, B - 2, LIGHT, "" },
        { ODS_SELECTED, 10, B - 3, FACE, "" },
        { ODS_SELECTED, R - 2, 2, FACE, "" },
        { ODS_SELECTED, R - 3, 1, SHADOW, "" },
        { ODS_SELECTED, 0, 2, HALFDARK, "softened corner" },
        { ODS_DISABLED, 0, 2, FRAME, "no corner pixels" },
        { ODS_DISABLED, 2, 2, FACE, "no bevel" },
        { ODS_DISABLED, 10, B - 2, FACE, "no bevel" },
    };
    for (const auto &row : rows) {
        Dib dib = host.Render(IDC_PUSH, row.state);
        EXPECT_EQ(row.expected, dib.Pixel(row.x, row.y))
            << row.what << " at " << row.x << "," << row.y << " state " << row.state;
    }
}

TEST_F(Skin, ButtonCaptionColours)
{
    host.AddButton(IDC_PUSH, BS_PUSHBUTTON, L"WWWW", 75, 23);
    host.AddButton(IDC_CHECK, BS_AUTOCHECKBOX, L"WWWW", 120, 16);
    AttachPushButton(host.hwnd, IDC_PUSH);
    AttachCheckBox(host.hwnd, IDC_CHECK);
    RECT caption = { 20, 4, 55, 19 };
    EXPECT_TRUE(host.Render(IDC_PUSH, 0).Contains(caption, DARK));
    EXPECT_FALSE(host.Render(IDC_PUSH, 0).Contains(caption, HILIGHT));
    EXPECT_TRUE(host.Render(IDC_PUSH, ODS_SELECTED).Contains(caption, HILIGHT));
    EXPECT_TRUE(host.Render(IDC_PUSH, ODS_SELECTED | ODS_DISABLED).Contains(caption, SHADOW));
    EXPECT_FALSE(host.Render(IDC_PUSH, ODS_SELECTED | ODS_DISABLED).Contains(caption, HILIGHT));

    RECT checkCaption = { 17, 0, 120, 16 };
    EXPECT_TRUE(host.Render(IDC_CHECK, ODS_DISABLED).Contains(checkCaption, SHADOW));
    EXPECT_FALSE(host.Render(IDC_CHECK, ODS_DISABLED).Contains(checkCaption, DARK));
    RECT beforeCaption = { 14, 0, 17, 16 };
    EXPECT_FALSE(host.Render(IDC_CHECK, 0).Contains(beforeCaption, DARK));
}

TEST_F(Skin, FocusRectangleSurroundsTheCaptionOnly)
{
    host.AddButton(IDC_PUSH, BS_PUSHBUTTON, L"", 75, 23);
    host.AddButton(IDC_CHECK, BS_AUTOCHECKBOX, L"", 120, 16);
    AttachPushButton(host.hwnd, IDC_PUSH);
    AttachCheckBox(host.hwnd, IDC_CHECK);
    // DrawFocusRect inverts every other pixel of the rectangle: x + y even.
    Dib push = host.Render(IDC_PUSH, ODS_FOCUS);
    EXPECT_NE(FACE, push.Pixel(4, 10));
    EXPECT_EQ(FACE, push.Pixel(4, 11));
    EXPECT_NE(FACE, push.Pixel(10, 4));
    EXPECT_EQ(FACE, push.Pixel(10, 5));

    // An empty caption sits at x 17; the rectangle grows one pixel around it
    // and never reaches the mark at x 0..13.
    Dib check = host.Render(IDC_CHECK, ODS_FOCUS);
    Dib plain = host.Render(IDC_CHECK, 0);
    RECT mark = { 0, 0, 16, 16 };
    EXPECT_TRUE(check.SameAs(plain, mark));
    EXPECT_FALSE(check.SameAs(plain, RECT{ 16, 0, 19, 16 }));
}

// ---- check boxes and radio buttons -------------------------------------------

TEST_F(Skin, CheckMarkLooks)
{
    host.AddButton(IDC_CHECK, BS_AUTOCHECKBOX, L"", 120, 16);
    AttachCheckBox(host.hwnd, IDC_CHECK);
    const int bx = 0, by = 1;      // ((16 - 12) >> 1) - 1
    struct { int check, pressed; int x, y; COLORREF expected; const char *what; } rows[] = {
        { 0, 0, 0, 0, FRAME, "outline" },
        { 0, 0, 1, 1, HILIGHT, "inner frame top-left" },
        { 0, 0, 10, 10, SHADOW, "inner frame bottom-right" },
        { 0, 0, 10, 1, FACE, "where the frame colours meet" },
        { 0, 0, 5, 5, FACE, "inside" },
        { 0, 1, 5, 5, HALFSHADOW, "pressed inside" },
        { 0, 1, 1, 1, SHADOW, "pressed frame top-left" },
        { 0, 1, 10, 10, LIGHT, "pressed frame bottom-right" },
        { 1, 0, 2, 5, DARK, "tick" },
        { 1, 0, 12, 1, DARK, "tick beyond the box" },
        { 1, 0, 12, 2, SHADOW, "tick tip" },
        { 1, 0, 13, 2, HALFSHADOW, "tick tip shade" },
        { 1, 0, 3, 7, HALFSHADOW, "tick underside" },
        { 2, 0, 3, 5, DARK, "dash" },
        { 2, 0, 8, 6, DARK, "dash" },
        { 2, 0, 9, 6, HALFSHADOW, "dash end" },
        { 2, 0, 4, 7, HALFSHADOW, "dash shade" },
    };
    SKINCONTROL *pControl = FindSkinControl(GetDlgItem(host.hwnd, IDC_CHECK));
    for (const auto &row : rows) {
        pControl->bPressed = row.pressed;
        Dib dib = host.RenderMark(IDC_CHECK, 0, row.check);
        EXPECT_EQ(row.expected, dib.Pixel(bx + row.x, by + row.y))
            << row.what << " at " << row.x << "," << row.y;
    }
    pControl->bPressed = 0;
    Dib disabled = host.RenderMark(IDC_CHECK, ODS_DISABLED, 1);
    EXPECT_EQ(SHADOW, disabled.Pixel(bx, by));
    EXPECT_EQ(FACE, disabled.Pixel(bx + 1, by + 1));
    EXPECT_EQ(SHADOW, disabled.Pixel(bx + 12, by + 1));
    EXPECT_EQ(HALFSHADOW, disabled.Pixel(bx + 12, by + 2));
}

TEST_F(Skin, RadioMarkLooks)
{
    host.AddButton(IDC_RADIO, BS_AUTORADIOBUTTON, L"", 120, 16);
    AttachRadioButton(host.hwnd, IDC_RADIO);
    const int X = 1, Y = 1;
    SKINCONTROL *pControl = FindSkinControl(GetDlgItem(host.hwnd, IDC_RADIO));

    Dib raised = host.RenderMark(IDC_RADIO, 0, 0);
    EXPECT_EQ(LIGHT, raised.Pixel(X + 5, Y + 1));
    EXPECT_EQ(HILIGHT, raised.Pixel(X + 3, Y + 5));
    EXPECT_EQ(FACE, raised.Pixel(X + 2, Y + 2));
    EXPECT_EQ(SHADOW, raised.Pixel(X + 5, Y + 10));
    EXPECT_EQ(SHADOW, raised.Pixel(X, Y + 3));
    EXPECT_EQ(FACE, raised.Pixel(X + 7, Y + 7)) << "no dot";

    Dib checked = host.RenderMark(IDC_RADIO, 0, 1);
    EXPECT_EQ(SHADOW, checked.Pixel(X + 5, Y + 1)) << "sunk in: the shadow turned to the top";
    EXPECT_EQ(FACE, checked.Pixel(X + 9, Y + 9));
    EXPECT_EQ(DARK, checked.Pixel(X + 5, Y + 5)) << "dot";

    pControl->bPressed = 1;
    SKINPALETTE before = g_Skin;
    Dib pressed = host.RenderMark(IDC_RADIO, 0, 0);
    EXPECT_EQ(DarkenColor(SHADOW, 40), pressed.Pixel(X + 5, Y + 1));
    EXPECT_EQ(FACE - RGB(40, 40, 40), pressed.Pixel(X + 9, Y + 9));
    EXPECT_EQ(DarkenColor(FACE, 40), pressed.Pixel(X + 4, Y + 4)) << "held down, but no dot";
    EXPECT_EQ(0, memcmp(&before, &g_Skin, offsetof(SKINPALETTE, hpenFace)));
    EXPECT_NE(nullptr, g_Skin.hpenShadow);
    pControl->bPressed = 0;

    Dib disabled = host.RenderMark(IDC_RADIO, ODS_DISABLED, 1);
    EXPECT_EQ(SHADOW, disabled.Pixel(X + 5, Y));
    EXPECT_EQ(HALFSHADOW, disabled.Pixel(X, Y + 3));
    EXPECT_EQ(HILIGHT, raised.Pixel(X + 2, Y + 5));
    EXPECT_EQ(FACE, disabled.Pixel(X + 2, Y + 5)) << "no bead shading";
    EXPECT_EQ(SHADOW, disabled.Pixel(X + 5, Y + 5)) << "shadow dot";
}

TEST_F(Skin, PressedRadioRestoresExtremeColoursExactly)
{
    SetColour(COLOR_BTNFACE, RGB(30, 220, 39));
    SetColour(COLOR_BTNSHADOW, RGB(10, 250, 0));
    SetColour(COLOR_BTNHIGHLIGHT, RGB(255, 5, 216));
    SetColour(COLOR_3DLIGHT, RGB(39, 41, 215));
    host.AddButton(IDC_RADIO, BS_AUTORADIOBUTTON, L"", 120, 16);
    AttachRadioButton(host.hwnd, IDC_RADIO);
    SKINPALETTE before = g_Skin;
    FindSkinControl(GetDlgItem(host.hwnd, IDC_RADIO))->bPressed = 1;
    host.RenderMark(IDC_RADIO, 0, 1);
    EXPECT_EQ(0, memcmp(&before, &g_Skin, offsetof(SKINPALETTE, hpenFace)));
    UseClassicColours();
}

TEST_F(Skin, StateMessagesRepaintAtOnce)
{
    HWND check = host.AddButton(IDC_CHECK, BS_AUTOCHECKBOX, L"", 120, 16);
    HWND push = host.AddButton(IDC_PUSH, BS_PUSHBUTTON, L"", 75, 23, 0, 40);
    HWND radio = host.AddButton(IDC_RADIO, BS_AUTORADIOBUTTON, L"", 120, 16, 0, 80);
    AttachCheckBox(host.hwnd, IDC_CHECK);
    AttachPushButton(host.hwnd, IDC_PUSH);
    AttachRadioButton(host.hwnd, IDC_RADIO);
    host.Show();

    // No message is pumped between the state change and the read.
    SendMessageW(check, BM_SETCHECK, BST_CHECKED, 0);
    EXPECT_EQ(DARK, ScreenPixel(check, 12, 2)) << "tick";
    SendMessageW(check, BM_SETCHECK, BST_UNCHECKED, 0);
    EXPECT_EQ(FACE, ScreenPixel(check, 12, 2));
    SendMessageW(check, BM_SETSTATE, TRUE, 0);
    EXPECT_EQ(HALFSHADOW, ScreenPixel(check, 5, 6));
    EXPECT_EQ(1, FindSkinControl(check)->bPressed);
    SendMessageW(check, BM_SETSTATE, FALSE, 0);
    EXPECT_EQ(FACE, ScreenPixel(check, 5, 6));

    SendMessageW(push, BM_SETSTATE, TRUE, 0);
    EXPECT_EQ(HALFSHADOW, ScreenPixel(push, 10, 10));
    SendMessageW(push, BM_SETSTATE, FALSE, 0);
    EXPECT_EQ(FACE, ScreenPixel(push, 10, 10));

    EnableWindow(radio, FALSE);
    EXPECT_EQ(SHADOW, ScreenPixel(radio, 6, 1)) << "disabled ring";
    EnableWindow(radio, TRUE);
    EXPECT_EQ(FRAME, ScreenPixel(radio, 6, 1));
}

TEST_F(Skin, DefaultPushButtonLooksLikeAnyOther)
{
    HWND push = host.AddButton(IDC_PUSH, BS_PUSHBUTTON, L"WWWW", 75, 23);
    AttachPushButton(host.hwnd, IDC_PUSH);
    Dib plain = host.Render(IDC_PUSH, 0);
    SendMessageW(push, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    EXPECT_TRUE(FindSkinControl(push)->bDefault);
    Dib bold = host.Render(IDC_PUSH, 0);
    RECT whole = { 0, 0, 75, 23 };
    EXPECT_TRUE(bold.SameAs(plain, whole));
    EXPECT_EQ(HALFDARK, bold.Pixel(0, 2));
    EXPECT_EQ(HILIGHT, bold.Pixel(2, 2));
    SendMessageW(push, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
    EXPECT_FALSE(FindSkinControl(push)->bDefault);
}

// ---- group box ----------------------------------------------------------------

TEST_F(Skin, GroupBoxStaircaseFrameWithCaptionGap)
{
    HWND group = host.AddButton(IDC_GROUP, BS_GROUPBOX, L"Orientation", 200, 100);
    AttachGroupBox(host.hwnd, IDC_GROUP);
    host.Show();
    SIZE size = host.TextSize(L"Orientation");
    const int y = size.cy / 2, R = 200, B = 100;
    struct { int x, y; bool frame; } rows[] = {
        { 6, y, true }, { 3, y, true }, { 2, y, true }, { 2, y + 1, true }, { 1, y + 1, true },
        { 0, y + 1, false }, { 1, y + 2, true }, { 0, y + 2, true }, { 0, B - 3, true },
        { 1, B - 2, true }, { 1, B - 1, true }, { 2, B - 1, true }, { 0, B - 1, false },
        { R - 2, B - 1, true }, { R - 1, B - 1, true }, { R - 1, B - 2, true },
        { R - 1, y + 2, true }, { R - 1, y + 1, true }, { R - 2, y + 1, true }, { R - 2, y, true },
        { R - 1, y, false }, { size.cx + 15, y, true }, { 8, y, false }, { size.cx + 12, y, false },
        { 50, 50, false },
    };
    for (const auto &row : rows)
        EXPECT_EQ(row.frame, ScreenPixel(group, row.x, row.y) == SHADOW)
            << "at " << row.x << "," << row.y;
    RECT caption = { 10, 0, 10 + size.cx, size.cy };
    EXPECT_TRUE(host.ScreenContains(group, caption, DARK));
    RECT gapBefore = { 7, 0, 10, size.cy };
    EXPECT_FALSE(host.ScreenContains(group, gapBefore, DARK));
}

// ---- paper preview ---------------------------------------------------------------

TEST_F(Skin, PreviewFitsTheSheetInBothOrientations)
{
    int pw, ph;
    FitPageToArea(160, 200, 2100, 2970, FALSE, &pw, &ph);
    EXPECT_EQ(113, pw);
    EXPECT_EQ(160, ph);
    FitPageToArea(160, 200, 2100, 2970, TRUE, &pw, &ph);
    EXPECT_EQ(160, pw);
    EXPECT_EQ(113, ph);
    FitPageToArea(160, 200, 500, 500, FALSE, &pw, &ph);
    EXPECT_EQ(160, pw);
    EXPECT_EQ(160, ph);
}

TEST_F(Skin, PreviewPaintsSheetShadowAndMockText)
{
    HWND preview = host.AddStatic(IDC_PREVIEW, 170, 210);
    AttachPagePreview(host.hwnd, IDC_PREVIEW);
    host.Show();
    // A4 portrait: the sheet runs from (28, 25) to (141, 185).
    struct { int x, y; COLORREF expected; const char *what; } portrait[] = {
        { 28, 25, DARK, "outline" }, { 141, 185, DARK, "outline" }, { 28, 100, DARK, "outline" },
        { 29, 186, SHADOW, "shadow" }, { 142, 100, SHADOW, "shadow" }, { 142, 25, FACE, "" },
        { 27, 100, FACE, "background" }, { 30, 28, WHITE, "sheet" },
        { 34, 31, DARK, "first text row" }, { 104, 32, DARK, "first text row" },
        { 105, 32, WHITE, "first row ends at 70 %" }, { 34, 33, WHITE, "between rows" },
        { 64, 40, DARK, "third row" }, { 65, 40, WHITE, "third row ends at 30 %" },
        { 34, 43, WHITE, "empty row" }, { 34, 44, WHITE, "empty row" },
    };
    for (const auto &row : portrait)
        EXPECT_EQ(row.expected, ScreenPixel(preview, row.x, row.y)) << row.what << " at " << row.x << "," << row.y;

    SendMessageW(preview, PVM_SETCROP, TRUE, 0);
    EXPECT_EQ(WHITE, ScreenPixel(preview, 30, 28)) << "lParam 0 waits for the next paint";
    SendMessageW(preview, PVM_SETPAPER, 2100, 2970);
    EXPECT_EQ(FACE, ScreenPixel(preview, 30, 28)) << "cropped away";
    EXPECT_EQ(WHITE, ScreenPixel(preview, 104, 33)) << "inside the text block";
    EXPECT_EQ(FACE, ScreenPixel(preview, 105, 33)) << "right of the text block";
    EXPECT_EQ(WHITE, ScreenPixel(preview, 100, 96));
    EXPECT_EQ(FACE, ScreenPixel(preview, 100, 97)) << "below the 66 rows of text";

    SendMessageW(preview, PVM_SETCROP, FALSE, 0);
    SendMessageW(preview, PVM_SETORIENTATION, TRUE, 1);
    EXPECT_EQ(DARK, ScreenPixel(preview, 5, 48)) << "landscape sheet, centred vertically";
    EXPECT_EQ(DARK, ScreenPixel(preview, 165, 161));
    EXPECT_EQ(FACE, ScreenPixel(preview, 5, 47));
}

TEST_F(Skin, PreviewShowsOnlyTheRowsThatFit)
{
    HWND preview = host.AddStatic(IDC_PREVIEW, 170, 210);
    AttachPagePreview(host.hwnd, IDC_PREVIEW);
    host.Show();
    SendMessageW(preview, PVM_SETPAPER, 2970, 300);    // a strip 16 pixels high
    // Sheet from (5, 97) to (165, 113); its text area ends at y 108, which
    // leaves room for the first row only.
    EXPECT_EQ(DARK, ScreenPixel(preview, 11, 103));
    EXPECT_EQ(DARK, ScreenPixel(preview, 11, 104));
    EXPECT_EQ(WHITE, ScreenPixel(preview, 11, 107));
    EXPECT_EQ(WHITE, ScreenPixel(preview, 11, 108));
}

}  // namespace

// ---- gallery -------------------------------------------------------------------

namespace {

void Paste(Dib *canvas, const Dib &tile, int left, int top, int scale)
{
    for (int y = 0; y < tile.height * scale; y++)
        for (int x = 0; x < tile.width * scale; x++)
            if (left + x < canvas->width && top + y < canvas->height)
                canvas->bits[(top + y) * canvas->width + left + x] = tile.bits[(y / scale) * tile.width + x / scale];
}

Dib Capture(HWND control)
{
    Dib dib;
    CaptureWindow(control, FALSE, &dib.bits, &dib.width, &dib.height);
    return dib;
}

// Every look side by side, twice the size, under the classic scheme, for a
// person to look at: build/x64/skin-gallery.png.
TEST_F(Skin, GalleryOfEveryLook)
{
    const int scale = 2, cell = 130;
    Dib canvas = DrawToDib(6 * cell * scale, 4 * 50 * scale + 220 * scale, [](HDC hdc) {
        RECT all = { 0, 0, 6 * 130 * 2, 4 * 50 * 2 + 220 * 2 };
        FillRectSolid(hdc, &all, RGB(192, 192, 192));
    });
    host.AddButton(IDC_PUSH, BS_PUSHBUTTON, L"Обзор...", 75, 23);
    host.AddButton(IDC_CHECK, BS_AUTOCHECKBOX, L"Обрезать края", 120, 16);
    host.AddButton(IDC_RADIO, BS_AUTORADIOBUTTON, L"Альбомная", 120, 16);
    AttachPushButton(host.hwnd, IDC_PUSH);
    AttachCheckBox(host.hwnd, IDC_CHECK);
    AttachRadioButton(host.hwnd, IDC_RADIO);
    struct { int id, pressed, check; UINT state; } looks[] = {
        { IDC_PUSH, 0, 0, 0 }, { IDC_PUSH, 0, 0, ODS_FOCUS }, { IDC_PUSH, 0, 0, ODS_SELECTED | ODS_FOCUS },
        { IDC_PUSH, 0, 0, ODS_DISABLED },
        { IDC_CHECK, 0, 0, 0 }, { IDC_CHECK, 0, 1, ODS_FOCUS }, { IDC_CHECK, 0, 2, 0 },
        { IDC_CHECK, 1, 1, 0 }, { IDC_CHECK, 0, 1, ODS_DISABLED }, { IDC_CHECK, 0, 2, ODS_DISABLED },
        { IDC_RADIO, 0, 0, 0 }, { IDC_RADIO, 0, 1, ODS_FOCUS }, { IDC_RADIO, 1, 0, 0 },
        { IDC_RADIO, 1, 1, 0 }, { IDC_RADIO, 0, 0, ODS_DISABLED }, { IDC_RADIO, 0, 1, ODS_DISABLED },
    };
    int row = 0, col = 0, lastId = looks[0].id;
    for (const auto &look : looks) {
        if (look.id != lastId) {
            row++;
            col = 0;
            lastId = look.id;
        }
        FindSkinControl(GetDlgItem(host.hwnd, look.id))->bPressed = look.pressed;
        Paste(&canvas, host.RenderMark(look.id, look.state, look.check), col * cell * scale + 10,
              row * 50 * scale + 10, scale);
        FindSkinControl(GetDlgItem(host.hwnd, look.id))->bPressed = 0;
        col++;
    }
    host.Destroy();

    // The painters that draw straight to the window: captured from it.
    ASSERT_TRUE(host.Create());
    HWND group = host.AddButton(IDC_GROUP, BS_GROUPBOX, L"Ориентация:", 200, 100);
    AttachGroupBox(host.hwnd, IDC_GROUP);
    host.Show();
    Paste(&canvas, Capture(group), 10, 3 * 50 * scale + 10, scale);
    host.Destroy();

    const struct { BOOL landscape, crop; } previews[] = { { FALSE, FALSE }, { TRUE, FALSE }, { FALSE, TRUE } };
    for (int i = 0; i < 3; i++) {
        ASSERT_TRUE(host.Create());
        HWND preview = host.AddStatic(IDC_PREVIEW, 170, 210);
        AttachPagePreview(host.hwnd, IDC_PREVIEW);
        host.Show();
        SendMessageW(preview, PVM_SETORIENTATION, previews[i].landscape, 0);
        SendMessageW(preview, PVM_SETCROP, previews[i].crop, 0);
        SendMessageW(preview, PVM_SETPAPER, 2100, 2970);
        Paste(&canvas, Capture(preview), 420 + i * 180 * scale, 3 * 50 * scale + 10, scale);
        host.Destroy();
    }

    WCHAR path[MAX_PATH];
    GetModuleFileNameW(NULL, path, MAX_PATH);
    lstrcpyW(wcsrchr(path, L'\\'), L"\\..\\skin-gallery.png");
    EXPECT_TRUE(WritePng(path, canvas.bits.data(), canvas.width, canvas.height)) << GetLastError();
}

}  // namespace
