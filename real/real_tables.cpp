// SPDX-License-Identifier: Apache-2.0
#include "real/real_tables.h"

#include "dft/roots.h"

void real_half_table(float* table, uint64_t m) {
    twiddle_progression(-1, -1, 2 * static_cast<int64_t>(m), (m + 1) / 2, table);
}

void real_mirror_table(float* table, const float* half, uint64_t m) {
    for (uint64_t k = 0; k < m / 2; ++k) {
        table[2 * k] = 0.5f * (1 - half[2 * k + 1]);
        table[2 * k + 1] = 0.5f * half[2 * k];
    }
}

void real_quarter_table(float* table, uint64_t n) { twiddle_progression(0, -1, 4 * static_cast<int64_t>(n), n, table); }

void real_eighth_table(float* table, uint64_t c) { twiddle_progression(1, 2, 16 * static_cast<int64_t>(c), c, table); }
