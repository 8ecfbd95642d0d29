// SPDX-License-Identifier: Apache-2.0
// Eight real numbers in a 256-bit SVE vector, under a mask of the numbers that are there.
#pragma once
#include "kernels/ops/sve_common.h"

#if defined(__ARM_FEATURE_SVE)

namespace real_oct {

using namespace sve_common;
using in_memory = floats_in_memory<8>;

OPS_INLINE mask lanes_left(int64_t l, int64_t n) { return svwhilelt_b32_s64(l, n); }
OPS_INLINE vec load(mask m, const float* p) { return svld1_f32(m, p); }
OPS_INLINE void store(mask m, float* p, vec a) { svst1_f32(m, p, a); }
OPS_INLINE void store_complex(mask m, float* p, vec a) { svst2_f32(m, p, svcreate2_f32(a, svdup_n_f32(0))); }
OPS_INLINE vec neg(vec a) { return svneg_f32_x(all(), a); }
OPS_INLINE vec evens(vec a, vec b) { return svuzp1_f32(a, b); }
OPS_INLINE vec odds(vec a, vec b) { return svuzp2_f32(a, b); }

}  // namespace real_oct

#elif defined(__aarch64__)
#include "kernels/ops/oct_in_two.h"
#else
#include "kernels/ops/portable.h"

namespace real_oct {

using namespace portable;
using vec = vector<4>;
using pool_pairs = vector<2>;
using mask = int64_t;  // the number of leading floats
OPS_INLINE mask lanes_left(int64_t l, int64_t n) { return n - l < 8 ? (n > l ? n - l : 0) : 8; }
OPS_INLINE pool_pairs two_constants(const float* p) { return portable::load<2>(p); }
OPS_INLINE vec same(float k) { return portable::same<4>(k); }
OPS_INLINE vec load(mask m, const float* p) { return portable::load<4>(p, m); }
OPS_INLINE void store(mask m, float* p, vec a) { portable::store(p, a, m); }
OPS_INLINE void store_complex(mask m, float* p, vec a) {
    for (int i = 0; i < m; ++i) p[2 * i] = a.v[i], p[2 * i + 1] = 0;
}
OPS_INLINE vec neg(vec a) { return {-a.v}; }
OPS_INLINE vec evens(vec a, vec b) { return {__builtin_shufflevector(a.v, b.v, 0, 2, 4, 6, 8, 10, 12, 14)}; }
OPS_INLINE vec odds(vec a, vec b) { return {__builtin_shufflevector(a.v, b.v, 1, 3, 5, 7, 9, 11, 13, 15)}; }

}  // namespace real_oct

#endif
