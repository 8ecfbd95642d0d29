// SPDX-License-Identifier: Apache-2.0
// What other batch solvers may know of a batch of kernel size: that its plan is nothing but one kernel.
#pragma once
#include "record/fft_plan.h"

// Any number of groups of four transforms side by side, each one call of a kernel. `group` is the plan of one of them,
// which says runs_kernel_of_four_lanes.
void execute_adjacent_groups(const fft_plan& group, float* in, float* out, int64_t count);
