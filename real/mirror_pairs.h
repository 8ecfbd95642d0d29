// SPDX-License-Identifier: Apache-2.0
// The vectors of the pass behind the complex core of r2c: NEON registers of two complex numbers at every level. Two of
// them are stored by one instruction, where the store of an SVE register takes as long as an operation on it.
#pragma once
#include "real/mirror.h"

#if defined(__aarch64__)
#include "kernels/ops/neon_complex.h"

namespace mirror_pairs {

using vec = float32x4_t;
constexpr int lanes = 2;

inline vec load(const float* p) { return vld1q_f32(p); }
inline void store(float* p, vec v) { vst1q_f32(p, v); }
inline vec reversed(vec v) { return vextq_f32(v, v, 2); }
inline vec plus_negated_conjugate(vec a, vec b) { return vfmaq_f32(a, b, vec{-1, 1, -1, 1}); }
inline vec fma_conjugate(vec sum, vec a, vec b) { return neon_complex::fma_conjugate(sum, a, b); }
inline vec fms_conjugate(vec sum, vec a, vec b) {
#if defined(__ARM_FEATURE_COMPLEX)
    return vcmlaq_rot90_f32(vcmlaq_rot180_f32(sum, a, b), a, b);
#else
    return fma_conjugate(sum, vnegq_f32(a), b);
#endif
}

}  // namespace mirror_pairs

#else

namespace mirror_pairs {

using vec = complex4;
constexpr int lanes = 4;

inline vec load(const float* p) { return load4(p); }
inline void store(float* p, vec v) { store4(p, v); }
inline vec reversed(vec v) { return reverse4(v); }
inline vec plus_negated_conjugate(vec a, vec b) { return fma_parts(a, b, pairs_of(-1, 1)); }
using ::fma_conjugate, ::fms_conjugate;

}  // namespace mirror_pairs

#endif
