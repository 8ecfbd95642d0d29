// SPDX-License-Identifier: Apache-2.0
// Planning calls are safe from their arguments: whatever these are, there is a plan or null, soon, and nothing is lost.
// Plans whose arrays are small are also executed on arrays of exactly the addressed length, which the sanitizers watch,
// and their results compared with the sums in double precision, unless elements of the layout share floats.
// By hand:  test_hostile_calls [count [seed]]
#include "tests/planner/failing_memory.h"
#include "tests/planner/hostile_calls.h"
#include "tests/planner/hostile_outcome.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>

namespace {

#ifdef __aarch64__  // under an emulator, as a rule
int64_t call_count = 500;
#else
int64_t call_count = 5000;
#endif
uint64_t first_seed = 1;
constexpr size_t largest_block = size_t{1} << 22;  // larger ones fail, as on a small machine

// Said by the signal handler, since a crash ends the program without a word.
char current_call[1000];

void say_call_and_die(int signal_number) {
    [[maybe_unused]] auto written = write(2, current_call, strlen(current_call));
    signal(signal_number, SIG_DFL);
    raise(signal_number);
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
