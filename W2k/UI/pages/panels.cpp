/*
 * The format panels.  Show repairs the format's fields to a combination the
 * format allows and puts them into the controls; Command stores a depth,
 * compression, greyscale or dithering click at once; Read takes the controls
 * into the record at Collect.  Radio groups are tables of id and value.
 */
#include "panels.h"
#include "../skin/skin.h"
#include "../res/resource.h"
#include <commctrl.h>

typedef struct { int id; int value; } RADIOVALUE;

#define COUNT(a) ((int)ARRAY_COUNT(a))

static const RADIOVALUE g_BmpDepths[] = {
    { IDC_DEPTH_1, 1 }, { IDC_DEPTH_4, 4 }, { IDC_DEPTH_8, 8 }, { IDC_DEPTH_16, 16 }, { IDC_DEPTH_24, 24 }, { IDC_DEPTH_32, 32 },
};
static const RADIOVALUE g_JpegDepths[] = { { IDC_DEPTH_8, 8 }, { IDC_DEPTH_24, 24 }, { IDC_DEPTH_32, 32 } };
static const RADIOVALUE g_TiffDepths[] = { { IDC_DEPTH_1, 1 }, { IDC_DEPTH_8, 8 }, { IDC_DEPTH_24, 24 } };
static const RADIOVALUE g_PcxDepths[] = { { IDC_DEPTH_1, 1 }, { IDC_DEPTH_4, 4 }, { IDC_DEPTH_8, 8 }, { IDC_DEPTH_24, 24 } };
static const RADIOVALUE g_Subsampling[] = { { IDC_SUBSAMPLING_1, 1 }, { IDC_SUBSAMPLING_2, 2 }, { IDC_SUBSAMPLING_4, 4 } };
static const RADIOVALUE g_Compressions[] = {
    { IDC_COMPRESSION_NONE, 0 }, { IDC_COMPRESSION_RLE, 1 }, { IDC_COMPRESSION_FAX3, 2 }, { IDC_COMPRESSION_FAX4, 3 },
    { IDC_COMPRESSION_LZW, 4 }, { IDC_COMPRESSION_JPEG, 5 }, { IDC_COMPRESSION_PACKBIT, 6 },
};
static const int g_TiffQualityControls[] = { IDC_QUALITY, IDC_QUALITY_SPIN, IDC_QUALITY_LABEL, IDC_PERCENT_LABEL };
static const int g_BmpColourDepths[] = { IDC_DEPTH_16, IDC_DEPTH_24, IDC_DEPTH_32 };
static const int g_TiffMonoCompressions[] = { IDC_COMPRESSION_RLE, IDC_COMPRESSION_FAX3, IDC_COMPRESSION_FAX4 };
/* The JPEG panel attaches the GIF panel's boxes too; its dialog lacks the
 * last two, which then get nothing. */
static const int g_GifChecks[] = { IDC_GRAYSCALE, IDC_DITHER, IDC_INTERLACED, IDC_MULTIPAGE };
static const int g_DcxChecks[] = { IDC_DITHER, IDC_GRAYSCALE, IDC_MULTIPAGE };

enum { TIFF_RLE = 1, TIFF_FAX3 = 2, TIFF_FAX4 = 3, TIFF_LZW = 4, TIFF_JPEG = 5 };

/* Checks the radio of the value and unchecks the rest; FALSE when none has it. */
static BOOL CheckRadio(HWND hPanel, const RADIOVALUE *pRadios, int count, int value)
{
    BOOL bFound = FALSE;
    for (int i = 0; i < count; i++) {
        BOOL bThis = pRadios[i].value == value;
        CheckDlgButton(hPanel, pRadios[i].id, bThis ? BST_CHECKED : BST_UNCHECKED);
        bFound |= bThis;
    }
    return bFound;
}

