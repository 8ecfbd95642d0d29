// SPDX-License-Identifier: Apache-2.0
// Planning calls are safe from their arguments: whatever these are, there is a plan or null, soon, and nothing is lost.
// Plans whose arrays are small are also executed on arrays of exactly the addressed length, which the sanitizers watch.
// By hand:  test_hostile_calls [count [seed]]
#include "interface/fft_plan.h"
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
constexpr int64_t largest_array = 1 << 14;         // floats; plans of larger problems aren't executed

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

std::unique_ptr<float[]> noughts(int64_t count) {
    return std::unique_ptr<float[]>(new float[static_cast<size_t>(count)]());
}

// Runs the plan on arrays that end where the layout ends. True when it was run.
bool execute_if_small(qsl_fftf_plan plan) {
    const fft_plan& p = *plan;
    const bool upsampling = p.kind == kind_upsampling_2d;
    int64_t in_count = upsampling ? p.dims[0].n * p.dims[1].n : floats_needed(p, true);
    int64_t out_count = upsampling ? p.howmany[0].n * p.howmany[1].n : floats_needed(p, false);
    if (p.in == p.out) in_count = out_count = std::max(in_count, out_count);
    if (in_count > largest_array || out_count > largest_array) return false;
    const auto in = noughts(in_count), in_imag = noughts(in_count), out = noughts(out_count),
               out_imag = noughts(out_count);
    const bool in_place = p.in == p.out;
    float *from = in.get(), *to = in_place ? in.get() : out.get();
    if (p.split == split_arrays)
        plan->execute_split(plan, from, in_imag.get(), to, in_place ? in_imag.get() : out_imag.get());
    else
        qsl_fftf_execute_r2r(plan, from, to);
    return true;
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
    int64_t planned = 0, executed = 0;
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
            executed += execute_if_small(plan);
        }
        qsl_fftf_destroy_plan(plan);
        ASSERT_EQ(memory_watch::blocks_alive(), 0u) << text;
    }
    std::cout << call_count << " calls, " << planned << " plans, " << executed << " executed; slowest " << slowest
              << " s: " << slowest_call;
    EXPECT_GT(planned, call_count / 20);
    EXPECT_GT(executed, call_count / 40);
    EXPECT_LT(slowest, 20.0) << slowest_call;  // tables of the largest block that is given out, under an emulator
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (argc > 1) call_count = std::atoll(argv[1]);
    if (argc > 2) first_seed = std::strtoull(argv[2], nullptr, 10);
    return RUN_ALL_TESTS();
}
