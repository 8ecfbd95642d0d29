// SPDX-License-Identifier: Apache-2.0
// r2c_1d: one real-to-complex transform of any length. An even length n is a complex transform of the n / 2 pairs of
// neighbours and one pass over its result; an odd length is a complex transform of the reals with zero imaginary parts.
// The length-2 to 64 kernels (r2c_1d_direct) and the batch solvers stand in front.
#include "planner/solver.h"
#include "planner/solvers.h"
#include "real/alone.h"
#include "real/half_length.h"
#include "real/half_length_passes.h"

namespace {

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && p.kind == kind_r2c && p.howmany_rank == 0 && p.rank == 1;
}

const float* half_table(const fft_plan* plan) { return static_cast<const float*>(plan->aux); }

void run_subplan(fft_plan* plan, float* in, float* out) { plan->subplans[0]->execute(plan->subplans[0], in, out); }

void execute_1d_r2c(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    run_subplan(plan, in, out);
    r2c_post_pass(out, out, half_table(plan), plan->dims[0].n / 2, 1);
}

void execute_1d_r2c_multithread(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    run_subplan(plan, in, out);
    r2c_post_ends(out, out, plan->dims[0].n / 2, 1);
    run_threaded_pass(*plan, r2c_post_range, out, out);
}

void execute_1d_r2c_discrete(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    float* const x = scratch.data();
    for (int64_t j = 0; j < dim.n; ++j) x[j] = in[j * dim.is];
    run_subplan(plan, x, x);
    r2c_post_pass(x, out, half_table(plan), dim.n / 2, dim.os);
}

void execute_1d_r2c_odd(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    float* const x = scratch.data();
    for (int64_t j = 0; j < dim.n; ++j) {
        x[2 * j] = in[j * dim.is];
        x[2 * j + 1] = 0;
    }
    run_subplan(plan, x, x);
    for (int64_t k = 0; k <= dim.n >> 1; ++k) {
        out[2 * k * dim.os] = x[2 * k];
        out[2 * k * dim.os + 1] = x[2 * k + 1];
    }
}

constexpr half_length_forms forms = {{execute_1d_r2c, "execute_1d_r2c"},
                                     {execute_1d_r2c_discrete, "execute_1d_r2c_discrete"},
                                     {execute_1d_r2c_multithread, "execute_1d_r2c_multithread"},
                                     {execute_1d_r2c_odd, "execute_1d_r2c_odd"},
                                     real_mirror_table_down};

}  // namespace

int solve_problem_r2c_1d(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    if (solve_half_length(plan, forms, !has_unit_strides(*plan) || plan->double_os == 1) != accepted) return refused;
    return run_alone<r2c_alone_fwd, true>(plan);
}
