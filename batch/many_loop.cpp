// SPDX-License-Identifier: Apache-2.0
// Row 44: any batch that no faster row took. The outermost batch dimension is peeled into a loop over one subplan.
// It leaves four complex transforms side by side to the four-lane form of the multi-stage solver, one-dimensional real
// batches of unit distances to the rows in front of it, and batches in place whose later inputs would be overwritten.
#include "batch/in_place.h"
#include "batch/subplans.h"
#include "dft/sizes.h"
#include "planner/solver.h"
#include "planner/solvers.h"

namespace {

bool side_by_side(const fft_plan& p) { return p.howmany_rank == 1 && p.howmany[0].is == 1 && p.howmany[0].os == 1; }

// Four adjacent transforms of a smooth length: one run of the multi-stage solver on four lanes.
bool fills_four_lanes(const fft_plan& p) {
    return p.rank == 1 && side_by_side(p) && p.howmany[0].n == 4 && !has_large_prime_factor(p.dims[0].n);
}

bool takes_kind(const fft_plan& p) {
    switch (p.kind) {
        case kind_c2c:
            return !fills_four_lanes(p);
        case kind_c2r:
            return !(p.rank == 1 && side_by_side(p) && p.dims[0].n != 1);
        case kind_r2c:
            return !(p.rank == 1 && side_by_side(p));
        case kind_r2r:
        case kind_c2r_upsampling:
            return true;
        default:
            return false;
    }
}

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && p.rank >= 1 && p.howmany_rank >= 1 && takes_kind(p) && may_run_in_pieces(p);
}

void execute_many(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    uint64_t in_bytes, out_bytes;
    fft_element_sizes(plan->kind, &in_bytes, &out_bytes);
    const int64_t in_step = plan->howmany[0].is * static_cast<int64_t>(in_bytes / sizeof(float));
    const int64_t out_step = plan->howmany[0].os * static_cast<int64_t>(out_bytes / sizeof(float));
    fft_plan* item = plan->subplans[0];
    for (int64_t i = 0; i < plan->howmany[0].n; ++i) item->execute(item, in + i * in_step, out + i * out_step);
}

}  // namespace

int solve_problem_dft_many(fft_plan* plan) {
    if (!accepts(*plan) || !make_subplans(plan, 1)) return refused;
    install(plan, execute_many, "execute_many");
    plan->howmany[0].os = doubled_stride(plan->double_os, plan->howmany[0].os);
    drop_outer_batch(plan->subplans[0], plan);
    return plan_subplans(plan->subplans, 1);
}
