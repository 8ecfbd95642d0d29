// SPDX-License-Identifier: Apache-2.0
// Every way to a root of unity gives the bits of its definition: sine and cosine by the C library, of the angle folded
// into the first octant and rounded to single precision. QFFTF_ALL_ANGLES=1 in the environment tries every angle and
// longer circles, which takes minutes under an emulator.
#include "dft/first_octant.h"
#include "dft/roots.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <complex>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <utility>
#include <vector>

namespace {

using root = std::complex<float>;

bool all_angles() { return getenv("QFFTF_ALL_ANGLES") != nullptr; }

// The definition, step by step.
root defined_root(int64_t k, int64_t n) {
    int64_t t = k % n * 4;
    if (t < 0) t += 4 * n;
    const bool conjugate = 4 * n - t < t;
    if (conjugate) t = 4 * n - t;
    const bool rotate = t - n > 0;
    if (rotate) t -= n;
    const bool exchange = n - t < t;
    if (exchange) t = n - t;
    const float angle = static_cast<float>(static_cast<double>(t) * 6.283185307179586 / static_cast<double>(4 * n));
    float c = static_cast<float>(std::cos(static_cast<double>(angle)));
    float s = static_cast<float>(std::sin(static_cast<double>(angle)));
    if (exchange) std::swap(c, s);
    if (rotate) c = -std::exchange(s, c);
    return {c, conjugate ? -s : s};
}

testing::AssertionResult same_bits(const float* actual, root expected) {
    if (memcmp(actual, &expected, sizeof expected) == 0) return testing::AssertionSuccess();
    return testing::AssertionFailure() << root(actual[0], actual[1]) << " in place of " << expected;
}

int64_t turn(int64_t sign) { return sign == -1 ? -1 : 1; }

std::vector<float> room(int64_t count) { return std::vector<float>(2 * count + 2, -7); }

// Nothing is written behind the entries asked for.
void expect_end(const std::vector<float>& table) {
    EXPECT_EQ(table[table.size() - 2], -7);
    EXPECT_EQ(table[table.size() - 1], -7);
}

void check_circle(int64_t count, int64_t L, int64_t sign) {
    const int64_t n = count * L;
    SCOPED_TRACE(testing::Message() << "circle of " << n << " by " << L << ", sign " << sign);
    const root_circle circle(n, L, sign);
    for (int64_t k = 0; k < count; k += 1 + count / 5000) {
        float taken[2];
        circle.take(k, taken);
        ASSERT_TRUE(same_bits(taken, defined_root(turn(sign) * k * L, n))) << k;
    }
}

void check_rows(int64_t count, int64_t L, int64_t sign, int64_t i, int64_t first, int64_t end) {
    const int64_t n = count * L;
    SCOPED_TRACE(testing::Message() << "circle of " << n << " by " << L << ", sign " << sign << ", row " << i
                                    << " from " << first << " to " << end);
    const root_circle circle(n, L, sign);
    const auto expected = [&](int64_t row, int64_t j) { return defined_root(turn(sign) * row * j * L, n); };
    for (int64_t distance : {1, 2, 4}) {
        std::vector<float> table = room(distance * (end - first));
        circle.take_row(i, first, end, table.data(), distance);
        for (int64_t j = first; j < end; ++j)
            ASSERT_TRUE(same_bits(&table[2 * distance * (j - first)], expected(i, j))) << distance << ": " << j;
        expect_end(table);
    }
    std::vector<float> four = room(4 * (end - first));
    circle.take_four_rows(i, first, end, four.data());
    for (int64_t j = first; j < end; ++j)
        for (int64_t lane = 0; lane < 4; ++lane)
            ASSERT_TRUE(same_bits(&four[8 * (j - first) + 2 * lane], expected(i + lane, j))) << lane << ": " << j;
    expect_end(four);
}

}  // namespace

