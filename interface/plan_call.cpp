// SPDX-License-Identifier: Apache-2.0
#include "interface/plan_call.h"

#include "interface/level.h"
#include "planner/solver.h"
#include "threads/threads.h"

#include <algorithm>
#include <cstdlib>

namespace {

bool counts_fit(const fft_dim* dims, int count, int64_t& points) {
    for (int i = 0; i < count; ++i) points = saturating_multiply(points, dims[i].n);
    return points <= largest_extent;
}

bool strides_fit(const fft_dim* dims, int count, int64_t fft_dim::* stride) {
    for (int i = 0; i < count; ++i)
        if (dims[i].n != 1 && saturating_multiply(dims[i].n, dims[i].*stride) > largest_extent) return false;
    return true;
}

// The stride of a single element is never a step to another one, but solvers multiply it.
void cut_single_strides(fft_dim* dims, int count) {
    for (int i = 0; i < count; ++i)
        if (dims[i].n == 1) {
            dims[i].is = std::min(dims[i].is, largest_extent);
            dims[i].os = std::min(dims[i].os, largest_extent);
        }
}

}  // namespace

fft_plan* new_problem(uint32_t kind, int64_t sign, int64_t split, unsigned flags) {
    fft_plan* record = static_cast<fft_plan*>(calloc(1, sizeof(fft_plan)));
    if (!record) return nullptr;
    if (flags == plan_flag_measured) record->flags |= plan_flag_measured;
    record->kind = kind;
    record->sign = sign;
    record->split = split;
    record->nthreads = static_cast<int64_t>(thread_get_nthreads());
    return record;
}

fft_plan* finish_plan_call(fft_plan* record) {
    if (!record) return nullptr;
    cut_single_strides(record->dims, record->rank);
    cut_single_strides(record->howmany, record->howmany_rank);
    const inner_library& inner = level_at_work();
    if (!layout_is_addressable(*record) || inner.plan_problem(&record) != accepted) {
        fft_plan_free(record);
        return nullptr;
    }
    inner.plan_finish(record);
    return record;
}

bool layout_is_addressable(const fft_plan& plan) {
    int64_t points = 1;
    if (plan.kind == kind_upsampling_2d) return counts_fit(plan.howmany, 2, points);  // the target is the larger image
    return counts_fit(plan.dims, plan.rank, points) && counts_fit(plan.howmany, plan.howmany_rank, points) &&
           strides_fit(plan.dims, plan.rank, &fft_dim::is) && strides_fit(plan.dims, plan.rank, &fft_dim::os) &&
           strides_fit(plan.howmany, plan.howmany_rank, &fft_dim::is) &&
           strides_fit(plan.howmany, plan.howmany_rank, &fft_dim::os);
}
