// SPDX-License-Identifier: Apache-2.0
// solve_bufferized_problem: large batches of long complex transforms stored by columns. A block of transforms goes to a
// block buffer as contiguous rows (indirect does that, whatever the shape) and from there, transposed, to the output.
// The lengths that are left to later rows were slower this way; they come back when the plan is measured.
#include "dft/sizes.h"
#include "kernels/move/move.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "threads/threads.h"

namespace {

bool is_large_batch_of_columns(const fft_plan& p) {
    return p.kind == kind_c2c && p.split != split_arrays && p.rank == 1 && p.howmany_rank == 1 && p.dims[0].n >= 256 &&
           p.howmany[0].n >= 17 && p.howmany[0].is == 1 && p.howmany[0].os == 1;
}

// Columns of the Hermitian half that a two-dimensional real transform leaves.
bool is_half(const fft_plan& p) { return p.dims[0].is == p.dims[0].n / 2 + 1 && p.dims[0].is == p.dims[0].os; }

bool is_slower_this_way(int64_t n) { return n < 1025 || n == 1458 || n == 2048 || n == 2916 || n == 4608 || n == 6480; }

bool accepts(const fft_plan& p) {
    const int64_t n = p.dims[0].n;
    if (!is_large_batch_of_columns(p)) return false;
    if (is_half(p)) return n >= 576 && n <= 800;
    return p.dims[0].is == n && p.dims[0].os == n &&
           (!has_large_prime_factor(n) || n * p.howmany[0].n * 16 > 293601279) &&
           (is_measured(p) || !is_slower_this_way(n));
}

int64_t block_of(const fft_plan& p) {
    const bool wide = p.howmany[0].n >= 256 || thread_get_nthreads() != 1;
    if (wide) return 16;
    return is_half(p) ? p.howmany[0].n >> 1 : p.howmany[0].n;
}

uint64_t block_bytes(int64_t block, int64_t row) { return static_cast<uint64_t>(block * row) * 8; }

// `count` transforms from the columns of the input to the rows of a block.
void make_block_subplan(fft_plan* s, const fft_plan& p, int64_t count, int64_t row, float* block) {
    s->blocked_is = static_cast<int32_t>(p.howmany[0].is);
    s->blocked_os = static_cast<int32_t>(p.howmany[0].os);
    s->blocked_count = static_cast<uint32_t>(p.howmany[0].n);
    s->blocked_row = static_cast<int32_t>(row);
    s->blocked_child = 1;
    s->dims[0].os = 1;
    s->howmany[0].n = count;
    s->howmany[0].os = row;
    s->out = block;
}

void execute_bufferization(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    fft_plan* whole = plan->subplans[0];
    const int64_t n = plan->dims[0].n, count = whole->howmany[0].n, row = whole->blocked_row;
    float* const block = scratch.data();
    int64_t left = plan->howmany[0].n;
    for (; left >= count; left -= count) {
        whole->execute(whole, in, block);
        transpose_cpx_tiled(block, out, count, n, row, plan->dims[0].os);
        in += 2 * whole->blocked_is * count;
        out += 2 * whole->blocked_os * count;
    }
    if (left > 0) {
        fft_plan* rest = plan->subplans[1];
        rest->execute(rest, in, block);
        transpose_cpx_tiled(block, out, left, n, row, plan->dims[0].os);
    }
}

}  // namespace

int solve_bufferized_problem(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    const int64_t block = block_of(*plan), rest = plan->howmany[0].n % block, row = (plan->dims[0].n + 7) & ~int64_t{7};
    if (!make_subplans(plan, rest ? 2 : 1)) return refused;
    if (!fits_into_memory(block_bytes(block, row))) return refused;
    // Every execution brings its own block. This one is what the subplans are planned, and may be measured, on.
    float* trial = static_cast<float*>(qsl_fftf_malloc(block_bytes(block, row)));
    if (!trial) return refused;
    make_block_subplan(plan->subplans[0], *plan, block, row, trial);
    if (rest) make_block_subplan(plan->subplans[1], *plan, rest, row, trial);
    const int planned = plan_subplans(plan->subplans, plan->subplan_count);
    qsl_fftf_free(trial);
    if (planned != accepted) return refused;
    plan->brought_lines = static_cast<uint32_t>((block_bytes(block, row) + 63) / 64);
    return install(plan, execute_bufferization, "execute_bufferization");
}
