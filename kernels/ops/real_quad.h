// SPDX-License-Identifier: Apache-2.0
// Four real numbers in a 128-bit vector: the same element of four rows.
#pragma once
#include <cstdint>
#include <cstring>

#include "kernels/ops/inline.h"

#if defined(__aarch64__)
#include <arm_neon.h>

namespace real_quad {

using vec = float32x4_t;
using quad = float32x4_t;

OPS_INLINE vec load(const float* p) { return vld1q_f32(p); }
OPS_INLINE void store(float* p, vec a) { vst1q_f32(p, a); }
OPS_INLINE quad two_constants(const float* p) { return vld1q_f32(p); }
OPS_INLINE vec add(vec a, vec b) { return vaddq_f32(a, b); }
OPS_INLINE vec sub(vec a, vec b) { return vsubq_f32(a, b); }
OPS_INLINE vec neg(vec a) { return vnegq_f32(a); }
template <int lane>
OPS_INLINE vec scale(vec a, quad k) {
    return vmulq_laneq_f32(a, k, lane);
}
template <int lane>
OPS_INLINE vec fma(vec a, vec b, quad k) {
    return vfmaq_laneq_f32(a, b, k, lane);
}
template <int lane>
OPS_INLINE vec fms(vec a, vec b, quad k) {
    return vfmsq_laneq_f32(a, b, k, lane);
}

}  // namespace real_quad

#else

namespace real_quad {

typedef float vec __attribute__((vector_size(16)));
using quad = vec;

OPS_INLINE vec load(const float* p) {
    vec r;
    std::memcpy(&r, p, sizeof r);
    return r;
}
OPS_INLINE void store(float* p, vec a) { std::memcpy(p, &a, sizeof a); }
OPS_INLINE quad two_constants(const float* p) { return load(p); }
OPS_INLINE vec add(vec a, vec b) { return a + b; }
OPS_INLINE vec sub(vec a, vec b) { return a - b; }
OPS_INLINE vec neg(vec a) { return -a; }
template <int lane>
OPS_INLINE vec scale(vec a, quad k) {
    return a * k[lane];
}
template <int lane>
OPS_INLINE vec fma(vec a, vec b, quad k) {
    return a + b * k[lane];
}
template <int lane>
OPS_INLINE vec fms(vec a, vec b, quad k) {
    return a - b * k[lane];
}

}  // namespace real_quad

#endif
