// SPDX-License-Identifier: Apache-2.0
// The arguments of the four many calls, which all basic calls end in, and their documented checks.
#pragma once
#include "record/fft_plan.h"

#include <cstdint>

struct many_arguments {
    uint32_t kind;
    int sign;
    unsigned flags;
    int rank;
    const int* n;
    int howmany;
    float* in;
    const int* inembed;
    int istride;
    int idist;
    float* out;
    const int* onembed;
    int ostride;
    int odist;
    const uint32_t* r2r_kinds;  // r2r only
};

// The first documented demand that the arguments fail, or null when the call may go on.
const char* many_refusal(const many_arguments& arguments);

// A record that holds the problem, unplanned. Null when the arguments are refused or memory is short.
fft_plan* many_record(const many_arguments& arguments);

// Sizes and strides of the transform dimensions. `plan` has `kind`, `in` and `out`; the arguments have passed.
void fft_plan_fill_dims(fft_plan* plan, int rank, const int* n, const int* inembed, int istride, const int* onembed,
                        int ostride);
