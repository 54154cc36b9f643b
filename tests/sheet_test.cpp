// The document and device property sheets as applications open them, driven
// by messages to the real dialogs; profiles on the real registry and the
// printer's default settings read back through the spooler.
#include "sheet_fixture.h"

namespace {

TEST_F(Sheet, OkReturnsTheProfilesRecordAndMakesItThePrintersDefault)
{
    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    int sheets = 0;
    LONG result = Open(&out, DM_PROMPT | DM_COPY, [&](HWND h, DialogKind kind) {
        if (kind == DIALOG_SHEET && sheets++ == 0) {
            EXPECT_EQ(PropSheet_GetCurrentPageHwnd(h), SheetPage(h, 0)) << "page setup comes first";
            ReportChange(SheetPage(h, 0));
            PressSheetButton(h, PSBTN_OK);
        }
    });
    EXPECT_EQ(IDOK, result);
    EXPECT_EQ(FORMAT_TIFF, out.record()->iOutputFormat);
    EXPECT_STREQ(L"first", out.record()->szComments);
    EXPECT_TRUE(out.record()->m_bProfiled);
    EXPECT_TRUE(UntouchedFrom(out, QLR_RECORD_SIZE, 0xA5));

    Layout printer;
    ASSERT_TRUE(PrinterRecord(&printer));
    EXPECT_EQ(FORMAT_TIFF, printer.record()->iOutputFormat) << "the printer's default follows the apply";
    EXPECT_EQ(PROFILE_A, CurrentName());
}

TEST_F(Sheet, CancelWritesNothing)
{
    Layout out, before;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    ASSERT_TRUE(PrinterRecord(&before));
    LONG result = Open(&out, DM_PROMPT | DM_COPY, [&](HWND h, DialogKind kind) {
        if (kind == DIALOG_SHEET)
            PressSheetButton(h, PSBTN_CANCEL);
    });
    EXPECT_EQ(IDCANCEL, result);
    EXPECT_TRUE(UntouchedFrom(out, 72, 0xA5));
    Layout after;
    ASSERT_TRUE(PrinterRecord(&after));
    EXPECT_EQ(0, memcmp(before.bytes + 220, after.bytes + 220, QLR_PRIVATE_SIZE));

    // The advanced entry point answers 1 and 0 for the same two buttons.
    LONG advanced = -1;
    RunDriven([&] { advanced = TheDriver().AdvancedDocumentProperties(NULL, hPrinter, (LPWSTR)PRINTER,
                                                                       out.dm(), NULL); },
              [](HWND h, DialogKind kind) { if (kind == DIALOG_SHEET) PressSheetButton(h, PSBTN_CANCEL); });
    EXPECT_EQ(0, advanced);
    RunDriven([&] { advanced = TheDriver().AdvancedDocumentProperties(NULL, hPrinter, (LPWSTR)PRINTER,
                                                                       out.dm(), NULL); },
              [](HWND h, DialogKind kind) { if (kind == DIALOG_SHEET) PressSheetButton(h, PSBTN_OK); });
    EXPECT_EQ(1, advanced);
}

TEST_F(Sheet, OneOkAppliesOnceAcrossThePagesAndAsksForANameWithoutAProfile)
{
    SetCurrentName(L"");
    Layout out;
    int saveDialogs = 0, sheets = 0;
    LONG result = Open(&out, DM_PROMPT | DM_COPY, [&](HWND h, DialogKind kind) {
        if (kind == DIALOG_SHEET && sheets++ == 0) {
            // The change comes before the other pages are first shown and
            // must survive their creation.
            ReportChange(SheetPage(h, 0));
            SheetPage(h, 1);
            SheetPage(h, 2);
            SheetPage(h, 0);
            PressSheetButton(h, PSBTN_OK);
        } else if (kind == DIALOG_SAVE_PROFILE) {
            saveDialogs++;
            SetDlgItemTextW(h, 1081, PROFILE_B);
            Click(h, IDOK);
        }
    });
    EXPECT_EQ(IDOK, result);
    EXPECT_EQ(1, saveDialogs);
    EXPECT_EQ(PROFILE_B, CurrentName());
    QLRDEVMODE stored;
    ASSERT_TRUE(LoadProfile(PROFILE_B, &stored));
    EXPECT_TRUE(stored.m_bProfiled);
    EXPECT_EQ(FORMAT_JPEG, stored.iOutputFormat) << "factory defaults, as no profile was current";
}

TEST_F(Sheet, ChangesMarkTheProfileModifiedOnEveryPage)
{
    SetCurrentName(L"");
    std::wstring entry0, entryOnOutputPage;
    Open(NULL, DM_PROMPT, [&](HWND h, DialogKind kind) {
        if (kind != DIALOG_SHEET)
            return;
        HWND page0 = SheetPage(h, 0), page2 = SheetPage(h, 2);
        HWND combo = GetDlgItem(page0, 1001);
        WCHAR text[64] = L"";
        SendMessageW(combo, CB_GETLBTEXT, 0, (LPARAM)text);
        entry0 = text;
        ReportChange(page0);
        SendMessageW(GetDlgItem(page2, 1001), CB_GETLBTEXT, 0, (LPARAM)text);
        entryOnOutputPage = text;
        PressSheetButton(h, PSBTN_CANCEL);
    });
    EXPECT_EQ(L"<Default Profile>", entry0);
    EXPECT_EQ(L"<Default Profile>*", entryOnOutputPage);
}

TEST_F(Sheet, AboutBoxOpensFromTheFormatPageAndClosesWithOk)
{
    std::wstring title;
    int step = 0;
    Open(NULL, DM_PROMPT, [&](HWND h, DialogKind kind) {
        if (kind == DIALOG_SHEET && step++ == 0) {
            Click(SheetPage(h, 1), 1004);
        } else if (kind == DIALOG_OTHER) {
            title = TextOf(h);
            Click(h, IDOK);
        } else if (kind == DIALOG_SHEET) {
            PressSheetButton(h, PSBTN_CANCEL);
        }
    });
    EXPECT_EQ(L"О программе...", title);
}

TEST_F(Sheet, ChoosingAProfileReloadsItAndAMissingOneChangesNothing)
{
    StoreProfile(PROFILE_B, Profile(FORMAT_PCX, L"second"));
    Layout out;
    int sheets = 0;
    Open(&out, DM_PROMPT | DM_COPY, [&](HWND h, DialogKind kind) {
        if (kind != DIALOG_SHEET || sheets++)
            return;
        HWND page = SheetPage(h, 0), combo = GetDlgItem(page, 1001);
        LRESULT b = SendMessageW(combo, CB_FINDSTRINGEXACT, -1, (LPARAM)PROFILE_B);
        ASSERT_NE(CB_ERR, b);
        SendMessageW(combo, CB_SETCURSEL, b, 0);
        SendMessageW(page, WM_COMMAND, MAKEWPARAM(1001, CBN_SELCHANGE), (LPARAM)combo);
        EXPECT_EQ(PROFILE_B, CurrentName());

        // A profile deleted behind the sheet's back: beep, nothing changes.
        LRESULT a = SendMessageW(combo, CB_FINDSTRINGEXACT, -1, (LPARAM)PROFILE_A);
        RegDeleteKeyW(HKEY_CURRENT_USER, ProfilePath(PROFILE_A).c_str());
        SendMessageW(combo, CB_SETCURSEL, a, 0);
        SendMessageW(page, WM_COMMAND, MAKEWPARAM(1001, CBN_SELCHANGE), (LPARAM)combo);
        EXPECT_EQ(PROFILE_B, CurrentName());
        PressSheetButton(h, PSBTN_OK);
    });
    EXPECT_EQ(FORMAT_PCX, out.record()->iOutputFormat);
    EXPECT_STREQ(L"second", out.record()->szComments);
}

TEST_F(Sheet, SaveDialogRefusesEmptyNamesAndAsksBeforeReplacing)
{
    SetCurrentName(L"");
    std::vector<std::wstring> boxes, captions;
    int step = 0;
    Open(NULL, DM_PROMPT, [&](HWND h, DialogKind kind) {
        switch (kind) {
        case DIALOG_SHEET:
            if (step == 0)
                Click(SheetPage(h, 0), 1002);
            else
                PressSheetButton(h, PSBTN_CANCEL);
            step++;
            return;
        case DIALOG_MESSAGE_BOX:
            boxes.push_back(MessageBoxText(h));
            captions.push_back(TextOf(h));
            // The first question is answered No, the second Yes.
            Click(h, GetDlgItem(h, IDNO) ? (boxes.size() == 2 ? IDNO : IDYES) : IDOK);
            return;
        case DIALOG_SAVE_PROFILE:
            if (boxes.empty()) {
                SetDlgItemTextW(h, 1081, L"   ");
            } else {
                SetDlgItemTextW(h, 1081, L"  qlr sheet A  ");
                SetDlgItemTextW(h, 1082, L"line 1\r\nline 2");
            }
            Click(h, IDOK);
            return;
        default:
            return;
        }
    });
    ASSERT_EQ(3u, boxes.size());
    EXPECT_EQ(L"Вы должны определить имя профиля       ", boxes[0]);
    EXPECT_EQ(L"Error", captions[0]);
    EXPECT_EQ(L"Профиль с таким именем существует.\nВы хотите заменить его?           ", boxes[1]);
    EXPECT_EQ(L"Add profile...", captions[1]);
    EXPECT_EQ(boxes[1], boxes[2]);
    EXPECT_EQ(PROFILE_A, CurrentName()) << "saved under the trimmed name";
    QLRDEVMODE stored;
    ASSERT_TRUE(LoadProfile(PROFILE_A, &stored));
    EXPECT_EQ(FORMAT_JPEG, stored.iOutputFormat) << "replaced by the factory settings the sheet held";
    EXPECT_STREQ(L"line 1\r\nline 2", stored.szComments);
}

TEST_F(Sheet, WinspoolDocumentPropertiesWithPromptReachesTheSheet)
{
    StoreProfile(PROFILE_B, Profile(FORMAT_PCX, L"second"));
    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    LONG result = -100;
    int sheets = 0;
    EXPECT_TRUE(RunDriven(
        [&] { result = DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, out.dm(), NULL,
                                           DM_PROMPT | DM_OUT_BUFFER); },
        [&](HWND h, DialogKind kind) {
            if (kind != DIALOG_SHEET || sheets++)
                return;
            EXPECT_EQ(3, TabCtrl_GetItemCount(PropSheet_GetTabControl(h)));
            // The user picks another profile and changes a setting on it.
            HWND page = SheetPage(h, 0), combo = GetDlgItem(page, 1001);
            SendMessageW(combo, CB_SETCURSEL, SendMessageW(combo, CB_FINDSTRINGEXACT, -1, (LPARAM)PROFILE_B), 0);
            SendMessageW(page, WM_COMMAND, MAKEWPARAM(1001, CBN_SELCHANGE), (LPARAM)combo);
            ReportChange(page);
            PressSheetButton(h, PSBTN_OK);
        }));
    EXPECT_EQ(IDOK, result);
    EXPECT_EQ(FORMAT_PCX, out.record()->iOutputFormat);
    EXPECT_EQ(PROFILE_B, CurrentName());
    QLRDEVMODE stored;
    ASSERT_TRUE(LoadProfile(PROFILE_B, &stored));
    EXPECT_EQ(FORMAT_PCX, stored.iOutputFormat);
    Layout printer;
    ASSERT_TRUE(PrinterRecord(&printer));
    EXPECT_EQ(FORMAT_PCX, printer.record()->iOutputFormat);
}

