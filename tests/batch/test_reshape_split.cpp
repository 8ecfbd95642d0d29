// SPDX-License-Identifier: Apache-2.0
// One transform on split arrays: complex, r2c and c2r of one to three dimensions, in place and out of place, with
// padded and permuted strides. Every float that no element owns must stay as it was.
#include "planner/solvers.h"

#include "reshape_support.h"
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <complex>
#include <cstring>

namespace {

using signal = std::vector<std::complex<double>>;

// The elements of one side in row-major order, with the last dimension cut where the side is Hermitian.
std::vector<fft_dim> side_of(const problem& p, bool input) {
    std::vector<fft_dim> dims = p.dims;
    if ((input && p.kind == kind_c2r) || (!input && p.kind == kind_r2c)) dims.back().n = dims.back().n / 2 + 1;
    return dims;
}

std::vector<int64_t> positions(const problem& p, bool input) {
    std::vector<int64_t> at;
    for_each_position(side_of(p, input), [&](int64_t in, int64_t out) { at.push_back(input ? in : out); });
    return at;
}

bool is_real_side(const problem& p, bool input) { return p.kind == (input ? kind_r2c : kind_c2r); }

// The four arrays of a split problem. In place the two pairs are one; an array that the kind doesn't have is empty.
struct split_arrays_set {
    std::vector<float> in_re, in_im, out_re, out_im;
};

// All dimensions of `x`, row-major over the lengths of the problem.
signal transform(const problem& p, signal x, int sign) {
    int64_t inner = static_cast<int64_t>(x.size());
    for (const fft_dim& d : p.dims) {
        inner /= d.n;
        for (size_t first = 0; first < x.size(); ++first) {
            if (static_cast<int64_t>(first) / inner % d.n != 0) continue;
            signal line(d.n);
            for (int64_t j = 0; j < d.n; ++j) line[j] = x[first + j * inner];
            line = reference::dft(line, sign);
            for (int64_t j = 0; j < d.n; ++j) x[first + j * inner] = line[j];
        }
    }
    return x;
}

// The part of a row-major array that a Hermitian side stores.
signal half_of(const problem& p, const signal& full) {
    const int64_t n = p.dims.back().n, stored = n / 2 + 1;
    signal half;
    for (size_t i = 0; i < full.size(); ++i)
        if (static_cast<int64_t>(i) % n < stored) half.push_back(full[i]);
    return half;
}

struct input_and_output {
    signal input, output;  // as stored: one value per position of the side
};

input_and_output example(const problem& p) {
    size_t count = 1;
    for (const fft_dim& d : p.dims) count *= d.n;
    signal x = widened(complex_noise(count, 3));
    if (p.kind == kind_c2c) return {x, transform(p, x, static_cast<int>(p.sign))};
    for (auto& z : x) z = z.real();
    const signal spectrum = half_of(p, transform(p, x, -1));
    if (p.kind == kind_r2c) return {x, spectrum};
    for (auto& z : x) z *= static_cast<double>(count);
    return {spectrum, x};
}

void store(const std::vector<int64_t>& at, const signal& values, std::vector<float>& re, std::vector<float>* im) {
    for (size_t i = 0; i < at.size(); ++i) {
        re[at[i]] = static_cast<float>(values[i].real());
        if (im) (*im)[at[i]] = static_cast<float>(values[i].imag());
    }
}

split_arrays_set fill(const problem& p, const signal& input) {
    constexpr int64_t margin = 16;
    int64_t in = p.reach(true) + margin, out = p.reach(false) + margin;
    if (p.in_place) in = out = std::max(in, out);
    split_arrays_set a;
    a.in_re.assign(in, -1);
    a.in_im.assign(in, -2);
    a.out_re.assign(out, -3);
    a.out_im.assign(out, -4);
    store(positions(p, true), input, a.in_re, is_real_side(p, true) ? nullptr : &a.in_im);
    return a;
}

plan_pointer plan_on(const problem& p, split_arrays_set& a) {
    plan_pointer plan = p.record(a.in_re.data(), p.in_place ? a.in_re.data() : a.out_re.data());
    plan->split = split_arrays;
    plan->in_imag = is_real_side(p, true) ? nullptr : a.in_im.data();
    plan->out_imag = is_real_side(p, false) ? nullptr : p.in_place ? a.in_im.data() : a.out_im.data();
    fft_plan* slot = plan.release();
    const int result = plan_problem(&slot);
    plan.reset(slot);
    return result == accepted ? std::move(plan) : nullptr;
}

// Compares the result and, with its elements blanked, everything around it.
void expect_result(const problem& p, const split_arrays_set& before, split_arrays_set after, const signal& expected) {
    split_arrays_set rest = before;
    const bool real = is_real_side(p, false);
    std::vector<float>&re = p.in_place ? after.in_re : after.out_re, &im = p.in_place ? after.in_im : after.out_im;
    std::vector<float>&rest_re = p.in_place ? rest.in_re : rest.out_re,
    &rest_im = p.in_place ? rest.in_im : rest.out_im;
    const std::vector<int64_t> at = positions(p, false);
    std::vector<std::complex<float>> result;
    for (int64_t i : at) {
        result.emplace_back(re[i], real ? 0 : im[i]);
        re[i] = rest_re[i] = 0;
        if (!real) im[i] = rest_im[i] = 0;
    }
    ASSERT_LT(relative_error(result, expected), 6e-7) << p.text();
    ASSERT_TRUE(after.in_re == rest.in_re && after.in_im == rest.in_im && after.out_re == rest.out_re &&
                after.out_im == rest.out_im)
        << p.text() << ": something else was written";
}

void run(fft_plan* plan, const problem& p, split_arrays_set& a) {
    plan->execute_split(plan, a.in_re.data(), a.in_im.data(), p.in_place ? a.in_re.data() : a.out_re.data(),
                        p.in_place ? a.in_im.data() : a.out_im.data());
}

void check(const problem& p) {
    const input_and_output values = example(p);
    const split_arrays_set before = fill(p, values.input);
    split_arrays_set a = before;
    const plan_pointer plan = plan_on(p, a);
    ASSERT_NE(plan, nullptr) << p.text();
    EXPECT_STREQ(plan->solver_name, "solve_problem_dft_split");
    EXPECT_STREQ(plan->execute_name, "execute_split");
    for (uint64_t plan_buffer : {1, 0}) {
        a = before;
        this_thread_state().use_plan_buffer = plan_buffer;
        run(plan.get(), p, a);
        expect_result(p, before, a, values.output);
    }
    this_thread_state().use_plan_buffer = 1;
}

problem split_problem(uint32_t kind, std::vector<fft_dim> dims, bool in_place, int64_t sign = sign_forward) {
    problem p;
    p.kind = kind;
    p.dims = std::move(dims);
    p.in_place = in_place;
    p.sign = kind == kind_r2c ? sign_forward : kind == kind_c2r ? sign_backward : sign;
    return p;
}

}  // namespace

