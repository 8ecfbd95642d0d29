// SPDX-License-Identifier: Apache-2.0
// The tables of roots of unity that stage kernels stream.
//
// A stage of radix r with m rows (the product of the radices in front of it) and L columns (the product of those behind
// it) multiplies element j of row i by w(i, j) = exp(2 pi i sign i j L / n), for i < m and 1 <= j < r. Every layout
// takes (r - 1) m complex entries and holds the same values to the bit; a row outside the full groups stands at its
// plain place. Nothing is written for a null table, for m of 0 or for r below 2.
#pragma once
#include "dft/roots.h"

#include <cstdint>

// plain rows: w(i, j) at entry i (r - 1) + (j - 1)
void twiddle_fill_rows(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
// rows in groups of two or four whose entries of one column stand together: row i of the group that starts with row g
// has w(i, j) at entry g (r - 1) + group size (j - 1) + (i - g)
void twiddle_fill_lanes2(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
void twiddle_fill_lanes4(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
// row 0 left as it is, then groups of two
void twiddle_fill_row0_pairs(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);

// The layout that the contiguous last-stage kernels of an instruction set read.
void twiddle_fill_last_neon(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
void twiddle_fill_last_sve(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
// The same for the chain of Hermitian stages.
void twiddle_fill_sorensen_neon(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
void twiddle_fill_sorensen_sve(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
