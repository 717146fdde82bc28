#!/usr/bin/env bash
# other_engine.sh [TRADES]: the gateway takes a day from an engine of somebody else (other_engine.mjs), which loses 50
# trades and its connection in the middle and is started again; then every trade of the journal is compared with what was
# sent. Ends with 77, for skipped, if the engine cannot be had.
set -uo pipefail
cd "$(dirname "$0")/../../.."
trades=${1:-500}
half=$((trades / 2))
lost=50
engine=$PWD/build/feeds_checks/node
version=5.11.4
work=$PWD/build/feeds_checks/other_engine
rm -rf "$work"
mkdir -p "$work/day"
. tests/feeds/checks/parts.sh

mkdir -p "$engine"
if ! grep -qs "\"version\": \"$version\"" "$engine/node_modules/jspurefix/package.json"; then
  npm install --prefix "$engine" --no-audit --no-fund --ignore-scripts --loglevel=error "jspurefix@$version" >"$work/npm.log" 2>&1 || {
    tail -n 5 "$work/npm.log"
    echo "skipped: the package jspurefix cannot be installed by npm"
    exit 77
  }
fi

journal() { ls "$work"/journal/*.journal 2>/dev/null; }
kept() { grep -aoP '\x0117=X\d+\x01' "$(journal)" 2>/dev/null | sort -u | wc -l; }
has_kept() { [ "$(kept)" -ge "$1" ]; }
play() { start venue node tests/feeds/checks/other_engine.mjs "$engine" "$work" "$@"; }

play 1 $half $lost
wait_until 30 "the engine's port" test -s "$work/port"
gateway_settings OTHER "$(cat "$work/port")" >"$work/settings.ini"
start gateway "$bin/trade_gateway" "$work/settings.ini" --log "$work/events.json"
wait_for_end venue
wait_until 30 "the first half" has_kept $((half - lost))
has_kept $((half - lost + 1)) && fail "the engine has lost no trade"
play $((half + 1)) "$trades" 0
wait_until 60 "all $trades trades" has_kept "$trades"
stop gateway
again=$(sed -n 's/^sent again //p' "$work/venue.log" | awk '{ n += $1 } END { print n + 0 }')
[ "$again" -ge $lost ] || fail "only $again of $lost lost trades were sent again"

"$bin/terminal" --headless --day "$(journal)" --work "$work/day" >"$work/terminal.log" 2>&1 || fail "the journal cannot be played"
daily_columns "$work"/day/Trade*.CSV ExchangeTradeID Quantity Price | sort >"$work/arrived"
sort "$work/sent" | cmp - "$work/arrived" || fail "what arrived differs from what was sent"
[ "$(wc -l <"$work/arrived")" = "$trades" ] || fail "there are $(wc -l <"$work/arrived") trades and not $trades"
echo "$trades trades of another engine arrived, $again of them sent again"
