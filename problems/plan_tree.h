// SPDX-License-Identifier: Apache-2.0
// A plan as text: which solver took the problem, what it runs, and into which subproblems it broke it. For tests and
// tools; the library itself prints nothing. Names are shortened: "c2c_1d_sve > 1d_two_stages_sve" stands for
// solve_problem_c2c_1d_sve and execute_1d_two_stages_sve. Where the name of an execute function doesn't tell what it
// does, plain words follow in brackets.
#pragma once
#include "record/fft_plan.h"

#include <string>
#include <vector>

// Type, direction, dimensions and batch. "c2c- 4x6" is a contiguous forward transform of 4 rows of 6; "c2c+ 6:2:3
// *5:40:60" a batch of 5 backward transforms of 6 points at input stride 2 and output stride 3, 40 and 60 apart; "=" in
// place.
std::string problem_text(const fft_plan& plan);

// The whole tree in one line: solver > execute {subproblem: solver > execute; ...}.
std::string plan_tree_line(const fft_plan& plan);

// Subplans with equal trees that follow each other, as the threads of a batch have them.
struct equal_subplans {
    const fft_plan* first;
    int count;
};
std::vector<equal_subplans> folded_subplans(const fft_plan& plan);

// The radices of a plan that is a chain of stages; of any other none.
std::vector<uint64_t> plan_radices(const fft_plan& plan);

// The tree with two lines for each record: the problem, and its solver with the storage it holds. Equal subplans that
// follow each other are shown once, behind their number: "8 x c2c- 64".
std::string plan_tree_text(const fft_plan& plan);
