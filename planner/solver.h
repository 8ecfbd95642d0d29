// SPDX-License-Identifier: Apache-2.0
// What a solver works with: the two results, the planner's entry points and, from the headers below, questions about
// its problem, the ways to attach storage and subplans, and the guard that gives an execute function its scratch
// memory.
#pragma once
#include "planner/scratch.h"
#include "record/memory.h"
#include "record/problem.h"
#include "record/storage.h"

#include <initializer_list>

constexpr int accepted = 0;
constexpr int refused = -1;

// Plans the record in the slot through solver_table. The slot may receive another record (measured planning).
// A record that was planned before is cleared first. Returns 0 or -1.
int plan_problem(fft_plan** slot);

// Plans `count` slots, first to last, and stops at the first failure. Returns 0 or -1.
int plan_subplans(fft_plan** slots, int count);

// Hooks without effect: every plan call ends in the first, the split solvers call the second ahead of plan_subplans.
void plan_finish(fft_plan* plan);
void plan_split_hook(fft_plan* plan);

// Installs the execute function under its told name, which may not tell all that it does, and returns `accepted`.
inline int install(fft_plan* plan, execute_function execute, const char* execute_name, what_runs runs = runs_as_named) {
    plan->execute = execute;
    plan->execute_name = execute_name;
    plan->runs = runs;
    return accepted;
}
