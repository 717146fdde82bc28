# Sourced by the checks that run programs of Windows: Wine, with a folder of its own in build/windows.

wine_program() { command -v wine64 || ls /usr/lib/wine/wine64; }

# use_wine BUILD: where Wine keeps what it needs, and what it is to be silent about.
use_wine() {
  export WINEPREFIX="$1/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml,winedbg.exe="
}

# Makes Wine's folder before any program needs it: two that start at once where none is yet spoil it for each other.
# What was spoiled is made anew.
make_wine_folder() {
  local wine attempt
  wine=$(wine_program) || return 1
  for attempt in 1 2 3; do
    "$wine" wineboot --init && "$wine" cmd /c exit 0 && return 0
    wineserver -k
    rm -rf "$WINEPREFIX"
  done
  return 1
}
