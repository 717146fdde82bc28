#!/usr/bin/env bash
# tools/tidy.sh [RANGE]: runs clang-tidy over the files that a range of commits touched, with the flags of build/debug.
# RANGE is what git diff takes; without one the last commit and what is not committed. A header is checked within a
# source that includes it. Exit code 1 if there are findings.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/setup.sh

range=${1:-HEAD~1}
need_packages build tidy
cmake --preset debug >/dev/null || fail "The build could not be configured."

# The sources that clang-tidy is given for the touched files, each once.
sources() {
  git diff --name-only --diff-filter=d "$range" -- '*.cpp' '*.h' | while read -r file; do
    case $file in
      *.cpp) printf '%s\n' "$file" ;;
      *.h) git grep -l -F "#include \"$file\"" -- '*.cpp' | sed -n 1p ;;
    esac
  done | sort -u | while read -r file; do
    grep -q -F "/$file\"" build/debug/compile_commands.json && printf '%s\n' "$file" || say "not in build/debug: $file" >&2
  done
}

# clang does not know two of gcc's options.
database=$(mktemp -d)
trap 'rm -rf "$database"' EXIT
sed 's/ -fno-gnu-unique//; s/ -Wno-restrict//' build/debug/compile_commands.json >"$database/compile_commands.json"

mapfile -t files < <(sources)
[ ${#files[@]} -eq 0 ] && { say "nothing to check in $range"; exit 0; }
say "checking ${#files[@]} sources"
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" clang-tidy -p "$database" --quiet --warnings-as-errors='*' 2>/dev/null ||
  fail "clang-tidy has findings."
