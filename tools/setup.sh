# Sourced by ./run, ./test and ./bench: packages and builds. Installs only what is missing, by apt, and says what it does.

say() { printf '== %s\n' "$*"; }
fail() { printf '%s\n' "$*" >&2; exit 1; }

# package_list GROUP: the Debian packages that a group of work needs.
package_list() {
  case $1 in
    build) echo "g++ cmake ninja-build zlib1g-dev libsimpleini-dev libcli11-dev libwxgtk3.2-dev googletest xvfb openbox libquickfix-dev libnats-dev nats-server libssl-dev openssl libxlsxwriter-dev at-spi2-core dbus-daemon libatspi2.0-dev pkgconf" ;;
    windows) echo "g++-mingw-w64-x86-64-posix libz-mingw-w64-dev wine wine64 dpkg-dev" ;;
    bench) echo "libbenchmark-dev libsqlite3-dev sqlite3" ;;
    tidy) echo "clang-tidy" ;;
    fuzz) echo "clang libclang-rt-14-dev" ;;
    feeds) echo "nodejs npm" ;;
    sheets) echo "libreoffice-calc-nogui" ;;
    *) fail "no group of packages is named '$1'" ;;
  esac
}

is_installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# need_packages GROUP...: installs what is missing of the groups.
need_packages() {
  local group package missing=()
  command -v dpkg-query >/dev/null 2>&1 || {
    say "this is no Debian system: please see that these are installed: $(for group in "$@"; do package_list "$group"; done | xargs)"
    return 0
  }
  for group in "$@"; do
    for package in $(package_list "$group"); do
      is_installed "$package" || missing+=("$package")
    done
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null 2>&1 || fail "Please install these packages first, as root: ${missing[*]}"
    as_root=(sudo)
  fi
  say "installing ${missing[*]}"
  "${as_root[@]}" apt-get update -qq || say "the package lists could not be refreshed; going on with those at hand"
  DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
    fail "These packages could not be installed: ${missing[*]}. Please install them by hand and try again."
}

# build_preset PRESET [-Doption...] [-- target...]: configures and builds into build/PRESET.
build_preset() {
  local preset=$1 options=() targets=()
  shift
  while [ $# -gt 0 ] && [ "$1" != -- ]; do options+=("$1"); shift; done
  [ $# -gt 0 ] && shift && targets=("$@")
  say "building build/$preset"
  mkdir -p "build/$preset"
  cmake --preset "$preset" "${options[@]}" >"build/$preset/configure.log" 2>&1 || {
    cat "build/$preset/configure.log"
    fail "The build could not be configured."
  }
  ninja -C "build/$preset" --quiet "${targets[@]}" >&2 || fail "The build failed."
}
