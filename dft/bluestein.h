// SPDX-License-Identifier: Apache-2.0
// Sizes and tables of Bluestein's algorithm for p points through transforms of M points.
#pragma once
#include <cstdint>

// The padded size M, at least 2 p - 1 and quick to transform.
uint64_t bluestein_padded_size(uint64_t p);

// chirp (p complex): c(k) = exp(pi i sign k^2 / p). kernel (M complex): conj(c(k)) / M at k and at M - k, zeros
// between.
void bluestein_tables_fill(float* chirp, float* kernel, uint64_t M, uint64_t p, int64_t sign);
