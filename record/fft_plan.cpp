// SPDX-License-Identifier: Apache-2.0
// The life of a plan record: cloning, subplans, clearing and release.
#include "record/fft_plan.h"

#include "record/memory.h"

#include <cstdlib>

namespace {

// The problem and nothing that a solver attaches or that tells of its storage; `blocked_child` and
// `private_copy_stride` stay behind on purpose.
void copy_problem(fft_plan* dst, const fft_plan* src) {
    dst->kind = src->kind;
    dst->sign = src->sign;
    dst->split = src->split;
    dst->rank = src->rank;
    fft_plan_copy_dims(dst->dims, src->dims, src->rank);
    fft_plan_copy_r2r_kinds(dst->r2r_kind, src->r2r_kind, src->rank);
    dst->howmany_rank = src->howmany_rank;
    fft_plan_copy_dims(dst->howmany, src->howmany, src->howmany_rank);
    dst->in = src->in;
    dst->in_imag = src->in_imag;
    dst->out = src->out;
    dst->out_imag = src->out_imag;
    dst->flags = src->flags;
    dst->spare_buffer = src->spare_buffer;
    dst->blocked_is = src->blocked_is;
    dst->blocked_os = src->blocked_os;
    dst->blocked_count = src->blocked_count;
    dst->blocked_row = src->blocked_row;
    dst->private_copy = src->private_copy;
    dst->double_is = src->double_is;
    dst->double_os = src->double_os;
    dst->nthreads = src->nthreads;
}

fft_plan* new_record() { return static_cast<fft_plan*>(calloc(1, sizeof(fft_plan))); }

}  // namespace

fft_plan* fft_plan_clone(const fft_plan* plan) {
    fft_plan* clone = new_record();
    if (!clone || !plan) return clone;
    copy_problem(clone, plan);
    // A subplan never carries the shifts; a candidate of a measured upsampling needs them.
    clone->upsample_shift_x = plan->upsample_shift_x;
    clone->upsample_shift_y = plan->upsample_shift_y;
    return clone;
}

int fft_plan_alloc_subplans(fft_plan* plan) {
    const int count = plan->subplan_count;
    plan->subplans = static_cast<fft_plan**>(calloc(count > 0 ? count : 1, sizeof(fft_plan*)));
    if (!plan->subplans) return -1;
    for (int i = 0; i < count; ++i) {
        plan->subplans[i] = new_record();
        if (!plan->subplans[i]) return -1;
        copy_problem(plan->subplans[i], plan);
    }
    return 0;
}

void fft_plan_clear_subplans(fft_plan* plan) {
    for (int i = 0; i < plan->subplan_count && plan->subplans; ++i) {
        fft_plan_clear(plan->subplans[i]);
        free(plan->subplans[i]);
        plan->subplans[i] = nullptr;
    }
    free(plan->subplans);
    plan->subplans = nullptr;
    plan->subplan_count = 0;
}

void fft_plan_clear(fft_plan* plan) {
    if (!plan) return;
    if (plan->subplan_count || plan->subplans) fft_plan_clear_subplans(plan);  // mostly there is nothing to clear
    plan->lending = plan->scratch_lines = plan->brought_lines = 0;
    if (plan->buffer) {
        qsl_fftf_free(plan->buffer);
        plan->buffer = nullptr;
    }
    if (plan->aux && plan->aux_size && plan->aux_owned) {
        qsl_fftf_free(plan->aux);
        plan->aux = nullptr;
        plan->aux_size = 0;
        plan->aux_owned = 0;
    }
}

void fft_plan_free(fft_plan* plan) {
    if (!plan) return;
    fft_plan_clear(plan);
    qsl_fftf_free(plan->spare_buffer);
    free(plan);
}

void fft_plan_copy_dims(fft_dim* dst, const fft_dim* src, int count) {
    if (!dst || !src) return;
    for (int i = 0; i < count; ++i) dst[i] = src[i];
}

void fft_plan_copy_r2r_kinds(uint32_t* dst, const uint32_t* src, int count) {
    if (!dst || !src) return;
    for (int i = 0; i < count; ++i) dst[i] = src[i];
}

void fft_element_sizes(uint32_t kind, uint64_t* in_bytes, uint64_t* out_bytes) {
    const bool real_in = kind == kind_r2c || kind == kind_r2r;
    const bool real_out = kind == kind_c2r || kind == kind_r2r || kind == kind_c2r_upsampling;
    *in_bytes = real_in ? 4 : 8;
    *out_bytes = real_out ? 4 : 8;
}
