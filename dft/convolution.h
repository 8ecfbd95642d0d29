// SPDX-License-Identifier: Apache-2.0
// What Rader's and Bluestein's solvers share. Both carry out the first stage of a chain, the one whose radix no kernel
// covers, as a convolution through a forward subplan, and leave the other stages to kernels.
//
// `aux` holds without gaps: the stage count, also for two stages; the stage records; the solver's own tables; the
// twiddle tables. `buffer` holds the array of the convolution and behind it the working copy of the chain: one array of
// n complex numbers for unit strides, else two.
#pragma once
#include "dft/stage_list.h"
#include "planner/solver.h"

// One complex transform with a radix that no kernel covers. Upsampling's private copies are left to others. Factors are
// looked for only where there is memory for the tables, so that none is long to find.
inline bool accepts_large_prime_factor(const fft_plan& p) {
    return is_one_complex_transform(p) && has_large_prime_factor(p.dims[0].n) && p.private_copy == 0 &&
           fits_into_memory(16 * static_cast<uint64_t>(p.dims[0].n));
}

// Attaches `buffer`, an `aux` with `table_words` 64-bit words for the solver's tables, and the planned subplan of
// `length` points. False when memory is short or the subplan can't be planned.
bool attach_convolution(fft_plan* plan, uint64_t length, uint64_t stage_count, uint64_t table_words);

// Where the solver's own tables begin.
inline float* solver_tables(void* aux) { return reinterpret_cast<float*>(counted_stages(aux) + stage_count_of(aux)); }

inline void run_in_place(fft_plan* subplan, float* data) { subplan->execute(subplan, data, data); }

// Carries out the first stage from `in` to `out` with the array of the convolution as working storage.
using convolution_stage = void (*)(fft_plan* plan, const stage_record& stage, const float* in, float* out,
                                   float* convolution);

template <convolution_stage first_stage, bool unit_strides>
void execute_convolution(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const uint64_t later_stages = stage_count_of(plan->aux) - 1;
    const stage_record* stages = counted_stages(plan->aux);
    float* working = scratch.data() + 2 * plan->subplans[0]->dims[0].n;
    const stage_targets targets =
        unit_strides ? stage_targets{out, working} : stage_targets{working + 2 * plan->dims[0].n, working};
    float* first_target = later_stages == 0 ? out : targets.behind(later_stages);
    first_stage(plan, stages[0], in, first_target, scratch.data());
    run_stages(stages + 1, later_stages, first_target, targets, out);
}