/* The first checked radio gives the value; none leaves the field alone. */
static void ReadRadio(HWND hPanel, const RADIOVALUE *pRadios, int count, INT *pField)
{
    for (int i = 0; i < count; i++)
        if (IsDlgButtonChecked(hPanel, pRadios[i].id) == BST_CHECKED) {
            *pField = pRadios[i].value;
            return;
        }
}

static int RadioValue(const RADIOVALUE *pRadios, int count, int id)
{
    for (int i = 0; i < count; i++)
        if (pRadios[i].id == id)
            return pRadios[i].value;
    return -1;
}

static void SetCheck(HWND hPanel, int id, BOOL bOn)
{
    CheckDlgButton(hPanel, id, bOn ? BST_CHECKED : BST_UNCHECKED);
}

static BOOL Checked(HWND hPanel, int id)
{
    return IsDlgButtonChecked(hPanel, id) == BST_CHECKED;
}

static void Enable(HWND hPanel, int id, BOOL bEnable)
{
    EnableWindow(GetDlgItem(hPanel, id), bEnable);
}

/* Depth radios for a greyscale-or-colour format: the equal one is checked,
 * or, when the stored depth has no radio, the format's default for the mode. */
static void ShowDepth(HWND hPanel, const RADIOVALUE *pRadios, int count, INT *pDepth, BOOL bGray)
{
    if (!CheckRadio(hPanel, pRadios, count, *pDepth)) {
        *pDepth = bGray ? 8 : 24;
        CheckRadio(hPanel, pRadios, count, *pDepth);
    }
}

static int ReadNumber(HWND hPanel, int id, int fallback, int lo, int hi)
{
    BOOL bNumber = FALSE;
    UINT n = GetDlgItemInt(hPanel, id, &bNumber, FALSE);
    return bNumber ? ClampInt(n > (UINT)INT_MAX ? INT_MAX : (int)n, lo, hi) : ClampInt(fallback, lo, hi);
}

static void SetSpin(HWND hPanel, int id, int lo, int hi)
{
    SendDlgItemMessageW(hPanel, id, UDM_SETRANGE, 0, MAKELPARAM(hi, lo));
}

static void SetSpinPos(HWND hPanel, int id, int pos)
{
    SendDlgItemMessageW(hPanel, id, UDM_SETPOS, 0, MAKELPARAM(pos, 0));
}

static void ReportChange(HWND hPanel, PSHEETSTATE pSheet)
{
    NotifySheetChanged(GetParent(hPanel), pSheet);
}

static void AttachRadios(HWND hPanel, const RADIOVALUE *pRadios, int count)
{
    for (int i = 0; i < count; i++)
        AttachRadioButton(hPanel, pRadios[i].id);
}

/* ---- BMP ------------------------------------------------------------------ */

static void ShowBmp(HWND hPanel, PSHEETSTATE pSheet)
{
    PQLRDEVMODE pdm = &pSheet->work;
    BOOL bGray = pdm->bBmpGrayscale;
    if (bGray && pdm->iBmpBitsPerPixel > 8)
        pdm->iBmpBitsPerPixel = 8;
    if (!bGray && pdm->iBmpBitsPerPixel == 1)
        pdm->iBmpBitsPerPixel = 4;
    ShowDepth(hPanel, g_BmpDepths, COUNT(g_BmpDepths), &pdm->iBmpBitsPerPixel, bGray);
    Enable(hPanel, IDC_DEPTH_1, bGray);
    for (int id : g_BmpColourDepths)
        Enable(hPanel, id, !bGray);
    if (pdm->iBmpBitsPerPixel >= 16)
        pdm->bBmpDither = FALSE;
    SetCheck(hPanel, IDC_GRAYSCALE, bGray);
    SetCheck(hPanel, IDC_DITHER, pdm->bBmpDither);
    Enable(hPanel, IDC_DITHER, pdm->iBmpBitsPerPixel <= 8);
}

