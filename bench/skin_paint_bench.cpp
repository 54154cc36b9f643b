// One WM_PAINT of a skinned push button against the same button with the
// system's own look, measured side by side in one run.  Not a test: it
// prints a ratio and never fails.
#include <stdio.h>
#include <algorithm>
#include <vector>
#include "skin/skin.h"
#include "pictures.h"

enum { ROUNDS = 31, PAINTS_PER_ROUND = 200 };

static double SecondsFor(HWND button)
{
    LARGE_INTEGER freq, start, end;
    QueryPerformanceFrequency(&freq);
    QueryPerformanceCounter(&start);
    for (int i = 0; i < PAINTS_PER_ROUND; i++)
        RedrawWindow(button, NULL, NULL, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    QueryPerformanceCounter(&end);
    return double(end.QuadPart - start.QuadPart) / freq.QuadPart;
}

static double Median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

int main()
{
    UseScheme(CLASSIC);
    SkinHost host;
    if (!host.Create())
        return 1;
    HWND skinned = host.AddButton(HOST_PUSH, BS_PUSHBUTTON, L"Обзор...", 75, 23);
    HWND plain = host.AddButton(HOST_PLAIN, BS_PUSHBUTTON, L"Обзор...", 75, 23, 100, 0);
    AttachPushButton(host.hwnd, HOST_PUSH);
    host.Show();

    // Alternating rounds share whatever the machine is doing at the time.
    std::vector<double> tSkinned, tPlain;
    for (int r = 0; r < ROUNDS; r++) {
        tSkinned.push_back(SecondsFor(skinned));
        tPlain.push_back(SecondsFor(plain));
    }
    double s = Median(tSkinned) / PAINTS_PER_ROUND * 1e6, p = Median(tPlain) / PAINTS_PER_ROUND * 1e6;
    printf("%-44s %8s %12s %12s\n", "measure", "ratio", "ours (us)", "floor (us)");
    printf("%-44s %8.2f %12.1f %12.1f\n", "push button WM_PAINT: skinned / system look", s / p, s, p);
    host.Destroy();
    RestoreColours();
    return 0;
}
