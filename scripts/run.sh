#!/usr/bin/env bash
# The main job: builds the module, installs the printer "Quillora" into a
# private Wine prefix through the spooler, prints what an application learns
# from it, and opens its document properties as an application does.  On a
# desktop ($DISPLAY set) the sheet is a real window; without one it runs on a
# private display and saves a screenshot of each page.
source "$(dirname "$0")/common.sh"
qlr_need_packages
qlr_build x64 QLRDRVUI qlrhelp compstui qlrsetup qlrinfo qlrsheet
desktop=${DISPLAY:-}
[ -n "$desktop" ] || qlr_start_display
qlr_start_wine
if [ -n "$desktop" ]; then qlr_managed_windows; else qlr_unmanaged_windows; fi
qlr_install_printer
echo
"$WINE" "$QLR_BUILD/x64/bin/qlrinfo.exe"
echo
if [ -n "$desktop" ]; then
  "$WINE" "$QLR_BUILD/x64/bin/qlrsheet.exe"
else
  shots=$QLR_BUILD/screenshots
  rm -rf "$shots" && mkdir -p "$shots"
  "$WINE" "$QLR_BUILD/x64/bin/qlrsheet.exe" --screenshots "$shots" >/dev/null
  echo "Document properties, headless: the pages, the format panels and the sheet's dialogs"
  ls -1 "$shots"/*.png
fi