TEST(SplitPlans, AreRightInOneDimension) {
    for (int64_t n : {2, 3, 5, 8, 12, 16, 30, 31, 45})
        for (int64_t is : {1, 3})
            for (int64_t os : {1, 2})
                for (bool in_place : {false, true}) {
                    for (int64_t sign : {sign_forward, sign_backward})
                        check(split_problem(kind_c2c, {{n, is, os}}, in_place, sign));
                    check(split_problem(kind_r2c, {{n, is, os}}, in_place));
                    check(split_problem(kind_c2r, {{n, is, os}}, in_place));
                }
}

TEST(SplitPlans, AreRightInSeveralDimensions) {
    const std::vector<std::vector<fft_dim>> layouts = {
        {{4, 6, 6}, {6, 1, 1}},
        {{4, 9, 11}, {5, 1, 1}},
        {{4, 1, 1}, {6, 5, 7}},  // by columns
        {{3, 40, 50}, {4, 8, 9}, {8, 1, 1}},
        {{3, 1, 2}, {4, 4, 8}, {5, 20, 40}},  // the first dimension fastest
        {{2, 200, 200}, {3, 60, 60}, {2, 20, 20}, {6, 2, 3}},
    };
    for (const auto& dims : layouts)
        for (uint32_t kind : {kind_c2c, kind_r2c, kind_c2r})
            for (bool in_place : {false, true}) check(split_problem(kind, dims, in_place));
}

