#!/usr/bin/env bash
# Builds the module for x64 and x86 with mingw-w64 and for x64 in the MSVC
# dialect, installs the printer into a private Wine prefix and runs every
# test under one Xvfb display; then the black-box harnesses again on the
# MSVC-dialect module, loaded by path and installed as the printer's.  The x86
# tree cannot run here, and the MSVC-dialect one is needed only later, so
# both build while the x64 tests run: they mostly wait on Wine.
source "$(dirname "$0")/common.sh"
qlr_need_packages
qlr_build x64
mkdir -p "$QLR_BUILD"
qlr_build msvc-x64 >"$QLR_BUILD/msvc-x64-build.log" 2>&1 &
msvc_build=$!
qlr_build x86 >"$QLR_BUILD/x86-build.log" 2>&1 &
x86_build=$!
qlr_start_display
qlr_start_wine
qlr_unmanaged_windows
qlr_install_printer
status=0
ctest --test-dir "$QLR_BUILD/x64" --output-on-failure "$@" || status=$?

# The MSVC-dialect module: the same exports as the mingw-w64 build's, system
# imports only, and the black-box harnesses again, loading it by the path
# QLR_MODULE names and through the printer reinstalled with it (Wine maps the
# Unix root to drive Z:).  Of the sheet's scripts, which would take minutes
# more, only the one that opens ten sheets with every page shown runs.  A
# module that failed to load would leave a harness waiting on Wine's crash
# dialog: the timeout ends it.
exports() { x86_64-w64-mingw32-objdump -p "$1" | sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/s/^\t\[ *[0-9]*\] //p'; }
check_msvc_module() {
  local dll=$QLR_BUILD/msvc-x64/bin/QLRDRVUI.DLL result=0
  echo "MSVC-dialect module: exports, imports, black-box harnesses"
  local gcc_exports
  gcc_exports=$(exports "$QLR_BUILD/x64/bin/QLRDRVUI.DLL")
  if [ -z "$gcc_exports" ] || ! diff <(echo "$gcc_exports") <(exports "$dll"); then
    echo "The two builds do not export the same names." >&2
    result=1
  fi
  "$QLR_ROOT/tests/check-imports.sh" x86_64-w64-mingw32-objdump "$dll" || result=1
  qlr_install_printer "Z:$dll" || return 1
  QLR_MODULE="Z:$dll" GTEST_FILTER='Exports.*:Spooler.*:JobWindow.*:*ten_sheets*' ctest --test-dir "$QLR_BUILD/x64" --output-on-failure --timeout 180 \
    -R '^(exports|jobwindow|sheet)_test$' || result=1
  return $result
}
if wait $msvc_build; then
  check_msvc_module || status=1
else
  cat "$QLR_BUILD/msvc-x64-build.log"
  echo "The MSVC-dialect build failed." >&2
  status=1
fi

if ! wait $x86_build; then
  cat "$QLR_BUILD/x86-build.log"
  echo "The x86 build failed." >&2
  exit 1
fi
echo "x86 module imports:"
"$QLR_ROOT/tests/check-imports.sh" i686-w64-mingw32-objdump "$QLR_BUILD/x86/bin/QLRDRVUI.DLL"
exit $status
