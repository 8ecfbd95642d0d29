// SPDX-License-Identifier: Apache-2.0
// Measured planning with fake solvers whose plans take as long as the test says, by a clock that only they move.
#include "planner/measured.h"

#include "include/qfftf.h"
#include "tests/planner/fake_clock.h"
#include "tests/planner/fake_solvers.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

namespace {

float in_array[8], out_array[8];
std::map<std::string, int> runs;            // executions by execute_name
std::map<std::string, double> run_seconds;  // what one execution takes

void execute_fake(fft_plan* plan, float*, float*) {
    ++runs[plan->execute_name];
    fake::advance_clock(run_seconds[plan->execute_name]);
}

// Row r accepts with a plan that takes `seconds` to run: in the walk by rules under the name "rules", else under
// `name`.
void add_row(int row, const char* name, double seconds) {
    run_seconds[name] = seconds;
    fake::rows[row] = [name](fft_plan* plan) {
        return install(plan, execute_fake, plan->flags == plan_flag_measured ? name : "rules");
    };
}

struct Measured : testing::Test {
    fft_plan* plan = static_cast<fft_plan*>(calloc(1, sizeof(fft_plan)));
    Measured() {
        fake::clear();
        runs.clear();
        run_seconds.clear();
        plan->split = -1;
        plan->in = in_array;
        plan->out = out_array;
        plan->flags = 32;
        qsl_fftf_set_timelimit(0.0);
    }
    ~Measured() override { fft_plan_free(plan); }
};

}  // namespace

