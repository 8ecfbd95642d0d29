// SPDX-License-Identifier: Apache-2.0
// Which level is at work: test_level WORD, the name of the level that this machine (and QSL_FFT_LEVEL) must give.
#include "include/qfftf.h"
#include "interface/level.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

std::string expected_level;

// Largest error of a forward transform of an impulse at 1.
double error_of_impulse(int n) {
    std::vector<float> in(2 * n), out(2 * n);
    in[2] = 1;
    qsl_fftf_plan plan =
        qsl_fftf_plan_dft_1d(n, reinterpret_cast<qsl_fftf_complex*>(in.data()),
                             reinterpret_cast<qsl_fftf_complex*>(out.data()), QSL_FFTF_FORWARD, QSL_FFTF_RULES);
    if (!plan) return INFINITY;
    qsl_fftf_execute(plan);
    qsl_fftf_destroy_plan(plan);
    double worst = 0;
    for (int k = 0; k < n; ++k) {
        const double angle = -2 * M_PI * k / n;
        worst = std::max({worst, std::abs(out[2 * k] - std::cos(angle)), std::abs(out[2 * k + 1] - std::sin(angle))});
    }
    return worst;
}

// Ahead of every constructor that states no priority, those of the library among them.
double error_in_constructor = INFINITY;
[[gnu::constructor(101)]] void plan_in_constructor() { error_in_constructor = error_of_impulse(64); }

}  // namespace

TEST(Level, IsTheOneThatTheMachineAndTheEnvironmentGive) { EXPECT_EQ(level_at_work().name, expected_level); }

TEST(Level, StaysWhenTheEnvironmentChanges) {
    const inner_library* const first = &level_at_work();
    for (const inner_library* const* level = inner_libraries; *level; ++level) {
        setenv("QSL_FFT_LEVEL", (*level)->name, 1);
        EXPECT_EQ(&level_at_work(), first);
    }
}

TEST(Level, IsTheSameOnEveryThread) {
    const inner_library* found = nullptr;
    std::thread([&] { found = &level_at_work(); }).join();
    EXPECT_EQ(found, &level_at_work());
}

TEST(Level, PlansInConstructorsAreRight) { EXPECT_LT(error_in_constructor, 1e-5); }

TEST(Level, TransformsAreRight) {
    for (const int n : {2, 25, 64, 100, 128, 131, 256, 1000, 1024, 4096}) EXPECT_LT(error_of_impulse(n), 1e-5) << n;
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (argc < 2) return 2;
    expected_level = argv[1];
    return RUN_ALL_TESTS();
}
