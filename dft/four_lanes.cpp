// SPDX-License-Identifier: Apache-2.0
#include "dft/four_lanes.h"

#include "dft/stage_list.h"
#include "dft/stage_lookup.h"
#include "kernels/lookup.h"
#include "record/problem.h"

namespace {

many_kernel straight_kernel(const fft_plan& plan) { return lookup_straight_quad_sve(&plan, plan.dims[0].n); }

// A straight kernel has a record all the same, for its strides.
uint64_t stages_in_four_lanes(const fft_plan& plan) { return straight_kernel(plan) ? 1 : stages_of(plan).size(); }

void copy_into_four_lanes(const fft_plan& plan, stage_record* stages, uint64_t count) {
    const std::span<const stage_record> single = stages_of(plan);
    fft_plan four = plan;  // a problem for the look-ups alone
    four.howmany_rank = 1;
    four.howmany[0] = {4, 1, 1};
    for (uint64_t q = 0; q < count; ++q) {
        stages[q] = single[q];
        stages[q].is = stages[q].os = 4;
        (q == 0          ? stage_lookup_first_sve
         : q + 1 < count ? stage_lookup_other_sve
                         : stage_lookup_last_sve)(&stages[q], &four);
    }
}

}  // namespace

bool runs_by_straight_kernel(const fft_plan& plan) { return straight_kernel(plan); }

// A straight kernel needs nothing of the plan. Contiguous plans have their last table in another order, that of rows
// side by side.
bool can_run_in_four_lanes(const fft_plan& plan) {
    if ((plan.howmany_rank != 0 && !is_batch_of_lanes(plan, 4)) || has_unit_strides(plan)) return false;
    return !stages_of(plan).empty() || straight_kernel(plan);
}

// The count of the stages, then their records.
uint64_t four_lanes_list_bytes(const fft_plan& plan) { return 8 + stages_in_four_lanes(plan) * sizeof(stage_record); }

void fill_four_lanes_list(const fft_plan& plan, void* list, int64_t is, int64_t os) {
    const uint64_t count = stage_count_of(list) = stages_in_four_lanes(plan);
    stage_record* const stages = counted_stages(list);
    const many_kernel straight = straight_kernel(plan);
    if (!straight) copy_into_four_lanes(plan, stages, count);
    keep_straight_kernels(stages[0], {straight, nullptr});
    stages[0].is = is;
    stages[count - 1].os = os;
}

void execute_four_lanes(void* list, const float* in, float* out, float* working) {
    const stage_record* stages = counted_stages(list);
    if (const many_kernel straight = straight_kernels_of(stages[0]).quad)
        return straight(out, in, stages->is, stages->os);
    const uint64_t n = stages->radix * stages->rest;
    run_stages(stages, stage_count_of(list), in, {working, working + 8 * n}, out);
}