TEST(Elapsed, IsOneFusedMultiplyAdd) {
    EXPECT_EQ(elapsed_seconds(10, 999'999, 11, 0), __builtin_fma(-999'999.0, 1e-6, 1.0));
    EXPECT_EQ(elapsed_seconds(5, 7, 5, 10), 3 * 1e-6);
    EXPECT_EQ(elapsed_seconds(0, 0, 3, 500'000), 3.5);
}

TEST_F(Measured, TimePlanIsFourRunsBehindOneUncounted) {
    install(plan, execute_fake, "x");
    run_seconds["x"] = 0.25;
    EXPECT_EQ(time_plan(plan), 1.0);
    EXPECT_EQ(runs["x"], 5);
}

TEST_F(Measured, TheFastestCandidateWins) {
    add_row(5, "slow", 0.5);
    add_row(9, "fast", 0.125);
    add_row(20, "middle", 0.25);
    run_seconds["rules"] = 0.5;
    fft_plan* const by_rules = plan;
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_NE(plan, by_rules) << "the slot holds the winner";
    EXPECT_STREQ(plan->execute_name, "fast");
    EXPECT_EQ(plan->solver_name, solver_table[9].name);
    EXPECT_EQ(plan->flags, 32u);
    EXPECT_EQ(runs, (std::map<std::string, int>{{"rules", 5}, {"slow", 5}, {"fast", 5}, {"middle", 5}}));
}

TEST_F(Measured, TheRulesStandWhenNoCandidateIsFaster) {
    add_row(5, "slow", 0.5);
    run_seconds["rules"] = 0.25;
    fft_plan* const by_rules = plan;
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_EQ(plan, by_rules);
    EXPECT_STREQ(plan->execute_name, "rules");
    EXPECT_EQ(plan->flags, 32u);
}

TEST_F(Measured, TiesGoToTheCandidateAndAmongThemToTheEarlierRow) {
    add_row(5, "first", 0.25);
    add_row(6, "second", 0.25);
    run_seconds["rules"] = 0.25;
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_STREQ(plan->execute_name, "first");
}

TEST_F(Measured, OnlyTheFirstFiveAcceptorsAreBuilt) {
    const char* names[] = {"a", "b", "c", "d", "e", "f"};
    for (int i = 0; i < 6; ++i) add_row(10 * i, names[i], 1.0 / (1 << i));  // the sixth would be the fastest
    run_seconds["rules"] = 1.0;
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_STREQ(plan->execute_name, "e");
    EXPECT_EQ(runs.count("f"), 0u);
    EXPECT_EQ(fake::calls.back(), 40) << "the walk stops at the fifth";
}

TEST_F(Measured, RowsZeroAndOneTakePartLikeTheOthers) {
    add_row(0, "zero", 0.5);
    add_row(1, "one", 0.25);
    run_seconds["rules"] = 0.5;
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_STREQ(plan->execute_name, "one");
}

TEST_F(Measured, SolversSee64InTheFastPassAnd32OnClones) {
    std::vector<uint32_t> seen;
    fake::rows[3] = [&](fft_plan* p) {
        seen.push_back(p->flags);
        return fake::accept(p);
    };
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_EQ(seen, (std::vector<uint32_t>{64, 32}));
}

TEST_F(Measured, CandidatesAreClonesOfTheUntouchedProblem) {
    plan->howmany[0].n = 6;
    plan->howmany_rank = 1;
    fake::rows[2] = [](fft_plan* p) {
        EXPECT_EQ(p->howmany[0].n, 6);
        p->howmany[0].n = 1;  // spoils the record for the rows behind it
        return refused;
    };
    std::vector<int64_t> seen;
    fake::rows[3] = [&](fft_plan* p) {
        seen.push_back(p->howmany[0].n);
        return fake::accept(p);
    };
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_EQ(seen, (std::vector<int64_t>{1, 6}));
}

TEST_F(Measured, ALimitStopsFurtherTimings) {
    const char* names[] = {"a", "b", "c"};
    for (int i = 0; i < 3; ++i) add_row(i, names[i], 0.25);
    run_seconds["rules"] = 1.0;
    run_seconds["b"] = 0.125;
    run_seconds["c"] = 0.0625;
    // from the start: rules 5.0 s, a 1.25 s, b 0.625 s, c 0.3125 s
    const struct {
        double limit;
        const char* winner;
    } expected[] = {{1e-9, "a"}, {6.2, "a"},   {6.25, "b"},  {6.3, "b"},   {6.85, "b"},
                    {6.9, "c"},  {100.0, "c"}, {1e-11, "c"}, {9e-11, "c"}, {0.0, "c"}};
    for (const auto& e : expected) {
        qsl_fftf_set_timelimit(e.limit);
        plan->flags = 32;
        EXPECT_EQ(plan_problem(&plan), accepted);
        EXPECT_STREQ(plan->execute_name, e.winner) << "limit " << e.limit;
    }
}

TEST_F(Measured, CandidatesStandInWhereTheRulesFail) {
    // a row that takes only problems with flags 32
    add_row(5, "lifted", 0.5);
    const auto lifted = fake::rows[5];
    fake::rows[5] = [&](fft_plan* p) { return p->flags == 32 ? lifted(p) : refused; };
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_STREQ(plan->execute_name, "lifted");
    EXPECT_EQ(plan->flags, 32u);
}

TEST_F(Measured, NoPlanAtAllIsRefused) {
    EXPECT_EQ(plan_problem(&plan), refused);
    EXPECT_EQ(plan->flags, 32u);
}

TEST_F(Measured, NoCandidateLeavesThePlanOfTheRules) {
    run_seconds["rules"] = 0.5;
    fake::rows[5] = [](fft_plan* p) { return p->flags == 64 ? install(p, execute_fake, "rules") : refused; };
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_STREQ(plan->execute_name, "rules");
    EXPECT_EQ(plan->flags, 32u);
}

TEST_F(Measured, SubplansWithArraysAreMeasuredInTheirTurn) {
    std::vector<std::pair<int, uint32_t>> seen;  // rank and flags of every subplan that is planned
    fake::rows[3] = [&](fft_plan* p) {
        if (p->rank == 0) return refused;
        if (!make_subplans(p, 1)) return refused;
        p->subplans[0]->rank = 0;
        if (plan_subplans(p->subplans, 1) != accepted) return refused;
        return install(p, execute_fake, "parent");
    };
    fake::rows[8] = [&](fft_plan* p) {
        if (p->rank != 0) return refused;
        seen.push_back({p->rank, p->flags});
        return install(p, execute_fake, "child");
    };
    plan->rank = 1;
    EXPECT_EQ(plan_problem(&plan), accepted);
    // the fast pass plans the child by rules; under the clone it goes through both passes
    EXPECT_EQ(seen, (std::vector<std::pair<int, uint32_t>>{{0, 64}, {0, 64}, {0, 32}}));
}

TEST_F(Measured, UpsamplingKeepsItsShiftsAndGetsAZeroedBuffer) {
    plan->kind = kind_upsampling_2d;
    plan->upsample_shift_x = 0.5f;
    plan->upsample_shift_y = 0.75f;
    fake::rows[0] = [](fft_plan* p) {
        if (!attach_buffer(p, 64)) return refused;
        return install(
            p, [](fft_plan* q, float*, float*) { static_cast<float*>(q->buffer)[3] = 1.0f; }, "leaves something");
    };
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_EQ(plan->upsample_shift_x, 0.5f);
    EXPECT_EQ(plan->upsample_shift_y, 0.75f);
    for (int i = 0; i < 16; ++i) EXPECT_EQ(static_cast<float*>(plan->buffer)[i], 0.0f);
}

namespace {

using list = std::vector<uint64_t>;

// The orders in which apply was called, and what an order takes to run.
std::vector<list> orders;
std::map<list, double> order_seconds;
list current;
uint64_t seen_argument;

void apply(fft_plan*, uint64_t count, const uint64_t* radices, uint64_t argument) {
    current = list(radices, radices + count);
    orders.push_back(current);
    seen_argument = argument;
}

void execute_order(fft_plan*, float*, float*) {
    fake::advance_clock(order_seconds.count(current) ? order_seconds[current] : 1.0);
}

list search(fft_plan* plan, std::vector<list> lists, uint64_t first_depth = 0) {
    orders.clear();
    install(plan, execute_order, "execute_order");
    std::vector<uint64_t> flat(64 * std::max<size_t>(1, lists.size()));
    for (size_t i = 0; i < lists.size(); ++i) std::copy(lists[i].begin(), lists[i].end(), flat.begin() + 64 * i);
    const std::vector<uint64_t> before = flat;
    list best(64, 0);
    const size_t count = lists.empty() ? 0 : lists[0].size();
    search_radix_orders(plan, flat.data(), lists.size(), best.data(), count, apply, 77, first_depth);
    EXPECT_EQ(flat, before) << "the lists come back as they were";
    best.resize(count);
    return best;
}

}  // namespace

TEST_F(Measured, SearchTriesEveryOrderTwice) {
    order_seconds = {{{4, 3, 2}, 0.5}};
    EXPECT_EQ(search(plan, {{2, 3, 4}}), (list{4, 3, 2}));
    const std::vector<list> once = {{2, 3, 4}, {2, 4, 3}, {3, 2, 4}, {3, 4, 2}, {4, 3, 2}, {4, 2, 3}};
    std::vector<list> twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(orders, twice);
    EXPECT_EQ(seen_argument, 77u);
}

TEST_F(Measured, SearchVisitsEqualOrdersOnce) {
    order_seconds.clear();
    search(plan, {{2, 2, 3}});
    EXPECT_EQ(orders.size(), 6u);
    orders.resize(3);
    EXPECT_EQ(orders, (std::vector<list>{{2, 2, 3}, {2, 3, 2}, {3, 2, 2}}));
    search(plan, {{5, 5, 5, 5}});
    EXPECT_EQ(orders.size(), 2u);
    search(plan, {{2, 2, 3, 3}});
    EXPECT_EQ(orders.size(), 2u * 6);
}

TEST_F(Measured, SearchHoldsTheEntriesInFrontOfTheFirstDepth) {
    order_seconds.clear();
    search(plan, {{41, 2, 3}}, 1);
    EXPECT_EQ(orders, (std::vector<list>{{41, 2, 3}, {41, 3, 2}, {41, 2, 3}, {41, 3, 2}}));
}

TEST_F(Measured, SearchKeepsTheFirstOfEqualTimesAndTheFirstOrderWhenAllAreSlow) {
    order_seconds.clear();
    EXPECT_EQ(search(plan, {{2, 3}}), (list{2, 3}));
    order_seconds = {{{2, 3}, 3.0}, {{3, 2}, 2.5}};  // four runs: 12 s and exactly 10 s, neither below 10
    EXPECT_EQ(search(plan, {{2, 3}}), (list{2, 3}));
    order_seconds = {{{2, 3}, 3.0}, {{3, 2}, 2.4}};
    EXPECT_EQ(search(plan, {{2, 3}}), (list{3, 2}));
}

TEST_F(Measured, SearchGoesThroughAllLists) {
    order_seconds = {{{3, 6}, 0.5}};
    EXPECT_EQ(search(plan, {{2, 9}, {6, 3}}), (list{3, 6}));
    EXPECT_EQ(orders.size(), 8u);
}

TEST_F(Measured, SearchesOneRadixAndNoList) {
    order_seconds.clear();
    EXPECT_EQ(search(plan, {{64}}), (list{64}));
    EXPECT_EQ(orders.size(), 2u);
    EXPECT_EQ(search(plan, {}), list{});
    EXPECT_TRUE(orders.empty());
    EXPECT_EQ(search(plan, {{41, 2}}, 2), (list{41, 2}));
    EXPECT_TRUE(orders.empty()) << "nothing to permute behind the last entry";
}
