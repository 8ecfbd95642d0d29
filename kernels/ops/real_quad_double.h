// SPDX-License-Identifier: Apache-2.0
// Four real numbers that are floats in memory, and doubles in two vectors between the load and the store.
#pragma once
#include "kernels/ops/real_quad.h"

namespace real_quad_double {

typedef double half __attribute__((vector_size(16)));
struct vec {
    half lo, hi;
};
using pool_pairs = vec;

#if defined(__aarch64__)
OPS_INLINE vec widen(float32x4_t a) { return {half(vcvt_f64_f32(vget_low_f32(a))), half(vcvt_high_f64_f32(a))}; }
OPS_INLINE float32x4_t narrow(vec a) { return vcvt_high_f32_f64(vcvt_f32_f64(float64x2_t(a.lo)), float64x2_t(a.hi)); }
OPS_INLINE half half_fma(half a, half b, half k) {
    return half(vfmaq_f64(float64x2_t(a), float64x2_t(b), float64x2_t(k)));
}
OPS_INLINE half half_fms(half a, half b, half k) {
    return half(vfmsq_f64(float64x2_t(a), float64x2_t(b), float64x2_t(k)));
}
OPS_INLINE half half_add_i(half a, half b) { return half(neon_complex::add_i(float64x2_t(a), float64x2_t(b))); }
OPS_INLINE half half_sub_i(half a, half b) { return half(neon_complex::sub_i(float64x2_t(a), float64x2_t(b))); }
OPS_INLINE half half_fma_i(half a, half b, half k) {
    return half(neon_complex::fma_i(float64x2_t(a), float64x2_t(b), float64x2_t(k)));
}
#else
OPS_INLINE vec widen(real_quad::vec a) { return {{a[0], a[1]}, {a[2], a[3]}}; }
OPS_INLINE real_quad::vec narrow(vec a) {
    return real_quad::vec{float(a.lo[0]), float(a.lo[1]), float(a.hi[0]), float(a.hi[1])};
}
OPS_INLINE half half_fma(half a, half b, half k) { return a + b * k; }
OPS_INLINE half half_fms(half a, half b, half k) { return a - b * k; }
OPS_INLINE half half_add_i(half a, half b) { return half{a[0] - b[1], a[1] + b[0]}; }
OPS_INLINE half half_sub_i(half a, half b) { return half{a[0] + b[1], a[1] - b[0]}; }
OPS_INLINE half half_fma_i(half a, half b, half k) { return half_add_i(a, b * k); }
#endif

template <class... Places>
OPS_INLINE vec load(Places... places) {
    return widen(real_quad::load(places...));
}
OPS_INLINE vec load_reversed(const float* p) { return widen(real_quad::load_reversed(p)); }
OPS_INLINE vec load_same(const float* p) { return {half{*p, *p}, half{*p, *p}}; }
OPS_INLINE vec load_both(const float* re, const float* im) { return {half{*re, *im}, half{*re, *im}}; }
OPS_INLINE vec load_both(const float* p) { return load_both(p, p + 1); }
OPS_INLINE void store(float* p, vec a) { real_quad::store(p, narrow(a)); }

OPS_INLINE vec constants(const double* p) { return {half{p[0], p[1]}, half{p[2], p[3]}}; }
OPS_INLINE pool_pairs two_constants(const double* p) { return constants(p); }
template <int lane>
OPS_INLINE half everywhere(pool_pairs k) {
    const half h = lane < 2 ? k.lo : k.hi;
    return __builtin_shufflevector(h, h, lane % 2, lane % 2);
}

OPS_INLINE vec add(vec a, vec b) { return {a.lo + b.lo, a.hi + b.hi}; }
OPS_INLINE vec sub(vec a, vec b) { return {a.lo - b.lo, a.hi - b.hi}; }
OPS_INLINE vec neg(vec a) { return {-a.lo, -a.hi}; }
template <int lane>
OPS_INLINE vec scale(vec a, pool_pairs k) {
    return {a.lo * everywhere<lane>(k), a.hi * everywhere<lane>(k)};
}
template <int lane>
OPS_INLINE vec fma(vec a, vec b, pool_pairs k) {
    return {half_fma(a.lo, b.lo, everywhere<lane>(k)), half_fma(a.hi, b.hi, everywhere<lane>(k))};
}
template <int lane>
OPS_INLINE vec fms(vec a, vec b, pool_pairs k) {
    return {half_fms(a.lo, b.lo, everywhere<lane>(k)), half_fms(a.hi, b.hi, everywhere<lane>(k))};
}
OPS_INLINE vec scale_all(vec a, vec k) { return {a.lo * k.lo, a.hi * k.hi}; }
OPS_INLINE vec fma_all(vec a, vec b, vec k) { return {half_fma(a.lo, b.lo, k.lo), half_fma(a.hi, b.hi, k.hi)}; }
OPS_INLINE vec fms_all(vec a, vec b, vec k) { return {half_fms(a.lo, b.lo, k.lo), half_fms(a.hi, b.hi, k.hi)}; }

OPS_INLINE vec add_i(vec a, vec b) { return {half_add_i(a.lo, b.lo), half_add_i(a.hi, b.hi)}; }
OPS_INLINE vec sub_i(vec a, vec b) { return {half_sub_i(a.lo, b.lo), half_sub_i(a.hi, b.hi)}; }
OPS_INLINE vec fma_i(vec a, vec b, vec k) { return {half_fma_i(a.lo, b.lo, k.lo), half_fma_i(a.hi, b.hi, k.hi)}; }

OPS_INLINE vec interleave_lo(vec a, vec b) {
    return {__builtin_shufflevector(a.lo, b.lo, 0, 2), __builtin_shufflevector(a.lo, b.lo, 1, 3)};
}
OPS_INLINE vec interleave_hi(vec a, vec b) {
    return {__builtin_shufflevector(a.hi, b.hi, 0, 2), __builtin_shufflevector(a.hi, b.hi, 1, 3)};
}
OPS_INLINE vec evens(vec a, vec b) {
    return {__builtin_shufflevector(a.lo, a.hi, 0, 2), __builtin_shufflevector(b.lo, b.hi, 0, 2)};
}
OPS_INLINE vec odds(vec a, vec b) {
    return {__builtin_shufflevector(a.lo, a.hi, 1, 3), __builtin_shufflevector(b.lo, b.hi, 1, 3)};
}
OPS_INLINE vec swap_pairs(vec a) {
    return {__builtin_shufflevector(a.lo, a.lo, 1, 0), __builtin_shufflevector(a.hi, a.hi, 1, 0)};
}
OPS_INLINE vec swap_halves(vec a) { return {a.hi, a.lo}; }

// Four places one after the other, from the lowest lane on.
OPS_INLINE void store(float* p0, float* p1, float* p2, float* p3, vec a) {
    real_quad::store(p0, p1, p2, p3, narrow(a));
}

}  // namespace real_quad_double
