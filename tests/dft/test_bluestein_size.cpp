// SPDX-License-Identifier: Apache-2.0
#include "dft/bluestein.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

bool has_only_factors_to_11(uint64_t n) {
    for (uint64_t f = 2; f <= 11; ++f)
        while (n % f == 0) n /= f;
    return n == 1;
}

// Whether greedy division by 10, 6, 8, 9, 7, 12, 4, 2 ends at 1, told from the exponents of the primes: 10 takes pairs
// of 5 and 2, 6 pairs of 3 and 2, 8 triples of 2, 9 pairs of 3; 7 is free; a last 4 or 2 is free too.
bool middle_radices_suffice(uint64_t n) {
    int e2 = 0, e3 = 0, e5 = 0, e11 = 0;
    for (; n % 2 == 0; n /= 2) ++e2;
    for (; n % 3 == 0; n /= 3) ++e3;
    for (; n % 5 == 0; n /= 5) ++e5;
    for (; n % 11 == 0; n /= 11) ++e11;
    const int left2 = e2 - e5;
    if (left2 < 0 || e11 > 0) return false;
    const int left3 = e3 - std::min(left2, e3);
    return left3 % 2 == 0;
}

// In place of the rules' order: the set of sizes that each class of p may have, and the smallest of the first class
// that has one in range.
uint64_t expected_size(uint64_t p) {
    static const std::set<uint64_t> shorts = {48, 60, 64, 72, 96, 100, 120, 128, 144, 160, 192, 196, 256};
    static const std::set<uint64_t> exceptions = {1949, 2501, 2503, 3373, 3391, 3397, 4859, 5039, 6053, 6113,
                                                  6131, 6133, 6143, 7207, 7349, 8087, 8089, 8927, 9239};
    static const std::set<uint64_t> preferred = {1728,  1760,  3960,  4800,  4840,  4928,  5082,  6400,  6480,  7040,
                                                 8800,  9600,  9680,  10164, 10560, 10648, 11088, 11616, 12320, 12672,
                                                 13068, 13200, 14520, 14784, 15092, 15840, 17424, 17600, 19008, 19712};
    const uint64_t lo = 2 * p - 1;
    if (const auto s = shorts.upper_bound(lo); s != shorts.end() && *s <= 4 * p - 3) return *s;
    if (!exceptions.count(p))
        if (const auto s = preferred.lower_bound(lo); s != preferred.end() && *s <= lo + 99) return *s;
    for (uint64_t size = lo;; ++size)
        if (has_only_factors_to_11(size) && (exceptions.count(p) || middle_radices_suffice(size))) return size;
}

}  // namespace

TEST(BluesteinSize, Examples) {
    const std::vector<std::pair<uint64_t, uint64_t>> examples = {
        {41, 96},   {47, 96},   {53, 120},  {61, 128},   {67, 144},    {83, 192},    {97, 196},   {101, 256},
        {127, 256}, {131, 280}, {251, 504}, {509, 1024}, {1009, 2048}, {1763, 3528}, {1949, 3920}};
    for (const auto& [p, size] : examples) EXPECT_EQ(bluestein_padded_size(p), size) << p;
}

TEST(BluesteinSize, EverySizeBelowTwentyThousand) {
    for (uint64_t p = 1; p < 20000; ++p) EXPECT_EQ(bluestein_padded_size(p), expected_size(p)) << p;
}

TEST(BluesteinSize, LongEnoughAndSmooth) {
    for (uint64_t p = 38; p < 200000; p += 7) {
        const uint64_t size = bluestein_padded_size(p);
        EXPECT_GE(size, 2 * p - 1) << p;
        EXPECT_TRUE(has_only_factors_to_11(size)) << p;
    }
}
