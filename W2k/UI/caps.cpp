/*
 * DrvDeviceCapabilities.  A caller without an output buffer learns the count;
 * the same call with a buffer sized by the standard capability conventions
 * then fills it.  Constant answers are a table; the lists come from the paper
 * table and the constant lists so the device never reports what it lacks.
 */
#include "qlrui.h"
#include "res/resource.h"

#define PAPER_NAME_CHARS  64
#define BIN_NAME_CHARS    24
#define LIST_COUNT        (PAPER_COUNT + 1)     /* the table plus the custom size */
#define CAPS_FAILED       ((DWORD)-1)

typedef struct _CAPANSWER { WORD cap; DWORD answer; } CAPANSWER;

/* The layout of the record is known without building one; these never fail. */
static const CAPANSWER g_LayoutCaps[] = {
    { DC_SIZE,          QLR_PUBLIC_SIZE },
    { DC_EXTRA,         QLR_PRIVATE_SIZE },
    { DC_VERSION,       QLR_SPEC_VERSION },
    { DC_DRIVER,        QLR_DRIVER_VERSION },
};

/* Constant answers that write nothing. */
static const CAPANSWER g_ConstantCaps[] = {
    { DC_DUPLEX,        0 },
    { DC_TRUETYPE,      DCTT_BITMAP },
    { DC_ORIENTATION,   90 },
    { DC_COPIES,        1 },
    { DC_COLLATE,       0 },
    { DC_PRINTRATE,     12 },
    { DC_PRINTRATEUNIT, PRINTRATEUNIT_PPM },
    { DC_PRINTERMEM,    0 },
    { DC_STAPLE,        0 },
    { DC_PRINTRATEPPM,  12 },
    { DC_COLORDEVICE,   1 },
};

static BOOL FindCap(const CAPANSWER *pTable, size_t count, WORD cap, DWORD *pdwAnswer)
{
    for (size_t i = 0; i < count; i++)
        if (pTable[i].cap == cap) {
            *pdwAnswer = pTable[i].answer;
            return TRUE;
        }
    return FALSE;
}

/* Minimum and maximum extents pack x in the low word and y in the high word. */
static DWORD WriteExtent(void *pvOutput, DWORD extent)
{
    if (pvOutput)
        *(DWORD *)pvOutput = extent;
    return extent;
}

static DWORD WritePapers(WORD *pOut)
{
    if (pOut) {
        for (int i = 0; i < PAPER_COUNT; i++)
            pOut[i] = (WORD)g_Papers[i].iPaperId;
        pOut[PAPER_COUNT] = DMPAPER_USER;
    }
    return LIST_COUNT;
}

/* The capability list truncates where ComputePaperSize rounds: each keeps
 * the arithmetic applications have always been given by it. */
static DWORD WritePaperSizes(POINT *pOut, const QLRDEVMODE *pWork)
{
    if (pOut) {
        for (int i = 0; i < PAPER_COUNT; i++) {
            const PAPERROW *pRow = &g_Papers[i];
            int scaleNum = pRow->iUnit == PAPER_THOU ? TENTHS_MM_PER_INCH : 10;
            int scaleDen = pRow->iUnit == PAPER_THOU ? THOU_PER_INCH : 1;
            pOut[i].x = pRow->iWidth * scaleNum / scaleDen;
            pOut[i].y = pRow->iHeight * scaleNum / scaleDen;
        }
        INT cx, cy;
        ComputePaperSize(pWork, &cx, &cy);
        pOut[PAPER_COUNT].x = cx;
        pOut[PAPER_COUNT].y = cy;
    }
    return LIST_COUNT;
}

static DWORD WritePaperNames(WCHAR (*pOut)[PAPER_NAME_CHARS])
{
    if (pOut) {
        for (int i = 0; i < PAPER_COUNT; i++)
            CopyBounded(pOut[i], g_Papers[i].szName, PAPER_NAME_CHARS);
        CopyBounded(pOut[PAPER_COUNT], QLR_CUSTOM_PAPER_NAME, PAPER_NAME_CHARS);
    }
    return LIST_COUNT;
}

