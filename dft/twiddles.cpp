// SPDX-License-Identifier: Apache-2.0
#include "dft/twiddles.h"

#include "dft/sizes.h"
#include "kernels/level.h"

#include <cmath>
#include <utility>

void twiddle_unit(int64_t k, int64_t n, float* result) {
    // t counts quarters of the n-th part of a turn, so that n of them are a right angle.
    int64_t t = k % n * 4;
    if (t < 0) t += 4 * n;
    const bool conjugate = 4 * n - t < t;
    if (conjugate) t = 4 * n - t;
    const bool rotate = t - n > 0;
    if (rotate) t -= n;
    const bool exchange = n - t < t;
    if (exchange) t = n - t;

    // The angle is rounded to single precision on purpose: all tables of the library share these exact values.
    const float angle = static_cast<float>(static_cast<double>(t) * 6.283185307179586 / static_cast<double>(4 * n));
    double sine, cosine;
    sincos(static_cast<double>(angle), &sine, &cosine);
    float c = static_cast<float>(cosine), s = static_cast<float>(sine);
    if (exchange) std::swap(c, s);
    if (rotate) c = -std::exchange(s, c);
    result[0] = c;
    result[1] = conjugate ? -s : s;
}

namespace {

struct stage_shape {
    uint64_t n, r, m, L;
    int64_t sign;
};

// Row i, its column 1 at `entry` and each further column `step` entries on.
void fill_row(float* entry, uint64_t step, const stage_shape& s, uint64_t i) {
    const int64_t turn = turn_of_sign(s.sign) * static_cast<int64_t>(i * s.L);
    int64_t k = 0;
    for (uint64_t j = 1; j < s.r; ++j, entry += 2 * step) twiddle_unit(k += turn, s.n, entry);
}

// Rows from `first` on: full groups interleaved, the rest plain.
void fill_grouped(float* table, const stage_shape& s, uint64_t first, uint64_t group) {
    if (!table || s.r < 2) return;
    uint64_t i = first;
    for (; i + group <= s.m; i += group)
        for (uint64_t lane = 0; lane < group; ++lane) fill_row(table + 2 * (i * (s.r - 1) + lane), group, s, i + lane);
    for (; i < s.m; ++i) fill_row(table + 2 * i * (s.r - 1), 1, s, i);
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
