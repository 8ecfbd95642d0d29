// SPDX-License-Identifier: Apache-2.0
// The ordered table of solvers that planning walks.
#pragma once
#include "record/fft_plan.h"

// Returns 0 when it accepts the problem; anything else is a refusal and leaves tidying to the planner.
using solve_function = int (*)(fft_plan* plan);

struct solver_entry {
    solve_function solve;
    const char* name;
};

constexpr int solver_count = 68;
extern const solver_entry solver_table[solver_count];
