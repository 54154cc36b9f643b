/*
 * The paper table and the other constant lists the device reports.  The row
 * order is the order of every capability list and the domain of iPaper, so a
 * new form is appended, never inserted.
 */
#include "qlrui.h"

/* Envelope names of rows 24 to 36 end in a blank that belongs to the name:
 * it takes part in the exact form-name comparison of a merge. */
const PAPERROW g_Papers[PAPER_COUNT] = {
    { L"Letter/ANSI A",   DMPAPER_LETTER,       PAPER_THOU,  8500, 11000 },
    { L"Tabloid/ANSI B",  DMPAPER_TABLOID,      PAPER_THOU, 11000, 17000 },
    { L"ANSI Super B",    257,                  PAPER_THOU, 13000, 19000 },
    { L"ANSI C",          DMPAPER_CSHEET,       PAPER_THOU, 17000, 22000 },
    { L"ANSI D",          DMPAPER_DSHEET,       PAPER_THOU, 22000, 34000 },
    { L"ANSI E",          DMPAPER_ESHEET,       PAPER_THOU, 34000, 44000 },
    { L"ANSI F",          258,                  PAPER_THOU, 28000, 40000 },
    { L"US Legal",        DMPAPER_LEGAL,        PAPER_THOU,  8500, 14000 },
    { L"Statement",       DMPAPER_STATEMENT,    PAPER_THOU,  5500,  8500 },
    { L"Executive",       DMPAPER_EXECUTIVE,    PAPER_THOU,  7250, 10500 },
    { L"A0",              259,                  PAPER_MM,     841,  1189 },
    { L"A1",              260,                  PAPER_MM,     594,   841 },
    { L"A2",              DMPAPER_A2,           PAPER_MM,     420,   594 },
    { L"A3",              DMPAPER_A3,           PAPER_MM,     297,   420 },
    { L"A4",              DMPAPER_A4,           PAPER_MM,     210,   297 },
    { L"A5",              DMPAPER_A5,           PAPER_MM,     148,   210 },
    { L"B0",              261,                  PAPER_MM,    1000,  1414 },
    { L"B1",              262,                  PAPER_MM,     707,  1000 },
    { L"B2",              263,                  PAPER_MM,     500,   707 },
    { L"B4",              DMPAPER_B4,           PAPER_MM,     250,   354 },
    { L"B5",              DMPAPER_B5,           PAPER_MM,     182,   257 },
    { L"Folio",           DMPAPER_FOLIO,        PAPER_THOU,  8500, 13000 },
    { L"Quarto",          DMPAPER_QUARTO,       PAPER_MM,     215,   275 },
    { L"Note",            DMPAPER_NOTE,         PAPER_THOU,  8500, 11000 },
    { L"Конверт #9 ",     DMPAPER_ENV_9,        PAPER_THOU,  3875,  8875 },
    { L"Конверт #10 ",    DMPAPER_ENV_10,       PAPER_THOU,  4125,  9500 },
    { L"Конверт #11 ",    DMPAPER_ENV_11,       PAPER_THOU,  4500, 10375 },
    { L"Конверт #14 ",    DMPAPER_ENV_14,       PAPER_THOU,  5000, 11500 },
    { L"Конверт DL ",     DMPAPER_ENV_DL,       PAPER_MM,     110,   220 },
    { L"Конверт C5 ",     DMPAPER_ENV_C5,       PAPER_MM,     162,   229 },
    { L"Конверт C3 ",     DMPAPER_ENV_C3,       PAPER_MM,     324,   458 },
    { L"Конверт C4 ",     DMPAPER_ENV_C4,       PAPER_MM,     229,   324 },
    { L"Конверт C6 ",     DMPAPER_ENV_C6,       PAPER_MM,     114,   162 },
    { L"Конверт C65 ",    DMPAPER_ENV_C65,      PAPER_MM,     114,   229 },
    { L"Конверт B4 ",     DMPAPER_ENV_B4,       PAPER_MM,     250,   353 },
    { L"Конверт B5 ",     DMPAPER_ENV_B5,       PAPER_MM,     176,   250 },
    { L"Конверт B6 ",     DMPAPER_ENV_B6,       PAPER_MM,     176,   125 },
    { L"Кон. Monarch",    DMPAPER_ENV_MONARCH,  PAPER_THOU,  3875,  7500 },
    { L"Кон. Personal",   DMPAPER_ENV_PERSONAL, PAPER_THOU,  3625,  6500 },
};

const INT g_Resolutions[9] = { 50, 72, 96, 100, 150, 200, 300, 400, 600 };

const DWORD g_PagesPerSheet[6] = { 1, 2, 4, 6, 9, 16 };

/* iPaper arrives unchecked from stored profiles.  A row the table lacks falls
 * back to the factory paper, A4, so a damaged profile still describes a real
 * sheet instead of reading past the table. */
const PAPERROW *GetPaperRow(int iPaper)
{
    if (iPaper < 0 || iPaper >= PAPER_COUNT)
        iPaper = PAPER_DEFAULT_ROW;
    return &g_Papers[iPaper];
}

int FindPaperById(int iPaperId)
{
    for (int i = 0; i < PAPER_COUNT; i++)
        if (g_Papers[i].iPaperId == iPaperId)
            return i;
    return -1;
}

/* Binary comparison: form names match exactly, case and trailing blanks
 * included.  A caller's name need not be terminated inside its field. */
int FindPaperByName(LPCWSTR pszName, int cchField)
{
    for (int i = 0; i < PAPER_COUNT; i++)
        if (wcsncmp(g_Papers[i].szName, pszName, cchField) == 0)
            return i;
    return -1;
}

void ComputePaperSize(const QLRDEVMODE *pdm, INT *piWidth, INT *piHeight)
{
    if (pdm->bCustomPaper) {
        *piWidth = CustomToTenthsMm(pdm->iCustomWidth, pdm->iCustomUnit, pdm->iResolution);
        *piHeight = CustomToTenthsMm(pdm->iCustomHeight, pdm->iCustomUnit, pdm->iResolution);
        return;
    }
    const PAPERROW *pRow = GetPaperRow(pdm->iPaper);
    if (pRow->iUnit != PAPER_THOU) {
        *piWidth = pRow->iWidth * 10;
        *piHeight = pRow->iHeight * 10;
    } else {
        *piWidth = MulDiv(pRow->iWidth, TENTHS_MM_PER_INCH, THOU_PER_INCH);
        *piHeight = MulDiv(pRow->iHeight, TENTHS_MM_PER_INCH, THOU_PER_INCH);
    }
}
