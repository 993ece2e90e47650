#!/usr/bin/env bash
# The main job: installs what is missing, builds, and starts the parameter browser. With no display
# it renders the window offscreen into a PNG and says where.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
vorn_install_packages "${VORN_PACKAGES[@]}"
vorn_build -DVORN_BUILD_APP=ON
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d)}"
  chmod 700 "$XDG_RUNTIME_DIR"
  exec "$BUILD_DIR/bin/parameter-browser" --screenshot "$BUILD_DIR/parameter-browser.png" "$@"
fi
exec "$BUILD_DIR/bin/parameter-browser" "$@"
