// SPDX-License-Identifier: Apache-2.0
#include "record/storage.h"

#include "record/memory.h"

namespace {

// Together with what the record has: allocators give more than there is, as long as nobody writes to it.
void* new_storage(uint64_t bytes, uint64_t held) {
    return bytes + held >= bytes && fits_into_memory(bytes + held) ? qsl_fftf_malloc(bytes) : nullptr;
}

}  // namespace

bool attach_buffer(fft_plan* plan, uint64_t bytes) {
    qsl_fftf_free(plan->buffer);
    plan->buffer = new_storage(bytes, plan->aux ? plan->aux_size : 0);
    plan->buffer_size = bytes;
    return plan->buffer != nullptr;
}

bool attach_aux(fft_plan* plan, uint64_t bytes) {
    plan->aux = new_storage(bytes, plan->buffer ? plan->buffer_size : 0);
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