static void BmpCommand(HWND hPanel, PSHEETSTATE pSheet, WORD id)
{
    PQLRDEVMODE pdm = &pSheet->work;
    int depth = RadioValue(g_BmpDepths, COUNT(g_BmpDepths), id);
    if (depth > 0)
        pdm->iBmpBitsPerPixel = depth;
    else if (id == IDC_DITHER)
        pdm->bBmpDither = Checked(hPanel, IDC_DITHER);
    else if (id == IDC_GRAYSCALE)
        pdm->bBmpGrayscale = Checked(hPanel, IDC_GRAYSCALE);
    else
        return;
    ShowBmp(hPanel, pSheet);
    ReportChange(hPanel, pSheet);
}

static void ReadBmp(HWND hPanel, PSHEETSTATE pSheet)
{
    PQLRDEVMODE pdm = &pSheet->work;
    ReadRadio(hPanel, g_BmpDepths, COUNT(g_BmpDepths), &pdm->iBmpBitsPerPixel);
    pdm->bBmpDither = Checked(hPanel, IDC_DITHER);
    pdm->bBmpGrayscale = Checked(hPanel, IDC_GRAYSCALE);
}

/* ---- GIF ------------------------------------------------------------------ */

#define GIF_MIN_COLORS 2
#define GIF_MAX_COLORS 256

static void ShowGif(HWND hPanel, PSHEETSTATE pSheet)
{
    const QLRDEVMODE *pdm = &pSheet->work;
    SetSpin(hPanel, IDC_COLORS_SPIN, GIF_MIN_COLORS, GIF_MAX_COLORS);
    SetSpinPos(hPanel, IDC_COLORS_SPIN, pdm->iGifColors);
    SetCheck(hPanel, IDC_GRAYSCALE, pdm->bGifGrayscale);
    SetCheck(hPanel, IDC_DITHER, pdm->bGifDither);
    SetCheck(hPanel, IDC_INTERLACED, pdm->bGifInterlaced);
    SetCheck(hPanel, IDC_MULTIPAGE, pdm->bGifMultiPage);
}

static void GifCommand(HWND hPanel, PSHEETSTATE pSheet, WORD id, WORD code)
{
    if (id == IDC_COLORS && code == EN_KILLFOCUS) {
        SetDlgItemInt(hPanel, IDC_COLORS, ReadNumber(hPanel, IDC_COLORS, GIF_MAX_COLORS, GIF_MIN_COLORS, GIF_MAX_COLORS),
                      FALSE);
    } else if (id < IDC_INTERLACED || id > IDC_GRAYSCALE) {
        return;
    }
    ReportChange(hPanel, pSheet);
}

static void ReadGif(HWND hPanel, PSHEETSTATE pSheet)
{
    PQLRDEVMODE pdm = &pSheet->work;
    pdm->iGifColors = ReadNumber(hPanel, IDC_COLORS, GIF_MAX_COLORS, GIF_MIN_COLORS, GIF_MAX_COLORS);
    pdm->bGifDither = Checked(hPanel, IDC_DITHER);
    pdm->bGifGrayscale = Checked(hPanel, IDC_GRAYSCALE);
    pdm->bGifInterlaced = Checked(hPanel, IDC_INTERLACED);
    pdm->bGifMultiPage = Checked(hPanel, IDC_MULTIPAGE);
}

/* ---- JPEG ----------------------------------------------------------------- */

#define QUALITY_FALLBACK 75
#define QUALITY_MIN      1
#define QUALITY_MAX      100

static void ShowJpegDepth(HWND hPanel, PSHEETSTATE pSheet)
{
    PQLRDEVMODE pdm = &pSheet->work;
    BOOL bGray = pdm->bJpegGrayscale;
    if (bGray && pdm->iJpegBitsPerPixel > 8)
        pdm->iJpegBitsPerPixel = 8;
    if (!bGray && pdm->iJpegBitsPerPixel <= 8)
        pdm->iJpegBitsPerPixel = 24;
    ShowDepth(hPanel, g_JpegDepths, COUNT(g_JpegDepths), &pdm->iJpegBitsPerPixel, bGray);
    Enable(hPanel, IDC_DEPTH_8, bGray);
    Enable(hPanel, IDC_DEPTH_24, !bGray);
    Enable(hPanel, IDC_DEPTH_32, !bGray);
    if (pdm->iJpegBitsPerPixel > 8)
        pdm->bJpegDither = FALSE;
    SetCheck(hPanel, IDC_GRAYSCALE, bGray);
    SetCheck(hPanel, IDC_DITHER, pdm->bJpegDither);
    Enable(hPanel, IDC_DITHER, pdm->iJpegBitsPerPixel == 8);
}

