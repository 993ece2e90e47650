#!/usr/bin/env bash
# Checks the browser's Debian package where the project was never built: builds the package
# (build-package.sh), makes a minimal Debian 12 system with debootstrap in a temporary folder,
# installs the package there with apt-get (which pulls its dependencies), and runs the browser on
# its simulated camera: the tree as text, a screenshot, and a refused file with its exit status.
# Needs root (debootstrap, chroot) and the network; takes a few minutes.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
bash "$ROOT/scripts/build-package.sh"
vorn_install_packages debootstrap
PACKAGE_DIR="${PACKAGE_DIR:-$ROOT/build-package}"
deb=$(ls "$PACKAGE_DIR"/vorn-parameter-browser_*.deb | head -n 1)
system=$(mktemp -d /tmp/vorn-clean-debian.XXXXXX)
cleanup() {
  umount "$system/proc" 2>/dev/null || true
  rm -rf "$system"
}
trap cleanup EXIT
debootstrap --variant=minbase bookworm "$system" http://deb.debian.org/debian >/dev/null
mount -t proc proc "$system/proc"
cp "$deb" "$system/tmp/"
chroot "$system" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "/tmp/$(basename "$deb")" >/dev/null
chroot "$system" bash -euo pipefail -c '
  export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=/tmp/runtime
  mkdir -m 700 -p "$XDG_RUNTIME_DIR"
  ! command -v cmake >/dev/null || { echo "cmake is installed: not a clean system"; exit 1; }
  parameter-browser --dump > /tmp/tree.txt
  grep -q "^  Width  *512$" /tmp/tree.txt
  parameter-browser --screenshot /tmp/window.png > /dev/null
  test -s /tmp/window.png
  if parameter-browser --xml /nonexistent.xml --dump 2>/dev/null; then exit 1; fi
  test -f /usr/share/applications/vorn-parameter-browser.desktop
  test -f /usr/share/icons/hicolor/scalable/apps/vorn-parameter-browser.svg'
echo "check-package: $(basename "$deb") installs on a clean Debian 12 and its browser runs"
