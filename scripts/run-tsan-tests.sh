#!/usr/bin/env bash
# The thread-related tests under ThreadSanitizer, built with clang and -fsanitize=thread, run from
# CTest; any reported race fails the run. Installs what is missing. Two builds:
# - build-tsan/: the Qt-free library frame (entry points, locks, logging, the logging dispatcher) with
#   GoogleTest built alongside;
# - build-tsan-threads/: the GenICam backend's device thread and the fault tests that run threads
#   (tests named in TSAN_THREAD_TESTS), built alone from the whole tree.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
vorn_install_packages "${VORN_PACKAGES[@]}" clang libclang-rt-14-dev

tsan_configure() {
  cmake -S "$ROOT" -B "$1" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
    -DCMAKE_C_FLAGS="-fsanitize=thread" -DCMAKE_CXX_FLAGS="-fsanitize=thread" \
    -DCMAKE_C_FLAGS_RELWITHDEBINFO="-O1 -gline-tables-only -DNDEBUG" \
    -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -gline-tables-only -DNDEBUG" \
    -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=thread" -DCMAKE_SHARED_LINKER_FLAGS="-fsanitize=thread" \
    -DVORN_BUILD_TESTS=ON -DVORN_BUILD_APP=OFF -DVORN_UNITY_LIBRARIES=ON "${@:2}" >/dev/null
}

export TSAN_OPTIONS="halt_on_error=1 exitcode=66 second_deadlock_stack=1 ${TSAN_OPTIONS:-}"
# The stress tests' rounds, fewer than natively: the sanitizer slows every lock hand-over.
export VORN_STRESS_PAIRS="${VORN_STRESS_PAIRS:-2000}"
export QT_QPA_PLATFORM=offscreen
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d)}"
chmod 700 "$XDG_RUNTIME_DIR"

TSAN_BUILD_DIR="${TSAN_BUILD_DIR:-$ROOT/build-tsan}"
tsan_configure "$TSAN_BUILD_DIR" -DVORN_FRAME_ONLY=ON
cmake --build "$TSAN_BUILD_DIR" -j "$(nproc)"
(cd "$TSAN_BUILD_DIR" && ctest --output-on-failure -j "$(nproc)")
# VORN_TSAN_FRAME_ONLY=1 stops after the frame.
[ "${VORN_TSAN_FRAME_ONLY:-0}" = 1 ] && exit 0

TSAN_THREADS_BUILD_DIR="${TSAN_THREADS_BUILD_DIR:-$ROOT/build-tsan-threads}"
TSAN_THREAD_TESTS="${TSAN_THREAD_TESTS:-test_genicam test_genicam_gv_camera test_fault_device test_fault_lifecycle}"
tsan_configure "$TSAN_THREADS_BUILD_DIR"
# shellcheck disable=SC2086 # one target per word
cmake --build "$TSAN_THREADS_BUILD_DIR" -j "$(nproc)" --target $TSAN_THREAD_TESTS
# Qt, GLib, GIO and Aravis are not built with ThreadSanitizer: it cannot see their locks (futexes),
# and would report what they guard inside them as races. Only accesses from our own code count.
export TSAN_OPTIONS="ignore_noninstrumented_modules=1 $TSAN_OPTIONS"
(cd "$TSAN_THREADS_BUILD_DIR" && ctest --output-on-failure -j "$(nproc)" -L "^($(echo $TSAN_THREAD_TESTS | tr ' ' '|'))\$")
