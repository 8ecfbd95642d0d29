// SPDX-License-Identifier: Apache-2.0
// The arithmetic that every half-length method shares: what the coefficients k and m - k of a complex transform Y of m
// pairs say about coefficients k and m - k of the n = 2m reals, with w = exp(-i pi k / m), and the way back.
#pragma once
#include <cstdint>

#include "kernels/ops/complex4.h"

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

// The same for four pairs. `b` and `back` hold the partners m - k, m - k - 1, ... in the order of k, k + 1, ...; those
// of `back` have their parts swapped, which saves an operation: reversed as floats they stand as they are stored.
struct mirror4_result {
    complex4 front, back;
};

// X[k] and X[m - k]. The difference is taken from the sum, which leaves a register to overwrite.
inline mirror4_result mirror4(complex4 a, complex4 b, complex4 w) {
    const complex4 half_conjugate = pairs_of(0.5f, -0.5f), half = pairs_of(0.5f, 0.5f);
    const complex4 s = fma_parts(mul_parts(a, half), b, half_conjugate), p = mul(w, sub(s, a));
    return {add_i(s, p), add_i(p, s)};
}

// The same doubled, but for a front of -2 i X[k].
inline mirror4_result mirror4_terms(complex4 a, complex4 b, complex4 w) {
    const complex4 conjugate = pairs_of(1, -1), two = pairs_of(2, 2);
    const complex4 s = fma_parts(a, b, conjugate), p = mul_negated(w, fms_from(s, a, two));
    return {sub_i(p, s), add_i(p, s)};
}

// C[k] and C[m - k].
inline mirror4_result inverse_mirror4(complex4 a, complex4 b, complex4 w) {
    const complex4 conjugate = pairs_of(1, -1), two = pairs_of(2, 2);
    const complex4 s = fma_parts(a, b, conjugate), p = mul_conjugate(w, fms_from(s, a, two));
    return {add_i(s, p), add_i(p, s)};
}

// Four complex numbers that end at p, last one first, and a swapped `back` stored so that its last one stands at p.
inline complex4 load4_down(const float* p) { return reverse4(load4(p - 6)); }
inline void store_back(float* p, complex4 back) { store4(p - 6, reverse8(back)); }

// Eight floats that end at p, last one first.
inline complex4 load8_down(const float* p) { return reverse8(load4(p - 7)); }
inline void store8_down(float* p, complex4 v) { store4(p - 7, reverse8(v)); }

// Eight pairs, their parts in vectors of their own.
struct mirror8_parts {
    complex4 re, im, back_re, back_im;
};

inline mirror8_parts parts_of(const mirror4_result& low, const mirror4_result& high) {
    return {unzip_even(low.front, high.front), unzip_odd(low.front, high.front), unzip_odd(low.back, high.back),
            unzip_even(low.back, high.back)};
}

// The coefficients of the eight pairs from k on.
inline mirror8_parts mirror8(const float* y, const float* table, int64_t m, int64_t k) {
    const auto four = [=](int64_t j) {
        return mirror4(load4(y + 2 * j), load4_down(y + 2 * (m - j)), load4(table + 2 * (j - 1)));
    };
    return parts_of(four(k), four(k + 4));
}

// Calls group(k) for groups of `width` numbers that cover 1 to `last`, which is at least `width`. The last group may
// begin inside the one before, so a group must not depend on what another has written.
template <int width, class Group>
inline void cover(int64_t last, const Group& group) {
    const int64_t final = last - width + 1;
    for (int64_t k = 1;; k = k + width < final ? k + width : final) {
        group(k);
        if (k == final) return;
    }
}
