// SPDX-License-Identifier: Apache-2.0
// Loops over many transforms of two stages, without a call of a plan for each of them.
#pragma once
#include "record/fft_plan.h"

// One transform of two stages, or four of them in the lanes of vectors.
inline bool runs_by_two_stages(const fft_plan& plan) {
    return plan.runs == runs_two_stages || plan.runs == runs_straight_kernel;
}

// `count` such plans, from `in` to `out`, which advance by these steps in floats. Straight kernels take the place of
// the stages as far as they go.
void execute_two_stages_each(fft_plan* plan, float* in, float* out, int64_t count, int64_t in_step, int64_t out_step);

// True where straight kernels do some of `count` executions.
bool has_straight_kernels_for(const fft_plan& plan, int64_t count);
