// SPDX-License-Identifier: Apache-2.0
// indirect: a complex batch whose input is stored by columns and whose output is wanted in rows. The input is
// transposed to the output and transformed there. It takes every block of solve_bufferized_problem as well, whatever
// the length. In place the transpose would overwrite what it still has to read.
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"

namespace {

bool turns_columns_into_rows(const fft_plan& p) {
    return p.howmany_rank == 1 && p.rank == 1 && p.dims[0].n == p.dims[0].is && p.dims[0].n == p.howmany[0].os &&
           p.dims[0].os == 1 && p.howmany[0].is == 1 && p.dims[0].n != 1;
}

bool accepts(const fft_plan& p) {
    return p.kind == kind_c2c && p.split != split_arrays && p.in != p.out &&
           (p.blocked_child == 1 || turns_columns_into_rows(p));
}

void execute_indirect_before(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    const fft_dim points = plan->dims[0], batch = plan->howmany[0];
    transpose_cpx_tiled(in, out, points.n, batch.n, points.is, batch.os);
    fft_plan* rows = plan->subplans[0];
    rows->execute(rows, out, out);
}

}  // namespace

int solve_problem_indirect(fft_plan* plan) {
    if (!accepts(*plan) || !make_subplans(plan, 1)) return refused;
    fft_plan* rows = plan->subplans[0];
    rows->dims[0].is = plan->dims[0].os;
    rows->howmany[0].is = plan->howmany[0].os;
    rows->in = plan->out;
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    return install(plan, execute_indirect_before, "execute_indirect_before");
}
