// SPDX-License-Identifier: Apache-2.0
// One complex number in a 64-bit NEON vector.
#pragma once
#include "kernels/ops/neon_complex.h"

#if defined(__aarch64__)
#include <arm_neon.h>

namespace neon_one {

using vec = float32x2_t;
using row_twiddle = float32x2_t;
using pool_pairs = float32x4_t;

OPS_INLINE vec load(const float* p) { return vld1_f32(p); }
OPS_INLINE void store(float* p, vec a) { vst1_f32(p, a); }
OPS_INLINE vec constant(const float* p) { return vld1_f32(p); }
OPS_INLINE pool_pairs two_constants(const float* p) { return vld1q_f32(p); }
OPS_INLINE vec same(float k) { return vdup_n_f32(k); }
OPS_INLINE row_twiddle load_row(const float* p) { return vld1_f32(p); }

using neon_complex::mul;
OPS_INLINE vec add(vec a, vec b) { return vadd_f32(a, b); }
OPS_INLINE vec sub(vec a, vec b) { return vsub_f32(a, b); }
using neon_complex::add_i;
using neon_complex::sub_i;
template <int lane>
OPS_INLINE vec scale(vec a, vec k) {
    return vmul_lane_f32(a, k, lane);
}
template <int lane>
OPS_INLINE vec scale(vec a, pool_pairs k) {
    return vmul_laneq_f32(a, k, lane);
}
template <int lane>
OPS_INLINE vec fma(vec a, vec b, vec k) {
    return vfma_lane_f32(a, b, k, lane);
}
template <int lane>
OPS_INLINE vec fma(vec a, vec b, pool_pairs k) {
    return vfma_laneq_f32(a, b, k, lane);
}
template <int lane>
OPS_INLINE vec fms(vec a, vec b, vec k) {
    return vfms_lane_f32(a, b, k, lane);
}
template <int lane>
OPS_INLINE vec fms(vec a, vec b, pool_pairs k) {
    return vfms_laneq_f32(a, b, k, lane);
}
OPS_INLINE vec fma_all(vec a, vec b, vec k) { return vfma_f32(a, b, k); }
OPS_INLINE vec fms_all(vec a, vec b, vec k) { return vfms_f32(a, b, k); }
OPS_INLINE vec conjugation() { return vreinterpret_f32_u64(vdup_n_u64(0xbf8000003f800000)); }
OPS_INLINE vec load_backward(const float* p) { return load(p); }
using neon_complex::fma_i;
using neon_complex::fms_i;

}  // namespace neon_one

#else
#include "kernels/ops/portable.h"

namespace neon_one {

using namespace portable;
using vec = vector<1>;
using row_twiddle = vec;
using pool_pairs = vector<2>;
OPS_INLINE pool_pairs two_constants(const float* p) { return portable::load<2>(p); }
OPS_INLINE vec load(const float* p) { return portable::load<1>(p); }
OPS_INLINE vec constant(const float* p) { return portable::constant<1>(p); }
OPS_INLINE vec same(float k) { return portable::same<1>(k); }
OPS_INLINE vec conjugation() { return portable::conjugation<1>(); }
OPS_INLINE vec load_backward(const float* p) { return load(p); }
OPS_INLINE row_twiddle load_row(const float* p) { return load(p); }

}  // namespace neon_one

#endif
