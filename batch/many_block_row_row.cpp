// SPDX-License-Identifier: Apache-2.0
// c2c_many_block_row_row: as many contiguous complex transforms as each is long, a power of two of 2048 or more. Blocks
// of rows are copied into a compact scratch, transformed there and copied out.
#include "dft/sizes.h"
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "record/in_place.h"

namespace {

bool accepts(const fft_plan& p) {
    const fft_dim d = p.dims[0];
    return p.split != split_arrays && p.kind == kind_c2c && p.rank == 1 && p.howmany_rank == 1 && d.is == 1 &&
           d.os == 1 && d.n >= 2048 && p.howmany[0].n == d.n && is_power_of_two(d.n) && may_run_in_pieces(p);
}

// Tuned; only the powers of two among the lengths are accepted.
int64_t block_of(int64_t n) {
    switch (n) {
        case 2048:
            return 32;
        case 3072:
            return 16;
        case 4096:
            return 8;
        case 6144:
            return 6;
        default:
            return 8;
    }
}

void execute_c2c_many_block_row_row(fft_plan* plan, float* in, float* out) {
    plan_scratch scratch(plan);
    if (!scratch) return;
    fft_plan* const rows = plan->subplans[0];
    const fft_dim d = plan->dims[0], batch = plan->howmany[0];
    const int64_t block = rows->howmany[0].n;
    for (int64_t i = 0; i < batch.n; i += block) {
        copy_matrix_cpx(in + 2 * i * batch.is, scratch.data(), block, d.n, 1, batch.is, 1, d.n);
        rows->execute(rows, scratch.data(), scratch.data());
        copy_matrix_cpx(scratch.data(), out + 2 * i * batch.os, block, d.n, 1, d.n, d.os, batch.os);
    }
}

}  // namespace

int solve_problem_c2c_many_block_row_row(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    const int64_t n = plan->dims[0].n, block = block_of(n);
    if (!attach_buffer(plan, block * n * 8) || !make_subplans(plan, 1)) return refused;
    fft_plan* rows = plan->subplans[0];
    rows->howmany[0] = {block, n, n};
    rows->double_os = 0;
    rows->in = rows->out = static_cast<float*>(plan->buffer);
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    plan->howmany[0].os = doubled_stride(plan->double_os, plan->howmany[0].os);
    plan->dims[0].os = doubled_stride(plan->double_os, plan->dims[0].os);
    return install(plan, execute_c2c_many_block_row_row, "execute_c2c_many_block_row_row");
}
