// SPDX-License-Identifier: Apache-2.0
// A problem of the problem language (problems/problem.h) as the call that plans it.
#pragma once
#include "include/qfftf.h"
#include "interface/many_arguments.h"
#include "problems/problem.h"

// The arguments of the many call that plans the problem. They point into `problem`, which must stay.
many_arguments arguments_of(const problems::problem& problem, float* in, float* out);

// The first documented demand that the problem fails, with its numbers; empty when it passes, as movements of data do.
std::string reason_of(const problems::problem& problem, float* in, float* out);

// The unplanned record, with the threads and flags that the problem asks for, or null.
fft_plan* record_of(const problems::problem& problem, float* in, float* out);

// Plans the problem on these arrays. Null when it is refused.
qsl_fftf_plan plan_problem_text(const problems::problem& problem, float* in, float* out);
