// SPDX-License-Identifier: Apache-2.0
// What every plan on split arrays (separate real and imaginary parts) shares.
#pragma once
#include "record/fft_plan.h"

// The plain entry of a split plan: adds the plan's own imaginary arrays and calls execute_split. Without them it does
// nothing, as any execution on null arrays.
void execute_by_split(fft_plan* plan, float* in, float* out);