static void ShowJpeg(HWND hPanel, PSHEETSTATE pSheet)
{
    PQLRDEVMODE pdm = &pSheet->work;
    ShowJpegDepth(hPanel, pSheet);
    SetSpinPos(hPanel, IDC_QUALITY_SPIN, pdm->iJpegQuality);
    if (!CheckRadio(hPanel, g_Subsampling, COUNT(g_Subsampling), pdm->iJpegSubsampling)) {
        pdm->iJpegSubsampling = 1;
        CheckRadio(hPanel, g_Subsampling, COUNT(g_Subsampling), 1);
    }
}

static void JpegCommand(HWND hPanel, PSHEETSTATE pSheet, WORD id, WORD code)
{
    PQLRDEVMODE pdm = &pSheet->work;
    int depth = RadioValue(g_JpegDepths, COUNT(g_JpegDepths), id);
    if (depth > 0) {
        pdm->iJpegBitsPerPixel = depth;
        ShowJpegDepth(hPanel, pSheet);
    } else if (id == IDC_GRAYSCALE) {
        pdm->bJpegGrayscale = Checked(hPanel, IDC_GRAYSCALE);
        ShowJpegDepth(hPanel, pSheet);
    } else if (id == IDC_DITHER) {
        pdm->bJpegDither = Checked(hPanel, IDC_DITHER);
    } else if (RadioValue(g_Subsampling, COUNT(g_Subsampling), id) < 0 && !(id == IDC_QUALITY && code == EN_CHANGE)) {
        return;
    }
    ReportChange(hPanel, pSheet);
}

static void ReadJpeg(HWND hPanel, PSHEETSTATE pSheet)
{
    PQLRDEVMODE pdm = &pSheet->work;
    pdm->iJpegQuality = ReadNumber(hPanel, IDC_QUALITY, QUALITY_FALLBACK, QUALITY_MIN, QUALITY_MAX);
    ReadRadio(hPanel, g_JpegDepths, COUNT(g_JpegDepths), &pdm->iJpegBitsPerPixel);
    ReadRadio(hPanel, g_Subsampling, COUNT(g_Subsampling), &pdm->iJpegSubsampling);
    pdm->bJpegDither = Checked(hPanel, IDC_DITHER);
    pdm->bJpegGrayscale = Checked(hPanel, IDC_GRAYSCALE);
}

/* ---- TIFF ----------------------------------------------------------------- */

static void EnableTiffQuality(HWND hPanel, BOOL bEnable)
{
    for (int id : g_TiffQualityControls)
        Enable(hPanel, id, bEnable);
}

/* At 1 bit: no JPEG compression, RLE and fax allowed; at 8 and 24 bits the
 * opposite.  Dithering only at 1 and 8 bits. */
