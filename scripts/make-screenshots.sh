#!/usr/bin/env bash
# Takes the README's pictures of the parameter browser (docs/browser-*.png) from a real window on a
# virtual X server, on Aravis's simulated camera; a simulated GigE Vision camera is served on the
# loopback of a private network, so that the Connect dialog has a camera to list. Needs root (or
# user namespaces). Look at the pictures before committing them.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
vorn_install_packages "${VORN_PACKAGES[@]}" iproute2
cmake -S "$ROOT" -B "$BUILD_DIR" >/dev/null
cmake --build "$BUILD_DIR" --target browser-screenshots -j "$(nproc)"
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d)}"
chmod 700 "$XDG_RUNTIME_DIR"
unshare -n bash -euo pipefail -c '
  ip link set lo up
  arv-fake-gv-camera-0.8 -i lo >/dev/null 2>&1 &
  camera=$!
  trap "kill $camera" EXIT
  sleep 1
  xvfb-run -a -s "-screen 0 1024x820x24" "$1" "$2"' screenshots "$BUILD_DIR/bin/browser-screenshots" "$ROOT/docs"
