#!/usr/bin/env bash
# Cross-builds the libraries, vxutil and every test for 64-bit Windows with
# MinGW-w64 and runs the tests with CTest under Wine, in a Wine prefix of
# its own inside the build directory (no display needed). Installs the cross
# compiler and Wine when they are missing. Fails when any test fails.
#
#   bash scripts/test-windows.sh [BUILD_DIR]    (default: build-windows)
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build-windows}
bash scripts/install-deps.sh g++-mingw-w64-x86-64-posix wine64 googletest
jobs=$(nproc 2>/dev/null || echo 2)

# Debian's wine64 package keeps its programs out of PATH.
wine_dir=/usr/lib/wine
wine=$(command -v wine64 || echo "$wine_dir/wine64")
wineserver=$(command -v wineserver || echo "$wine_dir/wineserver")

# Everything Wine needs stays in this build: its own prefix, no debug
# chatter, no installer for the .NET and HTML runtimes, no display. Unix
# file names are UTF-8 only under a UTF-8 locale; C.UTF-8 also makes Wine's
# active code page 1252, the one the encoding tests know.
export WINEPREFIX=$PWD/$build/wine-prefix
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
export LC_ALL=C.UTF-8
unset DISPLAY WAYLAND_DISPLAY
emulator="env;WINEPREFIX=$WINEPREFIX;WINEDEBUG=$WINEDEBUG;WINEDLLOVERRIDES=$WINEDLLOVERRIDES;LC_ALL=$LC_ALL;$wine"

# One Wine server for the whole run, so each test program starts fast (one
# may already serve this prefix, from an earlier run); it is stopped
# whatever happens.
mkdir -p "$WINEPREFIX"
"$wineserver" -p || true
trap '"$wineserver" -k || true' EXIT
"$wine" wineboot --init >/dev/null 2>&1

echo "== Windows cross build (MinGW-w64), tests under Wine =="
cmake -S . -B "$build" -G Ninja \
  -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64-x86_64.cmake" \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DVXUTILITY_BENCH=OFF -DVXUTILITY_FUZZ=OFF \
  "-DCMAKE_CROSSCOMPILING_EMULATOR=$emulator"
cmake --build "$build" -j "$jobs"
# One program run before the tests, so that whatever Wine starts or writes
# the first time a program runs in the prefix is not part of any test.
"$wine" "$build/bin/vxutil.exe" version >/dev/null 2>&1 || true
ctest --test-dir "$build" --output-on-failure -j "$jobs" --timeout 300 -LE slow
