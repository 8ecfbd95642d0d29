// SPDX-License-Identifier: Apache-2.0
#include "dft/bluestein.h"

#include <gtest/gtest.h>

#include <algorithm>
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

TEST(BluesteinSize, IsThatOfTheKnownExamples) {
    const std::vector<std::pair<uint64_t, uint64_t>> examples = {
        {41, 96},   {47, 96},   {53, 120},  {61, 128},   {67, 144},    {83, 192},    {97, 196},   {101, 256},
        {127, 256}, {131, 280}, {251, 504}, {509, 1024}, {1009, 2048}, {1763, 3528}, {1949, 3920}};
    for (const auto& [p, size] : examples) EXPECT_EQ(bluestein_padded_size(p), size) << p;
}

TEST(BluesteinSize, IsTheLeastAcceptedProductBelowTwentyThousand) {
    for (uint64_t p = 1; p < 20000; ++p) EXPECT_EQ(bluestein_padded_size(p), expected_size(p)) << p;
}

TEST(BluesteinSize, IsLongEnoughAndSmooth) {
    for (uint64_t p = 38; p < 200000; p += 7) {
        const uint64_t size = bluestein_padded_size(p);
        EXPECT_GE(size, 2 * p - 1) << p;
        EXPECT_TRUE(has_only_factors_to_11(size)) << p;
    }
}

namespace {

// The rule as it is told: divided by the first of the list that divides, again and again.
bool cuts_into_middle_radices(uint64_t n) {
    while (n > 1) {
        uint64_t radix = 0;
        for (const uint64_t r : {10, 6, 8, 9, 7, 12, 4, 2})
            if (!radix && n % r == 0) radix = r;
        if (!radix) return false;
        n /= radix;
    }
    return true;
}

// All products of 2, 3, 5 and 7 up to a limit, sorted, of which the rule takes some.
std::vector<uint64_t> accepted_sizes(uint64_t limit) {
    std::vector<uint64_t> products = {1};
    for (const uint64_t prime : {2, 3, 5, 7})
        for (size_t i = 0; i < products.size(); ++i)
            if (products[i] <= limit / prime) products.push_back(products[i] * prime);
    std::erase_if(products, [](uint64_t n) { return !cuts_into_middle_radices(n); });
    std::sort(products.begin(), products.end());
    return products;
}

}  // namespace

// Between two accepted sizes every p takes the larger one: both ends and the middle of each gap.
TEST(BluesteinSize, IsTheNextAcceptedProductForLongLengths) {
    const std::vector<uint64_t> sizes = accepted_sizes(uint64_t{1} << 52);
    ASSERT_GT(sizes.size(), 5000u);
    uint64_t compared = 0;
    for (size_t i = 1; i < sizes.size(); ++i) {
        const uint64_t first = (sizes[i - 1] + 1) / 2 + 1,
                       last = (sizes[i] + 1) / 2;  // 2 p - 1 above one, up to the other
        if (first < 10000 || last < first) continue;
        for (const uint64_t p : {first, first + (last - first) / 2, last}) {
            ASSERT_EQ(bluestein_padded_size(p), sizes[i]) << p;
            ++compared;
        }
    }
    EXPECT_GT(compared, 10000u);
}
