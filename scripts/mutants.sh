#!/usr/bin/env bash
# Planted faults: ../shared/tools/mutate.py changes one token of W2k/UI at a
# time, rebuilds with the project's own build, reinstalls the printer (the
# spooler loads the copy in its driver folder) and runs the project's tests.
# MUTANT_COUNT, MUTANT_SEED and MUTANT_FILES choose the sample; arguments go
# to ctest (for example -R sheet_test while working on one harness).
source "$(dirname "$0")/common.sh"
MUTATE=$QLR_ROOT/../shared/tools/mutate.py
[ -f "$MUTATE" ] || { echo "No $MUTATE: the shared folder must stand beside the repository." >&2; exit 2; }
qlr_need_packages
qlr_build x64
qlr_start_display
qlr_start_wine
qlr_unmanaged_windows
qlr_install_printer >/dev/null
cd "$QLR_ROOT"
python3 "$MUTATE" --root "$QLR_ROOT" --files "${MUTANT_FILES:-W2k/UI/**/*.cpp}" \
    --count "${MUTANT_COUNT:-40}" --seed "${MUTANT_SEED:-7}" --timeout 600 \
    --build "cmake --build build/x64 >/dev/null && $WINE build/x64/bin/qlrsetup.exe >/dev/null" \
    --test "ctest --test-dir build/x64 --stop-on-failure $*"
