#!/usr/bin/env bash
# run_in_wine.sh WINE PROGRAM ARGUMENT...: runs the program with Wine and prints what it wrote when it has ended. Wine's
# own services, started by the first program, keep its output open until the last program ends: a test that is read
# through a pipe would last as long as all of them together.
output=$(mktemp)
trap 'cat "$output"; rm -f "$output"' EXIT
"$@" >"$output" 2>&1
