// SPDX-License-Identifier: Apache-2.0
#include "dft/two_stages_each.h"

#include "dft/stage_list.h"
#include "planner/scratch.h"

namespace {

// The first of `count` executions, as many as straight kernels can do: four lanes each, or four contiguous ones at
// once. Returns their number.
int64_t execute_straight_each(const fft_dim& d, const straight_kernels& kernels, const float* in, float* out,
                              int64_t count, int64_t in_step, int64_t out_step) {
    if (kernels.quad) {
        for (int64_t i = 0; i < count; ++i) kernels.quad(out + i * out_step, in + i * in_step, d.is, d.os);
        return count;
    }
    if (!kernels.rows || count < 4) return 0;
    const int64_t whole = count / 4 * 4;
    kernels.rows(out, in, in_step / 2, out_step / 2, whole);
    return whole;
}

}  // namespace

bool has_straight_kernels_for(const fft_plan& plan, int64_t count) {
    const straight_kernels kernels = straight_kernels_of(stages_of(plan)[0]);
    return kernels.quad || (kernels.rows && count >= 4);
}

void execute_two_stages_each(fft_plan* plan, float* in, float* out, int64_t count, int64_t in_step, int64_t out_step) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const stage_record* stages = two_stages(plan->aux);
    int64_t i = execute_straight_each(plan->dims[0], straight_kernels_of(stages[0]), in, out, count, in_step, out_step);
    for (; i < count; ++i) {
        stages[0].kernel(&stages[0], in + i * in_step, scratch.data());
        stages[1].kernel(&stages[1], scratch.data(), out + i * out_step);
    }
}
