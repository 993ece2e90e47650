#!/usr/bin/env bash
# The library frame's tests under ThreadSanitizer: the Qt-free frame (entry points, locks, logging, the
# logging dispatcher) and GoogleTest built with clang and -fsanitize=thread into build-tsan/, then run
# from CTest. Any reported race fails the run. Installs what is missing.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
vorn_install_packages cmake googletest clang libclang-rt-14-dev

TSAN_BUILD_DIR="${TSAN_BUILD_DIR:-$ROOT/build-tsan}"
cmake -S "$ROOT" -B "$TSAN_BUILD_DIR" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
  -DCMAKE_C_FLAGS="-fsanitize=thread" -DCMAKE_CXX_FLAGS="-fsanitize=thread" \
  -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=thread" -DCMAKE_SHARED_LINKER_FLAGS="-fsanitize=thread" \
  -DVORN_FRAME_ONLY=ON -DVORN_BUILD_TESTS=ON >/dev/null
cmake --build "$TSAN_BUILD_DIR" -j "$(nproc)"

export TSAN_OPTIONS="halt_on_error=1 exitcode=66 second_deadlock_stack=1 ${TSAN_OPTIONS:-}"
# The stress test's rounds, fewer than natively: the sanitizer slows every lock hand-over.
export VORN_STRESS_PAIRS="${VORN_STRESS_PAIRS:-2000}"
cd "$TSAN_BUILD_DIR"
ctest --output-on-failure -j "$(nproc)"
