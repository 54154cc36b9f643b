/*
 * Document properties without a sheet: size queries, and the merged record
 * written into the caller's buffer in the caller's layout.
 */
#include "sheet.h"

/* The last caller's record given with DM_IN_BUFFER.  A later call that only
 * asks for output builds from it, so every thread of the process shares it;
 * the lock keeps a copy in and a copy out from interleaving. */
static QLRDEVMODE g_Remembered;
static BOOL g_bRemembered;
static CRITICAL_SECTION g_csRemembered;

void InitRememberedRecord(void)
{
    InitializeCriticalSection(&g_csRemembered);
}

void ForgetRememberedRecord(void)
{
    EnterCriticalSection(&g_csRemembered);
    g_bRemembered = FALSE;
    LeaveCriticalSection(&g_csRemembered);
}

static void RememberRecord(const DEVMODEW *pdmIn)
{
    int cb = MinInt(pdmIn->dmSize + pdmIn->dmDriverExtra, QLR_RECORD_SIZE);
    EnterCriticalSection(&g_csRemembered);
    CopyMemory(&g_Remembered, pdmIn, cb);
    /* A larger record is kept only in part; its header must not promise the
     * bytes that were dropped, or the merge would read past the copy. */
    WORD dmSize = g_Remembered.dmPublic.dmSize;
    WORD cbRoom = dmSize < QLR_RECORD_SIZE ? (WORD)(QLR_RECORD_SIZE - dmSize) : 0;
    if (g_Remembered.dmPublic.dmDriverExtra > cbRoom)
        g_Remembered.dmPublic.dmDriverExtra = cbRoom;
    g_bRemembered = TRUE;
    LeaveCriticalSection(&g_csRemembered);
}

/* Returns the remembered record's copy in pSnapshot, or NULL when none. */
static const DEVMODEW *SnapshotRemembered(PQLRDEVMODE pSnapshot)
{
    EnterCriticalSection(&g_csRemembered);
    BOOL bHave = g_bRemembered;
    if (bHave)
        *pSnapshot = g_Remembered;
    LeaveCriticalSection(&g_csRemembered);
    return bHave ? &pSnapshot->dmPublic : NULL;
}

LONG DirectDocumentProperties(PDOCUMENTPROPERTYHEADER pHeader)
{
    if (!pHeader || pHeader->cbSize < sizeof(DOCUMENTPROPERTYHEADER))
        return -1;
    DWORD fMode = pHeader->fMode;
    /* This trace's wording is fixed: keep it as it stands, do not tidy it. */
    Trace(L"Reason_0: %d of {%d, %d}", (int)fMode, DM_IN_BUFFER, DM_OUT_BUFFER);
    if (!fMode || !pHeader->pdmOut) {
        pHeader->cbOut = QLR_RECORD_SIZE;
        return QLR_RECORD_SIZE;
    }

    if ((fMode & DM_IN_BUFFER) && pHeader->pdmIn) {
        NormalizePrintQuality(pHeader->pdmIn);
        RememberRecord(pHeader->pdmIn);
    }
    if (!(fMode & (DM_UPDATE | DM_COPY)) || (fMode & DM_NOPERMISSION))
        return -1;
    /* This trace's wording is fixed: keep it as it stands, do not tidy it. */
    Trace(L"Reason: %d of {%d, %d}", (int)fMode, DM_IN_BUFFER, DM_OUT_BUFFER);

    /* One block for the snapshot and the working record. */
    PQLRDEVMODE pBlock = (PQLRDEVMODE)LocalAlloc(LPTR, 2 * sizeof(QLRDEVMODE));
    if (!pBlock)
        return -1;
    PQLRDEVMODE pWork = &pBlock[1];
    BuildWorkingRecord(pHeader->hPrinter, SnapshotRemembered(&pBlock[0]), pWork);
    WriteOutRecord(pWork, pHeader->pdmIn, pHeader->pdmOut);
    LocalFree(pBlock);
    return 1;
}
