// SPDX-License-Identifier: Apache-2.0
#include "real/real_tables.h"

#include "dft/twiddles.h"

void real_half_table(float* table, uint64_t m) {
    const int64_t turn = 2 * static_cast<int64_t>(m);
    for (uint64_t k = 1; 2 * (k - 1) < m; ++k) twiddle_unit(-static_cast<int64_t>(k), turn, table + 2 * (k - 1));
}

void real_mirror_table(float* table, const float* half, uint64_t m) {
    for (uint64_t k = 0; k < m / 2; ++k) {
        table[2 * k] = 0.5f * (1 - half[2 * k + 1]);
        table[2 * k + 1] = 0.5f * half[2 * k];
    }
}

void real_quarter_table(float* table, uint64_t n) {
    const int64_t turn = 4 * static_cast<int64_t>(n);
    for (uint64_t k = 0; k < n; ++k) twiddle_unit(-static_cast<int64_t>(k), turn, table + 2 * k);
}

void real_eighth_table(float* table, uint64_t c) {
    const int64_t turn = 16 * static_cast<int64_t>(c);
    for (uint64_t j = 0; j < c; ++j) twiddle_unit(2 * static_cast<int64_t>(j) + 1, turn, table + 2 * j);
}
