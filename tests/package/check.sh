#!/usr/bin/env bash
# check.sh PRESET [BUILD]: packs the archive of a build (build/PRESET), unpacks it into a folder with a blank in its name
# and plays the sample day with its terminal, from another folder. The archive must be complete, contain no path of the
# build, and write the same daily file as the terminal of the build.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "${2:-build/$1}")
work=$build/package_check
ending=
wine=()
if [ "$1" = windows ]; then
  ending=.exe
  . tools/wine.sh
  use_wine "$build"
  wine=("$(wine_program)")
fi
fail() { echo "$*" >&2; exit 1; }
# play PROGRAMS FOLDER: plays the sample day in FOLDER with the terminal in PROGRAMS; prints the name of its daily file.
play() {
  mkdir -p "$2"
  (cd "$2" && "${wine[@]}" "$1/terminal$ending" --headless --work . >log 2>&1) || { cat "$2/log" >&2; fail "$1: the day could not be played"; }
  ls "$2"/Trade*.CSV
}

rm -rf "$work" "$build"/tradebook-*.tar.gz "$build"/tradebook-*.zip
mkdir -p "$work/un packed"
cmake --build "$build" --target archive >"$work/cpack.log" 2>&1 || { cat "$work/cpack.log" >&2; fail "the archive could not be built"; }
archive=$(find "$build" -maxdepth 1 \( -name 'tradebook-*.tar.gz' -o -name 'tradebook-*.zip' \))
(cd "$work/un packed" && cmake -E tar xf "$archive")
top=$(ls "$work/un packed")
folder=$work/un\ packed/$top

version=$("${wine[@]}" "$folder/bin/terminal$ending" --version | tr -d '\r')
[[ $top == tradebook-"${version##* }"-* ]] || fail "the terminal in $top has version $version"
for file in doc/README.md doc/CHANGELOG.md doc/LICENSE doc/docs/host_guide.md bin/sample_day/LICENSE; do
  [ -s "$folder/$file" ] || fail "$file is missing or empty"
done
! grep -rl -e "$PWD" -e "$build" "$folder/bin" || fail "these files contain the path of the build"
if [ "$1" = windows ]; then
  [ "$(cd "$folder/bin" && ls ./*.dll)" = "$(cd "$build/bin" && ls ./*.dll)" ] || fail "the archive lacks libraries"
else
  for file in terminal tradebook.so libtradebook_toolkit.so; do
    readelf -d "$folder/bin/$file" | grep -q 'R.*PATH.*\[$ORIGIN\]$' || fail "$file does not search its own folder"
  done
  # The gateway's own sample lacks what only a broker can tell, and nothing else.
  "$folder/bin/trade_gateway" --sample-config >"$work/gateway.conf"
  mistakes=$({ "$folder/bin/trade_gateway" --check "$work/gateway.conf" 2>&1 || true; } | wc -l)
  [ "$mistakes" = 4 ] || fail "the gateway's sample has $mistakes mistakes and not 4"
  [ -s "$folder/doc/trade_gateway.service" ] || fail "the gateway's service is missing"
fi

for file in "$folder"/bin/*; do
  [[ $file == *.so || $file == *.dll || ${file##*/} == terminal* || ${file##*/} == trade_gateway || ${file##*/} == demo_venue ]] || continue
  ! LC_ALL=C objdump -h "$file" | grep -q '\.debug_info' || fail "${file##*/} has not been stripped"
done

built=$(play "$build/bin" "$work/of the build")
packed=$(play "$folder/bin" "$work/elsewhere")
[ "${built##*/}" = "${packed##*/}" ] && cmp "$built" "$packed" || fail "archive and build write different daily files"
lines=$(wc -l <"$packed")
[ "$lines" = 13612 ] || fail "the daily file has $lines line ends and not 13612"
echo "${archive##*/}: plays the day from \"$top\" in another folder, $lines trades"
