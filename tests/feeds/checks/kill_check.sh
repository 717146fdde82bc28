#!/usr/bin/env bash
# kill_check.sh [KILLS] [TRADES] [SEED] [SERVERS]: plays a day from a venue to daily files, undisturbed; then the same day
# while gateway, server of the day log and a terminal are killed at moments of its progress that hang on the seed, and
# started again. Every trade must end the same in all daily files. Of three servers the leader is killed.
set -uo pipefail
cd "$(dirname "$0")/../../.."
kills=${1:-3} trades=${2:-3000} seed=${3:-1} servers=${4:-1}
work=$PWD/build/feeds_checks/kills_$servers
rm -rf "$work"
mkdir -p "$work"
. tests/feeds/checks/parts.sh
RANDOM=$seed
trap 'end_all; stop_log' EXIT

# Corrections and busts all over the day.
for ((i = 1; i <= 6; ++i)); do
  printf 'after %d correct\nafter %d bust\n' $((trades * i / 7)) $((trades * i / 7 + 20))
done >"$work/faults"

stop_log() { [ ! -d "$work/log" ] || bash tools/day_log.sh stop "$work/log"; }

# ask_server N PATH: of its monitor.
ask_server() {
  exec 3<>"/dev/tcp/127.0.0.1/$(cat "$work/log/$1/monitor")" || return 1
  printf 'GET %s HTTP/1.0\r\n\r\n' "$2" >&3
  cat <&3
  exec 3>&-
}

# Sets led to the number of the server that leads the day's stream, of an only one to 1.
led=1
find_leader() {
  local number
  for ((number = 1; servers > 1 && number <= servers; ++number)); do
    led=$(ask_server $number '/jsz?acc=$G&streams=1' 2>/dev/null | sed -n 's/.*"leader": "log_\(.*\)".*/\1/p' | tail -n 1)
    [ -z "$led" ] || break
  done
  [ -n "$led" ]
}

kill_server() {
  local place id
  wait_until 30 "a leader of the log" find_leader
  echo "it is number $led of $servers"
  place=$work/log/$led
  id=$(cat "$place/pid") && kill -9 "$id" || fail "there is no server to kill"
  pid[server]=$id
  wait_until 30 "the end of the server" has_ended server
  unset "pid[server]"
  nats-server -c "$place/server.conf" >>"$place/start.log" 2>&1 </dev/null &
  echo $! >"$place/pid"
  disown
}

start_gateway() { start gateway "$bin/trade_gateway" "$day/settings.ini" --log "$day/events.json"; }
start_terminal() { start "$1" "$bin/terminal" --headless --day "$address" --work "$day/$1"; }
kill_gateway() { murder gateway && start_gateway; }
kill_terminal() { murder restarted && start_terminal restarted; }

daily_file() { ls "$day/$1"/Trade*.CSV 2>/dev/null; }
has_daily_file() { [ -s "$(daily_file "$1")" ]; }
# Lines of trades: line ends precede them.
progress() { wc -l <"$(daily_file "$1")"; }
has_reached() { [ "$(progress "$1")" -ge "$2" ]; }
agrees() {
  last_lines "$(daily_file "$1")" >"$work/trades_of_$1"
  cmp -s "$work/trades_of_$1" "$work/expected"
}

# begin_day NAME RATE TERMINAL...: so many trades a second; the venue stands still until the terminals have caught up
# with the empty day.
begin_day() {
  local name addresses rate=$2
  day=$work/$1
  shift 2
  mkdir -p "$day"
  stop_log
  rm -rf "$work/log"
  addresses=$(bash tools/day_log.sh $([ "$servers" = 1 ] && echo start || echo cluster) "$work/log") || fail "no log could be started"
  addresses=${addresses#servers=}
  address=nats://${addresses//nats:\/\//}/trades.$session_date
  start venue "$bin/demo_venue" --port-file "$day/port" --generate "$trades" --faults "$work/faults" --speed max \
    --rate "$rate" --stay
  wait_until 30 "the venue's port" test -s "$day/port"
  kill -STOP "${pid[venue]}"
  gateway_settings VENUE "$(cat "$day/port")" "$addresses" "$servers" >"$day/settings.ini"
  start_gateway
  for name in "$@"; do start_terminal "$name"; done
  for name in "$@"; do wait_until 60 "the begin of the daily file of $name" has_daily_file "$name"; done
  kill -CONT "${pid[venue]}"
}

# end_day TERMINAL...
end_day() {
  local name
  for name in "$@" gateway venue; do stop "$name"; done
}

begin_day undisturbed 10000 first
wait_until 120 "the end of the day" has_reached first $((trades + 12))
end_day first
last_lines "$(daily_file first)" >"$work/expected"
whole=$(daily_file first)
lines=$(progress first)
[ "$(wc -l <"$work/expected")" = "$trades" ] || fail "the undisturbed day has $(wc -l <"$work/expected") trades and not $trades"

begin_day disturbed $((trades / kills / (3 + servers))) steady restarted
targets=(gateway server terminal)
moments=()
for ((i = 0; i < kills; ++i)); do
  moments[i]=$((lines * (5 + RANDOM % 85) / 100))  # not in a shell of its own, where RANDOM is seeded anew
done
offset=$RANDOM
inside=0
for moment in $(printf '%s\n' "${moments[@]}" | sort -n); do
  target=${targets[offset++ % 3]}
  wait_until 120 "line $moment of the day" has_reached steady "$moment"
  seen=$(progress steady)
  echo "after $seen lines: killing the $target"
  [ "$seen" -lt "$lines" ] && inside=$((inside + 1))
  "kill_$target"
done
for name in steady restarted; do wait_until 60 "the lines of $work/expected in $work/trades_of_$name" agrees $name; done
end_day steady restarted
for name in steady restarted; do
  agrees $name || fail "$work/trades_of_$name differs from $work/expected"
done
cmp "$whole" "$(daily_file steady)" || fail "the terminal that ran all day has another order"
[ "$inside" -gt 0 ] || fail "the day had ended before the first kill"
echo "$trades trades, $lines lines, $inside of $kills kills within the day: the daily files agree"
