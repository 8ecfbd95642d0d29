// SPDX-License-Identifier: Apache-2.0
// c2c_1d_direct_discrete_neon, c2c_1d_direct_neon and c2c_1d_direct_sve: one complex transform whose length has a
// kernel of its own. The plan is that kernel in `aux`, and executing it is one call. The discrete form takes any
// strides, the others unit strides; of these NEON stands first, so that SVE is reached only by measuring. A contiguous
// length of 64 runs faster as two stages on most problems, so that only the clock may choose its kernel.
#include "kernels/lookup.h"
#include "planner/solver.h"
#include "planner/solvers.h"

namespace {

constexpr int64_t longest_kernel = 64;

bool accepts_strided(const fft_plan& p) {
    return is_one_complex_transform(p) && p.dims[0].n <= longest_kernel && !has_unit_strides(p);
}

bool accepts_contiguous(const fft_plan& p) {
    return is_one_complex_transform(p) && p.dims[0].n <= longest_kernel && has_unit_strides(p) &&
           (p.dims[0].n != longest_kernel || is_measured(p));
}

void execute_strided(fft_plan* plan, float* in, float* out) {
    const auto kernel = *static_cast<const direct_strided_kernel*>(plan->aux);
    kernel(out, in, plan->dims[0].is, plan->dims[0].os, plan->aux);
}

void execute_contiguous(fft_plan* plan, float* in, float* out) {
    const auto kernel = *static_cast<const direct_contig_kernel*>(plan->aux);
    kernel(out, in, plan->aux, plan);
}

int solve_contiguous(fft_plan* plan, direct_contig_kernel (*lookup)(const fft_plan*, uint64_t), const char* name) {
    if (!accepts_contiguous(*plan) || !attach_kernel(plan, lookup(plan, plan->dims[0].n))) return refused;
    return install(plan, execute_contiguous, name);
}

}  // namespace

int solve_problem_c2c_1d_direct_discrete_neon(fft_plan* plan) {
    if (!accepts_strided(*plan) || !attach_kernel(plan, lookup_direct_discrete_neon(plan, plan->dims[0].n)))
        return refused;
    return install(plan, execute_strided, "execute_c2c_1d_direct_discrete_neon");
}

int solve_problem_c2c_1d_direct_neon(fft_plan* plan) {
    return solve_contiguous(plan, lookup_direct_neon, "execute_c2c_1d_direct_neon");
}

int solve_problem_c2c_1d_direct_sve(fft_plan* plan) {
    return solve_contiguous(plan, lookup_direct_sve, "execute_c2c_1d_direct_sve");
}
