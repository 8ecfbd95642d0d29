// SPDX-License-Identifier: Apache-2.0
// In-place problems that no row of the table takes: the input goes through compact storage.
#include "planner/solvers.h"

#include "planner/solver.h"
#include "planner/solver_table.h"
#include "tests/batch/differential/check.h"
#include "tests/batch/differential/short_memory.h"
#include "tests/planner/failing_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

transform_problem in_place(uint32_t kind, std::vector<fft_dim> dims, std::vector<fft_dim> batch, bool split = false) {
    transform_problem p;
    p.kind = kind;
    p.sign = kind == kind_c2r ? 1 : kind == kind_r2r ? 0 : -1;
    p.split = split;
    p.dims = std::move(dims);
    p.batch = std::move(batch);
    p.in_place = true;
    if (kind == kind_r2r) p.r2r_kinds.assign(p.dims.size(), r2r_redft10);
    return p;
}

// Rows and columns of a matrix of this many change places on the way.
std::vector<fft_dim> transposed(int64_t rows, int64_t columns) { return {{rows, columns, 1}, {columns, 1, rows}}; }

struct example {
    const char* what;
    transform_problem problem;
};

// Each of these has outputs where inputs of other transforms stand.
const std::vector<example> examples = {
    {"rows to columns, a batch", in_place(kind_c2c, {{6, 1, 10}}, {{10, 6, 1}})},
    {"columns to rows, a batch", in_place(kind_c2c, {{6, 10, 1}}, {{10, 1, 6}})},
    {"two dimensions and a batch, transposed", in_place(kind_c2c, transposed(5, 8), {{3, 40, 40}, {2, 120, 120}})},
    {"four dimensions", in_place(kind_c2c, {{2, 60, 1}, {3, 20, 2}, {4, 5, 6}, {5, 1, 24}}, {{7, 120, 120}})},
    {"split, transposed", in_place(kind_c2c, transposed(6, 4), {{3, 24, 24}}, true)},
    {"cosines, rows to columns", in_place(kind_r2r, {{9, 1, 4}}, {{4, 9, 1}})},
    {"vector field, real to complex", in_place(kind_r2c, {{4, 60, 30}, {5, 12, 6}, {4, 2, 2}}, {{2, 1, 1}})},
    {"vector field, complex to real", in_place(kind_c2r, {{4, 30, 60}, {5, 6, 12}, {4, 2, 2}}, {{2, 1, 1}})},
    {"padded rows, three vectors", in_place(kind_r2c, {{3, 120, 60}, {4, 30, 15}, {8, 3, 3}}, {{3, 1, 1}})},
    {"split real, another layout", in_place(kind_r2c, {{8, 1, 3}, {3, 8, 1}}, {{2, 24, 24}}, true)},
    {"split Hermitian, another layout", in_place(kind_c2r, {{3, 1, 8}, {8, 3, 1}}, {{2, 24, 24}}, true)},
};

std::string solver_of(const transform_problem& p) {
    const arrays planned(p);
    qsl_fftf_plan plan = make_plan(p, planned.pointers());
    const std::string name = plan ? plan->solver_name : "none";
    qsl_fftf_destroy_plan(plan);
    return name;
}

}  // namespace

TEST(CompactInput, TakesWhatTheTableRefusesInPlace) {
    int taken = 0;
    for (const example& e : examples) {
        taken += solver_of(e.problem) == "solve_problem_compact_input";
        for (const bool measured : {false, true}) {
            transform_problem p = e.problem;
            p.measured = measured;
            const check_result result = check_problem(p);
            EXPECT_EQ(result.failure, "") << e.what << ": " << p.text() << "\n" << result.tree;
        }
    }
    EXPECT_GE(taken, 6) << "most of these are refused by every row";
}

// Vector fields and padded rows: element `batch` of each point behind the others.
TEST(CompactInput, EveryRealProblemInPlaceWithAnInterleavedBatchIsTaken) {
    const std::vector<std::vector<int64_t>> sizes = {{5},          {8},          {2, 1},       {3, 4},      {4, 9},
                                                     {2, 3, 4},    {3, 4, 5},    {4, 1, 6},    {1, 1, 3},   {2, 8, 7},
                                                     {2, 3, 2, 4}, {2, 2, 3, 5}, {1, 4, 1, 6}, {3, 2, 5, 2}};
    int taken = 0, planned = 0;
    for (const auto& n : sizes)
        for (int64_t batch = 2; batch <= 5; ++batch)
            for (uint32_t kind : {kind_r2c, kind_c2r}) {
                std::vector<fft_dim> dims(n.size());
                int64_t real = batch, complex = batch;
                for (size_t d = n.size(); d-- > 0;) {
                    dims[d] = kind == kind_r2c ? fft_dim{n[d], real, complex} : fft_dim{n[d], complex, real};
                    complex *= d + 1 == n.size() ? n[d] / 2 + 1 : n[d];
                    real = 2 * complex;
                }
                const transform_problem p = in_place(kind, dims, {{batch, 1, 1}});
                taken += solver_of(p) == "solve_problem_compact_input";
                const check_result result = check_problem(p);
                planned += !result.refused;
                EXPECT_EQ(result.failure, "") << p.text() << "\n" << result.tree;
            }
    EXPECT_EQ(planned, static_cast<int>(sizes.size()) * 4 * 2);
    EXPECT_GE(taken, 40) << "most of these are refused by every row";
}

