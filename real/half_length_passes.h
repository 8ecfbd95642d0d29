// SPDX-License-Identifier: Apache-2.0
// The passes that turn a complex transform of length m into a real transform of length n = 2m and back (Cooley, Lewis
// and Welch, "The fast Fourier transform algorithm: programming considerations in the calculation of sine, cosine and
// Laplace transforms", 1970). `table` is real_half_table(m) with a mirror table behind it, which the post pass wants
// downwards, the pre pass upwards; strides count complex elements; all passes work in place.
#pragma once
#include <cstdint>

// Post pass of r2c: from Y, the transform of the m pairs (x[2j], x[2j + 1]), to the m + 1 coefficients X of x.
//   X[k] = (Y[k] + conj Y[m - k]) / 2 - i w (Y[k] - conj Y[m - k]) / 2 with w = exp(-i pi k / m)
void r2c_post_pass(const float* y, float* x, const float* table, uint64_t m, int64_t os);
// Its two parts: coefficients 0 and m, and the pairs (k, m - k) for k from `first` to `last`, inclusive.
void r2c_post_ends(const float* y, float* x, uint64_t m, int64_t os);
void r2c_post_range(const float* y, float* x, const float* table, uint64_t m, int64_t os, uint64_t first,
                    uint64_t last);

// Pre pass of c2r: from the m + 1 coefficients Z, read at stride `is`, to C, whose backward transform of length m is
// the real result read as pairs. The imaginary parts of Z[0] and Z[m] are not read.
void c2r_pre_pass(const float* z, float* c, const float* table, uint64_t m, int64_t is);
void c2r_pre_ends(const float* z, float* c, uint64_t m, int64_t is);
void c2r_pre_range(const float* z, float* c, const float* table, uint64_t m, int64_t is, uint64_t first, uint64_t last);
