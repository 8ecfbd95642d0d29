// SPDX-License-Identifier: Apache-2.0
// c2r_many_bufferized and c2r_many: a batch of complex-to-real rows, two rows merged into one complex transform whose
// real and imaginary parts are the results. The first is for arrays in place whose layout lets a pair overwrite rows
// not yet read: it reads all rows first. The second works pair by pair; unless measured it leaves long contiguous rows
// to the half-length method.
#include "planner/solvers.h"
#include "real/pair_passes.h"
#include "real/pair_subplans.h"
#include "real/rows_kernels.h"
#include "record/in_place.h"

namespace {

void execute_c2r_many(fft_plan* plan, float* in, float* out);
void execute_c2r_many_bufferized(fft_plan* plan, float* in, float* out);

bool is_c2r_batch(const fft_plan& p) {
    return p.split != split_arrays && p.kind == kind_c2r && p.rank == 1 && p.howmany_rank == 1;
}

// Large batches of long rows are left to the loop over single rows, where that is safe.
bool better_one_by_one(const fft_plan& p) {
    return p.dims[0].n > 80 && p.dims[0].is == 1 && p.howmany[0].n >= p.dims[0].n && may_run_in_pieces(p);
}

bool accepts_bufferized(const fft_plan& p) {
    return is_c2r_batch(p) && (p.in == p.out || is_measured(p)) &&
           p.howmany[0].os != 2 * p.howmany[0].is &&  // rows in their own places need no buffer
           !better_one_by_one(p);
}

bool accepts_pairs(const fft_plan& p) {
    return is_c2r_batch(p) && p.howmany[0].n >= 2 && !(p.dims[0].n != 1 && interleaved_in_place(p)) &&
           (is_measured(p) || !long_rows_apart(p)) &&
           may_run_in_pieces(p);  // a pair written before a later row is read would spoil that row
}

// One pair, merged already: its complex transform, then the two real rows to `out`.
void finish_pair(fft_plan* plan, float* pair, float* out) {
    run(plan, complex_pair, pair, pair);
    pair_deinterleave(pair, out, out + plan->howmany[0].os, plan->dims[0].n, plan->dims[0].os);
}

void execute_c2r_many(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0], rows = plan->howmany[0];
    int64_t i = 0;
    for (; i + 2 <= rows.n; i += 2) {
        const float* const row = in + 2 * i * rows.is;
        pair_merge_c2r(scratch.data(), row, row + 2 * rows.is, dim.n, dim.is);
        finish_pair(plan, scratch.data(), out + i * rows.os);
    }
    if (i < rows.n) run(plan, single_row, in + 2 * i * rows.is, out + i * rows.os);
}

// The kernels of single rows need no scratch.
void execute_c2r_many_singly(fft_plan* plan, float* in, float* out) {
    run_singly(plan, in, out, 2 * plan->howmany[0].is, plan->howmany[0].os);
}

void execute_c2r_many_bufferized(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0], rows = plan->howmany[0];
    const int64_t pairs = rows.n >> 1;
    float* const rest = scratch.data() + 2 * pairs * dim.n;
    for (int64_t p = 0; p < pairs; ++p) {
        const float* const row = in + 4 * p * rows.is;
        pair_merge_c2r(scratch.data() + 2 * p * dim.n, row, row + 2 * rows.is, dim.n, dim.is);
    }
    if (rows.n & 1) {
        const float* const row = in + 4 * pairs * rows.is;
        for (int64_t k = 0; k <= dim.n >> 1; ++k) {
            rest[2 * k] = row[2 * k * dim.is];
            rest[2 * k + 1] = row[2 * k * dim.is + 1];
        }
    }
    for (int64_t p = 0; p < pairs; ++p) finish_pair(plan, scratch.data() + 2 * p * dim.n, out + 2 * p * rows.os);
    if (rows.n & 1) run(plan, single_row, rest, out + 2 * pairs * rows.os);
}

int install_fastest(fft_plan* plan) {
    constexpr const char* name = "execute_c2r_many";
    if (has_rows_kernel(*plan))
        return install(plan, rows_function<kind_c2r, single_row>(*plan), name, runs_rows_kernel);
    return singles_win(*plan) ? install(plan, execute_c2r_many_singly, name, runs_rows_singly)
                              : install(plan, execute_c2r_many, name);
}

}  // namespace

int solve_problem_c2r_many_bufferized(fft_plan* plan) {
    if (!accepts_bufferized(*plan)) return refused;
    const uint64_t n = plan->dims[0].n, rows = plan->howmany[0].n;
    if (!attach_buffer(plan, 8 * ((n >> 1) + 1 + (rows >> 1) * n))) return refused;
    fft_plan** const subplans = make_pair_subplans(plan);
    if (!subplans) return refused;
    // A batch of two rows or more keeps the pair in the buffer; a single row is shorter than the pair's transform,
    // which then never runs and is planned without arrays of its own.
    if (rows < 2) subplans[complex_pair]->in = subplans[complex_pair]->out = nullptr;
    subplans[single_row]->dims[0].is = 1;
    subplans[single_row]->in = static_cast<float*>(plan->buffer);
    if (plan_subplans(subplans, 2) != accepted) return refused;
    return install(plan, execute_c2r_many_bufferized, "execute_c2r_many_bufferized");
}

int solve_problem_c2r_many(fft_plan* plan) {
    if (!accepts_pairs(*plan)) return refused;
    if (!attach_buffer(plan, 16 * plan->dims[0].n)) return refused;
    fft_plan** const subplans = make_pair_subplans(plan);
    if (!subplans || plan_subplans(subplans, 2) != accepted) return refused;
    return install_fastest(plan);
}
