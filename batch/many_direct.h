// SPDX-License-Identifier: Apache-2.0
// What other batch solvers may know of a batch of kernel size: that its plan is nothing but one kernel.
#pragma once
#include "record/fft_plan.h"

// A plan for whole groups of four transforms side by side, each group one call of a four-lane kernel.
bool runs_adjacent_groups(const fft_plan& plan);

// Any number of such groups in a row, with the kernel and the strides of the plan of one.
void execute_adjacent_groups(const fft_plan& group, float* in, float* out, int64_t count);