TEST(CompactInput, NoRandomProblemInPlaceBetweenTwoLayoutsIsRefused) {
    problem_source source(87, {r2r_r2hc, r2r_hc2r, r2r_redft00, r2r_redft10, r2r_rodft11, r2r_dht});
    const auto two_layouts = [](const transform_problem& p) {
        const auto differs = [](const fft_dim& d) { return d.is != d.os; };
        return p.in_place && !p.dims.empty() && (p.kind == kind_c2c || p.kind == kind_r2r) &&
               (std::ranges::any_of(p.dims, differs) || std::ranges::any_of(p.batch, differs));
    };
    int taken = 0;
    for (int left = 200; left > 0;) {
        const transform_problem p = source.draw();
        if (!two_layouts(p)) continue;
        --left;
        taken += solver_of(p) == "solve_problem_compact_input";
        const check_result result = check_problem(p);
        EXPECT_EQ(result.failure, "") << p.text() << "\n" << result.tree;
        EXPECT_FALSE(result.refused) << p.text();
    }
    EXPECT_GE(taken, 60);
}

TEST(CompactInput, IsCompleteOrLeavesTheArrayAloneWhereMemoryIsShort) {
    for (const example& e : examples) {
        const check_result result = check_short_memory(e.problem);
        EXPECT_EQ(result.failure, "") << e.what << ": " << e.problem.text() << "\n" << result.tree;
    }
}

TEST(CompactInput, LeavesOutOfPlaceProblemsAndBareCopiesToTheTable) {
    float a[64] = {}, b[64];
    fft_plan p = {};
    p.split = interleaved_arrays;
    p.rank = 1;
    p.dims[0] = {4, 1, 2};
    p.howmany_rank = 1;
    p.howmany[0] = {2, 4, 1};
    p.in = a;
    p.out = b;
    EXPECT_EQ(solve_problem_compact_input(&p), refused) << "out of place";
    p.out = a;
    p.rank = 0;
    EXPECT_EQ(solve_problem_compact_input(&p), refused) << "rank 0";
    EXPECT_EQ(p.buffer, nullptr);
    EXPECT_EQ(p.subplans, nullptr);
}

TEST(CompactInput, StandsBehindTheWholeTable) {
    const transform_problem plain = in_place(kind_c2c, {{6, 1, 1}}, {{10, 6, 6}});
    EXPECT_NE(solver_of(plain), "solve_problem_compact_input");
    for (const solver_entry& row : solver_table) EXPECT_STRNE(row.name, "solve_problem_compact_input");
}

TEST(CompactInput, SplitArraysThatChangePlacesCountAsInPlace) {
    float a[64] = {}, b[64] = {};
    for (int i = 0; i < 24; ++i) {
        a[i] = static_cast<float>(i % 5) - 2;
        b[i] = static_cast<float>(i % 7) - 3;
    }
    float in_re[24], in_im[24], re[24], im[24];
    std::memcpy(in_re, a, sizeof in_re);
    std::memcpy(in_im, b, sizeof in_im);
    const fft_iodim64 n = {6, 1, 4}, batch = {4, 6, 1};
    qsl_fftf_plan apart = qsl_fftf_plan_guru64_split_dft(1, &n, 1, &batch, in_re, in_im, re, im, QSL_FFTF_RULES);
    qsl_fftf_plan exchanged = qsl_fftf_plan_guru64_split_dft(1, &n, 1, &batch, a, b, b, a, QSL_FFTF_RULES);
    ASSERT_NE(apart, nullptr);
    ASSERT_NE(exchanged, nullptr);
    qsl_fftf_execute(apart);
    qsl_fftf_execute(exchanged);
    for (int i = 0; i < 24; ++i) {
        EXPECT_FLOAT_EQ(b[i], re[i]) << i;
        EXPECT_FLOAT_EQ(a[i], im[i]) << i;
    }
    qsl_fftf_destroy_plan(apart);
    qsl_fftf_destroy_plan(exchanged);
}
