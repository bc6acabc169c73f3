#!/usr/bin/env bash
# Puts the program into one folder with everything that it needs beside Windows: deploy.sh QT-FOLDER PROGRAM.exe DIR
set -euo pipefail
qt=$(realpath "$1")
program=$2
dir=$3
here=$(cd "$(dirname "$0")" && pwd)
triple=x86_64-w64-mingw32

rm -rf "$dir"
mkdir -p "$dir/plugins" "$dir/translations"
cp "$program" "$here/../../LICENSE" "$dir"
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

# Libraries that libraries need, until no more are found.
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
  done < <(find "$dir" -name '*.exe' -o -name '*.dll' | while read -r file; do imports "$file"; done | sort -u)
done
find "$dir" \( -name '*.exe' -o -name '*.dll' \) -exec "$triple-strip" --strip-unneeded {} +
