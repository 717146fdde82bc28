#!/usr/bin/env bash
# Builds libxlsxwriter for Windows from Debian's own source package, once, into a cache outside the tree, and prints the
# folder where it is installed. The cache is keyed by this file: a change of version or options builds anew. File names
# are UTF-8 in this build; the library itself would have them in the system's code page here.
set -euo pipefail
. "$(dirname "$0")/setup.sh"

version=1.1.4-2
cache=${TRADEBOOK_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/tradebook}
prefix=$cache/xlsxwriter-windows-$(sha256sum "${BASH_SOURCE[0]}" | cut -c1-12)

# fetch_source FOLDER: Debian's source package, its signatures checked by apt, with package lists of its own.
fetch_source() {
  local work=$1 options
  mkdir -p "$work/apt/lists/partial" "$work/apt/cache/archives/partial"
  printf 'Types: deb-src\nURIs: http://deb.debian.org/debian\nSuites: bookworm\nComponents: main\nSigned-By: %s\n' \
    /usr/share/keyrings/debian-archive-keyring.gpg >"$work/apt/src.sources"
  options=(-o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$work/apt" -o Dir::State::lists="$work/apt/lists"
    -o Dir::Cache="$work/apt/cache" -o APT::Sandbox::User=root)
  apt-get "${options[@]}" update -qq
  (cd "$work" && apt-get "${options[@]}" source -qq --download-only "libxlsxwriter=$version") ||
    fail "The source package libxlsxwriter $version cannot be had from deb.debian.org now. Without it the terminal for Windows saves no workbooks."
  dpkg-source --no-check -x "$work"/libxlsxwriter_*.dsc "$work/source" >/dev/null
}

# Read before each file of the library: what opens files takes UTF-8. Without windows.h, whose names the library has too.
write_utf8_names() {
  cat >"$1" <<'HEADER'
#pragma once
#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <sys/stat.h>
#include <wchar.h>

__declspec(dllimport) int __stdcall MultiByteToWideChar(unsigned, unsigned long, const char *, int, wchar_t *, int);

enum { kMostNameUnits = 32768 };

static inline const wchar_t *WideName(const char *name) {
  static __thread wchar_t wide[kMostNameUnits];
  return MultiByteToWideChar(65001, 0, name, -1, wide, kMostNameUnits) > 0 ? wide : L"";
}
static inline FILE *OpenUtf8(const char *name, const char *mode) {
  wchar_t wide[8] = L"";
  for (int i = 0; i < 7 && mode[i]; ++i) wide[i] = (wchar_t)mode[i];
  return _wfopen(WideName(name), wide);
}
#define fopen(name, mode) OpenUtf8(name, mode)
#define fopen64(name, mode) OpenUtf8(name, mode)
#define _open(name, ...) _wopen(WideName(name), __VA_ARGS__)
#define stat(name, result) wstat(WideName(name), result)
HEADER
}

build() {
  local work=$1
  write_utf8_names "$work/utf8_names.h"
  cmake -S "$work/source" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw_toolchain.cmake" \
    -DCMAKE_INSTALL_PREFIX="$prefix.new" -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF -DUSE_NO_MD5=ON \
    "-DCMAKE_C_FLAGS=-include $work/utf8_names.h" >"$work/configure.log" 2>&1 ||
    { cat "$work/configure.log" >&2; fail "libxlsxwriter for Windows could not be configured."; }
  ninja -C "$work/build" --quiet >"$work/build.log" 2>&1 ||
    { tail -50 "$work/build.log" >&2; fail "libxlsxwriter for Windows could not be built."; }
  cmake --install "$work/build" >/dev/null
}

if [ ! -d "$prefix" ]; then
  say "building libxlsxwriter $version for Windows, once" >&2
  need_packages windows >&2
  work=$(mktemp -d)
  trap 'rm -rf "$work" "$prefix.new"' EXIT
  fetch_source "$work" >&2
  build "$work" >&2
  mkdir -p "$cache"
  mv "$prefix.new" "$prefix"
fi
printf '%s\n' "$prefix"
