// SPDX-License-Identifier: Apache-2.0
// One complex number in the two lowest lanes of an SVE vector; the vector length doesn't matter.
#pragma once
#include "kernels/ops/sve_common.h"

#if defined(__aarch64__)

namespace sve_one {

using namespace sve_common;
using in_memory = floats_in_memory<2>;

OPS_INLINE mask two() { return svptrue_pat_b32(SV_VL2); }
OPS_INLINE vec load(const float* p) { return svld1_f32(two(), p); }
OPS_INLINE void store(float* p, vec a) { svst1_f32(two(), p, a); }
OPS_INLINE vec constant(const float* p) { return replicate(p); }
OPS_INLINE row_twiddle load_row(const float* p) { return load(p); }

}  // namespace sve_one

#else
#include "kernels/ops/portable.h"

namespace sve_one {

using namespace portable;
using vec = vector<1>;
using row_twiddle = vec;
using quad = vector<2>;
OPS_INLINE quad two_constants(const float* p) { return portable::load<2>(p); }
OPS_INLINE vec load(const float* p) { return portable::load<1>(p); }
OPS_INLINE vec constant(const float* p) { return portable::constant<1>(p); }
OPS_INLINE vec same(float k) { return portable::same<1>(k); }
OPS_INLINE row_twiddle load_row(const float* p) { return load(p); }

}  // namespace sve_one

#endif
