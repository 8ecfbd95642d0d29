// SPDX-License-Identifier: Apache-2.0
// Bluestein's row: acceptance, the layout of aux and buffer, results.
#include "dft/bluestein.h"
#include "dft/stage_list.h"
#include "dft/twiddles.h"
#include "planner/solvers.h"
#include "tests/dft/convolution_plans.h"

#include <cstring>

namespace {

struct bluestein_case {
    int64_t n, p, M;
    std::vector<uint64_t> radices;
};
const bluestein_case cases[] = {
    {47, 47, 96, {47}},
    {83, 83, 192, {83}},
    {94, 47, 96, {47, 2}},
    {41 * 43, 1763, 3528, {1763}},
    {83 * 60, 83, 192, {83, 20, 3}},
    {10578, 1763, 3528, {1763, 6}},
    {1949, 1949, 3920, {1949}},
};

// Emulated, long padded sizes are tried in one layout.
std::vector<complex_problem> layouts(const bluestein_case& c) {
    if (is_emulated && c.M > 1000) return {{c.n, -1}};
    return convolution_layouts(c.n);
}

}  // namespace

TEST(Bluestein, TakesEveryLengthWithALargePrimeFactor) {
    for (int64_t n : {41, 47, 59, 82, 83, 41 * 41, 41 * 43, 2 * 1009, 10007})
        for (uint32_t flags : {0u, 32u})
            EXPECT_TRUE(bool(planned(record_of({n, -1, 1, 1, false, flags}), solve_problem_c2c_1d_bluestein_sve))) << n;
    for (int64_t n : {0, 1, 2, 64, 37 * 37})
        EXPECT_FALSE(bool(planned(record_of({n}), solve_problem_c2c_1d_bluestein_sve))) << n;
    const std::vector<fft_plan> others = all_but_one_complex_transform(41);
    for (size_t i = 0; i < others.size(); ++i)
        EXPECT_FALSE(bool(planned(others[i], solve_problem_c2c_1d_bluestein_sve))) << i;
}

TEST(Bluestein, HasItsToldStorageNamesAndSubplan) {
    for (const bluestein_case& c : cases)
        for (const complex_problem& p : layouts(c)) {
            const planned plan(record_of(p), solve_problem_c2c_1d_bluestein_sve);
            ASSERT_TRUE(bool(plan)) << description(p, nullptr);
            SCOPED_TRACE(description(p, plan.get()));
            const bool unit = p.is == 1 && p.os == 1;
            const uint64_t s = c.radices.size();
            EXPECT_EQ(plan.execution(), unit ? "execute_1d_bluestein_sve" : "execute_1d_bluestein_discrete_sve");
            EXPECT_EQ(plan->aux_size, (c.n + 16 * s + c.p + 1 + c.M) * 8);
            EXPECT_EQ(plan->aux_owned, 1u);
            EXPECT_EQ(plan->buffer_size, ((unit ? 1 : 2) * c.n + c.M) * 8);
            expect_convolver(*plan.get(), c.M);
        }
}

// The pieces of aux follow one another without gaps.
TEST(Bluestein, LaysItsAuxOutWordByWord) {
    for (const bluestein_case& c : cases)
        for (const complex_problem& p : layouts(c)) {
            SCOPED_TRACE(description(p, nullptr));
            const planned plan(record_of(p), solve_problem_c2c_1d_bluestein_sve);
            ASSERT_TRUE(bool(plan));
            const uint64_t* word = static_cast<uint64_t*>(plan->aux);
            const uint64_t s = c.radices.size();
            EXPECT_EQ(*word++, s);
            std::vector<stage_record> stages(s);
            memcpy(stages.data(), word, s * sizeof(stage_record));
            word += 16 * s;

            const float* chirp = reinterpret_cast<const float*>(word);
            std::vector<reference::complex> sequence(c.M);
            for (int64_t k = 0; k < c.p; ++k) {
                float expected[2];
                twiddle_unit(p.sign * (k * k % (2 * c.p)), 2 * c.p, expected);
                EXPECT_EQ(memcmp(chirp + 2 * k, expected, 8), 0) << k;
                sequence[k] = {double(expected[0]) / double(c.M), -double(expected[1]) / double(c.M)};
                if (k > 0) sequence[c.M - k] = sequence[k];
            }
            std::vector<std::complex<float>> kernel(c.M);
            memcpy(static_cast<void*>(kernel.data()), word + c.p, c.M * sizeof kernel[0]);
            EXPECT_LT(relative_error(kernel, reference::dft(sequence, -1)), error_limit(c.M) + 0x1p-23);

            const char* tables = reinterpret_cast<const char*>(word + c.p + c.M);
            tables = expect_stages(stages.data(), c.radices, p, twiddle_fill_last_sve, tables);
            EXPECT_LE(tables, static_cast<char*>(plan->aux) + plan->aux_size);
        }
}

TEST(Bluestein, FillsItsKernelTableWithTheScaledChirp) {
    for (int64_t sign : {-1, 0, 1}) {
        constexpr uint64_t p = 43, M = 96;
        float chirp[2 * p], kernel[2 * M];
        for (float& x : kernel) x = -7;
        bluestein_tables_fill(chirp, kernel, M, p, sign);
        const float scale = 1.0f / float(M);
        for (uint64_t k = 0; k < M; ++k) {
            const uint64_t from = k < p ? k : M - k;
            const bool padding = k >= p && k <= M - p;
            EXPECT_EQ(kernel[2 * k], padding ? 0.0f : chirp[2 * from] * scale) << k;
            EXPECT_EQ(kernel[2 * k + 1], padding ? 0.0f : -chirp[2 * from + 1] * scale) << k;
        }
        float expected[2];
        twiddle_unit(sign == -1 ? -4 : 4, 2 * p, expected);
        EXPECT_EQ(memcmp(chirp + 4, expected, 8), 0);
    }
}

TEST(Bluestein, EveryFormComputes) {
    for (const bluestein_case& c : cases) {
        const sample expected(c.n);
        for (complex_problem p : layouts(c))
            for (bool in_place : {false, true}) {
                p.in_place = in_place;
                EXPECT_TRUE(computes(p, expected, solve_problem_c2c_1d_bluestein_sve));
            }
    }
}

TEST(Bluestein, MeasuredPlansCompute) {
    for (int64_t n : {83, 94, 83 * 6})
        for (bool in_place : {false, true}) {
            EXPECT_TRUE(computes({n, -1, 1, 1, in_place, plan_flag_measured}, solve_problem_c2c_1d_bluestein_sve));
            EXPECT_TRUE(computes({n, 1, 2, 3, in_place, plan_flag_measured}, solve_problem_c2c_1d_bluestein_sve));
        }
}

TEST(Bluestein, TakesTheLargePrimeFactorsThatRaderLeaves) {
    const auto execution = [](int64_t n) { return planned(record_of({n})).execution(); };
    for (int64_t n : {41, 43, 53, 61, 67, 71, 73, 79, 82, 2 * 1009, 37 * 41})
        EXPECT_EQ(execution(n), "execute_1d_rader_sve") << n;
    for (int64_t n : {47, 59, 94, 83, 41 * 41, 41 * 43, 47 * 59, 1949, 10007, 10578})
        EXPECT_EQ(execution(n), "execute_1d_bluestein_sve") << n;
    EXPECT_EQ(planned(record_of({83, -1, 2, 1})).execution(), "execute_1d_bluestein_discrete_sve");
    EXPECT_EQ(planned(record_of({41, -1, 1, 2})).execution(), "execute_1d_rader_discrete_sve");
}