std::wstring ListText(HWND hList, LRESULT i)
{
    WCHAR text[160] = L"";
    SendMessageW(hList, LB_GETTEXT, i, (LPARAM)text);
    return text;
}

void LeaveEdit(HWND hDlg, int id)
{
    SendMessageW(hDlg, WM_COMMAND, MAKEWPARAM(id, EN_KILLFOCUS), (LPARAM)GetDlgItem(hDlg, id));
}

TEST_F(Sheet, ManagerRenamesDeletesAndCancelUndoesNothing)
{
    StoreProfile(PROFILE_B, Profile(FORMAT_PCX, L"second"));
    int visit = 0, sheets = 0;
    std::wstring afterClose;
    Open(NULL, DM_PROMPT, [&](HWND h, DialogKind kind) {
        if (kind == DIALOG_SHEET) {
            if (sheets++ == 0) {
                Click(SheetPage(h, 0), 1003);
            } else {
                WCHAR text[64] = L"";
                GetWindowTextW(GetDlgItem(SheetPage(h, 0), 1001), text, 64);
                afterClose = text;
                PressSheetButton(h, PSBTN_CANCEL);
            }
            return;
        }
        if (kind == DIALOG_MESSAGE_BOX) {
            EXPECT_EQ(L"Вы хотите удалить выбранный профиль?          ", MessageBoxText(h));
            EXPECT_EQ(L"Edit profile...", TextOf(h));
            Click(h, IDYES);
            return;
        }
        if (kind != DIALOG_PROFILE_MANAGER)
            return;
        HWND list = GetDlgItem(h, 1083);
        switch (visit++) {
        case 0: {
            ASSERT_EQ(2, SendMessageW(list, LB_GETCOUNT, 0, 0));
            EXPECT_EQ(PROFILE_A, TextOf(GetDlgItem(h, 1081))) << "the current profile is selected";
            EXPECT_EQ(L"first", TextOf(GetDlgItem(h, 1082)));
            // Blanks around and a leading backslash: stored as "_qlr renamed".
            SetDlgItemTextW(h, 1081, L"  \\qlr renamed  ");
            LeaveEdit(h, 1081);
            EXPECT_EQ(L"_qlr renamed", TextOf(GetDlgItem(h, 1081)));
            EXPECT_EQ(L"_qlr renamed", ListText(list, SendMessageW(list, LB_GETCURSEL, 0, 0)));
            // A new name that sorts after B: the selection follows it.
            SetDlgItemTextW(h, 1081, L"zqlr renamed");
            LeaveEdit(h, 1081);
            LRESULT sel = SendMessageW(list, LB_GETCURSEL, 0, 0);
            EXPECT_EQ(1, sel);
            EXPECT_EQ(L"zqlr renamed", ListText(list, sel));
            EXPECT_EQ(L"zqlr renamed", CurrentName()) << "the current profile keeps being current";
            // A name another profile has, in any case, is refused.
            SetDlgItemTextW(h, 1081, L"QLR SHEET B");
            LeaveEdit(h, 1081);
            EXPECT_EQ(L"zqlr renamed", ListText(list, SendMessageW(list, LB_GETCURSEL, 0, 0)));
            SetDlgItemTextW(h, 1081, L"zqlr renamed");
            Click(h, 1086);     // delete the last entry
            break;
        }
        case 1:
            EXPECT_EQ(1, SendMessageW(list, LB_GETCOUNT, 0, 0));
            EXPECT_EQ(0, SendMessageW(list, LB_GETCURSEL, 0, 0)) << "the new last entry";
            EXPECT_EQ(PROFILE_B, TextOf(GetDlgItem(h, 1081)));
            Click(h, 1086);     // delete the only profile
            break;
        case 2:
            EXPECT_EQ(0, SendMessageW(list, LB_GETCOUNT, 0, 0));
            EXPECT_FALSE(IsWindowEnabled(GetDlgItem(h, 1086)));
            EXPECT_FALSE(IsWindowEnabled(GetDlgItem(h, 1088)));
            EXPECT_TRUE(IsWindowEnabled(GetDlgItem(h, 1087))) << "import stays available";
            EXPECT_EQ(L"", TextOf(GetDlgItem(h, 1081)));
            Click(h, IDCANCEL);
            break;
        }
    });
    EXPECT_EQ(3, visit);
    EXPECT_EQ(L"<Default Profile>", afterClose) << "the deleted current profile is gone from the pages";
    EXPECT_EQ(L"", CurrentName());
    QLRDEVMODE stored;
    EXPECT_FALSE(LoadProfile(PROFILE_B, &stored)) << "Cancel does not undo a deletion";
    EXPECT_FALSE(LoadProfile(L"zqlr renamed", &stored));
    EXPECT_FALSE(LoadProfile(L"_qlr renamed", &stored));
}

