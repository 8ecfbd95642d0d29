# SPDX-License-Identifier: Apache-2.0
# The commands with which a user of the installed library would compile programs for its machine and run them:
# c_command, cxx_command, fortran_command and emulator, as texts for the environment of a script.
set(c_command ${CMAKE_C_COMPILER})
set(cxx_command ${CMAKE_CXX_COMPILER})
if(CMAKE_C_COMPILER_TARGET)
  list(APPEND c_command --target=${CMAKE_C_COMPILER_TARGET} ${CMAKE_EXE_LINKER_FLAGS_INIT})
  list(APPEND cxx_command --target=${CMAKE_CXX_COMPILER_TARGET} ${CMAKE_EXE_LINKER_FLAGS_INIT})
endif()
if(CMAKE_CROSSCOMPILING)
  set(fortran_command "${CMAKE_Fortran_COMPILER} -static-libgfortran -Wl,--allow-shlib-undefined")
else()
  set(fortran_command gfortran)
endif()
list(JOIN c_command " " c_command)
list(JOIN cxx_command " " cxx_command)
list(JOIN CMAKE_CROSSCOMPILING_EMULATOR " " emulator)
