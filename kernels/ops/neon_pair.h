// SPDX-License-Identifier: Apache-2.0
// Two complex numbers in a 128-bit NEON vector. A row's twiddle stays in a 64-bit vector and is taken by lane.
#pragma once
#include "kernels/ops/neon_complex.h"

#if defined(__aarch64__)
#include <arm_neon.h>

namespace neon_pair {

using vec = float32x4_t;
using row_twiddle = float32x2_t;
using pool_pairs = float32x4_t;

OPS_INLINE vec load(const float* p) { return vld1q_f32(p); }
OPS_INLINE void store(float* p, vec a) { vst1q_f32(p, a); }
OPS_INLINE vec load(const float* p, int64_t distance) { return vcombine_f32(vld1_f32(p), vld1_f32(p + distance)); }
OPS_INLINE void store(float* p, int64_t distance, vec a) {
    vst1_f32(p, vget_low_f32(a));
    vst1q_lane_f64(reinterpret_cast<double*>(p + distance), vreinterpretq_f64_f32(a), 1);
}
OPS_INLINE vec constant(const float* p) {
    const float32x2_t k = vld1_f32(p);
    return vcombine_f32(k, k);
}
OPS_INLINE pool_pairs two_constants(const float* p) { return vld1q_f32(p); }
OPS_INLINE vec constants(const float* p) { return vld1q_f32(p); }
OPS_INLINE vec same(float k) { return vdupq_n_f32(k); }
OPS_INLINE row_twiddle load_row(const float* p) { return vld1_f32(p); }

using neon_complex::mul;
OPS_INLINE vec add(vec a, vec b) { return vaddq_f32(a, b); }
OPS_INLINE vec sub(vec a, vec b) { return vsubq_f32(a, b); }
using neon_complex::add_i;
using neon_complex::sub_i;
template <int lane>
OPS_INLINE vec scale(vec a, vec k) {
    return vmulq_laneq_f32(a, k, lane);
}
template <int lane>
OPS_INLINE vec fma(vec a, vec b, vec k) {
    return vfmaq_laneq_f32(a, b, k, lane);
}
template <int lane>
OPS_INLINE vec fms(vec a, vec b, vec k) {
    return vfmsq_laneq_f32(a, b, k, lane);
}
OPS_INLINE vec scale_all(vec a, vec k) { return vmulq_f32(a, k); }
OPS_INLINE vec fma_all(vec a, vec b, vec k) { return vfmaq_f32(a, b, k); }
OPS_INLINE vec fms_all(vec a, vec b, vec k) { return vfmsq_f32(a, b, k); }
OPS_INLINE vec conjugation() { return vreinterpretq_f32_u64(vdupq_n_u64(0xbf8000003f800000)); }
OPS_INLINE vec load_backward(const float* p) {
    const vec v = load(p - 2);
    return vextq_f32(v, v, 2);
}
using neon_complex::fma_i;
using neon_complex::fms_i;

OPS_INLINE vec zip_lo(vec a, vec b) {
    return vreinterpretq_f32_f64(vzip1q_f64(vreinterpretq_f64_f32(a), vreinterpretq_f64_f32(b)));
}
OPS_INLINE vec zip_hi(vec a, vec b) {
    return vreinterpretq_f32_f64(vzip2q_f64(vreinterpretq_f64_f32(a), vreinterpretq_f64_f32(b)));
}

}  // namespace neon_pair

#else
#include "kernels/ops/portable.h"

namespace neon_pair {

using namespace portable;
using vec = vector<2>;
using row_twiddle = vector<1>;
using pool_pairs = vector<2>;
OPS_INLINE pool_pairs two_constants(const float* p) { return portable::load<2>(p); }
OPS_INLINE vec constants(const float* p) { return portable::load<2>(p); }
OPS_INLINE vec load(const float* p) { return portable::load<2>(p); }
OPS_INLINE vec load(const float* p, int64_t distance) { return {{p[0], p[1], p[distance], p[distance + 1]}}; }
OPS_INLINE void store(float* p, int64_t distance, vec a) {
    p[0] = a.v[0], p[1] = a.v[1], p[distance] = a.v[2], p[distance + 1] = a.v[3];
}
OPS_INLINE vec constant(const float* p) { return portable::constant<2>(p); }
OPS_INLINE vec same(float k) { return portable::same<2>(k); }
OPS_INLINE vec conjugation() { return portable::conjugation<2>(); }
OPS_INLINE vec load_backward(const float* p) { return {{p[0], p[1], p[-2], p[-1]}}; }
OPS_INLINE row_twiddle load_row(const float* p) { return portable::load<1>(p); }
OPS_INLINE vec mul(vec a, row_twiddle w) {
    return portable::mul(a, vec{__builtin_shufflevector(w.v, w.v, 0, 1, 0, 1)});
}

}  // namespace neon_pair

#endif