TEST(SplitPlans, SubplanRunsOnPackedDimensionsInTheBuffer) {
    struct {
        uint32_t kind;
        std::vector<fft_dim> dims;  // of the subplan
        uint64_t buffer_size;
    } cases[] = {
        {kind_c2c, {{3, 24, 24}, {4, 6, 6}, {6, 1, 1}}, 3 * 4 * 6 * 8},
        {kind_r2c, {{3, 100, 16}, {4, 10, 4}, {6, 1, 1}}, 3 * 4 * 4 * 8},
        {kind_c2r, {{3, 16, 90}, {4, 4, 9}, {6, 1, 1}}, 3 * 4 * 4 * 8},
    };
    for (const auto& c : cases) {
        const problem p = split_problem(c.kind, {{3, 100, 90}, {4, 10, 9}, {6, 1, 1}}, false);
        split_arrays_set a = fill(p, example(p).input);
        const plan_pointer plan = plan_on(p, a);
        ASSERT_NE(plan, nullptr);
        EXPECT_EQ(plan->buffer_size, c.buffer_size);
        ASSERT_EQ(plan->subplan_count, 1);
        const fft_plan* s = plan->subplans[0];
        EXPECT_EQ(s->split, interleaved_arrays);
        EXPECT_EQ(s->in, c.kind == kind_r2c ? a.in_re.data() : plan->buffer);
        EXPECT_EQ(s->out, c.kind == kind_c2r ? a.out_re.data() : plan->buffer);
        for (int d = 0; d < 3; ++d) {
            EXPECT_EQ(s->dims[d].is, c.dims[d].is) << "kind " << c.kind << " dimension " << d;
            EXPECT_EQ(s->dims[d].os, c.dims[d].os) << "kind " << c.kind << " dimension " << d;
        }
    }
}

TEST(SplitPlans, PlainExecuteAddsThePlansImaginaryArrays) {
    const problem p = split_problem(kind_c2c, {{8, 1, 1}}, false);
    const input_and_output values = example(p);
    const split_arrays_set before = fill(p, values.input);
    split_arrays_set a = before;
    const plan_pointer plan = plan_on(p, a);
    plan->execute(plan.get(), a.in_re.data(), a.out_re.data());
    expect_result(p, before, a, values.output);
}

TEST(SplitPlans, WithoutScratchNothingIsWritten) {
    const problem p = split_problem(kind_c2c, {{8, 1, 1}}, false);
    const split_arrays_set before = fill(p, example(p).input);
    split_arrays_set a = before;
    const plan_pointer plan = plan_on(p, a);
    make_scratch_unaffordable(plan.get());
    with_own_scratch([&] { run(plan.get(), p, a); });
    EXPECT_TRUE(a.out_re == before.out_re && a.out_im == before.out_im);
}

TEST(SplitPlans, RankZeroHasNoPlan) {
    for (std::vector<fft_dim> batch : {std::vector<fft_dim>{}, {{3, 1, 1}}}) {
        problem p = split_problem(kind_c2c, {}, false);
        p.batch = batch;
        split_arrays_set a;
        a.in_re.resize(8), a.in_im.resize(8), a.out_re.resize(8), a.out_im.resize(8);
        EXPECT_EQ(plan_on(p, a), nullptr);
    }
}
