// SPDX-License-Identifier: Apache-2.0
// solve_bufferized_problem, indirect, bufferization2 and dft_many_post_transpose: batches that go through blocks, or
// through a transpose before or after; and the routes of the table to these solvers and to dft_many_transpose.
#include "planner/solvers.h"

#include "reshape_columns.h"

TEST(Bufferized, TakesTheColumnsOfRealTransforms) {
    const char* const execute_name = "execute_bufferization";
    const auto half = [](int64_t n, int64_t count, bool in_place) {
        return batch_of({n, n / 2 + 1, n / 2 + 1}, {count, 1, 1}, in_place);
    };
    for (bool in_place : {false, true})
        check_both_directions(solve_bufferized_problem, half(576, 17, in_place), execute_name);
    check(solve_bufferized_problem, half(576, 256, true), execute_name);
    check(solve_bufferized_problem, half(640, 40, false), execute_name);
    check(solve_bufferized_problem, half(576, 289, false), execute_name);
    check(solve_bufferized_problem, half(800, 18, true), execute_name);
}

TEST(Bufferized, TakesSquareArrays) {
    const auto square = [](int64_t n, int64_t count, bool in_place, uint32_t flags) {
        return batch_of({n, n, n}, {count, 1, 1}, in_place, flags);
    };
    check(solve_bufferized_problem, square(1029, 17, false, 0), "execute_bufferization");
    check(solve_bufferized_problem, square(1029, 259, true, 0), "execute_bufferization");
    check(solve_bufferized_problem, square(270, 21, true, plan_flag_measured), "execute_bufferization");
}

TEST(Bufferized, CutsAsTheCountDivides) {
    struct {
        int64_t n, stride, count, block, rest;
    } cases[] = {{576, 289, 17, 8, 1},     {576, 289, 40, 20, 0},   {576, 289, 256, 16, 0},
                 {576, 289, 289, 16, 1},   {1029, 1029, 17, 17, 0}, {1029, 1029, 255, 255, 0},
                 {1029, 1029, 256, 16, 0}, {1029, 1029, 261, 16, 5}};
    for (const auto& c : cases) {
        const problem p = batch_of({c.n, c.stride, c.stride}, {c.count, 1, 1});
        float in[2], out[2];
        const plan_pointer plan = p.record(in, out);
        ASSERT_EQ(solve_bufferized_problem(plan.get()), accepted) << p.text();
        EXPECT_EQ(plan->buffer, nullptr);
        EXPECT_EQ(plan->blocked_is, 0);
        EXPECT_EQ(plan->blocked_os, 0);
        ASSERT_EQ(plan->subplan_count, c.rest ? 2 : 1) << p.text();
        for (int i = 0; i < plan->subplan_count; ++i) {
            const fft_plan* s = plan->subplans[i];
            const int64_t row = (c.n + 7) / 8 * 8;
            EXPECT_EQ(s->howmany[0].n, i == 0 ? c.block : c.rest) << p.text();
            EXPECT_EQ(s->howmany[0].os, row);
            EXPECT_EQ(s->dims[0].os, 1);
            EXPECT_EQ(s->blocked_is, 1);
            EXPECT_EQ(s->blocked_os, 1);
            EXPECT_EQ(s->blocked_count, static_cast<uint64_t>(c.count));
            EXPECT_EQ(s->blocked_row, row);
            EXPECT_EQ(s->blocked_child, 1);
        }
    }
}

TEST(Bufferized, RefusesOtherShapes) {
    const solve_function solver = solve_bufferized_problem;
    const auto square = [](int64_t n, int64_t count, uint32_t flags = 0) {
        return batch_of({n, n, n}, {count, 1, 1}, false, flags);
    };
    expect_refused(solver, square(1029, 16));
    expect_refused(solver, square(255, 20, plan_flag_measured));
    expect_refused(solver, square(1031, 20));  // a large prime below the size gate
    for (int64_t n : {1024, 1458, 2048, 2916}) expect_refused(solver, square(n, 17));
    for (int64_t n : {574, 802}) expect_refused(solver, batch_of({n, n / 2 + 1, n / 2 + 1}, {17, 1, 1}));
    expect_refused(solver, batch_of({1029, 1030, 1030}, {17, 1, 1}));
    expect_refused(solver, batch_of({1029, 1029, 1030}, {17, 1, 1}));
    expect_refused(solver, batch_of({1029, 1029, 1}, {17, 1, 1029}));
    expect_refuses_other_kinds(solver, square(1029, 17));
}