static void ShowTiffDepth(HWND hPanel, PSHEETSTATE pSheet)
{
    PQLRDEVMODE pdm = &pSheet->work;
    if (!CheckRadio(hPanel, g_TiffDepths, COUNT(g_TiffDepths), pdm->iTiffBitsPerPixel)) {
        pdm->iTiffBitsPerPixel = 24;
        CheckRadio(hPanel, g_TiffDepths, COUNT(g_TiffDepths), 24);
    }
    BOOL bMono = pdm->iTiffBitsPerPixel == 1;
    if (pdm->iTiffBitsPerPixel == 24)
        pdm->bTiffDither = FALSE;
    SetCheck(hPanel, IDC_DITHER, pdm->bTiffDither);
    Enable(hPanel, IDC_DITHER, pdm->iTiffBitsPerPixel != 24);
    int &compression = pdm->iTiffCompression;
    if (!bMono && compression >= TIFF_RLE && compression <= TIFF_FAX4)
        compression = TIFF_LZW;
    if (bMono) {
        if (compression == TIFF_JPEG)
            compression = TIFF_FAX4;
        EnableTiffQuality(hPanel, FALSE);
    }
    for (int id : g_TiffMonoCompressions)
        Enable(hPanel, id, bMono);
    Enable(hPanel, IDC_COMPRESSION_JPEG, !bMono);
    CheckRadio(hPanel, g_Compressions, COUNT(g_Compressions), compression);
}

static void ShowTiff(HWND hPanel, PSHEETSTATE pSheet)
{
    PQLRDEVMODE pdm = &pSheet->work;
    SetSpinPos(hPanel, IDC_QUALITY_SPIN, pdm->iTiffQuality);
    SetCheck(hPanel, IDC_MULTIPAGE, pdm->bTiffMultiPage);
    ShowTiffDepth(hPanel, pSheet);
    EnableTiffQuality(hPanel, pdm->iTiffCompression == TIFF_JPEG);
    CheckRadio(hPanel, g_Compressions, COUNT(g_Compressions), pdm->iTiffCompression);
}

static void TiffCommand(HWND hPanel, PSHEETSTATE pSheet, WORD id, WORD code)
{
    PQLRDEVMODE pdm = &pSheet->work;
    int depth = RadioValue(g_TiffDepths, COUNT(g_TiffDepths), id);
    int compression = RadioValue(g_Compressions, COUNT(g_Compressions), id);
    if (depth > 0) {
        pdm->iTiffBitsPerPixel = depth;
        ShowTiffDepth(hPanel, pSheet);
    } else if (compression >= 0) {
        pdm->iTiffCompression = compression;
        EnableTiffQuality(hPanel, compression == TIFF_JPEG);
    } else if (id == IDC_DITHER) {
        pdm->bTiffDither = Checked(hPanel, IDC_DITHER);
    } else if (id != IDC_MULTIPAGE && !(id == IDC_QUALITY && code == EN_CHANGE)) {
        return;
    }
    ReportChange(hPanel, pSheet);
}

static void ReadTiff(HWND hPanel, PSHEETSTATE pSheet)
{
    PQLRDEVMODE pdm = &pSheet->work;
    ReadRadio(hPanel, g_TiffDepths, COUNT(g_TiffDepths), &pdm->iTiffBitsPerPixel);
    ReadRadio(hPanel, g_Compressions, COUNT(g_Compressions), &pdm->iTiffCompression);
    pdm->iTiffQuality = ReadNumber(hPanel, IDC_QUALITY, QUALITY_FALLBACK, QUALITY_MIN, QUALITY_MAX);
    pdm->bTiffDither = Checked(hPanel, IDC_DITHER);
    pdm->bTiffMultiPage = Checked(hPanel, IDC_MULTIPAGE);
}

/* ---- PCX and DCX: the same rules on their own fields ---------------------- */

typedef struct { INT QLRDEVMODE::*depth; BOOL QLRDEVMODE::*gray; BOOL QLRDEVMODE::*dither; } PCXFIELDS;

static const PCXFIELDS g_PcxFields = { &QLRDEVMODE::iPcxBitsPerPixel, &QLRDEVMODE::bPcxGrayscale, &QLRDEVMODE::bPcxDither };
static const PCXFIELDS g_DcxFields = { &QLRDEVMODE::iDcxBitsPerPixel, &QLRDEVMODE::bDcxGrayscale, &QLRDEVMODE::bDcxDither };

