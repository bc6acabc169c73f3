#!/usr/bin/env bash
# Makes a Wine prefix fit for Tidewell and its tests: wine-prefix.sh DIR
# About 700 MB and a quarter of a minute; nothing happens when DIR is one already.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine-status.sh"
prefix=$(realpath -m "${1:?the folder to make}")
[ ! -e "$prefix/.tidewell" ] || exit 0

export WINEPREFIX=$prefix WINEDEBUG=-all
# No .NET and no HTML engine (both would ask to be downloaded), no menu entries on the Linux side.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
unset DISPLAY WAYLAND_DISPLAY
# Only what was begun here is thrown away: it could be somebody's own prefix.
if [ -n "$(ls -A "$prefix" 2>/dev/null)" ] && [ ! -e "$prefix/.tidewell-begun" ]; then
  echo "wine-prefix.sh: $prefix is not empty, and not made by this script" >&2
  exit 1
fi
rm -rf "$prefix"
mkdir -p "$prefix"
touch "$prefix/.tidewell-begun"
run() { wine "$@" || killed_at_its_end $?; }
run wineboot -u
# Wine 8 poses as Windows 7 unless told otherwise.
run reg add 'HKCU\Software\Wine' /v Version /d win10 /f
# Qt asks for Segoe UI; without a stand-in Wine takes an odd serif font.
for font in "Segoe UI" "MS Shell Dlg 2" Tahoma; do
  run reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d "DejaVu Sans" /f
done
# A prefix keeps the display of its first program while its server lives; the next one shall choose.
wineserver -k || true
wineserver -w || true
touch "$prefix/.tidewell"
