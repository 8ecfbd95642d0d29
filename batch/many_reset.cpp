// SPDX-License-Identifier: Apache-2.0
// many_reset: a batch of one. The batch dimension is dropped and the transform goes through the table once more. A
// batch of none runs once as well. Split arrays have rows of their own; pieces of a large transform keep their batch.
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/subplans.h"

namespace {

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && p.kind != kind_c2c_large_piece && p.howmany_rank == 1 && p.howmany[0].n <= 1;
}

void execute_many_reset(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    fft_plan* single = plan->subplans[0];
    single->execute(single, in, out);
}

}  // namespace

int solve_problem_many_reset(fft_plan* plan) {
    if (!accepts(*plan) || !make_subplans(plan, 1)) return refused;
    drop_batch(plan->subplans[0]);
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    return install(plan, execute_many_reset, "execute_many_reset");
}
