// SPDX-License-Identifier: Apache-2.0
// Four complex numbers in a 256-bit SVE vector. Loads and stores may run under a mask, arithmetic never does.
#pragma once
#include "kernels/ops/sve_common.h"

#if defined(__aarch64__)

namespace sve_quad {

using namespace sve_common;

OPS_INLINE mask lanes_left(int64_t l, int64_t n) { return svwhilelt_b32_s64(l, n); }
OPS_INLINE mask first_lanes(int count) { return svwhilelt_b32_s32(0, 2 * count); }
OPS_INLINE vec load(const float* p) { return svld1_f32(all(), p); }
OPS_INLINE vec load(mask m, const float* p) { return svld1_f32(m, p); }
OPS_INLINE void store(float* p, vec a) { svst1_f32(all(), p, a); }
OPS_INLINE void store(mask m, float* p, vec a) { svst1_f32(m, p, a); }
OPS_INLINE vec constant(const float* p) { return replicate(p); }
OPS_INLINE row_twiddle load_row(const float* p) { return replicate(p); }

OPS_INLINE svfloat64_t whole(vec a) { return svreinterpret_f64_f32(a); }
OPS_INLINE vec zip_lo(vec a, vec b) { return svreinterpret_f32_f64(svzip1_f64(whole(a), whole(b))); }
OPS_INLINE vec zip_hi(vec a, vec b) { return svreinterpret_f32_f64(svzip2_f64(whole(a), whole(b))); }
OPS_INLINE vec unzip_even(vec a, vec b) { return svreinterpret_f32_f64(svuzp1_f64(whole(a), whole(b))); }
OPS_INLINE vec unzip_odd(vec a, vec b) { return svreinterpret_f32_f64(svuzp2_f64(whole(a), whole(b))); }

}  // namespace sve_quad

#else
#include "kernels/ops/portable.h"

namespace sve_quad {

using namespace portable;
using vec = vector<4>;
using row_twiddle = vec;
using mask = int64_t;  // the number of leading floats
OPS_INLINE mask lanes_left(int64_t l, int64_t n) { return n - l < 8 ? n - l : 8; }
OPS_INLINE mask first_lanes(int count) { return 2 * count; }
OPS_INLINE vec load(const float* p) { return portable::load<4>(p); }
OPS_INLINE vec load(mask m, const float* p) { return portable::load<4>(p, m); }
OPS_INLINE void store(mask m, float* p, vec a) { portable::store(p, a, m); }
OPS_INLINE vec constant(const float* p) { return portable::constant<4>(p); }
OPS_INLINE row_twiddle load_row(const float* p) { return constant(p); }

}  // namespace sve_quad

#endif