TEST_F(Sheet, ManagerExportsAndImportsOverAnExistingName)
{
    WCHAR dir[MAX_PATH];
    GetTempPathW(MAX_PATH, dir);
    std::wstring path = std::wstring(dir) + L"qlr-manager.qlr";
    DeleteFileW(path.c_str());
    int visit = 0, boxes = 0, sheets = 0;
    Open(NULL, DM_PROMPT, [&](HWND h, DialogKind kind) {
        switch (kind) {
        case DIALOG_SHEET:
            if (sheets++ == 0)
                Click(SheetPage(h, 0), 1003);
            else
                PressSheetButton(h, PSBTN_CANCEL);
            return;
        case DIALOG_FILE:
            SetDlgItemTextW(h, 0x47c, path.c_str());
            Click(h, IDOK);
            return;
        case DIALOG_MESSAGE_BOX:
            boxes++;
            Click(h, IDOK);
            return;
        case DIALOG_PROFILE_MANAGER:
            break;
        default:
            return;
        }
        switch (visit++) {
        case 0:
            Click(h, 1088);     // export the selected (current) profile
            break;
        case 1:
            SetDlgItemTextW(h, 1082, L"changed");
            LeaveEdit(h, 1082);
            Click(h, 1087);     // and import it back over the changed one
            break;
        case 2:
            EXPECT_EQ(L"first", TextOf(GetDlgItem(h, 1082)));
            EXPECT_EQ(PROFILE_A, TextOf(GetDlgItem(h, 1081)));
            Click(h, IDOK);
            break;
        }
    });
    EXPECT_EQ(3, visit);
    EXPECT_EQ(0, boxes) << "an import over an existing name asks nothing";
    QLRDEVMODE stored;
    ASSERT_TRUE(LoadProfile(PROFILE_A, &stored));
    EXPECT_STREQ(L"first", stored.szComments);
    EXPECT_EQ(FORMAT_TIFF, stored.iOutputFormat);
    HANDLE hFile = CreateFileW(path.c_str(), GENERIC_READ, 0, NULL, OPEN_EXISTING, 0, NULL);
    ASSERT_NE(INVALID_HANDLE_VALUE, hFile);
    EXPECT_EQ(3748u, GetFileSize(hFile, NULL));
    CloseHandle(hFile);
    DeleteFileW(path.c_str());
}

