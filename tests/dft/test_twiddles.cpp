// SPDX-License-Identifier: Apache-2.0
#include "dft/sizes.h"
#include "dft/twiddles.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <complex>
#include <vector>

namespace {

using root = std::complex<float>;

root unit(int64_t k, int64_t n) {
    float value[2];
    twiddle_unit(k, n, value);
    return {value[0], value[1]};
}

bool same_bits(root a, root b) {
    return std::bit_cast<uint32_t>(a.real()) == std::bit_cast<uint32_t>(b.real()) &&
           std::bit_cast<uint32_t>(a.imag()) == std::bit_cast<uint32_t>(b.imag());
}

testing::AssertionResult is_root(root actual, root expected) {
    if (same_bits(actual, expected)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << actual << " in place of " << expected;
}

// The same value by a table of the eight octants: the folded angle, whether cosine and sine change places, their signs.
root unit_by_octants(int64_t k, int64_t n) {
    struct octant {
        int multiple_of_n, direction;  // folded angle = multiple_of_n n + direction t, in quarters of an n-th of a turn
        bool exchanged;
        float real_sign, imag_sign;
    };
    static constexpr octant octants[8] = {{0, 1, false, 1, 1},   {1, -1, true, 1, 1},    {-1, 1, true, -1, 1},
                                          {2, -1, false, -1, 1}, {-2, 1, false, -1, -1}, {3, -1, true, -1, -1},
                                          {-3, 1, true, 1, -1},  {4, -1, false, 1, -1}};
    const int64_t t = 4 * (((k % n) + n) % n);
    const octant& o = octants[2 * t / n % 8];
    const int64_t folded = o.multiple_of_n * n + o.direction * t;
    const double turn = 6.283185307179586;
    const double angle = static_cast<float>(double(folded) * turn / double(4 * n));
    float c = static_cast<float>(std::cos(angle)), s = static_cast<float>(std::sin(angle));
    if (o.exchanged) std::swap(c, s);
    return {o.real_sign * c, o.imag_sign * s};
}

}  // namespace

TEST(Unit, MultiplesOfARightAngleAreExact) {
    for (int64_t n = 1; n <= 4096; ++n) {
        EXPECT_TRUE(is_root(unit(0, n), {1, 0})) << n;
        EXPECT_TRUE(is_root(unit(n, n), {1, 0})) << n;
        EXPECT_TRUE(is_root(unit(-n, n), {1, 0})) << n;
        if (n % 2 == 0) {
            EXPECT_TRUE(is_root(unit(n / 2, n), {-1, 0})) << n;
        }
        if (n % 4 == 0) {
            EXPECT_TRUE(is_root(unit(n / 4, n), {0, 1})) << n;
            EXPECT_TRUE(is_root(unit(-n / 4, n), {0, -1})) << n;
            EXPECT_TRUE(is_root(unit(3 * n / 4, n), {0, -1})) << n;
        }
    }
}

TEST(Unit, MultiplesOfAnEighthHaveEqualParts) {
    for (int64_t n = 8; n <= 4096; n += 8)
        for (int64_t eighth : {1, 3, 5, 7}) {
            const root w = unit(eighth * n / 8, n);
            const root down = unit(-eighth * n / 8, n);
            EXPECT_NEAR(std::abs(w.real()), std::abs(w.imag()), 1e-7) << n;
            EXPECT_TRUE(is_root(down, std::conj(w))) << n;
        }
    for (int64_t n = 8; n <= 4096; n += 8) {
        const root w = unit(n / 8, n);
        EXPECT_EQ(w.real(), w.imag()) << n;
    }
}

TEST(Unit, ANegativeMultipleIsTheSameAngle) {
    EXPECT_TRUE(is_root(unit(-1, 12), unit(11, 12)));
    for (int64_t n : {1, 2, 3, 12, 41, 96, 1000, 4096})
        for (int64_t k = -3 * n; k <= 3 * n; ++k)
            EXPECT_TRUE(is_root(unit(k, n), unit(((k % n) + n) % n, n))) << k << " of " << n;
}

// Exactly on the edge between two octants both folds give the same angle; there the table picks the upper octant and
// the library stays in the lower one, so that the parts, equal but for one rounding, are compared by value.
TEST(Unit, EveryRootAgreesWithTheOctantTable) {
    for (int64_t n = 1; n <= 640; ++n)
        for (int64_t k = 0; k < n; ++k) {
            const root expected = unit_by_octants(k, n), actual = unit(k, n);
            if (8 * k % n == 0) {
                EXPECT_NEAR(std::abs(actual - expected), 0, 6e-8) << k << " of " << n;
            } else {
                EXPECT_TRUE(is_root(actual, expected)) << k << " of " << n;
            }
        }
    for (int64_t n : {1009, 4096, 10007, 65536, 1 << 20, 1 << 24})
        for (int64_t k = 1; k < n; k += 1 + n / 5000)
            if (8 * k % n != 0) {
                EXPECT_TRUE(is_root(unit(k, n), unit_by_octants(k, n))) << k << " of " << n;
            }
}

TEST(Unit, IsCloseToTheTrueRoot) {
    for (int64_t n : {3, 5, 7, 41, 360, 1009, 32768})
        for (int64_t k = 0; k < n; ++k) {
            const long double angle = 2 * 3.14159265358979323846264338327950288L * k / n;
            EXPECT_LT(std::abs(unit(k, n).real() - std::cos(angle)), 7e-8) << k << " of " << n;
            EXPECT_LT(std::abs(unit(k, n).imag() - std::sin(angle)), 7e-8) << k << " of " << n;
        }
}

namespace {

using fill_function = void (*)(float*, uint64_t, uint64_t, uint64_t, uint64_t, int64_t);
const root untouched = {-7, 7};

struct stage {
    uint64_t r, m, L;
    int64_t sign;
};

std::vector<root> filled(fill_function fill, const stage& s) {
    std::vector<root> table((s.r - 1) * s.m + 4, untouched);
    fill(reinterpret_cast<float*>(table.data()), s.r * s.m * s.L, s.r, s.m, s.L, s.sign);
    for (size_t i = (s.r - 1) * s.m; i < table.size(); ++i) EXPECT_EQ(table[i], untouched) << "behind the table";
    return table;
}

// Where the layouts put w(i, j), straight from their definition.
uint64_t plain_entry(const stage& s, uint64_t i, uint64_t j) { return i * (s.r - 1) + (j - 1); }

uint64_t pairs_entry(const stage& s, uint64_t i, uint64_t j) {
    const uint64_t g = i / 2;
    return 2 * g + 2 <= s.m ? 2 * (g * (s.r - 1) + (j - 1)) + (i - 2 * g) : plain_entry(s, i, j);
}

uint64_t fours_entry(const stage& s, uint64_t i, uint64_t j) {
    const uint64_t g = i / 4;
    return 4 * g + 4 <= s.m ? 4 * (g * (s.r - 1) + (j - 1)) + (i - 4 * g) : plain_entry(s, i, j);
}

uint64_t row0_pairs_entry(const stage& s, uint64_t i, uint64_t j) {
    if (i == 0) return plain_entry(s, i, j);
    const uint64_t g = (i - 1) / 2;
    return 2 * g + 3 <= s.m ? (s.r - 1) + 2 * (g * (s.r - 1) + (j - 1)) + (i - 2 * g - 1) : plain_entry(s, i, j);
}

void check_layout(fill_function fill, uint64_t (*entry)(const stage&, uint64_t, uint64_t), const stage& s,
                  uint64_t first_row = 0) {
    SCOPED_TRACE(testing::Message() << "r " << s.r << " m " << s.m << " L " << s.L << " sign " << s.sign);
    const std::vector<root> table = filled(fill, s);
    const int64_t n = s.r * s.m * s.L, turn = s.sign == -1 ? -1 : 1;
    for (uint64_t i = 0; i < s.m; ++i)
        for (uint64_t j = 1; j < s.r; ++j) {
            const root expected = i < first_row ? untouched : unit(turn * int64_t(i * j * s.L), n);
            ASSERT_TRUE(is_root(table[entry(s, i, j)], expected)) << "w(" << i << ", " << j << ")";
        }
}

void for_all_stages(void (*check)(const stage&)) {
    for (uint64_t r : {2, 3, 4, 5, 8, 16, 37})
        for (uint64_t m = 1; m <= 13; ++m)
            for (uint64_t L : {1, 2, 7})
                for (int64_t sign : {-1, 1}) check({r, m, L, sign});
}

}  // namespace

TEST(Layouts, OfPlainRowsHoldEveryTwiddle) {
    for_all_stages([](const stage& s) { check_layout(twiddle_fill_rows, plain_entry, s); });
}

TEST(Layouts, OfPairsHoldEveryTwiddle) {
    for_all_stages([](const stage& s) { check_layout(twiddle_fill_lanes2, pairs_entry, s); });
}

TEST(Layouts, OfFoursHoldEveryTwiddle) {
    for_all_stages([](const stage& s) { check_layout(twiddle_fill_lanes4, fours_entry, s); });
}

TEST(Layouts, OfRow0ThenPairsHoldEveryTwiddle) {
    for_all_stages([](const stage& s) { check_layout(twiddle_fill_row0_pairs, row0_pairs_entry, s, 1); });
}

TEST(Layouts, AnySignButForwardIsBackward) {
    for (int64_t sign : {-2, 0, 2}) check_layout(twiddle_fill_rows, plain_entry, {5, 4, 3, sign});
}

TEST(Layouts, LastStagesRunAcrossRowsWhereAKernelDoes) {
    for (uint64_t r : {2, 3, 5, 22, 37, 41})
        for (uint64_t m : {1, 2, 3, 4, 5, 9})
            for (uint64_t L : {1, 2}) {
                const stage s = {r, m, L, -1};
                const bool across = L == 1 && factor_list_contains(r, radix_order_main, radix_order_main_count);
                const bool across_sorensen = L == 1 && (r == 2 || r == 3 || r == 5);
                check_layout(twiddle_fill_last_neon, across ? pairs_entry : plain_entry, s);
                check_layout(twiddle_fill_last_sve, across ? fours_entry : plain_entry, s);
                check_layout(twiddle_fill_sorensen_neon, across_sorensen ? row0_pairs_entry : plain_entry, s,
                             across_sorensen);
                check_layout(twiddle_fill_sorensen_sve, across_sorensen ? fours_entry : plain_entry, s);
            }
}

TEST(Layouts, OneRowHoldsOnes) {
    for (fill_function fill : {twiddle_fill_rows, twiddle_fill_lanes2, twiddle_fill_lanes4})
        for (int j = 0; j < 4; ++j) EXPECT_TRUE(is_root(filled(fill, {5, 1, 3, -1})[j], {1, 0}));
    for (int j = 0; j < 4; ++j) EXPECT_EQ(filled(twiddle_fill_row0_pairs, {5, 1, 3, -1})[j], untouched);
}

TEST(Layouts, RadixTwoIsTheSameSequenceInThree) {
    for (uint64_t m = 1; m <= 9; ++m) {
        const std::vector<root> rows = filled(twiddle_fill_rows, {2, m, 1, -1});
        EXPECT_EQ(filled(twiddle_fill_lanes2, {2, m, 1, -1}), rows) << m;
        EXPECT_EQ(filled(twiddle_fill_lanes4, {2, m, 1, -1}), rows) << m;
    }
}

TEST(Layouts, NothingIsWrittenWithoutTableRowsOrColumns) {
    for (fill_function fill :
         {twiddle_fill_rows, twiddle_fill_lanes2, twiddle_fill_lanes4, twiddle_fill_row0_pairs, twiddle_fill_last_neon,
          twiddle_fill_last_sve, twiddle_fill_sorensen_neon, twiddle_fill_sorensen_sve}) {
        float table[2] = {-7, 7};
        fill(nullptr, 12, 3, 4, 1, -1);
        fill(table, 12, 3, 0, 4, -1);
        fill(table, 12, 1, 4, 3, -1);
        fill(table, 12, 0, 4, 3, -1);
        EXPECT_EQ(table[0], -7);
        EXPECT_EQ(table[1], 7);
    }
}
