#!/usr/bin/env bash
# A day log on this machine, for trying and for tests: NATS servers with JetStream on free ports of the loopback
# interface, without users and without TLS. A firm sets up servers of its own, see docs/feeds.md.
#
#   tools/day_log.sh start FOLDER [--port N]   starts one server, which stores in FOLDER
#   tools/day_log.sh cluster FOLDER            starts three servers that store every day three times
#   tools/day_log.sh stop FOLDER               ends the servers of FOLDER; what they have stored stays
#
# start and cluster return when the log answers and print one line for the settings, such as
# servers=nats://127.0.0.1:4222. With the same FOLDER they go on with the same data, and with the same ports if these
# are free. Each server is told of in FOLDER/NUMBER/server.log.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

usage() { sed -n '2,/^set /{/^set /d;s/^# \{0,1\}//;p}' "${BASH_SOURCE[0]}"; }

# is_free PORT: nobody listens there.
is_free() { ! (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null; }

# random_port: one below those that the system gives to outgoing connections. It may be taken before a server listens
# on it; then the server is started with another one.
random_port() {
  local port
  while :; do
    port=$((10000 + RANDOM % 20000))
    is_free "$port" && { echo "$port"; return; }
  done
}

# port_of FILE WANTED: the wanted one, else the one of the last time if it is free, else a new one.
port_of() {
  local last
  [ -n "$2" ] && { echo "$2"; return; }
  last=$(cat "$1" 2>/dev/null || true)
  if [ -n "$last" ] && is_free "$last"; then echo "$last"; else random_port; fi
}

# is_server PID FOLDER: the process runs, and it is the server of that folder and no other process with its number.
is_server() {
  [ -n "$1" ] && kill -0 "$1" 2>/dev/null && tr '\0' '\n' <"/proc/$1/cmdline" 2>/dev/null | grep -qxF "$2/server.conf"
}

# launch PLACE: starts the server of the folder PLACE with its server.conf. It outlives this program, and keeps none of
# its files open.
launch() {
  setsid nats-server -c "$1/server.conf" >/dev/null 2>"$1/start.log" </dev/null &
  echo $! >"$1/pid"
}

# write_settings PLACE NUMBER ROUTES: ROUTES is empty for one server alone.
write_settings() {
  local place=$1
  {
    echo "server_name: log_$2"
    echo "listen: \"127.0.0.1:$(cat "$place/port")\""
    echo "http: \"127.0.0.1:$(cat "$place/monitor")\""
    echo "jetstream { store_dir: \"$place/data\" }"
    echo "log_file: \"$place/server.log\""
    [ -z "$3" ] || printf 'cluster {\n  name: day_log\n  listen: "127.0.0.1:%s"\n  routes: [%s]\n}\n' \
      "$(cat "$place/route")" "$3"
  } >"$place/server.conf"
}

# choose_ports PLACE WANTED
choose_ports() {
  mkdir -p "$1"
  local file
  for file in port monitor route; do
    port_of "$1/$file" "$([ $file = port ] && echo "$2")" >"$1/$file.new"
    mv "$1/$file.new" "$1/$file"
  done
}

# answers PLACE: its JetStream is ready.
answers() {
  local reply
  exec 3<>"/dev/tcp/127.0.0.1/$(cat "$1/monitor")" || return 1
  printf 'GET /healthz HTTP/1.0\r\n\r\n' >&3
  reply=$(timeout 5 cat <&3)
  exec 3>&-
  grep -q ' 200 ' <<<"$reply"
} 2>/dev/null

# wait_for PLACE...: false if one of the servers has ended; fails after a minute.
wait_for() {
  local place tries
  for place in "$@"; do
    for ((tries = 0; tries < 600; ++tries)); do
      answers "$place" && continue 2
      is_running "$place" || return 1
      sleep 0.1
    done
    fail "The server of $place does not answer; see $place/server.log."
  done
}

is_running() { kill -0 "$(cat "$1/pid")" 2>/dev/null; }

# check_count FOLDER COUNT: what one server has stored is nothing for three, and the other way round.
check_count() {
  local places
  places=$(find "$1" -mindepth 2 -maxdepth 2 -name server.conf | wc -l)
  [ "$places" = 0 ] || [ "$places" = "$2" ] || fail "$1 is the folder of $places server(s); use another folder."
}

# run_servers FOLDER COUNT WANTED: starts the servers, with new ports if another program was faster.
run_servers() {
  local folder=$1 count=$2 wanted=$3 number try routes places=()
  for ((number = 1; number <= count; ++number)); do
    places+=("$folder/$number")
    is_server "$(cat "$folder/$number/pid" 2>/dev/null)" "$folder/$number" &&
      fail "A server of $folder runs already; end it with: tools/day_log.sh stop $folder"
  done
  for _ in 1 2 3 4 5; do
    for number in "${!places[@]}"; do choose_ports "${places[number]}" "$wanted"; done
    routes=
    [ "$count" = 1 ] || for number in "${!places[@]}"; do
      routes+="${routes:+, }\"nats://127.0.0.1:$(cat "${places[number]}/route")\""
    done
    for number in "${!places[@]}"; do
      write_settings "${places[number]}" $((number + 1)) "$routes"
      launch "${places[number]}"
    done
    wait_for "${places[@]}" && return
    stop_servers "$folder"
    [ -z "$wanted" ] || fail "No server could be started on port $wanted; see $folder/1/server.log."
    rm -f "$folder"/*/{port,monitor,route}
  done
  fail "No server could be started; see $folder/1/server.log and $folder/1/start.log."
}

# stop_servers FOLDER: asks each to end, and kills it after ten seconds.
stop_servers() {
  local file pid tries
  for file in "$1"/*/pid; do
    [ -f "$file" ] || continue
    pid=$(cat "$file")
    if is_server "$pid" "${file%/pid}"; then
      kill "$pid" 2>/dev/null || true
      for ((tries = 0; tries < 100; ++tries)); do
        is_server "$pid" "${file%/pid}" || break
        sleep 0.1
      done
      is_server "$pid" "${file%/pid}" && kill -9 "$pid" 2>/dev/null
    fi
    rm -f "$file"
  done
}

print_servers() {
  local file line=
  for file in "$1"/*/port; do line+="${line:+,}nats://127.0.0.1:$(cat "$file")"; done
  echo "servers=$line"
}

main() {
  local command=${1:-} folder=${2:-} port=
  case $command in
    -h | --help | help) usage; return ;;
    start | cluster | stop) ;;
    *) usage >&2; exit 2 ;;
  esac
  [ -n "$folder" ] || { usage >&2; exit 2; }
  shift 2
  if [ "${1:-}" = --port ] && [ "$command" = start ]; then
    port=${2:-}
    [[ $port =~ ^[0-9]+$ ]] && [ "$port" -ge 1 ] && [ "$port" -le 65535 ] || fail "--port takes a number from 1 to 65535"
    shift 2
  fi
  [ $# = 0 ] || { usage >&2; exit 2; }
  if [ "$command" = stop ]; then
    [ -d "$folder" ] || fail "There is no folder $folder."
    stop_servers "$(cd "$folder" && pwd)"
    return
  fi
  command -v nats-server >/dev/null || fail "The server is missing. Please install it: apt-get install nats-server"
  mkdir -p "$folder"
  folder=$(cd "$folder" && pwd)
  local count=1
  [ "$command" = start ] || count=3
  check_count "$folder" "$count"
  run_servers "$folder" "$count" "$port"
  print_servers "$folder"
}

main "$@"
