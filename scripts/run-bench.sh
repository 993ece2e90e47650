#!/usr/bin/env bash
# The benchmarks: installs what is missing, builds in Release (-O2) into build-release/, runs every
# figure (our models, filter model, view and delegate against a hand-written Qt baseline, side by side
# in each round), writes every sample to bench/results.json and puts the table in README.md between
# the bench-table markers. Arguments go to the program, for example
#   --sizes 300,3000 --layouts clustered --figures level,scroll --samples 7 --no-genicam
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
export BUILD_DIR="${BUILD_DIR:-$ROOT/build-release}"
export BUILD_TYPE=Release
source "$ROOT/scripts/setup.sh"
vorn_install_packages "${VORN_PACKAGES[@]}"
cmake -S "$ROOT" -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG" \
  -DVORN_BUILD_BENCH=ON >/dev/null
cmake --build "$BUILD_DIR" --target vorn-bench parameter-browser -j "$(nproc)"
export QT_QPA_PLATFORM=offscreen
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d)}"
chmod 700 "$XDG_RUNTIME_DIR"
TABLE="$BUILD_DIR/bench-table.md"
"$BUILD_DIR/bin/vorn-bench" --json "$ROOT/bench/results.json" --markdown "$TABLE" \
  --browser "$BUILD_DIR/bin/parameter-browser" "$@"
# The README keeps the table of the last run between its two markers.
awk -v table="$TABLE" '
  /<!-- bench-table:begin -->/ { print; while ((getline line < table) > 0) print line; skip = 1; next }
  /<!-- bench-table:end -->/ { skip = 0 }
  !skip { print }
' "$ROOT/README.md" > "$ROOT/README.md.new"
mv "$ROOT/README.md.new" "$ROOT/README.md"
echo "Results: bench/results.json; table in README.md (Benchmarks)"
