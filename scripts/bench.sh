#!/usr/bin/env bash
# Benchmarks: each line a ratio against the platform's own floor, measured
# side by side in one run under Wine.
source "$(dirname "$0")/common.sh"
qlr_need_packages
qlr_build x64 skin_paint_bench
qlr_start_display
qlr_start_wine
qlr_unmanaged_windows
"$WINE" "$QLR_BUILD/x64/bin/skin_paint_bench.exe"
