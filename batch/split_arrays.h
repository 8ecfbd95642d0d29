// SPDX-License-Identifier: Apache-2.0
// What every plan on split arrays (separate real and imaginary parts) shares.
#pragma once
#include "interface/fft_plan.h"

// The plain entry of a split plan: adds the plan's own imaginary arrays and calls execute_split.
void execute_by_split(fft_plan* plan, float* in, float* out);
