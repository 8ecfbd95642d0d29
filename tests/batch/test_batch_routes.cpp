// SPDX-License-Identifier: Apache-2.0
// Which row takes which batch, and what it makes of it: the shapes at the edges of each acceptance.
#include <gtest/gtest.h>

#include "planner/solvers.h"
#include "tests/batch/reshape_support.h"

namespace {

float in_array[4096], out_array[4096];  // measured plans run on them

plan_pointer planned(const problem& p) { return p.plan(in_array, p.in_place ? in_array : out_array); }

// The record behind one row's own solver, whatever stands in front of it; null where it refuses.
plan_pointer taken_by(int (*solver)(fft_plan*), const problem& p) {
    plan_pointer record = p.record(in_array, p.in_place ? in_array : out_array);
    return solver(record.get()) == accepted ? std::move(record) : nullptr;
}

std::string top(const plan_pointer& p) { return p ? std::string(p->solver_name) + ": " + p->execute_name : "no plan"; }

std::string execute_name(const plan_pointer& p) { return p ? p->execute_name : "refused"; }

bool same(const fft_dim& a, const fft_dim& b) { return a.n == b.n && a.is == b.is && a.os == b.os; }

}  // namespace

TEST(BatchOfOne, IsDroppedForCountsOneAndNone) {
    for (int64_t count : {0, 1}) {
        const plan_pointer p = planned({.dims = {{16, 1, 1}}, .batch = {{count, 16, 16}}});
        ASSERT_EQ(top(p), "solve_problem_many_reset: execute_many_reset") << count;
        EXPECT_EQ(p->subplans[0]->howmany_rank, 0);
        EXPECT_EQ(p->subplans[0]->howmany[0].n, 0);
    }
    EXPECT_FALSE(
        taken_by(solve_problem_many_reset, {.kind = kind_c2c_large_piece, .dims = {{16, 1, 1}}, .batch = {{1, 1, 1}}}));
    EXPECT_FALSE(taken_by(solve_problem_many_reset, {.dims = {{16, 1, 1}}, .batch = {{2, 1, 1}}}));
    EXPECT_FALSE(taken_by(solve_problem_many_reset, {.dims = {{16, 1, 1}}, .batch = {{1, 1, 1}, {1, 1, 1}}}));
}

TEST(BatchLoop, PeelsTheOutermostBatch) {
    const plan_pointer p = planned({.dims = {{16, 1, 1}}, .batch = {{3, 640, 512}, {5, 16, 16}}});
    ASSERT_EQ(top(p), "solve_problem_dft_many: execute_many");
    const fft_plan& item = *p->subplans[0];
    EXPECT_EQ(item.howmany_rank, 1);
    EXPECT_TRUE(same(item.howmany[0], {5, 16, 16}));
    EXPECT_TRUE(same(item.howmany[1], {0, 0, 0}));
}

TEST(BatchLoop, TakesAndRefusesByKind) {
    struct shape {
        problem p;
        bool taken;
    };
    const std::vector<fft_dim> adjacent4 = {{4, 1, 1}}, adjacent3 = {{3, 1, 1}}, rows = {{4, 40, 40}};
    const shape shapes[] = {
        {{.dims = {{100, 4, 4}}, .batch = adjacent4}, false},  // left to the four-lane stages
        {{.dims = {{41, 4, 4}}, .batch = adjacent4}, true},    // which can't do this length
        {{.dims = {{100, 4, 4}}, .batch = adjacent3}, true},
        {{.dims = {{100, 1, 1}}, .batch = {{4, 100, 100}}}, true},
        {{.kind = kind_c2r, .dims = {{9, 4, 4}}, .batch = adjacent4}, false},
        {{.kind = kind_c2r, .dims = {{1, 4, 4}}, .batch = adjacent4}, true},
        {{.kind = kind_c2r, .dims = {{9, 1, 1}}, .batch = rows}, true},
        {{.kind = kind_r2c, .dims = {{9, 4, 4}}, .batch = adjacent4}, false},
        {{.kind = kind_r2c, .dims = {{1, 4, 4}}, .batch = adjacent4}, false},
        {{.kind = kind_r2c, .dims = {{9, 1, 1}}, .batch = rows}, true},
        {{.kind = kind_r2c, .dims = {{4, 40, 40}, {9, 4, 4}}, .batch = adjacent4}, true},
        {{.kind = kind_r2c, .dims = {{4, 40, 40}, {9, 4, 4}}, .batch = adjacent4, .in_place = true}, false},  // meets
        {{.kind = kind_r2r, .dims = {{9, 4, 4}}, .batch = adjacent4}, true},
        {{.kind = kind_c2c_large_piece, .dims = {{9, 1, 1}}, .batch = rows}, false},
        {{.dims = {}, .batch = rows}, false},
        {{.dims = {{9, 1, 1}}, .batch = {}}, false},
        {{.dims = {{9, 1, 1}}, .batch = {{4, 16, 12}}, .in_place = true}, false},  // rows moving closer
    };
    for (const shape& s : shapes) EXPECT_EQ(taken_by(solve_problem_dft_many, s.p) != nullptr, s.taken) << s.p.text();
}

