// SPDX-License-Identifier: Apache-2.0
#include "dft/twiddles.h"

#include "dft/sizes.h"
#include "kernels/level.h"

namespace {

struct stage_shape {
    uint64_t n, r, m, L;
    int64_t sign;
};

// Rows from `first` on: full groups interleaved, the rest plain.
void fill_grouped(float* table, const stage_shape& s, uint64_t first, uint64_t group) {
    if (!table || s.r < 2 || s.m <= first) return;
    const root_circle roots(s.n, s.L, s.sign);
    const auto row = [&](uint64_t i) { return table + 2 * i * (s.r - 1); };
    uint64_t i = first;
    for (; i + group <= s.m; i += group)
        if (group == 4)
            roots.take_four_rows(i, 1, s.r, row(i));
        else
            for (uint64_t lane = 0; lane < group; ++lane) roots.take_row(i + lane, 1, s.r, row(i) + 2 * lane, group);
    for (; i < s.m; ++i) roots.take_row(i, 1, s.r, row(i), 1);
}

bool runs_across_rows(uint64_t r, uint64_t L, const uint64_t* sizes, int count) {
    return L == 1 && factor_list_contains(r, sizes, count);
}

}  // namespace

void twiddle_fill_rows(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign) {
    fill_grouped(table, {n, r, m, L, sign}, 0, 1);
}

void twiddle_fill_lanes2(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign) {
    fill_grouped(table, {n, r, m, L, sign}, 0, 2);
}

void twiddle_fill_lanes4(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign) {
    fill_grouped(table, {n, r, m, L, sign}, 0, 4);
}

void twiddle_fill_row0_pairs(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign) {
    fill_grouped(table, {n, r, m, L, sign}, 1, 2);
}

void twiddle_fill_last_neon(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign) {
    const bool across = runs_across_rows(r, L, radix_order_main, radix_order_main_count);
    (across ? twiddle_fill_lanes2 : twiddle_fill_rows)(table, n, r, m, L, sign);
}

void twiddle_fill_last_sve(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign) {
    if constexpr (!has_registers_of_four) return twiddle_fill_last_neon(table, n, r, m, L, sign);
    const bool across = runs_across_rows(r, L, radix_order_main, radix_order_main_count);
    (across ? twiddle_fill_lanes4 : twiddle_fill_rows)(table, n, r, m, L, sign);
}

void twiddle_fill_sorensen_neon(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign) {
    const bool across = runs_across_rows(r, L, radix_order_sorensen, radix_order_sorensen_count);
    (across ? twiddle_fill_row0_pairs : twiddle_fill_rows)(table, n, r, m, L, sign);
}

void twiddle_fill_sorensen_sve(float* table, uint64_t n, uint64_t r, uint64_t m, uint64_t L, int64_t sign) {
    if constexpr (!has_registers_of_four) return twiddle_fill_sorensen_neon(table, n, r, m, L, sign);
    const bool across = runs_across_rows(r, L, radix_order_sorensen, radix_order_sorensen_count);
    (across ? twiddle_fill_lanes4 : twiddle_fill_rows)(table, n, r, m, L, sign);
}
