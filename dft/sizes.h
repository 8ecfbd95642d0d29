// SPDX-License-Identifier: Apache-2.0
// Number theory of the planner: which sizes the kernels cover and into which radices a size is cut.
#pragma once
#include "record/fft_plan.h"

// The orders in which a greedy cut tries the kernel sizes. They follow measurements, not a sorted rule.
constexpr int radix_order_main_count = 27;
extern const uint64_t radix_order_main[radix_order_main_count];
constexpr int radix_order_sorensen_count = 9;
extern const uint64_t radix_order_sorensen[radix_order_sorensen_count];

// One order of radices. A cut has at most 63 radices, since each is at least 2.
constexpr int radix_list_words = 64;

struct radix_schedule_result {
    uint64_t stage_count;
    uint64_t list_count;  // 1 where a schedule was found
};

// 1 when n has a prime factor above 37, so that no product of kernel sizes makes it.
int has_large_prime_factor(uint64_t n);
// Trial division. 0, 1, 2 and 3 count as prime.
int is_prime(uint64_t n);
// 0 counts as a power of two.
int is_power_of_two(uint64_t n);
int factor_list_contains(uint64_t n, const uint64_t* list, int count);
// What remains of n after all listed factors are divided out.
uint64_t factor_list_strip(uint64_t n, const uint64_t* list, int count);
// Cuts n greedily by the list; a residue goes to the front. Returns the number of stages, 0 for n below 2.
uint64_t factor_greedy(uint64_t n, uint64_t* radices, const uint64_t* list, int count);

// A batch of `lanes` smooth transforms whose elements stand side by side: one vector holds the same index of all.
bool is_batch_of_lanes(const fft_plan& plan, int64_t lanes);

// The radices of n in order of execution: a tuned cut where the tables have one, else the greedy cut. Nothing is
// written when `result` or `radices` is null or n is 0.
void radix_schedule(const fft_plan* plan, radix_schedule_result* result, uint64_t n, uint64_t* radices);
void sorensen_radix_schedule(radix_schedule_result* result, uint64_t n, uint64_t* radices);

// Bytes of the transform array of one batch element.
uint64_t problem_total_bytes(const fft_plan* plan);
