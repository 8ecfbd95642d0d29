// SPDX-License-Identifier: Apache-2.0
// Columns in blocks: each case of the table that can match finds its problem, and every form computes.
#include <gtest/gtest.h>

#include "batch/block_col_col_table.h"
#include "planner/solvers.h"
#include "tests/batch/reshape_support.h"
#include "tests/support/guarded_floats.h"
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"

namespace {

float in_array[1], out_array[1];

plan_pointer taken(const problem& p) {
    plan_pointer record = p.record(in_array, p.in_place ? in_array : out_array);
    return solve_problem_c2c_many_block_col_col(record.get()) == accepted ? std::move(record) : nullptr;
}

problem columns(int64_t n, int64_t count, int64_t width) {
    return {.dims = {{n, width, width}}, .batch = {{count, 1, 1}}};
}

const char* const names[] = {"execute_c2c_many_block_col_col_parallel", "execute_c2c_many_block_col_col_copy",
                             "execute_c2c_many_block_col_col_trans"};

const block_col_col_case* first_match(uint64_t n, uint64_t count) {
    for (const block_col_col_case& c : block_col_col_table)
        if (c.n == n && count > c.block && count % c.block == 0 && (c.exact == 0 || c.exact == count)) return &c;
    return nullptr;
}

void expect_block(const fft_plan& p, const block_col_col_case& c) {
    const fft_plan& sub = *p.subplans[0];
    const int64_t n = p.dims[0].n, block = static_cast<int64_t>(c.block);
    EXPECT_STREQ(p.execute_name, names[c.variant]);
    EXPECT_EQ(sub.howmany[0].n, block);
    EXPECT_EQ(p.buffer_size, c.block * c.n * 8);
    EXPECT_EQ(sub.dims[0].is, c.variant == block_copy ? block : c.variant == block_trans ? 1 : p.dims[0].is);
    EXPECT_EQ(sub.howmany[0].os, c.variant == block_trans ? n : 1);
    EXPECT_EQ(sub.in, c.variant == block_parallel ? p.in : p.buffer);
    EXPECT_EQ(sub.out, c.variant == block_parallel ? p.out : p.buffer);
}

}  // namespace

TEST(BlockColCol, EveryCaseThatCanMatchDoes) {
    int matched = 0;
    for (const block_col_col_case& c : block_col_col_table) {
        if (c.exact % 4 != 0 || c.exact % c.block != 0) continue;  // tuned, but no count has both
        // Counts of any size: the first that no row in front takes.
        uint64_t count = c.exact ? c.exact : 2 * c.block;
        while (!c.exact && first_match(c.n, count) != &c) count += c.block;
        if (first_match(c.n, count) != &c) {
            ADD_FAILURE() << "row of " << c.n << " and " << c.exact << " is shadowed";
            continue;
        }
        const plan_pointer p = taken(columns(c.n, count, count + 5));
        ASSERT_TRUE(p) << c.n << " x " << count;
        expect_block(*p, c);
        ++matched;
    }
    EXPECT_EQ(matched, 21);
}

TEST(BlockColCol, GroupsOfFourAreTheFallback) {
    for (auto [n, count] : {std::pair{100, 8}, {64, 128}, {64, 132}, {32, 256}, {128, 64}, {4096, 32}, {35, 1224}}) {
        const plan_pointer p = taken(columns(n, count, count));
        ASSERT_TRUE(p) << n << " x " << count;
        EXPECT_STREQ(p->execute_name, names[block_parallel]);
        EXPECT_EQ(p->subplans[0]->howmany[0].n, 4);
    }
}

TEST(BlockColCol, OneSideOfColumnsTakesCopyingCasesOnly) {
    auto one_side = [](int64_t n, int64_t count, bool columns_in) {
        return problem{.dims = {columns_in ? fft_dim{n, count, 1} : fft_dim{n, 1, count}},
                       .batch = {columns_in ? fft_dim{count, 1, n} : fft_dim{count, n, 1}}};
    };
    for (bool columns_in : {true, false}) {
        EXPECT_STREQ(taken(one_side(2048, 64, columns_in))->execute_name, names[block_copy]);
        EXPECT_STREQ(taken(one_side(64, 256, columns_in))->execute_name, names[block_copy]);
        EXPECT_STREQ(taken(one_side(128, 128, columns_in))->execute_name, names[block_copy]) << "the case behind";
        EXPECT_FALSE(taken(one_side(100, 64, columns_in))) << "no case";
        EXPECT_FALSE(taken(one_side(1458, 8, columns_in))) << "groups of four only";
        EXPECT_FALSE(taken(one_side(4096, 64, columns_in))) << "a transposing case only";
    }
    EXPECT_FALSE(taken({.dims = {{64, 2, 2}}, .batch = {{256, 128, 128}}})) << "neither side";
}

TEST(BlockColCol, RefusesOtherShapes) {
    EXPECT_FALSE(taken({.dims = {{64, 1, 1}}, .batch = {{256, 1, 1}}})) << "rows";
    EXPECT_FALSE(taken(columns(64, 4, 4))) << "one group";
    EXPECT_FALSE(taken(columns(64, 258, 258))) << "no multiple of 4";
    EXPECT_FALSE(taken({.kind = kind_c2c_large_piece, .dims = {{64, 256, 256}}, .batch = {{256, 1, 1}}}));
    EXPECT_FALSE(taken({.dims = {{64, 256, 256}, {4, 1, 1}}, .batch = {{256, 1, 1}}}));
    EXPECT_FALSE(taken({.dims = {{64, 256, 300}}, .batch = {{256, 1, 1}}, .in_place = true})) << "pieces meet";
    EXPECT_TRUE(taken({.dims = {{64, 300, 300}}, .batch = {{256, 1, 1}}, .in_place = true}));
}

