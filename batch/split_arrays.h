// SPDX-License-Identifier: Apache-2.0
// What every plan on split arrays (separate real and imaginary parts) shares.
#pragma once
#include "interface/fft_plan.h"

// False where a side that has an imaginary part lacks its array.
inline bool has_imaginary_arrays(const fft_plan& p) {
    return p.split != split_arrays || ((p.in_imag || p.kind == kind_r2c) && (p.out_imag || p.kind == kind_c2r));
}

// The plain entry of a split plan: adds the plan's own imaginary arrays and calls execute_split. Without them it does
// nothing, as any execution on null arrays.
void execute_by_split(fft_plan* plan, float* in, float* out);
