// SPDX-License-Identifier: Apache-2.0
// The walk by rules: order, clearing between rows, flags, subplans, the word that hands out plan buffers.
#include "include/qfftf.h"
#include "record/thread_state.h"
#include "tests/planner/fake_solvers.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <numeric>
#include <thread>

namespace {

float array[8];

fft_plan* new_problem() {
    fft_plan* plan = static_cast<fft_plan*>(calloc(1, sizeof(fft_plan)));
    plan->split = -1;
    plan->in = plan->out = array;
    return plan;
}

std::vector<int> rows_up_to(int last) {
    std::vector<int> rows(last + 1);
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

struct PlanProblem : testing::Test {
    fft_plan* plan = new_problem();
    PlanProblem() { fake::clear(); }
    ~PlanProblem() override { fft_plan_free(plan); }
};

// Attaches one of each; a refusal after this must leave nothing.
int attach_and_refuse(fft_plan* p) {
    attach_buffer(p, 64);
    attach_aux(p, 64);
    make_subplans(p, 2);
    return refused;
}

}  // namespace

TEST_F(PlanProblem, TheFirstRowThatAcceptsWins) {
    for (int winner : {0, 1, 2, 3, 44, 66, 67}) {
        fake::clear();
        fake::rows[winner] = fake::accept;
        if (winner < 67) fake::rows[67] = fake::accept;
        EXPECT_EQ(plan_problem(&plan), accepted);
        EXPECT_EQ(fake::calls, rows_up_to(winner));
        EXPECT_EQ(plan->solver_name, solver_table[winner].name);
        EXPECT_STREQ(plan->execute_name, "execute_nothing");
    }
}

TEST_F(PlanProblem, NoRowMeansRefused) {
    EXPECT_EQ(plan_problem(&plan), refused);
    EXPECT_EQ(fake::calls, rows_up_to(67));
}

TEST_F(PlanProblem, EveryNonZeroResultIsARefusal) {
    fake::rows[3] = [](fft_plan*) { return 1; };
    fake::rows[4] = [](fft_plan*) { return -7; };
    fake::rows[5] = fake::accept;
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_EQ(plan->solver_name, solver_table[5].name);
}

TEST_F(PlanProblem, NullSlotIsRefused) {
    fft_plan* none = nullptr;
    EXPECT_EQ(plan_problem(&none), refused);
    EXPECT_TRUE(fake::calls.empty());
}

TEST_F(PlanProblem, EveryRowSeesAClearedRecord) {
    const auto expect_clear = [](fft_plan* p) {
        EXPECT_EQ(p->buffer, nullptr);
        EXPECT_EQ(p->aux, nullptr);
        EXPECT_EQ(p->subplans, nullptr);
        EXPECT_EQ(p->subplan_count, 0);
    };
    for (int row = 0; row < solver_count; ++row)
        fake::rows[row] = [&](fft_plan* p) {
            expect_clear(p);
            return attach_and_refuse(p);
        };
    EXPECT_EQ(plan_problem(&plan), refused);
    expect_clear(plan);
}

TEST_F(PlanProblem, ARecordPlannedBeforeIsClearedFirst) {
    fake::rows[7] = [](fft_plan* p) {
        attach_and_refuse(p);
        return fake::accept(p);
    };
    EXPECT_EQ(plan_problem(&plan), accepted);
    fake::rows[0] = [](fft_plan* p) {
        EXPECT_EQ(p->buffer, nullptr);
        EXPECT_EQ(p->subplans, nullptr);
        return refused;
    };
    EXPECT_EQ(plan_problem(&plan), accepted);
}

TEST_F(PlanProblem, ProblemFieldsStayAsARefusingSolverLeftThem) {
    fake::rows[3] = [](fft_plan* p) {
        p->howmany[0].n = 1;
        return refused;
    };
    fake::rows[4] = [](fft_plan* p) {
        EXPECT_EQ(p->howmany[0].n, 1);
        return fake::accept(p);
    };
    EXPECT_EQ(plan_problem(&plan), accepted);
}

TEST_F(PlanProblem, SetsUsePlanBufferOnThePlanningThreadOnly) {
    std::thread([&] {
        EXPECT_EQ(this_thread_state().use_plan_buffer, 0u);
        plan_problem(&plan);
        EXPECT_EQ(this_thread_state().use_plan_buffer, 1u);
    }).join();
    std::thread([] { EXPECT_EQ(this_thread_state().use_plan_buffer, 0u); }).join();
}

// Without arrays nothing is measured, and the record shows by its flags that no comparison took place.
TEST_F(PlanProblem, MeasuredWithoutArraysIsPlannedByRules) {
    for (int missing = 0; missing < 3; ++missing) {
        fake::clear();
        int runs = 0;
        fake::rows[9] = [&](fft_plan* p) {
            ++runs;
            EXPECT_EQ(p->flags, 64u);
            return fake::accept(p);
        };
        plan->in = missing == 0 ? array : nullptr;
        plan->out = missing == 1 ? array : nullptr;
        plan->flags = 32;
        EXPECT_EQ(plan_problem(&plan), accepted);
        EXPECT_EQ(plan->flags, 64u);
        EXPECT_EQ(runs, 1);
    }
}

TEST_F(PlanProblem, Flags64StayAndAreNotMeasured) {
    fake::rows[9] = fake::accept;
    plan->flags = 64;
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_EQ(plan->flags, 64u);
    EXPECT_EQ(fake::calls, rows_up_to(9));
    fake::calls.clear();
    plan->flags = 96;
    EXPECT_EQ(plan_problem(&plan), accepted);
    EXPECT_EQ(plan->flags, 64u);
    EXPECT_EQ(fake::calls, rows_up_to(9));
}

TEST_F(PlanProblem, SubplansStopAtTheFirstFailure) {
    ASSERT_TRUE(make_subplans(plan, 3));
    for (int i = 0; i < 3; ++i) plan->subplans[i]->rank = i;
    std::vector<int> seen;
    fake::rows[0] = [&](fft_plan* p) {
        seen.push_back(p->rank);
        return p->rank == 1 ? refused : fake::accept(p);
    };
    EXPECT_EQ(plan_subplans(plan->subplans, 3), refused);
    EXPECT_EQ(seen, (std::vector<int>{0, 1}));
    seen.clear();
    EXPECT_EQ(plan_subplans(plan->subplans, 1), accepted);
    EXPECT_EQ(plan_subplans(plan->subplans, 0), accepted);
    EXPECT_EQ(plan_subplans(plan->subplans, -4), accepted);
    EXPECT_EQ(seen, (std::vector<int>{0}));
}

TEST_F(PlanProblem, HooksHaveNoEffect) {
    ASSERT_TRUE(make_subplans(plan, 2));
    plan_finish(plan);
    plan_split_hook(plan);
    EXPECT_EQ(plan->subplan_count, 2);
}

TEST_F(PlanProblem, ScratchIsThePlansBufferOnAThreadThatHasPlanned) {
    ASSERT_TRUE(attach_buffer(plan, 256));
    fft_plan* p = plan;
    std::thread([p] {
        plan_scratch first(p);
        ASSERT_TRUE(first);
        EXPECT_NE(static_cast<void*>(first.data()), p->buffer);
        for (int i = 0; i < 64; ++i) first.data()[i] = 1.0f;
        plan_scratch second(p);
        EXPECT_NE(second.data(), first.data());
        for (int i = 0; i < 64; ++i) EXPECT_EQ(second.data()[i], 0.0f);
        this_thread_state().use_plan_buffer = 1;
        EXPECT_EQ(static_cast<void*>(plan_scratch(p).data()), p->buffer);
        this_thread_state().use_plan_buffer = 2;  // only 1 counts
        EXPECT_NE(static_cast<void*>(plan_scratch(p).data()), p->buffer);
    }).join();
}
