#!/usr/bin/env bash
# Builds the module for x64 and x86, installs the printer into a private Wine
# prefix and runs every test under one Xvfb display.  The x86 tree cannot run
# here, so it builds while the x64 tests run: they mostly wait on Wine.
source "$(dirname "$0")/common.sh"
qlr_need_packages
qlr_build x64
mkdir -p "$QLR_BUILD"
qlr_build x86 >"$QLR_BUILD/x86-build.log" 2>&1 &
x86_build=$!
qlr_start_display
qlr_start_wine
qlr_unmanaged_windows
qlr_install_printer
status=0
ctest --test-dir "$QLR_BUILD/x64" --output-on-failure "$@" || status=$?
if ! wait $x86_build; then
  cat "$QLR_BUILD/x86-build.log"
  echo "The x86 build failed." >&2
  exit 1
fi
echo "x86 module imports:"
"$QLR_ROOT/tests/check-imports.sh" i686-w64-mingw32-objdump "$QLR_BUILD/x86/bin/QLRDRVUI.DLL"
exit $status
