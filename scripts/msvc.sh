#!/usr/bin/env bash
# The driver module in the MSVC dialect (clang-cl against Wine's SDK), for
# x64, under dist/msvc-x64/.
source "$(dirname "$0")/common.sh"
qlr_need_packages
qlr_build msvc-x64
mkdir -p "$QLR_ROOT/dist/msvc-x64"
cp "$QLR_BUILD/msvc-x64/bin/QLRDRVUI.DLL" "$QLR_ROOT/dist/msvc-x64/QLRDRVUI.DLL"
echo "dist/msvc-x64/QLRDRVUI.DLL"
