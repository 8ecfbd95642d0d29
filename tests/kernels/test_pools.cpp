// SPDX-License-Identifier: Apache-2.0
// The constants of the complex kernels, as built: each the float that is nearest to the number that it stands for.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <vector>

#include "kernels/registry.h"

namespace {

struct pair {
    long double c, s;
};
struct fraction {
    int num, den;
};

long double angle(fraction f) { return 2 * std::numbers::pi_v<long double> * f.num / f.den; }
pair root(fraction f) { return {std::cos(angle(f)), std::sin(angle(f))}; }

std::vector<pair> roots(std::initializer_list<fraction> fractions) {
    std::vector<pair> result;
    for (const fraction f : fractions) result.push_back(root(f));
    return result;
}

std::vector<pair> roots_up_to(int last, int den) {
    std::vector<pair> result;
    for (int k = 1; k <= last; ++k) result.push_back(root({k, den}));
    return result;
}

// The sine of 60 degrees is folded into some constants of 15, 21 and 24.
std::vector<pair> with_folded(std::vector<pair> plain, std::initializer_list<pair> folded) {
    const long double s3 = std::sqrt(0.75L);
    for (const pair& p : folded) plain.push_back({p.c * s3, p.s * s3});
    return plain;
}

// Pairs of backward kernels. Powers of two keep roots up to an eighth of a turn, primes one root of each mirrored pair.
std::map<int, std::vector<pair>> expected_pools() {
    std::map<int, std::vector<pair>> all;
    for (const int p : {3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37}) all[p] = roots_up_to((p - 1) / 2, p);
    for (const int n : {8, 16, 32, 64, 128}) all[n] = roots_up_to(n / 8, n);
    all[6] = roots({{1, 6}});
    all[9] = roots_up_to(4, 9);
    all[10] = roots_up_to(2, 10);
    all[12] = roots({{1, 12}});
    all[14] = roots_up_to(3, 14);
    all[18] = roots_up_to(4, 18);
    all[20] = roots_up_to(2, 20);
    const auto sin = [](fraction f) { return root(f).s; };
    const auto cos = [](fraction f) { return root(f).c; };
    all[15] = with_folded(roots({{1, 6}, {1, 5}, {1, 10}}), {{sin({1, 5}), cos({1, 10})}, {sin({1, 10}), cos({1, 5})}});
    all[21] = with_folded(roots({{1, 6}, {1, 7}, {3, 14}, {1, 14}}),
                          {{sin({1, 7}), cos({1, 7})}, {sin({3, 14}), cos({3, 14})}, {sin({1, 14}), cos({1, 14})}});
    all[24] = roots({{1, 6}});
    all[24].push_back({std::sqrt(2.0L) / 2, std::sqrt(6.0L) / 4});
    return all;
}

}  // namespace

TEST(Pools, ExistForTheSizesThatNeedConstants) {
    std::vector<int> sizes, expected;
    for (int i = 0; i < kernel_pool_count; ++i) sizes.push_back(kernel_pools[i].size);
    for (const auto& [size, pairs] : expected_pools()) expected.push_back(size);
    EXPECT_EQ(sizes, expected);
}

// Sines carry the direction: negated in forward kernels.
TEST(Pools, HoldTheNearestFloats) {
    const auto all = expected_pools();
    for (int i = 0; i < kernel_pool_count; ++i) {
        const kernel_pool& pool = kernel_pools[i];
        SCOPED_TRACE(pool.size);
        const std::vector<pair>& expected = all.at(pool.size);
        ASSERT_EQ(pool.pairs, int(expected.size()));
        for (int e = 0; e < pool.pairs; ++e)
            for (int backward = 0; backward < 2; ++backward) {
                EXPECT_EQ(pool.floats[backward][2 * e], float(expected[e].c)) << "pair " << e;
                EXPECT_EQ(pool.floats[backward][2 * e + 1], float(backward ? expected[e].s : -expected[e].s))
                    << "pair " << e;
            }
    }
}

TEST(Pools, HoldTheTwoConstantsOfThree) {
    EXPECT_EQ(kernel_pools[0].size, 3);
    EXPECT_EQ(kernel_pools[0].floats[0][0], -0.5f);
    EXPECT_EQ(kernel_pools[0].floats[0][1], -0.8660254f);
    EXPECT_EQ(kernel_pools[0].floats[1][0], -0.5f);
    EXPECT_EQ(kernel_pools[0].floats[1][1], 0.8660254f);
}