TEST_F(Sheet, MacroMenuReplacesTheSelectedMaskText)
{
    std::wstring mask;
    int sheets = 0;
    Open(NULL, DM_PROMPT, [&](HWND h, DialogKind kind) {
        if (kind == DIALOG_POPUP_MENU) {
            PostMessageW(h, WM_CHAR, 0x0422, 0);        // "&Тип рисунка"
            return;
        }
        if (kind != DIALOG_SHEET)
            return;
        HWND page = SheetPage(h, 2);
        if (sheets++ == 0) {
            SetDlgItemTextW(page, 1052, L"abcXYZ");
            SendDlgItemMessageW(page, 1052, EM_SETSEL, 3, 6);
            Click(page, 1053);
        } else {
            mask = TextOf(GetDlgItem(page, 1052));
            PressSheetButton(h, PSBTN_CANCEL);
        }
    });
    EXPECT_EQ(L"abc&[Type]", mask);
}

// ---- the page-setup page ---------------------------------------------------------

// What the preview control is told, recorded between the page and the preview.
struct PreviewMessage { UINT msg; WPARAM wParam; LPARAM lParam; };
std::vector<PreviewMessage> g_previewLog;
WNDPROC g_previewProc;

LRESULT CALLBACK RecordPreview(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg >= WM_USER + 0x1000 && msg <= WM_USER + 0x1002)
        g_previewLog.push_back({ msg, wParam, lParam });
    return CallWindowProcW(g_previewProc, hwnd, msg, wParam, lParam);
}

