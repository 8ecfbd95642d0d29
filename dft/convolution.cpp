// SPDX-License-Identifier: Apache-2.0
#include "dft/convolution.h"

namespace {

// The direction of the transform lives in the tables, so that the subplan always runs forward. It works in place, on
// the buffer for want of arrays of its own, and is never measured.
bool plan_subplan(fft_plan* plan, int64_t length) {
    if (!make_subplans(plan, 1)) return false;
    fft_plan* s = plan->subplans[0];
    s->kind = kind_c2c;
    s->sign = sign_forward;
    s->rank = 1;
    s->dims[0] = {length, 1, 1};
    s->howmany_rank = 0;
    s->flags = plan_flag_fast_pass;
    s->in = s->out = static_cast<float*>(plan->buffer);
    s->double_is = s->double_os = 0;
    return plan_subplans(plan->subplans, 1) == accepted;
}

}  // namespace

bool attach_convolution(fft_plan* plan, uint64_t length, uint64_t stage_count, uint64_t table_words) {
    const uint64_t n = plan->dims[0].n;
    const uint64_t buffer = 8 * (length + (has_unit_strides(*plan) ? n : 2 * n));
    const uint64_t aux = 8 * (n + stage_record_words * stage_count + table_words);
    const uint64_t subplan = 16 * length;  // its buffer and its tables, at least
    return fits_into_memory(buffer + aux + subplan) && attach_buffer(plan, buffer) && attach_aux(plan, aux) &&
           plan_subplan(plan, length);
}
