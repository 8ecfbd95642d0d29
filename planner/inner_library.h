// SPDX-License-Identifier: Apache-2.0
// The inner library (planner, solvers, kernels) is built once for each level of the processors that it may meet. What
// is outside of it is built once, for every processor, and reaches it through the record of the level that is at work.
#pragma once
#include "record/fft_plan.h"

// What a level needs of the processor.
enum class processor_needs { nothing, complex_instructions, sve_of_256_bits };

struct inner_library {
    const char* name;         // the word of QSL_FFT_LEVEL
    const char* description;  // for people
    processor_needs needs;
    int (*plan_problem)(fft_plan** slot);
    void (*plan_finish)(fft_plan* plan);
};