TEST_F(Sheet, PageSetupEditsPaperUnitsResolutionAndOrientation)
{
    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    int sheets = 0;
    LONG result = Open(&out, DM_PROMPT | DM_COPY, [&](HWND h, DialogKind kind) {
        if (kind != DIALOG_SHEET || sheets++)
            return;
        HWND p = SheetPage(h, 0);
        Choose(p, 1007, 0);
        EXPECT_EQ(L"Letter/ANSI A (8.500 x 11.000 дюйм)", TextOf(GetDlgItem(p, 1016)));
        Choose(p, 1007, 14);
        EXPECT_EQ(L"A4 (210 x 297 мм)", TextOf(GetDlgItem(p, 1016)));
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(p, 1007)));
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(p, 1098)));

        Command(p, 1097, BN_CLICKED);
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(p, 1007)));
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(p, 1016)));
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(p, 1098)));
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(p, 1014)));
        EXPECT_EQ(L"210.0", TextOf(GetDlgItem(p, 1098)));

        // Inches and back give the same millimetres.
        Choose(p, 1014, 0);
        EXPECT_EQ(L"8.268", TextOf(GetDlgItem(p, 1098)));
        Choose(p, 1014, 1);
        EXPECT_EQ(L"210.0", TextOf(GetDlgItem(p, 1098)));
        EXPECT_EQ(L"297.0", TextOf(GetDlgItem(p, 1099)));

        Type(p, 1098, L"20000", EN_KILLFOCUS);
        EXPECT_EQ(L"18288.0", TextOf(GetDlgItem(p, 1098))) << "the largest size at 200 dpi";
        Type(p, 1098, L"abc", EN_KILLFOCUS);
        EXPECT_EQ(L"abc", TextOf(GetDlgItem(p, 1098))) << "no number: the text stays, the value too";
        Choose(p, 1014, 0);
        Type(p, 1098, L"0", EN_KILLFOCUS);
        EXPECT_EQ(L"0.039", TextOf(GetDlgItem(p, 1098)));
        Type(p, 1098, L"8.27", EN_KILLFOCUS);
        Type(p, 1099, L"11.69", EN_KILLFOCUS);

        Type(p, 1012, L"9999", CBN_KILLFOCUS);
        EXPECT_EQ(L"2400", TextOf(GetDlgItem(p, 1012)));
        Type(p, 1012, L"abc", CBN_KILLFOCUS);
        EXPECT_EQ(L"200", TextOf(GetDlgItem(p, 1012)));
        Choose(p, 1012, 6);     // 300 dpi

        // Landscape turns the preview; the custom size itself stays.
        HWND preview = GetDlgItem(p, 1006);
        g_previewLog.clear();
        g_previewProc = (WNDPROC)SetWindowLongPtrW(preview, GWLP_WNDPROC, (LONG_PTR)RecordPreview);
        Command(p, 1009, BN_CLICKED);
        SetWindowLongPtrW(preview, GWLP_WNDPROC, (LONG_PTR)g_previewProc);
        ASSERT_EQ(3u, g_previewLog.size());
        EXPECT_EQ((UINT)WM_USER + 0x1001, g_previewLog[0].msg);
        EXPECT_EQ(1u, g_previewLog[0].wParam);
        EXPECT_EQ(0, g_previewLog[0].lParam) << "orientation waits for the paper";
        EXPECT_EQ((UINT)WM_USER + 0x1002, g_previewLog[1].msg);
        EXPECT_EQ(0, g_previewLog[1].lParam);
        EXPECT_EQ((UINT)WM_USER + 0x1000, g_previewLog[2].msg);
        EXPECT_EQ(8270u, g_previewLog[2].wParam);
        EXPECT_EQ(11690, g_previewLog[2].lParam);

        Command(p, 1013, BN_CLICKED);   // the check box's own state stays unchecked
        PressSheetButton(h, PSBTN_OK);
    });
    ASSERT_EQ(IDOK, result);
    const QLRDEVMODE *r = out.record();
    EXPECT_TRUE(r->bCustomPaper);
    EXPECT_EQ(UNIT_THOU, r->iCustomUnit);
    EXPECT_EQ(8270, r->iCustomWidth);
    EXPECT_EQ(11690, r->iCustomHeight);
    EXPECT_EQ(1, r->iOrientation);
    EXPECT_EQ(DMORIENT_LANDSCAPE, r->dmPublic.dmOrientation);
    EXPECT_EQ(300, r->iResolution);
    EXPECT_EQ(300, r->dmPublic.dmPrintQuality);
    EXPECT_EQ(300, r->dmPublic.dmYResolution);
    EXPECT_STREQ(L"Custom Paper", r->dmPublic.dmFormName);
    EXPECT_EQ(DMPAPER_USER, r->dmPublic.dmPaperSize);
    EXPECT_EQ(2101, r->dmPublic.dmPaperWidth);      // 8.27 in = 210.058 mm
    EXPECT_EQ(2969, r->dmPublic.dmPaperLength);
    EXPECT_EQ((DWORD)(DM_PAPERSIZE | DM_PAPERLENGTH | DM_PAPERWIDTH),
              r->dmPublic.dmFields & (DM_PAPERSIZE | DM_PAPERLENGTH | DM_PAPERWIDTH | DM_FORMNAME));
    EXPECT_FALSE(r->bCropEdges);
    EXPECT_EQ(14, r->iPaper) << "the table paper is kept while the custom size is used";
}

