// SPDX-License-Identifier: Apache-2.0
// The passes of the cosine transform of type III (redft01; Makhoul, "A fast cosine transform in one and two
// dimensions", 1980) around a c2r of the same length. The sine transform reads its input in reverse and negates odd
// outputs. Types III and IV share them.
#pragma once
#include <cstdint>

#include "real/mirror.h"

// The element a of a rotation and its partner b, turned to (a - i b) conj(w).
inline void rotate_back(float* z, float a, float b, const float* w) {
    z[0] = a * w[0] - b * w[1];
    z[1] = -b * w[0] - a * w[1];
}

// The real part of the rotated element in the middle of an even length, its own partner.
inline float rotated_middle(float c, const float* w) { return c * (w[0] - w[1]); }

// The element a and its partner b, turned to (a + i b) w: odd lengths.
inline void rotate_forth(float* z, float a, float b, const float* w) {
    z[0] = a * w[0] - b * w[1];
    z[1] = b * w[0] + a * w[1];
}

// Four elements (a, b) as complex numbers, their rotation, and the pre pass of c2r on the rotated: `front` and `back`
// with the tables' entries for both, `w` of the half table. The rotation leaves its result conjugated.
inline mirror4_result rotate_and_mirror4(complex4 front, complex4 back, complex4 q_front, complex4 q_back, complex4 w) {
    const complex4 conjugate = pairs_of(1, -1), a = mul(front, q_front), b = mul(back, q_back);
    const complex4 s = fma_parts(b, a, conjugate), p = mul_conjugate_negated(w, fms_parts(b, a, conjugate));
    return {add_i(s, p), add_i(p, s)};
}

// The same for elements (b, a), the parts swapped.
inline mirror4_result rotate_swapped_and_mirror4(complex4 front, complex4 back, complex4 q_front, complex4 q_back,
                                                 complex4 w) {
    const complex4 conjugate = pairs_of(1, -1), a = mul_conjugate(front, q_front), b = mul_conjugate(back, q_back);
    const complex4 s = fms_from(b, a, conjugate), p = mul_conjugate(w, fma_parts(b, a, conjugate));
    return {sub_i(p, s), sub_i(s, p)};
}

// From the n reals of the c2r to the output; `odd` is the factor of odd outputs.
inline void interleave_even_length(const float* y, float* out, int64_t n, float odd) {
    const int64_t m = n / 2;
    int64_t t = 0;
    for (; t + 8 <= m; t += 8) {
        const complex4 low = load4(y + t), high = mul_parts(load8_down(y + n - 1 - t), pairs_of(odd, odd));
        store4(out + 2 * t, zip_low(low, high));
        store4(out + 2 * t + 8, zip_high(low, high));
    }
    for (; t < m; ++t) {
        out[2 * t] = y[t];
        out[2 * t + 1] = odd * y[n - 1 - t];
    }
}

inline void interleave_odd_length(const float* y, float* out, int64_t n, float odd) {
    out[0] = y[0];
    for (int64_t i = 0; i < n / 2; ++i) {
        out[2 * i + 1] = odd * y[i + 1];
        out[2 * i + 2] = y[n - 1 - i];
    }
}
