/*
 * The settings record: DEVMODEW followed by this driver's private part.
 *
 * This is a binary format.  The rendering module reads it with every job and
 * profiles store it byte for byte, so the layout is identical on x86 and x64
 * and is only ever appended to.  Integers are little-endian, strings UTF-16LE
 * and NUL-terminated inside their arrays.
 */
#ifndef QLR_RECORD_H
#define QLR_RECORD_H

#include <windows.h>
#include <stddef.h>

#define QLR_SPEC_VERSION      0x0401
#define QLR_DRIVER_VERSION    0x0246
#define QLR_PUBLIC_SIZE       220
#define QLR_PRIVATE_SIZE      3264
#define QLR_RECORD_SIZE       (QLR_PUBLIC_SIZE + QLR_PRIVATE_SIZE)
#define QLR_SIGNATURE         0x4453444D    /* "MDSD" in file order */
#define QLR_PRIV_VERSION      0x2010

/* The Windows NT 3.51 layout: a 188-byte public part, the same private bytes. */
#define QLR_SPEC_VERSION_351  0x0320
#define QLR_DRIVER_VERSION_351 0x0350
#define QLR_PUBLIC_SIZE_351   188
#define QLR_RECORD_SIZE_351   (QLR_PUBLIC_SIZE_351 + QLR_PRIVATE_SIZE)

/* The Windows NT 4.0 public part, which stops before dmICMMethod. */
#define QLR_SPEC_VERSION_400  0x0400
#define QLR_PUBLIC_SIZE_400   212

#define QLR_PRODUCT_NAME      L"Quillora"
#define QLR_CUSTOM_PAPER_NAME L"Custom Paper"

#define QLR_MIN_RESOLUTION    50
#define QLR_MAX_RESOLUTION    2400
#define QLR_DEFAULT_RESOLUTION 200
#define QLR_MIN_PAPER_EXTENT  100       /* tenths of a millimetre */
#define QLR_MAX_PAPER_EXTENT  15240

#define QLR_PATH_CHARS        260
#define QLR_COMMENT_CHARS     512

enum CustomUnit {
    UNIT_THOU   = 0,     /* thousandth of an inch */
    UNIT_TENTHMM = 1,    /* tenth of a millimetre */
    UNIT_POINT  = 2,     /* 1/72 inch */
    UNIT_PIXEL  = 3      /* pixel at iResolution */
};

/* Steps per inch of the units that need no resolution. */
#define THOU_PER_INCH       1000
#define TENTHS_MM_PER_INCH  254
#define POINTS_PER_INCH     72

enum OutputFormat {
    FORMAT_BMP, FORMAT_GIF, FORMAT_JPEG, FORMAT_TIFF, FORMAT_PCX, FORMAT_DCX, FORMAT_COUNT
};

typedef struct _QLRDEVMODE {
    DEVMODEW dmPublic;

    DWORD dwSignature;
    DWORD dwPrivVersion;
    INT   iPaper;
    INT   iOrientation;
    INT   iResolution;
    BOOL  bCropEdges;
    BOOL  bCustomPaper;
    INT   iCustomWidth;
    INT   iCustomHeight;
    INT   iCustomUnit;
    INT   iOutputFormat;

    INT   iBmpBitsPerPixel;
    BOOL  bBmpGrayscale;
    BOOL  bBmpDither;
    INT   iGifColors;
    BOOL  bGifGrayscale;
    BOOL  bGifDither;
    BOOL  bGifInterlaced;
    BOOL  bGifMultiPage;
    INT   iJpegBitsPerPixel;
    BOOL  bJpegGrayscale;
    BOOL  bJpegDither;
    INT   iJpegQuality;
    INT   iJpegSubsampling;
    INT   iTiffBitsPerPixel;
    INT   dwTiffReserved;
    BOOL  bTiffDither;
    INT   iTiffQuality;
    INT   iTiffCompression;
    BOOL  bTiffMultiPage;
    INT   iPcxBitsPerPixel;
    BOOL  bPcxGrayscale;
    BOOL  bPcxDither;
    INT   iDcxBitsPerPixel;
    BOOL  bDcxGrayscale;
    BOOL  bDcxDither;
    BOOL  bDcxMultiPage;

    BOOL  bShowResult;
    BOOL  bUseCustomViewer;
    WCHAR szOutputFolder[QLR_PATH_CHARS];
    WCHAR szFileNameMask[QLR_PATH_CHARS];
    WCHAR szViewerPath[QLR_PATH_CHARS];
    WCHAR szViewerParams[QLR_PATH_CHARS];
    WCHAR szComments[QLR_COMMENT_CHARS];
    BOOL  m_bProfiled;
} QLRDEVMODE, *PQLRDEVMODE;

