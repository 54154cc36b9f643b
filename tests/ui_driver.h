// Drives the document sheet and its modal dialogs as a user would, from a timer on the sheet's thread: steps aimed
// at a page, a format panel or a dialog are played in order as those come up; a run that goes on too long is cancelled.
#ifndef QLR_TESTS_UI_DRIVER_H
#define QLR_TESTS_UI_DRIVER_H

#include <windows.h>
#include <functional>
#include <string>
#include <vector>

enum Where {
    PAGE_SETUP, FORMAT_PAGE, OUTPUT_PAGE,
    P_BMP = 10, P_GIF, P_JPEG, P_TIFF, P_PCX, P_DCX,      // the format page's panels
    SAVE = 20, MANAGER, BOX, FILE_DLG, MENU, ABOUT_BOX, FOLDER_DLG    // the modal dialogs
};
enum Op {
    CLICK, CHOOSE, SELECT, SET, LEAVE, TYPE, KEY, PRESS,   // actions
    GO, KEYS,                                               // the focus moved; real keys pressed
    TEXT, CHECK, ON, SHOWN, ITEM, COUNT, SEL, LIMIT,        // expectations (LIMIT: the most an edit takes typed)
    FOCUS,                                                  // where the focus is
    SKIN,                                                   // painted by the module (n 1) or the system (n 0)
    ICON,                                                   // the system's default application icon (n 1) or another
    TIPS,                                                   // the page's tool tips: s "id text|" for each, in order
    CLASSES,                                                // s "key|value": a class key's value set; "key": deleted
    PREVIEW                                                 // the page preview shows s "width height landscape crop"
};
// n: index, check state, flag, key, sheet button or MAKELONG(start, end); s: text.
// KEYS: s the keys, one a tick: letters and digits, "\r", "\t", "\x1b", " " and the arrows by their key codes
// ("\x25" to "\x28"); n 1 holds Shift.
struct Step { int where; int id; int op; int n = 0; std::wstring s = L""; };

// Runs open(); returns the index of the first step not played.
size_t RunScript(const char *name, const std::vector<Step> &steps, const std::function<void()> &open);

#endif
