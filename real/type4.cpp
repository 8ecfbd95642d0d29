// SPDX-License-Identifier: Apache-2.0
// redft11_1d and rodft11_1d: the cosine and the sine transform of type IV (redft11, rodft11) of one sequence. An even
// length is split into two transforms of type III of half the length, B of sums and A of differences of neighbours,
// whose results are rotated together; an odd length is a gather, a half-complex transform and signs, without any
// twiddle. For even lengths the sine is the cosine of the sign-alternated input with its outputs reversed; for odd ones
// the cosine of the reversed input with its outputs sign-alternated.
#include "planner/solvers.h"
#include "real/mirror.h"
#include "real/real_subplan.h"
#include "real/rotation_tables.h"
#include "real/type3.h"

namespace {

// Sum (for B) and difference (for A) of the inputs 2i - 1 and 2i as the cosine transform sees them. The sine negates
// the first of both, and A as a whole, which `combine` makes up for.
template <bool sine>
struct neighbours {
    const float* x;
    float sum(int64_t i) const { return sine ? x[2 * i] - x[2 * i - 1] : x[2 * i - 1] + x[2 * i]; }
    float difference(int64_t i) const { return sine ? x[2 * i - 1] + x[2 * i] : x[2 * i - 1] - x[2 * i]; }

