/*
 * Custom-drawn controls: dialogs attach their push buttons, check boxes,
 * radio buttons and group boxes here during WM_INITDIALOG; from then on the
 * control's WM_PAINT is answered by these painters and everything else
 * (keyboard, mouse, check state, notifications) stays with its own procedure.
 */
#ifndef QLR_SKIN_H
#define QLR_SKIN_H

#include <windows.h>

/* The paper preview's messages, sent by the page-setup page. */
#define PVM_SETPAPER        (WM_USER + 0x1000)   /* wParam width, lParam height */
#define PVM_SETORIENTATION  (WM_USER + 0x1001)   /* wParam landscape, lParam redraw now */
#define PVM_SETCROP         (WM_USER + 0x1002)   /* wParam crop, lParam redraw now */

void AttachPushButton(HWND hDlg, int id);
void AttachCheckBox(HWND hDlg, int id);
void AttachRadioButton(HWND hDlg, int id);
void AttachGroupBox(HWND hDlg, int id);
void AttachPagePreview(HWND hDlg, int id);

#endif
