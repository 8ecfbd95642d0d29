// SPDX-License-Identifier: Apache-2.0
// Four real numbers in a 128-bit vector: the same element of four rows, or four elements of one.
#pragma once
#include <cstdint>
#include <cstring>

#include "kernels/ops/neon_complex.h"

#if defined(__aarch64__)
#include <arm_neon.h>

namespace real_quad {

using vec = float32x4_t;
using pool_pairs = float32x4_t;

OPS_INLINE vec load(const float* p) { return vld1q_f32(p); }
OPS_INLINE vec load(const float* p0, const float* p1, const float* p2, const float* p3) {
    return vld1q_lane_f32(p3, vld1q_lane_f32(p2, vld1q_lane_f32(p1, vld1q_dup_f32(p0), 1), 2), 3);
}
OPS_INLINE vec load_three(const float* p) { return vcombine_f32(vld1_f32(p), vld1_dup_f32(p + 2)); }
OPS_INLINE vec load_zeros() { return vdupq_n_f32(0); }
OPS_INLINE vec load_same(const float* p) { return vld1q_dup_f32(p); }
OPS_INLINE vec load_both(const float* p) {
    return vreinterpretq_f32_u64(vld1q_dup_u64(reinterpret_cast<const uint64_t*>(p)));
}
OPS_INLINE vec load_both(const float* re, const float* im) { return vzip1q_f32(vld1q_dup_f32(re), vld1q_dup_f32(im)); }
OPS_INLINE void store(float* p, vec a) { vst1q_f32(p, a); }
OPS_INLINE void store_low(float* p, vec a) { vst1_f32(p, vget_low_f32(a)); }
OPS_INLINE void store_high(float* p, vec a) { vst1_f32(p, vget_high_f32(a)); }
OPS_INLINE void store_lowest(float* p, vec a) { vst1q_lane_f32(p, a, 0); }
template <int lane>
OPS_INLINE void store_lane(float* p, vec a) {
    vst1q_lane_f32(p, a, lane);
}

OPS_INLINE pool_pairs two_constants(const float* p) { return vld1q_f32(p); }
OPS_INLINE vec constants(const float* p) { return vld1q_f32(p); }
OPS_INLINE vec add(vec a, vec b) { return vaddq_f32(a, b); }
OPS_INLINE vec sub(vec a, vec b) { return vsubq_f32(a, b); }
OPS_INLINE vec neg(vec a) { return vnegq_f32(a); }
OPS_INLINE void store_complex(float* p, vec a) {
    const float32x4x2_t with_zeros = {{a, vdupq_n_f32(0)}};
    vst2q_f32(p, with_zeros);
}
template <int lane>
OPS_INLINE vec scale(vec a, pool_pairs k) {
    return vmulq_laneq_f32(a, k, lane);
}
template <int lane>
OPS_INLINE vec fma(vec a, vec b, pool_pairs k) {
    return vfmaq_laneq_f32(a, b, k, lane);
}
template <int lane>
OPS_INLINE vec fms(vec a, vec b, pool_pairs k) {
    return vfmsq_laneq_f32(a, b, k, lane);
}
OPS_INLINE vec scale_all(vec a, vec k) { return vmulq_f32(a, k); }
OPS_INLINE vec fma_all(vec a, vec b, vec k) { return vfmaq_f32(a, b, k); }
OPS_INLINE vec fms_all(vec a, vec b, vec k) { return vfmsq_f32(a, b, k); }

OPS_INLINE vec interleave_lo(vec a, vec b) { return vzip1q_f32(a, b); }
OPS_INLINE vec interleave_hi(vec a, vec b) { return vzip2q_f32(a, b); }
OPS_INLINE vec evens(vec a, vec b) { return vuzp1q_f32(a, b); }
OPS_INLINE vec odds(vec a, vec b) { return vuzp2q_f32(a, b); }
OPS_INLINE vec swap_halves(vec a) { return vextq_f32(a, a, 2); }
OPS_INLINE vec swap_pairs(vec a) { return vrev64q_f32(a); }
using neon_complex::add_i;
using neon_complex::fma_i;
using neon_complex::sub_i;

}  // namespace real_quad

#else

