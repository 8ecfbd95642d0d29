# SPDX-License-Identifier: Apache-2.0
# An optimised build unless another is asked for, for this project alone where it is part of another. And a line that
# says what is being built, since a machine that isn't Arm gets the portable library without asking.
get_property(several_build_types GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
if(NOT CMAKE_BUILD_TYPE AND NOT several_build_types)
  set(CMAKE_BUILD_TYPE Release)
endif()
foreach(language C CXX)
  if(CMAKE_${language}_FLAGS_RELEASE STREQUAL "-O3 -DNDEBUG")  # what the kernels are made for, and tested with
    set(CMAKE_${language}_FLAGS_RELEASE -O2)
  endif()
endforeach()

set(what "qfftf ${PROJECT_VERSION}: ${CMAKE_BUILD_TYPE} build by ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}")
if(on_arm)
  message(STATUS "${what} of the Arm library")
else()
  message(NOTICE "${what} of the portable library, because the target is ${CMAKE_SYSTEM_PROCESSOR} and not aarch64. "
                 "It computes the same, slowly: use it to develop and to test. scripts/build makes the Arm library.")
endif()
