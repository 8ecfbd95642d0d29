// SPDX-License-Identifier: Apache-2.0
// The solvers that move a complex batch to where it is transformed well: by groups of four (rows 17 and 67), through
// blocks (13 and 15), by a transpose before (14) or after (20). Each is called by itself, so that no other row takes
// its problem, and the routes of the table are checked beside.
#include "planner/solvers.h"

#include "reshape_support.h"
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

using complex_array = std::vector<std::complex<float>>;
using solve_function = int (*)(fft_plan*);

constexpr int64_t guard = 16;  // complex values in front of and behind every array

problem batch_of(fft_dim points, fft_dim batch, bool in_place = false, uint32_t flags = 0) {
    problem p;
    p.dims = {points};
    p.batch = {batch};
    p.in_place = in_place;
    p.flags = flags;
    return p;
}

struct arrays {
    complex_array in, out;  // `out` is empty in place
    complex_array& result() { return out.empty() ? in : out; }
    float* in_data() { return reinterpret_cast<float*>(in.data() + guard); }
    float* out_data() { return reinterpret_cast<float*>(result().data() + guard); }
};

arrays fill(const problem& p) {
    arrays a;
    a.in = complex_noise((p.in_place ? std::max(p.reach(true), p.reach(false)) : p.reach(true)) + 2 * guard, 1);
    if (!p.in_place) a.out = complex_noise(p.reach(false) + 2 * guard, 2);
    return a;
}

// Factor of coefficient k of transform t; rotated transforms have others than 1.
using factor_function = std::complex<double> (*)(const problem& p, int64_t t, int64_t k);
std::complex<double> no_factor(const problem&, int64_t, int64_t) { return 1; }

void expect_transforms(const problem& p, const arrays& before, arrays& after, factor_function factor) {
    const fft_dim points = p.dims[0], batch = p.batch[0];
    complex_array rest_before = arrays(before).result(), rest_after = after.result();
    for (int64_t t = 0; t < batch.n; ++t) {
        std::vector<std::complex<double>> x(points.n);
        complex_array result(points.n);
        for (int64_t j = 0; j < points.n; ++j) x[j] = before.in[guard + t * batch.is + j * points.is];
        std::vector<std::complex<double>> expected = reference::dft(x, static_cast<int>(p.sign));
        for (int64_t k = 0; k < points.n; ++k) {
            const int64_t at = guard + t * batch.os + k * points.os;
            expected[k] *= factor(p, t, k);
            result[k] = after.result()[at];
            rest_before[at] = rest_after[at] = 0;
        }
        ASSERT_LT(relative_error(result, expected), 6e-7) << p.text() << " transform " << t;
    }
    ASSERT_EQ(memcmp(rest_before.data(), rest_after.data(), rest_before.size() * sizeof rest_before[0]), 0)
        << p.text() << ": something else was written";
    if (!p.in_place) {
        ASSERT_EQ(before.in, after.in) << p.text() << ": the input was written";
    }
}

void expect_runs(fft_plan* plan, const problem& p, const arrays& before, factor_function factor = no_factor) {
    for (uint64_t plan_buffer : {1, 0}) {
        arrays a = before;
        this_thread_state().use_plan_buffer = plan_buffer;
        plan->execute(plan, a.in_data(), a.out_data());
        expect_transforms(p, before, a, factor);
    }
    this_thread_state().use_plan_buffer = 1;
}

// Plans by this solver alone; its subplans go through the table.
plan_pointer solve(solve_function solver, const problem& p, arrays& a) {
    plan_pointer plan = p.record(a.in_data(), a.out_data());
    this_thread_state().use_plan_buffer = 1;
    return solver(plan.get()) == accepted ? std::move(plan) : nullptr;
}

void check(solve_function solver, problem p, const char* execute_name) {
    for (int64_t sign : {sign_forward, sign_backward}) {
        p.sign = sign;
        const arrays before = fill(p);
        arrays a = before;  // measuring writes to it
        const plan_pointer plan = solve(solver, p, a);
        ASSERT_NE(plan, nullptr) << p.text();
        EXPECT_STREQ(plan->execute_name, execute_name);
        expect_runs(plan.get(), p, before);
    }
}

void expect_refused(solve_function solver, const problem& p) {
    arrays a = fill(p);
    EXPECT_EQ(solve(solver, p, a), nullptr) << p.text();
}

