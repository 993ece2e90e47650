#!/usr/bin/env bash
# Installs what building and testing need on a Debian 12 machine (only what is missing), then
# configures and builds into build/. Sourced by the other scripts.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
BUILD_DIR="${BUILD_DIR:-$ROOT/build}"

# What the libraries and the browser need (run-browser.sh installs only these), then what the tests
# add: GoogleTest, Aravis's simulated network camera and its command line tool, and Python for the
# checks of what is installed.
VORN_BROWSER_PACKAGES=(build-essential cmake pkg-config qtbase5-dev qtbase5-dev-tools libboost-dev
  libaravis-dev libzip-dev libusb-1.0-0-dev libopencv-imgproc-dev fonts-dejavu-core)
VORN_PACKAGES=("${VORN_BROWSER_PACKAGES[@]}" googletest libgtest-dev aravis-tools aravis-tools-cli
  xvfb xauth python3)

# vorn_install_packages PACKAGE...: installs those not installed yet. One dpkg query answers for all of
# them; the package lists are updated only when something is missing.
vorn_install_packages() {
  local missing=()
  local installed
  installed=$(dpkg-query -W -f='${Package} ${db:Status-Abbrev}\n' "$@" 2>/dev/null | awk '$2 == "ii" { print $1 }') || true
  for p in "$@"; do
    grep -qxF "$p" <<<"$installed" || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  echo "Installing: ${missing[*]}"
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get update -o DPkg::Lock::Timeout=600 -qq
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq -o DPkg::Lock::Timeout=600 \
    --no-install-recommends "${missing[@]}"
}

vorn_build() {
  cmake -S "$ROOT" -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE="${BUILD_TYPE:-RelWithDebInfo}" "$@" >/dev/null
  cmake --build "$BUILD_DIR" -j "$(nproc)"
}

# The sanitizer build (run-asan-tests.sh, run-fuzz.sh): clang with AddressSanitizer and
# UndefinedBehaviorSanitizer, -O1 with line tables, the Debug configuration so that Qt's own
# assertions in its inline code stay on, and the libFuzzer programs.
ASAN_BUILD_DIR="${ASAN_BUILD_DIR:-$ROOT/build-asan}"
vorn_build_sanitized() {
  local flags="-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
  cmake -S "$ROOT" -B "$ASAN_BUILD_DIR" -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
    -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" \
    -DCMAKE_C_FLAGS_DEBUG="-O1 -gline-tables-only" -DCMAKE_CXX_FLAGS_DEBUG="-O1 -gline-tables-only" \
    -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" \
    -DCMAKE_SHARED_LINKER_FLAGS="-fsanitize=address,undefined" \
    -DVORN_BUILD_TESTS=ON -DVORN_BUILD_APP=ON -DVORN_BUILD_FUZZ=ON -DVORN_UNITY_LIBRARIES=ON >/dev/null
  cmake --build "$ASAN_BUILD_DIR" -j "$(nproc)"
}

# How the sanitized programs report. LeakSanitizer matches its suppressions against the stacks kept
# with each allocation, which only the slow unwinder follows through Qt's plugins (they have no frame
# pointers): fast_unwind_on_malloc=0. Eight frames reach the plugin in every allocation it keeps
# when the application starts; each further frame costs an unwinding step on every allocation of the
# run. The fuzzers pass a deeper stack (run-fuzz.sh): libFuzzer looks for leaks after inputs too, and
# then also sees the font database the plugin opens through fontconfig, 24 frames below the plugin.
# vorn_sanitizer_environment [FRAMES]: FRAMES of allocation stack kept, 8 when not given.
vorn_sanitizer_environment() {
  export ASAN_OPTIONS="fast_unwind_on_malloc=0:malloc_context_size=${1:-8}:detect_leaks=1:check_initialization_order=1:detect_stack_use_after_return=1:abort_on_error=0:${ASAN_OPTIONS:-}"
  export LSAN_OPTIONS="suppressions=$ROOT/scripts/sanitizers/lsan.supp:print_suppressions=0:${LSAN_OPTIONS:-}"
  export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1:${UBSAN_OPTIONS:-}"
  export QT_QPA_PLATFORM=offscreen
  export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d)}"
  chmod 700 "$XDG_RUNTIME_DIR"
}
