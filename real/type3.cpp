// SPDX-License-Identifier: Apache-2.0
// Rows 57 and 60: the cosine and the sine transform of type III (redft01, rodft01) of one sequence: a rotation of the
// input, a real transform of the same length from its half-length complex part (even) or as a c2r (odd), and a
// permutation. One pass serves both: the sine reads its input in reverse and negates odd outputs.
#include "real/type3.h"

#include "planner/solvers.h"
#include "real/half_length_passes.h"
#include "real/real_subplan.h"
#include "real/rotation_tables.h"

namespace {

// Input k as the cosine transform reads it.
template <bool sine>
struct input_order {
    const float* x;
    int64_t n, is;
    float operator[](int64_t k) const { return x[(sine ? n - 1 - k : k) * is]; }
};

template <bool sine>
void execute_even(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t n = dim.n, m = n / 2;
    const rotation_tables tables = tables_of(plan, m, n);
    const input_order<sine> x = {in, n, dim.is};
    float* const z = scratch.data();
    z[0] = x[0];
    z[1] = 0;
    for (int64_t k = 1; k < m; ++k) rotate_back(z + 2 * k, x[k], x[n - k], tables.quarter + 2 * k);
    rotate_middle(z + 2 * m, x[m], tables.quarter + 2 * m);
    c2r_pre_pass(z, z, tables.half, m, 1);
    run_subplan(plan, z, z);
    interleave_even_length(z, out, n, dim.os, sine ? -1.0f : 1.0f);
}

template <bool sine>
void execute_odd(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t n = dim.n;
    const rotation_tables tables = tables_of(plan, 0, n);
    const input_order<sine> x = {in, n, dim.is};
    float* const z = scratch.data();
    z[0] = x[0];
    z[1] = 0;
    for (int64_t k = 1; k <= n >> 1; ++k) rotate_forth(z + 2 * k, x[k], x[n - k], tables.quarter + 2 * k);
    run_subplan(plan, z, z);
    interleave_odd_length(z, out, n, dim.os, sine ? -1.0f : 1.0f);
}

template <bool sine>
int solve(fft_plan* plan, const char* even_name, const char* odd_name) {
    if (!is_single_r2r(*plan, sine ? r2r_rodft01 : r2r_redft01)) return refused;
    const int64_t n = plan->dims[0].n;
    const bool odd = n & 1;
    if (!attach_trigonometric_buffer(plan)) return refused;
    if (!plan_buffer_subplan(plan, odd ? kind_c2r : kind_c2c, odd ? n : n / 2, sign_backward)) return refused;
    if (!attach_rotation_tables(plan, odd ? 0 : n / 2, n, 0)) return refused;
    return odd ? install(plan, execute_odd<sine>, odd_name) : install(plan, execute_even<sine>, even_name);
}

}  // namespace

int solve_problem_redft01_1d(fft_plan* plan) {
    return solve<false>(plan, "execute_redft01_1d", "execute_redft01_1d_odd");
}

int solve_problem_rodft01_1d(fft_plan* plan) {
    return solve<true>(plan, "execute_rodft01_1d", "execute_rodft01_1d_odd");
}
