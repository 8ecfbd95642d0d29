// SPDX-License-Identifier: Apache-2.0
// Every length, by the planner's own choice of solver, against the double-precision reference.
#include "dft/schedule_tables.h"
#include "tests/dft/problems.h"

#include <set>

namespace {

void both_directions(int64_t n) {
    const sample expected(n);
    for (int64_t sign : {-1, 1}) EXPECT_TRUE(computes({n, sign}, expected));
}

// Emulated, all short lengths run and a sample of the longer ones, alternately forward and backward.
void contiguous(int64_t first, int64_t last) {
    for (int64_t n = first; n <= last; ++n)
        if (!is_emulated || n <= 160) {
            both_directions(n);
        } else if (n % 13 == 0 || n % 97 == 0) {
            EXPECT_TRUE(computes({n, n / 13 % 2 ? 1 : -1}));
        }
}

}  // namespace

TEST(Lengths, From1To1024AreRight) { contiguous(1, 1024); }

TEST(Lengths, From1025To1536AreRight) { contiguous(1025, 1536); }

TEST(Lengths, From1537To2048AreRight) { contiguous(1537, 2048); }

TEST(Lengths, From1To512AreRightInPlaceAndStrided) {
    for (int64_t n = 1; n <= 512; n += is_emulated && n > 64 ? 19 : 1) {
        const sample expected(n);
        const int64_t sign = n % 2 ? -1 : 1;
        EXPECT_TRUE(computes({n, sign, 1, 1, true}, expected));
        EXPECT_TRUE(computes({n, sign, 3, 1}, expected));
        EXPECT_TRUE(computes({n, -sign, 1, 2}, expected));
        EXPECT_TRUE(computes({n, sign, 2, 5}, expected));
        EXPECT_TRUE(computes({n, -sign, 2, 5, true}, expected));
        EXPECT_TRUE(computes({n, -sign, 3, 3, true}, expected));
    }
}

TEST(Lengths, OfTheTablesAreRight) {
    std::set<uint64_t> sizes;
    for (const schedule_row& row : schedule_table_main)
        if (row.size > 2048 && row.size <= (is_emulated ? 2700 : 16384)) sizes.insert(row.size);
    for (uint64_t n : sizes) EXPECT_TRUE(computes({int64_t(n), n % 4 ? 1 : -1}));
}

TEST(Lengths, OfLargePrimesAndTheirProductsAreRight) {
    for (int64_t n : {41 * 41, 41 * 43, 47 * 59, 2 * 1009}) both_directions(n);
    // the primes whose padded size has a rule of its own
    const std::vector<int64_t> exceptions = {1949, 2501, 2503, 3373, 3391, 3397, 4859, 5039, 6053, 6113,
                                             6131, 6133, 6143, 7207, 7349, 8087, 8089, 8927, 9239};
    for (int64_t n : exceptions)
        if (!is_emulated) {
            both_directions(n);
        } else if (n < 3000) {
            EXPECT_TRUE(computes({n, -1}));
        }
    for (int64_t n : {6 * 41 * 43, 83 * 89, 10007, 64 * 97})
        if (!is_emulated) {
            both_directions(n);
        } else if (n == 10007) {
            EXPECT_TRUE(computes({n, -1}));
        }
}

TEST(Lengths, OfLargePrimesAreRightInPlaceAndStrided) {
    for (int64_t n : {41 * 41, 41 * 43, 47 * 59, 2 * 1009, 1949, 2501}) {
        if (is_emulated && n != 41 * 41 && n != 2 * 1009) continue;
        const sample expected(n);
        for (const complex_problem& p : {complex_problem{n, 1, 1, 1, true}, complex_problem{n, -1, 3, 1},
                                         complex_problem{n, 1, 1, 2}, complex_problem{n, -1, 2, 2, true}})
            EXPECT_TRUE(computes(p, expected));
    }
}

TEST(Lengths, ThatAreLongAreRight) {
    for (int64_t n : {8192, 16384, 32768, 65536, 3 * 32768, 1 << 17, 1 << 18, 1 << 19, 1 << 20})
        if (!is_emulated || n == 32768 || n == 65536) {
            EXPECT_TRUE(computes({n, -1}));
        }
    if (is_emulated) return;
    EXPECT_TRUE(computes({3 * 32768, 1, 1, 1, true}));
    EXPECT_TRUE(computes({1 << 17, 1, 1, 1, true}));
    EXPECT_TRUE(computes({1 << 16, 1, 2, 1}));
}
