// SPDX-License-Identifier: Apache-2.0
#include "real/real_tables.h"

#include "dft/roots.h"

void real_half_table(float* table, uint64_t m) {
    twiddle_progression(-1, -1, 2 * static_cast<int64_t>(m), (m + 1) / 2, table);
}

namespace {

void put_mirror(float* entry, const float* half) {
    entry[0] = 0.5f * (1 - half[1]);
    entry[1] = 0.5f * half[0];
}

}  // namespace

void real_mirror_table(float* table, const float* half, uint64_t m) {
    for (uint64_t k = 0; k < m / 2; ++k) put_mirror(table + 2 * k, half + 2 * k);
}

void real_mirror_table_down(float* table, const float* half, uint64_t m) {
    for (uint64_t k = 0; k < m / 2; ++k) put_mirror(table + 2 * (m / 2 - 1 - k), half + 2 * k);
}

void real_quarter_table(float* table, uint64_t n) { twiddle_progression(0, -1, 4 * static_cast<int64_t>(n), n, table); }

void real_eighth_table(float* table, uint64_t c) { twiddle_progression(1, 2, 16 * static_cast<int64_t>(c), c, table); }
