// SPDX-License-Identifier: Apache-2.0
// Discrete Fourier transforms of the kernel sizes, as formulas. `sign` is the sign of the exponent.
#pragma once
#include "kernels/generator/value.h"

namespace generator {

// Any kernel size. With a scale other than 1 the transform of a prime size takes it into its constants.
values butterfly(const values& x, int sign, long double scale = 1);

values prime_butterfly(const values& x, int sign, long double scale);
// Sizes a b with coprime factors: no twiddles, the index maps do it all (Good-Thomas).
values coprime_butterfly(const values& x, int a, int b, int sign);
// Sizes 3 b with the sine of 60 degrees folded into the constants of b.
values folded_three_butterfly(const values& x, int b, int sign);
// Sizes a b in general: b transforms of size a, roots of unity, a transforms of size b (Cooley-Tukey).
values common_butterfly(const values& x, int a, int b, int sign);

}  // namespace generator
