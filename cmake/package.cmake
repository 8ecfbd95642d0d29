# SPDX-License-Identifier: Apache-2.0
# "cpack" in the build folder of an Arm preset: one .tar.gz that can be unpacked anywhere. Debian packages are made by
# scripts/package.
set(CPACK_PACKAGE_NAME qfftf)
set(CPACK_PACKAGE_VENDOR "the qfftf developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_GENERATOR TGZ)
set(CPACK_STRIP_FILES ON)
set(CPACK_SYSTEM_NAME linux-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_FILE_NAME qfftf-${PROJECT_VERSION}-${CPACK_SYSTEM_NAME})
include(CPack)
