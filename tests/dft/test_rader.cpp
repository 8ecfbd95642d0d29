// SPDX-License-Identifier: Apache-2.0
// Rader's rows: acceptance, the layout of aux and buffer, results.
#include "dft/rader.h"
#include "dft/sizes.h"
#include "dft/stage_list.h"
#include "dft/twiddles.h"
#include "planner/solvers.h"
#include "tests/dft/convolution_plans.h"

#include <cstring>

namespace {

struct rader_row {
    planned::solve_function solve;
    std::string suffix;
    twiddle_fill fill_last;
};
const rader_row rader_rows[] = {
    {solve_problem_c2c_1d_rader_sve, "sve", twiddle_fill_last_sve},
    {solve_problem_c2c_1d_rader_neon, "neon", twiddle_fill_last_neon},
};

struct rader_case {
    int64_t n, p;
    std::vector<uint64_t> radices;
    uint64_t g;
};
const rader_case cases[] = {
    {41, 41, {41}, 6},        {82, 41, {41, 2}, 6},
    {43, 43, {43}, 3},        {43 * 60, 43, {43, 20, 3}, 3},
    {1009, 1009, {1009}, 11}, {61 * 7 * 8, 61, {61, 14, 4}, 2},
};

}  // namespace

TEST(Rader, TakesPrimesWithASmoothPredecessorTimesASmoothNumber) {
    for (const rader_row& row : rader_rows) {
        for (int64_t n : {41, 43, 53, 61, 67, 2 * 41, 2 * 1009, 37 * 41, 64 * 97})
            EXPECT_TRUE(bool(planned(record_of({n}), row.solve))) << n << row.suffix;
        // smooth; p - 1 not smooth; two large primes; none
        for (int64_t n : {0, 1, 2, 64, 37 * 37, 83, 2 * 83, 41 * 41, 41 * 43, 10007})
            EXPECT_FALSE(bool(planned(record_of({n}), row.solve))) << n << row.suffix;
        // 47 and 59 are left to Bluestein by the SVE row, unless measured
        for (int64_t n : {47, 59, 2 * 47, 60 * 59})
            for (uint32_t flags : {0u, 32u, 64u})
                EXPECT_EQ(bool(planned(record_of({n, -1, 1, 1, false, flags}), row.solve)),
                          row.suffix == "neon" || flags == 32)
                    << n << row.suffix << flags;
    }
}

TEST(Rader, RefusesWhatIsNotOneComplexTransform) {
    const std::vector<fft_plan> others = all_but_one_complex_transform(41);
    for (const rader_row& row : rader_rows)
        for (size_t i = 0; i < others.size(); ++i) EXPECT_FALSE(bool(planned(others[i], row.solve))) << i;
}

TEST(Rader, HasItsToldStorageNamesAndSubplan) {
    for (const rader_row& row : rader_rows)
        for (const rader_case& c : cases)
            for (const complex_problem& p : convolution_layouts(c.n)) {
                const planned plan(record_of(p), row.solve);
                ASSERT_TRUE(bool(plan)) << description(p, nullptr);
                SCOPED_TRACE(description(p, plan.get()));
                const bool unit = p.is == 1 && p.os == 1;
                const uint64_t q = c.p - 1, s = c.radices.size();
                EXPECT_EQ(plan.execution(), (unit ? "execute_1d_rader_" : "execute_1d_rader_discrete_") + row.suffix);
                EXPECT_EQ(plan->aux_size, (c.n + 16 * s + c.p + 2 * q) * 8);
                EXPECT_EQ(plan->aux_owned, 1u);
                EXPECT_EQ(plan->buffer_size, (q + (unit ? 1 : 2) * c.n) * 8);
                expect_convolver(*plan.get(), int64_t(q));
            }
}

