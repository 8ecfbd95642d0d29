// SPDX-License-Identifier: Apache-2.0
// One complex number in the two lowest lanes of an SVE vector; the vector length doesn't matter. Without SVE, in a
// NEON vector.
#pragma once
#include "kernels/ops/sve_common.h"

#if defined(__ARM_FEATURE_SVE)

namespace sve_one {

using namespace sve_common;
using in_memory = floats_in_memory<2>;

OPS_INLINE mask two() { return svptrue_pat_b32(SV_VL2); }
OPS_INLINE vec load(const float* p) { return svld1_f32(two(), p); }
OPS_INLINE void store(float* p, vec a) { svst1_f32(two(), p, a); }
OPS_INLINE vec constant(const float* p) { return replicate(p); }
OPS_INLINE row_twiddle load_row(const float* p) { return load(p); }

}  // namespace sve_one

#elif defined(__aarch64__)
#include "kernels/ops/neon_one.h"

namespace sve_one {

using namespace neon_one;
using in_memory = vec;
OPS_INLINE vec reload(vec place) { return place; }
OPS_INLINE vec fma_all_into_b(vec a, vec b, vec k) { return fma_all(a, b, k); }
OPS_INLINE vec fms_all_into_b(vec a, vec b, vec k) { return fms_all(a, b, k); }
OPS_INLINE vec twice_minus(vec a, vec b, vec two) { return vsub_f32(vmul_f32(a, two), b); }
OPS_INLINE vec twice_minus_into_b(vec a, vec b, vec two) { return twice_minus(a, b, two); }

}  // namespace sve_one

#else
#include "kernels/ops/portable.h"

namespace sve_one {

using namespace portable;
using vec = vector<1>;
using row_twiddle = vec;
using pool_pairs = vector<2>;
OPS_INLINE pool_pairs two_constants(const float* p) { return portable::load<2>(p); }
OPS_INLINE vec load(const float* p) { return portable::load<1>(p); }
OPS_INLINE vec constant(const float* p) { return portable::constant<1>(p); }
OPS_INLINE vec same(float k) { return portable::same<1>(k); }
OPS_INLINE row_twiddle load_row(const float* p) { return load(p); }

}  // namespace sve_one

#endif