TEST_F(Sheet, PageSetupShowsALoadedResolutionTheListLacks)
{
    QLRDEVMODE dm = Profile(FORMAT_TIFF, L"first");
    dm.iResolution = 120;
    dm.dmPublic.dmPrintQuality = dm.dmPublic.dmYResolution = 120;
    StoreProfile(PROFILE_A, dm);
    Layout out;
    std::wstring shown;
    int sheets = 0;
    Open(&out, DM_PROMPT | DM_COPY, [&](HWND h, DialogKind kind) {
        if (kind != DIALOG_SHEET || sheets++)
            return;
        HWND p = SheetPage(h, 0);
        shown = TextOf(GetDlgItem(p, 1012));
        Choose(p, 1012, 4);
        PressSheetButton(h, PSBTN_OK);
    });
    EXPECT_EQ(L"120", shown);
    EXPECT_EQ(150, out.record()->iResolution);
    EXPECT_FALSE(out.record()->bCustomPaper);
    EXPECT_STREQ(L"A4", out.record()->dmPublic.dmFormName);
    EXPECT_EQ(2100, out.record()->dmPublic.dmPaperWidth);
    EXPECT_EQ((DWORD)(DM_PAPERSIZE | DM_FORMNAME),
              out.record()->dmPublic.dmFields & (DM_PAPERSIZE | DM_PAPERLENGTH | DM_PAPERWIDTH | DM_FORMNAME));
}

