#!/usr/bin/env bash
# make_script.sh SEED DAYS [ACTIONS]: writes a script for the terminal that plays the day so often, each time with
# ACTIONS (15) random deeds in books, and notes at the end of each day, behind a new login and without a book, what the
# program holds. The same seed gives the same script.
set -euo pipefail
RANDOM=$1
days=$2
actions=${3:-15}

# SECURITY_ID:a part of its book's title
securities=(GC201312:GOLD IBM:MACHINES AIG:GROUP BAC:BANK)
columns=(Symbol Side Quantity Price StrikePrice)
places=(left right top bottom tab floating)
filters=('Side Buy' 'Side Sell' 'Side' 'Price 1' 'Price' 'StrikePrice >90' 'StrikePrice' 'Symbol aapl' 'Symbol')
csvs=('All Columns' 'Visible Columns' 'Selected Columns' 'Manual Export')

one_of() {
  local -n list=$1
  picked=${list[RANDOM % ${#list[@]}]}
}

# Books that are open, by title, with that of a first start; "filtering" has those whose filter bar is shown.
books=(All)
declare -A filtering
current=  # the book that has the focus; empty where that is open

# The window system moves the focus when it likes: a book that gets it late would take the next commands.
settle() {
  echo 'wait 300'
  current=
}

open_all() {
  printf '%s\n' 'focus none' open-book
  settle
  books+=(All)
}

open_security() {
  one_of securities
  local title=${picked#*:}
  [[ " ${books[*]} " != *" $title "* ]] || return 0
  printf '%s\n' 'focus market-watch' "select ${picked%:*}" open-book
  settle
  books+=("$title")
}

focus_book() {
  one_of books
  book=$picked
  [ "$book" = "$current" ] || echo "focus book $book"
  current=$book
}

show_filter() {
  [ -n "${filtering[$book]:-}" ] || echo 'book-menu Show Filter'
  filtering[$book]=1
}

hide_filter() {
  [ -z "${filtering[$book]:-}" ] || echo 'book-menu Hide Filter'
  unset 'filtering[$book]'
}

close_book() {
  local other left=()
  hide_filter
  # Kept columns without a sort: a book that finds one begins with all trades.
  printf '%s\n' 'book-menu Column Header>Remove Sort' close-book
  settle
  for other in "${books[@]}"; do
    [ "$other" = "$book" ] || left+=("$other")
  done
  books=("${left[@]}")
}

choose_fields() {
  printf '%s\n' 'book-menu Column Header>Field Choose' 'check VELDOrderID' 'choose Side' 'answer Up'
  if ((RANDOM % 2)); then echo 'answer Cancel'; else echo 'answer Save'; fi
}

# act KIND
act() {
  focus_book
  case $1 in
    0 | 16 | 17) open_security ;;
    1 | 2 | 3) show_filter; one_of filters; echo "filter $picked" ;;
    4) echo 'book-menu Reset Filter' ;;
    5) hide_filter ;;
    6) one_of columns; echo "header $picked" ;;
    7) for picked in "${columns[@]:RANDOM % 3:3}"; do echo "header $picked"; done ;;
    8) echo 'book-menu Column Header>Remove Sort' ;;
    9) printf '%s\n' 'rows 2 9' 'book-menu Copy as HTML' 'answer OK' 'book-menu Copy' ;;
    10) echo 'book-menu Column Header>Size To Fit' ;;
    11)
      one_of csvs
      printf '%s\n' 'rows 1 1' 'header Price ctrl' "save-as out/export.csv" "book-menu Export CSV>$picked" 'answer OK'
      ;;
    12) printf '%s\n' 'book-menu Exchange Trade Format' 'answer OK' ;;
    13) choose_fields ;;
    14) echo 'book-menu Property' ;;
    15) one_of places; echo "place $picked"; settle ;;
  esac
  current=  # behind a dialog the window system gives the focus as it likes
  if [ "${#books[@]}" -gt 1 ] && ((RANDOM % 8 == 0)); then
    focus_book
    close_book
  fi
}

for ((day = 1; day <= days; ++day)); do
  if ((day > 1)); then
    echo 'menu Day>Start Again'
    if ((RANDOM % 2)); then open_all; else open_security; fi  # while the day plays
  fi
  echo 'wait played'
  for ((action = 0; action < (day == 1 && actions < 18 ? 18 : actions); ++action)); do
    act $((day == 1 && action < 18 ? action : RANDOM % 18))  # on the first day each kind once
  done
  # What was copied last stays in the clipboard: the same each day.
  focus_book
  printf '%s\n' 'rows 1 1' 'book-menu Copy as HTML' 'answer OK'
  while [ "${#books[@]}" -gt 0 ]; do
    focus_book
    close_book
  done
  printf '%s\n' 'menu Day>New Login' 'wait played' 'wait 1000' "usage $day"
done
