// SPDX-License-Identifier: Apache-2.0
// dht_1d: one discrete Hartley transform of any length (Bracewell 1983), its own inverse up to the factor n. An even
// length folds the post pass of r2c into the Hartley form; an odd one takes Re X - Im X of the complex transform.
#include "planner/solvers.h"
#include "real/packed_spectrum.h"

namespace {

constexpr packed_form hartley = {dht_post_pass, pack_hartley};

}  // namespace

int solve_problem_dht_1d(fft_plan* plan) {
    if (!is_single_r2r(*plan, r2r_dht) || !attach_packed(plan, sign_forward)) return refused;
    install_packed<hartley>(plan, {"execute_dht_1d", "execute_dht_1d_discrete", "execute_1d_dht_odd"});
    if (plan->dims[0].n & 1) return accepted;
    return plan_subplans(plan->subplans, 1);  // planned once more; the second plan is the one that runs
}
