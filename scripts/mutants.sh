#!/usr/bin/env bash
# Planted faults: ../shared/tools/mutate.py changes one token of W2k/UI at a
# time, rebuilds with the project's own build and runs the project's tests;
# the printer is reinstalled first as part of the test (the spooler loads the
# copy in its driver folder), so a mutant that breaks or hangs the installer
# is killed.  MUTANT_COUNT, MUTANT_SEED (a fresh random one by default) and
# MUTANT_FILES choose the sample; arguments go to ctest (for example
# -R sheet_test while working on one harness).  A test run that hangs is
# ended after MUTANT_MINUTES (5) and fails, so its mutant counts as killed.
source "$(dirname "$0")/common.sh"
MUTATE=$QLR_ROOT/../shared/tools/mutate.py
[ -f "$MUTATE" ] || { echo "No $MUTATE: the shared folder must stand beside the repository." >&2; exit 2; }
seed=${MUTANT_SEED:-$(od -An -N4 -tu4 /dev/urandom | tr -d ' ')}
echo "Mutant sample seed: $seed (MUTANT_SEED=$seed repeats it)"
qlr_need_packages
qlr_build x64
qlr_start_display
qlr_start_wine
qlr_unmanaged_windows
qlr_install_printer >/dev/null
cd "$QLR_ROOT"
python3 "$MUTATE" --root "$QLR_ROOT" --files "${MUTANT_FILES:-W2k/UI/**/*.cpp}" \
    --count "${MUTANT_COUNT:-40}" --seed "$seed" --timeout 900 \
    --build "cmake --build build/x64 >/dev/null" \
    --test "timeout -k 10 $((${MUTANT_MINUTES:-5} * 60)) sh -c '$WINE build/x64/bin/qlrsetup.exe >/dev/null && ctest --test-dir build/x64 --stop-on-failure $*'"
