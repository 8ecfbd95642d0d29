# SPDX-License-Identifier: Apache-2.0
# Options of every translation unit of the library, as the interface target qfftf_common_options. qfftf_options adds the
# instruction set of any processor, for the outer library, tools and tests; qfftf_options_LEVEL that of a level.
add_library(qfftf_common_options INTERFACE)
target_include_directories(qfftf_common_options INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
target_compile_features(qfftf_common_options INTERFACE cxx_std_20)
target_compile_options(qfftf_common_options INTERFACE -Wall -Wextra)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(on_arm)
  # Complex instructions need armv8.3-a by name; the level is for processors that have them and Armv8.1 atomics,
  # which includes the A64FX: it lacks that architecture's instructions for signed addresses, in which a compiler would
  # sign returns. So the two have landing pads alone; below, signing is by hints that older processors pass over.
  set(qfftf_levels sve fcma neon)  # from the highest to the lowest
  # Each level adds to the library's size and compile time. The lowest, which runs anywhere, is always there.
  set(QFFTF_LEVELS "${qfftf_levels}" CACHE STRING "Levels that are built: neon, and any of sve and fcma")
  foreach(level IN LISTS QFFTF_LEVELS)
    if(NOT level IN_LIST qfftf_levels)
      message(FATAL_ERROR "qfftf: QFFTF_LEVELS names '${level}', which is none of ${qfftf_levels}")
    endif()
  endforeach()
  if(NOT neon IN_LIST QFFTF_LEVELS)
    message(FATAL_ERROR "qfftf: QFFTF_LEVELS needs neon, which every 64-bit Arm processor has")
  endif()
  foreach(level IN LISTS qfftf_levels)
    if(NOT level IN_LIST QFFTF_LEVELS)
      list(REMOVE_ITEM qfftf_levels ${level})
      if(QFFTF_BUILD_TESTS OR QFFTF_BUILD_BENCH)
        message(FATAL_ERROR "qfftf: the tests and benchmarks need all levels")
      endif()
    endif()
  endforeach()
  set(level_options_sve -march=armv8.3-a+sve -msve-vector-bits=256 -mbranch-protection=bti)
  set(level_options_fcma -march=armv8.3-a -mbranch-protection=bti)
  set(level_options_neon -march=armv8-a -mno-outline-atomics -mbranch-protection=standard)
  # Of NEON kernels with complex instructions a compiler makes the same code for these two: they are linked once.
  if(sve IN_LIST qfftf_levels AND fcma IN_LIST qfftf_levels)
    set(qfftf_levels_that_share sve fcma)
  endif()
  # No level runs all kernels (kernels/level.h); the linker drops what nobody asks for.
  set(qfftf_level_sections -ffunction-sections -fdata-sections)
else()
  set(qfftf_levels portable)
  set(level_options_portable -Wno-psabi)  # 256-bit vectors stay inside one translation unit
endif()
list(GET qfftf_levels 0 highest_level)
set(QFFTF_TEST_LEVEL ${highest_level} CACHE STRING "Level whose inner library unit tests link: one of ${qfftf_levels}")
foreach(level IN LISTS qfftf_levels)
  add_library(qfftf_options_${level} INTERFACE)
  target_link_libraries(qfftf_options_${level} INTERFACE qfftf_common_options)
  target_compile_options(qfftf_options_${level} INTERFACE ${level_options_${level}})
endforeach()
list(GET qfftf_levels -1 lowest_level)
add_library(qfftf_options ALIAS qfftf_options_${lowest_level})

# Only for the library's own code; tests and tools use the standard library as they like.
set(qfftf_library_options -fno-exceptions -fno-rtti -fno-threadsafe-statics -ffp-contract=off -fno-math-errno
                          -fvisibility=hidden -fvisibility-inlines-hidden)

option(QFFTF_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
if(QFFTF_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
# Fuzz targets see which code of the library's own files, kernels left out, their inputs reach.
if(QFFTF_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  set(QFFTF_FUZZ ON)
  set(qfftf_fuzzed_options -fsanitize=fuzzer-no-link)
endif()
option(QFFTF_SANITIZE_THREADS "Build with the thread sanitizer" OFF)
if(QFFTF_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
endif()
