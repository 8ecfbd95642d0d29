// SPDX-License-Identifier: Apache-2.0
// A Hermitian stage by its formula, and one complex-to-real plan run between guard zones.
#pragma once
#include "kernels/real_kernels.h"
#include "record/fft_plan.h"
#include "tests/support/emulated.h"

// reference::hermitian_stage rounded to floats: complex rows, or, for L of 1, the real numbers of row 0.
void stage_by_formula(const sorensen_stage_record* stage, const float* in, float* out);

using plan_runner = void (*)(fft_plan* plan, float* in, float* out);
void execute_plan(fft_plan* plan, float* in, float* out);
// The chain of stages in the plan's record, whatever the plan executes.
void run_stages(fft_plan* plan, float* in, float* out);

// Runs the plan of length n on random coefficients; their imaginary parts at 0 and n / 2 are large and must not matter.
// The relative error of its result, or infinity when it changed its input or wrote outside its output.
double error_of(fft_plan* plan, int64_t n, bool in_place = false, plan_runner run = execute_plan);
