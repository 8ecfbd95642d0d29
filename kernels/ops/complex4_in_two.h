// SPDX-License-Identifier: Apache-2.0
// The vector of complex4.h in two NEON registers.
#pragma once
#include "kernels/ops/neon_complex.h"

struct complex4 {
    float32x4_t lo, hi;
};

inline complex4 load4(const float* p) { return {vld1q_f32(p), vld1q_f32(p + 4)}; }
inline void store4(float* p, complex4 v) {
    vst1q_f32(p, v.lo);
    vst1q_f32(p + 4, v.hi);
}
// the offset of the first and the step from one to the next
struct offsets4 {
    int64_t first, step;
};
inline offsets4 offsets_of(int64_t first, int64_t step) { return {first, step}; }
inline offsets4 operator+(offsets4 a, offsets4 b) { return {a.first + b.first, a.step + b.step}; }
inline offsets4& operator+=(offsets4& a, offsets4 b) { return a = a + b; }
inline complex4 gather4(const float* p, offsets4 at) {
    p += 2 * at.first;
    const float* const third = p + 4 * at.step;
    return {vcombine_f32(vld1_f32(p), vld1_f32(p + 2 * at.step)),
            vcombine_f32(vld1_f32(third), vld1_f32(third + 2 * at.step))};
}
inline void copy_part(const float* source, float* destination, int64_t n) {
    for (int64_t i = 0; i < n; ++i) destination[i] = source[i];
}
inline complex4 add(complex4 a, complex4 b) { return {vaddq_f32(a.lo, b.lo), vaddq_f32(a.hi, b.hi)}; }
inline complex4 sub(complex4 a, complex4 b) { return {vsubq_f32(a.lo, b.lo), vsubq_f32(a.hi, b.hi)}; }
inline complex4 negate(complex4 a) { return {vnegq_f32(a.lo), vnegq_f32(a.hi)}; }
inline complex4 mul_parts(complex4 a, complex4 b) { return {vmulq_f32(a.lo, b.lo), vmulq_f32(a.hi, b.hi)}; }
inline complex4 fma_parts(complex4 a, complex4 b, complex4 c) {
    return {vfmaq_f32(a.lo, b.lo, c.lo), vfmaq_f32(a.hi, b.hi, c.hi)};
}
inline complex4 fms_parts(complex4 a, complex4 b, complex4 c) {
    return {vfmsq_f32(a.lo, b.lo, c.lo), vfmsq_f32(a.hi, b.hi, c.hi)};
}
inline complex4 fms_from(complex4 a, complex4 b, complex4 c) { return fma_parts(negate(a), b, c); }
inline complex4 add_i(complex4 a, complex4 b) {
    return {neon_complex::add_i(a.lo, b.lo), neon_complex::add_i(a.hi, b.hi)};
}
inline complex4 sub_i(complex4 a, complex4 b) {
    return {neon_complex::sub_i(a.lo, b.lo), neon_complex::sub_i(a.hi, b.hi)};
}
inline complex4 mul(complex4 a, complex4 b) {
    const float32x4_t zero = vdupq_n_f32(0);
    return {neon_complex::fma_complex(zero, a.lo, b.lo), neon_complex::fma_complex(zero, a.hi, b.hi)};
}
inline complex4 fma_conjugate(complex4 sum, complex4 a, complex4 b) {
    return {neon_complex::fma_conjugate(sum.lo, a.lo, b.lo), neon_complex::fma_conjugate(sum.hi, a.hi, b.hi)};
}
inline complex4 fms_conjugate(complex4 sum, complex4 a, complex4 b) { return fma_conjugate(sum, negate(a), b); }
inline complex4 mul_conjugate(complex4 a, complex4 b) { return fma_conjugate({vdupq_n_f32(0), vdupq_n_f32(0)}, a, b); }
inline complex4 mul_negated(complex4 a, complex4 b) { return mul(negate(a), b); }
inline complex4 mul_conjugate_negated(complex4 a, complex4 b) { return mul_conjugate(negate(a), b); }
inline complex4 pairs_of(float re, float im) {
    const float32x4_t pairs = vtrn1q_f32(vdupq_n_f32(re), vdupq_n_f32(im));
    return {pairs, pairs};
}
inline complex4 swap_parts(complex4 v) { return {vrev64q_f32(v.lo), vrev64q_f32(v.hi)}; }
inline complex4 reverse4(complex4 v) { return {vextq_f32(v.hi, v.hi, 2), vextq_f32(v.lo, v.lo, 2)}; }
inline complex4 reverse8(complex4 v) { return swap_parts(reverse4(v)); }
inline complex4 zip_low(complex4 a, complex4 b) { return {vzip1q_f32(a.lo, b.lo), vzip2q_f32(a.lo, b.lo)}; }
inline complex4 zip_high(complex4 a, complex4 b) { return {vzip1q_f32(a.hi, b.hi), vzip2q_f32(a.hi, b.hi)}; }
inline complex4 unzip_even(complex4 a, complex4 b) { return {vuzp1q_f32(a.lo, a.hi), vuzp1q_f32(b.lo, b.hi)}; }
inline complex4 unzip_odd(complex4 a, complex4 b) { return {vuzp2q_f32(a.lo, a.hi), vuzp2q_f32(b.lo, b.hi)}; }
inline complex4 pair_even(complex4 a, complex4 b) { return {vtrn1q_f32(a.lo, b.lo), vtrn1q_f32(a.hi, b.hi)}; }
inline complex4 pair_odd(complex4 a, complex4 b) { return {vtrn2q_f32(a.lo, b.lo), vtrn2q_f32(a.hi, b.hi)}; }
