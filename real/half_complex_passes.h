// SPDX-License-Identifier: Apache-2.0
// Passes between a complex transform and a packed real spectrum of n floats: the half-complex form, H[k] = Re X[k] and
// H[n - k] = Im X[k], or the Hartley form, H[k] = Re X[k] - Im X[k]. Strides count floats; `table` is
// real_half_table(n / 2) with the mirror table behind it.
#pragma once
#include <cstdint>

// From Y, the transform of the m = n / 2 pairs (x[2j], x[2j + 1]), to the packed spectrum of x. Y and H are different
// arrays.
void r2hc_post_pass(const float* y, float* h, const float* table, int64_t m, int64_t os);
void dht_post_pass(const float* y, float* h, const float* table, int64_t m, int64_t os);

// From H to C, whose backward transform of length m is the real result read as pairs.
void hc2r_pre_pass(float* c, const float* h, const float* table, int64_t m, int64_t is);

// From Y, the transform of the pair (row a, row b), to the half-complex forms of both rows.
void pair_split_r2hc(float* a, float* b, const float* y, int64_t n, int64_t os);

// Odd lengths: from the whole complex spectrum to the packed form, and from the half-complex form to the spectrum.
void pack_half_complex(const float* y, float* h, int64_t n, int64_t os);
void pack_hartley(const float* y, float* h, int64_t n, int64_t os);
void unpack_half_complex(float* y, const float* h, int64_t n, int64_t is);
