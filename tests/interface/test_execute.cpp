// SPDX-License-Identifier: Apache-2.0
// Execute calls: what reaches the plan's function, and that no null argument ever does.
#include "include/qfftf.h"
#include "planner/time_limit.h"
#include "record/fft_plan.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <vector>

namespace {

std::vector<std::vector<const void*>> calls;

void record(fft_plan* plan, float* in, float* out) { calls.push_back({plan, in, out}); }
void record_split(fft_plan* plan, float* a, float* b, float* c, float* d) { calls.push_back({plan, a, b, c, d}); }

float a[2], b[2], c[2], d[2];
using complex_array = qsl_fftf_complex*;
complex_array as_complex(float* p) { return reinterpret_cast<complex_array>(p); }

fft_plan recording_plan() {
    fft_plan plan = {};
    plan.in = a;
    plan.out = b;
    plan.execute = record;
    plan.execute_split = record_split;
    return plan;
}

// Calls `call` with all arguments set, which must reach the plan as `expected`, then with each in turn null.
void expect_jump(std::vector<void*> arguments, const std::function<void(const std::vector<void*>&)>& call,
                 const std::vector<const void*>& expected) {
    calls.clear();
    call(arguments);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0], expected);
    for (size_t i = 0; i < arguments.size(); ++i) {
        calls.clear();
        std::vector<void*> with_null = arguments;
        with_null[i] = nullptr;
        call(with_null);
        EXPECT_TRUE(calls.empty()) << "argument " << i << " was null";
    }
}

qsl_fftf_plan plan_of(void* p) { return static_cast<fft_plan*>(p); }
float* floats(void* p) { return static_cast<float*>(p); }

}  // namespace

TEST(Execute, RunsOnThePlannedArrays) {
    fft_plan plan = recording_plan();
    calls.clear();
    qsl_fftf_execute(&plan);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0], (std::vector<const void*>{&plan, a, b}));
}

TEST(Execute, DoesNothingWithANullPlanOrNullArrays) {
    calls.clear();
    qsl_fftf_execute(nullptr);
    fft_plan plan = recording_plan();
    plan.in = nullptr;
    qsl_fftf_execute(&plan);
    plan = recording_plan();
    plan.out = nullptr;
    qsl_fftf_execute(&plan);
    EXPECT_TRUE(calls.empty());
}

TEST(Execute, NewArraysReachTheFunction) {
    fft_plan plan = recording_plan();
    plan.in = plan.out = nullptr;  // planned without arrays
    const std::vector<const void*> expected = {&plan, c, d};
    using arguments = std::vector<void*>;
    expect_jump(
        {&plan, c, d},
        [](const arguments& x) {
            qsl_fftf_execute_dft(plan_of(x[0]), as_complex(floats(x[1])), as_complex(floats(x[2])));
        },
        expected);
    expect_jump(
        {&plan, c, d},
        [](const arguments& x) { qsl_fftf_execute_dft_r2c(plan_of(x[0]), floats(x[1]), as_complex(floats(x[2]))); },
        expected);
    expect_jump(
        {&plan, c, d},
        [](const arguments& x) { qsl_fftf_execute_dft_c2r(plan_of(x[0]), as_complex(floats(x[1])), floats(x[2])); },
        expected);
    expect_jump(
        {&plan, c, d}, [](const arguments& x) { qsl_fftf_execute_r2r(plan_of(x[0]), floats(x[1]), floats(x[2])); },
        expected);
}

TEST(Execute, SplitArraysReachTheSplitFunction) {
    fft_plan plan = recording_plan();
    using arguments = std::vector<void*>;
    expect_jump({&plan, a, b, c, d},
                [](const arguments& x) {
                    qsl_fftf_execute_split_dft(plan_of(x[0]), floats(x[1]), floats(x[2]), floats(x[3]), floats(x[4]));
                },
                {&plan, a, b, c, d});
    expect_jump({&plan, a, c, d},
                [](const arguments& x) {
                    qsl_fftf_execute_split_dft_r2c(plan_of(x[0]), floats(x[1]), floats(x[2]), floats(x[3]));
                },
                {&plan, a, nullptr, c, d});
    expect_jump({&plan, a, b, c},
                [](const arguments& x) {
                    qsl_fftf_execute_split_dft_c2r(plan_of(x[0]), floats(x[1]), floats(x[2]), floats(x[3]));
                },
                {&plan, a, b, c, nullptr});
}

TEST(Housekeeping, NullAndCleanupDoNothing) {
    qsl_fftf_destroy_plan(nullptr);
    qsl_fftf_cleanup();
}

TEST(TimeLimit, KeepsTheLastValueThatIsNotNegative) {
    EXPECT_EQ(planning_time_limit, 0.0);
    qsl_fftf_set_timelimit(2.5);
    EXPECT_EQ(planning_time_limit, 2.5);
    qsl_fftf_set_timelimit(-1.0);
    EXPECT_EQ(planning_time_limit, 2.5);
    qsl_fftf_set_timelimit(-std::numeric_limits<double>::infinity());
    EXPECT_EQ(planning_time_limit, 2.5);
    qsl_fftf_set_timelimit(0.0);
    EXPECT_EQ(planning_time_limit, 0.0);
}
