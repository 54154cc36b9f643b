/*
 * Building the working record: factory defaults, then the printer's own
 * record, then the caller's, each merged field by field with validation.
 */
#include "qlrui.h"

#define PAPER_FIELDS (DM_PAPERSIZE | DM_PAPERLENGTH | DM_PAPERWIDTH | DM_FORMNAME)

/* Resolutions a caller may ask for by name instead of in dots per inch. */
static const struct { short code; short dpi; } g_DmresCodes[] = {
    { DMRES_DRAFT, 100 }, { DMRES_LOW, 150 }, { DMRES_MEDIUM, 200 }, { DMRES_HIGH, 300 },
};

static short DpiOfDmres(short code)
{
    for (size_t i = 0; i < ARRAY_COUNT(g_DmresCodes); i++)
        if (g_DmresCodes[i].code == code)
            return g_DmresCodes[i].dpi;
    return 0;
}

void NormalizePrintQuality(DEVMODEW *pdm)
{
    /* This writes into the caller's own buffer: only as far as its header says
     * the public part reaches. */
    if (!pdm || pdm->dmSize < offsetof(DEVMODEW, dmYResolution) + sizeof(short))
        return;
    short dpi = DpiOfDmres(pdm->dmPrintQuality);
    if (dpi)
        pdm->dmPrintQuality = dpi;
    pdm->dmYResolution = pdm->dmPrintQuality;
}

static void MergeOrientation(const QLRDEVMODE *pScratch, PQLRDEVMODE pWork)
{
    short orient = pScratch->dmPublic.dmOrientation;
    if (!(pScratch->dmPublic.dmFields & DM_ORIENTATION) ||
        (orient != DMORIENT_PORTRAIT && orient != DMORIENT_LANDSCAPE))
        return;
    pWork->dmPublic.dmFields |= DM_ORIENTATION;
    pWork->dmPublic.dmOrientation = orient;
    pWork->iOrientation = orient - 1;
}

static void MergeResolution(const QLRDEVMODE *pScratch, PQLRDEVMODE pWork)
{
    if (!(pScratch->dmPublic.dmFields & DM_PRINTQUALITY))
        return;
    int dpi = pScratch->dmPublic.dmPrintQuality;
    /* The spooler's own record and records handed to DrvDeviceCapabilities
     * are never normalised, yet may still carry a DMRES_ code.  The caller
     * meant draft, low, medium or high, so it gets the same resolutions a
     * normalised record would; any other negative value names no resolution
     * and is ignored, as an invalid orientation is. */
    if (dpi < 0) {
        dpi = DpiOfDmres((short)dpi);
        if (!dpi)
            return;
    }
    dpi = ClampInt(dpi, QLR_MIN_RESOLUTION, QLR_MAX_RESOLUTION);
    pWork->dmPublic.dmFields |= DM_PRINTQUALITY;
    pWork->dmPublic.dmPrintQuality = (short)dpi;
    pWork->dmPublic.dmYResolution = (short)dpi;
    pWork->iResolution = dpi;
}

static void UsePaperRow(const QLRDEVMODE *pScratch, int iRow, PQLRDEVMODE pWork)
{
    DEVMODEW *pdm = &pWork->dmPublic;
    pdm->dmFields &= ~(DM_PAPERLENGTH | DM_PAPERWIDTH);
    pdm->dmFields |= DM_PAPERSIZE | DM_FORMNAME;
    pWork->iPaper = iRow;
    pdm->dmPaperSize = (short)g_Papers[iRow].iPaperId;
    pWork->bCustomPaper = FALSE;

    INT cx, cy;
    ComputePaperSize(pWork, &cx, &cy);
    pdm->dmPaperWidth = (short)cx;
    pdm->dmPaperLength = (short)cy;

    pWork->iCustomWidth = pScratch->iCustomWidth;
    pWork->iCustomHeight = pScratch->iCustomHeight;
    pWork->iCustomUnit = pScratch->iCustomUnit;
    CopyBounded(pdm->dmFormName, g_Papers[iRow].szName, CCHFORMNAME);
}

static short ClampExtent(short extent)
{
    return (short)ClampInt(extent, QLR_MIN_PAPER_EXTENT, QLR_MAX_PAPER_EXTENT);
}

static void UseCustomPaper(const QLRDEVMODE *pScratch, PQLRDEVMODE pWork)
{
    DEVMODEW *pdm = &pWork->dmPublic;
    pWork->iCustomUnit = pScratch->iCustomUnit;
    pWork->bCustomPaper = TRUE;
    pdm->dmPaperSize = DMPAPER_USER;
    pdm->dmPaperLength = ClampExtent(pScratch->dmPublic.dmPaperLength);
    pdm->dmPaperWidth = ClampExtent(pScratch->dmPublic.dmPaperWidth);

    int dpi = pdm->dmPrintQuality ? pdm->dmPrintQuality : pWork->iResolution;
    if (!dpi)
        dpi = QLR_MIN_RESOLUTION;
    pWork->iCustomWidth = TenthsMmToCustom(pdm->dmPaperWidth, pWork->iCustomUnit, dpi);
    pWork->iCustomHeight = TenthsMmToCustom(pdm->dmPaperLength, pWork->iCustomUnit, dpi);

    pdm->dmFields &= ~(DM_PAPERSIZE | DM_FORMNAME);
    pdm->dmFields |= DM_PAPERLENGTH | DM_PAPERWIDTH;
    ZeroMemory(pdm->dmFormName, sizeof(pdm->dmFormName));
}

