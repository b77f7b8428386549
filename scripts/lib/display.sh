#!/usr/bin/env bash
# Runs a command on a screen of its own: a virtual display, a session bus with the accessibility
# service, and a runtime folder, all of which are gone when the command has ended.
#
#   scripts/lib/display.sh <command> [<argument>...]
#
# The exit status is the command's. Needs the packages xvfb, xauth, dbus-daemon and
# at-spi2-core.
set -euo pipefail
# Each job is a process group of its own: an interrupt typed in a terminal reaches this script alone.
set -m

fail() {
  printf 'display: %s\n' "$*" >&2
  exit 1
}

[ $# -gt 0 ] || fail "which command?"
for tool in Xvfb xauth dbus-daemon; do
  command -v "$tool" >/dev/null || fail "$tool is missing"
done

room=$(mktemp -d "${TMPDIR:-/tmp}/ostrelin-display-XXXXXX")
services=()
finish() {
  local index
  for ((index = ${#services[@]} - 1; index >= 0; index--)); do
    kill "${services[index]}" 2>/dev/null || true
    wait "${services[index]}" 2>/dev/null || true
  done
  rm -rf "$room"
}
trap finish EXIT
# A signal is for the command, which gets the time to end in order; then the rest follows.
command_pid=
trap '[ -z "$command_pid" ] || kill -TERM "$command_pid" 2>/dev/null || true' TERM INT HUP

# Starts a service that can't outlive this script, and waits for the line that it writes to its
# descriptor 3 once it is there.
start_service() {
  mkfifo "$room/line"
  setpriv --pdeathsig TERM "$@" 3>"$room/line" </dev/null >"$room/log" 2>&1 &
  services+=($!)
  line=
  read -r -t 30 line <"$room/line" || true
  rm "$room/line"
  [ -n "$line" ] || fail "$1 didn't start: $(tail -n 1 "$room/log")"
}

# The server takes any number that is free. It asks for a key, so that the screen is nobody else's.
cookie=$(mcookie)
xauth -q -f "$room/server" add :0 . "$cookie" 2>/dev/null
start_service Xvfb -displayfd 3 -screen 0 "${OSTRELIN_SCREEN:-1280x860x24}" -auth "$room/server" -nolisten tcp -noreset
export DISPLAY=":$line" XAUTHORITY="$room/client"
xauth -q -f "$room/client" add "$DISPLAY" . "$cookie" 2>/dev/null

mkdir -m 700 "$room/runtime"
unset WAYLAND_DISPLAY SESSION_MANAGER AT_SPI_BUS_ADDRESS DBUS_STARTER_ADDRESS DBUS_STARTER_BUS_TYPE
export XDG_RUNTIME_DIR="$room/runtime" QT_QPA_PLATFORM=xcb QT_ACCESSIBILITY=1 QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
start_service dbus-daemon --session --nofork --nopidfile --address="unix:path=$XDG_RUNTIME_DIR/bus" --print-address=3
export DBUS_SESSION_BUS_ADDRESS=$line

# In the background, so that a signal is heard while the command runs.
setpriv --pdeathsig TERM "$@" </dev/null &
command_pid=$!
status=0
wait "$command_pid" || status=$?
while kill -0 "$command_pid" 2>/dev/null; do
  status=0
  wait "$command_pid" || status=$?
done
exit "$status"