static DWORD WriteResolutions(LONG *pOut, const QLRDEVMODE *pWork)
{
    const DWORD count = ARRAY_COUNT(g_Resolutions) + 1;
    if (pOut) {
        for (size_t i = 0; i < ARRAY_COUNT(g_Resolutions); i++)
            pOut[2 * i] = pOut[2 * i + 1] = g_Resolutions[i];
        pOut[2 * count - 2] = pOut[2 * count - 1] = pWork->iResolution;
    }
    return count;
}

static DWORD WritePagesPerSheet(DWORD *pOut)
{
    if (pOut)
        CopyMemory(pOut, g_PagesPerSheet, sizeof(g_PagesPerSheet));
    return ARRAY_COUNT(g_PagesPerSheet);
}

static DWORD AnswerFromRecord(WORD cap, void *pvOutput, const DEVMODEW *pDevMode,
                              const QLRDEVMODE *pWork)
{
    DWORD answer;
    if (FindCap(g_ConstantCaps, ARRAY_COUNT(g_ConstantCaps), cap, &answer))
        return answer;
    switch (cap) {
    case DC_FIELDS:
        return pDevMode ? pDevMode->dmFields : pWork->dmPublic.dmFields;
    case DC_PAPERS:
        return WritePapers((WORD *)pvOutput);
    case DC_PAPERSIZE:
        return WritePaperSizes((POINT *)pvOutput, pWork);
    case DC_BINS:
        if (pvOutput)
            *(WORD *)pvOutput = DMBIN_AUTO;
        return 1;
    case DC_BINNAMES:
        if (pvOutput)
            LoadStringW(g_hModule, IDS_MAIN_PAPER_TRAY, (LPWSTR)pvOutput, BIN_NAME_CHARS);
        return 1;
    case DC_ENUMRESOLUTIONS:
        return WriteResolutions((LONG *)pvOutput, pWork);
    case DC_FILEDEPENDENCIES:
        if (pvOutput)
            *(WCHAR *)pvOutput = 0;
        return 0;
    case DC_PAPERNAMES:
    case DC_MEDIAREADY:
        return WritePaperNames((WCHAR (*)[PAPER_NAME_CHARS])pvOutput);
    case DC_NUP:
        return WritePagesPerSheet((DWORD *)pvOutput);
    }
    return CAPS_FAILED;
}

DWORD WINAPI DrvDeviceCapabilities(HANDLE hPrinter, PWSTR pDeviceName, WORD iDevCap,
                                   VOID *pvOutput, PDEVMODEW pDevMode)
{
    /* No entry trace: a print dialog asks one capability per call, dozens of
     * them, and the record built below traces its own steps.  The handle,
     * not the device name, says which printer's settings take part. */
    (void)pDeviceName;
    DWORD answer;
    if (iDevCap == DC_MINEXTENT)
        return WriteExtent(pvOutput, MAKELONG(QLR_MIN_PAPER_EXTENT, QLR_MIN_PAPER_EXTENT));
    if (iDevCap == DC_MAXEXTENT)
        return WriteExtent(pvOutput, MAKELONG(QLR_MAX_PAPER_EXTENT, QLR_MAX_PAPER_EXTENT));
    if (FindCap(g_LayoutCaps, ARRAY_COUNT(g_LayoutCaps), iDevCap, &answer))
        return answer;

    PQLRDEVMODE pWork = (PQLRDEVMODE)LocalAlloc(LPTR, sizeof(QLRDEVMODE));
    if (!pWork)
        return CAPS_FAILED;
    BuildWorkingRecord(hPrinter, pDevMode, pWork);
    answer = AnswerFromRecord(iDevCap, pvOutput, pDevMode, pWork);
    LocalFree(pWork);
    return answer;
}
