// Drives modal dialogs the way a user would, from a thread timer on the
// dialog's own thread: each time another dialog becomes the one that takes
// input, the script is called with it.  A run that goes on too long is
// ended by closing whatever is open, so a failure can never hang CI.
#ifndef QLR_TESTS_UI_DRIVER_H
#define QLR_TESTS_UI_DRIVER_H

#include <windows.h>
#include <functional>
#include <string>

enum DialogKind {
    DIALOG_SHEET, DIALOG_PROFILE_MANAGER, DIALOG_FILE, DIALOG_SAVE_PROFILE, DIALOG_MESSAGE_BOX, DIALOG_OTHER,
    DIALOG_POPUP_MENU
};

DialogKind KindOf(HWND hDlg);
std::wstring TextOf(HWND hwnd);
std::wstring MessageBoxText(HWND hBox);
HWND SheetPage(HWND hSheet, int index);     // creates the page if needed
void Click(HWND hDlg, int id);

// Runs open() with the script answering dialogs; returns false when the
// script had to be cut short.
bool RunDriven(const std::function<void()> &open, const std::function<void(HWND, DialogKind)> &script);

#endif
