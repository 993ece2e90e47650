#!/usr/bin/env bash
# The library frame on Windows: cross-compiles the Qt-free frame (entry points, locks, logging, the
# logging dispatcher) and the Qt-free family libraries (core, parameters) as DLLs, with their tests,
# with MinGW-w64 into build-windows/, then runs them under Wine from CTest, headless, in a private Wine
# prefix. Installs what is missing.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
vorn_install_packages cmake googletest libboost-dev mingw-w64 g++-mingw-w64-x86-64-posix wine wine64

WIN_BUILD_DIR="${WIN_BUILD_DIR:-$ROOT/build-windows}"
# Boost is header-only for us: the host's headers serve, alone on the path (not the host's other
# headers). With them the Qt-free family libraries are built whole, as DLLs, and their tests link them.
mkdir -p "$WIN_BUILD_DIR/boost-include"
ln -sfn /usr/include/boost "$WIN_BUILD_DIR/boost-include/boost"
cmake -S "$ROOT" -B "$WIN_BUILD_DIR" \
  -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/toolchains/mingw-w64-x86_64-posix.cmake" \
  -DCMAKE_BUILD_TYPE="${BUILD_TYPE:-RelWithDebInfo}" -DVORN_FRAME_ONLY=ON -DVORN_BUILD_TESTS=ON \
  -DVORN_BOOST_INCLUDE_DIR="$WIN_BUILD_DIR/boost-include" >/dev/null
cmake --build "$WIN_BUILD_DIR" -j "$(nproc)"

# Wine: own prefix, no display, no prompts for Mono or Gecko, quiet.
export WINEPREFIX="$WIN_BUILD_DIR/wineprefix"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
export WINEARCH=win64
unset DISPLAY WAYLAND_DISPLAY
# Keep one wine server for the whole run, and make the prefix before the tests need it. Both detached
# from our output: otherwise ctest would wait on the inherited pipes after every test.
mkdir -p "$WINEPREFIX"
wineserver -p </dev/null >/dev/null 2>&1
wineboot -i </dev/null >/dev/null 2>&1 || true
stop_wine() { wineserver -k </dev/null >/dev/null 2>&1 || true; }
trap stop_wine EXIT

# The stress test keeps few rounds under the emulator.
export VORN_STRESS_PAIRS="${VORN_STRESS_PAIRS:-300}"
cd "$WIN_BUILD_DIR"
ctest --output-on-failure -j "$(nproc)"
