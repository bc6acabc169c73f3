# Private servers and displays for a script, in a temporary folder and gone with it; sourced after common.sh.
# shellcheck shell=bash disable=SC2154 # root comes from common.sh, program from the caller

# The path of a socket has 107 characters at most, hence not below build/.
rig=$(mktemp -d /tmp/tidewell-rig.XXXXXX)
children=()
at_end=() # functions of the script's own, called once its children are gone

cleanup() {
  local status=$? i pid task
  trap '' INT TERM
  for ((i = ${#children[@]} - 1; i >= 0; i--)); do
    pid=${children[i]}
    kill "$pid" 2>/dev/null || continue
    within 5 gone "$pid" || kill -9 "$pid" 2>/dev/null || true
  done
  for task in "${at_end[@]}"; do "$task" || say "$task failed"; done
  rm -rf "$rig"
  exit "$status"
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# start NAME COMMAND...: in the background, until the script ends; its id in $started, its output in $rig/NAME.log.
start() {
  local name=$1
  shift
  "$@" >"$rig/$name.log" 2>&1 </dev/null &
  started=$!
  children+=("$started")
}

# within SECONDS COMMAND...: tries the command again and again; fails when it never succeeded in that time.
within() {
  local end=$((SECONDS + $1))
  shift
  until "$@"; do
    [ $SECONDS -lt "$end" ] || return 1
    sleep 0.1
  done
}

gone() { ! kill -0 "$1" 2>/dev/null; }
listens() { pactl info >/dev/null 2>&1; }

give_up() { # REASON [LOG]
  [ -z "${2:-}" ] || tail -n 15 "$rig/$2.log" >&2
  die "$1"
}

start_sound() {
  start sound "$root/tests/support/pulseserver" "$rig/sound"
  export PULSE_SERVER=unix:$rig/sound/pulse
  within 15 listens || give_up "the private sound server did not start" sound
}

start_display() {
  start display Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$rig/display"
  within 15 test -s "$rig/display" || give_up "the virtual display did not start" display
  DISPLAY=:$(<"$rig/display")
  export DISPLAY
  # A window manager: windows get the keyboard's focus and a way to be closed.
  start windowmanager openbox --sm-disable
  within 15 xdotool getwindowfocus >/dev/null 2>&1 || give_up "the window manager did not start" windowmanager
}

# Fails when the file is shorter than that many seconds, or holds only silence.
holds_sound() { # FILE SECONDS
  local duration peak
  duration=$(ffprobe -v error -show_entries format=duration -of default=nk=1:nw=1 "$1") || return 1
  peak=$(ffmpeg -nostdin -hide_banner -i "$1" -af astats=measure_perchannel=none:measure_overall=Peak_level -f null - 2>&1 |
    sed -n 's/.*Peak level dB: //p')
  say "${1##*/}: $duration s, peak $peak dBFS"
  awk -v d="$duration" -v p="${peak/-inf/-999}" -v s="$2" 'BEGIN { exit !(d >= s && p > -60) }'
}

# The program $program with the settings in $rig/config; its id in $tidewell.
start_program() {
  mkdir -p "$rig"/{home,tmp,run}
  chmod 700 "$rig/run"
  # A TMPDIR of its own: that is where the lock lies which keeps a second Tidewell of this user from starting.
  start tidewell env -u WAYLAND_DISPLAY -u QT_QPA_PLATFORMTHEME -u QT_STYLE_OVERRIDE -u XDG_CURRENT_DESKTOP \
    HOME="$rig/home" TMPDIR="$rig/tmp" XDG_CONFIG_HOME="$rig/config" XDG_DATA_HOME="$rig/home/share" \
    XDG_CACHE_HOME="$rig/home/cache" XDG_RUNTIME_DIR="$rig/run" DBUS_SESSION_BUS_ADDRESS=disabled: \
    LC_ALL=C.UTF-8 LANGUAGE='' QT_QPA_PLATFORM=xcb "$program"
  tidewell=$started
}

alive() { ! gone "$tidewell" || give_up "the program ended by itself" tidewell; }

# shown TITLE-PATTERN: sets $window to the visible window with that title.
shown() {
  window=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1) && [ -n "$window" ]
}

press() { # KEYS, in the window last found
  timeout 5 xdotool windowactivate --sync "$window" key --clearmodifiers "$1" >/dev/null 2>&1 || true
}