// The library's side of the protocol, played by the test: pages are
// accepted with handles 101, 102, 103, or refused from the second on.
int g_added;
bool g_refuseSecond;
LONG_PTR CALLBACK FakeLibrary(HANDLE, UINT function, LPARAM, LPARAM)
{
    if (function != CPSFUNC_ADD_PROPSHEETPAGEW)
        return 0;
    g_added++;
    return g_refuseSecond && g_added >= 2 ? 0 : 100 + g_added;
}

TEST_F(Sheet, LibraryReasonsWithoutAWindow)
{
    Layout out;
    MakeLayout(&out, 0, 0, 0, 0xA5);
    DOCUMENTPROPERTYHEADER header = {};
    header.cbSize = sizeof(header);
    header.hPrinter = hPrinter;
    header.pszPrinterName = (LPWSTR)PRINTER;
    header.pdmOut = out.dm();
    header.fMode = DM_PROMPT | DM_COPY;
    PROPSHEETUI_INFO info = {};
    info.cbSize = sizeof(info);
    info.pfnComPropSheet = FakeLibrary;
    info.lParamInit = (LPARAM)&header;
    PFN_SHEETS sheets = TheDriver().DocumentPropertySheets;

    g_added = 0;
    g_refuseSecond = false;
    info.Reason = PROPSHEETUI_REASON_INIT;
    ASSERT_EQ(1, sheets(&info, (LPARAM)&header));
    EXPECT_EQ(3, g_added);
    EXPECT_NE(0u, info.UserData);

    PROPSHEETUI_INFO_HEADER infoHeader = {};
    info.Reason = PROPSHEETUI_REASON_GET_INFO_HEADER;
    EXPECT_EQ(1, sheets(&info, (LPARAM)&infoHeader));
    EXPECT_EQ(PSUIHDRF_NOAPPLYNOW | PSUIHDRF_PROPTITLE, infoHeader.Flags);
    EXPECT_STREQ(PRINTER, infoHeader.pTitle);

    SETRESULT_INFO sri = {};
    sri.cbSize = sizeof(sri);
    sri.hSetResult = (HANDLE)99;
    sri.Result = 1;
    info.Reason = PROPSHEETUI_REASON_SET_RESULT;
    EXPECT_EQ(-1, sheets(&info, (LPARAM)&sri));
    EXPECT_EQ(0u, info.Result);
    EXPECT_TRUE(UntouchedFrom(out, 72, 0xA5));
    sri.hSetResult = (HANDLE)102;
    EXPECT_EQ(1, sheets(&info, (LPARAM)&sri));
    EXPECT_EQ(1u, info.Result);
    EXPECT_EQ(QLR_SIGNATURE, out.record()->dwSignature);

    info.Reason = PROPSHEETUI_REASON_DESTROY;
    EXPECT_EQ(1, sheets(&info, 0));
    EXPECT_EQ(0u, info.UserData);

    // A page the library refuses ends the initialisation; DESTROY still frees.
    g_added = 0;
    g_refuseSecond = true;
    info.Reason = PROPSHEETUI_REASON_INIT;
    EXPECT_EQ(-1, sheets(&info, (LPARAM)&header));
    EXPECT_EQ(2, g_added);
    info.Reason = PROPSHEETUI_REASON_DESTROY;
    EXPECT_EQ(1, sheets(&info, 0));

    SetLastError(0);
    info.Reason = PROPSHEETUI_REASON_INIT;
    EXPECT_EQ(-1, sheets(&info, 0));
    EXPECT_EQ((DWORD)ERROR_INVALID_DATA, GetLastError());
    info.Reason = 77;
    EXPECT_EQ(-1, sheets(&info, 0));
}

