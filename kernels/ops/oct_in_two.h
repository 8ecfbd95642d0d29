// SPDX-License-Identifier: Apache-2.0
// Eight real numbers in two NEON registers, where there is no SVE of 256 bits: the vocabulary of real_oct.h on the
// halves. The look-ups prefer kernels without masks.
#pragma once
#include "kernels/ops/quad_in_two.h"
#include "kernels/ops/real_quad.h"

namespace real_oct {

using sve_quad::add;
using sve_quad::fma;
using sve_quad::fma_all;
using sve_quad::fma_all_into_b;
using sve_quad::fms;
using sve_quad::fms_all;
using sve_quad::fms_all_into_b;
using sve_quad::in_memory;
using sve_quad::pool_pairs;
using sve_quad::reload;
using sve_quad::same;
using sve_quad::scale;
using sve_quad::sub;
using sve_quad::twice_minus;
using sve_quad::twice_minus_into_b;
using sve_quad::two_constants;
using sve_quad::vec;

using mask = int64_t;  // the number of leading floats; below 0 none
OPS_INLINE mask lanes_left(int64_t l, int64_t n) { return n - l < 8 ? n - l : 8; }
OPS_INLINE vec load(mask m, const float* p) { return sve_quad::load(sve_quad::mask{m}, p); }
OPS_INLINE void store(mask m, float* p, vec a) { sve_quad::store(sve_quad::mask{m}, p, a); }
OPS_INLINE vec neg(vec a) { return {real_quad::neg(a.lo), real_quad::neg(a.hi)}; }
OPS_INLINE vec evens(vec a, vec b) { return {real_quad::evens(a.lo, a.hi), real_quad::evens(b.lo, b.hi)}; }
OPS_INLINE vec odds(vec a, vec b) { return {real_quad::odds(a.lo, a.hi), real_quad::odds(b.lo, b.hi)}; }
OPS_INLINE void store_complex(mask m, float* p, vec a) {
    float floats[8];
    sve_quad::store(floats, a);
    for (int i = 0; i < 8 && i < m; ++i) p[2 * i] = floats[i], p[2 * i + 1] = 0;
}

}  // namespace real_oct
