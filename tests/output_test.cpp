// The output page inside the real sheet: enabling and hiding rules, the live
// example, the application block read from a program's version resource.
#include "sheet_fixture.h"

namespace {

class OutputPage : public Sheet {
protected:
    HWND page = NULL;

    QLRDEVMODE Run(const QLRDEVMODE &stored, const std::function<void()> &drive)
    {
        return RunOnPage(2, stored, [&](HWND p) {
            page = p;
            drive();
        });
    }
    bool Enabled(int id) { return IsWindowEnabled(GetDlgItem(page, id)) != FALSE; }
    bool Visible(int id) { return IsWindowVisible(GetDlgItem(page, id)) != FALSE; }
    std::wstring Text(int id) { return TextOf(GetDlgItem(page, id)); }
    void ClickButton(int id) { SendDlgItemMessageW(page, id, BM_CLICK, 0, 0); }
};

std::wstring VersionedProgram()
{
    WCHAR path[MAX_PATH];
    GetModuleFileNameW(NULL, path, MAX_PATH);
    lstrcpyW(wcsrchr(path, L'\\') + 1, L"versioned.exe");
    return path;
}

TEST_F(OutputPage, ShowResultAndViewerChoiceEnableTheirControls)
{
    QLRDEVMODE stored = Profile(FORMAT_JPEG, L"");
    stored.bShowResult = FALSE;
    QLRDEVMODE out = Run(stored, [&] {
        EXPECT_EQ(L"c:\\QLR Output Files", Text(1050));
        EXPECT_EQ(L"example_document_name_01.jpg", Text(1057));
        for (int id : { 1058, 1059, 1055, 1056, 1060, 1095 })
            EXPECT_FALSE(Enabled(id)) << "control " << id;
        for (int id : { 1093, 1087, 1088, 1089, 1090, 1091, 1092 })
            EXPECT_FALSE(Visible(id)) << "control " << id;

        ClickButton(1054);
        EXPECT_TRUE(Enabled(1058));
        EXPECT_TRUE(Enabled(1059));
        EXPECT_FALSE(Enabled(1055)) << "the default viewer is chosen";
        EXPECT_TRUE(Visible(1093));
        ClickButton(1059);
        for (int id : { 1055, 1056, 1060, 1095 })
            EXPECT_TRUE(Enabled(id)) << "control " << id;

        SetDlgItemTextW(page, 1052, L"&[Page]-&[Type]");
        EXPECT_EQ(L"01-jpg", Text(1057)) << "the example follows the typing";
        SetDlgItemTextW(page, 1050, L"d:\\images");
        SetDlgItemTextW(page, 1060, L"/view %f");
    });
    EXPECT_TRUE(out.bShowResult);
    EXPECT_TRUE(out.bUseCustomViewer);
    EXPECT_STREQ(L"&[Page]-&[Type]", out.szFileNameMask);
    EXPECT_STREQ(L"d:\\images", out.szOutputFolder);
    EXPECT_STREQ(L"/view %f", out.szViewerParams);
}

TEST_F(OutputPage, TheApplicationBlockShowsTheProgramsVersionResource)
{
    QLRDEVMODE stored = Profile(FORMAT_TIFF, L"");
    stored.bShowResult = TRUE;
    stored.bUseCustomViewer = TRUE;
    lstrcpyW(stored.szViewerPath, VersionedProgram().c_str());
    std::wstring description, version, copyright;
    Run(stored, [&] {
        description = Text(1088);
        version = Text(1090);
        copyright = Text(1092);
        EXPECT_NE(nullptr, (HICON)SendDlgItemMessageW(page, 1093, STM_GETICON, 0, 0));
        ClickButton(1054);                       // hidden: the fields keep their text
        EXPECT_FALSE(Visible(1088));
        EXPECT_EQ(L"Quillora test viewer", Text(1088));
    });
    EXPECT_EQ(L"Quillora test viewer", description);
    EXPECT_EQ(L"1.2.3.4", version);
    EXPECT_EQ(L"(c) test copyright", copyright);
}

TEST_F(OutputPage, CancellingTheApplicationDialogChangesNothing)
{
    QLRDEVMODE stored = Profile(FORMAT_JPEG, L"");
    stored.bShowResult = TRUE;
    stored.bUseCustomViewer = TRUE;
    lstrcpyW(stored.szViewerPath, VersionedProgram().c_str());
    int sheets = 0;
    std::wstring before, after;
    StoreProfile(PROFILE_A, stored);
    Open(NULL, DM_PROMPT, [&](HWND h, DialogKind kind) {
        if (kind == DIALOG_FILE) {
            Click(h, IDCANCEL);
        } else if (kind == DIALOG_SHEET) {
            HWND p = SheetPage(h, 2);
            if (sheets++ == 0) {
                before = TextOf(GetDlgItem(p, 1055)) + L"|" + TextOf(GetDlgItem(p, 1088));
                Click(p, 1056);
            } else {
                after = TextOf(GetDlgItem(p, 1055)) + L"|" + TextOf(GetDlgItem(p, 1088));
                PressSheetButton(h, PSBTN_CANCEL);
            }
        }
    });
    EXPECT_EQ(VersionedProgram() + L"|Quillora test viewer", before);
    EXPECT_EQ(before, after);
}

}  // namespace
