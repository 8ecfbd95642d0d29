// SPDX-License-Identifier: Apache-2.0
// How solvers attach storage and subplans to a record.
#pragma once
#include "record/fft_plan.h"

// Attaches zeroed storage of this size, recorded so that fft_plan_clear releases it. False when memory is short.
bool attach_buffer(fft_plan* plan, uint64_t bytes);
bool attach_aux(fft_plan* plan, uint64_t bytes);

// Attaches a kernel as all that `aux` holds. False when there is no kernel or memory is short.
template <class Kernel>
bool attach_kernel(fft_plan* plan, Kernel kernel) {
    if (!kernel || !attach_aux(plan, sizeof kernel)) return false;
    *static_cast<Kernel*>(plan->aux) = kernel;
    return true;
}

// Makes `count` subplans that start as copies of the plan's problem; older ones are released. False when memory is
// short.
bool make_subplans(fft_plan* plan, int count);
