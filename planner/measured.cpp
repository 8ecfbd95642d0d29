// SPDX-License-Identifier: Apache-2.0
#include "planner/measured.h"

#include "include/qfftf.h"
#include "planner/solver.h"
#include "planner/solver_table.h"
#include "planner/time_limit.h"

#include <sys/time.h>

#include <cmath>
#include <cstring>

namespace {

constexpr int list_words = 64;
constexpr double no_limit_below = 1e-10;
constexpr int timed_runs = 4;

bool limit_has_passed(int64_t start_sec, int64_t start_usec) {
    const double limit = planning_time_limit;
    if (!(std::fabs(limit) >= no_limit_below)) return false;
    const clock_reading now = read_clock();
    return elapsed_seconds(start_sec, start_usec, now.sec, now.usec) > limit;
}

// The plans of the first rows that accept the problem, in the order of the table. What isn't taken out is released.
class candidate_list {
public:
    candidate_list() = default;
    ~candidate_list() {
        for (int i = 0; i < count_; ++i) fft_plan_free(plans_[i]);
    }
    candidate_list(const candidate_list&) = delete;
    candidate_list& operator=(const candidate_list&) = delete;

    // False when a clone can't be made.
    bool collect(const fft_plan* problem) {
        for (const solver_entry& row : solver_table) {
            if (count_ == max_candidates) break;
            fft_plan* plan = fft_plan_clone(problem);
            if (!plan) return false;
            if (row.solve(plan) == accepted) {
                plan->solver_name = row.name;
                settle_storage(plan);
                plans_[count_++] = plan;
            } else {
                fft_plan_free(plan);
            }
        }
        return true;
    }

    int count() const { return count_; }
    fft_plan* operator[](int i) const { return plans_[i]; }
    void forget(int i) { plans_[i] = nullptr; }

private:
    fft_plan* plans_[max_candidates] = {};
    int count_ = 0;
};

}  // namespace

clock_reading read_clock() {
    timeval now;
    gettimeofday(&now, nullptr);
    return {now.tv_sec, now.tv_usec};
}

double elapsed_seconds(int64_t start_sec, int64_t start_usec, int64_t end_sec, int64_t end_usec) {
    return __builtin_fma(static_cast<double>(end_usec - start_usec), 1e-6, static_cast<double>(end_sec - start_sec));
}

double time_plan(fft_plan* plan) {
    qsl_fftf_execute(plan);
    const clock_reading start = read_clock();
    for (int i = 0; i < timed_runs; ++i) qsl_fftf_execute(plan);
    const clock_reading end = read_clock();
    return elapsed_seconds(start.sec, start.usec, end.sec, end.usec);
}

int plan_measured_candidates(fft_plan** slot, int64_t start_sec, int64_t start_usec, double* best) {
    candidate_list candidates;
    if (!candidates.collect(*slot) || candidates.count() == 0) return refused;
    for (int i = 0; i < candidates.count(); ++i) {
        const double seconds = time_plan(candidates[i]);
        if (*best > seconds) {
            *best = seconds;
            fft_plan_free(*slot);
            *slot = candidates[i];
            candidates.forget(i);
        }
        if (limit_has_passed(start_sec, start_usec)) break;  // the first candidate always runs
    }
    return accepted;
}

void search_radix_orders(fft_plan* plan, uint64_t* lists, uint64_t list_count, uint64_t* best_list,
                         uint64_t factor_count, apply_radices apply, uint64_t apply_arg, uint64_t first_depth) {
    double best = slowest_radix_order;
    uint64_t scratch[list_words] = {};
    memcpy(best_list, lists, factor_count * sizeof(uint64_t));
    // The second pass repeats the trials with the best time carried over: a first run that was cold gets a second
    // chance.
    for (int pass = 0; pass < 2; ++pass)
        for (uint64_t i = 0; i < list_count; ++i)
            search_radix_permutations(lists + i * list_words, first_depth, scratch, best_list, plan, factor_count,
                                      apply_arg, &best, apply);
}

namespace {

void try_order(const uint64_t* list, uint64_t* scratch, uint64_t* best_list, fft_plan* plan, uint64_t count,
               uint64_t apply_arg, double* best, apply_radices apply) {
    memcpy(scratch, list, count * sizeof(uint64_t));
    apply(plan, count, scratch, apply_arg);
    const double seconds = time_plan(plan);
    if (*best > seconds) {
        *best = seconds;
        memcpy(best_list, scratch, count * sizeof(uint64_t));
    }
}

void exchange(uint64_t& a, uint64_t& b) {
    const uint64_t kept = a;
    a = b;
    b = kept;
}

// True when an entry between depth and i has the same value, so that the order that i would give was visited already.
bool was_visited(const uint64_t* list, uint64_t depth, uint64_t i) {
    for (uint64_t j = depth; j < i; ++j)
        if (list[j] == list[i]) return true;
    return false;
}

}  // namespace

void search_radix_permutations(uint64_t* list, uint64_t depth, uint64_t* scratch, uint64_t* best_list, fft_plan* plan,
                               uint64_t factor_count, uint64_t apply_arg, double* best, apply_radices apply) {
    if (depth + 1 == factor_count) try_order(list, scratch, best_list, plan, factor_count, apply_arg, best, apply);
    if (depth + 1 >= factor_count) return;
    for (uint64_t i = depth; i < factor_count; ++i) {
        if (was_visited(list, depth, i)) continue;
        exchange(list[depth], list[i]);
        search_radix_permutations(list, depth + 1, scratch, best_list, plan, factor_count, apply_arg, best, apply);
        exchange(list[depth], list[i]);
    }
}
