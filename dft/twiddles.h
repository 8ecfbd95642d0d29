// SPDX-License-Identifier: Apache-2.0
// Roots of unity and the tables that stage kernels stream. A table of radix r with `done` m and `rest` L holds
// w(i, j) = exp(2 pi i sign i j L / n) for i < m, 1 <= j < r, in (r - 1) m complex entries.
#pragma once
#include <cstdint>

// Stores exp(2 pi i k / n) as (real, imaginary), exact in its octant symmetry.
void twiddle_unit(int64_t k, int64_t n, float* result);

// plain rows: w(i, j) at entry i (r - 1) + (j - 1)
void twiddle_fill_rows(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
// rows in pairs, in fours, and row 0 left alone with pairs behind it; rows behind the last full group are plain
void twiddle_fill_lanes2(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
void twiddle_fill_lanes4(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
void twiddle_fill_row0_pairs(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
// the layout that the contiguous last-stage kernels of an instruction set read
void twiddle_fill_last_neon(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
void twiddle_fill_last_sve(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
void twiddle_fill_sorensen_neon(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
void twiddle_fill_sorensen_sve(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign);
