// SPDX-License-Identifier: Apache-2.0
#include "dft/schedule_tables.h"
#include "dft/sizes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <vector>

namespace {

using radices = std::vector<uint64_t>;

const std::set<uint64_t> kernel_sizes = {2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,
                                         16, 17, 18, 19, 20, 21, 23, 24, 29, 31, 32, 37, 64};

uint64_t product(const radices& list) {
    return std::accumulate(list.begin(), list.end(), uint64_t{1}, std::multiplies<>());
}

std::vector<uint64_t> prime_factors(uint64_t n) {
    std::vector<uint64_t> factors;
    for (uint64_t p = 2; n > 1; ++p)
        for (; n % p == 0; n /= p) factors.push_back(p);
    return factors;
}

radices row_radices(const schedule_row& row) { return {row.radices, row.radices + row.stage_count}; }

fft_plan one_transform(int64_t n) {
    fft_plan plan = {};
    plan.split = interleaved_arrays;
    plan.sign = sign_forward;
    plan.rank = 1;
    plan.dims[0] = {n, 1, 1};
    return plan;
}

fft_plan adjacent_transforms(int64_t n, int64_t count) {
    fft_plan plan = one_transform(n);
    plan.dims[0] = {n, count, count};
    plan.howmany_rank = 1;
    plan.howmany[0] = {count, 1, 1};
    return plan;
}

radices schedule_of(const fft_plan& plan, uint64_t n) {
    uint64_t list[radix_list_words] = {};
    radix_schedule_result result = {};
    radix_schedule(&plan, &result, n, list);
    EXPECT_EQ(result.list_count, n ? 1u : 0u) << "size " << n;
    return {list, list + result.stage_count};
}

radices schedule_of(uint64_t n) { return schedule_of(one_transform(n), n); }

radices sorensen_schedule_of(uint64_t n) {
    uint64_t list[radix_list_words] = {};
    radix_schedule_result result = {};
    sorensen_radix_schedule(&result, n, list);
    return {list, list + result.stage_count};
}

radices greedy(uint64_t n, const uint64_t* list = radix_order_main, int count = radix_order_main_count) {
    uint64_t found[radix_list_words] = {};
    const uint64_t stages = factor_greedy(n, found, list, count);
    return {found, found + stages};
}

}  // namespace

TEST(Smoothness, IsToldAtTheEdges) {
    for (uint64_t n : {0, 1, 37, 2 * 37, 37 * 37}) EXPECT_EQ(has_large_prime_factor(n), 0) << n;
    for (uint64_t n : {41, 2 * 41}) EXPECT_EQ(has_large_prime_factor(n), 1) << n;
    EXPECT_EQ(has_large_prime_factor(uint64_t{1} << 63), 0);
    EXPECT_EQ(has_large_prime_factor(UINT64_MAX), 1);             // 641 divides it
    EXPECT_EQ(has_large_prime_factor(18446744073709551557u), 1);  // the largest prime below 2^64
    EXPECT_EQ(has_large_prime_factor(12157665459056928801u), 0);  // 3^40
    EXPECT_EQ(has_large_prime_factor(uint64_t{41} * 37 * 31), 1);
}

TEST(Smoothness, AgreesWithTrialDivision) {
    for (uint64_t n = 2; n < 20000; ++n) EXPECT_EQ(has_large_prime_factor(n), prime_factors(n).back() > 37) << n;
}

TEST(Primes, AreToldAtTheEdges) {
    for (uint64_t n : {0, 1, 2, 3, 5}) EXPECT_EQ(is_prime(n), 1) << n;
    for (uint64_t n : {4, 9, 25, 1681, 1763}) EXPECT_EQ(is_prime(n), 0) << n;
}

TEST(Primes, AgreeWithTheFactors) {
    for (uint64_t n = 2; n < 20000; ++n) EXPECT_EQ(is_prime(n), prime_factors(n).size() == 1) << n;
    for (uint64_t p : {46337, 65521, 99991})
        for (uint64_t q : {46337, 65521}) EXPECT_EQ(is_prime(p * q), 0) << p << " times " << q;
}