static void ShowPcxDepth(HWND hPanel, PSHEETSTATE pSheet, const PCXFIELDS *pf)
{
    QLRDEVMODE &dm = pSheet->work;
    BOOL bGray = dm.*pf->gray;
    INT &depth = dm.*pf->depth;
    if (bGray && depth > 8)
        depth = 8;
    if (!bGray && depth == 1)
        depth = 4;
    ShowDepth(hPanel, g_PcxDepths, COUNT(g_PcxDepths), &depth, bGray);
    Enable(hPanel, IDC_DEPTH_1, bGray);
    Enable(hPanel, IDC_DEPTH_24, !bGray);
    if (depth == 24)
        dm.*pf->dither = FALSE;
    SetCheck(hPanel, IDC_DITHER, dm.*pf->dither);
    SetCheck(hPanel, IDC_GRAYSCALE, bGray);
    Enable(hPanel, IDC_DITHER, depth <= 8);
}

static BOOL PcxCommand(HWND hPanel, PSHEETSTATE pSheet, WORD id, const PCXFIELDS *pf)
{
    QLRDEVMODE &dm = pSheet->work;
    int depth = RadioValue(g_PcxDepths, COUNT(g_PcxDepths), id);
    if (depth > 0) {
        dm.*pf->depth = depth;
        ShowPcxDepth(hPanel, pSheet, pf);
    } else if (id == IDC_GRAYSCALE) {
        dm.*pf->gray = Checked(hPanel, IDC_GRAYSCALE);
        ShowPcxDepth(hPanel, pSheet, pf);
    } else if (id == IDC_DITHER) {
        dm.*pf->dither = Checked(hPanel, IDC_DITHER);
    } else {
        return FALSE;
    }
    return TRUE;
}

static void ReadPcxFields(HWND hPanel, PSHEETSTATE pSheet, const PCXFIELDS *pf)
{
    QLRDEVMODE &dm = pSheet->work;
    ReadRadio(hPanel, g_PcxDepths, COUNT(g_PcxDepths), &(dm.*pf->depth));
    dm.*pf->dither = Checked(hPanel, IDC_DITHER);
    dm.*pf->gray = Checked(hPanel, IDC_GRAYSCALE);
}

static void ShowPcx(HWND hPanel, PSHEETSTATE pSheet) { ShowPcxDepth(hPanel, pSheet, &g_PcxFields); }
static void ReadPcx(HWND hPanel, PSHEETSTATE pSheet) { ReadPcxFields(hPanel, pSheet, &g_PcxFields); }

static void ShowDcx(HWND hPanel, PSHEETSTATE pSheet)
{
    SetCheck(hPanel, IDC_MULTIPAGE, pSheet->work.bDcxMultiPage);
    ShowPcxDepth(hPanel, pSheet, &g_DcxFields);
}

static void ReadDcx(HWND hPanel, PSHEETSTATE pSheet)
{
    ReadPcxFields(hPanel, pSheet, &g_DcxFields);
    pSheet->work.bDcxMultiPage = Checked(hPanel, IDC_MULTIPAGE);
}

/* ---- creation and the shared dialog procedure ----------------------------- */

static void InitBmp(HWND hPanel)
{
    AttachCheckBox(hPanel, IDC_GRAYSCALE);
    AttachCheckBox(hPanel, IDC_DITHER);
    AttachRadios(hPanel, g_BmpDepths, COUNT(g_BmpDepths));
}

static void InitGif(HWND hPanel)
{
    for (int id : g_GifChecks)
        AttachCheckBox(hPanel, id);
}

static void InitJpeg(HWND hPanel)
{
    AttachRadios(hPanel, g_JpegDepths, COUNT(g_JpegDepths));
    for (int id : g_GifChecks)
        AttachCheckBox(hPanel, id);
    AttachRadios(hPanel, g_Subsampling, COUNT(g_Subsampling));
    SetSpin(hPanel, IDC_QUALITY_SPIN, QUALITY_MIN, QUALITY_MAX);
}

