#!/usr/bin/env bash
# tools/demo.sh [--speed N|max] [--rate N] [TERMINAL OPTION...]: trades of the sample day from a venue to a book, for
# ./run --demo. A venue plays the day by FIX, the gateway journals it and publishes it into a day log, and a terminal
# shows the log with a book open. All is on the loopback interface, on free ports. When the terminal ends, or any other
# part, all of it ends; nothing is left running.
# Without a display it plays faster, on a virtual one, and leaves a picture in out/.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$here/tools/setup.sh"
bin=$here/build/release/bin
demo=$(mktemp -d "${TMPDIR:-/tmp}/trade_book_demo.XXXXXX")
declare -A process=()

# part NAME COMMAND...: starts it as a process group, which ends with all that it has started. Its output is in
# NAME.log.
part() {
  local name=$1
  shift
  set -m
  "$@" >"$demo/$name.log" 2>&1 </dev/null &
  set +m
  process[$name]=$!
}

is_running() { kill -0 "$1" 2>/dev/null; }

# Asks each part to end, the one that was started last first, and kills what is there after some seconds.
end_parts() {
  trap '' INT TERM HUP
  local name tries
  for name in terminal gateway venue; do
    [ -n "${process[$name]:-}" ] || continue
    kill -- "-${process[$name]}" 2>/dev/null || continue
    for ((tries = 0; tries < 50; ++tries)); do
      is_running "${process[$name]}" || break
      sleep 0.1
    done
    kill -9 -- "-${process[$name]}" 2>/dev/null || true
  done
  [ ! -d "$demo/log" ] || "$here/tools/day_log.sh" stop "$demo/log" >/dev/null 2>&1 || true
  rm -rf "$demo"
}
trap end_parts EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# give_up NAME REASON: what the part has said last, and the end of all.
give_up() {
  say "the $1 $2. Its last lines:"
  tail -n 20 "$demo/$1.log" 2>/dev/null | sed 's/^/   /'
  exit 1
} >&2

# check_parts: gives up if one other than the terminal has ended.
check_parts() {
  local name
  for name in venue gateway; do
    [ -z "${process[$name]:-}" ] || is_running "${process[$name]}" || give_up $name "has ended"
  done
  [ -z "${server:-}" ] || is_running "$server" || { cp "$demo/log/1/server.log" "$demo/server.log"; give_up server "has ended"; }
}

# wait_until NAME COMMAND...: for half a minute at most.
wait_until() {
  local name=$1 tries
  shift
  for ((tries = 0; tries < 300; ++tries)); do
    "$@" && return
    check_parts
    sleep 0.1
  done
  give_up "$name" "is not ready after 30 seconds"
}

has_journal() { compgen -G "$demo/journal/*.journal" >/dev/null; }

# The display, the pace and the other options of the terminal.
pace=(--speed 60)
start=()
options=()
while [ $# -gt 0 ]; do
  case $1 in
    --speed | --rate) pace=("$1" "${2:?$1 needs a value}") && shift ;;
    *) options+=("$1") ;;
  esac
  shift
done
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  [ "${pace[*]}" != "--speed 60" ] || pace=(--rate 600)
  start=("$here/tests/toolkit/with_display.sh")
  mkdir -p "$here/out"
  options+=(--exit-after 50 --screenshot "$here/out/demo.png")
fi

"$here/tools/day_log.sh" start "$demo/log" >"$demo/server.log" 2>&1 || give_up server "does not start"
servers=$(sed -n 's/^servers=//p' "$demo/server.log")
server=$(cat "$demo"/log/*/pid)
part venue "$bin/demo_venue" --stay --port-file "$demo/port" "${pace[@]}"
wait_until venue test -s "$demo/port"
cat >"$demo/gateway.conf" <<EOF
[session]
version = FIX.4.4
sender_comp_id = DESK
target_comp_id = VENUE
host = 127.0.0.1
port = $(cat "$demo/port")
reconnect_seconds = 1
[journal]
folder = journal
[log]
servers = $servers
name = trades
EOF
part gateway "$bin/trade_gateway" "$demo/gateway.conf" --log "$demo/gateway.json"
wait_until gateway has_journal
date=$(ls "$demo/journal" | sed -n 's/.*-\([0-9]\{8\}\)\.journal$/\1/p' | head -n 1)
address=$servers/trades.$date

say "a venue plays the sample day by FIX on port $(cat "$demo/port"), the gateway journals it"
say "its day log is $address"
part terminal ${start[@]+"${start[@]}"} "$bin/terminal" --day "$address" --work "$demo/work" \
  ${options[@]+"${options[@]}"}
while is_running "${process[terminal]}"; do
  check_parts
  sleep 0.3
done
code=0
wait "${process[terminal]}" || code=$?
[ $code = 0 ] || give_up terminal "ended with code $code"
cat "$demo/terminal.log"
if [ ${#start[@]} -gt 0 ]; then
  say "$(cat "$demo"/work/Trade*.CSV 2>/dev/null | wc -l) lines in the daily file; a picture of the windows is in out/demo.png"
fi
