// The document sheet opened and closed a hundred times, every page shown,
// with the output page showing a program's own icon: afterwards the process
// holds the GDI objects and windows it held before, and no control is left in
// the skin's list.  The module is compiled in, so the list can be seen; its
// dialogs come from the built DLL's resources.
#include <gtest/gtest.h>
#include <windows.h>
#include <winspool.h>
#include "drvapi.h"
#include "profiles/profiles.h"
#include "skin/skin.h"
#include "ui_driver.h"

extern "C" LONG WINAPI DrvDocumentProperties(HWND, HANDLE, LPWSTR, PDEVMODEW, PDEVMODEW, DWORD);

namespace {

#define PRINTER L"Quillora"
const LPCWSTR PROFILE = L"qlr resources";

// GetGuiResources answers 0 under Wine; the process's GDI handle table, which
// the PEB points at on both systems, is counted instead.  Its entries are 24
// bytes on x64: object, owner (process id in the low word), unique, type.
struct GdiEntry {
    UINT64 object;
    ULONG owner;
    USHORT unique;
    UCHAR type;
    UCHAR flags;
    UINT64 user;
};
static_assert(sizeof(GdiEntry) == 24, "the tests run as x64 programs");
const size_t PEB_GDI_TABLE = 0xF8;      // GdiSharedHandleTable in the x64 PEB

int GdiObjects()
{
    DWORD n = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    if (n)
        return (int)n;
    auto currentPeb = (BYTE *(WINAPI *)(void))(void *)GetProcAddress(GetModuleHandleW(L"ntdll.dll"),
                                                                     "RtlGetCurrentPeb");
    const BYTE *peb = currentPeb ? currentPeb() : NULL;
    if (!peb)
        return 0;
    const GdiEntry *table = *(const GdiEntry *const *)(peb + PEB_GDI_TABLE);
    USHORT pid = (USHORT)GetCurrentProcessId();
    int count = 0;
    for (int i = 0; table && i < 0x10000; i++)
        if (table[i].type && (!LOWORD(table[i].owner) || LOWORD(table[i].owner) == pid))
            count++;
    return count;
}

BOOL CALLBACK CountChildren(HWND, LPARAM lParam)
{
    ++*(int *)lParam;
    return TRUE;
}

BOOL CALLBACK CountWindow(HWND hwnd, LPARAM lParam)
{
    ++*(int *)lParam;
    EnumChildWindows(hwnd, CountChildren, lParam);
    return TRUE;
}

int ThreadWindows()
{
    int n = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountWindow, (LPARAM)&n);
    return n;
}

std::wstring BinPath(LPCWSTR file)
{
    WCHAR path[MAX_PATH];
    GetModuleFileNameW(NULL, path, MAX_PATH);
    lstrcpyW(wcsrchr(path, L'\\') + 1, file);
    return path;
}

class SheetResources : public ::testing::Test {
protected:
    WCHAR savedCurrent[PROFILE_NAME_CHARS];
    HANDLE hPrinter = NULL;

    void SetUp() override
    {
        // Loaded as a module, as the spooler loads it: under Wine, dialogs from
        // a data-file mapping cost six bitmaps that are never given back.
        g_hModule = LoadLibraryW(BinPath(L"QLRDRVUI.DLL").c_str());
        ASSERT_NE(nullptr, g_hModule);
        ASSERT_TRUE(OpenPrinterW((LPWSTR)PRINTER, &hPrinter, NULL));
        ReadCurrentProfileName(savedCurrent);
        QLRDEVMODE dm;
        SetDefDM(PRINTER, &dm);
        dm.bShowResult = TRUE;
        dm.bUseCustomViewer = TRUE;
        lstrcpyW(dm.szViewerPath, BinPath(L"versioned.exe").c_str());
        dm.m_bProfiled = TRUE;
        ASSERT_TRUE(WriteProfile(PROFILE, &dm));
        WriteCurrentProfileName(PROFILE);
    }
    void TearDown() override
    {
        DeleteProfile(PROFILE);
        WriteCurrentProfileName(savedCurrent);
        ClosePrinter(hPrinter);
        FreeLibrary(g_hModule);
        g_hModule = NULL;
    }

    // Shows the three pages in turn, each painted, and cancels.
    void OpenAndClose(int *pIcons)
    {
        QLRDEVMODE out;
        LONG result = -100;
        bool finished = RunDriven(
            [&] { result = DrvDocumentProperties(NULL, hPrinter, (LPWSTR)PRINTER, &out.dmPublic, NULL,
                                                 DM_PROMPT | DM_OUT_BUFFER); },
            [&](HWND h, DialogKind kind) {
                if (kind != DIALOG_SHEET)
                    return;
                for (int i = 0; i < 3; i++) {
                    HWND page = SheetPage(h, i);
                    RedrawWindow(h, NULL, NULL, RDW_UPDATENOW | RDW_ALLCHILDREN);
                    if (i == 2 && SendDlgItemMessageW(page, 1093, STM_GETICON, 0, 0) !=
                                      (LRESULT)LoadIconW(NULL, IDI_APPLICATION))
                        ++*pIcons;
                }
                PostMessageW(h, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
            });
        ASSERT_TRUE(finished) << "the sheet did not close";
        ASSERT_EQ(IDCANCEL, result);
    }
};

TEST_F(SheetResources, AHundredSheetsLeaveObjectsWindowsAndSkinListAsTheyWere)
{
    int icons = 0;
    OpenAndClose(&icons);       // the libraries' own first-use objects
    ASSERT_EQ(nullptr, GetSkinListHead());
    int gdi = GdiObjects(), windows = ThreadWindows();
    ASSERT_GT(gdi, 0) << "no way to count GDI objects here";
    for (int i = 0; i < 100 && !HasFatalFailure(); i++) {
        OpenAndClose(&icons);
        ASSERT_EQ(nullptr, GetSkinListHead()) << "after sheet " << i;
    }
    EXPECT_EQ(101, icons) << "the output page showed the program's own icon";
    printf("GDI objects %d before and %d after 100 sheets; windows %d and %d\n", gdi, GdiObjects(), windows,
           ThreadWindows());
    EXPECT_EQ(gdi, GdiObjects());
    EXPECT_EQ(windows, ThreadWindows());
}

}  // namespace
