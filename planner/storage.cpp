// SPDX-License-Identifier: Apache-2.0
// How solvers attach storage and subplans to a record.
#include "planner/solver.h"

bool attach_buffer(fft_plan* plan, uint64_t bytes) {
    qsl_fftf_free(plan->buffer);
    plan->buffer = qsl_fftf_malloc(bytes);
    plan->buffer_size = bytes;
    return plan->buffer != nullptr;
}

bool attach_aux(fft_plan* plan, uint64_t bytes) {
    plan->aux = qsl_fftf_malloc(bytes);
    if (!plan->aux) return false;
    plan->aux_size = bytes;
    plan->aux_owned = 1;
    return true;
}

bool make_subplans(fft_plan* plan, int count) {
    fft_plan_clear_subplans(plan);
    plan->subplan_count = count;
    return fft_plan_alloc_subplans(plan) == 0;
}
