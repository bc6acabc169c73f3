#!/usr/bin/env bash
# Puts the program into one folder with everything that it needs beside Windows: deploy.sh QT-FOLDER PROGRAM.exe DIR
# Its twin for the console, PROGRAM.com, goes along.
set -euo pipefail
qt=$(realpath "$1")
program=$2
dir=$3
here=$(cd "$(dirname "$0")" && pwd)
triple=x86_64-w64-mingw32

rm -rf "$dir"
mkdir -p "$dir/plugins" "$dir/translations"
cp "$program" "${program%.exe}.com" "$here/../../LICENSE" "$dir"
printf '[Paths]\nPlugins=plugins\nTranslations=translations\n' >"$dir/qt.conf"

# What Qt was built with depends on the machine that built it: the optional parts are taken when they are there.
for plugin in platforms/qwindows styles/qwindowsvistastyle styles/qmodernwindowsstyle imageformats/qico \
  imageformats/qjpeg imageformats/qsvg iconengines/qsvgicon multimedia/windowsmediaplugin tls/qschannelbackend \
  tls/qcertonlybackend; do
  [ -e "$qt/plugins/$plugin.dll" ] || continue
  mkdir -p "$dir/plugins/${plugin%/*}"
  cp "$qt/plugins/$plugin.dll" "$dir/plugins/$plugin.dll"
done
for needed in platforms/qwindows tls/qschannelbackend multimedia/windowsmediaplugin; do
  [ -e "$dir/plugins/$needed.dll" ] || { echo "deploy: this Qt has no $needed" >&2 && exit 1; }
done
cp "$qt"/translations/qtbase_es.qm "$dir/translations" 2>/dev/null || echo "deploy: this Qt has no Spanish texts"

# The licences of what goes along: Qt's, and the compiler's libraries.
cp -r "$qt/licenses" "$dir/licenses"
printf 'Tidewell uses Qt %s under the LGPL version 3, built from the source packages of Debian (packages.debian.org).\n' \
  "$(sed -n 's/^set(PACKAGE_VERSION "\(.*\)")/\1/p' "$qt/lib/cmake/Qt6/Qt6ConfigVersionImpl.cmake")" \
  >"$dir/licenses/NOTICE.txt"

# Libraries that libraries need, until no more are found.
programs() { find "$dir" -name '*.exe' -o -name '*.com' -o -name '*.dll'; }
imports() { "$triple-objdump" -p "$@" | sed -n 's/.*DLL Name: //p' | sort -u; }
compiler=$("$triple-g++-posix" -print-file-name=libstdc++-6.dll)
search=("$qt/bin" "$(dirname "$compiler")" "/usr/$triple/lib")
found=yes
while [ $found = yes ]; do
  found=no
  while read -r dll; do
    [ ! -e "$dir/$dll" ] || continue
    for folder in "${search[@]}"; do
      if [ -e "$folder/$dll" ]; then cp "$folder/$dll" "$dir" && found=yes && break; fi
    done
  done < <(programs | while read -r file; do imports "$file"; done | sort -u)
done
programs | xargs -d '\n' "$triple-strip" --strip-unneeded

# What the installer put there, so that it removes that and nothing else: files first, then folders from the inside out.
{
  (cd "$dir" && find . -type f -printf '%P\n')
  echo installed-files.txt
  (cd "$dir" && find . -mindepth 1 -depth -type d -printf '%P\n')
} | sed 's#/#\\#g; s/$/\r/' >"$dir/installed-files.txt"
