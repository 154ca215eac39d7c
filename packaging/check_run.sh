#!/usr/bin/env bash
# check_run.sh: starts ./run as on a machine without a display and proves that every Com Port has its readers,
# that the window can be seen over VNC from this machine only, and that a stop leaves nothing behind.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scratch=$(mktemp -d)
run_pid=
finish() {
  [[ -z $run_pid ]] || kill -TERM "$run_pid" 2>/dev/null || true
  wait
  rm -rf "$scratch"
}
trap finish EXIT
fail() {
  printf '%s\n' "$*" >&2
  cat "$scratch/log" >&2
  exit 1
}

TMPDIR=$scratch env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM ./run >"$scratch/log" 2>&1 </dev/null &
run_pid=$!
# The time is for packages and the build on a machine that has neither.
for _ in {1..1800}; do
  grep -q '^Tarvos is open' "$scratch/log" && break
  kill -0 "$run_pid" 2>/dev/null || fail "./run ended before the window opened."
  sleep 1
done
sleep 3
kill -0 "$run_pid" 2>/dev/null || fail "./run ended with the window just opened."

for port in 1 2 3 4 5; do
  [[ -c $(readlink -f "$scratch"/tarvos.*/com"$port") ]] || fail "Com Port $port leads to no terminal."
done
printf 'Five Com Ports lead to terminals.\n'

port=$(sed -nE 's/.*VNC viewer at 127\.0\.0\.1:([0-9]+),.*/\1/p' "$scratch/log")
exec 3<>"/dev/tcp/127.0.0.1/$port"
IFS= read -r -t 5 greeting <&3 || fail "Nothing greets at 127.0.0.1:$port."
exec 3>&-
[[ $greeting == "RFB 003."* ]] || fail "What answers at 127.0.0.1:$port is no VNC server: $greeting"
printf 'A VNC server greets at 127.0.0.1:%s: %s\n' "$port" "$greeting"
# The kernel's table of listening sockets (state 0A); 0100007F and the 1 at the end are the loopback addresses.
hex=$(printf '%04X' "$port")
listening=$(awk -v port=":$hex" '$4 == "0A" && index($2, port) { print $2 }' /proc/net/tcp /proc/net/tcp6)
[[ -n $listening ]] || fail "Nobody listens on port $port."
if grep -vE "^(0100007F|0{24}01000000):$hex$" <<<"$listening"; then fail "The window can be seen from other machines."; fi
printf 'It listens on this machine only.\n'

kill -TERM "$run_pid"
status=0
wait "$run_pid" || status=$?
run_pid=
[[ $status -eq 143 ]] || fail "./run was stopped and ended with $status instead of 143."
leftover=$(find "$scratch" -mindepth 1 -maxdepth 1 ! -name log)
[[ -z $leftover ]] || fail "Left behind: $leftover"
# Whatever ./run started carries the temporary folder in its environment.
running=$(grep -lzx "TMPDIR=$scratch" /proc/[0-9]*/environ 2>/dev/null || true)
[[ -z $running ]] || fail "Left running: $running"
printf 'Stopped, and nothing left behind.\n'
