// SPDX-License-Identifier: Apache-2.0
// redft01_1d and rodft01_1d: the cosine and the sine transform of type III (redft01, rodft01) of one sequence: a
// rotation of the input, a real transform of the same length from its half-length complex part (even) or as a c2r
// (odd), and a permutation. One pass serves both: the sine reads its input in reverse and negates odd outputs.
#include "real/type3.h"

#include "planner/solvers.h"
#include "real/rotation_tables.h"

namespace {

// Input k as the cosine transform reads it, and eight of them upward or downward from k.
template <bool sine>
struct input_order {
    const float* x;
    int64_t n;
    float operator[](int64_t k) const { return x[sine ? n - 1 - k : k]; }
    complex4 up(int64_t k) const { return sine ? load8_down(x + n - 1 - k) : load4(x + k); }
    complex4 down(int64_t k) const { return sine ? load4(x + n - 1 - k) : load8_down(x + k); }
};

// The rotation and the pre pass of c2r for the pair (k, m - k), which needs the inputs k, n - k, m - k and m + k.
template <bool sine>
void rotate_pair(float* z, const input_order<sine>& x, const rotation_tables& tables, int64_t m, int64_t k) {
    float front[2], back[2];
    rotate_back(front, x[k], x[x.n - k], tables.quarter + 2 * k);
    rotate_back(back, x[m - k], x[m + k], tables.quarter + 2 * (m - k));
    inverse_mirror(front[0], front[1], back[0], back[1], tables.half + 2 * (k - 1), z + 2 * k, z + 2 * (m - k));
}

template <bool sine>
void rotate_pairs8(float* z, const input_order<sine>& x, const rotation_tables& tables, int64_t m, int64_t k) {
    const complex4 re = x.up(k), im = x.down(x.n - k), back_re = x.down(m - k), back_im = x.up(m + k);
    const complex4 front[2] = {zip_low(re, im), zip_high(re, im)};
    const complex4 back[2] = {zip_low(back_re, back_im), zip_high(back_re, back_im)};
    for (int i = 0; i < 2; ++i) {
        const int64_t j = k + 4 * i;
        const mirror4_result c =
            rotate_and_mirror4(front[i], back[i], load4(tables.quarter + 2 * j),
                               load4_down(tables.quarter + 2 * (m - j)), load4(tables.half + 2 * (j - 1)));
        store4(z + 2 * j, c.front);
        store_back(z + 2 * (m - j), c.back);
    }
}

template <bool sine>
void rotate_inputs(float* z, const input_order<sine>& x, const rotation_tables& tables) {
    const int64_t m = x.n / 2, last = m >> 1;
    const float middle = rotated_middle(x[m], tables.quarter + 2 * m);
    z[0] = x[0] + middle;
    z[1] = x[0] - middle;
    if (last >= 8) return cover<8>(last, [&](int64_t k) { rotate_pairs8(z, x, tables, m, k); });
    for (int64_t k = 1; k <= last; ++k) rotate_pair(z, x, tables, m, k);
}

template <bool sine>
void execute_even(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const contiguous_output result(scratch, dim, out);
    const input_order<sine> x = {contiguous_input(scratch, dim, in), dim.n};
    float* const z = scratch.data();
    rotate_inputs(z, x, tables_of(plan, dim.n / 2, dim.n));
    run_subplan(plan, z, z);
    interleave_even_length(z, result.data(), dim.n, sine ? -1.0f : 1.0f);
}

template <bool sine>
void execute_odd(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t n = dim.n;
    const contiguous_output result(scratch, dim, out);
    const input_order<sine> x = {contiguous_input(scratch, dim, in), n};
    const rotation_tables tables = tables_of(plan, 0, n);
    float* const z = scratch.data();
    z[0] = x[0];
    z[1] = 0;
    for (int64_t k = 1; k <= n >> 1; ++k) rotate_forth(z + 2 * k, x[k], x[n - k], tables.quarter + 2 * k);
    run_subplan(plan, z, z);
    interleave_odd_length(z, result.data(), n, sine ? -1.0f : 1.0f);
}

}  // namespace

int solve_problem_redft01_1d(fft_plan* plan) {
    if (!is_single_r2r(*plan, r2r_redft01)) return refused;
    return solve_by_rotation(plan, kind_c2r, sign_backward,
                             {execute_even<false>, execute_odd<false>, "execute_redft01_1d", "execute_redft01_1d_odd"});
}

int solve_problem_rodft01_1d(fft_plan* plan) {
    if (!is_single_r2r(*plan, r2r_rodft01)) return refused;
    return solve_by_rotation(plan, kind_c2r, sign_backward,
                             {execute_even<true>, execute_odd<true>, "execute_rodft01_1d", "execute_rodft01_1d_odd"});
}
