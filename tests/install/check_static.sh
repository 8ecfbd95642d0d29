#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The static library as a user gets it: the documented names alone are visible in it, and programs link it by a plain
# compiler command and by CMake. CMakeLists.txt sets the variables.
set -euo pipefail
source "$SOURCE/tests/install/checks.sh"
enter_work static

"$CMAKE" --install "$BUILD" --prefix "$work/prefix" >install.log
library=prefix/lib/libqfftf.a
readelf -sW $library >symbols.txt
visible=$(awk '$7 != "UND" && ($5 == "GLOBAL" || $5 == "WEAK") { print $8 }' symbols.txt | sort)
expect_same "names that are visible" "$(listed_names)" "$visible"
undefined=$(awk '$7 == "UND" && $8 != "" { print $8 }' symbols.txt | sort -u)
strangers=$(grep -E '^_Z|^__cxa|^__gxx' <<<"$undefined" || true)
expect_same "names of the C++ run-time library that it needs" "" "$strangers"

$C -std=c99 -o plain "$SOURCE/tests/install/consumer/plain.c" -Iprefix/include $library -lgomp -lm -lpthread
readelf -dW plain | grep -q 'libqfftf' && fail "the program needs the shared object"
$EMULATOR ./plain || fail "plain.c, linked with the static library"
echo "ok: plain.c by a plain compiler command"

# A program may have names of its own that the library has inside.
cat >own_names.c <<'PROGRAM'
#include <qfftf.h>
int plan_problem = 1, new_problem = 2, solver_table = 3, fft_plan_free = 4;
int main(void) { return plan_problem + new_problem + solver_table + fft_plan_free == 10 && QFFTGetVersion(0) == 0 ? 0 : 1; }
PROGRAM
$C -std=c99 -o own_names own_names.c -Iprefix/include $library -lgomp -lm -lpthread
$EMULATOR ./own_names || fail "a program with names of its own"
echo "ok: a program with names of its own"

compilers=()
[ -n "$TOOLCHAIN" ] || compilers=(-D "CMAKE_C_COMPILER=$C" -D "CMAKE_CXX_COMPILER=$CXX")
"$CMAKE" -S "$SOURCE/tests/install/consumer" -B by_cmake -G Ninja ${TOOLCHAIN:+--toolchain "$TOOLCHAIN"} \
    "${compilers[@]}" -D "CMAKE_PREFIX_PATH=$work/prefix" -D library=qfftf::qfftf_static >cmake.log || { cat cmake.log; exit 1; }
"$CMAKE" --build by_cmake >>cmake.log || { cat cmake.log; exit 1; }
for program in plain_c plain_cpp; do
    readelf -dW by_cmake/$program | grep -q 'libqfftf' && fail "$program needs the shared object"
    $EMULATOR by_cmake/$program || fail "$program, built by CMake"
    echo "ok: $program by CMake"
done
