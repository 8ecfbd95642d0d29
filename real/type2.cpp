// SPDX-License-Identifier: Apache-2.0
// redft10_1d and rodft10_1d: the cosine and the sine transform of type II (redft10, rodft10) of one sequence (Makhoul
// 1980): a permutation of the input, a real transform of the same length, from its half-length complex part (even) or
// as an r2c (odd), and a rotation. One pass serves both: the sine negates odd inputs and writes its output in reverse.
#include "planner/solvers.h"
#include "real/mirror.h"
#include "real/rotation_tables.h"

namespace {

// Output k as the cosine transform numbers it, and eight of them upward or downward from k.
template <bool sine>
struct output_order {
    float* out;
    int64_t n;
    float& operator[](int64_t k) const { return out[sine ? n - 1 - k : k]; }
    void up(int64_t k, complex4 v) const { sine ? store8_down(out + n - 1 - k, v) : store4(out + k, v); }
    void down(int64_t k, complex4 v) const { sine ? store4(out + n - 1 - k, v) : store8_down(out + k, v); }
};

// y[t] = x[2t] and y[n - 1 - t] = x[2t + 1], the odd inputs negated for the sine.
template <bool sine>
void separate_even_and_odd(float* y, const float* x, int64_t n) {
    const int64_t m = n / 2;
    int64_t t = 0;
    for (; t + 8 <= m; t += 8) {
        const complex4 low = load4(x + 2 * t), high = load4(x + 2 * t + 8), odd = unzip_odd(low, high);
        store4(y + t, unzip_even(low, high));
        store8_down(y + n - 1 - t, sine ? negate(odd) : odd);
    }
    for (; t < m; ++t) {
        y[t] = x[2 * t];
        y[n - 1 - t] = sine ? -x[2 * t + 1] : x[2 * t + 1];
    }
}

// Outputs k, m - k, m + k and n - k from the pair (k, m - k) of Y: the coefficients X[k] and X[m - k] of the real
// transform, turned by Q. The product Z = 2 X[k] Q[k] holds two outputs, Re Z and -Im Z.
template <bool sine>
void rotate_pair(const output_order<sine>& result, const float* y, const rotation_tables& tables, int64_t m,
                 int64_t k) {
    const int64_t n = result.n;
    const float* const q = tables.quarter;
    const mirror_terms t = mirror(y + 2 * k, y + 2 * (m - k), tables.half + 2 * (k - 1));
    const float a = t.s + t.p, b = t.q + t.d, c = t.s - t.p, d = t.q - t.d;
    result[k] = a * q[2 * k] - b * q[2 * k + 1];
    result[n - k] = a * q[2 * (n - k)] + b * q[2 * (n - k) + 1];
    result[m - k] = c * q[2 * (m - k)] - d * q[2 * (m - k) + 1];
    result[m + k] = c * q[2 * (m + k)] + d * q[2 * (m + k) + 1];
}

// The same for eight pairs. With 2 X[k] = s + i p and the swapped back i s + p = i conj(2 X[m - k]), the products
// -(p - i s) Q[k] = i Z and -conj(i s + p) Q[m - k] hold every output with its sign.
template <bool sine>
void rotate_pairs8(const output_order<sine>& result, const float* y, const rotation_tables& tables, int64_t m,
                   int64_t k) {
    const int64_t n = result.n;
    complex4 front[2], back[2];
    for (int i = 0; i < 2; ++i) {
        const int64_t j = k + 4 * i;
        const mirror4_result x =
            mirror4_terms(load4(y + 2 * j), load4_down(y + 2 * (m - j)), load4(tables.half + 2 * (j - 1)));
        front[i] = mul_negated(x.front, load4(tables.quarter + 2 * j));
        back[i] = mul_conjugate_negated(x.back, load4_down(tables.quarter + 2 * (m - j)));
    }
    result.up(k, unzip_odd(front[0], front[1]));
    result.down(n - k, unzip_even(front[0], front[1]));
    result.down(m - k, unzip_odd(back[0], back[1]));
    result.up(m + k, unzip_even(back[0], back[1]));
}

template <bool sine>
void rotate_outputs(const output_order<sine>& result, const float* y, const rotation_tables& tables) {
    const int64_t m = result.n / 2, last = m >> 1;
    result[0] = 2 * (y[0] + y[1]);
    result[m] = 2 * (y[0] - y[1]) * tables.quarter[2 * m];
    if (last >= 8) return cover<8>(last, [&](int64_t k) { rotate_pairs8(result, y, tables, m, k); });
    for (int64_t k = 1; k <= last; ++k) rotate_pair(result, y, tables, m, k);
}

template <bool sine>
void execute_even(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const contiguous_output result(scratch, dim, out);
    float* const y = scratch.data();
    separate_even_and_odd<sine>(y, contiguous_input(scratch, dim, in), dim.n);
    run_subplan(plan, y, y);
    rotate_outputs(output_order<sine>{result.data(), dim.n}, y, tables_of(plan, dim.n / 2, dim.n));
}

template <bool sine>
void execute_odd(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t n = dim.n, m = n >> 1;
    const contiguous_output contiguous(scratch, dim, out);
    const float* const x = contiguous_input(scratch, dim, in);
    const rotation_tables tables = tables_of(plan, 0, n);
    float* const y = scratch.data();
    y[0] = x[0];
    for (int64_t i = 0; i < m; ++i) {
        y[1 + i] = sine ? -x[2 * i + 1] : x[2 * i + 1];
        y[n - 1 - i] = x[2 * i + 2];
    }
    run_subplan(plan, y, y);
    const output_order<sine> result = {contiguous.data(), n};
    result[0] = 2 * y[0];
    for (int64_t k = 1; k <= m; ++k) {
        const float a = y[2 * k], b = y[2 * k + 1], *w = tables.quarter + 2 * k;
        result[k] = 2 * (w[0] * a + w[1] * b);
        result[n - k] = 2 * (w[0] * b - w[1] * a);
    }
}

}  // namespace

int solve_problem_redft10_1d(fft_plan* plan) {
    if (!is_single_r2r(*plan, r2r_redft10)) return refused;
    return solve_by_rotation(plan, kind_r2c, sign_forward,
                             {execute_even<false>, execute_odd<false>, "execute_redft10_1d", "execute_redft10_1d_odd"});
}

int solve_problem_rodft10_1d(fft_plan* plan) {
    if (!is_single_r2r(*plan, r2r_rodft10)) return refused;
    return solve_by_rotation(plan, kind_r2c, sign_forward,
                             {execute_even<true>, execute_odd<true>, "execute_rodft10_1d", "execute_rodft10_1d_odd"});
}
