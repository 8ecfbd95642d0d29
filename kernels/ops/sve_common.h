// SPDX-License-Identifier: Apache-2.0
// What both SVE vocabularies share: arithmetic on all lanes of a 256-bit vector.
#pragma once
#include "kernels/ops/inline.h"

#if defined(__ARM_FEATURE_SVE)
#include <arm_sve.h>

namespace sve_common {

using vec = svfloat32_t;
using row_twiddle = svfloat32_t;
using mask = svbool_t;
using pool_pairs = svfloat32_t;

OPS_INLINE mask all() { return svptrue_b32(); }
// Constants come by replicating loads, which cost no vector pipe. Compilers like to load the number once and replicate
// it in the vector pipes.
OPS_INLINE vec replicate(const float* p) {
    vec k;
    asm("ld1rd {%0.d}, %1/z, [%2]"
        : "=w"(k)
        : "Upl"(svptrue_b64()), "r"(p), "m"(*reinterpret_cast<const float(*)[2]>(p)));
    return k;
}

OPS_INLINE pool_pairs two_constants(const float* p) { return svld1rq_f32(all(), p); }
OPS_INLINE vec same(const float& in_memory) {
    vec k;
    asm("ld1rw {%0.s}, %1/z, [%2]" : "=w"(k) : "Upl"(all()), "r"(&in_memory), "m"(in_memory));
    return k;
}
OPS_INLINE vec same(float&& literal) { return svdup_n_f32(literal); }
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
// Which operand gives its register to the result is told to the compiler, which would choose by chance and copy.
#define OPS_OVERWRITING(name, instruction, overwritten, second, third)                                          \
    OPS_INLINE vec name(vec a, vec b, vec k) {                                                                  \
        asm(instruction " %0.s, %1/m, %2.s, %3.s" : "+w"(overwritten) : "Upl"(all()), "w"(second), "w"(third)); \
        return overwritten;                                                                                     \
    }
OPS_OVERWRITING(fma_all, "fmla", a, b, k)
OPS_OVERWRITING(fms_all, "fmls", a, b, k)
OPS_OVERWRITING(fma_all_into_b, "fmad", b, k, a)
OPS_OVERWRITING(fms_all_into_b, "fmsb", b, k, a)
OPS_OVERWRITING(twice_minus, "fnmsb", a, k, b)
OPS_OVERWRITING(twice_minus_into_b, "fnmls", b, a, k)
#undef OPS_OVERWRITING
OPS_INLINE vec conjugation() { return svreinterpret_f32_u64(svdup_n_u64(0xbf8000003f800000)); }
OPS_INLINE vec fma_i(vec a, vec b, vec k) { return svcmla_f32_x(all(), a, k, b, 90); }
OPS_INLINE vec fms_i(vec a, vec b, vec k) { return svcmla_f32_x(all(), a, k, b, 270); }

// The floats of a vector in memory, from which they may be loaded again and again: no compiler may take the loads for
// one.
template <int count>
struct floats_in_memory {
    float floats[count];
    OPS_MEMBER static mask used() { return count == 2 ? svptrue_pat_b32(SV_VL2) : all(); }
    OPS_MEMBER explicit floats_in_memory(vec a) { svst1_f32(used(), floats, a); }
};
template <int count>
OPS_INLINE vec reload(const floats_in_memory<count>& place) {
    vec a;
    asm volatile("ld1w {%0.s}, %1/z, [%2]" : "=w"(a) : "Upl"(place.used()), "r"(place.floats) : "memory");
    return a;
}

}  // namespace sve_common

#endif
