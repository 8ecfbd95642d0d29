// SPDX-License-Identifier: Apache-2.0
// The exported calls that a problem goes through.
#pragma once
#include "include/qfftf.h"
#include "tests/batch/differential/problem.h"

// Real and imaginary arrays; the latter null where the problem has none.
struct problem_arrays {
    float* in;
    float* in_imag;
    float* out;
    float* out_imag;
};

qsl_fftf_plan plan_by_call(const transform_problem& p, plan_call call, const problem_arrays& arrays);

void execute_on(const transform_problem& p, qsl_fftf_plan plan, const problem_arrays& arrays);
