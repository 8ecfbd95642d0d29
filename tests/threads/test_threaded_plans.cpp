// SPDX-License-Identifier: Apache-2.0
// Plans with several threads against the same plans with one, on every sort of problem that has a threaded route, and
// many of them at once.
#include "record/fft_plan.h"
#include "threaded_problems.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <thread>

namespace {

bool same_bits(const floats& a, const floats& b) {
    return a.size() == b.size() && memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

double relative_difference(const floats& a, const floats& b) {
    double difference = 0, size = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        difference += (a[i] - b[i]) * static_cast<double>(a[i] - b[i]);
        size += b[i] * static_cast<double>(b[i]);
    }
    return std::sqrt(difference / size);
}

floats on_one_thread(const threaded_problem& problem) {
    qsl_fftf_plan_with_nthreads(1);
    floats in = problem.input(), out(problem.out_floats);
    return problem.result(problem.plan(in, out).get());
}

// Does any record of the tree run a parallel loop?
bool is_threaded(const fft_plan* plan) {
    if (strstr(plan->execute_name, "multithread")) return true;
    return std::any_of(plan->subplans, plan->subplans + plan->subplan_count, is_threaded);
}

class ThreadedPlans : public testing::Test {
protected:
    void SetUp() override { setenv("QSL_FFT_AFFINITY", "NO", 1); }
    void TearDown() override { qsl_fftf_cleanup_threads(); }
};

class EachProblem : public ThreadedPlans, public testing::WithParamInterface<threaded_problem> {};

// With a count of 200 at execution workers sleep between loops, which is what two cores can do for eight threads.
TEST_P(EachProblem, AgreesWithOneThread) {
    const threaded_problem& problem = GetParam();
    const floats expected = on_one_thread(problem);
    floats in = problem.input(), out(problem.out_floats);
    int threaded = 0;
    for (int nthreads = 2; nthreads <= 8; ++nthreads) {
        SCOPED_TRACE(std::to_string(nthreads) + " threads");
        qsl_fftf_plan_with_nthreads(nthreads);
        const owned_plan plan = problem.plan(in, out);
        ASSERT_TRUE(plan);
        threaded += is_threaded(plan.get());
        qsl_fftf_plan_with_nthreads(200);
        const floats got = problem.result(plan.get());
        EXPECT_LT(relative_difference(got, expected), 3e-7);
        EXPECT_TRUE(same_bits(problem.result(plan.get()), got)) << "executions differ";
        if (!problem.own_route) {
            EXPECT_TRUE(same_bits(got, expected));
        }
    }
    EXPECT_GT(threaded, 0);
}

// Threads that never planned bring storage of their own, and so do the workers that serve them.
TEST_P(EachProblem, RunsBesideItsPlanner) {
    const threaded_problem& problem = GetParam();
    floats in = problem.input(), out(problem.out_floats);
    qsl_fftf_plan_with_nthreads(3);
    const owned_plan plan = problem.plan(in, out);
    ASSERT_TRUE(plan);
    qsl_fftf_plan_with_nthreads(200);
    const floats expected = problem.result(plan.get());
    const auto run = [&] {
        for (int i = 0; i < 3; ++i) EXPECT_TRUE(same_bits(problem.result(plan.get()), expected));
    };
    std::thread second(run), third(run);
    run();
    second.join();
    third.join();
}

INSTANTIATE_TEST_SUITE_P(Threaded, EachProblem, testing::ValuesIn(threaded_problems()), [](const auto& problem) {
    std::string name = problem.param.name;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
});

TEST_F(ThreadedPlans, AgreeWhileWorkersSpin) {
    const std::vector<threaded_problem> problems = {complex_batch(64, 40, true, false), complex_box({64, 48}, false),
                                                    real_box({16384}, true)};
    for (const threaded_problem& problem : problems)
        for (int nthreads : {2, 3}) {
            SCOPED_TRACE(problem.name + " on " + std::to_string(nthreads) + " threads");
            const floats expected = on_one_thread(problem);
            qsl_fftf_plan_with_nthreads(nthreads);
            floats in = problem.input(), out(problem.out_floats);
            const owned_plan plan = problem.plan(in, out);
            ASSERT_TRUE(plan);
            for (int i = 0; i < 3; ++i) EXPECT_LT(relative_difference(problem.result(plan.get()), expected), 3e-7);
        }
}

TEST_F(ThreadedPlans, KeepTheCountThatStood) {
    const threaded_problem problem = complex_batch(64, 40, true, false);
    floats in = problem.input(), out(problem.out_floats);
    qsl_fftf_plan_with_nthreads(4);
    const owned_plan plan = problem.plan(in, out);
    qsl_fftf_plan_with_nthreads(1);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan.get()->nthreads, 4);
    EXPECT_EQ(plan.get()->subplan_count, 4);
    const owned_plan later = problem.plan(in, out);
    EXPECT_EQ(later.get()->nthreads, 1);
    EXPECT_TRUE(same_bits(problem.result(plan.get()), problem.result(plan.get())));
}

