#!/usr/bin/env bash
# check.sh FOLDER PROGRAM...: plays a dealer's session with the terminal in an empty folder and compares every file that
# it writes with those in stored/, byte for byte, but for what differs by day, machine and font: dates in names, the path
# in config.ini, widths of columns, fonts, rectangles and sizes of docked bars, and pictures, which must only show
# something.
# Then the terminal starts again, is killed in the midst of a further start, and starts once more: the books come back.
# check.sh --store FOLDER PROGRAM... plays it and stores what it wrote: look at the difference before you keep it.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
store=
[ "$1" = --store ] && { store=1; shift; }
out=$1
shift
program=("$@")
rm -rf "$out"
mkdir -p "$out/normal"
cd "$out"
script=$here/../../terminal/data/scripts/dealer_session.txt
"${program[@]}" --work work --speed max --exit-after played --script "$script" \
  >log 2>errors || { cat log errors; echo "the session failed"; exit 1; }
is_silent() { [ ! -s errors ] || { cat errors; echo "there was something on standard error $1"; exit 1; }; }
is_silent "in the session"

# Name and content without what may differ; nothing for what is not compared.
normalise() {
  local name
  name=$(basename "$1" | sed -E 's/[0-9]{8}/DATE/; s/^[0-9]{4}TRD/MMDDTRD/')
  case $1 in
    *.png) [ "$(stat -c %s "$1")" -gt 60000 ] || { echo "$1 is an empty picture"; return 1; } ;;
    */TerminalWindows.xml) ;;  # where the windows stood
    */config.ini) sed -E 's/^Trade=.*DEALER_SESSION/Trade=DEALER_SESSION/' "$1" >"normal/$name" ;;
    */TradeBookSettings.xml)
      sed -E '/^<(Font|Rect)/s/"[0-9a-f]*"/""/; /^<Bar-/s/;[0-9]+;[0-9]+"/"/' "$1" >"normal/$name"
      ;;
    */ColumnProfile.xml) grep -v '^<Width>' "$1" >"normal/$name" ;;
    */FO/* | */CM/*) cp "$1" "normal/$(basename "$(dirname "$1")")_$name" ;;
    *) cp "$1" "normal/$name" ;;
  esac
}
while IFS= read -r -d '' file; do
  normalise "$file"
done < <(find out work -type f -print0)

if [ -n "$store" ]; then
  rm -rf "$here/stored"
  cp -r normal "$here/stored"
  find "$here/stored" -size +20k -exec gzip -9n {} +
  exit
fi
rm -rf stored
cp -r "$here/stored" stored
find stored -name '*.gz' -exec gunzip {} +
diff <(cd stored && ls) <(cd normal && ls) || { echo "other files were written than are stored"; exit 1; }
for file in stored/*; do
  cmp "$file" "normal/${file##*/}" || exit 1
done
# A start of its own for each script; two books, whatever became of the one before.
start_again() {
  "${program[@]}" --work work --speed max --exit-after played --script "$here/started_again.txt" >log 2>errors ||
    { cat log errors; echo "the books did not come back $1"; exit 1; }
  is_silent "$1"
  grep -q '^started_again,.*,2\r*$' out/usage.csv ||
    { cat out/usage.csv; echo "there are not two books $1"; exit 1; }
  rm out/usage.csv
}
start_again "at the next start"
"${program[@]}" --work work --speed max --script "$here/killed.txt" >log 2>&1 &
killed=$!
for ((second = 0; second < 120; ++second)); do
  grep -q '^killed,' out/usage.csv 2>/dev/null && break
  sleep 1
done
kill -9 "$killed" && grep -q '^killed,.*,3\r*$' out/usage.csv || { cat log; echo "there was nothing to kill"; exit 1; }
wait "$killed" 2>/dev/null || true
rm out/usage.csv
start_again "after the terminal was killed"
echo "the session wrote the stored files: $(ls stored | xargs); its books came back twice"
