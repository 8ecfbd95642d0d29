// SPDX-License-Identifier: Apache-2.0
// Four complex numbers, or eight floats, in one vector of 256 bits, for passes over whole arrays: an SVE register, two
// NEON registers or, off Arm, a generic vector. Real part first in each lane.
#pragma once
#include <cstdint>

#if defined(__ARM_FEATURE_SVE)
#include "kernels/ops/sve_common.h"

typedef svfloat32_t complex4 __attribute__((arm_sve_vector_bits(256)));

inline complex4 load4(const float* p) { return svld1_f32(svptrue_b32(), p); }
inline void store4(float* p, complex4 v) { svst1_f32(svptrue_b32(), p, v); }
// where four complex numbers stand, from one to the next `step` further on; such offsets can be added
typedef svint64_t offsets4 __attribute__((arm_sve_vector_bits(256)));
inline offsets4 offsets_of(int64_t first, int64_t step) { return svindex_s64(8 * first, 8 * step); }
inline complex4 gather4(const float* p, offsets4 at) {
    return svreinterpret_f32_s64(svld1_gather_s64offset_s64(svptrue_b64(), reinterpret_cast<const int64_t*>(p), at));
}
// fewer than eight floats
inline void copy_part(const float* source, float* destination, int64_t n) {
    const svbool_t part = svwhilelt_b32(int64_t{0}, n);
    svst1_f32(part, destination, svld1_f32(part, source));
}
inline complex4 add(complex4 a, complex4 b) { return svadd_f32_x(svptrue_b32(), a, b); }
inline complex4 sub(complex4 a, complex4 b) { return svsub_f32_x(svptrue_b32(), a, b); }
inline complex4 negate(complex4 a) { return svneg_f32_x(svptrue_b32(), a); }
inline complex4 mul_parts(complex4 a, complex4 b) { return svmul_f32_x(svptrue_b32(), a, b); }
// a + b c and a - b c, float by float
inline complex4 fma_parts(complex4 a, complex4 b, complex4 c) { return svmla_f32_x(svptrue_b32(), a, b, c); }
inline complex4 fms_parts(complex4 a, complex4 b, complex4 c) { return svmls_f32_x(svptrue_b32(), a, b, c); }
inline complex4 add_i(complex4 a, complex4 b) { return svcadd_f32_x(svptrue_b32(), a, b, 90); }
inline complex4 sub_i(complex4 a, complex4 b) { return svcadd_f32_x(svptrue_b32(), a, b, 270); }
// b c - a, float by float
inline complex4 fms_from(complex4 a, complex4 b, complex4 c) { return svnmls_f32_x(svptrue_b32(), a, b, c); }
template <int first_turn, int second_turn>
inline complex4 product(complex4 a, complex4 b) {
    const complex4 first = svcmla_f32_x(svptrue_b32(), sve_common::zero(), a, b, first_turn);
    return svcmla_f32_x(svptrue_b32(), first, a, b, second_turn);
}
// a b, conj(a) b, and the same negated: each part is two fused multiply-adds that start from +0
inline complex4 mul(complex4 a, complex4 b) { return product<0, 90>(a, b); }
inline complex4 mul_conjugate(complex4 a, complex4 b) { return product<0, 270>(a, b); }
inline complex4 mul_negated(complex4 a, complex4 b) { return product<180, 270>(a, b); }
inline complex4 mul_conjugate_negated(complex4 a, complex4 b) { return product<180, 90>(a, b); }
// sum + conj(a) b and sum - conj(a) b
inline complex4 fma_conjugate(complex4 sum, complex4 a, complex4 b) {
    return svcmla_f32_x(svptrue_b32(), svcmla_f32_x(svptrue_b32(), sum, a, b, 0), a, b, 270);
}
inline complex4 fms_conjugate(complex4 sum, complex4 a, complex4 b) {
    return svcmla_f32_x(svptrue_b32(), svcmla_f32_x(svptrue_b32(), sum, a, b, 180), a, b, 90);
}
inline complex4 pairs_of(float re, float im) { return svtrn1_f32(svdup_n_f32(re), svdup_n_f32(im)); }
inline complex4 swap_parts(complex4 v) {
    return svreinterpret_f32_u64(svrevw_u64_x(svptrue_b64(), svreinterpret_u64_f32(v)));
}
// the four complex numbers in reverse order
inline complex4 reverse4(complex4 v) { return svreinterpret_f32_f64(svrev_f64(svreinterpret_f64_f32(v))); }
// the eight floats in reverse order
inline complex4 reverse8(complex4 v) { return svrev_f32(v); }
// (a0 b0 a1 b1), the low or the high half of two float vectors side by side, and the way back
inline complex4 zip_low(complex4 a, complex4 b) { return svzip1_f32(a, b); }
inline complex4 zip_high(complex4 a, complex4 b) { return svzip2_f32(a, b); }
inline complex4 unzip_even(complex4 a, complex4 b) { return svuzp1_f32(a, b); }
inline complex4 unzip_odd(complex4 a, complex4 b) { return svuzp2_f32(a, b); }
// (a0 b0 a2 b2), the even or the odd floats of two vectors, by pairs
inline complex4 pair_even(complex4 a, complex4 b) { return svtrn1_f32(a, b); }
inline complex4 pair_odd(complex4 a, complex4 b) { return svtrn2_f32(a, b); }

