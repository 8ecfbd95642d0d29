// SPDX-License-Identifier: Apache-2.0
// Gathered blocks of columns over whatever plan the clock has chosen for their groups (test_candidates.cpp has the
// races above them). A group may own no storage to work in: a plan that does nothing then would be the fastest of all.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>

#include "planner/solvers.h"
#include "tests/batch/reshape_support.h"
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"
#include "tests/support/steered_clock.h"

namespace {

using spectrum = std::vector<std::complex<float>>;

problem columns(int64_t n, int64_t count, int64_t width) {
    return {.dims = {{n, width, width}}, .batch = {{count, 1, 1}}, .flags = plan_flag_measured};
}

}  // namespace

TEST(MeasuredColumns, AreRightInBlocksThatAreGatheredOverAnyGroup) {
    std::map<std::string, int> groups;
    for (int seed = 1; seed <= 30; ++seed) {
        const problem p = columns(64, 256, 256);
        spectrum in = complex_noise(p.reach(true), 3), out(p.reach(false), {NAN, NAN});
        steered_clock::start(seed);
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
