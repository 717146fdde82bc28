# Sourced by ./test and .ci/run: counts of single tests, taken from the reports that the test programs write.
# A file "counts" in each results folder holds three numbers: passed, failed, skipped; a file "failed" the names of the
# programs and checks that failed.

# count_results FOLDER OUTCOME: counts the reports of a folder. A program NAME_test without a report has died: one failure.
# Any other test is a check without a report: it counts as one.
count_results() {
  local folder=$1 outcome=$2 tests=0 failures=0 skipped=0 name status line number
  for line in $(grep -ho '<testsuites tests="[0-9]*" failures="[0-9]*"' "$folder"/*.xml 2>/dev/null | tr -dc '0-9"\n' | sed 's/""*/:/g'); do
    number=${line#:}
    tests=$((tests + ${number%%:*}))
    number=${number#*:}
    failures=$((failures + ${number%%:*}))
  done
  skipped=$(cat "$folder"/*.xml 2>/dev/null | grep -c 'result="skipped"')
  while read -r name status; do
    [ -f "$folder/$name.xml" ] && continue
    tests=$((tests + 1))
    [ "$status" = run ] && [[ $name != *_test ]] || failures=$((failures + 1))
  done < <(sed -n 's/.*<testcase name="\([^"]*\)".* status="\([^"]*\)".*/\1 \2/p' "$folder/programs.junit" 2>/dev/null)
  [ "$outcome" != 0 ] && [ "$failures" -le 0 ] && failures=1
  echo "$((tests - failures - skipped)) $failures $skipped" >"$folder/counts"
  sed -n 's/.*<testcase name="\([^"]*\)".* status="fail".*/\1/p' "$folder/programs.junit" >"$folder/failed" 2>/dev/null
}

# count_one FOLDER passed|failed|skipped NAME: adds one check that is no test program.
count_one() {
  local passed failed skipped
  read -r passed failed skipped <"$1/counts"
  case $2 in
    passed) passed=$((passed + 1)) ;;
    skipped) skipped=$((skipped + 1)) ;;
    failed) failed=$((failed + 1)) && echo "$3" >>"$1/failed" ;;
  esac
  echo "$passed $failed $skipped" >"$1/counts"
}

# print_counts NAME FOLDER
print_counts() {
  local passed failed skipped
  read -r passed failed skipped <"$2/counts"
  echo "$1: $passed passed, $failed failed, $skipped skipped"
}

# print_total PRESET...: what failed by name, and the sum over the presets as the closing line.
print_total() {
  local preset passed failed skipped p=0 f=0 s=0
  for preset in "$@"; do
    sed "s/^/failed in $preset: /" "build/$preset/results/failed" 2>/dev/null
    if read -r passed failed skipped 2>/dev/null <"build/$preset/results/counts"; then
      p=$((p + passed)) f=$((f + failed)) s=$((s + skipped))
    else
      f=$((f + 1))
    fi
  done
  echo "$p passed, $f failed, $s skipped"
}
