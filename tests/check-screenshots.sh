#!/bin/sh
# The main job's headless run: every page, panel and dialog is saved.
# $1: the emulator, $2: qlrsheet.exe, $3: a folder for the pictures.
emulator=$1 program=$2 folder=$3
rm -rf "$folder" && mkdir -p "$folder" || exit 1
"$emulator" "$program" --screenshots "$folder" >/dev/null 2>&1 || { echo "qlrsheet failed"; exit 1; }
status=0
for name in page-1 page-2 page-3 panel-bmp panel-gif panel-jpeg panel-tiff panel-pcx panel-dcx \
            save-profile profile-manager about; do
  file="$folder/$name.png"
  if [ -s "$file" ] && head -c 8 "$file" | od -An -c | grep -q 'P   N   G'; then
    echo "ok       $name.png"
  else
    echo "MISSING  $name.png"; status=1
  fi
done
exit $status
