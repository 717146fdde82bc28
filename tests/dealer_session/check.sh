#!/usr/bin/env bash
# check.sh FOLDER PROGRAM...: plays a dealer's session with the terminal in an empty folder and compares every file that
# it writes with those in stored/, byte for byte, but for what differs by day, machine and font: dates in names, the path
# in config.ini, widths of columns, fonts and rectangles, and pictures, which must only show something.
# check.sh --store FOLDER PROGRAM... plays it and stores what it wrote: look at the difference before you keep it.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
store=
[ "$1" = --store ] && { store=1; shift; }
out=$1
shift
rm -rf "$out"
mkdir -p "$out/normal"
cd "$out"
"$@" --work work --speed max --exit-after played --script "$here/../../terminal/data/scripts/dealer_session.txt" \
  >log 2>&1 || { cat log; echo "the session failed"; exit 1; }

# Name and content without what may differ; nothing for what is not compared.
normalise() {
  local name
  name=$(basename "$1" | sed -E 's/[0-9]{8}/DATE/; s/^[0-9]{4}TRD/MMDDTRD/')
  case $1 in
    *.png) [ "$(stat -c %s "$1")" -gt 60000 ] || { echo "$1 is an empty picture"; return 1; } ;;
    */TerminalWindows.xml) ;;  # where the windows stood
    */config.ini) sed -E 's/^Trade=.*DEALER_SESSION/Trade=DEALER_SESSION/' "$1" >"normal/$name" ;;
    */TradeBookSettings.xml) sed -E '/^<(Font|Rect)/s/"[0-9a-f]*"/""/' "$1" >"normal/$name" ;;
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
echo "the session wrote the stored files: $(ls stored | xargs)"
