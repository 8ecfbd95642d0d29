#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The library as a part of another project, by add_subdirectory and by FetchContent from a local folder. Both are
# configured; the first is built, for the lowest level alone, and its programs run. CMakeLists.txt sets the variables.
set -euo pipefail
source "$SOURCE/tests/install/checks.sh"
enter_work parent

compilers=()
[ -n "$TOOLCHAIN" ] || compilers=(-D "CMAKE_C_COMPILER=$C" -D "CMAKE_CXX_COMPILER=$CXX")
declare -A levels=([add_subdirectory]=neon [FetchContent]="sve;neon")
for way in add_subdirectory FetchContent; do
    "$CMAKE" -S "$SOURCE/tests/install/parent" -B $way -G Ninja ${TOOLCHAIN:+--toolchain "$TOOLCHAIN"} \
        "${compilers[@]}" -D way=$way -D "library_sources=$SOURCE" -D "QFFTF_LEVELS=${levels[$way]}" >$way.log 2>&1 || { cat $way.log; fail "$way"; }
    grep -E '^(-- )?qfftf [0-9.]+: Release build' $way.log || { cat $way.log; fail "$way doesn't say what is built"; }
    expect_same "tests of the project, by $way" "  Test #1: plain" "$(ctest --test-dir $way -N | grep 'Test *#')"
    expect_same "name of its packages" '"parent"' "$(sed -n 's/^set(CPACK_PACKAGE_NAME \(.*\))$/\1/p' $way/CPackConfig.cmake)"
    [ $way = FetchContent ] || grep -q -- ' -O2' <(ninja -C $way -t commands qfftf) || fail "the library isn't optimised"
done
if ! grep -q 'the portable library' add_subdirectory.log; then
    ! "$CMAKE" -S "$SOURCE/tests/install/parent" -B wrong -G Ninja ${TOOLCHAIN:+--toolchain "$TOOLCHAIN"} "${compilers[@]}" \
        -D "library_sources=$SOURCE" -D QFFTF_LEVELS=sve >wrong.log 2>&1 || fail "a library that few machines can run was accepted"
    grep -q 'QFFTF_LEVELS needs neon' wrong.log || { cat wrong.log; fail "no reason is told"; }
fi
ninja -C add_subdirectory plain plain_static >build.log || { tail -n 30 build.log; fail "the build by add_subdirectory"; }
for program in plain plain_static; do
    $EMULATOR add_subdirectory/$program || fail "$program, built by add_subdirectory"
    echo "ok: $program"
done
