// SPDX-License-Identifier: Apache-2.0
// What both SVE vocabularies share: arithmetic on all lanes of a 256-bit vector.
#pragma once
#include "kernels/ops/inline.h"

#if defined(__aarch64__)
#include <arm_sve.h>

namespace sve_common {

using vec = svfloat32_t;
using row_twiddle = svfloat32_t;
using mask = svbool_t;
using quad = svfloat32_t;

OPS_INLINE mask all() { return svptrue_b32(); }
OPS_INLINE vec replicate(const float* p) {
    return svreinterpret_f32_u64(svdup_n_u64(*reinterpret_cast<const uint64_t*>(p)));
}

OPS_INLINE quad two_constants(const float* p) { return svld1rq_f32(all(), p); }
OPS_INLINE vec same(float k) { return svdup_n_f32(k); }
// A fresh zero from the short form, which costs no vector pipe; compilers would copy one that they keep.
OPS_INLINE vec zero() {
    vec z;
    asm volatile("movi %d0, #0" : "=w"(z));
    return z;
}

OPS_INLINE vec mul(vec a, vec w) { return svcmla_f32_x(all(), svcmla_f32_x(all(), zero(), a, w, 0), a, w, 90); }
OPS_INLINE vec add(vec a, vec b) { return svadd_f32_x(all(), a, b); }
OPS_INLINE vec sub(vec a, vec b) { return svsub_f32_x(all(), a, b); }
OPS_INLINE vec add_i(vec a, vec b) { return svcadd_f32_x(all(), a, b, 90); }
OPS_INLINE vec sub_i(vec a, vec b) { return svcadd_f32_x(all(), a, b, 270); }
template <int lane>
OPS_INLINE vec scale(vec a, vec k) {
    return svmul_lane_f32(a, k, lane);
}
template <int lane>
OPS_INLINE vec fma(vec a, vec b, vec k) {
    return svmla_lane_f32(a, b, k, lane);
}
template <int lane>
OPS_INLINE vec fms(vec a, vec b, vec k) {
    return svmls_lane_f32(a, b, k, lane);
}
OPS_INLINE vec fma_all(vec a, vec b, vec k) { return svmla_f32_x(all(), a, b, k); }
OPS_INLINE vec fms_all(vec a, vec b, vec k) { return svmls_f32_x(all(), a, b, k); }
OPS_INLINE vec twice_minus(vec a, vec b, vec two) { return svnmsb_f32_x(all(), a, two, b); }
OPS_INLINE vec conjugation() { return svreinterpret_f32_u64(svdup_n_u64(0xbf8000003f800000)); }
OPS_INLINE vec fma_i(vec a, vec b, vec k) { return svcmla_f32_x(all(), a, k, b, 90); }
OPS_INLINE vec fms_i(vec a, vec b, vec k) { return svcmla_f32_x(all(), a, k, b, 270); }

}  // namespace sve_common

#endif
