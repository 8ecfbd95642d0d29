// SPDX-License-Identifier: Apache-2.0
// r2c_many_bufferized and r2c_many: a batch of real-to-complex rows, two rows at a time as one complex transform that
// is taken apart by symmetry. The first is for arrays in place whose layout lets a pair overwrite rows not yet read: it
// reads all rows first. The second works pair by pair; unless measured it leaves long contiguous rows to the
// half-length method, but for the one length at which pairs win.
#include "planner/solvers.h"
#include "real/pair_passes.h"
#include "real/pair_subplans.h"
#include "real/rows_kernels.h"
#include "record/in_place.h"

namespace {

constexpr int64_t length_where_pairs_win = 1458;

void execute_r2c_many(fft_plan* plan, float* in, float* out);
void execute_r2c_many_bufferized(fft_plan* plan, float* in, float* out);

bool is_r2c_batch(const fft_plan& p) {
    return p.split != split_arrays && p.kind == kind_r2c && p.rank == 1 && p.howmany_rank == 1;
}

bool accepts_bufferized(const fft_plan& p) {
    return is_r2c_batch(p) && (p.in == p.out || is_measured(p)) &&
           p.howmany[0].is != 2 * p.howmany[0].os;  // rows in their own places need no buffer
}

bool accepts_pairs(const fft_plan& p) {
    return is_r2c_batch(p) && !interleaved_in_place(p) &&
           (is_measured(p) || !long_rows_apart(p) || p.dims[0].n == length_where_pairs_win) &&
           may_run_in_pieces(p);  // a pair written before a later row is read would spoil that row
}

// One pair: complex transform of (row a, row b) in `pair`, then the coefficients of both to `out`.
void finish_pair(fft_plan* plan, float* pair, float* out) {
    run(plan, complex_pair, pair, pair);
    pair_split_r2c(out, out + 2 * plan->howmany[0].os, pair, plan->dims[0].n, plan->dims[0].os);
}

void execute_r2c_many(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0], rows = plan->howmany[0];
    int64_t i = 0;
    for (; i + 2 <= rows.n; i += 2) {
        const float* const row = in + i * rows.is;
        pair_interleave(row, row + rows.is, scratch.data(), dim.n, dim.is);
        finish_pair(plan, scratch.data(), out + 2 * i * rows.os);
    }
    if (i < rows.n) run(plan, single_row, in + i * rows.is, out + 2 * i * rows.os);
}

// The kernels of single rows need no scratch.
void execute_r2c_many_singly(fft_plan* plan, float* in, float* out) {
    run_singly(plan, in, out, plan->howmany[0].is, 2 * plan->howmany[0].os);
}

void execute_r2c_many_bufferized(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0], rows = plan->howmany[0];
    const int64_t pairs = rows.n >> 1;
    float* const rest = scratch.data() + 2 * pairs * dim.n;
    for (int64_t p = 0; p < pairs; ++p) {
        const float* const row = in + 2 * p * rows.is;
        pair_interleave(row, row + rows.is, scratch.data() + 2 * p * dim.n, dim.n, dim.is);
    }
    if (rows.n & 1)
        for (int64_t j = 0; j < dim.n; ++j) rest[j] = in[2 * pairs * rows.is + j * dim.is];
    for (int64_t p = 0; p < pairs; ++p) finish_pair(plan, scratch.data() + 2 * p * dim.n, out + 4 * p * rows.os);
    if (rows.n & 1) run(plan, single_row, rest, out + 4 * pairs * rows.os);
}

int install_fastest(fft_plan* plan) {
    constexpr const char* name = "execute_r2c_many";
    if (has_rows_kernel(*plan))
        return install(plan, rows_function<kind_r2c, single_row>(*plan), name, runs_rows_kernel);
    return singles_win(*plan) ? install(plan, execute_r2c_many_singly, name, runs_rows_singly)
                              : install(plan, execute_r2c_many, name);
}

}  // namespace

int solve_problem_r2c_many_bufferized(fft_plan* plan) {
    if (!accepts_bufferized(*plan)) return refused;
    if (!attach_buffer(plan, 8 * plan->dims[0].n * plan->howmany[0].n)) return refused;
    fft_plan** const subplans = make_pair_subplans(plan);
    if (!subplans) return refused;
    subplans[single_row]->dims[0].is = 1;
    subplans[single_row]->in = static_cast<float*>(plan->buffer);
    if (plan_subplans(subplans, 2) != accepted) return refused;
    return install(plan, execute_r2c_many_bufferized, "execute_r2c_many_bufferized");
}

int solve_problem_r2c_many(fft_plan* plan) {
    if (!accepts_pairs(*plan)) return refused;
    if (!attach_buffer(plan, 16 * plan->dims[0].n)) return refused;
    fft_plan** const subplans = make_pair_subplans(plan);
    if (!subplans || plan_subplans(subplans, 2) != accepted) return refused;
    return install_fastest(plan);
}
