// Skinned controls of a real dialog, driven by messages and keys, compared whole with pictures drawn from each look.
#include <gtest/gtest.h>
#include "skin/skin.h"
#include "pictures.h"

// Odd differences part ">> 1" from "/ 2" (201 + (-81 >> 1) = 160, 120 + (-87 >> 1) = 76); the light's blue clips at 0.
const Scheme ODD = { "odd", RGB(201, 187, 150), RGB(120, 100, 75), RGB(33, 11, 0), RGB(250, 245, 240),
                     RGB(230, 220, 25), RGB(20, 30, 60), RGB(160, 143, 112), RGB(76, 55, 37), RGB(0, 0, 0) };
// White captions on black buttons: the mixes are 0 + (128 >> 1) = 64 and 128 + (-64 >> 1) = 96.
const Scheme HIGH = { "high contrast", RGB(0, 0, 0), RGB(128, 128, 128), RGB(64, 64, 64), RGB(255, 255, 255),
                      RGB(192, 192, 192), RGB(255, 255, 255), RGB(64, 64, 64), RGB(96, 96, 96), RGB(255, 255, 255) };
enum { TAB = WM_APP, ENABLE, LOOK = WM_NULL };    // script actions besides messages
struct Look { int check, pressed, focus, disabled; };

static void CheckMark(HDC dc, const Scheme &s, Look k)
{
    Round(dc, k.disabled ? s.shadow : s.frame, k.pressed ? s.halfShadow : s.face, 0, 0, 12, 12, 0);
    if (k.pressed || !k.disabled)
        Stroke(dc, k.pressed ? s.shadow : s.hilight, { 1, 9, 1, 1, 10, 1 }),
            Stroke(dc, k.pressed ? s.light : s.shadow, { 10, 1, 10, 10, 0, 10 });
    Dots(dc, s.face, { 10, 1, 1, 10 });
    COLORREF bar = k.disabled ? s.shadow : s.dark, shade = s.halfShadow;
    if (k.check == 1) {
        Stroke(dc, k.disabled ? shade : s.shadow, { 5, 9, 10, 4, 10, 6 });
        Stroke(dc, shade, { 3, 7, 5, 9 }), Stroke(dc, shade, { 6, 9, 10, 5 });
        Dots(dc, k.disabled ? shade : s.shadow, { 12, 2 }), Dots(dc, shade, { 13, 2, 12, 3 });
        Stroke(dc, bar, { 2, 5, 5, 8, 13, 0 }), Stroke(dc, bar, { 3, 5, 5, 7, 12, 0 });
    } else if (k.check == 2) {
        Stroke(dc, shade, { 4, 7, 10, 7 }), Dots(dc, shade, { 9, 6 });
        Stroke(dc, bar, { 3, 5, 9, 5 }), Stroke(dc, bar, { 3, 6, 9, 6 });
    }
}

static void RadioMark(HDC dc, Scheme p, Look k)
{
    auto d = [](int v) { return v < 40 ? 0 : v - 40; };    // held down: darkened by 40, clipped at 0
    for (COLORREF *c : { &p.face, &p.shadow, &p.hilight, &p.halfShadow, &p.light })
        *c = k.pressed ? RGB(d(GetRValue(*c)), d(GetGValue(*c)), d(GetBValue(*c))) : *c;
    Round(dc, k.disabled ? p.shadow : p.frame, p.face, 0, 0, 12, 12, 10);
    if (!k.disabled) {
        bool t = k.check || k.pressed;    // sunk in: the shading turned round
        Stroke(dc, p.halfDark, { 0, 4, 5, -1 }), Stroke(dc, p.halfDark, { 7, 0, 12, 5 });    // the ring softened
        Stroke(dc, p.halfDark, { 11, 7, 6, 12 }), Stroke(dc, p.halfDark, { 4, 11, -1, 6 });
        Stroke(dc, p.light, { 1, 6, 1, 4, 4, 1, 7, 1 }, t), Stroke(dc, p.light, { 2, 8, 9, 1 }, t);
        Stroke(dc, p.light, { 3, 8, 9, 2 }, t), Stroke(dc, p.light, { 4, 8, 9, 3 }, t);
        Stroke(dc, p.hilight, { 2, 7, 2, 4, 6, 4 }, t), Stroke(dc, p.hilight, { 4, 5, 4, 2, 8, 2 }, t);
        Stroke(dc, p.halfShadow, { 6, 9, 10, 5 }, t), Stroke(dc, p.halfShadow, { 7, 9, 10, 6 }, t);
        Stroke(dc, p.shadow, { 4, 10, 7, 10, 10, 7, 10, 3 }, t);
        Dots(dc, p.hilight, { 3, 5, 5, 3 }, t), Dots(dc, p.face, { 2, 2 }, t);
        Dots(dc, p.light, { 3, 3, 3, 6, 6, 3 }, t);
    }
    Dots(dc, k.disabled ? p.halfShadow : p.shadow, { 0, 3, 3, 0, 8, 0, 11, 3, 11, 8, 8, 11, 3, 11, 0, 8 });
    if (k.check)
        Round(dc, k.disabled ? p.shadow : p.dark, k.disabled ? p.shadow : p.dark, 3, 3, 9, 9, 2);
}

