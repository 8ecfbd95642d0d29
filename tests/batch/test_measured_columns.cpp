// SPDX-License-Identifier: Apache-2.0
// Columns in blocks, planned by a clock that runs at random, so that every candidate wins now and then, at every level
// of the tree. Whichever wins must transform: a plan that does nothing is the fastest of all.
#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "planner/solvers.h"
#include "tests/batch/reshape_support.h"
#include "tests/support/emulated.h"
#include "tests/support/random_clock.h"
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"

namespace {

using spectrum = std::vector<std::complex<float>>;

problem columns(int64_t n, int64_t count, int64_t width) {
    return {.dims = {{n, width, width}}, .batch = {{count, 1, 1}}, .flags = plan_flag_measured};
}

// One plan for each seed; every column that is looked at against its sum, the output poisoned before each execution.
// Returns how often each tree won.
std::map<std::string, int> check_every_winner(const problem& p, int seeds) {
    const int64_t n = p.dims[0].n, count = p.batch[0].n;
    const spectrum in = complex_noise(p.reach(true), 3);
    std::map<int64_t, std::vector<std::complex<double>>> expected;
    for (const int64_t column : {int64_t{0}, int64_t{1}, count / 2 + 1, count - 2, count - 1}) {
        spectrum signal(n);
        for (int64_t j = 0; j < n; ++j) signal[j] = in[column * p.batch[0].is + j * p.dims[0].is];
        expected[column] = reference::dft(widened(signal), p.sign);
    }
    std::map<std::string, int> winners;
    for (int seed = 1; seed <= seeds; ++seed) {
        random_clock::seed(seed);
        spectrum copy = in, out(p.reach(false));
        const auto floats = [](spectrum& s) { return reinterpret_cast<float*>(s.data()); };
        const plan_pointer plan = p.plan(floats(copy), floats(out));
        if (!plan) {
            ADD_FAILURE() << "no plan: " << p.text();
            return winners;
        }
        ++winners[tree(*plan)];
        copy = in;
        out.assign(out.size(), {NAN, NAN});
        plan->execute(plan.get(), floats(copy), floats(out));
        for (const auto& [column, reference] : expected) {
            spectrum result(n);
            for (int64_t k = 0; k < n; ++k) result[k] = out[column * p.batch[0].os + k * p.dims[0].os];
            EXPECT_LT(relative_error(result, reference), 3e-7)
                << p.text() << " seed " << seed << " column " << column << "\n"
                << tree(*plan);
        }
    }
    return winners;
}

}  // namespace

TEST(MeasuredColumns, EveryWinnerTransforms) {
    for (const auto& [n, count] : {std::pair{64, 256}, {128, 192}, {176, 96}, {216, 256}}) {
        const auto winners = check_every_winner(columns(n, count, count + 3), is_emulated ? 4 : 40);
        EXPECT_GE(winners.size(), is_emulated ? 2u : 4u) << "the clock chooses: " << n << " x " << count;
    }
}

// A row's own plan of gathered blocks, whatever its groups are.
TEST(MeasuredColumns, GatheredBlocksOverAnyGroup) {
    std::map<std::string, int> groups;
    for (int seed = 1; seed <= 30; ++seed) {
        const problem p = columns(64, 256, 256);
        spectrum in = complex_noise(p.reach(true), 3), out(p.reach(false), {NAN, NAN});
        random_clock::seed(seed);
        const plan_pointer plan = p.record(reinterpret_cast<float*>(in.data()), reinterpret_cast<float*>(out.data()));
        ASSERT_EQ(solve_problem_c2c_many_block_col_col(plan.get()), accepted);
        ++groups[tree(*plan->subplans[0])];
        plan->execute(plan.get(), plan->in, plan->out);
        for (const int64_t column : {0, 129, 255}) {
            spectrum signal(64), result(64);
            for (int64_t j = 0; j < 64; ++j) {
                signal[j] = in[column + 256 * j];
                result[j] = out[column + 256 * j];
            }
            EXPECT_LT(relative_error(result, reference::dft(widened(signal), p.sign)), 3e-7)
                << "seed " << seed << "\n"
                << tree(*plan->subplans[0]);
        }
    }
    EXPECT_GE(groups.size(), 3u);
}
