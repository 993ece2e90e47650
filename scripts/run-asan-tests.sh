#!/usr/bin/env bash
# The whole suite under AddressSanitizer and UndefinedBehaviorSanitizer: clang, -O1, Qt's own checks
# on (a Debug configuration), into build-asan/, run from CTest. Any report fails the run: UBSan stops
# at its first finding, and LeakSanitizer accepts only what scripts/sanitizers/lsan.supp names. The
# same build carries the libFuzzer programs (scripts/run-fuzz.sh). Installs what is missing.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
vorn_install_packages "${VORN_PACKAGES[@]}" clang libclang-rt-14-dev
vorn_build_sanitized
vorn_sanitizer_environment
cd "$ASAN_BUILD_DIR"
ctest --output-on-failure -j "$(nproc)"
