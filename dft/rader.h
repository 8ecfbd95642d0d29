// SPDX-License-Identifier: Apache-2.0
// Tables of Rader's algorithm for a prime p, with q = p - 1, g the smallest primitive root of p and h its inverse.
#pragma once
#include <cstdint>

// For i < q: perm_in[i] = g^i and perm_out[i] = h^i modulo p, and entry i of the kernel table is
// exp(2 pi i sign h^i / p) / q.
void rader_tables_fill(float* kernel_table, uint64_t p, int64_t sign, uint64_t* perm_in, uint64_t* perm_out);
