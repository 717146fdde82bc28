#!/usr/bin/env bash
# guide_pictures.sh PRESET [BUILD]: plays the script of the user guide with the terminal of build/PRESET: what the page
# says of the sample day must hold, and each picture of the page must be made. guide_pictures.sh --store PRESET [BUILD]
# keeps the pictures in docs/pictures: look at them.
set -euo pipefail
cd "$(dirname "$0")/../.."
store=
[ "$1" = --store ] && { store=1; shift; }
build=$(realpath "${2:-build/$1}")
out=$build/guide_pictures
rm -rf "$out"
mkdir -p "$out"
root=$PWD
(cd "$out" && bash "$root/tests/toolkit/with_display.sh" "$build/bin/terminal" --work work --speed max \
  --exit-after played --script "$root/terminal/data/scripts/user_guide.txt") >"$out/log" 2>&1 ||
  { cat "$out/log"; echo "the script of the user guide failed"; exit 1; }
for picture in $(grep -o 'pictures/[a-z_]*\.png' docs/user_guide.md); do
  [ "$(stat -c %s "$out/docs/$picture")" -gt 60000 ] || { echo "$picture is an empty picture"; exit 1; }
done
[ -z "$store" ] || cp "$out"/docs/pictures/*.png docs/pictures/
echo "the user guide holds: $(cd "$out/docs/pictures" && echo *.png)"
