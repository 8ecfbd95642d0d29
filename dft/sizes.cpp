// SPDX-License-Identifier: Apache-2.0
#include "dft/sizes.h"

#include "dft/schedule_tables.h"

#include <algorithm>
#include <bit>
#include <cmath>

const uint64_t radix_order_main[radix_order_main_count] = {64, 32, 16, 37, 31, 29, 24, 23, 21, 20, 19, 18, 17, 15,
                                                           14, 13, 12, 11, 10, 8,  7,  6,  5,  4,  2,  9,  3};
const uint64_t radix_order_sorensen[radix_order_sorensen_count] = {32, 16, 12, 8, 7, 5, 4, 3, 2};

namespace {

// An odd prime p divides n exactly when n times the inverse of p modulo 2^64 is at most (2^64 - 1) / p, and that
// product is then the quotient: one multiplication in place of a division.
struct odd_divisor {
    uint64_t inverse, greatest_quotient;
    consteval odd_divisor(uint64_t p) : inverse(p), greatest_quotient(UINT64_MAX / p) {
        for (int i = 0; i < 6; ++i) inverse *= 2 - p * inverse;  // Newton's iteration doubles the correct bits
    }
};
constexpr odd_divisor odd_kernel_primes[] = {3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37};

template <int rows>
const schedule_row* find_row(const schedule_row (&table)[rows], uint64_t n) {
    const schedule_row* row = std::find_if(table, table + rows, [n](const schedule_row& r) { return r.size == n; });
    return row != table + rows && row->stage_count > 0 ? row : nullptr;
}

void take_row(const schedule_row& row, radix_schedule_result* result, uint64_t* radices) {
    std::copy_n(row.radices, schedule_row_radices, radices);
    *result = {row.stage_count, 1};
}

}  // namespace

int has_large_prime_factor(uint64_t n) {
    if (n < 2) return 0;
    n >>= std::countr_zero(n);
    for (const odd_divisor& p : odd_kernel_primes)
        for (uint64_t quotient; (quotient = n * p.inverse) <= p.greatest_quotient;) n = quotient;
    return n > 1;
}

int is_prime(uint64_t n) {
    const uint64_t root = static_cast<uint64_t>(std::sqrt(static_cast<double>(n)));
    if (root < 2) return 1;
    for (uint64_t d = 2; d <= root; ++d)
        if (n % d == 0) return 0;
    return 1;
}

int is_power_of_two(uint64_t n) { return (n & (n - 1)) == 0; }

int factor_list_contains(uint64_t n, const uint64_t* list, int count) {
    return std::find(list, list + count, n) != list + count;
}

uint64_t factor_list_strip(uint64_t n, const uint64_t* list, int count) {
    if (n == 0) return 0;
    for (bool divided = true; divided;) {
        divided = false;
        for (int i = 0; i < count; ++i)
            if (n % list[i] == 0) {
                n /= list[i];
                divided = true;
            }
    }
    return n;
}

uint64_t factor_greedy(uint64_t n, uint64_t* radices, const uint64_t* list, int count) {
    uint64_t stages = 0;
    while (n > 1) {
        const uint64_t* radix = std::find_if(list, list + count, [n](uint64_t r) { return n % r == 0; });
        if (radix == list + count) {
            std::copy_backward(radices, radices + stages, radices + stages + 1);
            radices[0] = n;
            return stages + 1;
        }
        radices[stages++] = *radix;
        n /= *radix;
    }
    return stages;
}

bool is_batch_of_lanes(const fft_plan& plan, int64_t lanes) {
    return plan.howmany_rank == 1 && plan.rank == 1 && (plan.kind == kind_c2c || plan.kind == kind_c2c_large_piece) &&
           plan.howmany[0].n == lanes && !has_large_prime_factor(plan.dims[0].n) && plan.howmany[0].is == 1 &&
           plan.howmany[0].os == 1;
}

void radix_schedule(const fft_plan* plan, radix_schedule_result* result, uint64_t n, uint64_t* radices) {
    if (!result || !radices || n == 0) return;
    if (is_batch_of_lanes(*plan, 4))
        if (const schedule_row* row = find_row(schedule_table_batch4, n)) return take_row(*row, result, radices);
    if (const schedule_row* row = find_row(schedule_table_main, n)) return take_row(*row, result, radices);
    *result = {factor_greedy(n, radices, radix_order_main, radix_order_main_count), 1};
}

void sorensen_radix_schedule(radix_schedule_result* result, uint64_t n, uint64_t* radices) {
    if (!result || !radices || n == 0) return;
    if (const schedule_row* row = find_row(schedule_table_sorensen, n)) return take_row(*row, result, radices);
    *result = {factor_greedy(n, radices, radix_order_sorensen, radix_order_sorensen_count), 1};
}

uint64_t problem_total_bytes(const fft_plan* plan) {
    const int last = plan->rank > 1 ? plan->rank - 1 : 0;
    // With no dimension at all there is one element.
    const uint64_t n = plan->rank > 0 ? plan->dims[last].n : 1;
    uint64_t bytes = n * 8;
    if (plan->kind == kind_c2r || plan->kind == kind_r2c) bytes = (n / 2 + 1) * 8;
    if (plan->kind == kind_r2r) bytes = n * 4;
    for (int i = 0; i < last; ++i) bytes *= plan->dims[i].n;
    return bytes;
}
