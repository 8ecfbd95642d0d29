// SPDX-License-Identifier: Apache-2.0
// The walk over solver_table. A plan by rules is the first row that accepts. A measured one is the same walk, in which
// no solver measures anything, and then a race of the first five rows that accept a clone of the problem.
#include "planner/measured.h"
#include "planner/solver.h"
#include "planner/solver_table.h"
#include "record/thread_state.h"

#include <algorithm>
#include <cstring>

namespace {

int walk_by_rules(fft_plan* plan) {
    for (const solver_entry& row : solver_table) {
        fft_plan_clear(plan);  // ahead of the first row as well: the record may have been planned before
        if (row.solve(plan) == accepted) {
            plan->solver_name = row.name;
            settle_storage(plan);
            return accepted;
        }
    }
    fft_plan_clear(plan);
    return refused;
}

// Upsampling relies on zeros between the rows that it copies, and the timed runs have left something else there.
void restore_zeroed_buffer(fft_plan* plan) {
    if (plan->kind == kind_upsampling_2d && plan->buffer) memset(plan->buffer, 0, plan->buffer_size);
}

// Races the candidates for `saved`, the untouched problem, against the plan in the slot, and leaves the faster one
// there. Where the rules gave no plan there is nothing to time, and the fastest candidate wins. Takes `saved` over.
int keep_the_fastest(fft_plan** slot, int by_rules, fft_plan* saved, const clock_reading& start) {
    const double fast_time = by_rules == accepted ? time_plan(*slot) : slowest_candidate;
    double best = slowest_candidate;
    const int by_clock = plan_measured_candidates(&saved, start.sec, start.usec, &best);
    const bool candidate_ran = best < slowest_candidate;
    int result = by_rules;
    if (candidate_ran && best <= fast_time) {  // a tie goes to the candidate
        fft_plan_free(*slot);
        *slot = saved;
        result = by_clock;
    } else {
        fft_plan_free(saved);
        (*slot)->flags = ((*slot)->flags & ~plan_flag_fast_pass) | plan_flag_measured;
    }
    restore_zeroed_buffer(*slot);
    return result;
}

// Whatever its solver, a transform keeps tables of half its length or more.
bool tables_fit_into_memory(const fft_plan& p) {
    for (int k = 0; k < p.rank; ++k)
        if (p.dims[k].n > 0 && !fits_into_memory(4 * std::min<uint64_t>(p.dims[k].n, UINT64_MAX / 4))) return false;
    return true;
}

void finish_tree(fft_plan* plan) {
    for (int i = 0; i < plan->subplan_count; ++i) finish_tree(plan->subplans[i]);
}

}  // namespace

int plan_problem(fft_plan** slot) {
    fft_plan* plan = *slot;
    if (!plan) return refused;
    this_thread_state().use_plan_buffer = 1;
    if (!tables_fit_into_memory(*plan)) return refused;
    const clock_reading start = read_clock();
    const bool has_arrays = plan->in && plan->out && has_imaginary_arrays(*plan);  // nothing runs without
    const bool measured = is_measured(*plan) && has_arrays;
    fft_plan* saved = measured ? fft_plan_clone(plan) : nullptr;
    if (plan->flags & plan_flag_measured) plan->flags = (plan->flags & ~plan_flag_measured) | plan_flag_fast_pass;
    const int by_rules = walk_by_rules(plan);
    return saved ? keep_the_fastest(slot, by_rules, saved, start) : by_rules;
}

int plan_subplans(fft_plan** slots, int count) {
    for (int i = 0; i < count; ++i)
        if (plan_problem(&slots[i]) != accepted) return refused;
    return accepted;
}

void plan_finish(fft_plan* plan) { finish_tree(plan); }

void plan_split_hook(fft_plan*) {}
