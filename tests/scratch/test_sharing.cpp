// SPDX-License-Identifier: Apache-2.0
// Several threads that have all planned execute the same plans at once, on arrays of their own.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "include/qfftf.h"
#include "tests/scratch/every_execution.h"
#include "tests/scratch/sleeping_workers.h"

namespace {

constexpr int sharing_threads = 4;
constexpr int most_rounds = 300;
constexpr std::chrono::milliseconds most_time{1500};

struct shared_plan {
    explicit shared_plan(const problem_case& problem) : execution(problem, -1) {
        std::thread([this] { expected = execution.result(); }).join();  // in storage of its own
    }
    planned_execution execution;
    arrays expected;
};

void plan_something() {
    float in[10] = {}, out[12];
    qsl_fftf_destroy_plan(qsl_fftf_plan_dft_r2c_1d(10, in, reinterpret_cast<qsl_fftf_complex*>(out), QSL_FFTF_RULES));
}

// Every thread executes the plans in turn, each beginning with another, until it has done so often or long enough.
void expect_the_same_from_all(const std::vector<problem_case>& problems) {
    std::vector<shared_plan> plans(problems.begin(), problems.end());
    std::atomic<int> wrong{0}, rounds{0};
    const auto deadline = std::chrono::steady_clock::now() + most_time;
    std::vector<std::thread> threads;
    for (int t = 0; t < sharing_threads; ++t)
        threads.emplace_back([&, t] {
            plan_something();
            for (int round = 0; round < most_rounds && std::chrono::steady_clock::now() < deadline; ++round)
                for (size_t i = 0; i < plans.size(); ++i) {
                    const shared_plan& shared = plans[(i + t) % plans.size()];
                    wrong += !(shared.execution.result() == shared.expected);
                    ++rounds;
                }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0) << "of " << rounds << " executions";
    EXPECT_GE(rounds, sharing_threads * static_cast<int>(plans.size()));
    for (const shared_plan& shared : plans) {
        EXPECT_NE(shared.execution.plan().lending, 1u) << shared.execution.text();
        EXPECT_TRUE(shared.execution.result() == shared.expected) << shared.execution.text();
    }
}

using Sharing = sleeping_workers;

TEST_F(Sharing, IsRightForComplexRealAndRealToReal) {
    expect_the_same_from_all({
        {.dims = {{1000, 1, 1}}},
        {.kind = kind_r2c, .dims = {{2002, 1, 1}}},
        {.kind = kind_r2r, .dims = {{200, 1, 1}}, .r2r = r2r_redft10},
    });
}

TEST_F(Sharing, IsRightForBatchesAndSeveralDimensions) {
    expect_the_same_from_all({
        {.dims = {{94, 1, 1}}, .batch = {{7, 94, 94}}},
        {.dims = {{100, 16, 16}}, .batch = {{16, 1, 1}}, .in_place = true},
        {.kind = kind_c2r, .dims = {{12, 51, 100}, {100, 1, 1}}},
    });
}

TEST_F(Sharing, IsRightForSplitArrays) {
    expect_the_same_from_all({
        {.dims = {{100, 1, 1}}, .split = true},
        {.dims = {{94, 2, 1}}, .batch = {{3, 188, 94}}, .split = true},
        {.kind = kind_c2r, .dims = {{100, 1, 1}}, .batch = {{3, 51, 100}}, .split = true},
    });
}

// Loops of several threads at once, on workers that they take from one pool.
TEST_F(Sharing, IsRightForPlansOfSeveralThreads) {
    expect_the_same_from_all({
        {.dims = {{1000, 1, 1}}, .batch = {{8, 1000, 1000}}, .nthreads = 2},
        {.dims = {{64, 60, 60}, {60, 1, 1}}, .in_place = true, .nthreads = 3},
        {.kind = kind_r2c, .dims = {{100, 1, 1}}, .batch = {{40, 100, 51}}, .nthreads = 2},
    });
}

// The first execution in the plan's storage finds it zeroed, and so does each that brings its own: with all of the
// source's frequencies in the target later ones on one thread are right too.
TEST_F(Sharing, IsRightForUpsampling) {
    expect_the_same_from_all({
        {.kind = kind_upsampling_2d, .dims = {{6, 0, 0}, {10, 0, 0}}, .batch = {{6, 0, 0}, {13, 0, 0}}},
        {.kind = kind_upsampling_2d, .dims = {{7, 0, 0}, {5, 0, 0}}, .batch = {{7, 0, 0}, {5, 0, 0}}},
        {.kind = kind_upsampling_2d, .dims = {{8, 0, 0}, {9, 0, 0}}, .batch = {{8, 0, 0}, {18, 0, 0}}},
    });
}

}  // namespace
