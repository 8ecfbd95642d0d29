// SPDX-License-Identifier: Apache-2.0
// The vocabulary in which kernels are written, once per kind of vector. A vector `vec` holds complex numbers:
//   neon_one 1, neon_pair 2, sve_quad 4 (256 bits), sve_one 1 (in the two lowest lanes), scalar 1 (two floats).
//
//   load(p), store(p, v)         all lanes; with a mask in front, those that it enables
//   lanes_left(l, n), all_lanes()   mask of the floats from l to n, of all
//   load(p, d), store(p, d, v)   one complex number at p, the other d floats further (pairs)
//   lanes_apart(d), load(p, o)   offsets of lanes d floats apart, a load of lanes at such offsets (SVE)
//   store(p, o, v)               a store of lanes at such offsets (SVE)
//   load_transposed(p), part<J>(v)   four vectors from 16 numbers in a row, number 4 i + J in lane i of part J (SVE)
//   load_backward(p)             the complex number at p and those in front of it, in descending order
//   but_imaginary_of_first()     mask of all but the imaginary part of element 0; ..._of_last: when loaded backward
//   conjugation()                1 and -1 in turn: fma_all and fms_all by it add and subtract a conjugate
//   constant(p), same(x)         a pair of the pool (k[0], k[1]) in every complex place, one float in all
//   two_constants(p)             two pairs of the pool in one register, taken by lanes 0 to 3
//   load_row(p)                  the twiddle of a whole row; mul(a, w) multiplies by it or by a vector
//   add sub add_i sub_i          a + b, a - b, a + i b, a - i b
//   scale<L>(a, k)               k[L] a
//   fma<L> fms<L>                a + k[L] b, a - k[L] b; fma_all fms_all: k is the same everywhere
//   fma_i fms_i                  a + i k[1] b, a - i k[1] b, by the k of each lane
//   constants(p), scale_all(a, k)   four floats of the pool, the product of floats (pairs)
//   twice_minus(a, b, two)       2 a - b; ..._into_b: the result takes b's register (SVE)
//   in_memory, reload(place)     a vector that is kept in memory, and the same once more (SVE)
//   zip_lo zip_hi                complex numbers of a and b in turn (pairs)
//
// Real data: real_one 1, real_quad 4, real_oct 8 (SVE, under masks); real_double and real_quad_double likewise,
// computed in double precision. load, store, add, sub, scale and fused operations as above, and
//   neg                          -a
//   store_complex(p, v)          numbers as complex ones without imaginary parts
//   load(p0..p3), store(...)     each lane at its own place; load_apart, store_apart: at equal distances
//   load_same, load_both         one number in all lanes, two in turn; store_low, store_lowest: two lanes, one lane
//   load_three, store_three      three adjacent numbers
//   constants(p)                 four numbers of the pool, one for each lane
//   load_reversed, store_reversed   the last number in the lowest lane; store_low_reversed likewise
//   interleave_lo/_hi, evens, odds, swap_halves, swap_pairs   exchanges of lanes, see generator/graph/dag.h
//
// Off Arm every name is the same template over the number of lanes, from portable.h.
#pragma once

#include "kernels/ops/neon_one.h"
#include "kernels/ops/neon_pair.h"
#include "kernels/ops/real_oct.h"
#include "kernels/ops/real_one.h"
#include "kernels/ops/real_quad.h"
#include "kernels/ops/real_quad_double.h"
#include "kernels/ops/scalar.h"
#include "kernels/ops/sve_one.h"
#include "kernels/ops/sve_quad.h"