// The pieces of aux follow one another without gaps.
TEST(Rader, LaysItsAuxOutWordByWord) {
    for (const rader_row& row : rader_rows)
        for (const rader_case& c : cases)
            for (const complex_problem& p : convolution_layouts(c.n)) {
                SCOPED_TRACE(description(p, nullptr) + " " + row.suffix);
                const planned plan(record_of(p), row.solve);
                ASSERT_TRUE(bool(plan));
                const uint64_t* word = static_cast<uint64_t*>(plan->aux);
                const uint64_t q = c.p - 1, s = c.radices.size();
                EXPECT_EQ(*word++, s);
                std::vector<stage_record> stages(s);
                memcpy(stages.data(), word, s * sizeof(stage_record));
                word += 16 * s;

                std::vector<reference::complex> roots(q);
                const uint64_t* kernel = word;
                const uint64_t* perm_in = word + q;
                const uint64_t* perm_out = word + 2 * q;
                const char* tables = reinterpret_cast<const char*>(word + 3 * q);
                uint64_t forward = 1;
                for (uint64_t i = 0; i < q; ++i) {
                    EXPECT_EQ(perm_in[i], forward) << i;
                    EXPECT_EQ(perm_out[(q - i) % q], forward) << i;
                    float root[2];
                    twiddle_unit(p.sign * int64_t(perm_out[i]), c.p, root);
                    roots[i] = {double(root[0]) / double(q), double(root[1]) / double(q)};
                    forward = forward * c.g % c.p;
                }
                std::vector<std::complex<float>> actual(q);
                memcpy(static_cast<void*>(actual.data()), kernel, q * sizeof actual[0]);
                EXPECT_LT(relative_error(actual, reference::dft(roots, -1)), error_limit(q) + 0x1p-23);

                tables = expect_stages(stages.data(), c.radices, p, row.fill_last, tables);
                EXPECT_LE(tables, static_cast<char*>(plan->aux) + plan->aux_size);
            }
}

TEST(Rader, EveryFormComputes) {
    for (const rader_case& c : cases) {
        const sample expected(c.n);
        for (const rader_row& row : rader_rows)
            for (complex_problem p : convolution_layouts(c.n))
                for (bool in_place : {false, true}) {
                    p.in_place = in_place;
                    EXPECT_TRUE(computes(p, expected, row.solve));
                }
    }
}

TEST(Rader, BackwardIsForwardOfTheConjugates) {
    for (int64_t n : {41, 82, 43 * 60, 1009}) {
        std::vector<std::complex<float>> x = complex_noise(n, 3), conjugates(n), backward(n), forward(n);
        for (int64_t j = 0; j < n; ++j) conjugates[j] = std::conj(x[j]);
        const planned back(record_of({n, 1})), forth(record_of({n, -1}));
        back->execute(back.get(), reinterpret_cast<float*>(x.data()), reinterpret_cast<float*>(backward.data()));
        forth->execute(forth.get(), reinterpret_cast<float*>(conjugates.data()),
                       reinterpret_cast<float*>(forward.data()));
        std::vector<reference::complex> expected(n);
        for (int64_t k = 0; k < n; ++k) expected[k] = std::conj(reference::complex(forward[k]));
        EXPECT_LT(relative_error(backward, expected), 2 * error_limit(n)) << n;
    }
}

TEST(Rader, MeasuredPlansCompute) {
    for (const rader_row& row : rader_rows)
        for (int64_t n : {41, 82, 47 * 6, 43 * 60})
            for (bool in_place : {false, true}) {
                EXPECT_TRUE(computes({n, -1, 1, 1, in_place, plan_flag_measured}, row.solve));
                EXPECT_TRUE(computes({n, 1, 2, 3, in_place, plan_flag_measured}, row.solve));
            }
    // the large prime stays in front, whatever order of the others is the fastest
    std::vector<std::complex<float>> array(43 * 60);
    fft_plan record = record_of({43 * 60, -1, 1, 1, true, plan_flag_measured});
    record.in = record.out = reinterpret_cast<float*>(array.data());
    const planned plan(record, solve_problem_c2c_1d_rader_sve);
    const stage_record* stages = reinterpret_cast<stage_record*>(static_cast<uint64_t*>(plan->aux) + 1);
    EXPECT_EQ(stages[0].radix, 43u);
    EXPECT_EQ(stages[0].kernel, nullptr);
    EXPECT_EQ(stages[1].radix * stages[2].radix, 60u);
}

TEST(Rader, FillsItsTablesForEverySign) {
    for (int64_t sign : {-1, 0, 1, 2}) {
        float kernel[80], expected[2];
        uint64_t in[40], out[40];
        rader_tables_fill(kernel, 41, sign, in, out);
        for (int i = 0; i < 40; ++i) {
            twiddle_unit((sign == -1 ? -1 : 1) * int64_t(out[i]), 41, expected);
            EXPECT_EQ(kernel[2 * i], expected[0] * (1.0f / 40.0f)) << i;
            EXPECT_EQ(kernel[2 * i + 1], expected[1] * (1.0f / 40.0f)) << i;
        }
    }
}
