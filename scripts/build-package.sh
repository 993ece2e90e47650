#!/usr/bin/env bash
# Builds the Debian packages of the browser and the library into build-package/:
# vorn-parameter-browser_<version>_<arch>.deb (what a user runs) and libvorn-dev_<version>_<arch>.deb
# (what a host developer builds against). Install on any Debian 12 machine with
#   sudo apt-get install ./build-package/vorn-parameter-browser_*.deb
# which pulls the Qt, Aravis and libzip packages the binaries need.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
vorn_install_packages "${VORN_BROWSER_PACKAGES[@]}" dpkg-dev file
PACKAGE_DIR="${PACKAGE_DIR:-$ROOT/build-package}"
# Installed under /usr; the libraries in /usr/lib, beside the logging dispatcher they load from their
# installation root's lib folder.
cmake -S "$ROOT" -B "$PACKAGE_DIR" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DCMAKE_INSTALL_LIBDIR=lib -DVORN_BUILD_TESTS=OFF -DVORN_BUILD_BENCH=OFF -DVORN_BUILD_FUZZ=OFF \
  -DVORN_UNITY_LIBRARIES=ON >/dev/null
cmake --build "$PACKAGE_DIR" -j "$(nproc)"
(cd "$PACKAGE_DIR" && cpack -G DEB >/dev/null)
for deb in "$PACKAGE_DIR"/*.deb; do
  echo "$deb"
  dpkg-deb --field "$deb" Package Version Depends | sed 's/^/    /'
done