TEST(BatchLoop, SplitPlansNeverReachIt) {
    plan_pointer p = problem{.dims = {{9, 1, 1}}, .batch = {{3, 9, 9}}}.record(in_array, out_array);
    p->split = split_arrays;
    EXPECT_EQ(solve_problem_dft_many(p.get()), refused);
}

TEST(SplitLoop, ShowsItsItemsTheirRealPartsAlone) {
    static float in_imag[4096], out_imag[4096];  // apart, as far as the layout reaches
    plan_pointer p = problem{.dims = {{9, 1, 1}}, .batch = {{3, 100, 90}, {2, 9, 9}}}.record(in_array, out_array);
    p->split = split_arrays;
    p->in_imag = in_imag;
    p->out_imag = out_imag;
    ASSERT_EQ(solve_problem_dft_many_split(p.get()), accepted);
    EXPECT_STREQ(p->execute_name, "execute_many_split");
    const fft_plan& item = *p->subplans[0];
    EXPECT_STREQ(item.execute_name, "execute_many_split");
    EXPECT_EQ(item.in, in_array);
    EXPECT_EQ(item.in_imag, in_imag);
    EXPECT_EQ(item.out, out_array);
    EXPECT_EQ(item.out_imag, out_array);
    EXPECT_STREQ(item.subplans[0]->execute_name, "execute_split");
    p->split = interleaved_arrays;
    EXPECT_EQ(solve_problem_dft_many_split(p.get()), refused);
}

TEST(ManyDirect, TakesNeighboursFourAtATime) {
    const plan_pointer p = planned({.dims = {{16, 8, 8}}, .batch = {{8, 1, 1}}, .in_place = true});
    // Columns of more than four meet the tuned blocks first.
    ASSERT_EQ(top(p), "solve_problem_c2c_many_block_col_col: execute_c2c_many_block_col_col_parallel");
    EXPECT_STREQ(p->subplans[0]->execute_name, "execute_c2c_many_direct_parallel_sve");
    EXPECT_EQ(p->subplans[0]->howmany[0].n, 4);
    const plan_pointer adjacent =
        taken_by(solve_problem_c2c_many_direct_parallel_sve, {.dims = {{16, 8, 8}}, .batch = {{8, 1, 1}}});
    ASSERT_EQ(execute_name(adjacent), "execute_c2c_many_direct_parallel_sve");
    EXPECT_EQ(adjacent->subplan_count, 0);
    EXPECT_EQ(adjacent->aux_size, 8u);
    EXPECT_EQ(adjacent->aux_owned, 1u);
}

TEST(ManyDirect, LeavesTailsOfOneToThreeToASubplan) {
    for (int64_t count : {1, 2, 3, 5, 6, 7, 9}) {
        const problem adjacent = {.dims = {{16, 10, 10}}, .batch = {{count, 1, 1}}};
        const problem apart = {.dims = {{16, 1, 1}}, .batch = {{count, 20, 20}}};
        EXPECT_EQ(execute_name(taken_by(solve_problem_c2c_many_direct_parallel_sve, adjacent)),
                  "execute_c2c_many_direct_parallel_sve_tail");
        EXPECT_EQ(execute_name(taken_by(solve_problem_c2c_many_direct_parallel_neon, adjacent)),
                  "execute_c2c_many_direct_parallel_neon_tail");
        EXPECT_EQ(execute_name(taken_by(solve_problem_c2c_many_direct_assemble_neon, apart)),
                  "execute_c2c_many_direct_assemble_neon_tail");
    }
    for (int64_t count : {4, 8, 12}) {
        const problem adjacent = {.dims = {{16, 12, 12}}, .batch = {{count, 1, 1}}};
        const problem apart = {.dims = {{16, 1, 1}}, .batch = {{count, 20, 20}}};
        EXPECT_EQ(execute_name(taken_by(solve_problem_c2c_many_direct_parallel_sve, adjacent)),
                  "execute_c2c_many_direct_parallel_sve");
        EXPECT_EQ(execute_name(taken_by(solve_problem_c2c_many_direct_parallel_neon, adjacent)),
                  "execute_c2c_many_direct_parallel_neon");
        EXPECT_EQ(execute_name(taken_by(solve_problem_c2c_many_direct_assemble_neon, apart)),
                  "execute_c2c_many_direct_assemble_neon");
    }
}