static void InitTiff(HWND hPanel)
{
    AttachCheckBox(hPanel, IDC_DITHER);
    AttachCheckBox(hPanel, IDC_MULTIPAGE);
    AttachRadios(hPanel, g_TiffDepths, COUNT(g_TiffDepths));
    AttachRadios(hPanel, g_Compressions, COUNT(g_Compressions));
    SetSpin(hPanel, IDC_QUALITY_SPIN, QUALITY_MIN, QUALITY_MAX);
}

static void InitPcx(HWND hPanel)
{
    AttachRadios(hPanel, g_PcxDepths, COUNT(g_PcxDepths));
    AttachCheckBox(hPanel, IDC_DITHER);
    AttachCheckBox(hPanel, IDC_GRAYSCALE);
}

static void InitDcx(HWND hPanel)
{
    AttachRadios(hPanel, g_PcxDepths, COUNT(g_PcxDepths));
    for (int id : g_DcxChecks)
        AttachCheckBox(hPanel, id);
}

static void PcxPanelCommand(HWND hPanel, PSHEETSTATE pSheet, WORD id, WORD)
{
    if (PcxCommand(hPanel, pSheet, id, &g_PcxFields))
        ReportChange(hPanel, pSheet);
}

static void DcxPanelCommand(HWND hPanel, PSHEETSTATE pSheet, WORD id, WORD)
{
    if (PcxCommand(hPanel, pSheet, id, &g_DcxFields) || id == IDC_MULTIPAGE)
        ReportChange(hPanel, pSheet);
}

static void BmpPanelCommand(HWND hPanel, PSHEETSTATE pSheet, WORD id, WORD)
{
    BmpCommand(hPanel, pSheet, id);
}

typedef struct {
    void (*Init)(HWND hPanel);
    void (*Command)(HWND hPanel, PSHEETSTATE pSheet, WORD id, WORD code);
} PANELBEHAVIOUR;

static const PANELBEHAVIOUR g_Behaviour[FORMAT_COUNT] = {
    { InitBmp, BmpPanelCommand }, { InitGif, GifCommand }, { InitJpeg, JpegCommand },
    { InitTiff, TiffCommand }, { InitPcx, PcxPanelCommand }, { InitDcx, DcxPanelCommand },
};

static INT_PTR PanelDialogProc(int iFormat, HWND hPanel, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_INITDIALOG) {
        SetWindowLongPtrW(hPanel, GWLP_USERDATA, lParam);
        g_Behaviour[iFormat].Init(hPanel);
        g_Panels[iFormat].Show(hPanel, (PSHEETSTATE)lParam);
        return TRUE;
    }
    if (msg != WM_COMMAND)
        return FALSE;
    g_Behaviour[iFormat].Command(hPanel, (PSHEETSTATE)GetWindowLongPtrW(hPanel, GWLP_USERDATA), LOWORD(wParam),
                                 HIWORD(wParam));
    return TRUE;
}

#define PANEL_PROC(name, format) \
    static INT_PTR CALLBACK name(HWND h, UINT m, WPARAM w, LPARAM l) { return PanelDialogProc(format, h, m, w, l); }

PANEL_PROC(BmpPanelProc, FORMAT_BMP)
PANEL_PROC(GifPanelProc, FORMAT_GIF)
PANEL_PROC(JpegPanelProc, FORMAT_JPEG)
PANEL_PROC(TiffPanelProc, FORMAT_TIFF)
PANEL_PROC(PcxPanelProc, FORMAT_PCX)
PANEL_PROC(DcxPanelProc, FORMAT_DCX)

const PANELDESC g_Panels[FORMAT_COUNT] = {
    { BmpPanelProc, ShowBmp, ReadBmp },
    { GifPanelProc, ShowGif, ReadGif },
    { JpegPanelProc, ShowJpeg, ReadJpeg },
    { TiffPanelProc, ShowTiff, ReadTiff },
    { PcxPanelProc, ShowPcx, ReadPcx },
    { DcxPanelProc, ShowDcx, ReadDcx },
};
