#!/usr/bin/env bash
# Builds the NATS client for Windows from Debian's own source package, once, into a cache outside the tree, and prints
# the folder where it is installed. The cache is keyed by this file: a change of version or options builds anew. Without
# TLS, which would need a library of its own there.
set -euo pipefail
. "$(dirname "$0")/setup.sh"

version=3.4.1-1
cache=${TRADEBOOK_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/tradebook}
prefix=$cache/nats-windows-$(sha256sum "${BASH_SOURCE[0]}" | cut -c1-12)

# fetch_source FOLDER: Debian's source package, its signatures checked by apt, with package lists of its own.
fetch_source() {
  local work=$1 options
  mkdir -p "$work/apt/lists/partial" "$work/apt/cache/archives/partial"
  printf 'Types: deb-src\nURIs: http://deb.debian.org/debian\nSuites: bookworm\nComponents: main\nSigned-By: %s\n' \
    /usr/share/keyrings/debian-archive-keyring.gpg >"$work/apt/src.sources"
  options=(-o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$work/apt" -o Dir::State::lists="$work/apt/lists"
    -o Dir::Cache="$work/apt/cache" -o APT::Sandbox::User=root)
  apt-get "${options[@]}" update -qq
  (cd "$work" && apt-get "${options[@]}" source -qq --download-only "nats.c=$version") ||
    fail "The source package nats.c $version cannot be had from deb.debian.org now. Without it the programs for Windows have no day log."
  dpkg-source --no-check -x "$work"/nats.c_*.dsc "$work/source" >/dev/null
}

build() {
  local work=$1
  cmake -S "$work/source" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw_toolchain.cmake" \
    -DCMAKE_INSTALL_PREFIX="$prefix.new" -DCMAKE_BUILD_TYPE=Release -DNATS_BUILD_WITH_TLS=OFF -DNATS_BUILD_STREAMING=OFF \
    -DNATS_BUILD_EXAMPLES=OFF -DBUILD_TESTING=OFF -DNATS_BUILD_LIB_SHARED=OFF -DNATS_BUILD_LIB_STATIC=ON \
    >"$work/configure.log" 2>&1 ||
    { cat "$work/configure.log" >&2; fail "The NATS client for Windows could not be configured."; }
  ninja -C "$work/build" --quiet nats_static >"$work/build.log" 2>&1 ||
    { tail -50 "$work/build.log" >&2; fail "The NATS client for Windows could not be built."; }
  cmake --install "$work/build" >/dev/null
}

if [ ! -d "$prefix" ]; then
  say "building the NATS client $version for Windows, once" >&2
  need_packages windows >&2
  work=$(mktemp -d)
  trap 'rm -rf "$work" "$prefix.new"' EXIT
  fetch_source "$work" >&2
  build "$work" >&2
  mkdir -p "$cache"
  mv "$prefix.new" "$prefix"
fi
printf '%s\n' "$prefix"
