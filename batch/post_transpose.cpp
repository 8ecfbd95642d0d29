// SPDX-License-Identifier: Apache-2.0
// dft_many_post_transpose: in place, complex rows whose results are wanted by columns, over a span of 256 KiB or more.
// All rows are transformed into the buffer before the buffer is transposed to the output, since the columns of the
// first row lie across all others. The rows must be contiguous and follow each other without gaps.
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"

namespace {

bool accepts(const fft_plan& p) {
    return p.kind == kind_c2c && p.split != split_arrays && p.rank == 1 && p.howmany_rank == 1 && p.dims[0].is == 1 &&
           p.howmany[0].is == p.dims[0].n && p.howmany[0].os == 1 && p.dims[0].n * p.dims[0].os * 8 > 262143 && p.in &&
           p.in == p.out;
}

void execute_many_post_transpose(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim points = plan->dims[0];
    const int64_t count = plan->howmany[0].n;
    fft_plan* row = plan->subplans[0];
    for (int64_t i = 0; i < count; ++i) row->execute(row, in + 2 * i * points.n, scratch.data() + 2 * i * points.n);
    transpose_cpx(scratch.data(), out, count, points.n, points.n, points.os);
}

}  // namespace

int solve_problem_dft_many_post_transpose(fft_plan* plan) {
    if (!accepts(*plan) || !attach_buffer(plan, plan->dims[0].n * plan->howmany[0].n * 8)) return refused;
    if (!make_subplans(plan, 1)) return refused;
    fft_plan* row = plan->subplans[0];
    row->howmany_rank = 0;
    row->howmany[0] = {};
    row->dims[0].os = 1;
    row->double_os = 0;
    row->out = static_cast<float*>(plan->buffer);
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    return install(plan, execute_many_post_transpose, "execute_many_post_transpose");
}
