// SPDX-License-Identifier: Apache-2.0
// Planning calls are safe from their arguments: whatever these are, there is a plan or null, soon, and nothing is lost.
// Plans whose arrays are small are also executed on arrays of exactly the addressed length, which the sanitizers watch,
// and their results compared with the sums in double precision, unless elements of the layout share floats.
// By hand:  test_hostile_calls [count [seed]]
#include "record/fft_plan.h"
#include "tests/batch/differential/check.h"
#include "tests/planner/failing_memory.h"
#include "tests/planner/hostile_calls.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>

namespace {

#ifdef __aarch64__  // under an emulator, as a rule
int64_t call_count = 500;
#else
int64_t call_count = 5000;
#endif
uint64_t first_seed = 1;
constexpr size_t largest_block = size_t{1} << 22;  // larger ones fail, as on a small machine
constexpr int64_t largest_array = 1 << 12;         // floats; plans of larger problems aren't executed

// Said by the signal handler, since a crash ends the program without a word.
char current_call[1000];

void say_call_and_die(int signal_number) {
    [[maybe_unused]] auto written = write(2, current_call, strlen(current_call));
    signal(signal_number, SIG_DFL);
    raise(signal_number);
}

// Floats that one array of a side needs, or a number above largest_array.
int64_t floats_needed(const fft_plan& p, bool input) {
    const bool complex_side = p.kind == kind_c2c || p.kind == (input ? kind_c2r : kind_r2c);
    int64_t last = 0;
    const auto reach = [&](const fft_dim& d, int64_t n) {
        last = std::min(last + (n - 1) * (input ? d.is : d.os), largest_array);
    };
    for (int k = 0; k < p.rank; ++k) {
        const bool half = complex_side && p.kind != kind_c2c && k == p.rank - 1;
        reach(p.dims[k], half ? p.dims[k].n / 2 + 1 : p.dims[k].n);
    }
    for (int k = 0; k < p.howmany_rank; ++k) reach(p.howmany[k], p.howmany[k].n);
    return (last + 1) * (complex_side && p.split != split_arrays ? 2 : 1);
}

// Elements of all transforms, more than the floats where they overlap; or a number above largest_array.
int64_t elements(const fft_plan& p) {
    int64_t count = 1;
    for (int k = 0; k < p.rank; ++k)
        count = std::min(count * std::min(p.dims[k].n, 2 * largest_array), 2 * largest_array);
    for (int k = 0; k < p.howmany_rank; ++k)
        count = std::min(count * std::min(p.howmany[k].n, 2 * largest_array), 2 * largest_array);
    return count;
}

std::unique_ptr<float[]> noughts(int64_t count) {
    return std::unique_ptr<float[]>(new float[static_cast<size_t>(count)]());
}

void execute_upsampling(qsl_fftf_plan plan) {
    const auto in = noughts(plan->dims[0].n * plan->dims[1].n), out = noughts(plan->howmany[0].n * plan->howmany[1].n);
    qsl_fftf_execute_r2r(plan, in.get(), out.get());
}

// The problem that the call has put into the record.
transform_problem problem_of(const fft_plan& p) {
    transform_problem problem;
    problem.kind = p.kind;
    problem.sign = p.sign;
    problem.split = p.split == split_arrays;
    problem.dims.assign(p.dims, p.dims + p.rank);
    problem.batch.assign(p.howmany, p.howmany + p.howmany_rank);
    if (p.kind == kind_r2r) problem.r2r_kinds.assign(p.r2r_kind, p.r2r_kind + p.rank);
    problem.in_place = p.in == p.out;
    problem.guarded = false;
    return problem;
}

// What came of a plan whose arrays are small enough to run it.
struct outcome {
    bool executed = false, compared = false;
    std::string failure = {};
};

outcome execute_if_small(qsl_fftf_plan plan) {
    const fft_plan& p = *plan;
    const bool upsampling = p.kind == kind_upsampling_2d;
    const int64_t in_count = upsampling ? p.dims[0].n * p.dims[1].n : floats_needed(p, true);
    const int64_t out_count = upsampling ? p.howmany[0].n * p.howmany[1].n : floats_needed(p, false);
    if (in_count > largest_array || out_count > largest_array || elements(p) > largest_array) return {};
    if (upsampling) return execute_upsampling(plan), outcome{.executed = true};
    const transform_problem problem = problem_of(p);
    const check_result result = check_plan(problem, plan);
    if (elements_overlap(problem)) return {.executed = true};
    return {.executed = true,
            .compared = true,
            .failure = result.failure.empty() ? "" : result.failure + "\n" + result.tree};
}

hostile_arrays draw_arrays(uint64_t number) {
    static float a[2], b[2], c[2], d[2];
    switch (number % 8) {
        case 0:
            return {nullptr, nullptr, nullptr, nullptr};
        case 1:
            return {a, b, nullptr, nullptr};
        case 2:
        case 3:
        case 4:
            return {a, b, a, b};
        default:
            return {a, b, c, d};
    }
}

}  // namespace

TEST(HostileCalls, GiveAPlanOrNull) {
    for (int number : {SIGSEGV, SIGBUS, SIGFPE, SIGABRT, SIGILL}) signal(number, say_call_and_die);
    memory_watch::set_largest_block(largest_block);
    hostile_source source(first_seed);
    int64_t planned = 0, executed = 0, compared = 0;
    double slowest = 0;
    std::string slowest_call;
    for (int64_t i = 0; i < call_count; ++i) {
        const hostile_call call = source.draw();
        const std::string text =
            "call " + std::to_string(i) + " of seed " + std::to_string(first_seed) + ": " + call.text() + "\n";
        strncpy(current_call, text.c_str(), sizeof current_call - 1);
        const auto start = std::chrono::steady_clock::now();
        memory_watch watch(-1);
        qsl_fftf_plan plan = call.plan(draw_arrays(static_cast<uint64_t>(i)));
        watch.stop();
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (seconds > slowest) {
            slowest = seconds;
            slowest_call = text;
        }
        if (plan) {
            ++planned;
            const outcome o = execute_if_small(plan);
            executed += o.executed;
            compared += o.compared;
            EXPECT_EQ(o.failure, "") << text;
        }
        qsl_fftf_destroy_plan(plan);
        ASSERT_EQ(memory_watch::blocks_alive(), 0u) << text;
    }
    std::cout << call_count << " calls, " << planned << " plans, " << executed << " executed, " << compared
              << " compared; slowest " << slowest << " s: " << slowest_call;
    EXPECT_GT(planned, call_count / 20);
    EXPECT_GT(executed, call_count / 40);
    EXPECT_GT(compared, call_count / 80);
    EXPECT_LT(slowest, 20.0) << slowest_call;  // tables of the largest block that is given out, under an emulator
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (argc > 1) call_count = std::atoll(argv[1]);
    if (argc > 2) first_seed = std::strtoull(argv[2], nullptr, 10);
    return RUN_ALL_TESTS();
}
