// SPDX-License-Identifier: Apache-2.0
// Row 51: one real-to-complex transform of any length. An even length n is a complex transform of the n / 2 pairs of
// neighbours and one pass over its result; an odd length is a complex transform of the reals with zero imaginary parts.
// The length-2 to 64 kernels (row 27) and the batch solvers stand in front.
#include "planner/solver.h"
#include "planner/solvers.h"
#include "real/half_length.h"
#include "real/half_length_passes.h"

namespace {

void execute_1d_r2c(fft_plan* plan, float* in, float* out);
void execute_1d_r2c_discrete(fft_plan* plan, float* in, float* out);
void execute_1d_r2c_multithread(fft_plan* plan, float* in, float* out);
void execute_1d_r2c_odd(fft_plan* plan, float* in, float* out);

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && p.kind == kind_r2c && p.howmany_rank == 0 && p.rank == 1;
}

int solve_odd(fft_plan* plan) {
    const int64_t n = plan->dims[0].n;
    if (!attach_buffer(plan, 8 * n)) return refused;
    fft_plan* sub = make_complex_subplan(plan, n);
    if (!sub) return refused;
    sub->in = sub->out = static_cast<float*>(plan->buffer);  // the caller's arrays are too small for n complex numbers
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    return install(plan, execute_1d_r2c_odd, "execute_1d_r2c_odd");
}

int solve_even(fft_plan* plan) {
    const int64_t m = plan->dims[0].n / 2;
    const bool contiguous = unit_strides(*plan) && plan->double_os != 1;
    if (!contiguous && !attach_buffer(plan, 8 * m)) return refused;
    if (!make_complex_subplan(plan, m) || plan_subplans(plan->subplans, 1) != accepted) return refused;
    if (!attach_half_table(plan, m)) return refused;
    if (prepare_threaded_pass(*plan)) return install(plan, execute_1d_r2c_multithread, "execute_1d_r2c_multithread");
    if (unit_strides(*plan)) return install(plan, execute_1d_r2c, "execute_1d_r2c");
    return install(plan, execute_1d_r2c_discrete, "execute_1d_r2c_discrete");
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

}  // namespace

int solve_problem_r2c_1d(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    return plan->dims[0].n & 1 ? solve_odd(plan) : solve_even(plan);
}
