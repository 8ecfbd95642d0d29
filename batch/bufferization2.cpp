// SPDX-License-Identifier: Apache-2.0
// bufferization2: 49 or more complex columns of 256 to 3072 points, in a square array at the most. Blocks of 48 columns
// are copied to the buffer, transformed there and copied back. The lengths that rule planning passes over are those
// that later rows do faster.
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"

#include <algorithm>

namespace {

constexpr int64_t block = 48;

bool is_batch_of_columns(const fft_plan& p) {
    return p.kind == kind_c2c && p.split != split_arrays && p.rank == 1 && p.howmany_rank == 1 &&
           p.howmany[0].is == 1 && p.howmany[0].os == 1 && p.dims[0].is == p.dims[0].n && p.dims[0].os == p.dims[0].n;
}

bool is_faster_by_later_rows(int64_t n) { return n <= 1024 || n == 1458 || n == 2048 || n == 2916; }

bool accepts(const fft_plan& p) {
    const int64_t n = p.dims[0].n;
    return is_batch_of_columns(p) && n >= 256 && n <= 3072 && p.howmany[0].n > block &&
           (is_measured(p) || !is_faster_by_later_rows(n));
}

void make_block_subplan(fft_plan* s, int64_t count, float* buffer) {
    s->in = s->out = buffer;
    s->dims[0].is = s->dims[0].os = block;
    s->howmany[0].n = count;
    s->double_os = 0;
}

void execute_bufferization2(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim points = plan->dims[0];
    for (int64_t at = 0; at < plan->howmany[0].n; at += block) {
        const int64_t count = std::min(block, plan->howmany[0].n - at);
        fft_plan* columns = plan->subplans[count == block ? 0 : 1];
        copy_rows_cpx(in + 2 * at, scratch.data(), points.n, count, points.is, block);
        columns->execute(columns, scratch.data(), scratch.data());
        copy_rows_cpx(scratch.data(), out + 2 * at, points.n, count, block, points.os);
    }
}

}  // namespace

int solve_problem_bufferization2(fft_plan* plan) {
    if (!accepts(*plan) || !attach_buffer(plan, block * plan->dims[0].n * 8)) return refused;
    const int64_t rest = plan->howmany[0].n % block;
    if (!make_subplans(plan, rest ? 2 : 1)) return refused;
    float* buffer = static_cast<float*>(plan->buffer);
    make_block_subplan(plan->subplans[0], block, buffer);
    if (rest) make_block_subplan(plan->subplans[1], rest, buffer);
    if (plan_subplans(plan->subplans, plan->subplan_count) != accepted) return refused;
    plan->dims[0].os = doubled_stride(plan->double_os, plan->dims[0].os);
    return install(plan, execute_bufferization2, "execute_bufferization2");
}