TEST(Indirect, TurnsColumnsIntoRows) {
    for (int64_t n : {2, 3, 16, 20, 37, 64})
        for (int64_t count : {1, 2, 5, 17}) {
            if (count > n) continue;  // columns would overlap
            check_both_directions(solve_problem_indirect, batch_of({n, n, 1}, {count, 1, n}),
                                  "execute_indirect_before");
        }
}

TEST(Indirect, TakesABlockOfAnyShape) {
    for (int64_t n : {5, 16, 30})
        for (int64_t count : {2, 7, 16}) {
            const problem p = batch_of({n, 40, 1}, {count, 1, 48});
            const arrays before = fill(p);
            arrays a = before;
            plan_pointer plan = p.record(a.in_data(), a.out_data());
            plan->blocked_child = 1;
            ASSERT_TRUE(is_accepted_by(solve_problem_indirect, plan.get()));
            expect_runs(plan.get(), p, before);
        }
}

TEST(Indirect, RefusesOtherShapes) {
    const solve_function solver = solve_problem_indirect;
    expect_refused(solver, batch_of({1, 1, 1}, {8, 1, 1}));
    expect_refused(solver, batch_of({16, 17, 1}, {8, 1, 16}));
    expect_refused(solver, batch_of({16, 16, 1}, {8, 1, 17}));
    expect_refused(solver, batch_of({16, 16, 2}, {8, 1, 16}));
    expect_refused(solver, batch_of({16, 16, 1}, {8, 2, 16}));
    expect_refused(solver, batch_of({16, 16, 1}, {16, 1, 16}, true));
    expect_refuses_other_kinds(solver, batch_of({16, 16, 1}, {8, 1, 16}));
}

TEST(Bufferization2, TakesColumnsInBlocksOf48) {
    for (int64_t count : {49, 96})
        for (bool in_place : {false, true})
            check(solve_problem_bufferization2, batch_of({256, 256, 256}, {count, 1, 1}, in_place, plan_flag_measured),
                  "execute_bufferization2");
    check(solve_problem_bufferization2, batch_of({1033, 1033, 1033}, {50, 1, 1}), "execute_bufferization2");
}

TEST(Bufferization2, RunsBackward) {
    problem p = batch_of({1050, 1050, 1050}, {52, 1, 1});
    p.sign = sign_backward;
    check(solve_problem_bufferization2, p, "execute_bufferization2");
}

TEST(Bufferization2, HoldsOneBlock) {
    const problem p = batch_of({1050, 1050, 1050}, {50, 1, 1});
    arrays a = fill(p);
    const plan_pointer plan = solve(solve_problem_bufferization2, p, a);
    ASSERT_NE(plan, nullptr);
    EXPECT_EQ(plan->buffer_size, 48u * 1050 * 8);
    ASSERT_EQ(plan->subplan_count, 2);
    EXPECT_EQ(plan->subplans[0]->howmany[0].n, 48);
    EXPECT_EQ(plan->subplans[1]->howmany[0].n, 2);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(plan->subplans[i]->dims[0].is, 48);
    expect_untouched_without_scratch(solve_problem_bufferization2, p);
}

TEST(Bufferization2, RefusesOtherShapes) {
    const solve_function solver = solve_problem_bufferization2;
    const auto square = [](int64_t n, int64_t count, uint32_t flags = 0) {
        return batch_of({n, n, n}, {count, 1, 1}, false, flags);
    };
    expect_refused(solver, square(1050, 48));
    expect_refused(solver, square(255, 50, plan_flag_measured));
    expect_refused(solver, square(3073, 50, plan_flag_measured));
    for (int64_t n : {256, 1024, 1458, 2048, 2916}) expect_refused(solver, square(n, 50));
    expect_refused(solver, batch_of({1050, 1051, 1050}, {50, 1, 1}));
    expect_refused(solver, batch_of({1050, 1050, 1051}, {50, 1, 1}));
    expect_refused(solver, batch_of({1050, 1, 1}, {50, 1050, 1050}));
    expect_refuses_other_kinds(solver, square(1050, 50));
}

