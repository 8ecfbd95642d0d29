// SPDX-License-Identifier: Apache-2.0
// A stage on four transforms by the kernel of two, twice: for levels whose registers hold two complex numbers. A family
// of its own would cost little less time and a third of such a level's size.
#pragma once
#include "kernels/kernel_types.h"

#include <cstring>

// The record keeps the kernel of two lanes, in its last spare word; the first ones hold straight kernels.
constexpr int word_of_pair = 6;

inline void run_stage_on_two_pairs(const stage_record* stage, const float* in, float* out) {
    constexpr int64_t floats_of_pair = 4;
    stage_kernel pair;
    memcpy(&pair, &stage->spare[word_of_pair], sizeof pair);
    pair(stage, in, out);
    pair(stage, in + floats_of_pair, out + floats_of_pair);
}

inline void set_stage_on_two_pairs(stage_record* stage) {
    if (!stage->kernel) return;
    memcpy(&stage->spare[word_of_pair], &stage->kernel, sizeof stage->kernel);
    stage->kernel = run_stage_on_two_pairs;
}