static void MergePaper(const QLRDEVMODE *pScratch, PQLRDEVMODE pWork)
{
    const DEVMODEW *pdm = &pScratch->dmPublic;
    if (!(pdm->dmFields & PAPER_FIELDS))
        return;
    int iRow = -1;
    if (pdm->dmFields & DM_PAPERSIZE)
        iRow = FindPaperById(pdm->dmPaperSize);
    if (iRow < 0 && (pdm->dmFields & DM_FORMNAME))
        iRow = FindPaperByName(pdm->dmFormName, CCHFORMNAME);
    if (iRow >= 0)
        UsePaperRow(pScratch, iRow, pWork);
    else
        UseCustomPaper(pScratch, pWork);
}

/* Only a record of this driver and private version has our private fields.
 * The signature must be the caller's own: where the caller's private part
 * stops short of it, the scratch shows the working record's signature, and
 * copying the working record's custom size back would undo the size that
 * MergePaper just took from the public fields.
 * iPaper, iOrientation, iResolution and bCustomPaper follow the public fields;
 * the comment belongs to the profile, not to a job. */
static void MergePrivate(const DEVMODEW *pdmSource, const QLRDEVMODE *pScratch, PQLRDEVMODE pWork)
{
    const size_t cbIdentity = offsetof(QLRDEVMODE, iPaper) - offsetof(QLRDEVMODE, dwSignature);
    if (pdmSource->dmDriverExtra < cbIdentity ||
        pScratch->dwSignature != QLR_SIGNATURE || pScratch->dwPrivVersion != QLR_PRIV_VERSION)
        return;
    pWork->iCustomWidth = pScratch->iCustomWidth;
    pWork->iCustomHeight = pScratch->iCustomHeight;
    pWork->iCustomUnit = pScratch->iCustomUnit;
    pWork->bCropEdges = pScratch->bCropEdges;
    pWork->iOutputFormat = pScratch->iOutputFormat;
    CopyMemory(&pWork->iBmpBitsPerPixel, &pScratch->iBmpBitsPerPixel,
               offsetof(QLRDEVMODE, bShowResult) - offsetof(QLRDEVMODE, iBmpBitsPerPixel));
    pWork->bShowResult = pScratch->bShowResult;
    pWork->bUseCustomViewer = pScratch->bUseCustomViewer;
    CopyBounded(pWork->szOutputFolder, pScratch->szOutputFolder, QLR_PATH_CHARS);
    CopyBounded(pWork->szFileNameMask, pScratch->szFileNameMask, QLR_PATH_CHARS);
    CopyBounded(pWork->szViewerPath, pScratch->szViewerPath, QLR_PATH_CHARS);
    CopyBounded(pWork->szViewerParams, pScratch->szViewerParams, QLR_PATH_CHARS);
}

void MergeRecord(const DEVMODEW *pdmSource, PQLRDEVMODE pWork)
{
    if (!pdmSource || !pWork)
        return;
    /* The scratch holds the caller's bytes as far as its record reaches and
     * the working record's own values beyond, always in our layout. */
    QLRDEVMODE scratch = *pWork;
    ConvertRecord(pdmSource, &scratch.dmPublic);

    pWork->m_bProfiled = scratch.m_bProfiled;
    MergeOrientation(&scratch, pWork);
    MergeResolution(&scratch, pWork);
    MergePaper(&scratch, pWork);
    MergePrivate(pdmSource, &scratch, pWork);
    SetProductName(&pWork->dmPublic);
}

static void MergePrinterRecord(HANDLE hPrinter, PQLRDEVMODE pWork)
{
    PRINTER_INFO_2W *pInfo = (PRINTER_INFO_2W *)GetPrinterInfo(hPrinter, 2);
    if (!pInfo)
        return;
    if (pInfo->pDevMode)
        MergeRecord(pInfo->pDevMode, pWork);
    LocalFree(pInfo);
}

void BuildWorkingRecord(HANDLE hPrinter, const DEVMODEW *pdmCaller, PQLRDEVMODE pWork)
{
    SetDefDM(NULL, pWork);
    /* Without a layer to merge the record would keep the default image's
     * placeholder "A4" as its device name; it carries the product name like
     * every other record this module hands out. */
    SetProductName(&pWork->dmPublic);
    /* This trace's wording is fixed: keep it as it stands, do not tidy it. */
    Trace(L"After SetDefDM m_bProfiled = %d", pWork->m_bProfiled);

    MergePrinterRecord(hPrinter, pWork);
    /* This trace's wording is fixed: keep it as it stands, do not tidy it. */
    Trace(L"Before merging with DMIn m_bProfiled = %d", pWork->m_bProfiled);

    if (pdmCaller)
        MergeRecord(pdmCaller, pWork);
    /* This trace's wording is fixed: keep it as it stands, do not tidy it. */
    Trace(L"After merging with DMIn m_bProfiled = %d", pWork->m_bProfiled);
    /* This trace's wording is fixed: keep it as it stands, do not tidy it. */
    Trace(L"CHECK SIZE2: %d", pWork->dmPublic.dmSize + pWork->dmPublic.dmDriverExtra);
}
