// SPDX-License-Identifier: Apache-2.0
#include "dft/modular.h"
#include "dft/sizes.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using wide = unsigned __int128;

uint64_t wide_power(uint64_t a, uint64_t e, uint64_t p) {
    uint64_t result = 1;
    for (; e > 0; e /= 2, a = wide{a} * a % p)
        if (e % 2) result = wide{result} * a % p;
    return result;
}

// The number of different powers of g modulo p.
uint64_t order(uint64_t g, uint64_t p) {
    uint64_t steps = 1;
    for (uint64_t a = g; a != 1; a = a * g % p) ++steps;
    return steps;
}

}  // namespace

TEST(Modular, ProductsAgreeWithWideIntegers) {
    const std::vector<uint64_t> edges = {0, 1, 2, 46339, 46340, 46341, 92680, 92681, 92682, (1u << 31) - 2};
    for (uint64_t p : {uint64_t{92693}, uint64_t{1000003}, (uint64_t{1} << 31) - 1})
        for (uint64_t a : edges)
            for (uint64_t b : edges)
                EXPECT_EQ(mul_mod(a % p, b % p, p), uint64_t(wide{a % p} * (b % p) % p)) << a << " " << b << " " << p;
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const uint64_t p = 2 + random() % ((uint64_t{1} << 31) - 1), a = random() % p, b = random() % p;
        EXPECT_EQ(mul_mod(a, b, p), uint64_t(wide{a} * b % p)) << a << " " << b << " " << p;
    }
}

TEST(Modular, ProductsOfASmallPrimeAreAllRight) {
    for (uint64_t a = 0; a < 257; ++a)
        for (uint64_t b = 0; b < 257; ++b) EXPECT_EQ(mul_mod(a, b, 257), a * b % 257);
}

TEST(Modular, PowersAgreeWithWideIntegers) {
    EXPECT_EQ(pow_mod(5, 0, 41), 1u);
    EXPECT_EQ(pow_mod(5, 1, 41), 5u);
    constexpr uint64_t largest = (uint64_t{1} << 31) - 1;
    for (uint64_t p : {uint64_t{3}, uint64_t{46341}, uint64_t{92681}, uint64_t{92683}, uint64_t{65537}, largest})
        for (uint64_t a : {uint64_t{0}, uint64_t{1}, uint64_t{2}, p / 2, p - 2, p - 1})
            for (uint64_t e : {uint64_t{0}, uint64_t{1}, uint64_t{2}, uint64_t{63}, p - 2, p - 1, largest})
                EXPECT_EQ(pow_mod(a, e, p), wide_power(a, e, p)) << a << " " << e << " " << p;
    std::mt19937_64 random(2);
    for (int i = 0; i < 2000; ++i) {
        const uint64_t p = 2 + random() % ((uint64_t{1} << 31) - 1), a = random() % p, e = random() % p;
        EXPECT_EQ(pow_mod(a, e, p), wide_power(a, e, p)) << a << " " << e << " " << p;
    }
}

TEST(Modular, PrimitiveRootsAreTheKnownOnes) {
    EXPECT_EQ(smallest_primitive_root(41), 6u);
    EXPECT_EQ(smallest_primitive_root(43), 3u);
    EXPECT_EQ(smallest_primitive_root(47), 5u);
}

TEST(Modular, RootIsTheSmallestPrimitiveOneOfEveryPrime) {
    for (uint64_t p = 3; p < 10000; p += 2) {
        if (!is_prime(p)) continue;
        uint64_t g = 2;
        while (order(g, p) != p - 1) ++g;
        EXPECT_EQ(smallest_primitive_root(p), g) << p;
    }
}