static void PushFace(HDC dc, const Scheme &s, Look k, int R, int B)
{
    Round(dc, s.frame, k.pressed ? s.halfShadow : s.face, 0, 0, R, B, 6);
    if (k.disabled)
        return;
    if (!k.pressed) {
        Stroke(dc, s.hilight, { 2, B - 4, 2, 2, R - 3, 2 }), Dots(dc, s.hilight, { 3, 3 });
        Stroke(dc, s.shadow, { 3, B - 2, R - 3, B - 2, R - 3, B - 3, R - 2, B - 3, R - 2, 2 });
        Dots(dc, s.halfShadow, { 1, 2, 2, 1, R - 3, 1, R - 2, 2, 2, B - 2, 1, B - 3 });
    } else {
        Stroke(dc, s.halfDark, { 1, B - 4, 1, 2, 2, 2, 2, 1, R - 3, 1 });
        Stroke(dc, s.shadow, { 2, B - 4, 2, 3, 3, 3, 3, 2, R - 3, 2 });
        Stroke(dc, s.light, { 3, B - 2, R - 4, B - 2, R - 2, B - 4, R - 2, 2 });
        Dots(dc, s.face, { R - 2, 2, 2, B - 2 }), Dots(dc, s.shadow, { R - 3, 1, 1, B - 3 });
    }
    // The inner step of the lower right, touching none of the pixels above, whichever order they come in.
    Stroke(dc, k.pressed ? s.face : s.halfShadow, { 3, B - 3, R - 4, B - 3, R - 4, B - 4, R - 3, B - 4, R - 3, 2 });
    Dots(dc, s.halfDark, { 0, 2, 2, 0, R - 3, 0, R - 1, 2, R - 1, B - 3, R - 3, B - 1, 2, B - 1, 0, B - 3 });
}

// What a push button, check box, radio button or group box should show.
static std::string Compare(HWND c, const Scheme &s, Look k)
{
    const LONG type = GetWindowLongW(c, GWL_STYLE) & BS_TYPEMASK;
    const bool push = type <= BS_DEFPUSHBUTTON, group = type == BS_GROUPBOX, radio = type == BS_AUTORADIOBUTTON;
    return Compare(c, [&](HDC dc, int R, int B) {
        Fill(dc, s.face, 0, 0, R, B);
        if (push)
            PushFace(dc, s, k, R, B);
        WCHAR text[160] = L"";
        SIZE size;
        SelectObject(dc, (HFONT)SendMessageW(c, WM_GETFONT, 0, 0));
        GetTextExtentPoint32W(dc, text, GetWindowTextW(c, text, 160), &size);
        SetBkMode(dc, TRANSPARENT);
        const int y = size.cy / 2, gap = std::min<int>(size.cx + 14, R - 10);
        if (group)
            Stroke(dc, s.shadow, { 6, y, 2, y, 2, y + 1, 1, y + 1, 1, y + 2, 0, y + 2, 0, B - 2, 1, B - 2, 1, B - 1,
                                   2, B - 1, 2, B, R - 2, B, R - 2, B - 1, R - 1, B - 1, R - 1, B - 2, R, B - 2,
                                   R, y + 2, R - 1, y + 2, R - 1, y + 1, R - 2, y + 1, R - 2, y, gap, y });
        int left = group ? 10 : push ? (R - size.cx) >> 1 : 17, top = group ? 0 : ((B - size.cy) >> 1) - !push;
        RECT t = { left, top, group ? std::min<int>(size.cx + 10, gap - 4) : left + size.cx, top + size.cy },
             f = { 4, 4, R - 4, B - 4 };
        SetTextColor(dc, k.disabled ? s.shadow : push && k.pressed ? s.hilight : s.text);
        DrawTextW(dc, text, -1, &t, group ? DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS : DT_CENTER);
        if (!push)    // the caption grown by one, one more at the bottom, within the control
            f = { left - 1, std::max(top - 1, 0), std::min<int>(t.right + 1, R), std::min<int>(t.bottom + 2, B) };
        if (k.focus)
            DrawFocusRect(dc, &f);
        SetViewportOrgEx(dc, radio, ((B - 12) >> 1) - 1, NULL);    // the mark's top left
        type == BS_AUTO3STATE ? CheckMark(dc, s, k) : radio ? RadioMark(dc, s, k) : (void)0;
    });
}

