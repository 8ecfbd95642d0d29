// SPDX-License-Identifier: Apache-2.0
// The passes of the cosine transform of type III (redft01; Makhoul, "A fast cosine transform in one and two
// dimensions", 1980) around a c2r of the same length. The sine transform reads its input in reverse and negates odd
// outputs. Types III and IV share them.
#pragma once
#include <cstdint>

// The element a of a rotation and its partner b, turned to (a - i b) conj(w).
inline void rotate_back(float* z, float a, float b, const float* w) {
    z[0] = a * w[0] - b * w[1];
    z[1] = -b * w[0] - a * w[1];
}

// The element in the middle of an even length, its own partner.
inline void rotate_middle(float* z, float c, const float* w) {
    z[0] = c * (w[0] - w[1]);
    z[1] = -c * (w[0] + w[1]);
}

// The element a and its partner b, turned to (a + i b) w: odd lengths.
inline void rotate_forth(float* z, float a, float b, const float* w) {
    z[0] = a * w[0] - b * w[1];
    z[1] = b * w[0] + a * w[1];
}

// From the n reals of the c2r to the output; `odd` is the factor of odd outputs.
inline void interleave_even_length(const float* y, float* out, int64_t n, int64_t os, float odd) {
    for (int64_t t = 0; t < n / 2; ++t) {
        out[2 * t * os] = y[t];
        out[(2 * t + 1) * os] = odd * y[n - 1 - t];
    }
}

inline void interleave_odd_length(const float* y, float* out, int64_t n, int64_t os, float odd) {
    out[0] = y[0];
    for (int64_t i = 0; i < n / 2; ++i) {
        out[(2 * i + 1) * os] = odd * y[i + 1];
        out[(2 * i + 2) * os] = y[n - 1 - i];
    }
}
