#!/usr/bin/env bash
# check.sh FOLDER PROGRAM...: plays ten days in the terminal with random deeds in its books, and compares what the program
# holds at the end of each day with the first third of them, which fills caches: as many handles and windows, no book, and
# no more memory but for 100 kB of glyphs and styles, and 10 kB each day: texts that the market watch has measured, of which
# it keeps up to 20,000, and the column names of the daily file, which each login reads once more.
# SOAK_SEED, SOAK_DAYS and SOAK_ACTIONS change the seed, the days and the deeds of a day; SOAK_HEAP_BYTES and SOAK_HANDLES
# how far heap and handles may move.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
days=${SOAK_DAYS:-10}
seed=${SOAK_SEED:-1}
out=$1
shift
rm -rf "$out"
mkdir -p "$out"
cd "$out"
bash "$here/make_script.sh" "$seed" "$days" "${SOAK_ACTIONS:-15}" >script.txt
# GLib keeps what its slices held for later; without slices the heap shows what is in use.
export G_SLICE=always-malloc
export LSAN_OPTIONS=suppressions=$here/leaks.supp:print_suppressions=0
"$@" --work work --speed max --exit-after played --script script.txt >log 2>&1 ||
  { tail -n 100 log; echo "the days of seed $seed failed"; exit 1; }
awk -F, -v days="$days" -v heapBytes="${SOAK_HEAP_BYTES:-100000}" -v handles="${SOAK_HANDLES:-0}" '
  function off(value, base) { return value > base ? value - base : base - value }
  BEGIN { filling = days < 9 ? 2 : int(days / 3) }
  { print }
  NR == 1 { next }
  $5 != 0 { fault = fault "\nday " $1 " ends with open books" }
  $1 <= filling { if ($2 > heap) heap = $2; handle = $3; window = $4; next }
  $2 - heap > heapBytes + 10000 * ($1 - filling) { fault = fault "\nday " $1 ": the heap has grown" }
  off($3, handle) > handles { fault = fault "\nday " $1 ": other handles are open" }
  $4 != window { fault = fault "\nday " $1 ": there are other windows" }
  END {
    if (NR != days + 1) fault = fault "\n" NR - 1 " of " days " days were measured"
    if (fault != "") { print "with seed '"$seed"':" fault; exit 1 }
  }' "$(find . -name usage.csv)"
