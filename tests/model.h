// What the driver must answer, written out from its documented tables and rules: nothing here calls the module.
#ifndef QLR_TESTS_MODEL_H
#define QLR_TESTS_MODEL_H

#include <windows.h>
#include <string>
#include <vector>

typedef std::vector<BYTE> Bytes;

// One field: a WORD (width 2) or DWORD (width 4) value, or text padded with NULs to width characters.
struct Put { int off, width, value; const wchar_t *text = NULL; };
typedef std::vector<Put> Puts;

void Apply(BYTE *record, const Puts &puts);
int Get(const BYTE *record, int off, int width);
Bytes Factory();                                  // 3484 bytes
// The target's header names the layout; the source's bytes fill it.
void ConvertInto(const BYTE *source, BYTE *target);
// The working record as a caller's output record of the smaller layout.
Bytes WriteOut(const Bytes &work, const BYTE *callerIn);
// "" when equal, else the first differing offset with both bytes.
std::string FirstDiff(const BYTE *got, const BYTE *want, size_t n);
// The paper table: name, paper id, unit (1 = millimetres, 0 = 1/1000 inch), size.
extern const struct Paper { const wchar_t *name; int id, mm, w, h; } g_Papers[39];
// A paper table row's name, and the size label the page-setup page shows for it.
inline std::wstring PaperName(int row) { return g_Papers[row].name; }
std::wstring SizeLabel(int row);
// A row's paper id, and its size in tenths of a millimetre or, raw, in the row's own unit.
inline int PaperId(int row) { return g_Papers[row].id; }
POINT PaperSize(int row, bool raw = false);
// A capability's answer and its output into out for a working record of this resolution and paper.
DWORD ExpectedCap(WORD cap, BYTE *out, int resolution, POINT currentPaper);

#endif
