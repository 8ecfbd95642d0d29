# SPDX-License-Identifier: Apache-2.0
# host_program(NAME MAIN SOURCES...) builds a program that runs during the build, with the build host's own compiler when
# cross compiling. Sets NAME_command and NAME_depends for custom commands. Where this build's compiler makes it, all but
# MAIN is the library NAME_parts, for tests.
find_program(HOST_CXX NAMES clang++-19 c++ g++ clang++ REQUIRED DOC "C++20 compiler for programs run during the build")

function(host_program name)
  if(NOT CMAKE_CROSSCOMPILING)
    list(POP_FRONT ARGN main)
    add_library(${name}_parts STATIC EXCLUDE_FROM_ALL ${ARGN})
    target_compile_features(${name}_parts PUBLIC cxx_std_20)
    target_compile_options(${name}_parts PUBLIC -Wall -Wextra)
    target_include_directories(${name}_parts PUBLIC ${PROJECT_SOURCE_DIR})
    add_executable(${name} ${main})
    target_link_libraries(${name} PRIVATE ${name}_parts)
    set(${name}_command ${name} PARENT_SCOPE)
    set(${name}_depends ${name} PARENT_SCOPE)
    return()
  endif()
  set(dir ${CMAKE_BINARY_DIR}/host/${name})
  file(MAKE_DIRECTORY ${dir})
  set(objects "")
  foreach(source IN LISTS ARGN)
    cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} OUTPUT_VARIABLE stem)
    string(REGEX REPLACE "[./]" "_" stem ${stem})  # one folder holds the objects of all
    set(object ${dir}/${stem}.o)
    add_custom_command(OUTPUT ${object}
      COMMAND ${CMAKE_CXX_COMPILER_LAUNCHER} ${HOST_CXX} -std=c++20 -O1 -Wall -Wextra -I${PROJECT_SOURCE_DIR}
              -MD -MF ${object}.d -c ${source} -o ${object}
      DEPENDS ${source} DEPFILE ${object}.d COMMENT "Building ${name}/${stem}.o for the build host" VERBATIM)
    list(APPEND objects ${object})
  endforeach()
  add_custom_command(OUTPUT ${dir}/${name} COMMAND ${HOST_CXX} ${objects} -o ${dir}/${name} DEPENDS ${objects}
                     COMMENT "Linking ${name} for the build host" VERBATIM)
  set(${name}_command ${dir}/${name} PARENT_SCOPE)
  set(${name}_depends ${dir}/${name} PARENT_SCOPE)
endfunction()

# run_at_configuration(VARIABLE SOURCES...): builds a small program with the build host's compiler, runs it, and sets the
# variable to the list of the lines that it prints.
function(run_at_configuration variable)
  list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  list(GET ARGN 0 first)
  cmake_path(GET first STEM program)
  set(program ${CMAKE_BINARY_DIR}/host/${program})
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/host)
  execute_process(COMMAND ${HOST_CXX} -std=c++20 -I${PROJECT_SOURCE_DIR} ${ARGN} -o ${program} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${program} OUTPUT_VARIABLE lines OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "\n" ";" lines "${lines}")
  set(${variable} ${lines} PARENT_SCOPE)
endfunction()