TEST(Primes, PowersOfTwoAreTold) {
    EXPECT_EQ(is_power_of_two(0), 1);
    for (int e = 0; e < 64; ++e) {
        EXPECT_EQ(is_power_of_two(uint64_t{1} << e), 1) << e;
        if (e > 1) {
            EXPECT_EQ(is_power_of_two((uint64_t{1} << e) - 1), 0) << e;
        }
    }
}

TEST(FactorLists, FindAndStripFactors) {
    EXPECT_EQ(factor_list_contains(37, radix_order_main, 0), 0);
    for (uint64_t n = 0; n < 100; ++n)
        EXPECT_EQ(factor_list_contains(n, radix_order_main, radix_order_main_count), int(kernel_sizes.count(n))) << n;

    EXPECT_EQ(factor_list_strip(12, radix_order_main, 0), 12u);
    EXPECT_EQ(factor_list_strip(2 * 3 * 41 * 43, radix_order_main, radix_order_main_count), 41u * 43);
    EXPECT_EQ(factor_list_strip(2 * 9 * 25 * 11, radix_order_sorensen, radix_order_sorensen_count), 11u);
    for (uint64_t n = 1; n < 5000; ++n)
        EXPECT_EQ(factor_list_strip(n, radix_order_main, radix_order_main_count) == 1, !has_large_prime_factor(n)) << n;
}

TEST(Greedy, CutsTheKnownExamples) {
    EXPECT_EQ(greedy(0), radices());
    EXPECT_EQ(greedy(1), radices());
    EXPECT_EQ(greedy(1000), (radices{20, 10, 5}));
    EXPECT_EQ(greedy(27), (radices{9, 3}));
    EXPECT_EQ(greedy(243), (radices{9, 9, 3}));
    EXPECT_EQ(greedy(22), (radices{11, 2}));
    EXPECT_EQ(greedy(82), (radices{41, 2}));
    EXPECT_EQ(greedy(1681), (radices{1681}));
    EXPECT_EQ(greedy(10578), (radices{1763, 6}));
    EXPECT_EQ(greedy(12, radix_order_main, 0), (radices{12}));
}

TEST(Greedy, NothingIsWrittenBelowTwo) {
    uint64_t list[2] = {7, 8};
    for (uint64_t n : {0, 1}) EXPECT_EQ(factor_greedy(n, list, radix_order_main, radix_order_main_count), 0u);
    EXPECT_EQ(list[0], 7u);
    EXPECT_EQ(list[1], 8u);
}

// Each radix is the first of the order that divides what is left; a residue, if any, is the product of all primes above
// 37 and stands first.
TEST(Greedy, TakesTheFirstDivisorAndPutsTheResidueFirst) {
    for (uint64_t n = 2; n < 20000; ++n) {
        radices list = greedy(n);
        ASSERT_EQ(product(list), n);
        uint64_t residue = 1;
        for (uint64_t p : prime_factors(n))
            if (p > 37) residue *= p;
        uint64_t left = n;
        size_t first = 0;
        if (residue > 1) {
            ASSERT_EQ(list[0], residue) << n;
            first = 1;
        }
        for (size_t i = first; i < list.size(); ++i) {
            const uint64_t* expected = radix_order_main;
            while (left % *expected) ++expected;
            ASSERT_EQ(list[i], *expected) << "radix " << i << " of " << n;
            left /= list[i];
        }
        EXPECT_EQ(left, residue) << n;
    }
}

TEST(Orders, HoldEveryKernelSizeOnce) {
    EXPECT_EQ(std::set<uint64_t>(radix_order_main, radix_order_main + radix_order_main_count), kernel_sizes);
    EXPECT_EQ(radices(radix_order_main, radix_order_main + 3), (radices{64, 32, 16}));
    EXPECT_EQ(radices(radix_order_main + 23, radix_order_main + 27), (radices{4, 2, 9, 3}));
    EXPECT_TRUE(std::is_sorted(radix_order_main + 3, radix_order_main + 25, std::greater<>()));
    EXPECT_EQ(radices(radix_order_sorensen, radix_order_sorensen + radix_order_sorensen_count),
              (radices{32, 16, 12, 8, 7, 5, 4, 3, 2}));
}

