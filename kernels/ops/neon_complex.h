// SPDX-License-Identifier: Apache-2.0
// Complex arithmetic on NEON registers, real part first: by the Armv8.3 instructions or, where there are none, by
// reversed pairs and signs. A product by +1 or -1 is exact, so both round alike, but for `mul`, whose imaginary part
// takes its two products in the other order. fma_i takes the imaginary parts of k alone.
#pragma once
#include "kernels/ops/inline.h"

#if defined(__aarch64__)
#include <arm_neon.h>

namespace neon_complex {

#if defined(__ARM_FEATURE_COMPLEX)

#define OPS_COMPLEX(vec, q, type)                                                             \
    OPS_INLINE vec add_i(vec a, vec b) { return vcadd##q##_rot90_##type(a, b); }              \
    OPS_INLINE vec sub_i(vec a, vec b) { return vcadd##q##_rot270_##type(a, b); }             \
    OPS_INLINE vec fma_i(vec a, vec b, vec k) { return vcmla##q##_rot90_##type(a, k, b); }    \
    OPS_INLINE vec fms_i(vec a, vec b, vec k) { return vcmla##q##_rot270_##type(a, k, b); }   \
    OPS_INLINE vec mul(vec a, vec w) {                                                        \
        return vcmla##q##_rot90_##type(vcmla##q##_##type(vdup##q##_n_##type(0), a, w), a, w); \
    }                                                                                         \
    OPS_INLINE vec fma_complex(vec sum, vec a, vec w) {                                       \
        return vcmla##q##_rot90_##type(vcmla##q##_##type(sum, a, w), a, w);                   \
    }                                                                                         \
    OPS_INLINE vec fma_conjugate(vec sum, vec a, vec w) {                                     \
        return vcmla##q##_rot270_##type(vcmla##q##_##type(sum, a, w), a, w);                  \
    }
OPS_COMPLEX(float32x2_t, , f32)
OPS_COMPLEX(float32x4_t, q, f32)
OPS_COMPLEX(float64x2_t, q, f64)
#undef OPS_COMPLEX

OPS_INLINE float32x4_t mul(float32x4_t a, float32x2_t w) {
    return vcmlaq_rot90_lane_f32(vcmlaq_lane_f32(vdupq_n_f32(0), a, w, 0), a, w, 0);
}

#else

// (im, re) of each number, and its parts twice.
OPS_INLINE float32x2_t reversed(float32x2_t a) { return vrev64_f32(a); }
OPS_INLINE float32x4_t reversed(float32x4_t a) { return vrev64q_f32(a); }
OPS_INLINE float64x2_t reversed(float64x2_t a) { return vextq_f64(a, a, 1); }
OPS_INLINE float32x2_t real_parts(float32x2_t a) { return vdup_lane_f32(a, 0); }
OPS_INLINE float32x4_t real_parts(float32x4_t a) { return vtrn1q_f32(a, a); }
OPS_INLINE float64x2_t real_parts(float64x2_t a) { return vdupq_laneq_f64(a, 0); }
OPS_INLINE float32x2_t imaginary_parts(float32x2_t a) { return vdup_lane_f32(a, 1); }
OPS_INLINE float32x4_t imaginary_parts(float32x4_t a) { return vtrn2q_f32(a, a); }
OPS_INLINE float64x2_t imaginary_parts(float64x2_t a) { return vdupq_laneq_f64(a, 1); }

// (-1, 1): with reversed parts, the factor i.
OPS_INLINE float32x2_t turn(float32x2_t) { return vreinterpret_f32_u64(vdup_n_u64(0x3f800000bf800000)); }
OPS_INLINE float32x4_t turn(float32x4_t) { return vreinterpretq_f32_u64(vdupq_n_u64(0x3f800000bf800000)); }
OPS_INLINE float64x2_t turn(float64x2_t) { return float64x2_t{-1.0, 1.0}; }

// The two imaginary parts of k, with signs: what a reversed number is multiplied by. Of constants it is made once.
#define OPS_COMPLEX(vec, q, type)                                                                     \
    OPS_INLINE vec turned(vec k) { return vmul##q##_##type(imaginary_parts(k), turn(k)); }            \
    OPS_INLINE vec add_i(vec a, vec b) { return vfma##q##_##type(a, reversed(b), turn(b)); }          \
    OPS_INLINE vec sub_i(vec a, vec b) { return vfms##q##_##type(a, reversed(b), turn(b)); }          \
    OPS_INLINE vec fma_i(vec a, vec b, vec k) { return vfma##q##_##type(a, reversed(b), turned(k)); } \
    OPS_INLINE vec fms_i(vec a, vec b, vec k) { return vfms##q##_##type(a, reversed(b), turned(k)); } \
    OPS_INLINE vec mul(vec a, vec w) {                                                                \
        return vfma##q##_##type(vmul##q##_##type(a, real_parts(w)), reversed(a), turned(w));          \
    }                                                                                                 \
    OPS_INLINE vec fma_complex(vec sum, vec a, vec w) {                                               \
        return vfma##q##_##type(vfma##q##_##type(sum, real_parts(a), w), reversed(w), turned(a));     \
    }                                                                                                 \
    OPS_INLINE vec fma_conjugate(vec sum, vec a, vec w) {                                             \
        return vfms##q##_##type(vfma##q##_##type(sum, real_parts(a), w), reversed(w), turned(a));     \
    }
OPS_COMPLEX(float32x2_t, , f32)
OPS_COMPLEX(float32x4_t, q, f32)
OPS_COMPLEX(float64x2_t, q, f64)
#undef OPS_COMPLEX

OPS_INLINE float32x4_t mul(float32x4_t a, float32x2_t w) {
    return vfmaq_f32(vmulq_lane_f32(a, w, 0), reversed(a), vmulq_lane_f32(turn(a), w, 1));
}

#endif

}  // namespace neon_complex

#endif
