# SPDX-License-Identifier: Apache-2.0
# The shared object: hidden visibility, a version script that lists every exported name, no C++ run-time library.
# libstdc++ and libgcc_s, which CMake would add for the C++ objects, must not become dependencies.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")
set(export_map ${PROJECT_SOURCE_DIR}/interface/exports.map)
set_target_properties(qfftf PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 1 LINKER_LANGUAGE C
                                       LINK_DEPENDS ${export_map})
target_include_directories(qfftf PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                                        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
add_library(qfftf::qfftf ALIAS qfftf)  # the name that find_package gives
target_link_libraries(qfftf PRIVATE m gomp)  # libgomp serves threads/openmp.cpp alone
# Calls between exported functions stay inside: no other library can step in between.
# LINKER: would cut a path at its commas.
target_link_options(qfftf PRIVATE "SHELL:-Xlinker \"--version-script=${export_map}\"" LINKER:-Bsymbolic-functions
                                  LINKER:--gc-sections)
# Idle threads run the library's code: unloaded under their feet it would take the program down. They could be ended at
# dlclose, but the last that a thread does when it ends is to return through that code.
target_link_options(qfftf PRIVATE LINKER:-z,nodelete)
if(NOT (QFFTF_SANITIZE OR QFFTF_SANITIZE_THREADS))  # the sanitizers leave their run-time symbols to the program
  target_link_options(qfftf PRIVATE LINKER:-z,defs)
endif()
# All symbols are bound at load, and what only binding writes is read-only from then on.
target_link_options(qfftf PRIVATE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
