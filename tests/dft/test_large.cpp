// SPDX-License-Identifier: Apache-2.0
// Large powers of two: acceptance, storage, the twiddles of the columns, results.
#include "dft/twiddles.h"
#include "planner/solvers.h"
#include "tests/dft/problems.h"

#include <cstring>

namespace {

complex_problem with_threads(int64_t n, int64_t nthreads) {
    complex_problem p = {n};
    p.nthreads = nthreads;
    return p;
}

bool is_large(const complex_problem& p) { return planned(record_of(p)).solver() == "solve_problem_c2c_1d_large"; }

}  // namespace

TEST(Large, Acceptance) {
    for (int64_t n : {4096, 8192, 16384, 32768, 65536, 1 << 17, 1 << 18})
        for (int64_t nthreads : {0, 1, 2, 4})
            EXPECT_EQ(is_large(with_threads(n, nthreads)), n > (nthreads <= 1 ? 32768 : 4096))
                << n << " threads " << nthreads;
    EXPECT_FALSE(is_large({3 * 32768}));
    EXPECT_FALSE(is_large({1 << 16, -1, 2, 1}));
    EXPECT_FALSE(is_large({1 << 16, -1, 1, 2}));
    std::vector<fft_plan> others(5, record_of({1 << 16}));
    others[0].kind = kind_c2c_large_piece;
    others[1].split = split_arrays;
    others[2].howmany_rank = 1;
    others[2].howmany[0] = {2, 1 << 16, 1 << 16};
    others[3].rank = 2;
    others[3].dims[1] = {4, 1, 1};
    others[4].kind = kind_r2c;
    for (size_t i = 0; i < others.size(); ++i) EXPECT_FALSE(bool(planned(others[i], solve_problem_c2c_1d_large))) << i;
}

TEST(Large, StorageAndSubplans) {
    const struct {
        int64_t n, r, m, nthreads;
    } cases[] = {{65536, 256, 256, 1}, {1 << 17, 256, 512, 1}, {8192, 64, 128, 4}, {1 << 18, 512, 512, 2}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.n);
        const planned plan(record_of(with_threads(c.n, c.nthreads)));
        ASSERT_TRUE(bool(plan));
        EXPECT_EQ(plan.execution(), "execute_c2c_1d_large");
        EXPECT_EQ(plan->buffer_size, 16u * c.n);
        EXPECT_EQ(plan->aux_size, 8u * c.n);
        EXPECT_EQ(plan->aux_owned, 1u);
        ASSERT_EQ(plan->subplan_count, 2);
        const fft_plan &columns = *plan->subplans[0], &rows = *plan->subplans[1];
        EXPECT_EQ(columns.kind, uint32_t{kind_c2c_large_piece});
        EXPECT_EQ(columns.dims[0].n, c.r);
        EXPECT_EQ(columns.dims[0].is, c.m);
        EXPECT_EQ(columns.dims[0].os, c.m);
        EXPECT_EQ(columns.howmany[0].n, c.m);
        EXPECT_EQ(columns.howmany[0].is, 1);
        EXPECT_EQ(columns.howmany[0].os, 1);
        EXPECT_EQ(columns.aux, plan->aux);
        EXPECT_EQ(columns.aux_size, 8u * c.n);
        EXPECT_EQ(columns.aux_owned, 0u);
        EXPECT_EQ(columns.sign, -1);
        EXPECT_EQ(rows.kind, uint32_t{kind_c2c});
        EXPECT_EQ(rows.dims[0].n, c.m);
        EXPECT_EQ(rows.dims[0].is, 1);
        EXPECT_EQ(rows.dims[0].os, c.r);
        EXPECT_EQ(rows.howmany[0].n, c.r);
        EXPECT_EQ(rows.howmany[0].is, c.m);
        EXPECT_EQ(rows.howmany[0].os, 1);
        EXPECT_EQ(rows.sign, -1);
    }
}

// Four columns at a time stand together; every product of a power of two has full groups only.
TEST(Large, TwiddlesBitByBit) {
    for (int64_t sign : {-1, 1}) {
        complex_problem p = with_threads(8192, 2);
        p.sign = sign;
        const int64_t r = 64, m = 128;
        const planned plan(record_of(p));
        const float* table = static_cast<float*>(plan->aux);
        for (int64_t i = 0; i < m; ++i)
            for (int64_t j = 0; j < r; ++j) {
                float expected[2];
                twiddle_unit(sign * i * j, r * m, expected);
                EXPECT_EQ(memcmp(table + 2 * (4 * (i / 4 * r + j) + i % 4), expected, 8), 0) << i << " " << j;
            }
    }
}

TEST(Large, Computes) {
    for (int64_t n : {8192, 65536, 1 << 17}) {
        if (is_emulated && n > 65536) continue;
        const sample expected(n);
        for (int64_t sign : {-1, 1})
            for (bool in_place : {false, true}) {
                complex_problem p = with_threads(n, n == 8192 ? 4 : 1);
                p.sign = sign;
                p.in_place = in_place;
                if (is_emulated && n > 8192 && (sign == 1) != in_place) continue;
                EXPECT_TRUE(computes(p, expected));
            }
    }
}

TEST(Large, MeasuredPlansCompute) {
    for (bool in_place : {false, true})
        for (int64_t sign : {-1, 1}) {
            complex_problem p = with_threads(8192, 2);
            p.sign = sign;
            p.in_place = in_place;
            p.flags = plan_flag_measured;
            EXPECT_TRUE(computes(p, solve_problem_c2c_1d_large));
        }
}
