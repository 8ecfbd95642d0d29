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
    const uint64_t working_copy = has_unit_strides(*plan) ? n : 2 * n;
    return attach_buffer(plan, 8 * (length + working_copy)) &&
           attach_aux(plan, 8 * (n + stage_record_words * stage_count + table_words)) && plan_subplan(plan, length);
}
