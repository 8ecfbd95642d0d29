// SPDX-License-Identifier: Apache-2.0
// Rows 59 and 62: the cosine and the sine transform of type IV (redft11, rodft11) of one sequence. An even length is
// split into two transforms of type III of half the length, B of sums and A of differences of neighbours, whose results
// are rotated together; an odd length is a gather, a half-complex transform and signs, without any twiddle. For even
// lengths the sine is the cosine of the sign-alternated input with its outputs reversed; for odd ones the cosine of the
// reversed input with its outputs sign-alternated.
#include "planner/solvers.h"
#include "real/half_length_passes.h"
#include "real/real_subplan.h"
#include "real/rotation_tables.h"
#include "real/type3.h"

namespace {

// Sum and difference of the inputs 2i - 1 and 2i as the cosine transform sees them.
template <bool sine>
struct neighbours {
    const float* x;
    int64_t is;
    float odd(int64_t j) const { return sine ? -x[j * is] : x[j * is]; }
    float even(int64_t j) const { return x[j * is]; }
    float sum(int64_t i) const { return odd(2 * i - 1) + even(2 * i); }
    float difference(int64_t i) const { return odd(2 * i - 1) - even(2 * i); }
};

// P[i] and S[i] to outputs i and n - 1 - i. Type III weighs its first input by 1 and the others by 2: adding the two
// end values gives them their second weight.
template <bool sine>
void combine(const float* p, const float* s, const float* table, float first, float last, float* out, int64_t n,
             int64_t os) {
    for (int64_t i = 0; i < n / 2; ++i) {
        const float u = p[i] + first, v = s[i] + (i & 1 ? -last : last), *e = table + 2 * i;
        out[(sine ? n - 1 - i : i) * os] = u * e[0] + v * e[1];
        out[(sine ? i : n - 1 - i) * os] = u * e[1] - v * e[0];
    }
}

// n a multiple of 4: the rotations of A and B straight from the input, each then half of a complex transform of n / 4.
template <bool sine>
void execute_quarter(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t n = dim.n, h = n / 2, q = n / 4;
    const rotation_tables tables = tables_of(plan, q, h);
    const neighbours<sine> x = {in, dim.is};
    float *const head = scratch.data(), *const a = head + 2 * q, *const b = a + h + 2;
    const float first = x.even(0), last = x.odd(n - 1);
    a[0] = last;
    b[0] = first;
    a[1] = b[1] = 0;
    for (int64_t k = 1; k < q; ++k) {
        const float* const w = tables.quarter + 2 * k;
        rotate_back(a + 2 * k, x.difference(h - k), x.difference(k), w);
        rotate_back(b + 2 * k, x.sum(k), x.sum(h - k), w);
    }
    rotate_middle(a + 2 * q, x.difference(q), tables.quarter + 2 * q);
    rotate_middle(b + 2 * q, x.sum(q), tables.quarter + 2 * q);
    const float odd[2] = {-1, 1};
    for (int which = 0; which < 2; ++which) {
        float* const z = which ? b : a;
        c2r_pre_pass(z, z, tables.half, q, 1);
        run_subplan(plan, z, head);
        interleave_even_length(head, z, h, 1, odd[which]);
    }
    combine<sine>(b, a, tables.eighth, first, last, out, n, dim.os);
}

// n even with n / 2 odd: two type III transforms of odd length, A first, with the c2r at the head of scratch.
template <bool sine>
void execute_even(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t n = dim.n, h = n / 2;
    const rotation_tables tables = tables_of(plan, 0, h);
    const neighbours<sine> x = {in, dim.is};
    float *const head = scratch.data(), *const a = head + h + 1, *const b = a + h + 2;
    const float first = x.even(0), last = x.odd(n - 1);
    a[0] = last;
    b[0] = first;
    for (int64_t i = 1; i < h; ++i) {
        a[h - i] = x.difference(i);
        b[i] = x.sum(i);
    }
    const float odd[2] = {-1, 1};
    for (int which = 0; which < 2; ++which) {
        float* const y = which ? b : a;
        head[0] = y[0];
        head[1] = 0;
        for (int64_t k = 1; k <= h >> 1; ++k) rotate_forth(head + 2 * k, y[k], y[h - k], tables.quarter + 2 * k);
        run_subplan(plan, head, head);
        interleave_odd_length(head, y, h, 1, odd[which]);
    }
    combine<sine>(b, a, tables.eighth, first, last, out, n, dim.os);
}

// The input extended with period 4n as a cosine at quarter-sample points extends.
template <bool sine>
float extended(const float* x, int64_t i, int64_t n, int64_t is) {
    const auto at = [&](int64_t j) { return x[(sine ? n - 1 - j : j) * is]; };
    if (i < n) return at(i);
    if (i < 2 * n) return -at(2 * n - 1 - i);
    if (i < 3 * n) return -at(i - 2 * n);
    return at(4 * n - 1 - i);
}

inline float sigma(int64_t j) { return j & 2 ? -1.0f : 1.0f; }

template <bool sine>
void execute_odd(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t n = dim.n, m = n >> 1;
    constexpr float root2 = 1.4142135f;
    float* const h = scratch.data();
    for (int64_t t = 0; t < n; ++t) h[t] = extended<sine>(in, (m + 4 * t) % (4 * n), n, dim.is);
    run_subplan(plan, h, h);
    const auto put = [&](int64_t k, float value) { out[k * dim.os] = root2 * (sine && (k & 1) ? -value : value); };
    for (int64_t k = 1; k <= m; ++k) {
        const float re = h[k], im = h[n - k];
        const int64_t i = (k - 1) / 2;
        if (k & 1) {
            put(i, sigma(i) * im + sigma(i + 1) * re);
            put(n - 1 - i, sigma(n - i) * re - sigma(n - i - 1) * im);
        } else {
            put(m - 1 - i, sigma(m - i) * re - sigma(m - i - 1) * im);
            put(m + 1 + i, sigma(m + i + 2) * re + sigma(m + i + 1) * im);
        }
    }
    put(m, sigma(m + 1) * h[0]);
}

struct execute_names {
    const char *quarter, *even, *odd;
};

template <bool sine>
int solve_quarter(fft_plan* plan, const execute_names& names) {
    const int64_t h = plan->dims[0].n / 2, q = h / 2;
    fft_plan* const sub = make_buffer_subplan(plan, kind_c2c, q, sign_backward);
    if (!sub) return refused;
    sub->in += 2 * q;
    if (plan_subplans(plan->subplans, 1) != accepted || !attach_rotation_tables(plan, q, h, h)) return refused;
    return install(plan, execute_quarter<sine>, names.quarter);
}

template <bool sine>
int solve_even(fft_plan* plan, const execute_names& names) {
    const int64_t h = plan->dims[0].n / 2;
    if (!plan_buffer_subplan(plan, kind_c2r, h, sign_backward) || !attach_rotation_tables(plan, 0, h, h))
        return refused;
    return install(plan, execute_even<sine>, names.even);
}

template <bool sine>
int solve_odd(fft_plan* plan, const execute_names& names) {
    fft_plan* const sub = make_buffer_subplan(plan, kind_r2r, plan->dims[0].n, sign_forward);
    if (!sub) return refused;
    sub->r2r_kind[0] = r2r_r2hc;
    if (plan_subplans(plan->subplans, 1) != accepted) return refused;
    return install(plan, execute_odd<sine>, names.odd);
}

template <bool sine>
int solve(fft_plan* plan, const execute_names& names) {
    if (!is_single_r2r(*plan, sine ? r2r_rodft11 : r2r_redft11)) return refused;
    if (!attach_trigonometric_buffer(plan)) return refused;
    const int64_t n = plan->dims[0].n;
    return n & 1   ? solve_odd<sine>(plan, names)
           : n & 2 ? solve_even<sine>(plan, names)
                   : solve_quarter<sine>(plan, names);
}

}  // namespace

int solve_problem_redft11_1d(fft_plan* plan) {
    return solve<false>(plan, {"execute_redft11_1d", "execute_redft11_1d_even", "execute_redft11_1d_odd"});
}

int solve_problem_rodft11_1d(fft_plan* plan) {
    return solve<true>(plan, {"execute_rodft11_1d", "execute_rodft11_1d_even", "execute_rodft11_1d_odd"});
}
