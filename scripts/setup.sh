#!/usr/bin/env bash
# Installs what building and testing need on a Debian 12 machine (only what is missing), then
# configures and builds into build/. Sourced by the other scripts.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
BUILD_DIR="${BUILD_DIR:-$ROOT/build}"

VORN_PACKAGES=(build-essential cmake pkg-config qtbase5-dev qtbase5-dev-tools libboost-dev
  googletest libgtest-dev libaravis-dev libusb-1.0-0-dev aravis-tools aravis-tools-cli
  xvfb xauth fonts-dejavu-core)

vorn_install_packages() {
  local missing=()
  for p in "$@"; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
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
