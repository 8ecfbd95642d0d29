// SPDX-License-Identifier: Apache-2.0
// Transforms of real sequences and of Hermitian spectra, as formulas. A spectrum of n real numbers is given by its
// coefficients 0 to n / 2; those that are real (0, and n / 2 of an even n) have no `im`.
#pragma once
#include "kernels/generator/graph/split_value.h"

namespace generator {

// Of any size that has a method: X[k] = sum over j of x[j] exp(-2 pi i j k / n), for k <= n / 2.
split_values real_butterfly(const values& x);
// x[j] = sum over all k < n of X[k] exp(2 pi i j k / n).
values hermitian_butterfly(const split_values& spectrum, int n);

// Coefficient k of the whole spectrum, from its stored half and into it.
inline split_value coefficient(const split_values& spectrum, int n, int k) {
    return 2 * k <= n ? spectrum[k] : conjugate(spectrum[n - k]);
}
inline void put_coefficient(split_values& spectrum, int n, int k, split_value v) {
    spectrum[2 * k <= n ? k : n - k] = 2 * k <= n ? v : conjugate(v);
}

// A method for sizes a b with coprime factors.
split_values coprime_real_butterfly(const values& x, int a, int b);
values coprime_hermitian_butterfly(const split_values& spectrum, int a, int b);

// As the first two, at odd multiples of half the frequency step: F[q] = sum over j of x[j] exp(-pi i j (2 q + 1) / n),
// for q <= (n - 1) / 2, of which the last is real for an odd n; and x[j] = sum over all q < n of F[q] exp(pi i j (2 q +
// 1) / n).
split_values odd_real_butterfly(const values& x);
values odd_hermitian_butterfly(const split_values& spectrum, int n);

// The type I cosine transform of n + 1 numbers: x[0] + (-1)^k x[n] + 2 sum over 0 < j < n of x[j] cos(pi j k / n).
values cosine_butterfly(const values& x);

}  // namespace generator
