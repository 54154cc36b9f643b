/*
 * A settings record decoded field by field, for people reading it at a
 * console: the main job's report and the administrator's tool.
 */
#include "recorddump.h"
#include "console.h"
#include <stddef.h>

enum FieldKind { F_TEXT, F_WORD_HEX, F_DWORD_HEX, F_SHORT, F_INT, F_BOOL };

#define PUB(f)  offsetof(QLRDEVMODE, dmPublic.f), sizeof(QLRDEVMODE::dmPublic.f), L ## #f
#define PRIV(f) offsetof(QLRDEVMODE, f), sizeof(QLRDEVMODE::f), L ## #f

static const struct { size_t offset, size; LPCWSTR name; FieldKind kind; } g_Fields[] = {
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

static void PrintField(const BYTE *pRecord, size_t i)
{
    const BYTE *p = pRecord + g_Fields[i].offset;
    Print(L"  %5u  %-18s ", (unsigned)g_Fields[i].offset, g_Fields[i].name);
    switch (g_Fields[i].kind) {
    case F_TEXT: {
        /* A raw record need not end its strings: only the field is read. */
        WCHAR sz[QLR_COMMENT_CHARS + 1];
        size_t cch = g_Fields[i].size / sizeof(WCHAR);
        CopyMemory(sz, p, cch * sizeof(WCHAR));
        sz[cch] = 0;
        Print(L"\"%s\"\n", sz);
        break;
    }
    case F_WORD_HEX:  Print(L"0x%04X\n", *(const WORD *)p); break;
    case F_DWORD_HEX: Print(L"0x%08lX\n", *(const DWORD *)p); break;
    case F_SHORT:     Print(L"%d\n", *(const short *)p); break;
    case F_INT:       Print(L"%d\n", *(const INT *)p); break;
    case F_BOOL:      Print(L"%s\n", *(const BOOL *)p ? L"on" : L"off"); break;
    }
}

void PrintRecord(const QLRDEVMODE *pdm)
{
    Print(L"  offset field              value\n");
    for (size_t i = 0; i < ARRAYSIZE(g_Fields); i++)
        PrintField((const BYTE *)pdm, i);
}