TEST(ManyDirect, EachRowHasItsDistances) {
    const problem adjacent = {.dims = {{16, 8, 8}}, .batch = {{8, 1, 1}}};
    const problem one_side = {.dims = {{16, 8, 1}}, .batch = {{8, 1, 16}}};
    EXPECT_FALSE(taken_by(solve_problem_c2c_many_direct_assemble_neon, adjacent));
    EXPECT_FALSE(taken_by(solve_problem_c2c_many_direct_parallel_sve, one_side));
    EXPECT_FALSE(taken_by(solve_problem_c2c_many_direct_parallel_neon, one_side));
    EXPECT_TRUE(taken_by(solve_problem_c2c_many_direct_assemble_neon, one_side));
}

TEST(ManyDirect, TakesLength64OnlyWhenMeasured) {
    for (auto solver : {solve_problem_c2c_many_direct_parallel_sve, solve_problem_c2c_many_direct_parallel_neon}) {
        EXPECT_FALSE(taken_by(solver, {.dims = {{64, 4, 4}}, .batch = {{4, 1, 1}}}));
        EXPECT_TRUE(taken_by(solver, {.dims = {{64, 4, 4}}, .batch = {{4, 1, 1}}, .flags = plan_flag_measured}));
    }
    const auto assemble = solve_problem_c2c_many_direct_assemble_neon;
    EXPECT_FALSE(taken_by(assemble, {.dims = {{64, 1, 1}}, .batch = {{4, 64, 64}}}));
    EXPECT_TRUE(taken_by(assemble, {.dims = {{64, 1, 1}}, .batch = {{4, 64, 64}}, .flags = plan_flag_measured}));
}

TEST(ManyDirect, RefusesOtherKindsSizesAndItemsThatMeet) {
    for (auto solver : {solve_problem_c2c_many_direct_parallel_sve, solve_problem_c2c_many_direct_parallel_neon}) {
        EXPECT_FALSE(taken_by(solver, {.kind = kind_c2c_large_piece, .dims = {{16, 8, 8}}, .batch = {{8, 1, 1}}}));
        EXPECT_FALSE(taken_by(solver, {.dims = {{22, 8, 8}}, .batch = {{8, 1, 1}}}));
        EXPECT_FALSE(taken_by(solver, {.dims = {{16, 8, 12}}, .batch = {{8, 1, 1}}, .in_place = true}));
    }
    EXPECT_FALSE(taken_by(solve_problem_c2c_many_direct_assemble_neon,
                          {.dims = {{16, 1, 8}}, .batch = {{8, 16, 1}}, .in_place = true}));
}

TEST(BatchInFours, CutsWhatIsNoMultipleOfFour) {
    for (int64_t count = 1; count <= 9; ++count) {
        const plan_pointer p =
            taken_by(solve_problem_c2c_many_parallel, {.dims = {{16, 9, 9}}, .batch = {{count, 1, 1}}});
        ASSERT_EQ(p != nullptr, count >= 5 && count != 8) << count;
        if (!p) continue;
        EXPECT_STREQ(p->execute_name, "execute_c2c_many_parallel");
        EXPECT_EQ(p->subplans[0]->howmany[0].n, count / 4 * 4);
        EXPECT_EQ(p->subplans[1]->howmany[0].n, count % 4);
    }
    EXPECT_FALSE(taken_by(solve_problem_c2c_many_parallel, {.dims = {{41, 9, 9}}, .batch = {{5, 1, 1}}}));
    EXPECT_FALSE(
        taken_by(solve_problem_c2c_many_parallel, {.kind = kind_r2c, .dims = {{16, 9, 9}}, .batch = {{5, 1, 1}}}));
}