// With one test of acceptance changed: another kind, split arrays.
void expect_refuses_other_kinds(solve_function solver, const problem& p) {
    arrays a = fill(p);
    for (uint32_t kind : {kind_c2r, kind_r2c, kind_r2r}) {
        plan_pointer plan = p.record(a.in_data(), a.out_data());
        plan->kind = kind;
        EXPECT_NE(solver(plan.get()), accepted) << "kind " << kind;
    }
    plan_pointer plan = p.record(a.in_data(), a.out_data());
    plan->split = split_arrays;
    EXPECT_NE(solver(plan.get()), accepted) << "split";
}

void expect_untouched_without_scratch(solve_function solver, const problem& p) {
    const arrays before = fill(p);
    arrays a = before;
    const plan_pointer plan = solve(solver, p, a);
    ASSERT_NE(plan, nullptr);
    a = before;
    plan->buffer_size = UINT64_MAX;  // more than any allocator gives
    with_own_scratch([&] { plan->execute(plan.get(), a.in_data(), a.out_data()); });
    EXPECT_EQ(a.in, before.in);
    EXPECT_EQ(a.out, before.out);
}

}  // namespace

TEST(ManyTranspose, AllCounts) {
    for (int64_t count = 5; count <= 20; ++count)
        for (int64_t n : {2, 16, 30})
            check(solve_problem_dft_many_transpose,
                  batch_of({n, count + 3, count + 1}, {count, 1, 1}, false, plan_flag_measured),
                  "execute_many_transpose");
}

TEST(ManyTranspose, BlocksOf64) {
    for (int64_t count : {63, 64, 65, 66, 128, 131})
        for (bool in_place : {false, true})
            check(solve_problem_dft_many_transpose,
                  batch_of({12, count + 1, count + 1}, {count, 1, 1}, in_place, plan_flag_measured),
                  "execute_many_transpose");
}

