/*
 * What an application learns from the printer "Quillora": its papers,
 * resolutions and other capabilities through DeviceCapabilitiesW, and its
 * default settings record through DocumentPropertiesW, decoded field by field.
 * Everything goes through winspool, which loads the driver's UI module.
 */
#include <windows.h>
#include <winspool.h>
#include <stddef.h>
#include "print.h"
#include "record.h"

#define PRINTER L"Quillora"
#define PORT    L"FILE:"

enum FieldKind { F_TEXT, F_WORD_HEX, F_DWORD_HEX, F_SHORT, F_INT, F_BOOL };

#define PUB(f)  offsetof(QLRDEVMODE, dmPublic.f), L ## #f
#define PRIV(f) offsetof(QLRDEVMODE, f), L ## #f

static const struct { size_t offset; LPCWSTR name; FieldKind kind; } g_Fields[] = {
    { PUB(dmDeviceName), F_TEXT }, { PUB(dmSpecVersion), F_WORD_HEX },
    { PUB(dmDriverVersion), F_WORD_HEX }, { PUB(dmSize), F_SHORT },
    { PUB(dmDriverExtra), F_SHORT }, { PUB(dmFields), F_DWORD_HEX },
    { PUB(dmOrientation), F_SHORT }, { PUB(dmPaperSize), F_SHORT },
    { PUB(dmPaperLength), F_SHORT }, { PUB(dmPaperWidth), F_SHORT },
    { PUB(dmScale), F_SHORT }, { PUB(dmCopies), F_SHORT },
    { PUB(dmDefaultSource), F_SHORT }, { PUB(dmPrintQuality), F_SHORT },
    { PUB(dmColor), F_SHORT }, { PUB(dmDuplex), F_SHORT },
    { PUB(dmYResolution), F_SHORT }, { PUB(dmTTOption), F_SHORT },
    { PUB(dmCollate), F_SHORT }, { PUB(dmFormName), F_TEXT },
    { PUB(dmBitsPerPel), F_INT }, { PUB(dmPelsWidth), F_INT }, { PUB(dmPelsHeight), F_INT },
    { PRIV(dwSignature), F_DWORD_HEX }, { PRIV(dwPrivVersion), F_DWORD_HEX },
    { PRIV(iPaper), F_INT }, { PRIV(iOrientation), F_INT }, { PRIV(iResolution), F_INT },
    { PRIV(bCropEdges), F_BOOL }, { PRIV(bCustomPaper), F_BOOL },
    { PRIV(iCustomWidth), F_INT }, { PRIV(iCustomHeight), F_INT }, { PRIV(iCustomUnit), F_INT },
    { PRIV(iOutputFormat), F_INT },
    { PRIV(iBmpBitsPerPixel), F_INT }, { PRIV(bBmpGrayscale), F_BOOL }, { PRIV(bBmpDither), F_BOOL },
    { PRIV(iGifColors), F_INT }, { PRIV(bGifGrayscale), F_BOOL }, { PRIV(bGifDither), F_BOOL },
    { PRIV(bGifInterlaced), F_BOOL }, { PRIV(bGifMultiPage), F_BOOL },
    { PRIV(iJpegBitsPerPixel), F_INT }, { PRIV(bJpegGrayscale), F_BOOL },
    { PRIV(bJpegDither), F_BOOL }, { PRIV(iJpegQuality), F_INT }, { PRIV(iJpegSubsampling), F_INT },
    { PRIV(iTiffBitsPerPixel), F_INT }, { PRIV(dwTiffReserved), F_INT },
    { PRIV(bTiffDither), F_BOOL }, { PRIV(iTiffQuality), F_INT },
    { PRIV(iTiffCompression), F_INT }, { PRIV(bTiffMultiPage), F_BOOL },
    { PRIV(iPcxBitsPerPixel), F_INT }, { PRIV(bPcxGrayscale), F_BOOL }, { PRIV(bPcxDither), F_BOOL },
    { PRIV(iDcxBitsPerPixel), F_INT }, { PRIV(bDcxGrayscale), F_BOOL },
    { PRIV(bDcxDither), F_BOOL }, { PRIV(bDcxMultiPage), F_BOOL },
    { PRIV(bShowResult), F_BOOL }, { PRIV(bUseCustomViewer), F_BOOL },
    { PRIV(szOutputFolder), F_TEXT }, { PRIV(szFileNameMask), F_TEXT },
    { PRIV(szViewerPath), F_TEXT }, { PRIV(szViewerParams), F_TEXT },
    { PRIV(szComments), F_TEXT }, { PRIV(m_bProfiled), F_BOOL },
};

static int Caps(WORD cap, void *pOutput)
{
    return DeviceCapabilitiesW(PRINTER, PORT, cap, (LPWSTR)pOutput, NULL);
}

