// SPDX-License-Identifier: Apache-2.0
// The arithmetic that every half-length method shares: what the coefficients k and m - k of a complex transform Y of m
// pairs say about coefficients k and m - k of the n = 2m reals, with w = exp(-i pi k / m), and the way back.
#pragma once
#include "real/complex4.h"

// X[k] = (s + p, d + q) / 2 and X[m - k] = (s - p, q - d) / 2.
struct mirror_terms {
    float s, d, p, q;
};

// a = Y[k], b = Y[m - k]
inline mirror_terms mirror(const float* a, const float* b, const float* w) {
    const float sum = a[1] + b[1], difference = b[0] - a[0];
    return {a[0] + b[0], a[1] - b[1], __builtin_fmaf(w[0], sum, -(w[1] * difference)),
            __builtin_fmaf(w[1], sum, w[0] * difference)};
}

// C[k] and C[m - k] from the coefficients a = Z[k] and b = Z[m - k], with no factor of one half.
inline void inverse_mirror(float a_r, float a_i, float b_r, float b_i, const float* w, float* front, float* back) {
    const float s = a_r + b_r, d = a_i - b_i, sum = a_i + b_i, difference = a_r - b_r;
    const float t = __builtin_fmaf(sum, w[0], -(difference * w[1]));
    const float u = __builtin_fmaf(difference, w[0], sum * w[1]);
    front[0] = s - t;
    front[1] = d + u;
    back[0] = s + t;
    back[1] = u - d;
}

// The same for four pairs. `back` and `b` hold m - k, m - k - 1, ... in the order of their partners k, k + 1, ...
struct mirror4_result {
    complex4 front, back;
};

inline mirror4_result mirror4(complex4 a, complex4 b, complex4 w) {
    const complex4 conjugate = pairs_of(1, -1), half = pairs_of(0.5f, 0.5f), half_conjugate = pairs_of(0.5f, -0.5f);
    const complex4 s = fma_parts(a, b, conjugate), p = mul(w, fms_parts(a, b, conjugate));
    return {mul_parts(sub_i(s, p), half), mul_parts(add_i(s, p), half_conjugate)};
}

inline mirror4_result inverse_mirror4(complex4 a, complex4 b, complex4 w) {
    const complex4 conjugate = pairs_of(1, -1);
    const complex4 s = fma_parts(a, b, conjugate), p = mul_conjugate(w, fms_parts(a, b, conjugate));
    return {add_i(s, p), mul_parts(sub_i(s, p), conjugate)};
}
