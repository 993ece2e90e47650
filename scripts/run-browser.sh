#!/usr/bin/env bash
# The main job: installs what is missing, builds the parameter browser and what it links (no tests,
# benchmarks or fuzzers), and starts it on Aravis's simulated camera (arguments go to the browser;
# --help lists them). With no display it writes a screenshot of the window and the tree as text
# instead, and says where.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
vorn_install_packages "${VORN_BROWSER_PACKAGES[@]}"
# A build folder of its own is configured for the browser alone, its libraries compiled in batches
# (unity build), much faster from scratch. A folder that exists keeps its settings: run-tests.sh may
# have configured it, and the browser is one target among the others there.
if [ -f "$BUILD_DIR/CMakeCache.txt" ]; then
  cmake -S "$ROOT" -B "$BUILD_DIR" >/dev/null
else
  cmake -S "$ROOT" -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE="${BUILD_TYPE:-RelWithDebInfo}" \
    -DVORN_BUILD_TESTS=OFF -DVORN_BUILD_BENCH=OFF -DVORN_BUILD_FUZZ=OFF -DVORN_UNITY_LIBRARIES=ON >/dev/null
fi
cmake --build "$BUILD_DIR" --target parameter-browser common-logging-dispatcher -j "$(nproc)"
BROWSER="$BUILD_DIR/bin/parameter-browser"
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d)}"
  chmod 700 "$XDG_RUNTIME_DIR"
  "$BROWSER" --dump "$@" > "$BUILD_DIR/parameter-browser.txt"
  "$BROWSER" --screenshot "$BUILD_DIR/parameter-browser.png" "$@"
  echo "Wrote the feature tree as text to $BUILD_DIR/parameter-browser.txt"
  exit 0
fi
exec "$BROWSER" "$@"