TEST_F(ThreadedPlans, SurviveCleanup) {
    const threaded_problem problem = complex_box({64, 48}, false);
    const floats expected = on_one_thread(problem);
    floats in = problem.input(), out(problem.out_floats);
    qsl_fftf_plan_with_nthreads(3);
    const owned_plan plan = problem.plan(in, out);
    ASSERT_TRUE(plan);
    for (int cycle = 0; cycle < 6; ++cycle) {
        EXPECT_LT(relative_difference(problem.result(plan.get()), expected), 3e-7);
        qsl_fftf_cleanup_threads();
        if (cycle % 2) qsl_fftf_init_threads();
    }
}

// The clock chooses among plans that differ in the last bits. Batch, planes, and a length that is split in two passes.
TEST_F(ThreadedPlans, MayBeMeasured) {
    struct {
        int rank, n[2], batch;
    } const cases[] = {{1, {64}, 40}, {2, {24, 20}, 6}, {1, {8192}, 1}};
    for (const auto& c : cases) {
        const size_t size = size_t{2} * c.n[0] * (c.rank == 2 ? c.n[1] : 1) * c.batch;
        const int distance = static_cast<int>(size) / 2 / c.batch;
        const auto make = [&c, distance](unsigned flags) {
            return [&c, distance, flags](float* in, float* out) {
                return qsl_fftf_plan_many_dft(c.rank, c.n, c.batch, complex_of(in), nullptr, 1, distance,
                                              complex_of(out), nullptr, 1, distance, QSL_FFTF_FORWARD, flags);
            };
        };
        const threaded_problem ruled = {"by rules", size, size, make(QSL_FFTF_RULES)};
        const threaded_problem measured = {"measured", size, size, make(QSL_FFTF_MEASURED)};
        const floats expected = on_one_thread(ruled);
        floats in = measured.input(), out(size);
        qsl_fftf_plan_with_nthreads(200);  // workers sleep
        qsl_fftf_set_timelimit(2.0);
        std::thread([&] {
            qsl_fftf_plan_with_nthreads_local(3);  // would stay with this thread
            const owned_plan plan = measured.plan(in, out);
            ASSERT_TRUE(plan);
            EXPECT_LT(relative_difference(measured.result(plan.get()), expected), 3e-7) << c.n[0] << " x " << c.batch;
        }).join();
        qsl_fftf_set_timelimit(0.0);
    }
}

// Several threads that each plan and execute for themselves share the idle workers.
TEST_F(ThreadedPlans, MayBeMadeAndRunBySeveralThreadsAtOnce) {
    const std::vector<threaded_problem> problems = threaded_problems();
    std::vector<floats> expected;
    for (const threaded_problem& problem : problems) expected.push_back(on_one_thread(problem));
    qsl_fftf_plan_with_nthreads(200);  // workers sleep
    std::atomic<int> wrong{0}, done{0};
    std::vector<std::thread> threads;
    for (size_t t = 0; t < 3; ++t)
        threads.emplace_back([&, t] {
            for (size_t i = t; i < problems.size(); i += 3) {
                const threaded_problem& problem = problems[i];
                floats in = problem.input(), out(problem.out_floats);
                const owned_plan plan = problem.plan(in, out);
                const bool right = plan && relative_difference(problem.result(plan.get()), expected[i]) < 3e-7;
                if (!right) ADD_FAILURE() << problem.name << " on thread " << t;
                wrong += !right;
                ++done;
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(done, static_cast<int>(problems.size()));
}

}  // namespace
