// SPDX-License-Identifier: Apache-2.0
// Two real rows as the real and the imaginary part of one complex row of the same length n, and back by symmetry.
// Real rows are strided in floats, coefficients in complex elements; the complex row is contiguous.
#pragma once
#include <cstdint>

// pair[j] = (row_a[j], row_b[j]), and back.
void pair_interleave(const float* row_a, const float* row_b, float* pair, int64_t n, int64_t stride);
void pair_deinterleave(const float* pair, float* row_a, float* row_b, int64_t n, int64_t stride);

// From Y, the transform of a pair, the n / 2 + 1 coefficients of each row:
//   A[k] = (Y[k] + conj Y[n - k]) / 2, B[k] = (Y[k] - conj Y[n - k]) / 2i, with Y[n] taken as Y[0]
void pair_split_r2c(float* a, float* b, const float* y, int64_t n, int64_t os);

// C[k] = A[k] + i B[k] for all n coefficients, the upper half by symmetry. The imaginary parts of coefficient 0 and,
// for an even n, n / 2 are not read.
void pair_merge_c2r(float* c, const float* a, const float* b, int64_t n, int64_t is);