static void PrintPapers(void)
{
    WORD ids[64];
    WCHAR names[64][64];
    POINT sizes[64];
    int n = Caps(DC_PAPERS, NULL);
    if (n <= 0 || n > 64 || Caps(DC_PAPERS, ids) != n || Caps(DC_PAPERNAMES, names) != n ||
        Caps(DC_PAPERSIZE, sizes) != n) {
        Print(L"Papers: not available (%d)\n", n);
        return;
    }
    Print(L"Papers (%d):\n  %-4s %-6s %-16s %s\n", n, L"row", L"id", L"name", L"width x height, mm");
    for (int i = 0; i < n; i++)
        Print(L"  %-4d %-6u \"%s\"%*s %ld.%ld x %ld.%ld\n", i, ids[i], names[i],
              (int)(14 - wcslen(names[i])), L"", sizes[i].x / 10, sizes[i].x % 10,
              sizes[i].y / 10, sizes[i].y % 10);
}

static void PrintResolutionsAndLists(void)
{
    LONG pairs[64][2];
    int n = Caps(DC_ENUMRESOLUTIONS, NULL);
    if (n > 0 && n <= 64 && Caps(DC_ENUMRESOLUTIONS, pairs) == n) {
        Print(L"Resolutions (%d), dpi:", n);
        for (int i = 0; i < n; i++)
            Print(L" %ld", pairs[i][0]);
        Print(L"   (the last is the current one)\n");
    }
    DWORD nup[32];
    n = Caps(DC_NUP, NULL);
    if (n > 0 && n <= 32 && Caps(DC_NUP, nup) == n) {
        Print(L"Pages per sheet:");
        for (int i = 0; i < n; i++)
            Print(L" %lu", nup[i]);
        Print(L"\n");
    }
    WCHAR bin[24];
    if (Caps(DC_BINNAMES, bin) == 1)
        Print(L"Paper source: \"%s\"\n", bin);
    DWORD minExt = Caps(DC_MINEXTENT, NULL), maxExt = Caps(DC_MAXEXTENT, NULL);
    Print(L"Custom paper: %u x %u to %u x %u tenths of a millimetre\n",
          LOWORD(minExt), HIWORD(minExt), LOWORD(maxExt), HIWORD(maxExt));
    Print(L"Orientation: landscape turns by %d degrees; colour device: %d; copies: %d\n",
          Caps(DC_ORIENTATION, NULL), Caps(DC_COLORDEVICE, NULL), Caps(DC_COPIES, NULL));
    Print(L"Settings record: %d public + %d private bytes, DEVMODE version 0x%04X, driver version 0x%04X\n",
          Caps(DC_SIZE, NULL), Caps(DC_EXTRA, NULL), Caps(DC_VERSION, NULL), Caps(DC_DRIVER, NULL));
}

static void PrintField(const BYTE *pRecord, size_t i)
{
    const BYTE *p = pRecord + g_Fields[i].offset;
    Print(L"  %5u  %-18s ", (unsigned)g_Fields[i].offset, g_Fields[i].name);
    switch (g_Fields[i].kind) {
    case F_TEXT:      Print(L"\"%s\"\n", (LPCWSTR)p); break;
    case F_WORD_HEX:  Print(L"0x%04X\n", *(const WORD *)p); break;
    case F_DWORD_HEX: Print(L"0x%08lX\n", *(const DWORD *)p); break;
    case F_SHORT:     Print(L"%d\n", *(const short *)p); break;
    case F_INT:       Print(L"%d\n", *(const INT *)p); break;
    case F_BOOL:      Print(L"%s\n", *(const BOOL *)p ? L"on" : L"off"); break;
    }
}

static BOOL PrintDefaultRecord(HANDLE hPrinter)
{
    LONG cb = DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, NULL, NULL, 0);
    if (cb < (LONG)sizeof(QLRDEVMODE)) {
        Print(L"Default settings: the driver reports a record of %ld bytes\n", cb);
        return FALSE;
    }
    BYTE *pRecord = (BYTE *)LocalAlloc(LPTR, cb);
    LONG result = DocumentPropertiesW(NULL, hPrinter, (LPWSTR)PRINTER, (PDEVMODEW)pRecord, NULL,
                                      DM_OUT_BUFFER);
    if (result == IDOK) {
        Print(L"Default settings record (%ld bytes):\n  offset field              value\n", cb);
        for (size_t i = 0; i < ARRAYSIZE(g_Fields); i++)
            PrintField(pRecord, i);
    } else {
        Print(L"Default settings: DocumentPropertiesW answered %ld\n", result);
    }
    LocalFree(pRecord);
    return result == IDOK;
}

int wmain(void)
{
    HANDLE hPrinter;
    if (!OpenPrinterW((LPWSTR)PRINTER, &hPrinter, NULL)) {
        Print(L"The printer \"%s\" is not installed (error %lu)\n", PRINTER, GetLastError());
        return 1;
    }
    Print(L"Printer \"%s\" on port %s\n\n", PRINTER, PORT);
    PrintPapers();
    Print(L"\n");
    PrintResolutionsAndLists();
    Print(L"\n");
    BOOL ok = PrintDefaultRecord(hPrinter);
    ClosePrinter(hPrinter);
    return ok ? 0 : 1;
}
