#!/usr/bin/env bash
# Builds wxWidgets for Windows from Debian's own source package, once, into a cache outside the tree, and prints the
# folder where it is installed. The cache is keyed by this file: a change of version or options builds anew.
set -euo pipefail
. "$(dirname "$0")/setup.sh"

version=3.2.2+dfsg-2
cache=${TRADEBOOK_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/tradebook}
prefix=$cache/wxwidgets-windows-$(sha256sum "${BASH_SOURCE[0]}" | cut -c1-12)

# What neither the toolkit nor the terminal uses.
unused=(HTML RICHTEXT RIBBON STC WEBVIEW MEDIACTRL XRC OPENGL MDI MDI_ARCHITECTURE DOC_VIEW_ARCHITECTURE
  PRINTING_ARCHITECTURE POSTSCRIPT HELP MS_HTML_HELP WXHTML_HELP JOYSTICK DATAVIEWCTRL TREELISTCTRL CALENDARCTRL
  DATEPICKCTRL TIMEPICKCTRL WIZARDDLG SOUND IPC SOCKETS URL PROTOCOL PROTOCOL_HTTP PROTOCOL_FTP PROTOCOL_FILE FS_INET
  FS_ARCHIVE FS_ZIP FILESYSTEM ARCHIVE_STREAMS ZIPSTREAM TARSTREAM XML EXPAT LIBPNG LIBJPEG LIBTIFF LIBLZMA ZLIB
  REGEX NANOSVG SVG WEBREQUEST GIF PCX TGA IFF PNM XPM ANIMATIONCTRL HYPERLINKCTRL BANNERWINDOW INFOBAR RICHTOOLTIP
  ACTIVITYINDICATOR ADDREMOVECTRL RICHMSGDLG REARRANGECTRL COLLPANE CHOICEBOOK LISTBOOK TOOLBOOK TREEBOOK SECRETSTORE
  CREDENTIALDLG DIALUP_MANAGER FSWATCHER FSVOLUME DEBUGREPORT CRASHREPORT METAFILE SPLASH TIPWINDOW STARTUP_TIPS
  FILECTRL DIRPICKCTRL FILEPICKCTRL LOG_DIALOG LOGWINDOW PREFERENCES_EDITOR PROGRESSDLG BUSYINFO NUMBERDLG FINDREPLDLG
  SASH VLISTBOX GRAPHICS_DIRECT2D ACTIVEX ARTPROVIDER_TANGO)

# Files that do not stand a common compilation with others.
write_unity_exceptions() {
  cat >"$1" <<'CMAKE'
function(wx_compile_alone)
  foreach(file msw/stdpaths msw/textentry msw/textctrl msw/webview_ie msw/dirdlg msw/graphicsd2d msw/taskbarbutton
          msw/ole/droptgt common/string common/strconv msw/treectrl propgrid/props msw/toolbar generic/srchctlg)
    set_source_files_properties(${CMAKE_SOURCE_DIR}/src/${file}.cpp TARGET_DIRECTORY wxmono
      PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  endforeach()
endfunction()
cmake_language(DEFER DIRECTORY ${CMAKE_SOURCE_DIR} CALL wx_compile_alone)
CMAKE
}

# fetch_source FOLDER: Debian's source package, its signatures checked by apt, with package lists of its own.
fetch_source() {
  local work=$1 options
  mkdir -p "$work/apt/lists/partial" "$work/apt/cache/archives/partial"
  printf 'Types: deb-src\nURIs: http://deb.debian.org/debian\nSuites: bookworm\nComponents: main\nSigned-By: %s\n' \
    /usr/share/keyrings/debian-archive-keyring.gpg >"$work/apt/src.sources"
  options=(-o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$work/apt" -o Dir::State::lists="$work/apt/lists"
    -o Dir::Cache="$work/apt/cache" -o APT::Sandbox::User=root)
  apt-get "${options[@]}" update -qq
  (cd "$work" && apt-get "${options[@]}" source -qq --download-only "wxwidgets3.2=$version")
  dpkg-source --no-check -x "$work"/wxwidgets3.2_*.dsc "$work/source" >/dev/null
}

build() {
  local work=$1 options=() name
  for name in "${unused[@]}"; do options+=("-DwxUSE_$name=OFF"); done
  write_unity_exceptions "$work/unity_exceptions.cmake"
  cmake -S "$work/source" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw_toolchain.cmake" \
    -DCMAKE_INSTALL_PREFIX="$prefix.new" -DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG" \
    -DwxBUILD_SHARED=ON -DwxBUILD_MONOLITHIC=ON -DwxBUILD_PRECOMP=ON -DwxBUILD_DEBUG_LEVEL=0 \
    -DwxUSE_UIACTIONSIMULATOR=ON -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=6 \
    "-DCMAKE_PROJECT_wxWidgets_INCLUDE=$work/unity_exceptions.cmake" "${options[@]}" >"$work/configure.log" 2>&1 ||
    { cat "$work/configure.log" >&2; fail "wxWidgets for Windows could not be configured."; }
  ninja -C "$work/build" --quiet >"$work/build.log" 2>&1 ||
    { tail -50 "$work/build.log" >&2; fail "wxWidgets for Windows could not be built."; }
  cmake --install "$work/build" >/dev/null
}

if [ ! -d "$prefix" ]; then
  say "building wxWidgets $version for Windows, once" >&2
  need_packages windows >&2
  work=$(mktemp -d)
  trap 'rm -rf "$work" "$prefix.new"' EXIT
  fetch_source "$work" >&2
  build "$work" >&2
  mv "$prefix.new" "$prefix"
fi
printf '%s\n' "$prefix"
