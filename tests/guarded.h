// A buffer of n bytes whose end touches a page the process may not touch.
#ifndef QLR_TESTS_GUARDED_H
#define QLR_TESTS_GUARDED_H

#include <windows.h>
#include <string.h>

// A touch of that page ends the test program at once, seen first of all handlers: a fault in a window procedure
// may be swallowed before it reaches an unhandled-exception filter, and under Wine one waits for a debugger.
inline LONG WINAPI GuardTouched(EXCEPTION_POINTERS *e)
{
    MEMORY_BASIC_INFORMATION m = {};
    const EXCEPTION_RECORD *r = e->ExceptionRecord;
    if (r->ExceptionCode != EXCEPTION_ACCESS_VIOLATION || !VirtualQuery((void *)r->ExceptionInformation[1], &m, sizeof(m)) ||
        m.State != MEM_COMMIT || m.Protect != PAGE_NOACCESS)
        return EXCEPTION_CONTINUE_SEARCH;
    static const char text[] = "A guarded buffer's end was overrun: the test program stops here.\n";
    DWORD cb;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, sizeof(text) - 1, &cb, NULL);
    TerminateProcess(GetCurrentProcess(), 3);
    return EXCEPTION_EXECUTE_HANDLER;
}

struct Guarded {
    BYTE *base = NULL;
    BYTE *p = NULL;
    explicit Guarded(size_t n, BYTE fill = 0)
    {
        [[maybe_unused]] static const PVOID handler = AddVectoredExceptionHandler(TRUE, GuardTouched);
        const size_t page = 4096, span = (n + page - 1) / page * page + page;    // the x86 and x64 page
        base = (BYTE *)VirtualAlloc(NULL, span, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
        DWORD old;
        VirtualProtect(base + span - page, page, PAGE_NOACCESS, &old);
        p = base + span - page - n;
        memset(p, fill, n);
    }
    ~Guarded() { VirtualFree(base, 0, MEM_RELEASE); }
    Guarded(const Guarded &) = delete;
    Guarded &operator=(const Guarded &) = delete;
    DEVMODEW *dm() { return (DEVMODEW *)p; }
};

#endif