TEST_F(Sheet, DeviceSheetShowsOnlyTheAboutPage)
{
    std::wstring tab;
    int pages = 0;
    BOOL result = TRUE;
    EXPECT_TRUE(RunDriven([&] { result = TheDriver().PrinterProperties(NULL, hPrinter); },
                          [&](HWND h, DialogKind kind) {
                              if (kind != DIALOG_SHEET)
                                  return;
                              HWND tabs = PropSheet_GetTabControl(h);
                              pages = TabCtrl_GetItemCount(tabs);
                              WCHAR text[64] = L"";
                              TCITEMW item = {};
                              item.mask = TCIF_TEXT;
                              item.pszText = text;
                              item.cchTextMax = 64;
                              TabCtrl_GetItem(tabs, 0, &item);
                              tab = text;
                              PressSheetButton(h, PSBTN_OK);
                          }));
    EXPECT_EQ(1, pages);
    EXPECT_EQ(L"О программе...", tab);
    EXPECT_FALSE(result) << "the About page reports no result";

    SetLastError(0);
    EXPECT_EQ(-1, TheDriver().DevicePropertySheets(NULL, 0));
    EXPECT_EQ((DWORD)ERROR_INVALID_DATA, GetLastError());
    DEVICEPROPERTYHEADER header = { sizeof(header), 0, hPrinter, (LPWSTR)PRINTER };
    PROPSHEETUI_INFO info = {};
    info.lParamInit = (LPARAM)&header;
    info.Reason = PROPSHEETUI_REASON_DESTROY;
    EXPECT_EQ(1, TheDriver().DevicePropertySheets(&info, 0));
}

TEST(TrivialEntryPoints, AnswerAlike)
{
    ASSERT_NE(nullptr, TheDriver().DevQueryPrintEx);
    DEVQUERYPRINT_INFO dqp = {};
    dqp.cbSize = sizeof(dqp);
    EXPECT_FALSE(TheDriver().DevQueryPrintEx(&dqp));
    EXPECT_EQ(0u, dqp.cchNeeded);
    for (INT event : { 1, 2, 3, 4, 99 })
        EXPECT_TRUE(TheDriver().PrinterEvent((LPWSTR)PRINTER, event, 0, 0)) << "event " << event;
}

}  // namespace
