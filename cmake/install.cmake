# SPDX-License-Identifier: Apache-2.0
# Installation: the header, the shared object, a CMake package and a pkg-config file. All find each other by relative
# paths, so that the installed tree can be moved. Packages come from "cpack" in the build folder.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/qfftf)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS qfftf EXPORT qfftf-targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
install(FILES include/qfftf.h include/qfftf.hpp include/qfftf.f90 DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
# The backend of heFFTe is one header; heFFTe itself isn't needed to install it.
option(QFFTF_INSTALL_HEFFTE_BACKEND "Install heffte_backend_qfftf.h, a backend of heFFTe" OFF)
if(QFFTF_INSTALL_HEFFTE_BACKEND)
  install(FILES heffte/heffte_backend_qfftf.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
endif()
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)

# All that has to be built before "cmake --install"; "all" also builds the tests.
add_custom_target(installable DEPENDS qfftf qfftf_plan qfftf_info)

# find_package(qfftf) gives the target qfftf::qfftf. The targets file needs no companion: the library has no
# dependency that a program must link.
install(EXPORT qfftf-targets NAMESPACE qfftf:: FILE qfftf-config.cmake
        DESTINATION ${package_dir} COMPONENT development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qfftf-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/qfftf-config-version.cmake DESTINATION ${package_dir} COMPONENT development)

# The pkg-config file names its prefix relative to its own folder.
file(RELATIVE_PATH pkgconfig_to_prefix /${pkgconfig_dir} /)
configure_file(${CMAKE_CURRENT_LIST_DIR}/qfftf.pc.in ${PROJECT_BINARY_DIR}/qfftf.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/qfftf.pc DESTINATION ${pkgconfig_dir} COMPONENT development)

include(${CMAKE_CURRENT_LIST_DIR}/package.cmake)