#define QLR_AT(field, offset) \
    static_assert(offsetof(QLRDEVMODE, field) == (offset), #field " moved")

static_assert(sizeof(DEVMODEW) == QLR_PUBLIC_SIZE, "DEVMODEW is 220 bytes on every target");
static_assert(sizeof(QLRDEVMODE) == QLR_RECORD_SIZE, "the settings record is 3484 bytes");
QLR_AT(dmPublic.dmDeviceName, 0);
QLR_AT(dmPublic.dmSpecVersion, 64);
QLR_AT(dmPublic.dmDriverVersion, 66);
QLR_AT(dmPublic.dmSize, 68);
QLR_AT(dmPublic.dmDriverExtra, 70);
QLR_AT(dmPublic.dmFields, 72);
QLR_AT(dmPublic.dmOrientation, 76);
QLR_AT(dmPublic.dmPaperSize, 78);
QLR_AT(dmPublic.dmPaperLength, 80);
QLR_AT(dmPublic.dmPaperWidth, 82);
QLR_AT(dmPublic.dmScale, 84);
QLR_AT(dmPublic.dmCopies, 86);
QLR_AT(dmPublic.dmDefaultSource, 88);
QLR_AT(dmPublic.dmPrintQuality, 90);
QLR_AT(dmPublic.dmColor, 92);
QLR_AT(dmPublic.dmDuplex, 94);
QLR_AT(dmPublic.dmYResolution, 96);
QLR_AT(dmPublic.dmTTOption, 98);
QLR_AT(dmPublic.dmCollate, 100);
QLR_AT(dmPublic.dmFormName, 102);
QLR_AT(dmPublic.dmBitsPerPel, 168);
QLR_AT(dmPublic.dmPelsWidth, 172);
QLR_AT(dmPublic.dmPelsHeight, 176);
QLR_AT(dwSignature, 220);
QLR_AT(dwPrivVersion, 224);
QLR_AT(iPaper, 228);
QLR_AT(iOrientation, 232);
QLR_AT(iResolution, 236);
QLR_AT(bCropEdges, 240);
QLR_AT(bCustomPaper, 244);
QLR_AT(iCustomWidth, 248);
QLR_AT(iCustomHeight, 252);
QLR_AT(iCustomUnit, 256);
QLR_AT(iOutputFormat, 260);
QLR_AT(iBmpBitsPerPixel, 264);
QLR_AT(bBmpGrayscale, 268);
QLR_AT(bBmpDither, 272);
QLR_AT(iGifColors, 276);
QLR_AT(bGifGrayscale, 280);
QLR_AT(bGifDither, 284);
QLR_AT(bGifInterlaced, 288);
QLR_AT(bGifMultiPage, 292);
QLR_AT(iJpegBitsPerPixel, 296);
QLR_AT(bJpegGrayscale, 300);
QLR_AT(bJpegDither, 304);
QLR_AT(iJpegQuality, 308);
QLR_AT(iJpegSubsampling, 312);
QLR_AT(iTiffBitsPerPixel, 316);
QLR_AT(dwTiffReserved, 320);
QLR_AT(bTiffDither, 324);
QLR_AT(iTiffQuality, 328);
QLR_AT(iTiffCompression, 332);
QLR_AT(bTiffMultiPage, 336);
QLR_AT(iPcxBitsPerPixel, 340);
QLR_AT(bPcxGrayscale, 344);
QLR_AT(bPcxDither, 348);
QLR_AT(iDcxBitsPerPixel, 352);
QLR_AT(bDcxGrayscale, 356);
QLR_AT(bDcxDither, 360);
QLR_AT(bDcxMultiPage, 364);
QLR_AT(bShowResult, 368);
QLR_AT(bUseCustomViewer, 372);
QLR_AT(szOutputFolder, 376);
QLR_AT(szFileNameMask, 896);
QLR_AT(szViewerPath, 1416);
QLR_AT(szViewerParams, 1936);
QLR_AT(szComments, 2456);
QLR_AT(m_bProfiled, 3480);

#undef QLR_AT

#endif
