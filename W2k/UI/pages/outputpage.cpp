/*
 * The output page: the folder that receives the images, the file-name mask
 * with its example, and whether and with what the result is opened.  The
 * edits reach the record only through Collect; the two flags change at once.
 */
#include "pages.h"
#include "../res/resource.h"
#include <shlobj.h>
#include <commdlg.h>

static const int g_CustomViewerControls[] = { IDC_VIEWER_PARAMS, IDC_PARAMS_LABEL, IDC_VIEWER_PATH, IDC_BROWSE_VIEWER };

/* A read-only field is worth a Tab stop only while it holds something to
 * select and copy; an empty one would take the focus and show nothing. */
void SetReadOnlyText(HWND hPage, int id, LPCWSTR pszText)
{
    HWND hField = GetDlgItem(hPage, id);
    SetWindowTextW(hField, pszText);
    LONG_PTR style = GetWindowLongPtrW(hField, GWL_STYLE);
    LONG_PTR wanted = pszText[0] ? style | WS_TABSTOP : style & ~(LONG_PTR)WS_TABSTOP;
    if (wanted != style)
        SetWindowLongPtrW(hField, GWL_STYLE, wanted);
}

static void ShowExample(HWND hPage, PSHEETSTATE pSheet, LPCWSTR pszMask)
{
    WCHAR szExample[EXAMPLE_CHARS];
    ExpandFileNameMask(hPage, pSheet, pszMask, szExample);
    SetReadOnlyText(hPage, IDC_EXAMPLE_NAME, szExample);
}

/* Reads the two flags from the record, not from the buttons. */
static void UpdateOutputControls(HWND hPage, PSHEETSTATE pSheet)
{
    const QLRDEVMODE *pdm = &pSheet->work;
    EnableWindow(GetDlgItem(hPage, IDC_DEFAULT_VIEWER), pdm->bShowResult);
    EnableWindow(GetDlgItem(hPage, IDC_CUSTOM_VIEWER), pdm->bShowResult);
    for (int id : g_CustomViewerControls)
        EnableWindow(GetDlgItem(hPage, id), pdm->bShowResult && pdm->bUseCustomViewer);
    RefreshApplicationInfo(hPage, pSheet);
}

