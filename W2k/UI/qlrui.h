/*
 * Private header of the driver UI module: module-wide state and the operations
 * on settings records shared by the entry points.
 */
#ifndef QLR_QLRUI_H
#define QLR_QLRUI_H

#include "drvapi.h"
#include <shellapi.h>
#include "record.h"
#include <wchar.h>

#define ARRAY_COUNT(a) (sizeof(a) / sizeof((a)[0]))

inline int MinInt(int a, int b) { return a < b ? a : b; }
inline int ClampInt(int v, int lo, int hi) { return v < lo ? lo : v > hi ? hi : v; }

extern HINSTANCE g_hModule;

/* trace.cpp */
void Trace(LPCWSTR pszFormat, ...);

/* record.cpp */
void SetDefDM(LPCWSTR pszDeviceName, PQLRDEVMODE pdm);
void SetProductName(DEVMODEW *pdm);
void CopyBounded(WCHAR *pszTarget, LPCWSTR pszSource, int cch);
BOOL EqualNoCase(LPCWSTR pszA, LPCWSTR pszB);
int  CustomToTenthsMm(int iValue, int iUnit, int iResolution);
int  TenthsMmToCustom(int iValue, int iUnit, int iResolution);

/* convert.cpp */
WORD GetSpecVersion(const DEVMODEW *pdm);
int  ConvertRecord(const DEVMODEW *pdmSource, DEVMODEW *pdmTarget);
BOOL WriteOutRecord(const QLRDEVMODE *pWork, const DEVMODEW *pdmCallerIn, DEVMODEW *pdmCallerOut);

/* merge.cpp */
void NormalizePrintQuality(DEVMODEW *pdm);
void MergeRecord(const DEVMODEW *pdmSource, PQLRDEVMODE pWork);
void BuildWorkingRecord(HANDLE hPrinter, const DEVMODEW *pdmCaller, PQLRDEVMODE pWork);

/* docprops.cpp */
void InitRememberedRecord(void);
void ForgetRememberedRecord(void);

/* jobwindow.cpp */
void InitJobWindowLock(void);

/* spooler.cpp */
BYTE *GetPrinterInfo(HANDLE hPrinter, DWORD dwLevel);

/* papers.cpp */
typedef struct _PAPERROW {
    WCHAR szName[64];
    INT   iPaperId;
    INT   iUnit;                /* PAPER_THOU or PAPER_MM */
    INT   iWidth, iHeight;      /* portrait */
} PAPERROW;

enum { PAPER_THOU = 0, PAPER_MM = 1 };

#define PAPER_COUNT        39
#define PAPER_DEFAULT_ROW  14   /* A4 */

extern const PAPERROW g_Papers[PAPER_COUNT];
extern const INT g_Resolutions[9];
extern const DWORD g_PagesPerSheet[6];

const PAPERROW *GetPaperRow(int iPaper);
int  FindPaperById(int iPaperId);
int  FindPaperByName(LPCWSTR pszName, int cchField);
void ComputePaperSize(const QLRDEVMODE *pdm, INT *piWidth, INT *piHeight);

#endif
