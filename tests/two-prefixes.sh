#!/bin/sh
# A profile moves between two Wine prefixes (two machines, as far as the
# registry knows) through a .qlr file, with the administrator's tool.
# $1: qlradmin.exe, $2: the build folder.
admin=$1 build=$2
wine=/usr/lib/wine/wine64 server=/usr/lib/wine/wineserver
first=${WINEPREFIX:-$build/wineprefix}
second=$build/wineprefix-second
file=$build/roundtrip.qlr
winfile="Z:$(echo "$file" | tr / '\\\\')"
export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="

fail() { echo "FAILED: $*"; WINEPREFIX=$second "$server" -k 2>/dev/null; exit 1; }

if [ ! -f "$second/system.reg" ]; then
  WINEPREFIX=$second "$wine" wineboot --init >/dev/null 2>&1
  WINEPREFIX=$second "$server" -w
fi
rm -f "$file"
WINEPREFIX=$first "$wine" "$admin" capture Quillora "qlr roundtrip" || fail "capture in the first prefix"
WINEPREFIX=$first "$wine" "$admin" export "qlr roundtrip" "$winfile" || fail "export"
WINEPREFIX=$first "$wine" "$admin" show "qlr roundtrip" > "$build/roundtrip-first.txt" || fail "show"
WINEPREFIX=$first "$wine" "$admin" delete "qlr roundtrip"
[ "$(stat -c %s "$file")" = 3748 ] || fail "the file is not 3748 bytes"

WINEPREFIX=$second "$wine" "$admin" deploy "$winfile" || fail "deploy in the second prefix"
WINEPREFIX=$second "$wine" "$admin" show "qlr roundtrip" > "$build/roundtrip-second.txt" || fail "show"
WINEPREFIX=$second "$wine" "$admin" list | grep -q '^\* qlr roundtrip' || fail "not the current profile"
WINEPREFIX=$second "$wine" "$admin" delete "qlr roundtrip"
WINEPREFIX=$second "$server" -k 2>/dev/null
cmp "$build/roundtrip-first.txt" "$build/roundtrip-second.txt" || fail "the settings differ"
echo "the profile arrived intact"
