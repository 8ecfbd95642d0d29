#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds the programs of examples/gallery against the installed library and runs the one that needs neither a recording
# nor a photograph nor long under the emulator; it checks its own result. CMakeLists.txt sets the variables.
set -euo pipefail
rm -rf "$WORK" && mkdir -p "$WORK/poisson"
compilers=()
[ -n "$TOOLCHAIN" ] && compilers=(--toolchain "$TOOLCHAIN") || compilers=(-D "CMAKE_C_COMPILER=$C" -D "CMAKE_CXX_COMPILER=$CXX")
cmake -S "$SOURCE/examples/gallery" -B "$WORK/build" -G Ninja "${compilers[@]}" -D CMAKE_BUILD_TYPE=Release -D CMAKE_CXX_FLAGS_RELEASE=-O1 \
    -D "CMAKE_CXX_FLAGS=-Werror" -D "CMAKE_PREFIX_PATH=$PREFIX" >"$WORK/cmake.log" 2>&1 || { cat "$WORK/cmake.log"; exit 1; }
programs=$(basename -s .gp "$SOURCE"/examples/gallery/*.gp | grep -vx style)
cmake --build "$WORK/build" --target $programs
$EMULATOR "$WORK/build/poisson" "$WORK/poisson"
