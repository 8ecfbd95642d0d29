// SPDX-License-Identifier: Apache-2.0
// r2r_many_block_col_col: a batch of real-to-real columns, element i of column c at i * stride + c. Sixteen columns at
// a time are transposed into scratch, transformed there as contiguous rows, and transposed back. It takes two whole
// blocks or more, and nothing else.
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/in_place.h"

namespace {

constexpr int64_t block = 16;

bool accepts(const fft_plan& p) {
    return p.kind == kind_r2r && p.rank == 1 && p.howmany_rank == 1 && p.howmany[0].is == 1 && p.howmany[0].os == 1 &&
           p.howmany[0].n > block && p.howmany[0].n % block == 0 &&
           may_run_in_pieces(p);  // a block written before a later one is read would spoil it
}

void execute_r2r_many_block_col_col_trans(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0], columns = plan->howmany[0];
    fft_plan* const rows = plan->subplans[0];
    for (int64_t c = 0; c < columns.n; c += block) {
        transpose_fp(in + c, scratch.data(), dim.n, block, dim.is, dim.n);
        rows->execute(rows, scratch.data(), scratch.data());
        transpose_fp(scratch.data(), out + c, block, dim.n, dim.n, dim.os);
    }
}

}  // namespace

int solve_problem_r2r_many_block_col_col(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    const int64_t n = plan->dims[0].n;
    if (!attach_buffer(plan, 4 * block * n) || !make_subplans(plan, 1)) return refused;
    fft_plan* const rows = plan->subplans[0];
    rows->dims[0] = {n, 1, 1};
    rows->howmany[0] = {block, n, n};
    rows->in = rows->out = static_cast<float*>(plan->buffer);
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    return install(plan, execute_r2r_many_block_col_col_trans, "execute_r2r_many_block_col_col_trans");
}
