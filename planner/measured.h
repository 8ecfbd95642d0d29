// SPDX-License-Identifier: Apache-2.0
// Planning by the clock. At the level of plan_problem the first five solvers that accept are built and timed; at the
// level of a solver the orders of its radices are tried. Both run the transform on the plan's own arrays.
#pragma once
#include "record/fft_plan.h"

// A moment of gettimeofday.
struct clock_reading {
    int64_t sec;
    int64_t usec;
};
clock_reading read_clock();

double elapsed_seconds(int64_t start_sec, int64_t start_usec, int64_t end_sec, int64_t end_usec);

// Seconds that four executions take after one that isn't counted.
double time_plan(fft_plan* plan);

constexpr int max_candidates = 5;
constexpr double slowest_candidate = 1e10;    // seconds to beat before any candidate ran
constexpr double slowest_radix_order = 10.0;  // likewise for an order of radices

// Tries the rows of solver_table on clones of the record in `slot`. The fastest candidate that beats `best` replaces
// that record, and its time `best`. Returns 0, or -1 when no row accepts or memory is short; `slot` and `best` then
// stay.
int plan_measured_candidates(fft_plan** slot, int64_t start_sec, int64_t start_usec, double* best);

// Builds a solver's stages for one order of radices, in a plan whose `execute` is installed already.
using apply_radices = void (*)(fft_plan* plan, uint64_t factor_count, const uint64_t* radices, uint64_t apply_arg);

// Finds the fastest order of radices by running the plan. `lists` holds `list_count` lists of 64 words, of which
// `factor_count` are used; it is permuted in between and restored. Entries in front of `first_depth` stay in place.
// `best_list` (64 words) receives the winner; the caller applies it. Only for plans with `flags` 32.
void search_radix_orders(fft_plan* plan, uint64_t* lists, uint64_t list_count, uint64_t* best_list,
                         uint64_t factor_count, apply_radices apply, uint64_t apply_arg, uint64_t first_depth);

// The recursive step: tries every distinct order of the list's entries from `depth` on.
void search_radix_permutations(uint64_t* list, uint64_t depth, uint64_t* scratch, uint64_t* best_list, fft_plan* plan,
                               uint64_t factor_count, uint64_t apply_arg, double* best, apply_radices apply);
