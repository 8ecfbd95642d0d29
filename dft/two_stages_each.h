// SPDX-License-Identifier: Apache-2.0
// Loops over many transforms of two stages, without a call of a plan for each of them.
#pragma once
#include "record/fft_plan.h"

// One transform of two stages, or four of them in the lanes of vectors.
inline bool runs_by_two_stages(const fft_plan& plan) {
    return plan.runs == runs_two_stages || plan.runs == runs_straight_kernel;
}

// `count` such plans, from `in` to `out`, which advance by these steps in floats.
void execute_two_stages_each(fft_plan* plan, const float* in, float* out, int64_t count, int64_t in_step,
                             int64_t out_step);

// The same by straight kernels in place of the stages, where there are some: for groups of four lanes or contiguous
// transforms.
bool has_straight_kernels(const fft_plan& plan);
void execute_straight_each(const fft_plan& plan, const float* in, float* out, int64_t count, int64_t in_step,
                           int64_t out_step);
