/*
 * Custom paper lengths: whole steps of thousandths of an inch (0), tenths of
 * a millimetre (1), points (2) or pixels at the record's resolution (3).
 * Every a * b / c is MulDiv, rounded to the nearest integer.
 */
#include "pages.h"

#define MAX_PIXELS 144000

static int StepsPerInch(int unit, int resolution)
{
    static const int steps[] = { THOU_PER_INCH, TENTHS_MM_PER_INCH, POINTS_PER_INCH };
    return unit == UNIT_PIXEL ? resolution : steps[unit];
}

static BOOL IsUnit(int unit)
{
    return unit >= UNIT_THOU && unit <= UNIT_PIXEL;
}

int ConvertLength(int value, int fromUnit, int toUnit, int resolution)
{
    if (fromUnit == toUnit || !IsUnit(fromUnit) || !IsUnit(toUnit))
        return value;
    return MulDiv(value, StepsPerInch(toUnit, resolution), StepsPerInch(fromUnit, resolution));
}

/* The largest custom size is 144000 pixels at the current resolution, in
 * every unit; the smallest is about a millimetre, or one inch of pixels. */
void ClampCustomLength(const SHEETSTATE *pSheet, INT *pValue)
{
    int unit = pSheet->work.iCustomUnit, dpi = pSheet->work.iResolution;
    if (!IsUnit(unit))
        return;
    int M = MulDiv(MAX_PIXELS, THOU_PER_INCH, dpi);
    static const int smallest[] = { 39, 10, 29 };
    UINT lo = unit == UNIT_PIXEL ? (UINT)dpi : (UINT)smallest[unit];
    UINT hi = unit == UNIT_PIXEL ? MAX_PIXELS : (UINT)(unit == UNIT_THOU ? M : MulDiv(M, StepsPerInch(unit, dpi), THOU_PER_INCH));
    UINT v = (UINT)*pValue;
    if (v > hi)
        v = hi;
    if (v < lo)
        v = lo;
    *pValue = (INT)v;
}

/* Inches with 3 decimals and millimetres with 1, trailing zeros trimmed but
 * one kept after the point.  A unit the list does not know shows its raw
 * steps, so nothing is hidden from the user. */
void FormatLength(int value, int unit, WCHAR *pszText, int cch)
{
    WCHAR sz[32];
    if (unit == UNIT_THOU)
        wsprintfW(sz, L"%d.%03d", value / THOU_PER_INCH, value % THOU_PER_INCH);
    else if (unit == UNIT_TENTHMM)
        wsprintfW(sz, L"%d.%d", value / 10, value % 10);
    else
        wsprintfW(sz, L"%d", value);
    if (unit == UNIT_THOU || unit == UNIT_TENTHMM) {
        int n = lstrlenW(sz);
        while (n > 0 && sz[n - 1] == L'0')
            sz[--n] = 0;
        if (n > 0 && sz[n - 1] == L'.')
            lstrcatW(sz, L"0");
    }
    lstrcpynW(pszText, sz, cch);
}

/* Exact decimal arithmetic: the digits are never a floating-point number.
 * A number too large for 32 bits saturates, so the clamp that follows turns
 * it into the largest size rather than a wrapped-around small one. */
int ParseLength(LPCWSTR pszText, int unit, BOOL *pOk)
{
    const unsigned long long LIMIT = 0xFFFFFFFFull;
    *pOk = FALSE;
    while (*pszText == L' ')
        pszText++;
    if (*pszText == L'+' || *pszText == L'-')
        pszText++;
    if (*pszText < L'0' || *pszText > L'9')
        return 0;

    unsigned long long whole = 0;
    for (; *pszText >= L'0' && *pszText <= L'9'; pszText++)
        whole = whole > LIMIT ? whole : whole * 10 + (*pszText - L'0');
    unsigned long long fraction = 0;      /* in ten-thousandths */
    int digits = 0;
    if (*pszText == L'.')
        for (pszText++; digits < 4 && *pszText >= L'0' && *pszText <= L'9'; pszText++, digits++)
            fraction = fraction * 10 + (*pszText - L'0');
    for (; digits < 4; digits++)
        fraction *= 10;

    unsigned long long scale = unit == UNIT_THOU ? THOU_PER_INCH : unit == UNIT_TENTHMM ? 10 : 1;
    unsigned long long value = whole > LIMIT ? LIMIT : whole * scale + fraction * scale / 10000;
    *pOk = TRUE;
    return (int)(UINT)(value > LIMIT ? LIMIT : value);
}
