#!/usr/bin/env bash
# Builds the Qt 6.4.2 for Windows x86-64 that Tidewell is cross-compiled against, from Debian 12's own source packages:
#   build-qt.sh [OUTDIR]      OUTDIR: the folder to make, default build/qt6-win64
# It needs root (apt-get, source packages) on Debian 12, 4 GB of disk and about 45 minutes on two cores; a second build
# with a full compiler cache takes 5. Run it again after a failure: finished steps are not repeated.
# Environment: WORK (sources and build trees, default /var/tmp/qt-windows), JOBS (default: all cores), CCACHE_DIR
# (default $WORK/ccache), TARBALL=FILE.tar.zst (also pack the result there).
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
out=$(realpath -m "${1:-$here/../../build/qt6-win64}")
work=${WORK:-/var/tmp/qt-windows}
jobs=${JOBS:-$(nproc)}
version=6.4.2
revision=$version-1 # of the result: raise its end when this script makes something else, and it is built anew
triple=x86_64-w64-mingw32
prefix=$work/prefix

export DEBIAN_FRONTEND=noninteractive
export CCACHE_DIR=${CCACHE_DIR:-$work/ccache} CCACHE_MAXSIZE=${CCACHE_MAXSIZE:-2G}
# Qt is built with precompiled headers, which the cache trusts only so; and the same in every folder.
export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
export CCACHE_BASEDIR=$work CCACHE_NOHASHDIR=1

say() { printf '[build-qt %(%H:%M:%S)T] %s\n' -1 "$*"; }
die() { say "$*" >&2 && exit 1; }

# once NAME COMMAND...: runs the command unless it succeeded in an earlier run.
once() {
  [ ! -e "$work/stamp/$1" ] || return 0
  "${@:2}"
  touch "$work/stamp/$1"
}

