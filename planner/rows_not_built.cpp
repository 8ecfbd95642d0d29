// SPDX-License-Identifier: Apache-2.0
// The rows of solver_table whose solver is not built yet. Each refuses, so that a later row may take the problem.
// A solver that gets built takes its line away.
#include "planner/solver.h"
#include "planner/solvers.h"

int solve_problem_c2r_1d_sorensen_sve(fft_plan*) { return refused; }
int solve_problem_c2r_1d_sorensen_neon(fft_plan*) { return refused; }
