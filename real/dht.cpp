// SPDX-License-Identifier: Apache-2.0
// dht_1d: one discrete Hartley transform of any length (Bracewell 1983), its own inverse up to the factor n. An even
// length folds the post pass of r2c into the Hartley form; an odd one takes Re X - Im X of the complex transform.
#include "planner/solvers.h"
#include "real/half_complex_passes.h"
#include "real/half_length.h"
#include "real/real_subplan.h"

namespace {

void execute_dht_1d(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    run_subplan(plan, in, scratch.data());
    dht_post_pass(scratch.data(), out, static_cast<const float*>(plan->aux), plan->dims[0].n / 2, 1);
}

void execute_dht_1d_discrete(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    gather_reals(scratch.data(), in, dim.n, dim.is);
    run_subplan(plan, scratch.data(), scratch.data());
    dht_post_pass(scratch.data(), out, static_cast<const float*>(plan->aux), dim.n / 2, dim.os);
}

void execute_1d_dht_odd(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    gather_as_complex(scratch.data(), in, dim.n, dim.is);
    run_subplan(plan, scratch.data(), scratch.data());
    pack_hartley(scratch.data(), out, dim.n, dim.os);
}

}  // namespace

int solve_problem_dht_1d(fft_plan* plan) {
    if (!is_single_r2r(*plan, r2r_dht)) return refused;
    const int64_t n = plan->dims[0].n;
    if (n & 1) {
        if (!attach_buffer(plan, 8 * n) || !plan_buffer_subplan(plan, kind_c2c, n, sign_forward)) return refused;
        return install(plan, execute_1d_dht_odd, "execute_1d_dht_odd");
    }
    if (!attach_buffer(plan, 32 * (n + 2)) || !plan_buffer_subplan(plan, kind_c2c, n / 2, sign_forward) ||
        !attach_half_table(plan, n / 2))
        return refused;
    if (unit_strides(*plan))
        install(plan, execute_dht_1d, "execute_dht_1d");
    else
        install(plan, execute_dht_1d_discrete, "execute_dht_1d_discrete");
    return plan_subplans(plan->subplans, 1);  // planned once more; the second plan is the one that runs
}
