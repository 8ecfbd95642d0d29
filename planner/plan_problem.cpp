// SPDX-License-Identifier: Apache-2.0
// The walk over solver_table.
#include "planner/solver.h"
#include "planner/solver_table.h"
#include "threads/thread_state.h"

namespace {

int walk_by_rules(fft_plan* plan) {
    for (const solver_entry& row : solver_table) {
        fft_plan_clear(plan);
        if (row.solve(plan) == accepted) {
            plan->solver_name = row.name;
            return accepted;
        }
    }
    fft_plan_clear(plan);
    return refused;
}

}  // namespace

int plan_problem(fft_plan** slot) {
    if (!*slot) return refused;
    this_thread_state().use_plan_buffer = 1;
    if ((*slot)->flags & plan_flag_measured) (*slot)->flags ^= plan_flag_measured | plan_flag_fast_pass;
    return walk_by_rules(*slot);
}

int plan_subplans(fft_plan** slots, int count) {
    for (int i = 0; i < count; ++i)
        if (plan_problem(&slots[i]) != accepted) return refused;
    return accepted;
}