namespace real_quad {

typedef float vec __attribute__((vector_size(16)));
using pool_pairs = vec;

OPS_INLINE vec load(const float* p) {
    vec r;
    std::memcpy(&r, p, sizeof r);
    return r;
}
OPS_INLINE vec load(const float* p0, const float* p1, const float* p2, const float* p3) {
    return vec{*p0, *p1, *p2, *p3};
}
OPS_INLINE vec load_three(const float* p) { return vec{p[0], p[1], p[2], p[2]}; }
OPS_INLINE vec load_zeros() { return vec{}; }
OPS_INLINE vec load_same(const float* p) { return vec{*p, *p, *p, *p}; }
OPS_INLINE vec load_both(const float* re, const float* im) { return vec{*re, *im, *re, *im}; }
OPS_INLINE vec load_both(const float* p) { return load_both(p, p + 1); }
OPS_INLINE void store(float* p, vec a) { std::memcpy(p, &a, sizeof a); }
OPS_INLINE void store_low(float* p, vec a) { p[0] = a[0], p[1] = a[1]; }
OPS_INLINE void store_high(float* p, vec a) { p[0] = a[2], p[1] = a[3]; }
OPS_INLINE void store_lowest(float* p, vec a) { *p = a[0]; }
template <int lane>
OPS_INLINE void store_lane(float* p, vec a) {
    *p = a[lane];
}

OPS_INLINE pool_pairs two_constants(const float* p) { return load(p); }
OPS_INLINE vec constants(const float* p) { return load(p); }
OPS_INLINE vec add(vec a, vec b) { return a + b; }
OPS_INLINE vec sub(vec a, vec b) { return a - b; }
OPS_INLINE vec neg(vec a) { return -a; }
OPS_INLINE void store_complex(float* p, vec a) {
    for (int i = 0; i < 4; ++i) p[2 * i] = a[i], p[2 * i + 1] = 0;
}
template <int lane>
OPS_INLINE vec scale(vec a, pool_pairs k) {
    return a * k[lane];
}
template <int lane>
OPS_INLINE vec fma(vec a, vec b, pool_pairs k) {
    return a + b * k[lane];
}
template <int lane>
OPS_INLINE vec fms(vec a, vec b, pool_pairs k) {
    return a - b * k[lane];
}
OPS_INLINE vec scale_all(vec a, vec k) { return a * k; }
OPS_INLINE vec fma_all(vec a, vec b, vec k) { return a + b * k; }
OPS_INLINE vec fms_all(vec a, vec b, vec k) { return a - b * k; }

OPS_INLINE vec interleave_lo(vec a, vec b) { return __builtin_shufflevector(a, b, 0, 4, 1, 5); }
OPS_INLINE vec interleave_hi(vec a, vec b) { return __builtin_shufflevector(a, b, 2, 6, 3, 7); }
OPS_INLINE vec evens(vec a, vec b) { return __builtin_shufflevector(a, b, 0, 2, 4, 6); }
OPS_INLINE vec odds(vec a, vec b) { return __builtin_shufflevector(a, b, 1, 3, 5, 7); }
OPS_INLINE vec swap_halves(vec a) { return __builtin_shufflevector(a, a, 2, 3, 0, 1); }
OPS_INLINE vec swap_pairs(vec a) { return __builtin_shufflevector(a, a, 1, 0, 3, 2); }
OPS_INLINE vec add_i(vec a, vec b) { return vec{a[0] - b[1], a[1] + b[0], a[2] - b[3], a[3] + b[2]}; }
OPS_INLINE vec sub_i(vec a, vec b) { return vec{a[0] + b[1], a[1] - b[0], a[2] + b[3], a[3] - b[2]}; }
OPS_INLINE vec fma_i(vec a, vec b, vec k) { return add_i(a, b * k); }

}  // namespace real_quad

#endif

namespace real_quad {

OPS_INLINE vec reversed(vec a) { return swap_halves(swap_pairs(a)); }
OPS_INLINE vec load_reversed(const float* p) { return reversed(load(p)); }
OPS_INLINE void store_reversed(float* p, vec a) { store(p, reversed(a)); }
OPS_INLINE void store_low_reversed(float* p, vec a) { store_low(p, swap_pairs(a)); }

// Each lane at its own place.
OPS_INLINE void store(float* p0, float* p1, float* p2, vec a) {
    store_lowest(p0, a);
    store_lane<1>(p1, a);
    store_lane<2>(p2, a);
}
OPS_INLINE void store_three(float* p, vec a) {
    store_low(p, a);
    store_lane<2>(p + 2, a);
}
OPS_INLINE void store(float* p0, float* p1, float* p2, float* p3, vec a) {
    store(p0, p1, p2, a);
    store_lane<3>(p3, a);
}
OPS_INLINE void store_low(float* p0, float* p1, vec a) {
    store_lowest(p0, a);
    store_lane<1>(p1, a);
}
// Two numbers of a row and two of the next.
OPS_INLINE void store_two_rows(float* p, int64_t d, vec a) {
    store_low(p, a);
    store_high(p + d, a);
}
// Lanes at equal distances.
OPS_INLINE vec load_apart(const float* p, int64_t d) { return load(p, p + d, p + 2 * d, p + 3 * d); }
OPS_INLINE void store_apart(float* p, int64_t d, vec a) { store(p, p + d, p + 2 * d, p + 3 * d, a); }

}  // namespace real_quad
