#!/usr/bin/env bash
# guide_pictures.sh PRESET [BUILD]: plays the script of the user guide with the terminal of build/PRESET: what the page
# says of the sample day must hold, and each picture of the pages must be made. guide_pictures.sh --store PRESET [BUILD]
# keeps the pictures in docs/pictures: look at them.
set -euo pipefail
cd "$(dirname "$0")/../.."
store=
[ "$1" = --store ] && { store=1; shift; }
build=$(realpath "${2:-build/$1}")
root=$PWD
# A folder of no particular place, as a dialog shows it, and a frame of 1280 x 880, behind which that dialog fits. It has
# the columns of a new folder, and no book at the start.
out=$(mktemp -d "${TMPDIR:-/tmp}/trade_book.XXXX")
trap 'rm -rf "$out"' EXIT
mkdir -p "$out/day" "$out/config"
cp -r "$build/bin/working_folder/ColumnProfile" "$out/day"
printf '<R>\n<Frame>\n<Rectangle>"60000000140000006005000084030000"</Rectangle>\n</Frame>\n</R>\n' >"$out/day/TerminalWindows.xml"
export XDG_CONFIG_HOME=$out/config GSETTINGS_BACKEND=memory
# play FOLDER SCRIPT
play() {
  (cd "$out" && bash "$root/tests/toolkit/with_display.sh" "$build/bin/terminal" --work "$1" --speed max \
    --exit-after played --script "$2") >"$out/log" 2>&1 || { cat "$out/log"; echo "the script $2 failed"; exit 1; }
}
play day "$root/terminal/data/scripts/user_guide.txt"
play first "$root/terminal/data/scripts/first_view.txt"
# The one window that needs another setting.
mkdir "$out/popup"
cp -r "$build/bin/working_folder/ColumnProfile" "$out/day/TerminalWindows.xml" "$out/popup"
printf '[TRADECSV]\r\nExchangeFormatCSV=TRUE\r\n' >"$out/popup/config.ini"
printf '%s\n' 'wait played' 'focus none' open-book 'place right' 'focus book All' 'book-menu Export CSV>Manual Export' \
  'wait 1200' 'screenshot docs/pictures/popup.png' exit >"$out/popup.txt"
play popup "$out/popup.txt"
for picture in $(cat README.md docs/*.md | grep -o 'pictures/[a-z_]*\.png' | sort -u); do
  [ -s "$out/docs/$picture" ] || { echo "the script makes no $picture"; exit 1; }
  [ "$(stat -c %s "$out/docs/$picture")" -gt 60000 ] || { echo "$picture is an empty picture"; exit 1; }
done
[ -z "$store" ] || cp "$out"/docs/pictures/*.png docs/pictures/
echo "the user guide holds: $(cd "$out/docs/pictures" && echo *.png)"
