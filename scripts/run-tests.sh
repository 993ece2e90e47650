#!/usr/bin/env bash
# Every test: installs what is missing, builds, and runs the whole suite under ctest (offscreen).
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
vorn_install_packages "${VORN_PACKAGES[@]}"
vorn_build -DVORN_BUILD_TESTS=ON -DVORN_BUILD_BENCH=ON
export QT_QPA_PLATFORM=offscreen
export XDG_RUNTIME_DIR="$(mktemp -d)"
chmod 700 "$XDG_RUNTIME_DIR"
cd "$BUILD_DIR"
ctest --output-on-failure -j "$(nproc)"
