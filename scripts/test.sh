#!/usr/bin/env bash
# Builds the module for x64 and x86, installs the printer into a private Wine
# prefix and runs every test under one Xvfb display.
source "$(dirname "$0")/common.sh"
qlr_need_packages
qlr_build x64
qlr_build x86
echo "x86 module imports:"
"$QLR_ROOT/tests/check-imports.sh" i686-w64-mingw32-objdump "$QLR_BUILD/x86/bin/QLRDRVUI.DLL"
qlr_start_display
qlr_start_wine
qlr_unmanaged_windows
qlr_install_printer
ctest --test-dir "$QLR_BUILD/x64" --output-on-failure "$@"
