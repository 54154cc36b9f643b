#!/usr/bin/env bash
# The driver package: the UI module for x64 and x86 under dist/, each with
# the help file beside it and the administrator's tool.
source "$(dirname "$0")/common.sh"
qlr_need_packages
for arch in x64 x86; do
  qlr_build "$arch" QLRDRVUI qlrhelp qlradmin
  mkdir -p "$QLR_ROOT/dist/$arch"
  for file in QLRDRVUI.DLL qlrhlp.chm qlradmin.exe; do
    cp "$QLR_BUILD/$arch/bin/$file" "$QLR_ROOT/dist/$arch/$file"
    echo "dist/$arch/$file"
  done
done
