// SPDX-License-Identifier: Apache-2.0
// Discrete Fourier transforms of the kernel sizes, as formulas over numbers that record themselves: `value`, one node
// for a complex number, or `split_value`, two nodes for its parts. `sign` is the sign of the exponent.
#pragma once
#include "kernels/generator/graph/split_value.h"
#include "kernels/generator/graph/value.h"

namespace generator {

// Any size that has a method. With a scale other than 1 the transform of a prime size takes it into its constants.
template <class number>
std::vector<number> butterfly(const std::vector<number>& x, int sign, const exact& scale = 1);

// The methods: see formulas/sizes.h, and the file of each.
template <class number>
std::vector<number> prime_butterfly(const std::vector<number>& x, int sign, const exact& scale);
template <class number>
std::vector<number> coprime_butterfly(const std::vector<number>& x, int a, int b, int sign);
template <class number>
std::vector<number> folded_three_butterfly(const std::vector<number>& x, int b, int sign);
template <class number>
std::vector<number> common_butterfly(const std::vector<number>& x, int a, int b, int sign);
template <class number>
std::vector<number> conjugate_pair_butterfly(const std::vector<number>& x, int sign);

}  // namespace generator
