#!/usr/bin/env bash
# The main job: installs what is missing, builds, and starts the parameter browser on Aravis's
# simulated camera (arguments go to the browser; --help lists them). With no display it writes a
# screenshot of the window and the tree as text instead, and says where.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
vorn_install_packages "${VORN_PACKAGES[@]}"
vorn_build -DVORN_BUILD_APP=ON
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
