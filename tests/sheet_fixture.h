// The document property sheet opened as applications open it, with the
// registry and the printer put back after each test.  Shared by the tests
// of the sheet and of its pages.
#ifndef QLR_TESTS_SHEET_FIXTURE_H
#define QLR_TESTS_SHEET_FIXTURE_H

#include "driver.h"
#include <commctrl.h>
#include <prsht.h>
#include <string>
#include <vector>
#include "ui_driver.h"

#define PRINTER L"Quillora"
#define KEY L"Software\\Moravel\\Quillora\\Profile"
static const LPCWSTR PROFILE_A = L"qlr sheet A", PROFILE_B = L"qlr sheet B";

inline void SetCurrentName(LPCWSTR name)
{
    HKEY h;
    RegCreateKeyExW(HKEY_CURRENT_USER, KEY, 0, NULL, 0, KEY_WRITE, NULL, &h, NULL);
    RegSetValueExW(h, NULL, 0, REG_SZ, (const BYTE *)name, lstrlenW(name) * sizeof(WCHAR));
    RegCloseKey(h);
}

inline std::wstring CurrentName()
{
    WCHAR name[130] = L"";
    DWORD cb = 256;
    RegGetValueW(HKEY_CURRENT_USER, KEY, NULL, RRF_RT_REG_SZ, NULL, name, &cb);
    return name;
}

inline std::wstring ProfilePath(LPCWSTR name)
{
    return std::wstring(KEY) + L"\\" + name;
}

inline void StoreProfile(LPCWSTR name, const QLRDEVMODE &dm)
{
    HKEY h;
    RegCreateKeyExW(HKEY_CURRENT_USER, ProfilePath(name).c_str(), 0, NULL, 0, KEY_WRITE, NULL, &h, NULL);
    RegSetValueExW(h, NULL, 0, REG_BINARY, (const BYTE *)&dm, sizeof(dm));
    RegCloseKey(h);
}

inline bool LoadProfile(LPCWSTR name, QLRDEVMODE *dm)
{
    DWORD cb = sizeof(*dm);
    return RegGetValueW(HKEY_CURRENT_USER, ProfilePath(name).c_str(), NULL, RRF_RT_REG_BINARY, NULL, dm, &cb) ==
           ERROR_SUCCESS;
}

inline void PressSheetButton(HWND hSheet, int button)
{
    PostMessageW(hSheet, PSM_PRESSBUTTON, button, 0);
}

// A change report from a page, as any edit makes: the hidden restore button
// reloads the current profile and reports it.
inline void ReportChange(HWND hPage)
{
    SendMessageW(hPage, WM_COMMAND, MAKEWPARAM(1005, BN_CLICKED), (LPARAM)GetDlgItem(hPage, 1005));
}

class Sheet : public ::testing::Test {
protected:
    HANDLE hPrinter = NULL;
    std::wstring savedName;
    Layout savedPrinterRecord;

    void SetUp() override
    {
        ASSERT_NE(nullptr, TheDriver().DocumentProperties);
        ASSERT_TRUE(OpenPrinterW((LPWSTR)PRINTER, &hPrinter, NULL));
        savedName = CurrentName();
        ASSERT_TRUE(PrinterRecord(&savedPrinterRecord));
        StoreProfile(PROFILE_A, Profile(FORMAT_TIFF, L"first"));
        RegDeleteKeyW(HKEY_CURRENT_USER, ProfilePath(PROFILE_B).c_str());
        SetCurrentName(PROFILE_A);
    }
    void TearDown() override
    {
        RegDeleteKeyW(HKEY_CURRENT_USER, ProfilePath(PROFILE_A).c_str());
        RegDeleteKeyW(HKEY_CURRENT_USER, ProfilePath(PROFILE_B).c_str());
        SetCurrentName(savedName.c_str());
        SetPrinterRecord(savedPrinterRecord.dm());
        ClosePrinter(hPrinter);
    }
    QLRDEVMODE Profile(int format, LPCWSTR comment)
    {
        Layout l;
        MakeLayout(&l, 0, 0, 0, 0);
        LONG needed = QLR_RECORD_SIZE;
        TheDriver().ConvertDevMode((LPWSTR)PRINTER, NULL, l.dm(), &needed, CDM_DRIVER_DEFAULT);
        l.record()->iOutputFormat = format;
        lstrcpyW(l.record()->szComments, comment);
        l.record()->m_bProfiled = TRUE;
        return *l.record();
    }
    bool PrinterRecord(Layout *out)
    {
        DWORD cb = 0;
        GetPrinterW(hPrinter, 2, NULL, 0, &cb);
        std::vector<BYTE> buf(cb);
        if (!cb || !GetPrinterW(hPrinter, 2, buf.data(), cb, &cb) || !((PRINTER_INFO_2W *)buf.data())->pDevMode)
            return false;
        DEVMODEW *dm = ((PRINTER_INFO_2W *)buf.data())->pDevMode;
        memcpy(out->bytes, dm, dm->dmSize + dm->dmDriverExtra);
        return true;
    }
    void SetPrinterRecord(DEVMODEW *dm)
    {
        DWORD cb = 0;
        GetPrinterW(hPrinter, 2, NULL, 0, &cb);
        std::vector<BYTE> buf(cb);
        if (!GetPrinterW(hPrinter, 2, buf.data(), cb, &cb))
            return;
        ((PRINTER_INFO_2W *)buf.data())->pDevMode = dm;
        ((PRINTER_INFO_2W *)buf.data())->pSecurityDescriptor = NULL;
        SetPrinterW(hPrinter, 2, buf.data(), 0);
    }
    LONG Open(Layout *out, DWORD mode, const std::function<void(HWND, DialogKind)> &script, bool *pFinished = NULL)
    {
        LONG result = -100;
        bool finished = RunDriven(
            [&] { result = TheDriver().DocumentProperties(NULL, hPrinter, (LPWSTR)PRINTER, out ? out->dm() : NULL,
                                                          NULL, mode); },
            script);
        if (pFinished)
            *pFinished = finished;
        else
            EXPECT_TRUE(finished) << "the script was cut short";
        return result;
    }

    // Stores `stored` as the current profile, opens the sheet, runs `drive`
    // on page `index`, presses OK and returns the record the caller gets.
    // A change reported by `drive` makes OK collect and save the pages.
    QLRDEVMODE RunOnPage(int index, const QLRDEVMODE &stored, const std::function<void(HWND page)> &drive)
    {
        StoreProfile(PROFILE_A, stored);
        Layout out;
        MakeLayout(&out, 0, 0, 0, 0);
        int sheets = 0;
        LONG result = Open(&out, DM_PROMPT | DM_COPY, [&](HWND h, DialogKind kind) {
            if (kind != DIALOG_SHEET || sheets++)
                return;
            drive(SheetPage(h, index));
            PressSheetButton(h, PSBTN_OK);
        });
        EXPECT_EQ(IDOK, result);
        return *out.record();
    }
};

inline void Command(HWND hPage, int id, WORD code)
{
    SendMessageW(hPage, WM_COMMAND, MAKEWPARAM(id, code), (LPARAM)GetDlgItem(hPage, id));
}

inline void Choose(HWND hPage, int id, LRESULT index)
{
    SendDlgItemMessageW(hPage, id, CB_SETCURSEL, index, 0);
    Command(hPage, id, CBN_SELCHANGE);
}

inline void Type(HWND hPage, int id, LPCWSTR text, WORD leave)
{
    SetDlgItemTextW(hPage, id, text);
    Command(hPage, id, leave);
}

#endif
