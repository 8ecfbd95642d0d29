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

// The same for four pairs. `b` and `back` hold the partners m - k, m - k - 1, ... in the order of k, k + 1, ...
struct mirror4_result {
    complex4 front, back;
};

// X[k] = a + v conj f and X[m - k] = b - f conj v with f = b - conj a and v = (1 + i w) / 2. `a_again` is `a` in a
// register that may be overwritten.
inline mirror4_result mirror4(complex4 a, complex4 a_again, complex4 b, complex4 v) {
    const complex4 f = fma_parts(b, a_again, pairs_of(-1, 1));
    return {fma_conjugate(a, f, v), fms_conjugate(b, v, f)};
}

// C[k] = 2a + g conj v and C[m - k] = 2b - v conj g with g = 2 (conj b - a).
inline mirror4_result inverse_mirror4(complex4 a, complex4 b, complex4 v) {
    const complex4 twice_a = add(a, a), twice_b = add(b, b), g = fms_from(twice_a, b, pairs_of(2, -2));
    return {fma_conjugate(twice_a, v, g), fms_conjugate(twice_b, g, v)};
}

// Below, the parts of `back` are swapped, which saves an operation: reversed as floats they stand as they are stored.

// The same doubled, but for a front of -2 i X[k].
inline mirror4_result mirror4_terms(complex4 a, complex4 b, complex4 w) {
    const complex4 conjugate = pairs_of(1, -1), two = pairs_of(2, 2);
    const complex4 s = fma_parts(a, b, conjugate), p = mul_negated(w, fms_from(s, a, two));
    return {sub_i(p, s), add_i(p, s)};
}

// Four complex numbers that end at p, last one first, and a swapped `back` stored so that its last one stands at p.
inline complex4 load4_down(const float* p) { return reverse4(load4(p - 6)); }
inline void store4_down(float* p, complex4 v) { store4(p - 6, reverse4(v)); }
inline void store_back(float* p, complex4 back) { store4(p - 6, reverse8(back)); }

// Eight floats that end at p, last one first.
inline complex4 load8_down(const float* p) { return reverse8(load4(p - 7)); }
inline void store8_down(float* p, complex4 v) { store4(p - 7, reverse8(v)); }

// A pointer to the same place, of which the compiler doesn't know that it is. What is loaded through it comes from
// memory once more: where a multiply-add overwrites one of its operands, a second load is cheaper than a copy.
inline const float* another_pointer(const float* p) {
    asm("" : "+r"(p));
    return p;
}

// The four coefficients from k on and their partners. `mirrors` is the table behind a half table.
inline mirror4_result mirrored4(const float* y, const float* y_again, const float* mirrors, int64_t m, int64_t k) {
    return mirror4(load4(y + 2 * k), load4(y_again + 2 * k), load4_down(y + 2 * (m - k)), load4(mirrors + 2 * (k - 1)));
}

// Eight pairs, their parts in vectors of their own.
struct mirror8_parts {
    complex4 re, im, back_re, back_im;
};

// The coefficients of the eight pairs from k on.
inline mirror8_parts mirror8(const float* y, const float* y_again, const float* mirrors, int64_t m, int64_t k) {
    const mirror4_result low = mirrored4(y, y_again, mirrors, m, k), high = mirrored4(y, y_again, mirrors, m, k + 4);
    return {unzip_even(low.front, high.front), unzip_odd(low.front, high.front), unzip_even(low.back, high.back),
            unzip_odd(low.back, high.back)};
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
