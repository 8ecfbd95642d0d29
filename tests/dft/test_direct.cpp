// SPDX-License-Identifier: Apache-2.0
// Single transforms of a kernel's length: who takes them, what the plan holds, what it computes.
#include "dft/sizes.h"
#include "kernels/lookup.h"
#include "planner/solver.h"
#include "planner/solvers.h"
#include "tests/dft/problems.h"

namespace {

struct direct_row {
    planned::solve_function solve;
    const char* execution;
    bool contiguous;
    bool has_32;
};
const direct_row direct_rows[] = {
    {solve_problem_c2c_1d_direct_discrete_neon, "execute_c2c_1d_direct_discrete_neon", false, true},
    {solve_problem_c2c_1d_direct_neon, "execute_c2c_1d_direct_neon", true, true},
    {solve_problem_c2c_1d_direct_sve, "execute_c2c_1d_direct_sve", true, false},
};

bool is_kernel_size(int64_t n) { return factor_list_contains(n, radix_order_main, radix_order_main_count); }

}  // namespace

TEST(Direct, EachRowTakesItsLengthsAndStridesOnly) {
    for (const direct_row& row : direct_rows)
        for (int64_t n = 0; n <= 70; ++n)
            for (uint32_t flags : {0u, 32u, 33u, 64u})
                for (int64_t is : {1, 2})
                    for (int64_t os : {1, 3}) {
                        const complex_problem p = {n, -1, is, os, false, flags};
                        const planned plan(record_of(p), row.solve);
                        const bool unit = is == 1 && os == 1;
                        const bool expected = is_kernel_size(n) && unit == row.contiguous && (n != 32 || row.has_32) &&
                                              (n != 64 || !unit || flags == 32);
                        EXPECT_EQ(bool(plan), expected) << description(p, plan.get()) << " " << row.execution;
                        if (plan) {
                            EXPECT_EQ(plan.execution(), row.execution);
                        }
                    }
}

TEST(Direct, RefusesWhatIsNotOneComplexTransform) {
    for (const direct_row& row : direct_rows) {
        const fft_plan good = record_of({16, -1, row.contiguous ? 1 : 2, 1});
        EXPECT_TRUE(bool(planned(good, row.solve)));
        std::vector<fft_plan> others(5, good);
        others[0].kind = kind_c2c_large_piece;
        others[1].kind = kind_r2c;
        others[2].split = split_arrays;
        others[3].howmany_rank = 1;
        others[3].howmany[0] = {2, 16, 16};
        others[4].rank = 2;
        others[4].dims[1] = {4, 1, 1};
        for (const fft_plan& other : others) EXPECT_FALSE(bool(planned(other, row.solve))) << row.execution;
    }
}

TEST(Direct, ThePlanIsOneKernel) {
    for (const direct_row& row : direct_rows)
        for (int64_t sign : {-1, 1}) {
            const planned plan(record_of({5, sign, row.contiguous ? 1 : 2, 1}), row.solve);
            ASSERT_TRUE(bool(plan));
            EXPECT_EQ(plan->aux_size, 8u);
            EXPECT_EQ(plan->aux_owned, 1u);
            EXPECT_EQ(plan->buffer, nullptr);
            EXPECT_EQ(plan->subplan_count, 0);
        }
}

TEST(Direct, TheDirectionsHaveDifferentKernels) {
    for (const direct_row& row : direct_rows) {
        const int64_t is = row.contiguous ? 1 : 2;
        const planned forward(record_of({5, -1, is, 1}), row.solve), backward(record_of({5, 1, is, 1}), row.solve);
        EXPECT_NE(*static_cast<void**>(forward->aux), *static_cast<void**>(backward->aux));
    }
    const fft_plan odd_sign = record_of({5, 7}), backward = record_of({5, 1});
    EXPECT_EQ(lookup_direct_neon(&odd_sign, 5), lookup_direct_neon(&backward, 5));
}

TEST(Direct, IsReachedByLengthsWithAKernelAndNoOthers) {
    EXPECT_EQ(planned(record_of({32})).solver(), "solve_problem_c2c_1d_direct_neon");
    EXPECT_EQ(planned(record_of({64, -1, 2, 1})).solver(), "solve_problem_c2c_1d_direct_discrete_neon");
    EXPECT_EQ(planned(record_of({64, -1, 1, 2})).solver(), "solve_problem_c2c_1d_direct_discrete_neon");
    EXPECT_EQ(planned(record_of({64})).execution(), "execute_1d_two_stages_sve");
    EXPECT_EQ(planned(record_of({22})).execution(), "execute_1d_two_stages_sve");
}

TEST(Direct, EveryRowComputesEveryLength) {
    for (uint64_t n : radix_order_main) {
        const sample expected(n);
        for (const direct_row& row : direct_rows)
            for (int64_t sign : {-1, 1})
                for (bool in_place : {false, true}) {
                    if (n == 32 && !row.has_32) continue;
                    const uint32_t flags = n == 64 ? 32 : 0;
                    complex_problem p = {int64_t(n), sign, 1, 1, in_place, flags};
                    if (!row.contiguous) p.is = 3, p.os = 2;
                    EXPECT_TRUE(computes(p, expected, row.solve));
                    if (!row.contiguous) std::swap(p.is, p.os);
                    EXPECT_TRUE(computes(p, expected, row.solve));
                }
    }
}
