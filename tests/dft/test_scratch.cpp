// SPDX-License-Identifier: Apache-2.0
// Working storage: threads that never planned bring their own, and no shortage of memory does harm. The program is
// linked so that every calloc of the library goes through the counter below.
#include "planner/solvers.h"
#include "tests/dft/problems.h"
#include "tests/support/guarded_floats.h"

#include <thread>

namespace {

thread_local int64_t allocations = 0;
thread_local int64_t failing_from = INT64_MAX;  // the first allocation that fails, and all behind it
thread_local bool fails_once = false;

}  // namespace

extern "C" void* __real_calloc(size_t count, size_t size);
extern "C" void* __wrap_calloc(size_t count, size_t size) {
    const int64_t i = allocations++;
    if (i == failing_from || (i > failing_from && !fails_once)) return nullptr;
    return __real_calloc(count, size);
}

namespace {

void let_all_succeed() { failing_from = INT64_MAX; }
void let_fail(int64_t first, bool once) {
    allocations = 0;
    failing_from = first;
    fails_once = once;
}

// one problem for each execute function with scratch
const complex_problem problems[] = {
    {64},           {64, -1, 2, 1, false, 32},
    {1000},         {1000, -1, 1, 2},
    {128, 1, 3, 1}, {41},
    {82},           {82, 1, 2, 3},
    {83},           {94},
    {94, 1, 3, 2},  {1763},
    {65536},
};

std::vector<float> run(fft_plan* plan, const complex_problem& p, const sample& source) {
    std::vector<float> in(2 * ((p.n - 1) * p.is + 1)), out(2 * ((p.n - 1) * p.os + 1), -7.0f);
    for (int64_t j = 0; j < p.n; ++j) {
        in[2 * j * p.is] = source.signal()[j].real();
        in[2 * j * p.is + 1] = source.signal()[j].imag();
    }
    plan->execute(plan, in.data(), out.data());
    return out;
}

}  // namespace

TEST(Scratch, AThreadThatNeverPlannedGivesTheSameResult) {
    for (const complex_problem& p : problems) {
        const sample source(p.n);
        const planned plan(record_of(p));
        ASSERT_TRUE(bool(plan)) << description(p, nullptr);
        const std::vector<float> expected = run(plan.get(), p, source);
        std::vector<float> actual;
        std::thread([&] { actual = run(plan.get(), p, source); }).join();
        EXPECT_EQ(actual, expected) << description(p, plan.get());
    }
}

TEST(Scratch, PlanningThreadsDontAllocateAtExecution) {
    for (const complex_problem& p : problems) {
        const planned plan(record_of(p));
        const sample source(p.n);
        allocations = 0;
        run(plan.get(), p, source);
        EXPECT_EQ(allocations, 0) << description(p, plan.get());
    }
}

TEST(Scratch, WithoutMemoryAnExecutionLeavesTheOutputAlone) {
    for (const complex_problem& p : problems) {
        const sample source(p.n);
        const planned plan(record_of(p));
        if (!plan->buffer) continue;  // a kernel alone needs none
        std::vector<float> out;
        std::thread([&] {
            let_fail(0, false);
            out = run(plan.get(), p, source);
            let_all_succeed();
        }).join();
        EXPECT_EQ(out, std::vector<float>(out.size(), -7.0f)) << description(p, plan.get());
    }
}

// Whichever allocation of the planning fails, once or from there on: there is no plan or one that computes.
TEST(Scratch, WithoutMemoryPlanningRefusesOrFindsAnotherWay) {
    for (const complex_problem& p : problems) {
        if (p.n > 2000) continue;
        const sample source(p.n);
        for (bool once : {true, false})
            for (int64_t first = 1;; ++first) {  // 0 is the record of the test itself
                let_fail(first, once);
                const planned plan(record_of(p));
                const bool reached = allocations > first;
                let_all_succeed();
                if (!reached) break;
                if (!plan) continue;
                std::vector<std::complex<float>> actual(p.n);
                const std::vector<float> out = run(plan.get(), p, source);
                for (int64_t k = 0; k < p.n; ++k) actual[k] = {out[2 * k * p.os], out[2 * k * p.os + 1]};
                EXPECT_LT(relative_error(actual, source.transform(p.sign)), error_limit(p.n))
                    << description(p, plan.get()) << " allocation " << first;
            }
    }
}
