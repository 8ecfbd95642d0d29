// SPDX-License-Identifier: Apache-2.0
// Cosines and sines of the first octant, four at a time.
#pragma once
#include "kernels/ops/inline.h"

// Vectors of both compilers, in whatever registers there are.
typedef double double4 __attribute__((vector_size(32)));
typedef float float4 __attribute__((vector_size(16)));
typedef float float8 __attribute__((vector_size(32)));

struct four_roots {
    double4 re, im;
};

OPS_INLINE float8 rounded(const four_roots& v) {
    const float4 re = __builtin_convertvector(v.re, float4), im = __builtin_convertvector(v.im, float4);
    return __builtin_shufflevector(re, im, 0, 4, 1, 5, 2, 6, 3, 7);
}

// The coefficient of x^degree in the Taylor series of the cosine (even) or the sine (odd).
constexpr double taylor(int degree) {
    double coefficient = degree / 2 % 2 ? -1 : 1;
    for (int i = 2; i <= degree; ++i) coefficient /= i;
    return coefficient;
}

// Cosine and sine of single-precision angles from 0 to pi / 4. Rounded to single precision they are the true values
// rounded once, for every such angle, whether multiplications and additions are fused or not: a test tries all of them.
OPS_INLINE four_roots first_octant(double4 x) {
#ifdef __clang__
#pragma clang fp contract(on)
#endif
    const double4 z = x * x;
    double4 c = taylor(12) + z * taylor(14), s = taylor(11) + z * taylor(13);
    c = taylor(10) + z * c, s = taylor(9) + z * s;
    c = taylor(8) + z * c, s = taylor(7) + z * s;
    c = taylor(6) + z * c, s = taylor(5) + z * s;
    c = taylor(4) + z * c, s = taylor(3) + z * s;
    c = taylor(2) + z * c;
    return {1 + z * c, x + x * (z * s)};
}
