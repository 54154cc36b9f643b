/*
 * The factory-default settings record and the small rules every record keeps:
 * the product name in dmDeviceName, bounded strings, custom-size units.
 */
#include "qlrui.h"

#define DEFAULT_FIELDS (DM_ORIENTATION | DM_PAPERSIZE | DM_PAPERLENGTH | DM_PAPERWIDTH | \
                        DM_PRINTQUALITY | DM_COLOR | DM_DUPLEX | DM_YRESOLUTION |       \
                        DM_TTOPTION | DM_COLLATE | DM_FORMNAME)
static_assert(DEFAULT_FIELDS == 0x0001FC0F, "default dmFields");

/* Every byte not named here is 0; public fields the driver does not use are
 * carried along as the caller left them. */
static const QLRDEVMODE g_DefaultRecord = {
    {
        L"A4",                                  /* dmDeviceName, replaced on every build */
        QLR_SPEC_VERSION, QLR_DRIVER_VERSION, QLR_PUBLIC_SIZE, QLR_PRIVATE_SIZE,
        DEFAULT_FIELDS,
        {{ DMORIENT_PORTRAIT, DMPAPER_A4, 2970, 2100,
           100, 1, 0, QLR_DEFAULT_RESOLUTION }},    /* scale, copies, source, quality */
        DMCOLOR_COLOR, DMDUP_SIMPLEX, QLR_DEFAULT_RESOLUTION, DMTT_BITMAP, DMCOLLATE_FALSE,
        L"A4",                                  /* dmFormName */
        0,                                      /* dmLogPixels */
        24, 2100, 2970,                         /* bits per pel, pels width/height */
        {0}, 0, 0, 0, 0, 0, 0, 0, 0, 0
    },
    QLR_SIGNATURE, QLR_PRIV_VERSION,
    PAPER_DEFAULT_ROW, 0, QLR_DEFAULT_RESOLUTION,   /* iPaper, iOrientation, iResolution */
    FALSE, FALSE,                               /* bCropEdges, bCustomPaper */
    2100, 2970, UNIT_TENTHMM,                   /* A4 as a custom size */
    FORMAT_JPEG,
    24, FALSE, FALSE,                           /* BMP */
    256, FALSE, TRUE, FALSE, TRUE,              /* GIF */
    24, FALSE, FALSE, 100, 2,                   /* JPEG */
    24, 0, FALSE, 100, 4, TRUE,                 /* TIFF, LZW */
    24, FALSE, FALSE,                           /* PCX */
    24, FALSE, FALSE, TRUE,                     /* DCX */
    TRUE, FALSE,                                /* bShowResult, bUseCustomViewer */
    L"c:\\QLR Output Files",
    L"&[DocName]_&[Page].&[Type]",
    L"",
    L"%f",
    L"",
    FALSE
};

void CopyBounded(WCHAR *pszTarget, LPCWSTR pszSource, int cch)
{
    /* Pads with NULs like a bounded copy and always terminates in the last
     * element, so no stale characters survive behind a shorter string. */
    int i = 0;
    for (; i < cch - 1 && pszSource[i]; i++)
        pszTarget[i] = pszSource[i];
    for (; i < cch; i++)
        pszTarget[i] = 0;
}

/* Letter case alone, one character against one: the linguistic comparisons
 * (lstrcmpiW) also pass over characters such as the soft hyphen, which would
 * match names that the registry and the rendering module tell apart. */
BOOL EqualNoCase(LPCWSTR pszA, LPCWSTR pszB)
{
    for (;; pszA++, pszB++) {
        WCHAR a = (WCHAR)(ULONG_PTR)CharUpperW((LPWSTR)(ULONG_PTR)*pszA);
        WCHAR b = (WCHAR)(ULONG_PTR)CharUpperW((LPWSTR)(ULONG_PTR)*pszB);
        if (a != b)
            return FALSE;
        if (!a)
            return TRUE;
    }
}

void SetProductName(DEVMODEW *pdm)
{
    CopyBounded(pdm->dmDeviceName, QLR_PRODUCT_NAME, CCHDEVICENAME);
}

void SetDefDM(LPCWSTR pszDeviceName, PQLRDEVMODE pdm)
{
    CopyMemory(pdm, &g_DefaultRecord, sizeof(*pdm));
    pdm->dmPublic.dmYResolution = QLR_DEFAULT_RESOLUTION;
    pdm->dmPublic.dmPrintQuality = QLR_DEFAULT_RESOLUTION;
    if (pszDeviceName)
        CopyBounded(pdm->dmPublic.dmDeviceName, pszDeviceName, CCHDEVICENAME);
    pdm->dmPublic.dmDeviceName[CCHDEVICENAME - 1] = 0;
}

static int UnitsPerInch(int iUnit, int iResolution)
{
    switch (iUnit) {
    case UNIT_THOU:  return THOU_PER_INCH;
    case UNIT_POINT: return POINTS_PER_INCH;
    /* A pixel size needs a resolution; a record damaged to 0 or less would
     * divide by zero, so it counts at the lowest resolution a record allows. */
    case UNIT_PIXEL: return iResolution > 0 ? iResolution : QLR_MIN_RESOLUTION;
    default:         return TENTHS_MM_PER_INCH;   /* tenths of a millimetre, also for unknown units */
    }
}

int CustomToTenthsMm(int iValue, int iUnit, int iResolution)
{
    int upi = UnitsPerInch(iUnit, iResolution);
    return upi == TENTHS_MM_PER_INCH ? iValue : MulDiv(iValue, TENTHS_MM_PER_INCH, upi);
}

int TenthsMmToCustom(int iValue, int iUnit, int iResolution)
{
    int upi = UnitsPerInch(iUnit, iResolution);
    return upi == TENTHS_MM_PER_INCH ? iValue : MulDiv(iValue, upi, TENTHS_MM_PER_INCH);
}
