# SPDX-License-Identifier: Apache-2.0
# Installation: headers, both libraries, a CMake package, a pkg-config file, tools, documents and examples. All find each
# other by relative paths, so that the installed tree can be moved. Components: runtime, development, tools, doc.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/qfftf)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS qfftf EXPORT qfftf-targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
if(TARGET qfftf_static)
  install(TARGETS qfftf_static EXPORT qfftf-targets
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  set_target_properties(qfftf_static PROPERTIES EXCLUDE_FROM_ALL OFF)
endif()
install(FILES include/qfftf.h include/qfftf.hpp include/qfftf.f90
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
# The backend of heFFTe is one header; heFFTe itself isn't needed to install it.
option(QFFTF_INSTALL_HEFFTE_BACKEND "Install heffte_backend_qfftf.h, a backend of heFFTe" OFF)
if(QFFTF_INSTALL_HEFFTE_BACKEND)
  install(FILES heffte/heffte_backend_qfftf.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
endif()
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
install(FILES CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)
install(DIRECTORY docs/user/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/user COMPONENT doc)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)

# All that has to be built before "cmake --install"; "all" also builds the tests.
add_custom_target(installable DEPENDS qfftf qfftf_plan qfftf_info)
if(TARGET qfftf_static)
  add_dependencies(installable qfftf_static)
endif()
if(QFFTF_BUILD_SHIM)
  add_dependencies(installable qfftf_fftw3f ${shim_names})
endif()
add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -D BUILD=${PROJECT_BINARY_DIR}
                                    -P ${CMAKE_CURRENT_LIST_DIR}/uninstall.cmake VERBATIM)

# find_package(qfftf) gives the targets qfftf::qfftf and qfftf::qfftf_static. The first has no dependency that a program
# must link. The version file tells a project for another machine why the package isn't for it.
install(EXPORT qfftf-targets NAMESPACE qfftf:: FILE qfftf-config.cmake
        DESTINATION ${package_dir} COMPONENT development)
set(version_file ${PROJECT_BINARY_DIR}/qfftf-config-version.cmake)
write_basic_package_version_file(${version_file} COMPATIBILITY SameMajorVersion)
set(qfftf_processor ${CMAKE_SYSTEM_PROCESSOR})
configure_file(${CMAKE_CURRENT_LIST_DIR}/right_machine.cmake.in ${PROJECT_BINARY_DIR}/right_machine.cmake @ONLY)
file(READ ${PROJECT_BINARY_DIR}/right_machine.cmake right_machine)
file(READ ${version_file} right_version)
file(WRITE ${version_file} "${right_machine}\n${right_version}")
install(FILES ${version_file} DESTINATION ${package_dir} COMPONENT development)

# The pkg-config file names its prefix relative to its own folder.
file(RELATIVE_PATH pkgconfig_to_prefix /${pkgconfig_dir} /)
string(REGEX REPLACE "/$" "" pkgconfig_to_prefix ${pkgconfig_to_prefix})
configure_file(${CMAKE_CURRENT_LIST_DIR}/qfftf.pc.in ${PROJECT_BINARY_DIR}/qfftf.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/qfftf.pc DESTINATION ${pkgconfig_dir} COMPONENT development)

include(${CMAKE_CURRENT_LIST_DIR}/package.cmake)