void LoadOutputPage(HWND hPage, PSHEETSTATE pSheet)
{
    const QLRDEVMODE *pdm = &pSheet->work;
    CheckDlgButton(hPage, IDC_SHOW_RESULT, pdm->bShowResult ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(hPage, IDC_DEFAULT_VIEWER, pdm->bUseCustomViewer ? BST_UNCHECKED : BST_CHECKED);
    CheckDlgButton(hPage, IDC_CUSTOM_VIEWER, pdm->bUseCustomViewer ? BST_CHECKED : BST_UNCHECKED);
    SetReadOnlyText(hPage, IDC_VIEWER_PATH, pdm->szViewerPath);
    SetDlgItemTextW(hPage, IDC_OUTPUT_FOLDER, pdm->szOutputFolder);
    SetDlgItemTextW(hPage, IDC_FILE_MASK, pdm->szFileNameMask);
    SetDlgItemTextW(hPage, IDC_VIEWER_PARAMS, pdm->szViewerParams);
    UpdateOutputControls(hPage, pSheet);
    ShowExample(hPage, pSheet, pdm->szFileNameMask);
}

void CollectOutputPage(HWND hPage, PSHEETSTATE pSheet)
{
    PQLRDEVMODE pdm = &pSheet->work;
    GetDlgItemTextW(hPage, IDC_OUTPUT_FOLDER, pdm->szOutputFolder, QLR_PATH_CHARS);
    GetDlgItemTextW(hPage, IDC_FILE_MASK, pdm->szFileNameMask, QLR_PATH_CHARS);
    GetDlgItemTextW(hPage, IDC_VIEWER_PATH, pdm->szViewerPath, QLR_PATH_CHARS);
    GetDlgItemTextW(hPage, IDC_VIEWER_PARAMS, pdm->szViewerParams, QLR_PATH_CHARS);
    pdm->bShowResult = IsDlgButtonChecked(hPage, IDC_SHOW_RESULT) == BST_CHECKED;
    pdm->bUseCustomViewer = IsDlgButtonChecked(hPage, IDC_CUSTOM_VIEWER) == BST_CHECKED;
}

static void BrowseForFolder(HWND hPage, PSHEETSTATE pSheet)
{
    WCHAR szDisplay[MAX_PATH], szPath[MAX_PATH];
    BROWSEINFOW bi = {};
    bi.hwndOwner = hPage;
    bi.pszDisplayName = szDisplay;
    bi.lpszTitle = L"Select folder to store resulting image(s) in";
    bi.ulFlags = BIF_RETURNONLYFSDIRS;
    CoInitialize(NULL);
    LPITEMIDLIST pidl = SHBrowseForFolderW(&bi);
    if (pidl) {
        BOOL bPath = SHGetPathFromIDListW(pidl, szPath);
        IMalloc *pMalloc = NULL;
        if (SUCCEEDED(SHGetMalloc(&pMalloc))) {
            pMalloc->Free(pidl);
            pMalloc->Release();
        }
        if (bPath) {
            SetDlgItemTextW(hPage, IDC_OUTPUT_FOLDER, szPath);
            NotifySheetChanged(hPage, pSheet);
        }
    }
    CoUninitialize();
}

static void ChooseApplication(HWND hPage, PSHEETSTATE pSheet)
{
    WCHAR szFile[MAX_PATH];
    lstrcpynW(szFile, pSheet->work.szViewerPath, MAX_PATH);
    OPENFILENAMEW ofn = {};
    ofn.lStructSize = sizeof(ofn);
    ofn.hwndOwner = hPage;
    ofn.lpstrFilter = L"Executable file (*.exe)\0*.exe\0";
    ofn.lpstrFile = szFile;
    ofn.nMaxFile = MAX_PATH;
    ofn.lpstrTitle = L"Select application";
    ofn.lpstrDefExt = L"exe";
    ofn.Flags = OFN_LONGNAMES | OFN_EXPLORER | OFN_NOTESTFILECREATE | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
    if (!GetOpenFileNameW(&ofn))
        return;
    SetReadOnlyText(hPage, IDC_VIEWER_PATH, szFile);
    lstrcpynW(pSheet->work.szViewerPath, szFile, QLR_PATH_CHARS);
    RefreshApplicationInfo(hPage, pSheet);
    NotifySheetChanged(hPage, pSheet);
}

void OnOutputPageCommand(HWND hPage, PSHEETSTATE pSheet, WORD id, WORD code)
{
    switch (id) {
    case IDC_OUTPUT_FOLDER:
    case IDC_VIEWER_PARAMS:
        if (code == EN_CHANGE)
            NotifySheetChanged(hPage, pSheet);
        break;
    case IDC_FILE_MASK:
        if (code == EN_CHANGE) {
            WCHAR szMask[QLR_PATH_CHARS];
            GetDlgItemTextW(hPage, IDC_FILE_MASK, szMask, QLR_PATH_CHARS);
            ShowExample(hPage, pSheet, szMask);
            NotifySheetChanged(hPage, pSheet);
        }
        break;
    case IDC_BROWSE_FOLDER:
        BrowseForFolder(hPage, pSheet);
        break;
    case IDC_MACRO:
        InsertMacro(hPage, pSheet);
        break;
    case IDC_BROWSE_VIEWER:
        ChooseApplication(hPage, pSheet);
        break;
    case IDC_SHOW_RESULT:
        if (code == BN_CLICKED) {
            pSheet->work.bShowResult = IsDlgButtonChecked(hPage, IDC_SHOW_RESULT) == BST_CHECKED;
            UpdateOutputControls(hPage, pSheet);
            NotifySheetChanged(hPage, pSheet);
        }
        break;
    case IDC_DEFAULT_VIEWER:
    case IDC_CUSTOM_VIEWER:
        if (code == BN_CLICKED) {
            pSheet->work.bUseCustomViewer = IsDlgButtonChecked(hPage, IDC_CUSTOM_VIEWER) == BST_CHECKED;
            UpdateOutputControls(hPage, pSheet);
            NotifySheetChanged(hPage, pSheet);
        }
        break;
    }
}