#elif defined(__aarch64__)
#include "kernels/ops/complex4_in_two.h"

#else
#include <cstring>

typedef float complex4 __attribute__((vector_size(32)));

inline complex4 load4(const float* p) {
    complex4 v;
    memcpy(&v, p, sizeof v);
    return v;
}
inline void store4(float* p, complex4 v) { memcpy(p, &v, sizeof v); }
typedef int64_t offsets4 __attribute__((vector_size(32)));
inline offsets4 offsets_of(int64_t first, int64_t step) {
    return offsets4{first, first + step, first + 2 * step, first + 3 * step};
}
inline complex4 gather4(const float* p, offsets4 at) {
    complex4 v;
    for (int i = 0; i < 4; ++i) v[2 * i] = p[2 * at[i]], v[2 * i + 1] = p[2 * at[i] + 1];
    return v;
}
inline void copy_part(const float* source, float* destination, int64_t n) {
    for (int64_t i = 0; i < n; ++i) destination[i] = source[i];
}
inline complex4 add(complex4 a, complex4 b) { return a + b; }
inline complex4 sub(complex4 a, complex4 b) { return a - b; }
inline complex4 negate(complex4 a) { return -a; }
inline complex4 mul_parts(complex4 a, complex4 b) { return a * b; }
inline complex4 fma_parts(complex4 a, complex4 b, complex4 c) {
    for (int i = 0; i < 8; ++i) a[i] = __builtin_fmaf(b[i], c[i], a[i]);
    return a;
}
inline complex4 fms_parts(complex4 a, complex4 b, complex4 c) { return fma_parts(a, -b, c); }
inline complex4 add_i(complex4 a, complex4 b) {
    for (int i = 0; i < 8; i += 2) {
        a[i] -= b[i + 1];
        a[i + 1] += b[i];
    }
    return a;
}
inline complex4 sub_i(complex4 a, complex4 b) { return add_i(a, -b); }
inline complex4 mul(complex4 a, complex4 b) {
    complex4 r;
    for (int i = 0; i < 8; i += 2) {
        r[i] = __builtin_fmaf(-a[i + 1], b[i + 1], __builtin_fmaf(a[i], b[i], 0.0f));
        r[i + 1] = __builtin_fmaf(a[i + 1], b[i], __builtin_fmaf(a[i], b[i + 1], 0.0f));
    }
    return r;
}
inline complex4 fms_from(complex4 a, complex4 b, complex4 c) { return fma_parts(-a, b, c); }
inline complex4 mul_conjugate(complex4 a, complex4 b) {
    for (int i = 1; i < 8; i += 2) a[i] = -a[i];
    return mul(a, b);
}
inline complex4 mul_negated(complex4 a, complex4 b) { return mul(-a, b); }
inline complex4 fma_conjugate(complex4 sum, complex4 a, complex4 b) {
    for (int i = 0; i < 8; i += 2) {
        sum[i] = __builtin_fmaf(a[i + 1], b[i + 1], __builtin_fmaf(a[i], b[i], sum[i]));
        sum[i + 1] = __builtin_fmaf(-a[i + 1], b[i], __builtin_fmaf(a[i], b[i + 1], sum[i + 1]));
    }
    return sum;
}
inline complex4 fms_conjugate(complex4 sum, complex4 a, complex4 b) { return fma_conjugate(sum, -a, b); }
inline complex4 mul_conjugate_negated(complex4 a, complex4 b) { return mul_conjugate(-a, b); }
inline complex4 pairs_of(float re, float im) { return complex4{re, im, re, im, re, im, re, im}; }
inline complex4 swap_parts(complex4 v) { return complex4{v[1], v[0], v[3], v[2], v[5], v[4], v[7], v[6]}; }
inline complex4 reverse4(complex4 v) { return complex4{v[6], v[7], v[4], v[5], v[2], v[3], v[0], v[1]}; }
inline complex4 reverse8(complex4 v) { return complex4{v[7], v[6], v[5], v[4], v[3], v[2], v[1], v[0]}; }
inline complex4 zip_low(complex4 a, complex4 b) { return complex4{a[0], b[0], a[1], b[1], a[2], b[2], a[3], b[3]}; }
inline complex4 zip_high(complex4 a, complex4 b) { return complex4{a[4], b[4], a[5], b[5], a[6], b[6], a[7], b[7]}; }
inline complex4 unzip_even(complex4 a, complex4 b) { return complex4{a[0], a[2], a[4], a[6], b[0], b[2], b[4], b[6]}; }
inline complex4 unzip_odd(complex4 a, complex4 b) { return complex4{a[1], a[3], a[5], a[7], b[1], b[3], b[5], b[7]}; }
inline complex4 pair_even(complex4 a, complex4 b) { return complex4{a[0], b[0], a[2], b[2], a[4], b[4], a[6], b[6]}; }
inline complex4 pair_odd(complex4 a, complex4 b) { return complex4{a[1], b[1], a[3], b[3], a[5], b[5], a[7], b[7]}; }
#endif
