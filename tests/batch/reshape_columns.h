// SPDX-License-Identifier: Apache-2.0
// One solver called by itself, so that no other row takes its problem: a batch of complex transforms compared with the
// reference, and every value around the results with what it was.
#pragma once
#include "reshape_support.h"
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

using complex_array = std::vector<std::complex<float>>;
using solve_function = int (*)(fft_plan*);

constexpr int64_t guard = 16;  // complex values in front of and behind every array

inline problem batch_of(fft_dim points, fft_dim batch, bool in_place = false, uint32_t flags = 0) {
    problem p;
    p.dims = {points};
    p.batch = {batch};
    p.in_place = in_place;
    p.flags = flags;
    return p;
}

struct arrays {
    complex_array in, out;  // `out` is empty in place
    complex_array& result() { return out.empty() ? in : out; }
    float* in_data() { return reinterpret_cast<float*>(in.data() + guard); }
    float* out_data() { return reinterpret_cast<float*>(result().data() + guard); }
};

// Point j of transform t is weight[t] * base[j]: every value is another one, and one reference serves all transforms.
struct batch_signal {
    complex_array base, weight;
    explicit batch_signal(const problem& p)
        : base(complex_noise(p.dims[0].n, 3)), weight(complex_noise(p.batch[0].n, 4)) {}
};

inline arrays fill(const problem& p) {
    arrays a;
    a.in = complex_noise((p.in_place ? std::max(p.reach(true), p.reach(false)) : p.reach(true)) + 2 * guard, 1);
    if (!p.in_place) a.out = complex_noise(p.reach(false) + 2 * guard, 2);
    const batch_signal x(p);
    for (int64_t t = 0; t < p.batch[0].n; ++t)
        for (int64_t j = 0; j < p.dims[0].n; ++j)
            a.in[guard + t * p.batch[0].is + j * p.dims[0].is] = x.weight[t] * x.base[j];
    return a;
}

inline bool same_bits(const complex_array& a, const complex_array& b) {
    return a.size() == b.size() && (a.empty() || memcmp(a.data(), b.data(), a.size() * sizeof a[0]) == 0);
}

// Factor of coefficient k of transform t; rotated transforms have others than 1.
using factor_function = std::complex<double> (*)(const problem& p, int64_t t, int64_t k);
inline std::complex<double> no_factor(const problem&, int64_t, int64_t) { return 1; }

inline void expect_transforms(const problem& p, const arrays& before, arrays& after, factor_function factor) {
    const fft_dim points = p.dims[0], batch = p.batch[0];
    complex_array rest_before = arrays(before).result(), rest_after = after.result();
    const batch_signal x(p);
    const std::vector<std::complex<double>> spectrum = reference::dft(widened(x.base), static_cast<int>(p.sign));
    std::vector<std::complex<double>> expected(points.n);
    complex_array result(points.n);
    for (int64_t t = 0; t < batch.n; ++t) {
        for (int64_t k = 0; k < points.n; ++k) {
            const int64_t at = guard + t * batch.os + k * points.os;
            expected[k] = std::complex<double>(x.weight[t]) * spectrum[k] * factor(p, t, k);
            result[k] = after.result()[at];
            rest_before[at] = rest_after[at] = 0;
        }
        ASSERT_LT(relative_error(result, expected), 6e-7) << p.text() << " transform " << t;
    }
    ASSERT_TRUE(same_bits(rest_before, rest_after)) << p.text() << ": something else was written";
    if (!p.in_place) {
        ASSERT_TRUE(same_bits(before.in, after.in)) << p.text() << ": the input was written";
    }
}

// With the plan's scratch and with its own, which must give the same in every bit.
inline void expect_runs(fft_plan* plan, const problem& p, const arrays& before, factor_function factor = no_factor) {
    arrays first = before, second = before;
    this_thread_state().use_plan_buffer = 1;
    plan->execute(plan, first.in_data(), first.out_data());
    with_own_scratch([&] { plan->execute(plan, second.in_data(), second.out_data()); });
    ASSERT_TRUE(same_bits(first.in, second.in) && same_bits(first.out, second.out)) << p.text();
    expect_transforms(p, before, first, factor);
}

// Plans by this solver alone; its subplans go through the table.
inline plan_pointer solve(solve_function solver, const problem& p, arrays& a) {
    plan_pointer plan = p.record(a.in_data(), a.out_data());
    this_thread_state().use_plan_buffer = 1;
    return is_accepted_by(solver, plan.get()) ? std::move(plan) : nullptr;
}

inline void check(solve_function solver, const problem& p, const char* execute_name) {
    const arrays before = fill(p);
    arrays a = before;  // measuring writes to it
    const plan_pointer plan = solve(solver, p, a);
    ASSERT_NE(plan, nullptr) << p.text();
    EXPECT_STREQ(plan->execute_name, execute_name);
    expect_runs(plan.get(), p, before);
}

inline void check_both_directions(solve_function solver, problem p, const char* execute_name) {
    for (int64_t sign : {sign_forward, sign_backward}) {
        p.sign = sign;
        check(solver, p, execute_name);
    }
}

// Refusing needs no arrays but their addresses.
inline void expect_refused(solve_function solver, const problem& p) {
    float in[2], out[2];
    const plan_pointer plan = p.record(in, p.in_place ? in : out);
    EXPECT_NE(solver(plan.get()), accepted) << p.text();
}

// With one test of acceptance changed: another kind, split arrays.
inline void expect_refuses_other_kinds(solve_function solver, const problem& p) {
    float in[2], out[2], *target = p.in_place ? in : out;
    for (uint32_t kind : {kind_c2r, kind_r2c, kind_r2r}) {
        plan_pointer plan = p.record(in, target);
        plan->kind = kind;
        EXPECT_NE(solver(plan.get()), accepted) << "kind " << kind;
    }
    plan_pointer plan = p.record(in, target);
    plan->split = split_arrays;
    EXPECT_NE(solver(plan.get()), accepted) << "split";
}

inline void expect_untouched_without_scratch(solve_function solver, const problem& p) {
    const arrays before = fill(p);
    arrays a = before;
    const plan_pointer plan = solve(solver, p, a);
    ASSERT_NE(plan, nullptr);
    a = before;
    make_scratch_unaffordable(plan.get());
    with_own_scratch([&] { plan->execute(plan.get(), a.in_data(), a.out_data()); });
    EXPECT_EQ(a.in, before.in);
    EXPECT_EQ(a.out, before.out);
}
