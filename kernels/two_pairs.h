// SPDX-License-Identifier: Apache-2.0
// A stage on four transforms by the kernel of two, twice: for levels whose registers hold two complex numbers. A family
// of its own would cost little less time and a third of such a level's size.
#pragma once
#include "kernels/kernel_types.h"

#include <cstring>

// The record keeps the kernel of two lanes.
inline void run_stage_on_two_pairs(const stage_record* stage, const float* in, float* out) {
    constexpr int64_t floats_of_pair = 4;
    stage_kernel pair;
    memcpy(&pair, &stage->spare[0], sizeof pair);
    pair(stage, in, out);
    pair(stage, in + floats_of_pair, out + floats_of_pair);
}

inline void set_stage_on_two_pairs(stage_record* stage) {
    if (!stage->kernel) return;
    memcpy(&stage->spare[0], &stage->kernel, sizeof stage->kernel);
    stage->kernel = run_stage_on_two_pairs;
}
