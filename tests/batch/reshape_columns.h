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

inline arrays fill(const problem& p) {
    arrays a;
    a.in = complex_noise((p.in_place ? std::max(p.reach(true), p.reach(false)) : p.reach(true)) + 2 * guard, 1);
    if (!p.in_place) a.out = complex_noise(p.reach(false) + 2 * guard, 2);
    return a;
}

// Factor of coefficient k of transform t; rotated transforms have others than 1.
using factor_function = std::complex<double> (*)(const problem& p, int64_t t, int64_t k);
inline std::complex<double> no_factor(const problem&, int64_t, int64_t) { return 1; }

inline void expect_transforms(const problem& p, const arrays& before, arrays& after, factor_function factor) {
    const fft_dim points = p.dims[0], batch = p.batch[0];
    complex_array rest_before = arrays(before).result(), rest_after = after.result();
    for (int64_t t = 0; t < batch.n; ++t) {
        std::vector<std::complex<double>> x(points.n);
        complex_array result(points.n);
        for (int64_t j = 0; j < points.n; ++j) x[j] = before.in[guard + t * batch.is + j * points.is];
        std::vector<std::complex<double>> expected = reference::dft(x, static_cast<int>(p.sign));
        for (int64_t k = 0; k < points.n; ++k) {
            const int64_t at = guard + t * batch.os + k * points.os;
            expected[k] *= factor(p, t, k);
            result[k] = after.result()[at];
            rest_before[at] = rest_after[at] = 0;
        }
        ASSERT_LT(relative_error(result, expected), 6e-7) << p.text() << " transform " << t;
    }
    ASSERT_EQ(memcmp(rest_before.data(), rest_after.data(), rest_before.size() * sizeof rest_before[0]), 0)
        << p.text() << ": something else was written";
    if (!p.in_place) {
        ASSERT_EQ(before.in, after.in) << p.text() << ": the input was written";
    }
}

// With the plan's scratch and with its own, which must give the same in every bit.
inline void expect_runs(fft_plan* plan, const problem& p, const arrays& before, factor_function factor = no_factor) {
    arrays first = before, second = before;
    this_thread_state().use_plan_buffer = 1;
    plan->execute(plan, first.in_data(), first.out_data());
    with_own_scratch([&] { plan->execute(plan, second.in_data(), second.out_data()); });
    ASSERT_EQ(first.in, second.in) << p.text();
    ASSERT_EQ(first.out, second.out) << p.text();
    expect_transforms(p, before, first, factor);
}

// Plans by this solver alone; its subplans go through the table.
inline plan_pointer solve(solve_function solver, const problem& p, arrays& a) {
    plan_pointer plan = p.record(a.in_data(), a.out_data());
    this_thread_state().use_plan_buffer = 1;
    return solver(plan.get()) == accepted ? std::move(plan) : nullptr;
}

inline void check(solve_function solver, problem p, const char* execute_name) {
    for (int64_t sign : {sign_forward, sign_backward}) {
        p.sign = sign;
        const arrays before = fill(p);
        arrays a = before;  // measuring writes to it
        const plan_pointer plan = solve(solver, p, a);
        ASSERT_NE(plan, nullptr) << p.text();
        EXPECT_STREQ(plan->execute_name, execute_name);
        expect_runs(plan.get(), p, before);
    }
}

inline void expect_refused(solve_function solver, const problem& p) {
    arrays a = fill(p);
    EXPECT_EQ(solve(solver, p, a), nullptr) << p.text();
}

// With one test of acceptance changed: another kind, split arrays.
inline void expect_refuses_other_kinds(solve_function solver, const problem& p) {
    arrays a = fill(p);
    for (uint32_t kind : {kind_c2r, kind_r2c, kind_r2r}) {
        plan_pointer plan = p.record(a.in_data(), a.out_data());
        plan->kind = kind;
        EXPECT_NE(solver(plan.get()), accepted) << "kind " << kind;
    }
    plan_pointer plan = p.record(a.in_data(), a.out_data());
    plan->split = split_arrays;
    EXPECT_NE(solver(plan.get()), accepted) << "split";
}

inline void expect_untouched_without_scratch(solve_function solver, const problem& p) {
    const arrays before = fill(p);
    arrays a = before;
    const plan_pointer plan = solve(solver, p, a);
    ASSERT_NE(plan, nullptr);
    a = before;
    plan->buffer_size = UINT64_MAX;  // more than any allocator gives
    with_own_scratch([&] { plan->execute(plan.get(), a.in_data(), a.out_data()); });
    EXPECT_EQ(a.in, before.in);
    EXPECT_EQ(a.out, before.out);
}