# ---- Tools of the host ---------------------------------------------------------------------------------------------
# moc, rcc, uic and lrelease must be of the very version that is built; qt6-translations-l10n has Qt's own .qm files.
install_tools() {
  local packages=(cmake ninja-build ccache patch xz-utils zstd dpkg-dev g++-mingw-w64-x86-64-posix qt6-base-dev
    qt6-base-dev-tools qt6-base-private-dev qt6-l10n-tools qt6-translations-l10n)
  if [ "$(dpkg-query -W -f '${db:Status-Status}\n' "${packages[@]}" 2>/dev/null | grep -cx installed)" -lt ${#packages[@]} ]; then
    say "installing the tools"
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=900 "${packages[@]}" >"$work/log/apt.log" 2>&1
  fi
  local host
  host=$(/usr/lib/qt6/bin/qtpaths6 --qt-version 2>/dev/null || qtpaths6 --qt-version)
  [ "$host" = $version ] || die "the host's Qt is $host, not $version"
}

# ---- Sources -------------------------------------------------------------------------------------------------------
# A private configuration of apt: the machine's own Debian sources with "deb" turned into "deb-src".
apt=(-o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$work/apt/parts" -o "Dir::State::Lists=$work/apt/lists"
  -o "Dir::Cache=$work/apt/cache" -o APT::Sandbox::User=root)

read_source_lists() {
  local file
  mkdir -p "$work"/apt/{parts,lists/partial,cache/archives/partial}
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ ! -f "$file" ] || sed -n 's/^deb /deb-src /p' "$file" >"$work/apt/parts/$(basename "$file" .list)-src.list"
  done
  for file in /etc/apt/sources.list.d/*.sources; do
    [ ! -f "$file" ] || sed 's/^Types:.*/Types: deb-src/' "$file" >"$work/apt/parts/$(basename "$file")"
  done
  apt-get "${apt[@]}" update -qq
}

# Called in conditions, where "set -e" is off: hence the chain. dpkg-source checks the checksums in the .dsc and
# applies Debian's patches, security fixes among them.
fetch_source() { # NAME: into $work/src/NAME
  local download=$work/src/$1.dl log=$work/log/src-$1.log
  [ ! -e "$work/stamp/src-$1" ] || return 0
  rm -rf "$work/src/$1" "$download" && mkdir -p "$download" &&
    (cd "$download" && apt-get "${apt[@]}" source -qq --download-only "$1") >"$log" 2>&1 &&
    dpkg-source -x "$download"/*.dsc "$work/src/$1" >>"$log" 2>&1 &&
    grep -q "^Version: $version" "$download"/*.dsc &&
    touch "$work/stamp/src-$1"
}

# ---- What has to be mended in them ---------------------------------------------------------------------------------
fix_base() {
  local windows=$work/src/qt6-base/src/plugins/platforms/windows
  # Debian's tarball lacks the unfree wintab.h. Only old drivers of graphics tablets need it (pens that Windows itself
  # knows still work), so that one source of the platform plug-in is left out.
  sed -i 's|^#if QT_CONFIG(tabletevent)|#if 0 // no wintab.h|' "$windows/qwindowscontext.cpp"
  sed -i '0,/^#if QT_CONFIG(tabletevent)/s||#if 0 // no wintab.h|' "$windows/qwindowspointerhandler.cpp"
  sed -i 's|(QWindowsIntegrationPlugin CONDITION QT_FEATURE_tabletevent|(QWindowsIntegrationPlugin CONDITION FALSE|' \
    "$windows/CMakeLists.txt"
  grep -q 'no wintab.h' "$windows/qwindowspointerhandler.cpp"
}

fix_multimedia() {
  local source=$work/src/qt6-multimedia
  # Windows ignores case in file names, Linux does not; mingw-w64's names are lower case.
  sed -i -E 's/(find_library\(WMF_[A-Z0-9]+_LIBRARY )([A-Za-z0-9]+)/\1\L\2/' "$source/cmake/FindWMF.cmake"
  find "$source"/src/{,plugins/}multimedia/windows \( -name '*.cpp' -o -name '*.h' \) -exec \
    sed -i -E 's/#include ([<"])([A-Z][A-Za-z0-9_]*\.h)([>"])/#include \1\L\2\E\3/' {} +
  # A bug of 6.4.2: QSystemLibrary appends ".dll" itself, so "Mfplat.dll" was never found, there was no resampler, and
  # QAudioSink opened only in exactly the mixer's own format.
  sed -i 's/"Mfplat.dll"/"mfplat"/' "$source/src/multimedia/windows/qwindowsmediafoundation_p.h"
  # Audio only: no shader compiler is needed when video is never drawn, and the bundled spatial-audio library and the
  # video widgets, which take minutes, are left out.
  sed -i 's/^find_package(Qt6 COMPONENTS ShaderTools)/function(qt_internal_add_shaders)\nendfunction()/' \
    "$source/src/multimedia/CMakeLists.txt"
  sed -i '/Q_INIT_RESOURCE(shaders);/d' "$source/src/multimedia/video/qvideoframeformat.cpp"
  sed -i -e '/add_subdirectory(resonance-audio)/d' -e '/add_subdirectory(multimediawidgets)/d' "$source/src/CMakeLists.txt"
}

# ---- Configure, build, install -------------------------------------------------------------------------------------
# Installed into $work/prefix, trimmed there and only then copied: OUTDIR is whole or not there.
build() { # NAME CMAKE-OPTION...
  local name=$1 tree=$work/build/$1 begin=$SECONDS
  shift
  mkdir -p "$tree"
  say "$name: configuring"
  cmake -S "$work/src/$name" -B "$tree" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" \
    -DCMAKE_TOOLCHAIN_FILE="$here/toolchain-mingw64.cmake" -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF \
    -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@" >"$work/log/configure-$name.log" 2>&1 ||
    { tail -n 30 "$work/log/configure-$name.log" && exit 1; }
  say "$name: building"
  ninja -C "$tree" -j "$jobs" >"$work/log/build-$name.log" 2>&1 ||
    { grep -A 30 FAILED "$work/log/build-$name.log" | head -n 60 && exit 1; }
  cmake --install "$tree" --strip >"$work/log/install-$name.log" 2>&1
  say "$name: done in $((SECONDS - begin)) s"
}

# Left out: OpenGL and Vulkan (Widgets paint by software), D-Bus, SQL, XML, printing, the Direct2D platform (direct2d
# itself stays, DirectWrite's fonts need it), qmake and the deploy tools (the host's are used), and all that pkg-config
# would find on the host. TLS is Windows' own, schannel: no OpenSSL to ship and to keep up to date. With system_*=OFF
# Qt takes the zlib, png, jpeg, freetype, harfbuzz, pcre2, double-conversion and md4c of its own tarball.
off=(pkg_config opengl vulkan vkgen dbus sql xml printsupport direct2d1_1 tuiotouch androiddeployqt macdeployqt
  windeployqt qmake glib icu zstd brotli libudev gssapi libproxy openssl dtls ocsp fontconfig system_zlib system_png
  system_jpeg system_freetype system_harfbuzz system_pcre2 system_doubleconversion system_libb2
  system_textmarkdownreader)
off=("${off[@]/#/-DFEATURE_}")
off=("${off[@]/%/=OFF}")

# ---- What goes along, and what does not ----------------------------------------------------------------------------
finish_prefix() {
  local libstdcxx
  libstdcxx=$($triple-g++-posix -print-file-name=libstdc++-6.dll)
  cp "$libstdcxx" "$(dirname "$libstdcxx")/libgcc_s_seh-1.dll" "/usr/$triple/lib/libwinpthread-1.dll" "$prefix/bin/"
  mkdir -p "$prefix/translations" "$prefix/licenses"
  cp /usr/share/qt6/translations/qtbase_*.qm "$prefix/translations/"
  cp /usr/share/qt6/translations/qtmultimedia_*.qm "$prefix/translations/" 2>/dev/null || true
  # Every component's licence goes along, as the LGPL asks.
  cp "$work/src/qt6-base/LICENSES/"* "$prefix/licenses/"
  cp /usr/share/doc/gcc-mingw-w64-base/copyright "$prefix/licenses/gcc-runtime.txt"
  cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$prefix/licenses/mingw-w64.txt"
  rm -rf "$prefix"/{doc,phrasebooks,modules,lib/pkgconfig,sbom}
  find "$prefix/bin" "$prefix/plugins" -name '*.dll' -exec $triple-strip --strip-unneeded {} +
  # The programs in bin/ are scripts for the host, with this machine's paths in them.
  find "$prefix/bin" -type f ! -name '*.dll' -delete
  find "$prefix/lib" -name '*.prl' -delete
  printf '%s' $revision >"$prefix/.complete"
}

# ---- All of it -----------------------------------------------------------------------------------------------------
if [ "$(cat "$out/.complete" 2>/dev/null)" = $revision ]; then
  say "$out is complete"
  exit 0
fi
[ "$(cat "$work/revision" 2>/dev/null)" = $revision ] || rm -rf "$work"/{src,stamp,build,prefix}
mkdir -p "$work"/{src,stamp,log}
printf '%s' $revision >"$work/revision"

install_tools
once source-lists read_source_lists
for name in qt6-base qt6-multimedia; do
  fetch_source $name || die "the source package $name could not be had, see $work/log/src-$name.log"
done
optional=()
for name in qt6-serialport qt6-svg; do
  if fetch_source $name; then optional+=("$name"); else say "no source package $name here: built without it"; fi
done

once fix-base fix_base
once fix-multimedia fix_multimedia
once built-qt6-base build qt6-base -DBUILD_SHARED_LIBS=ON -DBUILD_WITH_PCH=ON -DQT_QMAKE_TARGET_MKSPEC=win32-g++ \
  -DINPUT_opengl=no -DINPUT_openssl=no -DFEATURE_direct2d=ON -DFEATURE_schannel=ON -DFEATURE_ssl=ON \
  "${off[@]}"
once built-qt6-multimedia build qt6-multimedia -DQT_WIN_PREFIX="$prefix" -DINPUT_ffmpeg=no -DINPUT_gstreamer=no \
  -DINPUT_pulseaudio=no -DFEATURE_spatialaudio=OFF
for name in "${optional[@]}"; do once "built-$name" build "$name" -DQT_WIN_PREFIX="$prefix"; done

say "trimming and copying"
if [ -n "$(ls -A "$out" 2>/dev/null)" ] && [ ! -e "$out/lib/cmake/Qt6" ]; then
  die "$out is not empty, and holds no Qt: name another folder"
fi
finish_prefix
rm -rf "$out"
mkdir -p "$(dirname "$out")"
cp -a "$prefix" "$out"
if [ -n "${TARBALL:-}" ]; then
  tar -C "$(dirname "$out")" --sort=name --owner=0 --group=0 --numeric-owner -cf - "$(basename "$out")" |
    zstd -q -19 -T0 -f -o "$TARBALL"
  say "$TARBALL: $(du -h "$TARBALL" | cut -f1)"
fi
say "$out: $(du -sh "$out" | cut -f1)"