TEST(BatchInFours, TwoTunedShapesStayWholeUnlessMeasured) {
    const std::vector<fft_dim> five = {{5, 1, 1}}, many = {{1025, 1, 1}};
    for (uint32_t flags : {0u, uint32_t{plan_flag_fast_pass}}) {
        EXPECT_FALSE(taken_by(solve_problem_c2c_many_parallel, {.dims = {{8, 20, 20}}, .batch = five, .flags = flags}));
        EXPECT_FALSE(
            taken_by(solve_problem_c2c_many_parallel, {.dims = {{2048, 1025, 1025}}, .batch = many, .flags = flags}));
    }
    EXPECT_TRUE(taken_by(solve_problem_c2c_many_parallel,
                         {.dims = {{8, 20, 20}}, .batch = {{5, 1, 2}}, .flags = plan_flag_measured}));
    EXPECT_TRUE(taken_by(solve_problem_c2c_many_parallel, {.dims = {{8, 20, 21}}, .batch = five}));
    EXPECT_TRUE(taken_by(solve_problem_c2c_many_parallel, {.dims = {{2048, 1025, 1025}}, .batch = {{1025, 1, 2}}}));
}

TEST(BlocksOfRows, TakeSquaresOfPowersOfTwo) {
    const int64_t n = 2048;
    const plan_pointer p = planned({.dims = {{n, 1, 1}}, .batch = {{n, n + 3, n}}});
    ASSERT_EQ(top(p), "solve_problem_c2c_many_block_row_row: execute_c2c_many_block_row_row");
    EXPECT_EQ(p->buffer_size, 32u * n * 8);
    const fft_plan& rows = *p->subplans[0];
    EXPECT_TRUE(same(rows.howmany[0], {32, n, n}));
    EXPECT_EQ(rows.in, p->buffer);
    EXPECT_EQ(rows.out, p->buffer);
    const auto solver = solve_problem_c2c_many_block_row_row;
    EXPECT_EQ(taken_by(solver, {.dims = {{4096, 1, 1}}, .batch = {{4096, 4096, 4096}}})->subplans[0]->howmany[0].n, 8);
    EXPECT_EQ(taken_by(solver, {.dims = {{8192, 1, 1}}, .batch = {{8192, 8192, 8192}}})->subplans[0]->howmany[0].n, 8);
    EXPECT_FALSE(taken_by(solver, {.dims = {{1024, 1, 1}}, .batch = {{1024, 1024, 1024}}}));
    EXPECT_FALSE(taken_by(solver, {.dims = {{3072, 1, 1}}, .batch = {{3072, 3072, 3072}}}));
    EXPECT_FALSE(taken_by(solver, {.dims = {{2048, 1, 1}}, .batch = {{1024, 2048, 2048}}}));
    EXPECT_FALSE(taken_by(solver, {.dims = {{2048, 1, 2}}, .batch = {{2048, 2048, 4096}}}));
    EXPECT_FALSE(taken_by(solver, {.dims = {{2048, 1, 1}}, .batch = {{2048, 2049, 2048}}, .in_place = true}));
}

TEST(Dimensions, RunAsRowsFirstThenAsColumnsOnTheOutput) {
    const plan_pointer p = planned({.dims = {{4, 700, 600}, {5, 70, 60}, {6, 7, 9}}, .batch = {}});
    ASSERT_EQ(top(p), "solve_problem_multidimension: execute_multidimension");
    const fft_plan &rows = *p->subplans[0], &columns = *p->subplans[1];
    EXPECT_EQ(rows.rank, 2);
    EXPECT_TRUE(same(rows.dims[0], {5, 70, 60}));
    EXPECT_TRUE(same(rows.dims[1], {6, 7, 9}));
    EXPECT_EQ(rows.howmany_rank, 1);
    EXPECT_TRUE(same(rows.howmany[0], {4, 700, 600}));
    EXPECT_EQ(rows.in, in_array);
    EXPECT_EQ(columns.rank, 1);
    EXPECT_TRUE(same(columns.dims[0], {4, 600, 600}));
    EXPECT_EQ(columns.howmany_rank, 2);
    EXPECT_TRUE(same(columns.howmany[0], {5, 60, 60}));
    EXPECT_TRUE(same(columns.howmany[1], {6, 9, 9}));
    EXPECT_EQ(columns.in, out_array);
    EXPECT_EQ(columns.out, out_array);
}

TEST(Dimensions, ColumnsOfRealToComplexAreComplexAndHalf) {
    const plan_pointer p = planned({.kind = kind_r2c, .dims = {{4, 6, 4}, {6, 1, 1}}, .batch = {}});
    ASSERT_EQ(top(p), "solve_problem_multidimension: execute_multidimension");
    const fft_plan& columns = *p->subplans[1];
    EXPECT_EQ(columns.kind, kind_c2c);
    EXPECT_EQ(columns.dims[0].n, 4);
    EXPECT_TRUE(same(columns.howmany[0], {4, 1, 1}));
}

