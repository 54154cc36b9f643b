# Shared by the README's commands: packages, build, and a private Wine
# session (one Xvfb display, one prefix, one persistent wineserver).
set -euo pipefail

QLR_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
QLR_BUILD=$QLR_ROOT/build
WINE=/usr/lib/wine/wine64
WINESERVER=/usr/lib/wine/wineserver
# The second compiler, the MSVC dialect: clang-cl (clang-tools), llvm-rc
# (llvm), lld-link (lld) of LLVM 14, and Wine's SDK for PE programs.
QLR_PACKAGES="mingw-w64 wine64 xvfb xauth cmake ninja-build googletest make fp-utils
              clang-tools-14 llvm-14 lld-14 libwine-dev"

qlr_need_packages() {
  local missing=() p
  for p in $QLR_PACKAGES; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  if [ "$(id -u)" != 0 ]; then
    echo "Missing packages: ${missing[*]}. Run this command as root to install them." >&2
    exit 1
  fi
  echo "Installing ${missing[*]} ..."
  apt-get update -qq
  DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# qlr_build TREE [target...]: x64 and x86 are the mingw-w64 builds of the
# module, the Wine tools, the tests and the benchmarks (all of them without
# targets); both build whole, but only x64 runs, since these machines refuse
# 32-bit programs.  msvc-x64 is the module alone, built by clang-cl.
qlr_build() {
  local arch=$1; shift
  local toolchain=mingw-$arch
  [ "$arch" = msvc-x64 ] && toolchain=clang-cl-x64
  cmake -S "$QLR_ROOT" -B "$QLR_BUILD/$arch" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$QLR_ROOT/cmake/$toolchain.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DQLR_BUILD_TESTS=ON >/dev/null
  local target
  if [ $# -eq 0 ]; then
    cmake --build "$QLR_BUILD/$arch"
  else
    for target in "$@"; do cmake --build "$QLR_BUILD/$arch" --target "$target"; done
  fi
}

qlr_start_display() {
  local n=90
  while [ -e "/tmp/.X11-unix/X$n" ] || [ -e "/tmp/.X$n-lock" ]; do n=$((n + 1)); done
  Xvfb ":$n" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
  QLR_XVFB_PID=$!
  export DISPLAY=":$n"
  local i
  for i in $(seq 50); do
    [ -e "/tmp/.X11-unix/X$n" ] && return 0
    sleep 0.1
  done
  echo "Xvfb did not start on $DISPLAY" >&2
  exit 1
}

qlr_stop_session() {
  "$WINESERVER" -k 2>/dev/null || true
  if [ -n "${QLR_XVFB_PID:-}" ]; then
    kill "$QLR_XVFB_PID" 2>/dev/null || true
    wait "$QLR_XVFB_PID" 2>/dev/null || true
  fi
}

# A prefix of our own under the build directory; Mono and Gecko are switched
# off so Wine never asks about them in a dialog that nobody answers.
qlr_start_wine() {
  export WINEPREFIX=$QLR_BUILD/x64/wineprefix
  export WINEDEBUG=${WINEDEBUG:--all}
  export WINEDLLOVERRIDES="compstui=n,b;mscoree,mshtml="
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    echo "Creating the Wine prefix $WINEPREFIX ..."
    "$WINE" wineboot --init >/dev/null 2>&1 || true
    "$WINESERVER" -w
  fi
  # The server and the services Wine starts with the first program outlive
  # it; they must not hold the caller's stdout open, or a pipe reading the
  # test output never ends.
  "$WINESERVER" -p </dev/null >/dev/null 2>&1
  trap qlr_stop_session EXIT
  "$WINE" wineboot </dev/null >/dev/null 2>&1
}

# Without a window manager Wine waits two seconds for every hidden top-level
# window to be withdrawn; on our own display no manager runs, so windows are
# made unmanaged there.  On a desktop the manager decorates them as usual.
qlr_unmanaged_windows() {
  "$WINE" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
}

qlr_managed_windows() {
  "$WINE" reg delete 'HKCU\Software\Wine\X11 Driver' /v Managed /f >/dev/null 2>&1 || true
}

# qlr_install_printer [DLL]: the printer with the x64 build's module, or with
# the one named (a Windows path).
qlr_install_printer() {
  "$WINE" "$QLR_BUILD/x64/bin/qlrsetup.exe" "$@"
}
