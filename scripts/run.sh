#!/usr/bin/env bash
# The main job: builds the module, installs the printer "Quillora" into a
# private Wine prefix through the spooler, and prints what an application
# learns from it.
source "$(dirname "$0")/common.sh"
qlr_need_packages
qlr_build x64 QLRDRVUI qlrsetup qlrinfo
qlr_start_display
qlr_start_wine
qlr_unmanaged_windows
qlr_install_printer
echo
"$WINE" "$QLR_BUILD/x64/bin/qlrinfo.exe"
