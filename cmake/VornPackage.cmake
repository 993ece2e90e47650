# Debian packages (cpack -G DEB, see scripts/build-package.sh): "vorn-parameter-browser" holds what a
# user runs (the browser, the libraries, the logging dispatcher, the desktop entry and the icon);
# "libvorn-dev" what a host developer builds against (headers, CMake package, library links).
# Their run-time dependencies are found by dpkg-shlibdeps from what the binaries link, so that
# `apt-get install ./<package>.deb` pulls Qt, Aravis and libzip on a machine that never built us.
set(CPACK_PACKAGE_NAME "vorn")
set(CPACK_PACKAGE_VENDOR "Vorn")
set(CPACK_PACKAGE_CONTACT "Vorn developers <vorn@localhost>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Camera parameter tree for Qt, and a GenICam parameter browser")
set(CPACK_GENERATOR "DEB")
set(CPACK_COMPONENTS_ALL Runtime Development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION "graphics")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# dpkg-shlibdeps must find our own libraries among the binaries it scans.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  "${CMAKE_BINARY_DIR}/lib" "${CMAKE_BINARY_DIR}/dispatcher")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "vorn-parameter-browser")
# Without a font Qt draws no text at all on a minimal system; the browser is laid out for DejaVu.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "fonts-dejavu-core")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
  "Shows the features of a GenICam camera or description file in a tree and lets you edit them.\n"
  "The parameter browser and the Vorn parameter tree libraries it is built on.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME "libvorn-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION "libdevel")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "Headers and CMake package (find_package(Vorn)) of the Vorn parameter tree libraries.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "vorn-parameter-browser (= ${PROJECT_VERSION}), qtbase5-dev, libboost-dev, libaravis-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)

include(CPack)
