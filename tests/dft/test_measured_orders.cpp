// SPDX-License-Identifier: Apache-2.0
// Measured plans of the solvers with stages: whichever order of their radices the clock prefers is the one that runs.
#include "dft/stage_list.h"
#include "planner/solvers.h"
#include "tests/dft/problems.h"
#include "tests/support/steered_clock.h"

#include <algorithm>
#include <set>

namespace {

using radices = std::vector<uint64_t>;

// Counted lists: those of three stages, and of the convolution solvers.
radices radices_of(const planned& plan) {
    const stage_record* stages = counted_stages(plan->aux);
    radices order;
    for (uint64_t q = 0; q < stage_count_of(plan->aux); ++q) order.push_back(stages[q].radix);
    return order;
}

// The orders that win as the clock prefers one timed run after the other.
std::set<radices> winning_orders(int64_t n, planned::solve_function solve) {
    fft_plan record = record_of({n, sign_forward, 1, 1, false, plan_flag_measured});
    std::vector<float> in(2 * n), out(2 * n);
    record.in = in.data();
    record.out = out.data();
    std::set<radices> orders;
    int64_t readings = 2;
    for (int64_t winner = 1; winner < readings; ++winner) {
        steered_clock::start(1, winner);
        const planned plan(record, solve);
        readings = steered_clock::readings();
        EXPECT_TRUE(plan) << n;
        if (plan) orders.insert(radices_of(plan));
    }
    steered_clock::stop();
    return orders;
}

// All orders of the plan by rules that leave the first `fixed` radices in place.
std::set<radices> all_orders(int64_t n, planned::solve_function solve, size_t fixed) {
    const planned plan(record_of({n, sign_forward, 1, 1}), solve);
    radices order = radices_of(plan);
    std::sort(order.begin() + static_cast<ptrdiff_t>(fixed), order.end());
    std::set<radices> orders;
    do orders.insert(order);
    while (std::next_permutation(order.begin() + static_cast<ptrdiff_t>(fixed), order.end()));
    return orders;
}

struct measured_row {
    const char* name;
    planned::solve_function solve;
    int64_t n;
    size_t fixed;  // radices that stay in front
};

}  // namespace

TEST(MeasuredOrders, AreAllThatTheRadicesHave) {
    for (const measured_row& row : {measured_row{"c2c_1d_sve", solve_problem_c2c_1d_sve, 960, 0},
                                    {"c2c_1d_neon", solve_problem_c2c_1d_neon, 960, 0},
                                    {"c2c_1d_rader_sve", solve_problem_c2c_1d_rader_sve, 41 * 99, 1},
                                    {"c2c_1d_rader_neon", solve_problem_c2c_1d_rader_neon, 41 * 99, 1},
                                    {"c2c_1d_bluestein_sve", solve_problem_c2c_1d_bluestein_sve, 83 * 99, 1}}) {
        const std::set<radices> all = all_orders(row.n, row.solve, row.fixed);
        EXPECT_GE(all.size(), 2u) << row.name << " of " << row.n;
        EXPECT_EQ(winning_orders(row.n, row.solve), all) << row.name << " of " << row.n;
    }
}
