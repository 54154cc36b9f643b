/*
 * The three pages as the framework drives them: which controls each hands to
 * the custom-drawn controls, its tool tips, its help topic, and its own
 * creation, transfer and commands.
 */
#include "pages.h"
#include "../res/resource.h"

#define LIST(a) a, (int)ARRAY_COUNT(a)

static const int g_SetupPush[] = { IDC_SAVE_PROFILE, IDC_PROFILE_MANAGER, IDC_RESTORE_PROFILE, IDC_HELP_BUTTON };
static const int g_SetupCheck[] = { IDC_CROP };
static const int g_SetupRadio[] = { IDC_STANDARD_PAPER, IDC_CUSTOM_PAPER, IDC_PORTRAIT, IDC_LANDSCAPE };
static const int g_SetupGroup[] = { IDC_SIZE_GROUP, IDC_ORIENTATION_GROUP };
static const int g_SetupTips[] = {
    IDC_PROFILE_COMBO, IDC_SAVE_PROFILE, IDC_PROFILE_MANAGER, IDC_RESTORE_PROFILE, IDC_PREVIEW,
    IDC_PAPER_LIST, IDC_SIZE_LABEL, IDC_PORTRAIT, IDC_LANDSCAPE, IDC_RESOLUTION, IDC_CROP, IDC_HELP_BUTTON,
};

static const int g_FormatPush[] = {
    IDC_SAVE_PROFILE, IDC_PROFILE_MANAGER, IDC_ABOUT, IDC_RESTORE_PROFILE, IDC_HELP_BUTTON,
};
static const int g_FormatTips[] = {
    IDC_PROFILE_COMBO, IDC_SAVE_PROFILE, IDC_PROFILE_MANAGER, IDC_RESTORE_PROFILE, IDC_HELP_BUTTON,
    IDC_FORMAT_LIST, IDC_ABOUT,
};

static const int g_OutputPush[] = {
    IDC_SAVE_PROFILE, IDC_PROFILE_MANAGER, IDC_RESTORE_PROFILE, IDC_HELP_BUTTON, IDC_BROWSE_FOLDER,
    IDC_MACRO, IDC_BROWSE_VIEWER,
};      /* the viewer's browse button comes last, after the check box and radios */
static const int g_OutputCheck[] = { IDC_SHOW_RESULT };
static const int g_OutputRadio[] = { IDC_DEFAULT_VIEWER, IDC_CUSTOM_VIEWER };
static const int g_OutputTips[] = {
    IDC_PROFILE_COMBO, IDC_SAVE_PROFILE, IDC_PROFILE_MANAGER, IDC_RESTORE_PROFILE, IDC_HELP_BUTTON,
    IDC_OUTPUT_FOLDER, IDC_FILE_MASK, IDC_BROWSE_FOLDER, IDC_MACRO, IDC_EXAMPLE_NAME, IDC_SHOW_RESULT,
    IDC_DEFAULT_VIEWER, IDC_CUSTOM_VIEWER, IDC_VIEWER_PATH, IDC_BROWSE_VIEWER,
};

const PAGEDESC g_PageDescs[PAGE_COUNT] = {
    { PAGE_SETUP, HELP_PAGE_SETUP, TRUE, LIST(g_SetupPush), LIST(g_SetupCheck), LIST(g_SetupRadio),
      LIST(g_SetupGroup), IDC_PREVIEW, LIST(g_SetupTips),
      InitPageSetup, LoadPageSetup, CollectPageSetup, OnPageSetupCommand, NULL, NULL },
    { PAGE_FORMAT, HELP_FORMAT, FALSE, LIST(g_FormatPush), NULL, 0, NULL, 0, NULL, 0, 0,
      LIST(g_FormatTips), InitFormatPage, LoadFormatPage, CollectFormatPage, OnFormatPageCommand, NULL, NULL },
    { PAGE_OUTPUT, HELP_OUTPUT, FALSE, LIST(g_OutputPush), LIST(g_OutputCheck), LIST(g_OutputRadio),
      NULL, 0, 0, LIST(g_OutputTips), NULL, LoadOutputPage, CollectOutputPage, OnOutputPageCommand,
      RefreshApplicationInfo, ReleaseApplicationIcon },
};

INT_PTR CALLBACK PageSetupDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return PageDialogProc(&g_PageDescs[PAGE_SETUP], hDlg, msg, wParam, lParam);
}

INT_PTR CALLBACK FormatPageDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return PageDialogProc(&g_PageDescs[PAGE_FORMAT], hDlg, msg, wParam, lParam);
}

INT_PTR CALLBACK OutputPageDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return PageDialogProc(&g_PageDescs[PAGE_OUTPUT], hDlg, msg, wParam, lParam);
}
