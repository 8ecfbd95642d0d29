# SPDX-License-Identifier: Apache-2.0
# libqfftf.a: all objects of the library linked into one, in which the documented names alone are visible, so that no
# internal name meets one of a program's own. Built where it is asked for (target qfftf_static) and when installing.
if(QFFTF_SANITIZE OR QFFTF_SANITIZE_THREADS)
  return()  # their objects refer to symbols of a program that the linker makes
endif()
set(static_dir ${PROJECT_BINARY_DIR}/static)
set(whole ${static_dir}/qfftf.o)
# Folders may have blanks and commas in their names.
string(REPLACE "," "$<COMMA>" level_objects "${qfftf_level_objects}")
file(GENERATE OUTPUT ${static_dir}/objects.txt CONTENT
     "\"$<JOIN:$<TARGET_OBJECTS:qfftf_objects>;${level_objects},\"\n\">\"\n")

file(STRINGS ${export_map} documented_names REGEX "^ +[A-Za-z_0-9]+;")
string(REGEX MATCHALL "[A-Za-z_0-9]+" documented_names "${documented_names}")
list(JOIN documented_names "\n" documented_names)
file(GENERATE OUTPUT ${static_dir}/names.txt CONTENT "${documented_names}")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${export_map})

separate_arguments(linker UNIX_COMMAND "${CMAKE_SHARED_LINKER_FLAGS_INIT}")
if(CMAKE_C_COMPILER_TARGET)
  list(APPEND linker --target=${CMAKE_C_COMPILER_TARGET})
endif()
add_custom_command(OUTPUT ${whole}
  COMMAND ${CMAKE_C_COMPILER} ${linker} -r -nostdlib -o ${whole} @${static_dir}/objects.txt
  COMMAND ${QFFTF_OBJCOPY} --keep-global-symbols=${static_dir}/names.txt ${whole}
  DEPENDS ${static_dir}/objects.txt ${static_dir}/names.txt $<TARGET_OBJECTS:qfftf_objects>
          ${qfftf_level_objects} COMMENT "Linking the static library into one object" VERBATIM)
add_library(qfftf_static STATIC EXCLUDE_FROM_ALL ${whole})
add_library(qfftf::qfftf_static ALIAS qfftf_static)
set_target_properties(qfftf_static PROPERTIES OUTPUT_NAME qfftf LINKER_LANGUAGE C)
target_include_directories(qfftf_static PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                                               $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_link_libraries(qfftf_static PRIVATE m gomp)
