// SPDX-License-Identifier: Apache-2.0
// dft_many_transpose and dft_many_transpose_rotate: columns that are packed into groups of four, transformed, and
// unpacked.
#include "planner/solvers.h"

#include "reshape_columns.h"

#include <cmath>

TEST(ManyTranspose, IsRightForAllCounts) {
    for (int64_t count = 5; count <= 20; ++count)
        for (int64_t n : {2, 16, 30})
            check_both_directions(solve_problem_dft_many_transpose,
                                  batch_of({n, count + 3, count + 1}, {count, 1, 1}, false, plan_flag_measured),
                                  "execute_many_transpose");
}

TEST(ManyTranspose, IsRightAroundBlocksOf64) {
    for (int64_t count : {63, 64, 65, 66, 128, 131})
        for (bool in_place : {false, true})
            check(solve_problem_dft_many_transpose,
                  batch_of({12, count + 1, count + 1}, {count, 1, 1}, in_place, plan_flag_measured),
                  "execute_many_transpose");
}

TEST(ManyTranspose, HoldsOneBlock) {
    const problem p = batch_of({12, 65, 65}, {65, 1, 1}, false, plan_flag_measured);
    arrays a = fill(p);
    const plan_pointer plan = solve(solve_problem_dft_many_transpose, p, a);
    ASSERT_NE(plan, nullptr);
    EXPECT_EQ(plan->buffer_size, 65u * 12 * 8);
    ASSERT_EQ(plan->subplan_count, 2);
    EXPECT_EQ(plan->subplans[0]->howmany[0].n, 4);
    EXPECT_EQ(plan->subplans[1]->howmany_rank, 0);
    expect_untouched_without_scratch(solve_problem_dft_many_transpose, p);
    const problem even = batch_of({12, 64, 64}, {64, 1, 1}, false, plan_flag_measured);
    a = fill(even);
    EXPECT_EQ(solve(solve_problem_dft_many_transpose, even, a)->subplan_count, 1);
}

TEST(ManyTranspose, KeepsToTheTunedSpans) {
    float array[2] = {};
    const auto accepts = [&](int64_t n, int64_t stride) {
        plan_pointer plan = batch_of({n, stride, stride}, {8, 1, 1}).record(array, array);
        return is_accepted_by(solve_problem_dft_many_transpose, plan.get());
    };
    EXPECT_TRUE(accepts(512, 5913));   // 24219648 bytes
    EXPECT_TRUE(accepts(2048, 3492));  // 57212928 bytes
    EXPECT_FALSE(accepts(512, 5914));
    EXPECT_FALSE(accepts(2048, 3493));
    EXPECT_TRUE(accepts(4096, 64));  // 262144 elements by a power of two
    EXPECT_FALSE(accepts(4096, 63));
    EXPECT_FALSE(accepts(2048, 128));  // short columns never
    EXPECT_FALSE(accepts(2048, 1 << 20));
    EXPECT_TRUE(accepts(2100, 6000));   // 100800000 bytes
    EXPECT_FALSE(accepts(2100, 5825));  // 97860000 bytes
}

TEST(ManyTranspose, RefusesOtherShapes) {
    const solve_function solver = solve_problem_dft_many_transpose;
    const uint32_t measured = plan_flag_measured;
    expect_refused(solver, batch_of({16, 8, 8}, {8, 1, 1}));                    // by rules, near strides
    expect_refused(solver, batch_of({16, 4, 4}, {4, 1, 1}, false, measured));   // too few
    expect_refused(solver, batch_of({41, 8, 8}, {8, 1, 1}, false, measured));   // a large prime
    expect_refused(solver, batch_of({16, 1, 8}, {8, 16, 1}, false, measured));  // rows
    expect_refused(solver, batch_of({16, 8, 1}, {8, 1, 16}, false, measured));
    expect_refused(solver, batch_of({16, 8, 9}, {8, 1, 1}, true, measured));  // in place, two layouts
    expect_refuses_other_kinds(solver, batch_of({16, 8, 8}, {8, 1, 1}, false, measured));
}

namespace {

// Column t of m, coefficient k of the r points: exp(2 pi i sign t k / n), n = r m.
std::complex<double> rotation(const problem& p, int64_t t, int64_t k) {
    const double turn = static_cast<double>(t * k) / static_cast<double>(p.dims[0].n * p.batch[0].n);
    return std::polar(1.0, 2 * M_PI * static_cast<double>(p.sign) * turn);
}

// The table of a large transform: groups of four columns interleaved, the others by rows.
complex_array rotation_table(const problem& p) {
    const int64_t r = p.dims[0].n, m = p.batch[0].n, grouped = m / 4 * 4;
    complex_array table(r * m);
    for (int64_t t = 0; t < m; ++t)
        for (int64_t k = 0; k < r; ++k)
            table[t < grouped ? 4 * (t / 4 * r + k) + t % 4 : t * r + k] = std::complex<float>(rotation(p, t, k));
    return table;
}

plan_pointer rotating_plan(const problem& p, arrays& a, complex_array& table) {
    plan_pointer plan = p.record(a.in_data(), a.out_data());
    plan->kind = kind_c2c_large_piece;
    plan->aux = table.data();  // lent
    this_thread_state().use_plan_buffer = 1;
    return is_accepted_by(solve_problem_dft_many_transpose_rotate, plan.get()) ? std::move(plan) : nullptr;
}

}  // namespace

TEST(ManyTransposeRotate, IsRightForAllCounts) {
    for (int64_t count = 1; count <= 40; ++count)
        for (int64_t n : {4, 9, 20})
            for (int64_t sign : {sign_forward, sign_backward}) {
                problem p = batch_of({n, count, count}, {count, 1, 1}, count % 3 == 0);
                p.sign = sign;
                const arrays before = fill(p);
                arrays a = before;
                complex_array table = rotation_table(p);
                const plan_pointer plan = rotating_plan(p, a, table);
                ASSERT_NE(plan, nullptr) << p.text();
                EXPECT_STREQ(plan->execute_name, "execute_many_transpose_rotate");
                expect_runs(plan.get(), p, before, rotation);
            }
}

TEST(ManyTransposeRotate, TakesOneColumnWhereThereIsNoBatch) {
    problem p = batch_of({20, 3, 2}, {1, 1, 1});
    const arrays before = fill(p);
    arrays a = before;
    complex_array table = rotation_table(p);
    plan_pointer plan = p.record(a.in_data(), a.out_data());
    plan->kind = kind_c2c_large_piece;
    plan->howmany_rank = 0;
    plan->howmany[0] = {0, 1, 1};
    plan->aux = table.data();
    ASSERT_TRUE(is_accepted_by(solve_problem_dft_many_transpose_rotate, plan.get()));
    expect_runs(plan.get(), p, before);
}

TEST(ManyTransposeRotate, RefusesOtherKindsAndMissingTwiddles) {
    problem p = batch_of({20, 8, 8}, {8, 1, 1});
    arrays a = fill(p);
    complex_array none, table = rotation_table(p);
    EXPECT_EQ(rotating_plan(p, a, none), nullptr);  // a clone that is to be measured has no table
    p.batch[0].is = 2;
    EXPECT_EQ(rotating_plan(p, a, table), nullptr);
    p.batch[0] = {8, 1, 2};
    EXPECT_EQ(rotating_plan(p, a, table), nullptr);
    p.batch[0] = {8, 1, 1};
    plan_pointer plain = p.record(a.in_data(), a.out_data());
    plain->aux = table.data();
    EXPECT_NE(solve_problem_dft_many_transpose_rotate(plain.get()), accepted);
}
