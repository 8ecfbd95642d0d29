// SPDX-License-Identifier: Apache-2.0
#include "dft/two_stages_each.h"

#include "dft/stage_list.h"
#include "planner/scratch.h"

bool has_straight_kernels(const fft_plan& plan) {
    const straight_kernels kernels = straight_kernels_of(stages_of(plan)[0]);
    return kernels.quad || kernels.rows;
}

void execute_straight_each(const fft_plan& plan, const float* in, float* out, int64_t count, int64_t in_step,
                           int64_t out_step) {
    const straight_kernels kernels = straight_kernels_of(two_stages(plan.aux)[0]);
    if (kernels.rows) return kernels.rows(out, in, in_step / 2, out_step / 2, count);
    const fft_dim d = plan.dims[0];
    for (int64_t i = 0; i < count; ++i) kernels.quad(out + i * out_step, in + i * in_step, d.is, d.os);
}

void execute_two_stages_each(fft_plan* plan, const float* in, float* out, int64_t count, int64_t in_step,
                             int64_t out_step) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const stage_record* stages = two_stages(plan->aux);
    for (int64_t i = 0; i < count; ++i) {
        stages[0].kernel(&stages[0], in + i * in_step, scratch.data());
        stages[1].kernel(&stages[1], scratch.data(), out + i * out_step);
    }
}