TEST(ManyTranspose, Storage) {
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

TEST(ManyTranspose, TunedSpans) {
    float array[2] = {};
    const auto accepts = [&](int64_t n, int64_t stride) {
        plan_pointer plan = batch_of({n, stride, stride}, {8, 1, 1}).record(array, array);
        return solve_problem_dft_many_transpose(plan.get()) == accepted;
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

TEST(ManyTranspose, Refusals) {
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
    return solve_problem_dft_many_transpose_rotate(plan.get()) == accepted ? std::move(plan) : nullptr;
}

}  // namespace

TEST(ManyTransposeRotate, AllCounts) {
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

TEST(ManyTransposeRotate, WithoutBatchTheCountIsOne) {
    problem p = batch_of({20, 3, 2}, {1, 1, 1});
    const arrays before = fill(p);
    arrays a = before;
    complex_array table = rotation_table(p);
    plan_pointer plan = p.record(a.in_data(), a.out_data());
    plan->kind = kind_c2c_large_piece;
    plan->howmany_rank = 0;
    plan->howmany[0] = {0, 1, 1};
    plan->aux = table.data();
    ASSERT_EQ(solve_problem_dft_many_transpose_rotate(plan.get()), accepted);
    expect_runs(plan.get(), p, before);
}

TEST(ManyTransposeRotate, Refusals) {
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

TEST(Bufferized, HalfOfARealTransform) {
    for (int64_t n : {576, 640, 800})
        for (int64_t count : {17, 18, 40, 256})
            for (bool in_place : {false, true})
                check(solve_bufferized_problem, batch_of({n, n / 2 + 1, n / 2 + 1}, {count, 1, 1}, in_place),
                      "execute_bufferization");
}

TEST(Bufferized, SquareArrays) {
    for (int64_t count : {17, 37, 256, 259})
        check(solve_bufferized_problem, batch_of({1029, 1029, 1029}, {count, 1, 1}), "execute_bufferization");
    check(solve_bufferized_problem, batch_of({1029, 1029, 1029}, {19, 1, 1}, true), "execute_bufferization");
    check(solve_bufferized_problem, batch_of({270, 270, 270}, {21, 1, 1}, true, plan_flag_measured),
          "execute_bufferization");
}

TEST(Bufferized, Blocks) {
    struct {
        int64_t n, stride, count, block, rest;
    } cases[] = {{576, 289, 17, 8, 1},     {576, 289, 40, 20, 0},   {576, 289, 256, 16, 0},
                 {576, 289, 289, 16, 1},   {1029, 1029, 17, 17, 0}, {1029, 1029, 255, 255, 0},
                 {1029, 1029, 256, 16, 0}, {1029, 1029, 261, 16, 5}};
    for (const auto& c : cases) {
        const problem p = batch_of({c.n, c.stride, c.stride}, {c.count, 1, 1});
        arrays a = fill(p);
        const plan_pointer plan = solve(solve_bufferized_problem, p, a);
        ASSERT_NE(plan, nullptr) << p.text();
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

TEST(Bufferized, Refusals) {
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

TEST(Indirect, ColumnsIntoRows) {
    for (int64_t n : {2, 3, 16, 20, 37, 64})
        for (int64_t count : {1, 2, 5, 17})
            check(solve_problem_indirect, batch_of({n, n, 1}, {count, 1, n}), "execute_indirect_before");
}

TEST(Indirect, BlockOfAnyShape) {
    for (int64_t n : {5, 16, 30})
        for (int64_t count : {2, 7, 16}) {
            const problem p = batch_of({n, 40, 1}, {count, 1, 48});
            const arrays before = fill(p);
            arrays a = before;
            plan_pointer plan = p.record(a.in_data(), a.out_data());
            plan->blocked_child = 1;
            ASSERT_EQ(solve_problem_indirect(plan.get()), accepted);
            expect_runs(plan.get(), p, before);
        }
}

TEST(Indirect, Refusals) {
    const solve_function solver = solve_problem_indirect;
    expect_refused(solver, batch_of({1, 1, 1}, {8, 1, 1}));
    expect_refused(solver, batch_of({16, 17, 1}, {8, 1, 16}));
    expect_refused(solver, batch_of({16, 16, 1}, {8, 1, 17}));
    expect_refused(solver, batch_of({16, 16, 2}, {8, 1, 16}));
    expect_refused(solver, batch_of({16, 16, 1}, {8, 2, 16}));
    expect_refused(solver, batch_of({16, 16, 1}, {16, 1, 16}, true));
    expect_refuses_other_kinds(solver, batch_of({16, 16, 1}, {8, 1, 16}));
}

TEST(Bufferization2, BlocksOf48) {
    for (int64_t count : {49, 52, 96, 97})
        for (bool in_place : {false, true})
            check(solve_problem_bufferization2, batch_of({256, 256, 256}, {count, 1, 1}, in_place, plan_flag_measured),
                  "execute_bufferization2");
    check(solve_problem_bufferization2, batch_of({1033, 1033, 1033}, {50, 1, 1}), "execute_bufferization2");
}

TEST(Bufferization2, Storage) {
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

TEST(Bufferization2, Refusals) {
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

TEST(PostTranspose, RowsIntoColumnsOfTheSameArray) {
    struct {
        int64_t n, os, count;
    } cases[] = {{256, 128, 128}, {256, 256, 256}, {256, 129, 3}, {300, 200, 17}, {182, 182, 182}, {33000, 1, 1}};
    for (const auto& c : cases)
        check(solve_problem_dft_many_post_transpose, batch_of({c.n, 1, c.os}, {c.count, c.n, 1}, true),
              "execute_many_post_transpose");
}

TEST(PostTranspose, Storage) {
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
TEST(PostTranspose, BetweenTwoArrays) {
    const problem planned = batch_of({256, 1, 128}, {128, 256, 1}, true);
    arrays a = fill(planned);
    const plan_pointer plan = solve(solve_problem_dft_many_post_transpose, planned, a);
    ASSERT_NE(plan, nullptr);
    const problem p = batch_of({256, 1, 128}, {128, 256, 1});
    expect_runs(plan.get(), p, fill(p));
}

TEST(PostTranspose, Refusals) {
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
    arrays a = fill(p);
    const plan_pointer plan = p.plan(a.in_data(), a.out_data());
    return plan ? std::string(plan->solver_name) + ": " + plan->execute_name : "none";
}

}  // namespace

TEST(ReshapingRoutes, ByRules) {
    EXPECT_EQ(route(batch_of({1029, 1029, 1029}, {20, 1, 1})), "solve_bufferized_problem: execute_bufferization");
    EXPECT_EQ(route(batch_of({20, 20, 1}, {8, 1, 20})), "solve_problem_indirect: execute_indirect_before");
    EXPECT_EQ(route(batch_of({1033, 1033, 1033}, {52, 1, 1})), "solve_problem_bufferization2: execute_bufferization2");
    EXPECT_EQ(route(batch_of({4096, 64, 64}, {8, 1, 1})), "solve_problem_dft_many_transpose: execute_many_transpose");
    EXPECT_EQ(route(batch_of({300, 1, 200}, {20, 300, 1}, true)),
              "solve_problem_dft_many_post_transpose: execute_many_post_transpose");
}

TEST(ReshapingRoutes, ABlockOfRow13IsTransposedFirst) {
    const problem p = batch_of({1029, 1029, 1029}, {20, 1, 1});
    arrays a = fill(p);
    const plan_pointer plan = p.plan(a.in_data(), a.out_data());
    ASSERT_NE(plan, nullptr);
    EXPECT_STREQ(plan->subplans[0]->solver_name, "solve_problem_indirect");
}
