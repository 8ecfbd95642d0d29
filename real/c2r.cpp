// SPDX-License-Identifier: Apache-2.0
// c2r_1d: one complex-to-real transform of any length. An even length n is one pass over the coefficients and a complex
// transform of length n / 2 whose result is read as pairs; an odd length is a complex transform of the whole Hermitian
// spectrum. Kernels (c2r_1d_direct) and the chains of Hermitian stages (c2r_1d_sorensen_sve and _neon) stand in front.
#include "planner/solver.h"
#include "planner/solvers.h"
#include "real/alone.h"
#include "real/half_length.h"
#include "real/half_length_passes.h"

namespace {

bool accepts(const fft_plan& p) {
    return p.split != split_arrays && p.kind == kind_c2r && p.howmany_rank == 0 && p.rank == 1;
}

const float* half_table(const fft_plan* plan) { return static_cast<const float*>(plan->aux); }

void run_subplan_in_place(fft_plan* plan, float* x) { plan->subplans[0]->execute(plan->subplans[0], x, x); }

void execute_1d_c2r(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    c2r_pre_pass(in, out, half_table(plan), plan->dims[0].n / 2, 1);
    run_subplan_in_place(plan, out);
}

void execute_1d_c2r_multithread(fft_plan* plan, float* in, float* out) {
    const scratch_below scratch(plan);
    if (!scratch) return;
    c2r_pre_ends(in, out, plan->dims[0].n / 2, 1);
    run_threaded_pass(*plan, c2r_pre_range, in, out);
    run_subplan_in_place(plan, out);
}

void execute_1d_c2r_discrete(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    float* const x = scratch.data();
    c2r_pre_pass(in, x, half_table(plan), dim.n / 2, dim.is);
    run_subplan_in_place(plan, x);
    for (int64_t j = 0; j < dim.n; ++j) out[j * dim.os] = x[j];
}

// Element 0 keeps both its parts; the upper half is the conjugate of the lower one.
void execute_1d_c2r_odd(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    float* const x = scratch.data();
    x[0] = in[0];
    x[1] = in[1];
    for (int64_t k = 1; k <= dim.n >> 1; ++k) {
        const float re = in[2 * k * dim.is], im = in[2 * k * dim.is + 1];
        x[2 * k] = x[2 * (dim.n - k)] = re;
        x[2 * k + 1] = im;
        x[2 * (dim.n - k) + 1] = -im;
    }
    run_subplan_in_place(plan, x);
    for (int64_t j = 0; j < dim.n; ++j) out[j * dim.os] = x[2 * j];
}

constexpr half_length_forms forms = {{execute_1d_c2r, "execute_1d_c2r"},
                                     {execute_1d_c2r_discrete, "execute_1d_c2r_discrete"},
                                     {execute_1d_c2r_multithread, "execute_1d_c2r_multithread"},
                                     {execute_1d_c2r_odd, "execute_1d_c2r_odd"},
                                     real_mirror_table};

}  // namespace

int solve_problem_c2r_1d(fft_plan* plan) {
    if (!accepts(*plan)) return refused;
    if (solve_half_length(plan, forms, !has_unit_strides(*plan)) != accepted) return refused;
    return run_alone<c2r_alone_bwd>(plan);
}
