// SPDX-License-Identifier: Apache-2.0
// Discrete Fourier transforms of the kernel sizes, as formulas over numbers that record themselves: `value`, one node
// for a complex number, or `split_value`, two nodes for its parts. `sign` is the sign of the exponent.
#pragma once
#include "kernels/generator/graph/split_value.h"
#include "kernels/generator/graph/value.h"

namespace generator {

// Any kernel size. With a scale other than 1 the transform of a prime size takes it into its constants.
template <class number>
std::vector<number> butterfly(const std::vector<number>& x, int sign, const exact& scale = 1);

template <class number>
std::vector<number> prime_butterfly(const std::vector<number>& x, int sign, const exact& scale);
// Sizes a b with coprime factors: no twiddles, the index maps do it all (Good-Thomas).
template <class number>
std::vector<number> coprime_butterfly(const std::vector<number>& x, int a, int b, int sign);
// Sizes 3 b with the sine of 60 degrees folded into the constants of b.
template <class number>
std::vector<number> folded_three_butterfly(const std::vector<number>& x, int b, int sign);
// Sizes a b in general: b transforms of size a, roots of unity, a transforms of size b (Cooley-Tukey).
template <class number>
std::vector<number> common_butterfly(const std::vector<number>& x, int a, int b, int sign);
// Powers of two: one transform of the even elements and two of the odd ones, x[4 j + 1] and x[4 j - 1], whose roots of
// unity are conjugates of each other (Kamar and Elcherif 1989).
template <class number>
std::vector<number> conjugate_pair_butterfly(const std::vector<number>& x, int sign);

}  // namespace generator
