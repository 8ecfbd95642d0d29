// SPDX-License-Identifier: Apache-2.0
// Discrete Fourier transforms in double precision to compare results with: unnormalised, `sign` -1 forward, any other
// backward. Relative error about 1e-16 times the square root of the logarithm of the length.
#pragma once
#include <complex>
#include <cstddef>
#include <vector>

namespace reference {

using complex = std::complex<double>;

// exp(sign 2 pi i k / n) for 0 <= k < n, from an angle of the first octant.
complex root_of_unity(size_t k, size_t n, int sign);

// By the definition, n^2 operations.
std::vector<complex> dft_by_sum(const std::vector<complex>& x, int sign);

// Any length in about n log n operations: Cooley-Tukey over the prime factors, Bluestein for large primes.
std::vector<complex> dft(const std::vector<complex>& x, int sign);

// The transform of the other direction, from the one that is known already: the same values in reverse order.
std::vector<complex> other_direction(const std::vector<complex>& spectrum);

}  // namespace reference
