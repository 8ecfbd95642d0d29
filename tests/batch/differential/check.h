// SPDX-License-Identifier: Apache-2.0
// Plans and executes one problem and compares everything that it may have touched.
#pragma once
#include <string>

#include "include/qfftf.h"
#include "tests/batch/differential/arrays.h"
#include "tests/batch/differential/problem.h"

struct check_result {
    std::string failure;  // empty when all is well
    std::string tree;     // the plan, solver by solver
    bool refused = false;
    double worst_error = 0;  // of an element, in units of the rounding error times sqrt(log2 points) and the rms
};

// By rules, or, if measured, every plan that can win the race: see candidates.h.
check_result check_problem(const transform_problem& p);

// Executes a plan of the problem on arrays of its own and compares likewise.
check_result check_plan(const transform_problem& p, qsl_fftf_plan plan);

// Whether elements of one side share floats, so that no result is right.
bool elements_overlap(const transform_problem& p);

// The steps, for checks that take others between them.

// By the problem's call, or by the widest one where that tests shapes.
qsl_fftf_plan make_plan(const transform_problem& p, const problem_arrays& at);

// Each output against the transform of the input that the picture shows, unless outputs overlap, and no other float
// written.
void compare(const transform_problem& p, const arrays& a, check_result& result);
