# SPDX-License-Identifier: Apache-2.0
# Options of every translation unit of the library, as the interface target qfftf_options.
add_library(qfftf_options INTERFACE)
target_include_directories(qfftf_options INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
target_compile_features(qfftf_options INTERFACE cxx_std_20)
target_compile_options(qfftf_options INTERFACE -Wall -Wextra)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(on_arm)
  target_compile_options(qfftf_options INTERFACE -march=armv8.3-a+sve -msve-vector-bits=256)
else()
  target_compile_options(qfftf_options INTERFACE -Wno-psabi)  # 256-bit vectors stay inside one translation unit
endif()

# Only for the library's own code; tests and tools use the standard library as they like.
set(qfftf_library_options -fno-exceptions -fno-rtti -fno-threadsafe-statics -ffp-contract=off -fno-math-errno
                          -fvisibility=hidden -fvisibility-inlines-hidden)

option(QFFTF_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
if(QFFTF_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
option(QFFTF_SANITIZE_THREADS "Build with the thread sanitizer" OFF)
if(QFFTF_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
endif()
