#!/usr/bin/env bash
# Benchmarks: each line a ratio against the platform's own floor, measured
# side by side in one run under Wine.
source "$(dirname "$0")/common.sh"
qlr_need_packages
qlr_build x64 QLRDRVUI compstui qlrsetup skin_paint_bench driver_bench sheet_bench
qlr_start_display
qlr_start_wine
qlr_unmanaged_windows
qlr_install_printer >/dev/null
"$WINE" "$QLR_BUILD/x64/bin/driver_bench.exe"
"$WINE" "$QLR_BUILD/x64/bin/skin_paint_bench.exe" | tail -n +2
"$WINE" "$QLR_BUILD/x64/bin/sheet_bench.exe" | tail -n +2
