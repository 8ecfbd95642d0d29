// SPDX-License-Identifier: Apache-2.0
// c2r_multidimension_many and r2c_multidimension_many: a batch of two-dimensional real transforms in place whose items
// are interleaved element by element. One subplan goes from the array to scratch, for all items, before the other comes
// back from scratch and writes the first element: c2r transforms the columns first, r2c the rows. Scratch has the
// layout of the array's complex side.
#include <algorithm>

#include "planner/solver.h"
#include "planner/solvers.h"

namespace {

bool accepts(const fft_plan& p, uint32_t kind) {
    return p.split != split_arrays && p.kind == kind && p.in == p.out && p.rank == 2 && p.howmany_rank == 1 &&
           p.howmany[0].is == 1 && p.howmany[0].os == 1;
}

// Bytes of the scratch: a compact copy, or the span of the complex layout where padding makes that larger.
uint64_t scratch_bytes(const fft_plan& p, int64_t slow_stride, int64_t fast_stride) {
    const int64_t n0 = p.dims[0].n, n1 = p.dims[1].n, items = p.howmany[0].n;
    const int64_t span = 1 + (n0 - 1) * slow_stride + (n1 / 2) * fast_stride + (items - 1);
    return 8 * std::max(n0 * n1 * items, span);
}

// Subplan 0 does the real rows, subplan 1 the complex columns of the n / 2 + 1 coefficients.
bool make_row_and_column_subplans(fft_plan* plan) {
    if (!make_subplans(plan, 2)) return false;
    fft_plan *rows = plan->subplans[0], *columns = plan->subplans[1];
    rows->rank = columns->rank = 1;
    rows->dims[0] = plan->dims[1];
    rows->howmany_rank = columns->howmany_rank = 1;
    rows->howmany[0] = plan->dims[0];
    columns->kind = kind_c2c;
    columns->dims[0] = plan->dims[0];
    columns->howmany[0] = {plan->dims[1].n / 2 + 1, plan->dims[1].is, plan->dims[1].os};
    return true;
}

void run_all_items(fft_plan* plan, int which, float* in, float* out) {
    fft_plan* const sub = plan->subplans[which];
    uint64_t in_bytes, out_bytes;
    fft_element_sizes(sub->kind, &in_bytes, &out_bytes);
    const int64_t in_step = in_bytes / 4, out_step = out_bytes / 4;  // items are one element apart on both sides
    for (int64_t i = 0; i < plan->howmany[0].n; ++i) sub->execute(sub, in + i * in_step, out + i * out_step);
}

void execute_r2c_multidimension_many(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    run_all_items(plan, 0, in, scratch.data());
    run_all_items(plan, 1, scratch.data(), out);
}

void execute_c2r_multidimension_many(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    run_all_items(plan, 1, in, scratch.data());
    run_all_items(plan, 0, scratch.data(), out);
}

}  // namespace

int solve_problem_r2c_multidimension_many(fft_plan* plan) {
    if (!accepts(*plan, kind_r2c)) return refused;
    if (!attach_buffer(plan, scratch_bytes(*plan, plan->dims[0].os, plan->dims[1].os))) return refused;
    if (!make_row_and_column_subplans(plan)) return refused;
    fft_plan *rows = plan->subplans[0], *columns = plan->subplans[1];
    columns->dims[0].is = columns->dims[0].os;
    columns->howmany[0].is = columns->howmany[0].os;
    rows->out = columns->in = static_cast<float*>(plan->buffer);
    if (plan_subplans(plan->subplans, 2) != accepted) return refused;
    return install(plan, execute_r2c_multidimension_many, "execute_r2c_multidimension_many");
}

int solve_problem_c2r_multidimension_many(fft_plan* plan) {
    if (!accepts(*plan, kind_c2r)) return refused;
    if (!attach_buffer(plan, scratch_bytes(*plan, plan->dims[0].is, plan->dims[1].is))) return refused;
    if (!make_row_and_column_subplans(plan)) return refused;
    fft_plan *rows = plan->subplans[0], *columns = plan->subplans[1];
    columns->dims[0].os = columns->dims[0].is;
    columns->howmany[0].os = columns->howmany[0].is;
    columns->out = rows->in = static_cast<float*>(plan->buffer);
    if (plan_subplans(plan->subplans, 2) != accepted) return refused;
    return install(plan, execute_c2r_multidimension_many, "execute_c2r_multidimension_many");
}
