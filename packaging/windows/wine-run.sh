#!/usr/bin/env bash
# Runs a Windows program under Wine: wine-run.sh QT-FOLDER PROGRAM.exe [ARGUMENT...]
# ctest calls it for the Windows build (CMAKE_CROSSCOMPILING_EMULATOR). WINEPREFIX defaults to build/wine.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
source "$here/wine-status.sh"
qt=$(realpath "$1")
shift

export WINEPREFIX=${WINEPREFIX:-$(realpath -m "$here/../../build/wine")}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree=;mshtml=;winemenubuilder.exe=}
[ -e "$WINEPREFIX/.tidewell" ] || "$here/wine-prefix.sh" "$WINEPREFIX" >/dev/null 2>&1

# Windows looks for DLLs along PATH, which WINEPATH is put in front of. Z: is the Linux root.
export WINEPATH="Z:${qt//\//\\}\\bin${WINEPATH:+;$WINEPATH}"
# Wine hides QT_* from Windows programs and hands WINEQT_* on as QT_*.
while IFS='=' read -r name value; do
  if [[ $name == QT_* ]]; then export "WINE$name=$value"; fi
done < <(env)
export WINEQT_PLUGIN_PATH=${WINEQT_PLUGIN_PATH:-Z:$qt/plugins}
# Without a console Qt sends its log, and Qt Test its results, to the debugger: the test's output would be empty.
export WINEQT_FORCE_STDERR_LOGGING=1
if [ -z "${DISPLAY:-}" ]; then export WINEQT_QPA_PLATFORM=${WINEQT_QPA_PLATFORM:-offscreen}; fi

# Wine's background processes, such as its desktop, inherit the output of the program that made them start and keep it
# open: whoever reads a pipe to its end would wait for them. Hence a file, shown while it grows.
output=$(mktemp)
trap 'rm -f "$output"' EXIT
wine "$@" >"$output" 2>&1 <&0 &
tail --pid=$! -n +1 -s 0.05 -f "$output"
status=0
wait $! || status=$?
# A test has told its result by then.
if killed_at_its_end $status && grep -q '^Totals: [0-9]* passed, 0 failed,' "$output"; then status=0; fi
exit $status
