// SPDX-License-Identifier: Apache-2.0
// Plans and executes one problem and compares everything that it may have touched.
#pragma once
#include <string>

#include "include/qfftf.h"
#include "tests/batch/differential/problem.h"

struct check_result {
    std::string failure;  // empty when all is well
    std::string tree;     // the plan, solver by solver
    bool refused = false;
    double worst_error = 0;  // of an element, in units of the rounding error times sqrt(log2 points) and the rms
};

check_result check_problem(const transform_problem& p);

// Executes a plan of the problem on arrays of its own and compares likewise.
check_result check_plan(const transform_problem& p, qsl_fftf_plan plan);

// Whether elements of one side share floats, so that no result is right.
bool elements_overlap(const transform_problem& p);
