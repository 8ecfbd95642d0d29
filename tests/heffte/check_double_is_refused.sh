#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# check_double_is_refused.sh COMPILER FOLDER:FOLDER...: a program compiles in single precision; in double it doesn't, and
# the compiler's message has our sentence.
set -euo pipefail
compiler=$1
includes=()
for folder in ${2//:/ }; do includes+=(-I "$folder"); done
sentence="qfftf transforms single precision only"

program() {  # program TYPE TAG INPUT OUTPUT
    cat <<END
#include <heffte_backend_qfftf.h>
void run(heffte::$1<heffte::backend::$2>& fft, $3* in, $4* out) { fft.forward(in, out); fft.backward(out, in); }
END
}
check() {
    program "$1" "$2" "$3" "$4" | "$compiler" -std=c++11 "${includes[@]}" -fsyntax-only -x c++ - >output.txt 2>&1 ||
        { cat output.txt; echo "$1 of $3 and $4 should compile"; exit 1; }
    if program "$1" "$2" "${3/float/double}" "${4/float/double}" |
        "$compiler" -std=c++11 "${includes[@]}" -fsyntax-only -x c++ - >output.txt 2>&1; then
        echo "$1 of double compiled"
        exit 1
    fi
    grep -q "$sentence" output.txt || { cat output.txt; echo "the message doesn't say why"; exit 1; }
}
check fft3d qfftf "std::complex<float>" "std::complex<float>"
check fft3d qfftf float "std::complex<float>"
for tag in qfftf_cos qfftf_sin qfftf_cos1 qfftf_sin1; do check rtransform $tag float float; done
