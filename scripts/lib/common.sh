# Shared by the scripts of this project; sourced, not run.
# shellcheck shell=bash
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
logs=$root/build/log
jobs=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}

say() { printf '%s: %s\n' "${0##*/}" "$*"; }
die() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

# step TEXT COMMAND...: says TEXT, runs the command with its output in a log, and shows the log's end if it fails.
step() {
  local text=$1 log
  shift
  say "$text"
  mkdir -p "$logs"
  log=$logs/${text//[^A-Za-z0-9]/-}.log
  if "$@" >"$log" 2>&1; then return 0; fi
  # ninja prints the failed commands' output in the middle and compilers' errors may be long: errors first.
  grep -nE '(error|FAILED|undefined reference)[: ]' "$log" | head -n 20 >&2 || true
  tail -n 40 "$log" >&2
  die "failed: $text (all of its output: $log)"
}

# configure_preset NAME [CMAKE-OPTION...]
configure_preset() {
  cd "$root"
  step "configuring the preset $1" cmake --preset "$1" "${@:2}"
}

# build_preset NAME [TARGET...], once it is configured
build_preset() {
  local preset=$1
  shift
  cd "$root"
  local build=(cmake --build --preset "$preset" -j "$jobs" ${1+--target "$@"})
  # The first build takes minutes: whoever watches a terminal sees how far it is.
  if [ -t 1 ]; then
    say "building the preset $preset"
    "${build[@]}" || die "the build failed, see above"
  else
    step "building the preset $preset" "${build[@]}"
  fi
}