template <int rows>
void check_rows(const schedule_row (&table)[rows], const uint64_t* sizes, int size_count) {
    for (const schedule_row& row : table) {
        SCOPED_TRACE("row of size " + std::to_string(row.size));
        EXPECT_EQ(product(row_radices(row)), row.size);
        for (uint64_t i = 0; i < row.stage_count; ++i)
            EXPECT_EQ(factor_list_contains(row.radices[i], sizes, size_count), 1) << "radix " << row.radices[i];
        for (uint64_t i = row.stage_count; i < schedule_row_radices; ++i) EXPECT_EQ(row.radices[i], 0u);
    }
}

TEST(Tables, EveryRowIsACutIntoKernelSizes) {
    check_rows(schedule_table_main, radix_order_main, radix_order_main_count);
    check_rows(schedule_table_batch4, radix_order_main, radix_order_main_count);
    check_rows(schedule_table_sorensen, radix_order_sorensen, radix_order_sorensen_count);
}

TEST(Tables, StandInTheirOrder) {
    std::vector<uint64_t> falls;
    std::map<uint64_t, int> rows_of_size;
    for (int i = 0; i < schedule_table_main_rows; ++i) {
        const uint64_t size = schedule_table_main[i].size;
        ++rows_of_size[size];
        if (i > 0 && size < schedule_table_main[i - 1].size) falls.push_back(schedule_table_main[i - 1].size);
    }
    EXPECT_EQ(falls, (std::vector<uint64_t>{64, 6144, 32768, 2176, 4608}));
    for (const auto& [size, count] : rows_of_size)
        EXPECT_EQ(count, size == 24 || size == 36 || size == 112 || size == 336 ? 2 : 1) << size;
}

TEST(Schedule, IsRightAtTheEdges) {
    EXPECT_EQ(schedule_of(1), radices());
    EXPECT_EQ(schedule_of(36), (radices{6, 6}));
    EXPECT_EQ(schedule_of(336), (radices{3, 14, 8}));
    EXPECT_EQ(schedule_of(1024), (radices{32, 32}));
    EXPECT_EQ(schedule_of(2048), (radices{16, 16, 8}));
    EXPECT_EQ(schedule_of(32768), (radices{32, 32, 32}));
    EXPECT_EQ(schedule_of(65536), (radices{64, 64, 16}));
    EXPECT_EQ(schedule_of(2 * 1009), (radices{1009, 2}));
    EXPECT_EQ(sorensen_schedule_of(32768), (radices{32, 8, 8, 16}));
    EXPECT_EQ(sorensen_schedule_of(1), radices());
    EXPECT_EQ(sorensen_schedule_of(60), (radices{12, 5}));
}

TEST(Schedule, FourAdjacentTransformsHaveTheirOwnTable) {
    EXPECT_EQ(schedule_of(adjacent_transforms(512, 4), 512), (radices{16, 32}));
    EXPECT_EQ(schedule_of(adjacent_transforms(1024, 4), 1024), (radices{32, 32}));
    EXPECT_EQ(schedule_of(adjacent_transforms(2048, 4), 2048), (radices{16, 16, 8}));
    for (const schedule_row& row : schedule_table_batch4)
        EXPECT_EQ(schedule_of(adjacent_transforms(row.size, 4), row.size), row_radices(row)) << row.size;
    // a size that table lacks comes from the main table, then from the greedy cut
    EXPECT_EQ(schedule_of(adjacent_transforms(336, 4), 336), (radices{3, 14, 8}));
    EXPECT_EQ(schedule_of(adjacent_transforms(65536, 4), 65536), (radices{64, 64, 16}));
}

