#!/usr/bin/env bash
# The benchmarks: installs what is missing, builds in Release (-O2) into build-release/ and prints one
# table of what our models cost against a QStandardItemModel baseline (also written to
# build-release/bench-results.md). Arguments go to the program: --sizes 1000,10000 --no-genicam
# --reps-scale 0.5 --layout clustered.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
export BUILD_DIR="${BUILD_DIR:-$ROOT/build-release}"
export BUILD_TYPE=Release
source "$ROOT/scripts/setup.sh"
vorn_install_packages "${VORN_PACKAGES[@]}"
cmake -S "$ROOT" -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG" \
  -DVORN_BUILD_BENCH=ON >/dev/null
cmake --build "$BUILD_DIR" --target vorn-bench -j "$(nproc)"
export QT_QPA_PLATFORM=offscreen
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d)}"
chmod 700 "$XDG_RUNTIME_DIR"
"$BUILD_DIR/bin/vorn-bench" "$@" | tee "$BUILD_DIR/bench-results.md"