// The angles below 2^-14, whose sine is the angle itself and whose cosine is 1, are too many for every run.
TEST(FirstOctant, RoundsAsTheCLibraryDoesAtEveryAngle) {
    const uint32_t last = std::bit_cast<uint32_t>(0.785398185f);  // pi / 4, which rounding made larger
    const uint32_t first = all_angles() ? 0 : std::bit_cast<uint32_t>(0x1p-14f), step = all_angles() ? 1 : 251;
    for (uint32_t bits = first; bits <= last; bits += 4 * step) {
        double4 angle;
        for (int i = 0; i < 4; ++i) angle[i] = std::bit_cast<float>(std::min(bits + i * step, last));
        const float8 octant = rounded(first_octant(angle));
        for (int i = 0; i < 4; ++i) {
            ASSERT_EQ(octant[2 * i], static_cast<float>(std::cos(angle[i]))) << std::hexfloat << angle[i];
            ASSERT_EQ(octant[2 * i + 1], static_cast<float>(std::sin(angle[i]))) << std::hexfloat << angle[i];
        }
    }
}

TEST(Unit, HasTheBitsOfItsDefinition) {
    float value[2];
    for (int64_t n = 1; n <= (all_angles() ? 4096 : 400); ++n)
        for (int64_t k = -n; k < n; ++k) {
            twiddle_unit(k, n, value);
            ASSERT_TRUE(same_bits(value, defined_root(k, n))) << k << " of " << n;
        }
    for (int64_t n : {int64_t{1} << 20, (int64_t{1} << 31) - 1, int64_t{1} << 40, 6'000'000'000'001})
        for (int64_t k = -2 * n; k < 2 * n; k += 1 + n / 1009) {
            twiddle_unit(k, n, value);
            ASSERT_TRUE(same_bits(value, defined_root(k, n))) << k << " of " << n;
        }
}

TEST(Progression, HasTheBitsOfItsDefinition) {
    for (int64_t n : {1, 2, 3, 8, 100, 1009, 4096})
        for (int64_t first : {int64_t{-1}, int64_t{0}, int64_t{5}, -3 * n - 2})
            for (int64_t step : {int64_t{-1}, int64_t{0}, int64_t{1}, int64_t{2}, n - 1, -2 * n - 3})
                for (uint64_t count : {0, 1, 3, 4, 5, 8, 103})
                    for (uint64_t distance : {1, 2, 4}) {
                        std::vector<float> table = room(distance * count);
                        twiddle_progression(first, step, n, count, table.data(), distance);
                        for (uint64_t j = 0; j < count; ++j)
                            ASSERT_TRUE(same_bits(&table[2 * distance * j],
                                                  defined_root(first + static_cast<int64_t>(j) * step, n)))
                                << first << " + " << j << " " << step << " of " << n << " at distance " << distance;
                        expect_end(table);
                    }
}

TEST(Circle, HasTheBitsOfItsDefinition) {
    for (int64_t count = 1; count <= (all_angles() ? 5000 : 600); ++count)
        for (int64_t L : {1, 3, 8}) check_circle(count, L, count % 2 ? -1 : 1);
    for (int64_t count = 1; count <= 200; ++count)
        for (int64_t sign : {-1, 0, 1}) check_circle(count, 5, sign);
    for (int64_t count : {511, 512, 513, 1000, 1009, 2018, 4096, 10007, 65536, 100003, 1 << 20})
        for (int64_t sign : {-1, 1}) check_circle(count, 1, sign);
}

TEST(Circle, OneThatIsTooLongComputesEachRoot) {
    for (int64_t count : {(1 << 20) + 1, 1 << 21, 1 << 24})
        for (int64_t sign : {-1, 1}) {
            check_circle(count, 1, sign);
            check_rows(count, 1, sign, 1000, 1, 70);
        }
}

TEST(Circle, RowsHaveTheBitsOfTheirDefinition) {
    for (int64_t count : {1, 2, 7, 12, 60, 64, 100, 1024, 3000})
        for (int64_t L : {1, 5})
            for (int64_t columns : {1, 2, 3, 4, 5, 8, 9, 31})
                for (int64_t i = 0; (i + 3) * (columns - 1) < count && i <= 9; ++i)
                    for (int64_t first : {0, 1}) check_rows(count, L, columns % 2 ? -1 : 1, i, first, columns);
}
