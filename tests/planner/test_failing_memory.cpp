// SPDX-License-Identifier: Apache-2.0
// Planning with each allocation failing in turn: there is a plan that computes right, perhaps a slower one, or none,
// and nothing is lost.
#include "problems/plan_tree.h"
#include "problems/planned_problem.h"
#include "tests/planner/failing_memory.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

// Noise, for c2r the spectrum of noise: of other numbers every method makes something else.
std::vector<float> input_of(const problems::problem& p, size_t floats) {
    std::vector<float> input(floats);
    uniform_noise noise(7);
    if (p.kind != problems::family::c2r) {
        for (float& x : input) x = noise();
        return input;
    }
    const problems::problem from = problems::spectrum_problem(p);
    std::vector<float> real(problems::span_floats(from, from.in)), spectrum(problems::span_floats(from, from.out));
    for (float& x : real) x = noise();
    qsl_fftf_plan plan = plan_problem_text(from, real.data(), spectrum.data());
    qsl_fftf_execute(plan);
    qsl_fftf_destroy_plan(plan);
    size_t next = 0;
    problems::for_each_element(p, p.in, [&](size_t at) {
        input[at] = spectrum[next++];
        input[at + 1] = spectrum[next++];
    });
    return input;
}

struct arrays {
    std::vector<float> input, in, out;
    explicit arrays(const problems::problem& p)
        : input(input_of(p, std::max(problems::span_floats(p, p.in), problems::span_floats(p, p.out)))),
          in(input),
          out(input.size()) {}
    float* output(const problems::problem& p) { return p.in_place ? in.data() : out.data(); }
};

std::vector<float> result_of(qsl_fftf_plan plan, const problems::problem& p, arrays& a) {
    a.in = a.input;
    std::fill(a.out.begin(), a.out.end(), 0.0f);
    qsl_fftf_execute(plan);
    const float* const output = a.output(p);
    std::vector<float> result;
    problems::for_each_element(
        p, p.out, [&](size_t at) { result.insert(result.end(), output + at, output + at + (p.out.complex ? 2 : 1)); });
    return result;
}

double difference(const std::vector<float>& a, const std::vector<float>& b) {
    double square = 0, size = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        square += (double(a[i]) - b[i]) * (double(a[i]) - b[i]);
        size += double(b[i]) * b[i];
    }
    return std::sqrt(square / (size > 0 ? size : 1));
}

class FailingMemory : public testing::TestWithParam<const char*> {};

// What else the library allocates once for a process happens here, ahead of all counting.
const bool warmed_up = [] {
    problems::problem p = problems::parse_problem("c2c 8");
    arrays a(p);
    qsl_fftf_destroy_plan(plan_problem_text(p, a.in.data(), a.out.data()));
    return true;
}();

}  // namespace

TEST_P(FailingMemory, GivesARightPlanOrNullAtEveryAllocation) {
    const problems::problem p = problems::parse_problem(GetParam());
    arrays a(p);
    qsl_fftf_plan whole = plan_problem_text(p, a.in.data(), a.output(p));
    ASSERT_NE(whole, nullptr);
    const std::vector<float> expected = result_of(whole, p, a);
    qsl_fftf_destroy_plan(whole);

    int plans = 0, refusals = 0;
    for (long failing = 0;; ++failing) {
        memory_watch watch(failing);
        qsl_fftf_plan plan = plan_problem_text(p, a.in.data(), a.output(p));
        watch.stop();
        const bool all_given = watch.allocations() <= failing;
        ++(plan ? plans : refusals);
        if (plan) {
            EXPECT_LT(difference(result_of(plan, p, a), expected), 1e-5) << "allocation " << failing << " failed\n"
                                                                         << plan_tree_text(*plan);
            qsl_fftf_destroy_plan(plan);
        }
        ASSERT_EQ(memory_watch::blocks_alive(), 0u) << "allocation " << failing << " failed";
        if (all_given) break;
    }
    EXPECT_GE(plans, 1) << "the last round, in which nothing fails, gives a plan";
    EXPECT_GE(refusals, 1) << "without a record there is no plan";
}

std::string test_name(const testing::TestParamInfo<const char*>& info) {
    std::string name;
    for (const char* c = info.param; *c; ++c) name += std::isalnum(static_cast<unsigned char>(*c)) ? *c : '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(
    Problems, FailingMemory,
    testing::Values("c2c 1", "c2c 16", "c2c 16 measured", "c2c 22", "c2c 64 measured", "c2c 1024", "c2c 96 measured",
                    "c2c 41", "c2c 41 measured", "c2c 83 istride=2", "c2c 167", "c2c 30 batch=7",
                    "c2c 100 batch=9 interleaved", "c2c 256 batch=64 interleaved", "c2c 2048 batch=5",
                    "c2c 16 batch=8 threads=2", "c2c 12x10", "c2c 12x10 inplace", "r2c 16", "r2c 100", "r2c 101",
                    "r2c 100 measured", "r2c 64 batch=6", "r2c 24x18", "r2c 24x18 inplace", "c2r 16", "c2r 100",
                    "c2r 101", "c2r 60 measured", "c2r 64 batch=6", "c2r 24x18", "c2r 24x18 inplace batch=2", "r2hc 60",
                    "hc2r 60", "dht 63", "dht 64", "redft00 65", "redft01 60", "redft10 61", "redft11 60", "rodft00 60",
                    "rodft01 61", "rodft10 60", "rodft11 61", "redft10 8x9", "r2hc 33 batch=20 interleaved",
                    "transpose 40x30", "transpose 40x40 inplace", "copy 40x30"),
    test_name);

#ifndef __aarch64__  // they take their time under an emulator, and it is the same code
INSTANTIATE_TEST_SUITE_P(Long, FailingMemory,
                         testing::Values("c2c 65536", "c2c 131072 inplace", "c2c 30 batch=7 measured",
                                         "c2c 6x5x4 measured"),
                         test_name);
#endif

// What an exhausted record leaves, whoever called.
TEST(FailingAllocator, GivesNull) {
    memory_watch watch(0);
    EXPECT_EQ(qsl_fftf_malloc(100), nullptr);
    watch.stop();
    EXPECT_EQ(memory_watch::blocks_alive(), 0u);
}

TEST(FailingAllocator, StopsSubplansHalfWay) {
    fft_plan p = {};
    p.subplan_count = 3;
    for (long failing = 0; failing < 4; ++failing) {
        p.subplan_count = 3;
        memory_watch watch(failing);
        EXPECT_EQ(fft_plan_alloc_subplans(&p), -1) << failing;
        watch.stop();
        EXPECT_EQ(p.subplans == nullptr, failing == 0);
        for (long i = 0; p.subplans && i < 3; ++i) EXPECT_EQ(p.subplans[i] != nullptr, i + 1 < failing) << i;
        fft_plan_clear(&p);
        EXPECT_EQ(memory_watch::blocks_alive(), 0u);
    }
    memory_watch watch(0);
    EXPECT_EQ(fft_plan_clone(&p), nullptr);
}
