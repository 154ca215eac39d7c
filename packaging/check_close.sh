#!/usr/bin/env bash
# check_close.sh BUILD_FOLDER: closes the window of the real program with Alt+F4, as a person does, in the middle of
# what it can be doing, and proves that it ends within a second with exit code 0.
set -euo pipefail
build=$(cd "$1" && pwd)
scratch=$(mktemp -d)
started=()
finish() {
  for pid in "${started[@]}"; do kill -TERM "$pid" 2>/dev/null || true; done
  wait
  rm -rf "$scratch"
}
trap finish EXIT
fail() {
  printf '%s\n' "$*" >&2
  exit 1
}

# wait_until WHAT COMMAND...: for ten seconds at most.
wait_until() {
  local what=$1
  shift
  for _ in {1..200}; do
    "$@" >/dev/null 2>&1 && return 0
    sleep 0.05
  done
  fail "$what did not come."
}

Xvnc -displayfd 3 -rfbport -1 -SecurityTypes None -geometry 1280x900 -depth 24 -nolisten tcp \
  3>"$scratch/display" >"$scratch/xvnc.log" 2>&1 &
started+=($!)
wait_until "The display" test -s "$scratch/display"
DISPLAY=:$(<"$scratch/display")
export DISPLAY HOME=$scratch XDG_RUNTIME_DIR=$scratch DBUS_SESSION_BUS_ADDRESS=disabled: QT_QPA_PLATFORM=xcb
openbox --sm-disable >/dev/null 2>&1 &
started+=($!)
"$build/readersim" --no-console --network 0-3 --link "$scratch/com1" </dev/null >>"$scratch/traffic" &
started+=($!)
wait_until "The simulated network" test -e "$scratch/com1"

title="READER  UTILITY"
window_is_active() { xdotool getactivewindow getwindowname | grep -q "$title"; }

heard() { [[ $(wc -l <"$scratch/traffic") -ge $1 ]]; }

# close_while WHAT TRAFFIC KEY...: opens the program, presses the keys, waits until the readers have been sent so many
# lines of traffic, closes it.
close_while() {
  local what=$1 traffic=$2 status=0 pressed milliseconds
  shift 2
  : >"$scratch/traffic"
  TARVOS_COM1=$scratch/com1 "$build/tarvos" &
  local program=$!
  started+=("$program")
  wait_until "The window" window_is_active
  [[ $# -eq 0 ]] || xdotool key --delay 30 "$@"
  wait_until "The traffic ($what)" heard "$traffic"
  kill -0 "$program" 2>/dev/null || fail "The program ended by itself ($what)."
  pressed=${EPOCHREALTIME/[.,]/}
  xdotool key alt+F4
  (sleep 5 && kill -KILL "$program" 2>/dev/null) &
  local watchdog=$!
  started+=("$watchdog")
  wait "$program" || status=$?
  milliseconds=$(((${EPOCHREALTIME/[.,]/} - pressed) / 1000))
  kill "$watchdog" 2>/dev/null || true
  printf 'Closed %s: exit code %d after %d ms.\n' "$what" "$status" "$milliseconds"
  [[ $status -eq 0 && $milliseconds -lt 1000 ]] || fail "That is not within a second with exit code 0."
}

# The menu by its keys: an entry is so many steps below the one that is open.
down() { for ((step = 0; step < $1; ++step)); do printf 'Down '; done; }
read -ra terminal <<<"$(down 5) Return"
read -ra protocol_test <<<"$(down 6) Return"
read -ra hardware_test <<<"$(down 7) Return"

close_while "at rest" 0
close_while "in the terminal, after a line typed" 1 "${terminal[@]}" V Return
close_while "in the middle of a poll" 20 "${protocol_test[@]}" F1
close_while "in the middle of a hardware test" 2 "${hardware_test[@]}" F1
