// SPDX-License-Identifier: Apache-2.0
// The vocabulary in which kernels are written, once per kind of vector. A vector `vec` holds complex numbers:
//   neon_one 1, neon_pair 2, sve_quad 4 (256 bits), sve_one 1 (in the two lowest lanes), scalar 1 (two floats).
//
//   load(p), store(p, v)              all lanes; with a mask in front, those that it enables
//   lanes_left(l, n), first_lanes(c)  masks: the floats from l to n, the first c complex numbers (SVE)
//   load(p, d), store(p, d, v)        one complex number at p, the other d floats further (pairs)
//   constant(p)                       a pair of the pool (k[0], k[1]) in every complex place
//   load_row(p)                       the twiddle of a whole row; mul(a, w) multiplies by it or by a vector
//   add sub add_i sub_i               a + b, a - b, a + i b, a - i b
//   scale<L>(a, k)                    k[L] a
//   fma<L> fms<L>                     a + k[L] b, a - k[L] b
//   fma_i fms_i                       a + i k[1] b, a - i k[1] b
//   zip_lo zip_hi unzip_even unzip_odd   permutations of complex numbers
//
// Off Arm every name is the same template over the number of lanes, from portable.h.
#pragma once

#include "kernels/ops/neon_one.h"
#include "kernels/ops/neon_pair.h"
#include "kernels/ops/scalar.h"
#include "kernels/ops/sve_one.h"
#include "kernels/ops/sve_quad.h"