const struct Item { int id; DWORD style; LPCWSTR text; int x, y, w, h; void (*attach)(HWND, int); } ITEMS[] = {
    { IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, L"OK", 10, 10, 75, 23, AttachPushButton },
    { HOST_PUSH, WS_TABSTOP, L"&Browse...", 100, 10, 76, 24, AttachPushButton },
    { HOST_CHECK, BS_AUTO3STATE | WS_TABSTOP, L"Crop the edges of the page", 10, 45, 100, 16, AttachCheckBox },
    { HOST_RADIO, BS_AUTORADIOBUTTON | WS_TABSTOP | WS_GROUP, L"Portrait", 10, 70, 120, 16, AttachRadioButton },
    { HOST_RADIO2, BS_AUTORADIOBUTTON, L"Landscape", 10, 90, 120, 17, AttachRadioButton },
    { HOST_GROUP, BS_GROUPBOX | WS_GROUP, L"Orientation", 200, 45, 180, 90, AttachGroupBox },
    { HOST_GROUP2, BS_GROUPBOX, L"Paper size and source", 200, 150, 100, 60, AttachGroupBox },
    { HOST_PREVIEW, 0, L"Preview", 400, 10, 170, 210, AttachPagePreview },
};

// want: a control's check, pressed, focus and disabled; the preview's paper width, height, landscape and crop.
static const struct { const char *name; int id; UINT action; WPARAM wParam; LPARAM lParam; int want[4]; } STEPS[] = {
    { "Tab: OK, the first tab stop, focused", IDOK, TAB, 0, 0, { 0, 0, 1, 0 } },
    { "Tab: Browse focused and default", HOST_PUSH, TAB, 0, 0, { 0, 0, 1, 0 } },
    { "Browse held down", HOST_PUSH, BM_SETSTATE, TRUE, 0, { 0, 1, 1, 0 } },
    { "Tab: check box focused, its rectangle cut at the right edge", HOST_CHECK, TAB, 0, 0, { 0, 0, 1, 0 } },
    { "check box indeterminate", HOST_CHECK, BM_SETCHECK, BST_INDETERMINATE, 0, { 2, 0, 1, 0 } },
    { "check box held down", HOST_CHECK, BM_SETSTATE, TRUE, 0, { 2, 1, 1, 0 } },
    { "check box ticked while held", HOST_CHECK, BM_SETCHECK, BST_CHECKED, 0, { 1, 1, 1, 0 } },
    { "check box released", HOST_CHECK, BM_SETSTATE, FALSE, 0, { 1, 0, 1, 0 } },
    { "Tab: radio button focused", HOST_RADIO, TAB, 0, 0, { 0, 0, 1, 0 } },
    { "radio button checked", HOST_RADIO, BM_SETCHECK, BST_CHECKED, 0, { 1, 0, 1, 0 } },
    { "radio button held down", HOST_RADIO, BM_SETSTATE, TRUE, 0, { 1, 1, 1, 0 } },
    { "radio button released", HOST_RADIO, BM_SETSTATE, FALSE, 0, { 1, 0, 1, 0 } },
    { "second radio button held down", HOST_RADIO2, BM_SETSTATE, TRUE, 0, { 0, 1, 0, 0 } },
    { "radio button disabled", HOST_RADIO, ENABLE, FALSE, 0, { 1, 0, 0, 1 } },
    { "second radio button disabled while held", HOST_RADIO2, ENABLE, FALSE, 0, { 0, 1, 0, 1 } },
    { "check box disabled", HOST_CHECK, ENABLE, FALSE, 0, { 1, 0, 0, 1 } },
    { "disabled check box indeterminate", HOST_CHECK, BM_SETCHECK, BST_INDETERMINATE, 0, { 2, 0, 0, 1 } },
    { "disabled check box held down", HOST_CHECK, BM_SETSTATE, TRUE, 0, { 2, 1, 0, 1 } },
    { "Browse held down without the focus", HOST_PUSH, BM_SETSTATE, TRUE, 0, { 0, 1, 0, 0 } },
    { "Browse disabled while held", HOST_PUSH, ENABLE, FALSE, 0, { 0, 1, 0, 1 } },
    { "group box", HOST_GROUP, LOOK, 0, 0, {} },
    { "group box caption cut with an ellipsis", HOST_GROUP2, LOOK, 0, 0, {} },
    { "landscape unpainted: A4 portrait as at start", HOST_PREVIEW, PVM_SETORIENTATION, TRUE, 0, { 2100, 2970, 0, 0 } },
    { "crop, not yet painted", HOST_PREVIEW, PVM_SETCROP, TRUE, 0, { 2100, 2970, 0, 0 } },
    { "a new paper paints landscape and the crop", HOST_PREVIEW, PVM_SETPAPER, 2100, 2970, { 2100, 2970, 1, 1 } },
    { "portrait cropped", HOST_PREVIEW, PVM_SETORIENTATION, FALSE, 1, { 2100, 2970, 0, 1 } },
    { "a strip whose fifth row would end on its edge", HOST_PREVIEW, PVM_SETPAPER, 1600, 300, { 1600, 300, 0, 1 } },
    { "a strip whose last row fits by one pixel", HOST_PREVIEW, PVM_SETPAPER, 640, 300, { 640, 300, 0, 1 } },
};