    // From four pairs (x[2i - 1], x[2i]) and their mirrors in the other half, the four (sum(i), sum(h - i)) and the
    // four (difference(i), difference(h - i)).
    struct vectors {
        complex4 sums, differences;
    };
    static vectors of(complex4 pairs, complex4 mirrors) {
        const complex4 odd = pair_even(pairs, mirrors), even = pair_odd(pairs, mirrors);
        return sine ? vectors{sub(even, odd), add(odd, even)} : vectors{add(odd, even), sub(odd, even)};
    }
};

// Results u of B and v of A to the outputs i and n - 1 - i, turned by the eighth table's entry e.
template <bool sine>
void combine(float* out, int64_t n, int64_t i, float u, float v, const float* e) {
    out[i] = sine ? u * e[1] + v * e[0] : u * e[0] + v * e[1];
    out[n - 1 - i] = sine ? u * e[0] - v * e[1] : u * e[1] - v * e[0];
}

template <bool sine>
void combine8(float* out, int64_t n, int64_t i, complex4 u, complex4 v, const float* e) {
    const complex4 low = load4(e), high = load4(e + 8);
    const complex4 c = unzip_even(low, high), s = unzip_odd(low, high);
    store4(out + i, fma_parts(mul_parts(u, sine ? s : c), v, sine ? c : s));
    store8_down(out + n - 1 - i, fms_parts(mul_parts(u, sine ? c : s), v, sine ? s : c));
}

// The pre passes of both halves for the pair (k, q - k), straight from the input.
template <bool sine>
void rotate_pair(float* a, float* b, const float* in, const rotation_tables& tables, int64_t q, int64_t k) {
    const neighbours<sine> x = {in};
    const int64_t h = 2 * q;
    const float *const w = tables.half + 2 * (k - 1), *const q_k = tables.quarter + 2 * k;
    const float* const q_back = tables.quarter + 2 * (q - k);
    float front[2], back[2];
    rotate_back(front, x.difference(h - k), x.difference(k), q_k);
    rotate_back(back, x.difference(q + k), x.difference(q - k), q_back);
    inverse_mirror(front[0], front[1], back[0], back[1], w, a + 2 * k, a + 2 * (q - k));
    rotate_back(front, x.sum(k), x.sum(h - k), q_k);
    rotate_back(back, x.sum(q - k), x.sum(q + k), q_back);
    inverse_mirror(front[0], front[1], back[0], back[1], w, b + 2 * k, b + 2 * (q - k));
}

template <bool sine>
void rotate_pairs4(float* a, float* b, const float* x, const rotation_tables& tables, int64_t q, int64_t k) {
    const int64_t h = 2 * q, n = 4 * q;
    const auto front = neighbours<sine>::of(load4(x + 2 * k - 1), load4_down(x + n - 2 * k - 1));
    const auto back = neighbours<sine>::of(load4_down(x + h - 2 * k - 1), load4(x + h + 2 * k - 1));
    const complex4 q_front = load4(tables.quarter + 2 * k), q_back = load4_down(tables.quarter + 2 * (q - k));
    const complex4 w = load4(tables.half + 2 * (k - 1));
    const mirror4_result of_a = rotate_swapped_and_mirror4(front.differences, back.differences, q_front, q_back, w);
    store4(a + 2 * k, of_a.front);
    store_back(a + 2 * (q - k), of_a.back);
    const mirror4_result of_b = rotate_and_mirror4(front.sums, back.sums, q_front, q_back, w);
    store4(b + 2 * k, of_b.front);
    store_back(b + 2 * (q - k), of_b.back);
}

template <bool sine>
void rotate_inputs(float* a, float* b, const float* in, const rotation_tables& tables, int64_t q) {
    const neighbours<sine> x = {in};
    const float first = in[0], last = in[4 * q - 1], *const middle = tables.quarter + 2 * q;
    const float middle_a = rotated_middle(x.difference(q), middle), middle_b = rotated_middle(x.sum(q), middle);
    a[0] = last + middle_a;
    a[1] = last - middle_a;
    b[0] = first + middle_b;
    b[1] = first - middle_b;
    const int64_t pairs = q >> 1;
    if (pairs >= 4) return cover<4>(pairs, [&](int64_t k) { rotate_pairs4<sine>(a, b, in, tables, q, k); });
    for (int64_t k = 1; k <= pairs; ++k) rotate_pair<sine>(a, b, in, tables, q, k);
}

// From the results of the two c2r, both still to be interleaved: B's in the order of type III, A's with odd elements
// negated. Type III weighs its first input by 1 and the others by 2: adding the two end values, A's with the sign of
// its element, gives them their second weight.
template <bool sine>
void combine_halves(float* out, int64_t n, const float* y_a, const float* y_b, float first, float last,
                    const float* eighth) {
    const int64_t h = n / 2, q = n / 4;
    const complex4 firsts = pairs_of(first, first), lasts = pairs_of(last, last), minus_lasts = pairs_of(-last, -last);
    int64_t t = 0;
    for (; t + 8 <= q; t += 8) {
        const complex4 u_even = add(load4(y_b + t), firsts), u_odd = add(load8_down(y_b + h - 1 - t), firsts);
        const complex4 v_even = add(load4(y_a + t), lasts), v_odd = sub(minus_lasts, load8_down(y_a + h - 1 - t));
        const float* const e = eighth + 4 * t;
        combine8<sine>(out, n, 2 * t, zip_low(u_even, u_odd), zip_low(v_even, v_odd), e);
        combine8<sine>(out, n, 2 * t + 8, zip_high(u_even, u_odd), zip_high(v_even, v_odd), e + 16);
    }
    for (; t < q; ++t) {
        const float* const e = eighth + 4 * t;
        combine<sine>(out, n, 2 * t, y_b[t] + first, y_a[t] + last, e);
        combine<sine>(out, n, 2 * t + 1, y_b[h - 1 - t] + first, -y_a[h - 1 - t] - last, e + 2);
    }
}

// n a multiple of 4: the rotations of A and B straight from the input, each then half of a complex transform of n / 4.
template <bool sine>
void execute_quarter(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t n = dim.n, h = n / 2;
    const rotation_tables tables = tables_of(plan, n / 4, h);
    const contiguous_output result(scratch, dim, out);
    const float* const x = contiguous_input(scratch, dim, in);
    const float first = x[0], last = x[n - 1];
    float *const head = scratch.data(), *const a = head + h, *const b = a + h;
    rotate_inputs<sine>(a, b, x, tables, n / 4);
    run_subplan(plan, a, head);
    run_subplan(plan, b, a);
    combine_halves<sine>(result.data(), n, head, a, first, last, tables.eighth);
}

// n even with n / 2 odd: two type III transforms of odd length, A first, with the c2r at the head of scratch.
template <bool sine>
void execute_even(fft_plan* plan, float* in, float* out) {
    const plan_scratch scratch(plan);
    if (!scratch) return;
    const fft_dim dim = plan->dims[0];
    const int64_t n = dim.n, h = n / 2;
    const rotation_tables tables = tables_of(plan, 0, h);
    const contiguous_output result(scratch, dim, out);
    const float* const contiguous = contiguous_input(scratch, dim, in);
    const neighbours<sine> x = {contiguous};
    float *const head = scratch.data(), *const a = head + h + 1, *const b = a + h + 2;
    const float first = b[0] = contiguous[0], last = a[0] = contiguous[n - 1];
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
        interleave_odd_length(head, y, h, odd[which]);
    }
    for (int64_t i = 0; i < h; ++i)
        combine<sine>(result.data(), n, i, b[i] + first, a[i] + (i & 1 ? -last : last), tables.eighth + 2 * i);
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
    for (int64_t t = 0, i = m; t < n; ++t) {
        h[t] = extended<sine>(in, i, n, dim.is);
        i += i + 4 < 4 * n ? 4 : 4 - 4 * n;
    }
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

// The tables of n / 2, with room for one entry more. An odd length keeps them too, though nothing reads them: all
// lengths but the multiples of 4 have the same storage.
bool attach_half_tables(fft_plan* plan) {
    const int64_t h = plan->dims[0].n / 2;
    return attach_rotation_tables(plan, 0, h, h, 1);
}

template <bool sine>
int solve_even(fft_plan* plan, const execute_names& names) {
    const int64_t h = plan->dims[0].n / 2;
    if (!plan_buffer_subplan(plan, kind_c2r, h, sign_backward) || !attach_half_tables(plan)) return refused;
    return install(plan, execute_even<sine>, names.even);
}

template <bool sine>
int solve_odd(fft_plan* plan, const execute_names& names) {
    fft_plan* const sub = make_buffer_subplan(plan, kind_r2r, plan->dims[0].n, sign_forward);
    if (!sub) return refused;
    sub->r2r_kind[0] = r2r_r2hc;
    if (plan_subplans(plan->subplans, 1) != accepted || !attach_half_tables(plan)) return refused;
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
