// SPDX-License-Identifier: Apache-2.0
// hc2r_1d: one half-complex to real transform of any length, unnormalised: an even length by a complex transform of
// half the length, an odd one by a complex transform of the whole Hermitian spectrum.
#include "planner/solvers.h"
#include "real/packed_spectrum.h"

namespace {

void execute_hc2r_1d(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    float* const c = scratch.data();
    hc2r_pre_pass(c, in, static_cast<const float*>(plan->aux), dim.n / 2, dim.is);
    if (has_unit_strides(*plan)) return run_subplan(plan, c, out);
    run_subplan(plan, c, c);
    scatter_reals(out, c, dim.n, dim.os);
}

void execute_1d_hc2r_odd(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    float* const y = scratch.data();
    unpack_half_complex(y, in, dim.n, dim.is);
    run_subplan(plan, y, y);
    for (int64_t j = 0; j < dim.n; ++j) out[j * dim.os] = y[2 * j];
}

}  // namespace

int solve_problem_hc2r_1d(fft_plan* plan) {
    if (!is_single_r2r(*plan, r2r_hc2r) || !attach_packed(plan, sign_backward)) return refused;
    if (plan->dims[0].n & 1) return install(plan, execute_1d_hc2r_odd, "execute_1d_hc2r_odd");
    return install(plan, execute_hc2r_1d, "execute_hc2r_1d");
}