TEST(PostTranspose, TurnsRowsIntoColumnsOfTheSameArray) {
    struct {
        int64_t n, os, count;
    } cases[] = {{256, 128, 128}, {256, 256, 256}, {256, 129, 3}, {300, 200, 17}, {182, 182, 182}, {33000, 1, 1}};
    for (const auto& c : cases)
        check(solve_problem_dft_many_post_transpose, batch_of({c.n, 1, c.os}, {c.count, c.n, 1}, true),
              "execute_many_post_transpose");
}

TEST(PostTranspose, RunsBackward) {
    problem p = batch_of({256, 1, 128}, {5, 256, 1}, true);
    p.sign = sign_backward;
    check(solve_problem_dft_many_post_transpose, p, "execute_many_post_transpose");
}

TEST(PostTranspose, HoldsAllRows) {
    const problem p = batch_of({256, 1, 128}, {128, 256, 1}, true);
    arrays a = fill(p);
    const plan_pointer plan = solve(solve_problem_dft_many_post_transpose, p, a);
    ASSERT_NE(plan, nullptr);
    EXPECT_EQ(plan->buffer_size, 256u * 128 * 8);
    ASSERT_EQ(plan->subplan_count, 1);
    EXPECT_EQ(plan->subplans[0]->howmany_rank, 0);
    expect_untouched_without_scratch(solve_problem_dft_many_post_transpose, p);
}

// The row pass of a large transform is planned in place and run from scratch to the output.
TEST(PostTranspose, RunsBetweenTwoArraysToo) {
    const problem planned = batch_of({256, 1, 128}, {128, 256, 1}, true);
    arrays a = fill(planned);
    const plan_pointer plan = solve(solve_problem_dft_many_post_transpose, planned, a);
    ASSERT_NE(plan, nullptr);
    const problem p = batch_of({256, 1, 128}, {128, 256, 1});
    expect_runs(plan.get(), p, fill(p));
}

TEST(PostTranspose, RefusesOtherShapes) {
    const solve_function solver = solve_problem_dft_many_post_transpose;
    expect_refused(solver, batch_of({256, 1, 128}, {128, 256, 1}));        // out of place
    expect_refused(solver, batch_of({256, 1, 127}, {127, 256, 1}, true));  // below 256 KiB
    expect_refused(solver, batch_of({256, 1, 128}, {128, 257, 1}, true));  // rows with gaps
    expect_refused(solver, batch_of({256, 2, 128}, {128, 256, 1}, true));
    expect_refused(solver, batch_of({256, 1, 256}, {128, 256, 2}, true));
    const problem p = batch_of({256, 1, 128}, {128, 256, 1}, true);
    expect_refuses_other_kinds(solver, p);
    plan_pointer without_arrays = p.record(nullptr, nullptr);
    EXPECT_NE(solver(without_arrays.get()), accepted);
}

namespace {

std::string route(const problem& p) {
    float in[2], out[2];
    const plan_pointer plan = p.plan(in, p.in_place ? in : out);
    return plan ? std::string(plan->solver_name) + ": " + plan->execute_name : "none";
}

}  // namespace

TEST(ReshapingRoutes, AreChosenByTheRules) {
    EXPECT_EQ(route(batch_of({1029, 1029, 1029}, {20, 1, 1})), "solve_bufferized_problem: execute_bufferization");
    EXPECT_EQ(route(batch_of({20, 20, 1}, {8, 1, 20})), "solve_problem_indirect: execute_indirect_before");
    EXPECT_EQ(route(batch_of({1033, 1033, 1033}, {52, 1, 1})), "solve_problem_bufferization2: execute_bufferization2");
    EXPECT_EQ(route(batch_of({4096, 64, 64}, {8, 1, 1})), "solve_problem_dft_many_transpose: execute_many_transpose");
    EXPECT_EQ(route(batch_of({300, 1, 200}, {20, 300, 1}, true)),
              "solve_problem_dft_many_post_transpose: execute_many_post_transpose");
}

TEST(ReshapingRoutes, TransposeABufferedBlockFirst) {
    const problem p = batch_of({1029, 1029, 1029}, {20, 1, 1});
    float in[2], out[2];
    const plan_pointer plan = p.plan(in, out);
    ASSERT_NE(plan, nullptr);
    EXPECT_STREQ(plan->subplans[0]->solver_name, "solve_problem_indirect");
}
