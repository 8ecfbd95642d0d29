// SPDX-License-Identifier: Apache-2.0
// The three trigonometric tables of the real transforms: plain arrays of complex floats, one twiddle_unit each.
#pragma once
#include <cstdint>

// Entry k - 1 holds exp(-i pi k / m), for k from 1 while 2 (k - 1) is below m.
void real_half_table(float* table, uint64_t m);
// Entry k - 1 holds (1 + i w) / 2 with w = exp(-i pi k / m), for k from 1 to m / 2, made from a half table. The room
// for m entries that a half table of m gets has exactly this table's place behind its own entries.
void real_mirror_table(float* table, const float* half, uint64_t m);
// The same from k = m / 2 down to 1.
void real_mirror_table_down(float* table, const float* half, uint64_t m);
inline float* mirror_table_behind(float* half, uint64_t m) { return half + 2 * ((m + 1) / 2); }
inline const float* mirror_table_behind(const float* half, uint64_t m) { return half + 2 * ((m + 1) / 2); }
// Entry k holds exp(-i pi k / (2n)), for k below n.
void real_quarter_table(float* table, uint64_t n);
// Entry j holds exp(+i pi (2j + 1) / (8c)), for j below c.
void real_eighth_table(float* table, uint64_t c);