namespace {

using reference::complex;

// The sum of a spectrum is n times the first value of its signal, and its energy n times the signal's.
void expect_sum_and_energy(const std::vector<complex>& signal, const std::vector<std::complex<float>>& spectrum,
                           const std::string& what) {
    const double n = static_cast<double>(signal.size());
    complex sum = 0;
    double energy = 0, signal_energy = 0;
    for (const auto& z : spectrum) {
        sum += complex(z);
        energy += std::norm(complex(z));
    }
    for (const auto& z : signal) signal_energy += std::norm(z);
    ASSERT_LT(std::abs(sum - n * signal[0]), 1e-5 * std::sqrt(n * energy)) << what;
    ASSERT_LT(std::abs(energy - n * signal_energy), 1e-5 * energy) << what;
}

// Runs the row's own plan on real data. Sums and energies of all columns and every element of some, and the floats
// between the columns stay as they were.
void run_and_compare(problem p) {
    const int64_t n = p.dims[0].n, count = p.batch[0].n;
    guarded_floats in(2 * p.reach(true)), apart(2 * p.reach(false));
    guarded_floats& out = p.in_place ? in : apart;
    uniform_noise noise(n + count);
    std::vector<std::vector<complex>> signals(count, std::vector<complex>(n));
    for (int64_t t = 0; t < count; ++t)
        for (int64_t j = 0; j < n; ++j) {
            const std::complex<float> z = {noise(), noise()};
            in.set_complex(t * p.batch[0].is + j * p.dims[0].is, z);
            signals[t][j] = z;
        }
    plan_pointer plan = p.record(in.data(), out.data());
    ASSERT_EQ(solve_problem_c2c_many_block_col_col(plan.get()), accepted) << p.text();
    plan->execute(plan.get(), in.data(), out.data());
    for (int64_t t = 0; t < count; ++t) {
        const std::string what = p.text() + " column " + std::to_string(t);
        std::vector<std::complex<float>> result(n);
        for (int64_t k = 0; k < n; ++k) result[k] = out.complex_at(t * p.batch[0].os + k * p.dims[0].os);
        expect_sum_and_energy(signals[t], result, what);
        if (t % 29 == 0 || t + 1 == count) {
            ASSERT_LT(relative_error(result, reference::dft(signals[t], p.sign)), 3e-7) << what;
        }
    }
    ASSERT_TRUE(out.zones_are_intact()) << p.text();
    for (int64_t j = 0; j < n; ++j)  // the gap behind each row of columns
        for (int64_t c = count; c < p.dims[0].os && p.batch[0].os == 1 && j + 1 < n; ++c)
            ASSERT_TRUE(out.complex_is_untouched(j * p.dims[0].os + c)) << p.text() << " row " << j << " column " << c;
}

problem in_place(problem p, int64_t sign) {
    p.in_place = true;
    p.sign = sign;
    return p;
}

}  // namespace

TEST(BlockColCol, FormsCompute) {
    run_and_compare(columns(100, 8, 8));
    run_and_compare(in_place(columns(100, 8, 11), -1));
    run_and_compare(columns(64, 256, 259));
    run_and_compare(in_place(columns(64, 256, 259), 1));
    run_and_compare(in_place(columns(128, 128, 128), -1));
    run_and_compare(columns(176, 96, 97));
    run_and_compare(columns(4096, 64, 65));
    run_and_compare(in_place(columns(4096, 64, 64), 1));
    run_and_compare({.dims = {{64, 256, 1}}, .batch = {{256, 1, 65}}});
    run_and_compare({.dims = {{64, 1, 260}}, .batch = {{256, 64, 1}}});
}

// Sixteen columns at a time by stages: outputs near and far, which the last stage or a copy writes; the last of them
// fewer; one side of rows, apart or adjacent.
TEST(BlockColCol, SixteenColumnsAtATime) {
    for (const int64_t sign : {-1, 1}) {
        run_and_compare(in_place(columns(256, 256, 256), sign));
        run_and_compare(in_place(columns(256, 256, 300), sign));
        run_and_compare(in_place(columns(1024, 128, 128), sign));
    }
    run_and_compare(columns(1024, 128, 131));
    run_and_compare({.dims = {{256, 1, 256}}, .batch = {{256, 256, 1}}});
    run_and_compare({.dims = {{256, 1, 300}}, .batch = {{256, 259, 1}}});
    run_and_compare({.dims = {{1024, 1, 128}}, .batch = {{128, 1025, 1}}});
    run_and_compare({.dims = {{1024, 3, 128}}, .batch = {{128, 3073, 1}}});
    run_and_compare({.dims = {{1024, 128, 1}}, .batch = {{128, 1, 1024}}});
}

// One kernel call for each group, between columns of any distance on both sides.
TEST(BlockColCol, IsRightByStraightKernels) {
    for (const int64_t n : {64, 128})
        for (const int64_t sign : {-1, 1})
            for (const int64_t count : {8, 12, 132}) {
                problem p = columns(n, count, count + 1);
                p.sign = sign;
                run_and_compare(p);
                run_and_compare(in_place(p, sign));
                p.dims[0].os = count + 6;
                run_and_compare(p);
            }
}