TEST(Skin, ControlsFollowTheirMessages)
{
    struct Restore { ~Restore() { RestoreColours(); } } restore;
    for (const Scheme &s : { CLASSIC, ODD, HIGH }) {
        UseScheme(s);    // before the first attach builds the palette
        SkinHost host;
        ASSERT_TRUE(host.Create());
        for (const Item &i : ITEMS) {
            host.AddButton(i.id, i.style, i.text, i.w, i.h, i.x, i.y, i.id == HOST_PREVIEW ? L"STATIC" : L"BUTTON");
            i.attach(host.hwnd, i.id);
        }
        for (const auto &step : STEPS) {
            HWND c = GetDlgItem(host.hwnd, step.id);
            const int *w = step.want;
            if (step.action == TAB)
                PostMessageW(GetFocus(), WM_KEYDOWN, VK_TAB, 0), host.Pump();
            else if (step.action == ENABLE)
                EnableWindow(c, (BOOL)step.wParam);
            else
                SendMessageW(c, step.action, step.wParam, step.lParam);
            // Nothing pumped but the Tab key: every change repaints at once, the preview's when told to or for a paper.
            EXPECT_EQ("", step.id == HOST_PREVIEW ? ComparePreview(c, s, w[0], w[1], w[2], w[3])
                                                  : Compare(c, s, { w[0], w[1], w[2], w[3] }))
                << s.name << ": " << step.name;
        }
        // Every control painted held down and released, enabled and not, ten times more: no GDI object stays behind.
        const int gdi = GdiObjects();
        for (int i = 0; i < 40; i++)
            for (HWND c = GetWindow(host.hwnd, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
                EnableWindow(c, i & 2);
                SendMessageW(c, BM_SETSTATE, i & 1, 0), UpdateWindow(c);
            }
        EXPECT_EQ(gdi, GdiObjects()) << s.name;
    }
}
