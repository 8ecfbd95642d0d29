# SPDX-License-Identifier: Apache-2.0
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_Fortran_COMPILER aarch64-linux-gnu-gfortran)  # for tests alone
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -cpu max,sve-default-vector-length=32)
