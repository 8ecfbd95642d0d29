// SPDX-License-Identifier: Apache-2.0
// What a solver works with: the two results, the ways to attach storage and subplans, the planner's entry points, and,
// from scratch.h, the guard that gives an execute function its scratch memory.
#pragma once
#include "interface/fft_plan.h"
#include "planner/scratch.h"

#include <initializer_list>

constexpr int accepted = 0;
constexpr int refused = -1;

// False when the machine's memory can't hold so many bytes. What only such storage would serve isn't begun: a length
// that can't be planned is refused at once.
bool fits_into_memory(uint64_t bytes);

// Attaches zeroed storage of this size, recorded so that fft_plan_clear releases it. False when memory is short.
bool attach_buffer(fft_plan* plan, uint64_t bytes);
bool attach_aux(fft_plan* plan, uint64_t bytes);

// Makes `count` subplans that start as copies of the plan's problem; older ones are released. False when memory is
// short.
bool make_subplans(fft_plan* plan, int count);

// Plans the record in the slot through solver_table. The slot may receive another record (measured planning).
// A record that was planned before is cleared first. Returns 0 or -1.
int plan_problem(fft_plan** slot);

// Plans `count` slots, first to last, and stops at the first failure. Returns 0 or -1.
int plan_subplans(fft_plan** slots, int count);

// Hooks without effect: every plan call ends in the first, the split solvers call the second ahead of plan_subplans.
void plan_finish(fft_plan* plan);
void plan_split_hook(fft_plan* plan);

// Installs the execute function and returns `accepted`, the last line of every solver.
inline int install(fft_plan* plan, execute_function execute, const char* execute_name) {
    plan->execute = execute;
    plan->execute_name = execute_name;
    return accepted;
}
