// SPDX-License-Identifier: Apache-2.0
// The passes around a complex transform of half the length, and their tables, for every short length.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "real/half_length_passes.h"
#include "real/real_tables.h"
#include "tests/support/guarded_floats.h"
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"

namespace {

constexpr uint64_t most = 70;
constexpr double close = 3e-7;

using complexes = std::vector<std::complex<float>>;

std::vector<float> tables(uint64_t m, decltype(real_mirror_table)* mirrors) {
    std::vector<float> table(2 * m);
    real_half_table(table.data(), m);
    mirrors(mirror_table_behind(table.data(), m), table.data(), m);
    return table;
}
std::vector<float> tables_of_r2c(uint64_t m) { return tables(m, real_mirror_table_down); }
std::vector<float> tables_of_c2r(uint64_t m) { return tables(m, real_mirror_table); }

float* floats(complexes& x) { return reinterpret_cast<float*>(x.data()); }

complexes every_second(const complexes& x) {
    complexes result;
    for (size_t i = 0; i < x.size(); i += 2) result.push_back(x[i]);
    return result;
}

// X[k] = (Y[k] + conj Y[m - k]) / 2 - i w (Y[k] - conj Y[m - k]) / 2, Y[m] being Y[0].
std::vector<reference::complex> coefficients(const complexes& y) {
    const int64_t m = int64_t(y.size());
    std::vector<reference::complex> x;
    for (int64_t k = 0; k <= m; ++k) {
        const reference::complex a = y[k % m], b = std::conj(reference::complex(y[(m - k) % m]));
        x.push_back(0.5 * (a + b) -
                    reference::complex(0, 0.5) * std::polar(1.0, -M_PI * double(k) / double(m)) * (a - b));
    }
    return x;
}

// The way back, doubled: C[k] = Z[k] + conj Z[m - k] + i conj w (Z[k] - conj Z[m - k]) of a Z that is real at its ends.
std::vector<reference::complex> halves(const complexes& z) {
    const int64_t m = int64_t(z.size()) - 1;
    const auto at = [&](int64_t k) { return k % m ? reference::complex(z[k]) : reference::complex(z[k].real()); };
    std::vector<reference::complex> c;
    for (int64_t k = 0; k < m; ++k) {
        const reference::complex a = at(k), b = std::conj(at(m - k));
        c.push_back(a + b + reference::complex(0, 1) * std::polar(1.0, M_PI * double(k) / double(m)) * (a - b));
    }
    return c;
}

// Half table and mirror table fill the room for m entries exactly.
TEST(MirrorTable, StandsBehindTheHalfTable) {
    for (uint64_t m = 0; m <= most; ++m) {
        SCOPED_TRACE(m);
        guarded_floats table(2 * m);
        real_half_table(table.data(), m);
        float* const mirrors = mirror_table_behind(table.data(), m);
        real_mirror_table(mirrors, table.data(), m);
        EXPECT_TRUE(table.zones_are_intact());
        EXPECT_EQ(mirrors + 2 * (m / 2), table.data() + 2 * m);
        for (uint64_t k = 1; k <= m / 2; ++k) {
            const auto w = std::polar(1.0, -M_PI * double(k) / double(m));
            const auto v = 0.5 * (1.0 + reference::complex(0, 1) * w);
            EXPECT_NEAR(mirrors[2 * k - 2], v.real(), 6e-8) << "entry of " << k;
            EXPECT_NEAR(mirrors[2 * k - 1], v.imag(), 6e-8) << "entry of " << k;
        }
    }
}

TEST(MirrorTable, DownwardsIsTheSameTurnedRound) {
    for (uint64_t m = 0; m <= most; ++m) {
        SCOPED_TRACE(m);
        guarded_floats half(2 * m), up(2 * (m / 2)), down(2 * (m / 2));
        real_half_table(half.data(), m);
        real_mirror_table(up.data(), half.data(), m);
        real_mirror_table_down(down.data(), half.data(), m);
        EXPECT_TRUE(down.zones_are_intact());
        for (uint64_t k = 0; k < m / 2; ++k)
            for (int part : {0, 1}) EXPECT_EQ(down.data()[2 * (m / 2 - 1 - k) + part], up.data()[2 * k + part]) << k;
    }
}

TEST(R2cPostPass, IsRightContiguousStridedAndInPlace) {
    for (uint64_t m = 1; m <= most; ++m) {
        SCOPED_TRACE(m);
        const auto table = tables_of_r2c(m);
        complexes y = complex_noise(int(m), int(m)), x(m + 1), apart(2 * m + 1);
        const auto want = coefficients(y);
        r2c_post_pass(floats(y), floats(x), table.data(), m, 1);
        r2c_post_pass(floats(y), floats(apart), table.data(), m, 2);
        EXPECT_LT(relative_error(x, want), close);
        EXPECT_LT(relative_error(every_second(apart), want), close);
        y.resize(m + 1);
        r2c_post_pass(floats(y), floats(y), table.data(), m, 1);
        EXPECT_EQ(y, x);
    }
}

TEST(C2rPrePass, IsRightContiguousStridedAndInPlace) {
    for (uint64_t m = 1; m <= most; ++m) {
        SCOPED_TRACE(m);
        const auto table = tables_of_c2r(m);
        complexes z = complex_noise(int(m) + 1, int(m)), apart(2 * m + 1), c(m), of_apart(m);
        for (uint64_t k = 0; k <= m; ++k) apart[2 * k] = z[k];
        const auto want = halves(z);
        c2r_pre_pass(floats(z), floats(c), table.data(), m, 1);
        c2r_pre_pass(floats(apart), floats(of_apart), table.data(), m, 2);
        EXPECT_LT(relative_error(c, want), close);
        EXPECT_LT(relative_error(of_apart, want), close);
        c2r_pre_pass(floats(z), floats(z), table.data(), m, 1);
        z.resize(m);
        EXPECT_EQ(z, c);
    }
}

// The parts that threads take: pairs of one range touch nothing of another's, in place too.
TEST(R2cPostPass, IsRightInRangesOfAnyWidth) {
    for (uint64_t m = 2; m <= most; m += 3)
        for (uint64_t width = 1; width <= m / 2; ++width) {
            SCOPED_TRACE(testing::Message() << m << " in ranges of " << width);
            const auto table = tables_of_r2c(m);
            complexes y = complex_noise(int(m), int(m));
            const auto want = coefficients(y);
            y.resize(m + 1);
            r2c_post_ends(floats(y), floats(y), m, 1);
            for (uint64_t first = 1; first <= m / 2; first += width)
                r2c_post_range(floats(y), floats(y), table.data(), m, 1, first, std::min(first + width - 1, m / 2));
            EXPECT_LT(relative_error(y, want), close);
        }
}

TEST(C2rPrePass, IsRightInRangesOfAnyWidth) {
    for (uint64_t m = 2; m <= most; m += 3)
        for (uint64_t width = 1; width <= m / 2; ++width) {
            SCOPED_TRACE(testing::Message() << m << " in ranges of " << width);
            const auto table = tables_of_c2r(m);
            complexes z = complex_noise(int(m) + 1, int(m));
            const auto want = halves(z);
            c2r_pre_ends(floats(z), floats(z), m, 1);
            for (uint64_t first = 1; first <= m / 2; first += width)
                c2r_pre_range(floats(z), floats(z), table.data(), m, 1, first, std::min(first + width - 1, m / 2));
            z.resize(m);
            EXPECT_LT(relative_error(z, want), close);
        }
}

}  // namespace
