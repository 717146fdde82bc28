# Sourced by the checks of feeds: the programs that they start, wait for and end on every path. The caller has set work,
# a folder of its own, and may set build, the folder of the programs.
build=$(realpath "${build:-build/release}")
bin=$build/bin
declare -A pid=()

fail() {
  echo "$*" >&2
  tail -n 15 "$work"/*.log >&2
  exit 1
}

# start NAME PROGRAM...: in the background; what it says is appended to NAME.log.
start() {
  local name=$1
  shift
  "$@" >>"$work/$name.log" 2>&1 </dev/null &
  pid[$name]=$!
}

is_alive() { kill -0 "${pid[$1]}" 2>/dev/null; }
has_ended() { ! is_alive "$1"; }

# wait_until SECONDS WHAT COMMAND...: until the command succeeds.
wait_until() {
  local what=$2 last=$((SECONDS + $1))
  shift 2
  until "$@"; do
    [ $SECONDS -lt $last ] || fail "waited in vain: $what"
    sleep 0.05
  done
}

# wait_for_end NAME: which must be a good one.
wait_for_end() {
  local code=0
  wait_until 60 "the end of $1" has_ended "$1"
  wait "${pid[$1]}" || code=$?
  unset "pid[$1]"
  [ $code = 0 ] || fail "$1 has ended with $code"
}

# stop NAME: as a user does.
stop() {
  is_alive "$1" || fail "$1 has ended by itself"
  kill "${pid[$1]}"
  wait_for_end "$1"
}

murder() {
  is_alive "$1" || fail "$1 has ended by itself"
  kill -9 "${pid[$1]}"
  { wait "${pid[$1]}"; } 2>/dev/null
  unset "pid[$1]"
}

end_all() {
  disown -a  # or the shell tells of each
  [ ${#pid[@]} = 0 ] || kill -9 "${pid[@]}" 2>/dev/null
}
trap end_all EXIT
trap 'exit 1' HUP INT TERM

# The session ends half a day from now, and begins again a second later: no day ends during a check.
session_end=$(date -u -d '12 hours' +%s)
session_date=$(date -u -d "@$session_end" +%Y%m%d)

# gateway_settings TARGET PORT [SERVERS [REPLICAS]]: prints them; the journals are beside the file.
gateway_settings() {
  cat <<END
[session]
version = FIX.4.4
sender_comp_id = DESK
target_comp_id = $1
host = 127.0.0.1
port = $2
start_time = $(date -u -d "@$((session_end + 1))" +%T)
end_time = $(date -u -d "@$session_end" +%T)
heartbeat_seconds = 5
reconnect_seconds = 1
[journal]
folder = journal
[log]
servers = ${3:-}
replicas = ${4:-1}
END
}

# daily_columns FILE NAME...: these columns of a daily file, a line for each of its lines.
daily_columns() {
  local file=$1
  shift
  awk -F, -v names="$*" '
    { sub(/\r$/, "") }
    NR == 1 { for (i = 1; i <= NF; ++i) column[$i] = i; count = split(names, name, " "); next }
    { line = ""; for (i = 1; i <= count; ++i) line = line (i > 1 ? "," : "") $column[name[i]]; print line }' "$file"
}

# last_lines FILE: the last line of each trade of a daily file, by number.
last_lines() {
  paste -d, <(daily_columns "$1" VELDTradeID) <(tail -n +2 "$1" | tr -d '\r') |
    awk -F, '{ last[$1] = $0 } END { for (number in last) print last[number] }' | sort -t, -k1,1n
}
