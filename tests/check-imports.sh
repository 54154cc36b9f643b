#!/bin/sh
# The driver DLL may import only libraries every Windows installation has:
# a compiler runtime DLL left behind would stop the printer from loading.
objdump=$1 dll=$2
allowed='^(kernel32|user32|gdi32|advapi32|comctl32|comdlg32|shell32|ole32|version|msvcrt)\.dll$|^winspool\.drv$'
imports=$("$objdump" -p "$dll" | sed -n 's/^[[:space:]]*DLL Name: //p' | tr 'A-Z' 'a-z')
[ -n "$imports" ] || { echo "no import table read from $dll"; exit 1; }
status=0
for name in $imports; do
  if echo "$name" | grep -Eq "$allowed"; then
    echo "ok       $name"
  else
    echo "FOREIGN  $name"; status=1
  fi
done
exit $status
