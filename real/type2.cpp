// SPDX-License-Identifier: Apache-2.0
// Rows 58 and 61: the cosine and the sine transform of type II (redft10, rodft10) of one sequence (Makhoul 1980): a
// permutation of the input, a real transform of the same length, from its half-length complex part (even) or as an r2c
// (odd), and a rotation. One pass serves both: the sine negates odd inputs and writes its output in reverse.
#include "planner/solvers.h"
#include "real/mirror.h"
#include "real/real_subplan.h"
#include "real/rotation_tables.h"

namespace {

// Output k as the cosine transform numbers it.
template <bool sine>
struct output_order {
    float* out;
    int64_t n, os;
    float& operator[](int64_t k) const { return out[(sine ? n - 1 - k : k) * os]; }
};

template <bool sine>
void execute_even(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t n = dim.n, m = n / 2;
    const rotation_tables tables = tables_of(plan, m, n);
    const float* const q = tables.quarter;
    float* const y = scratch.data();
    for (int64_t t = 0; t < m; ++t) {
        y[t] = in[2 * t * dim.is];
        y[n - 1 - t] = sine ? -in[(2 * t + 1) * dim.is] : in[(2 * t + 1) * dim.is];
    }
    run_subplan(plan, y, y);
    const output_order<sine> result = {out, n, dim.os};
    result[0] = 2 * (y[0] + y[1]);
    result[m] = 2 * (y[0] - y[1]) * q[2 * m];
    for (int64_t k = 1; k <= m >> 1; ++k) {
        const mirror_terms t = mirror(y + 2 * k, y + 2 * (m - k), tables.half + 2 * (k - 1));
        const float a = t.s + t.p, b = t.q + t.d, c = t.s - t.p, d = t.q - t.d;
        result[k] = a * q[2 * k] - b * q[2 * k + 1];
        result[n - k] = a * q[2 * (n - k)] + b * q[2 * (n - k) + 1];
        result[m - k] = c * q[2 * (m - k)] - d * q[2 * (m - k) + 1];
        result[m + k] = c * q[2 * (m + k)] + d * q[2 * (m + k) + 1];
    }
}

template <bool sine>
void execute_odd(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t n = dim.n, m = n >> 1;
    const rotation_tables tables = tables_of(plan, 0, n);
    float* const x = scratch.data();
    x[0] = in[0];
    for (int64_t i = 0; i < m; ++i) {
        x[1 + i] = sine ? -in[(2 * i + 1) * dim.is] : in[(2 * i + 1) * dim.is];
        x[n - 1 - i] = in[(2 * i + 2) * dim.is];
    }
    run_subplan(plan, x, x);
    const output_order<sine> result = {out, n, dim.os};
    result[0] = 2 * x[0];
    for (int64_t k = 1; k <= m; ++k) {
        const float a = x[2 * k], b = x[2 * k + 1], *w = tables.quarter + 2 * k;
        result[k] = 2 * (w[0] * a + w[1] * b);
        result[n - k] = 2 * (w[0] * b - w[1] * a);
    }
}

template <bool sine>
int solve(fft_plan* plan, const char* even_name, const char* odd_name) {
    if (!is_single_r2r(*plan, sine ? r2r_rodft10 : r2r_redft10)) return refused;
    const int64_t n = plan->dims[0].n;
    const bool odd = n & 1;
    if (!attach_trigonometric_buffer(plan)) return refused;
    if (!plan_buffer_subplan(plan, odd ? kind_r2c : kind_c2c, odd ? n : n / 2, sign_forward)) return refused;
    if (!attach_rotation_tables(plan, odd ? 0 : n / 2, n, 0)) return refused;
    return odd ? install(plan, execute_odd<sine>, odd_name) : install(plan, execute_even<sine>, even_name);
}

}  // namespace

int solve_problem_redft10_1d(fft_plan* plan) {
    return solve<false>(plan, "execute_redft10_1d", "execute_redft10_1d_odd");
}

int solve_problem_rodft10_1d(fft_plan* plan) {
    return solve<true>(plan, "execute_rodft10_1d", "execute_rodft10_1d_odd");
}
