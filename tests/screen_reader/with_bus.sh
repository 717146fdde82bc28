#!/usr/bin/env bash
# with_bus.sh PROGRAM ARGUMENT...: runs the program on a session bus of its own, which starts the accessibility bus for
# whoever asks, with folders of its own. Exit code 77 where the programs for that are not installed.
set -uo pipefail
[ -n "${DISPLAY:-}" ] && command -v dbus-run-session >/dev/null && [ -x /usr/libexec/at-spi-bus-launcher ] || exit 77
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export HOME=$folder XDG_RUNTIME_DIR=$folder XDG_CACHE_HOME=$folder XDG_CONFIG_HOME=$folder
unset NO_AT_BRIDGE AT_SPI_BUS_ADDRESS DBUS_SESSION_BUS_ADDRESS
dbus-run-session -- "$@"