TEST(Schedule, EachConditionOfTheFourBatchCounts) {
    const fft_plan batch = adjacent_transforms(512, 4);
    EXPECT_TRUE(is_batch_of_lanes(batch, 4));
    EXPECT_FALSE(is_batch_of_lanes(batch, 2));
    std::vector<fft_plan> others(8, batch);
    others[0].howmany_rank = 2;
    others[1].rank = 2;
    others[2].kind = kind_r2r;
    others[3].howmany[0].n = 3;
    others[4].dims[0].n = 2 * 41;
    others[5].howmany[0].is = 2;
    others[6].howmany[0].os = 2;
    others[7].howmany_rank = 0;
    for (size_t i = 0; i < others.size(); ++i) {
        EXPECT_FALSE(is_batch_of_lanes(others[i], 4)) << i;
        EXPECT_EQ(schedule_of(others[i], 512), (radices{16, 32})) << i;  // the same cut as in the main table
    }
    fft_plan piece = batch;
    piece.kind = kind_c2c_large_piece;
    EXPECT_TRUE(is_batch_of_lanes(piece, 4));
}

TEST(Schedule, TheFirstRowOfASizeWins) {
    std::set<uint64_t> seen;
    for (const schedule_row& row : schedule_table_main)
        if (seen.insert(row.size).second) {
            EXPECT_EQ(schedule_of(row.size), row_radices(row)) << row.size;
        }
    for (const schedule_row& row : schedule_table_sorensen)
        EXPECT_EQ(sorensen_schedule_of(row.size), row_radices(row)) << row.size;
}

TEST(Schedule, SizesInNoTableAreCutGreedily) {
    std::set<uint64_t> main_sizes, sorensen_sizes;
    for (const schedule_row& row : schedule_table_main) main_sizes.insert(row.size);
    for (const schedule_row& row : schedule_table_sorensen) sorensen_sizes.insert(row.size);
    for (uint64_t n = 1; n < 20000; ++n) {
        if (!main_sizes.count(n)) {
            EXPECT_EQ(schedule_of(n), greedy(n)) << n;
        }
        if (!sorensen_sizes.count(n)) {
            EXPECT_EQ(sorensen_schedule_of(n), greedy(n, radix_order_sorensen, radix_order_sorensen_count)) << n;
        }
    }
}

TEST(Schedule, WritesNothingForNullArgumentsAndSizeZero) {
    const fft_plan plan = one_transform(64);
    uint64_t list[radix_list_words] = {99};
    radix_schedule_result result = {77, 88};
    radix_schedule(&plan, nullptr, 64, list);
    radix_schedule(&plan, &result, 64, nullptr);
    radix_schedule(&plan, &result, 0, list);
    sorensen_radix_schedule(nullptr, 64, list);
    sorensen_radix_schedule(&result, 64, nullptr);
    sorensen_radix_schedule(&result, 0, list);
    EXPECT_EQ(list[0], 99u);
    EXPECT_EQ(result.stage_count, 77u);
    EXPECT_EQ(result.list_count, 88u);
}

TEST(TotalBytes, CountsByKind) {
    fft_plan plan = one_transform(10);
    EXPECT_EQ(problem_total_bytes(&plan), 80u);
    plan.kind = kind_r2r;
    EXPECT_EQ(problem_total_bytes(&plan), 40u);
    for (uint32_t kind : {kind_c2r, kind_r2c}) {
        plan.kind = kind;
        plan.dims[0].n = 10;
        EXPECT_EQ(problem_total_bytes(&plan), 48u);
        plan.dims[0].n = 11;
        EXPECT_EQ(problem_total_bytes(&plan), 48u);
    }
    plan.kind = kind_c2c_large_piece;
    EXPECT_EQ(problem_total_bytes(&plan), 88u);
    plan.kind = kind_r2c;
    plan.rank = 3;
    for (int i = 0; i < 3; ++i) plan.dims[i] = {4 + i, 1, 1};
    EXPECT_EQ(problem_total_bytes(&plan), 4u * 5 * 4 * 8);
}

TEST(TotalBytes, RankZeroIsOneElement) {
    fft_plan plan = one_transform(10);
    plan.rank = 0;
    EXPECT_EQ(problem_total_bytes(&plan), 8u);
    plan.kind = kind_r2r;
    EXPECT_EQ(problem_total_bytes(&plan), 4u);
}
