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

}  // namespace

TEST(Lengths, Contiguous1To1024) {
    for (int64_t n = 1; n <= 1024; ++n) both_directions(n);
}

TEST(Lengths, Contiguous1025To1536) {
    for (int64_t n = 1025; n <= 1536; ++n) both_directions(n);
}

TEST(Lengths, Contiguous1537To2048) {
    for (int64_t n = 1537; n <= 2048; ++n) both_directions(n);
}

TEST(Lengths, InPlaceAndStrided1To512) {
    for (int64_t n = 1; n <= 512; ++n) {
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

TEST(Lengths, OfTheTables) {
    std::set<uint64_t> sizes;
    for (const schedule_row& row : schedule_table_main)
        if (row.size > 2048 && row.size <= 16384) sizes.insert(row.size);
    for (uint64_t n : sizes) EXPECT_TRUE(computes({int64_t(n), n % 4 ? 1 : -1}));
}

TEST(Lengths, LargePrimesAndTheirProducts) {
    for (int64_t n : {41 * 41, 41 * 43, 47 * 59, 2 * 1009, 6 * 41 * 43, 83 * 89, 10007, 64 * 97}) both_directions(n);
    // the primes whose padded size has a rule of its own
    for (int64_t n : {1949, 2501, 2503, 3373, 3391, 3397, 4859, 5039, 6053, 6113, 6131, 6133, 6143, 7207, 7349, 8087,
                      8089, 8927, 9239})
        EXPECT_TRUE(computes({n, -1}));
}

TEST(Lengths, LongOnes) {
    for (int64_t n : {8192, 16384, 32768, 65536, 1 << 17, 1 << 18, 3 * 32768}) EXPECT_TRUE(computes({n, -1}));
    EXPECT_TRUE(computes({1 << 17, 1, 1, 1, true}));
    EXPECT_TRUE(computes({1 << 16, 1, 2, 1}));
}
