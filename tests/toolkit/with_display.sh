#!/usr/bin/env bash
# with_display.sh PROGRAM ARGUMENT...: runs the program on a virtual display of its own, with a window manager where one
# is installed; on the display that is there when none can be made. Within such a program it makes no second one: Wine
# has one desktop at a time, which stays on the display where it was first needed. TRADEBOOK_SCREEN changes its size.
# With TRADEBOOK_SLOW_MANAGER=1 the window manager stands still for parts of a second, as on a busy machine.
set -uo pipefail
[ -z "${TRADEBOOK_ON_DISPLAY:-}" ] || exec "$@"
command -v Xvfb >/dev/null 2>&1 || exec "$@"
folder=$(mktemp -d)
trap 'kill $manager $server 2>/dev/null; wait 2>/dev/null; rm -rf "$folder"' EXIT
manager=
mkfifo "$folder/number"
Xvfb -displayfd 3 -screen 0 "${TRADEBOOK_SCREEN:-1600x1000x24}" -nolisten tcp 3>"$folder/number" >/dev/null 2>&1 &
server=$!
read -r number <"$folder/number" || { echo "the virtual display did not start" >&2; exit 1; }
export DISPLAY=:$number GTK_OVERLAY_SCROLLING=0 NO_AT_BRIDGE=1 GSETTINGS_BACKEND=memory TRADEBOOK_ON_DISPLAY=1
unset WAYLAND_DISPLAY
if command -v openbox >/dev/null 2>&1; then
  mkfifo "$folder/managed"
  openbox --startup "sh -c 'echo >\"$folder/managed\"'" >/dev/null 2>&1 &
  manager=$!
  read -r <"$folder/managed"
fi
if [ -n "${TRADEBOOK_SLOW_MANAGER:-}" ] && [ -n "$manager" ]; then
  while kill -STOP "$manager" && sleep "0.$((RANDOM % 3))" && kill -CONT "$manager"; do
    sleep "0.0$((RANDOM % 9 + 1))"
  done 2>/dev/null &
fi
"$@"
