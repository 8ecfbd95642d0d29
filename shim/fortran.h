// SPDX-License-Identifier: Apache-2.0
// What the two files of Fortran names share. A subroutine has its name with one underscore and, for compilers that add
// two to a name that has one, with two.
#pragma once
#include "shim/problem.h"

#define FORTRAN(name, parameters)                                                                           \
    extern "C" QFFTF_FFTW3_API void sfftw_##name##_ parameters;                                             \
    extern "C" QFFTF_FFTW3_API void sfftw_##name##__ parameters __attribute__((alias("sfftw_" #name "_"))); \
    void sfftw_##name##_ parameters

// An array of the caller in reverse: Fortran names the fastest dimension first. Null stays null.
template <class To, class From = int>
struct reversed {
    To list[most_dims];
    const bool given;
    reversed(int count, const From* values) : given(values) {
        for (int i = 0; values && i < count && i < most_dims; ++i) list[i] = static_cast<To>(values[count - 1 - i]);
    }
    const To* get() const { return given ? list : nullptr; }
};
