# SPDX-License-Identifier: Apache-2.0
# The inner library, once for each level: the object library qfftf_inner_LEVEL from the sources that the folders list,
# and qfftf_kernels_LEVEL from kernels/, with qfftf_kernels_shared where levels share kernels. For the shared object every
# copy is joined into one object file in which qfftf_inner_LEVEL, its record of entry points (planner/inner_library.h), is the
# only name that others can see: so no copy's functions, inline ones included, can stand in for those of another. Levels that
# share kernels are then joined with these into one file, which shows their records alone.
foreach(level IN LISTS qfftf_levels)
  add_library(qfftf_inner_${level} OBJECT)
  target_link_libraries(qfftf_inner_${level} PRIVATE qfftf_inner_sources PUBLIC qfftf_options_${level})
  target_compile_options(qfftf_inner_${level} PRIVATE ${qfftf_library_options} ${qfftf_fuzzed_options} ${qfftf_level_sections})
  target_compile_definitions(qfftf_inner_${level} PRIVATE QFFTF_LEVEL=${level})
  target_include_directories(qfftf_inner_${level} PRIVATE ${generated_dir})  # tables.h
  add_dependencies(qfftf_inner_${level} kernel_texts)
  set(own_objects_${level} $<TARGET_OBJECTS:qfftf_inner_${level}> $<TARGET_OBJECTS:qfftf_kernels_${level}>)
  set(inner_objects_${level} ${own_objects_${level}})
  if(level IN_LIST qfftf_levels_that_share)
    list(APPEND inner_objects_${level} $<TARGET_OBJECTS:qfftf_kernels_shared>)
  endif()
endforeach()

# level_list(FILE LEVEL...): the source that says which levels are linked into a library.
function(level_list file)
  set(text "// Written by cmake/levels.cmake.\n#include \"interface/level.h\"\n\nextern \"C\" {\n")
  set(addresses "")
  foreach(level IN LISTS ARGN)
    string(APPEND text "extern const inner_library qfftf_inner_${level};\n")
    string(APPEND addresses "&qfftf_inner_${level}, ")
  endforeach()
  string(APPEND text "}\n\nconstinit const inner_library* const inner_libraries[] = {${addresses}nullptr};\n")
  file(CONFIGURE OUTPUT ${file} CONTENT "${text}" @ONLY)
endfunction()
level_list(${PROJECT_BINARY_DIR}/levels/all.cpp ${qfftf_levels})
add_library(qfftf_all_levels OBJECT ${PROJECT_BINARY_DIR}/levels/all.cpp)
target_link_libraries(qfftf_all_levels PUBLIC qfftf_options)
target_compile_options(qfftf_all_levels PRIVATE ${qfftf_library_options})

# Static libraries for tests: the outer library and one level, all of whose names can be seen. Tests are compiled for any
# processor, so that the same objects can be linked with each.
function(internal_library name level)
  level_list(${PROJECT_BINARY_DIR}/levels/${level}.cpp ${level})
  add_library(${name} STATIC ${ARGN} $<TARGET_OBJECTS:qfftf_objects> ${PROJECT_BINARY_DIR}/levels/${level}.cpp
              ${inner_objects_${level}})
  target_link_libraries(${name} PUBLIC qfftf_options m gomp)
endfunction()
internal_library(qfftf_internal ${QFFTF_TEST_LEVEL})
foreach(level IN LISTS qfftf_levels)
  if(level STREQUAL QFFTF_TEST_LEVEL)
    add_library(qfftf_internal_${level} ALIAS qfftf_internal)
  else()
    internal_library(qfftf_internal_${level} ${level} EXCLUDE_FROM_ALL)
  endif()
endforeach()

# CMAKE_OBJCOPY may be one for this machine's files alone.
if(on_arm)
  set(objcopy_names aarch64-linux-gnu-objcopy llvm-objcopy-19 llvm-objcopy objcopy)
else()
  set(objcopy_names objcopy llvm-objcopy-19 llvm-objcopy)
endif()
find_program(QFFTF_OBJCOPY NAMES ${objcopy_names} REQUIRED DOC "objcopy that knows the library's object files")

# Where there is one level there is nothing to keep apart.
list(LENGTH qfftf_levels level_count)
if(level_count EQUAL 1)
  set(qfftf_level_objects ${inner_objects_${qfftf_levels}})
else()
  separate_arguments(link_flags UNIX_COMMAND "${CMAKE_CXX_FLAGS} ${CMAKE_SHARED_LINKER_FLAGS}")
  if(CMAKE_CXX_COMPILER_TARGET)
    list(PREPEND link_flags --target=${CMAKE_CXX_COMPILER_TARGET})
  endif()
  # join(NAME LEVELS OBJECTS...): levels/NAME.o, which shows the records of the levels.
  function(join name levels)
    set(joined ${PROJECT_BINARY_DIR}/levels/${name}.o)
    list(TRANSFORM levels PREPEND --keep-global-symbol=qfftf_inner_)
    add_custom_command(OUTPUT ${joined}
      COMMAND ${CMAKE_CXX_COMPILER} ${link_flags} -r -nostdlib -Wl,--force-group-allocation -Wl,--unique ${ARGN}
              -o ${joined}.all
      COMMAND ${QFFTF_OBJCOPY} ${levels} ${joined}.all ${joined}
      BYPRODUCTS ${joined}.all DEPENDS ${ARGN} COMMAND_EXPAND_LISTS VERBATIM COMMENT "Joining the inner library, ${name}")
  endfunction()
  set(sharing "")
  foreach(level IN LISTS qfftf_levels)
    join(${level} ${level} ${own_objects_${level}})
    if(level IN_LIST qfftf_levels_that_share)
      list(APPEND sharing ${PROJECT_BINARY_DIR}/levels/${level}.o)
    else()
      list(APPEND qfftf_level_objects ${PROJECT_BINARY_DIR}/levels/${level}.o)
    endif()
  endforeach()
  if(sharing)
    list(JOIN qfftf_levels_that_share _and_ name)
    join(${name} "${qfftf_levels_that_share}" ${sharing} $<TARGET_OBJECTS:qfftf_kernels_shared>)
    list(APPEND qfftf_level_objects ${PROJECT_BINARY_DIR}/levels/${name}.o)
  endif()
endif()
list(APPEND qfftf_level_objects $<TARGET_OBJECTS:qfftf_all_levels>)

# The library as programs see it, with the names of its outer half: for the tools that are installed.
add_library(qfftf_outer STATIC $<TARGET_OBJECTS:qfftf_objects> ${qfftf_level_objects})
target_link_libraries(qfftf_outer PUBLIC qfftf_options m gomp)
