/*
 * The three pages as the framework drives them: which of their own controls
 * each hands to the custom-drawn controls, its tool tips, its help topic,
 * and its own creation, transfer and commands.
 */
#include "pages.h"
#include "../res/resource.h"

#define NO_IDS  { NULL, 0 }

static const int g_SetupCheck[] = { IDC_CROP };
static const int g_SetupRadio[] = { IDC_STANDARD_PAPER, IDC_CUSTOM_PAPER, IDC_PORTRAIT, IDC_LANDSCAPE };
static const int g_SetupGroup[] = { IDC_SIZE_GROUP, IDC_ORIENTATION_GROUP };
static const int g_SetupTips[] = {
    IDC_PREVIEW, IDC_PAPER_LIST, IDC_SIZE_LABEL, IDC_PORTRAIT, IDC_LANDSCAPE, IDC_RESOLUTION, IDC_CROP,
    IDC_HELP_BUTTON,
};

static const int g_FormatPush[] = { IDC_ABOUT };
static const int g_FormatTips[] = { IDC_HELP_BUTTON, IDC_FORMAT_LIST, IDC_ABOUT };

/* The viewer's browse button comes last, after the check box and radios. */
static const int g_OutputPush[] = { IDC_BROWSE_FOLDER, IDC_MACRO, IDC_BROWSE_VIEWER };
static const int g_OutputCheck[] = { IDC_SHOW_RESULT };
static const int g_OutputRadio[] = { IDC_DEFAULT_VIEWER, IDC_CUSTOM_VIEWER };
static const int g_OutputTips[] = {
    IDC_HELP_BUTTON, IDC_OUTPUT_FOLDER, IDC_FILE_MASK, IDC_BROWSE_FOLDER, IDC_MACRO, IDC_EXAMPLE_NAME,
    IDC_SHOW_RESULT, IDC_DEFAULT_VIEWER, IDC_CUSTOM_VIEWER, IDC_VIEWER_PATH, IDC_BROWSE_VIEWER,
};

/* Every field is named on every page, so that what a page lacks shows too.
 * The rows are in PAGEDESC's order (standard C++17 has no designated
 * initialisers); a field added there without a line here stops the build as
 * a missing initialiser. */
const PAGEDESC g_PageDescs[PAGE_COUNT] = {
    {
        /* iPage */           PAGE_SETUP,
        /* nHelpTopic */      HELP_PAGE_SETUP,
        /* bResetsProfiled */ TRUE,
        /* pushButtons */     NO_IDS,
        /* checkBoxes */      ID_LIST(g_SetupCheck),
        /* radios */          ID_LIST(g_SetupRadio),
        /* groupBoxes */      ID_LIST(g_SetupGroup),
        /* idPreview */       IDC_PREVIEW,
        /* toolTips */        ID_LIST(g_SetupTips),
        /* Init */            InitPageSetup,
        /* Load */            LoadPageSetup,
        /* Collect */         CollectPageSetup,
        /* Command */         OnPageSetupCommand,
        /* Shown */           NULL,
        /* Destroyed */       NULL,
    },
    {
        /* iPage */           PAGE_FORMAT,
        /* nHelpTopic */      HELP_FORMAT,
        /* bResetsProfiled */ FALSE,
        /* pushButtons */     ID_LIST(g_FormatPush),
        /* checkBoxes */      NO_IDS,
        /* radios */          NO_IDS,
        /* groupBoxes */      NO_IDS,
        /* idPreview */       0,
        /* toolTips */        ID_LIST(g_FormatTips),
        /* Init */            InitFormatPage,
        /* Load */            LoadFormatPage,
        /* Collect */         CollectFormatPage,
        /* Command */         OnFormatPageCommand,
        /* Shown */           NULL,
        /* Destroyed */       NULL,
    },
    {
        /* iPage */           PAGE_OUTPUT,
        /* nHelpTopic */      HELP_OUTPUT,
        /* bResetsProfiled */ FALSE,
        /* pushButtons */     ID_LIST(g_OutputPush),
        /* checkBoxes */      ID_LIST(g_OutputCheck),
        /* radios */          ID_LIST(g_OutputRadio),
        /* groupBoxes */      NO_IDS,
        /* idPreview */       0,
        /* toolTips */        ID_LIST(g_OutputTips),
        /* Init */            NULL,
        /* Load */            LoadOutputPage,
        /* Collect */         CollectOutputPage,
        /* Command */         OnOutputPageCommand,
        /* Shown */           RefreshApplicationInfo,
        /* Destroyed */       ReleaseApplicationIcon,
    },
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