TEST(Dimensions, EachHasItsOwnRealKind) {
    plan_pointer p =
        problem{.kind = kind_r2r, .dims = {{4, 30, 30}, {5, 6, 6}, {6, 1, 1}}, .batch = {}}.record(in_array, out_array);
    const uint32_t kinds[] = {r2r_redft10, r2r_rodft01, r2r_dht};
    fft_plan_copy_r2r_kinds(p->r2r_kind, kinds, 3);
    ASSERT_EQ(solve_problem_multidimension(p.get()), accepted);
    EXPECT_EQ(p->subplans[0]->r2r_kind[0], r2r_rodft01);
    EXPECT_EQ(p->subplans[0]->r2r_kind[1], r2r_dht);
    EXPECT_EQ(p->subplans[1]->r2r_kind[0], r2r_redft10);
}

TEST(Dimensions, LeavesOneDimensionBatchesAndComplexToRealToOthers) {
    EXPECT_FALSE(taken_by(solve_problem_multidimension, {.dims = {{4, 1, 1}}, .batch = {}}));
    EXPECT_FALSE(taken_by(solve_problem_multidimension, {.dims = {}, .batch = {}}));
    EXPECT_FALSE(taken_by(solve_problem_multidimension, {.dims = {{4, 4, 4}, {4, 1, 1}}, .batch = {{2, 16, 16}}}));
    EXPECT_FALSE(
        taken_by(solve_problem_multidimension, {.kind = kind_c2r, .dims = {{4, 3, 4}, {4, 1, 1}}, .batch = {}}));
    EXPECT_FALSE(
        taken_by(solve_problem_multidimension_parallel, {.dims = {{4, 4, 4}, {4, 1, 1}}, .batch = {{4, 16, 16}}}));
    EXPECT_EQ(top(planned({.dims = {{4, 4, 4}, {4, 1, 1}}, .batch = {{2, 16, 16}}})),
              "solve_problem_dft_many: execute_many");
}

TEST(ComplexToRealDimensions, HaveTheirIntermediateInTheArrayOnlyInPlace) {
    const std::vector<fft_dim> padded = {{4, 12, 24}, {3, 4, 8}, {7, 1, 1}};
    const plan_pointer p = planned({.kind = kind_c2r, .dims = padded, .batch = {}, .in_place = true});
    ASSERT_EQ(top(p), "solve_problem_c2r_multidimension: execute_c2r_multidimension");
    const fft_plan &rows = *p->subplans[0], &columns = *p->subplans[1];
    EXPECT_EQ(p->buffer, nullptr);
    EXPECT_TRUE(same(rows.dims[0], {3, 4, 8}));
    EXPECT_TRUE(same(rows.dims[1], {7, 1, 1}));
    EXPECT_TRUE(same(rows.howmany[0], {4, 12, 24}));
    EXPECT_EQ(columns.kind, kind_c2c);
    EXPECT_TRUE(same(columns.dims[0], {4, 12, 12}));
    EXPECT_TRUE(same(columns.howmany[0], {3, 4, 4}));
    EXPECT_TRUE(same(columns.howmany[1], {4, 1, 1}));
    EXPECT_EQ(top(planned({.kind = kind_c2r, .dims = padded, .batch = {}})),
              "solve_problem_c2r_multidimension: execute_c2r_multidimension_bufferized");
}

TEST(ComplexToRealDimensions, BufferHoldsACompactIntermediate) {
    const plan_pointer p = planned({.kind = kind_c2r, .dims = {{4, 50, 60}, {3, 10, 20}, {7, 2, 2}}, .batch = {}});
    ASSERT_EQ(top(p), "solve_problem_c2r_multidimension: execute_c2r_multidimension_bufferized");
    const fft_plan &rows = *p->subplans[0], &columns = *p->subplans[1];
    EXPECT_EQ(p->buffer_size, 8u * 4 * 3 * 7);
    EXPECT_TRUE(same(rows.dims[0], {3, 4, 20}));
    EXPECT_TRUE(same(rows.dims[1], {7, 1, 2}));
    EXPECT_TRUE(same(rows.howmany[0], {4, 12, 60}));
    EXPECT_EQ(rows.in, p->buffer);
    EXPECT_TRUE(same(columns.dims[0], {4, 50, 12}));
    EXPECT_TRUE(same(columns.howmany[0], {3, 10, 4}));
    EXPECT_TRUE(same(columns.howmany[1], {4, 2, 1}));
    EXPECT_EQ(columns.out, p->buffer);
}
