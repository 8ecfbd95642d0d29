# SPDX-License-Identifier: Apache-2.0
# "cpack" in the build folder of an Arm preset: one .tar.gz that can be unpacked anywhere, and two Debian packages,
# libqfftf1 (the shared object) and libqfftf-dev (what a compiler needs, and the tools).
set(CPACK_PACKAGE_NAME qfftf)
set(CPACK_PACKAGE_VENDOR "the qfftf developers")
set(CPACK_PACKAGE_CONTACT "the qfftf developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_GENERATOR TGZ DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_SYSTEM_NAME linux-aarch64)
set(CPACK_PACKAGE_FILE_NAME qfftf-${PROJECT_VERSION}-linux-aarch64)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libqfftf1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libc6 (>= 2.36), libgomp1")
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libqfftf-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libqfftf1 (= ${PROJECT_VERSION}), libstdc++6")

include(CPack)
cpack_add_component(runtime DESCRIPTION "Single-precision FFT library for 64-bit Arm servers with 256-bit SVE")
cpack_add_component(development DEPENDS runtime DESCRIPTION "Header, CMake and pkg-config files of libqfftf")
