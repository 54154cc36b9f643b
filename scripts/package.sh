#!/usr/bin/env bash
# The driver package: the UI module for x64 and x86 under dist/.
source "$(dirname "$0")/common.sh"
qlr_need_packages
for arch in x64 x86; do
  qlr_build "$arch" QLRDRVUI
  mkdir -p "$QLR_ROOT/dist/$arch"
  cp "$QLR_BUILD/$arch/bin/QLRDRVUI.DLL" "$QLR_ROOT/dist/$arch/QLRDRVUI.DLL"
  echo "dist/$arch/QLRDRVUI.DLL"
done
