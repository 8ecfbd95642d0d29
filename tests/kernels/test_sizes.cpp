// SPDX-License-Identifier: Apache-2.0
// Any size of any family is either made or refused with a reason: never by a crash, nor by a formula whose operations
// grow with the square of the size.
#include <gtest/gtest.h>

#include <set>

#include "graph_checks.h"

namespace {

using namespace generator;

const form& family(const std::string& name) {
    for (const form& f : forms())
        if (f.name == name) return f;
    throw std::runtime_error("no family " + name);
}

int arithmetic(const body& b) {
    const operation_counts c = count_operations(b);
    return c.adds + c.turned + c.scales + c.fused + c.turned_fused + c.products;
}

bool is_prime(int n) {
    for (int p = 2; p * p <= n; ++p)
        if (n % p == 0) return false;
    return true;
}
int largest_prime_factor(int n) {
    for (int p = n; p > 1; --p)
        if (n % p == 0 && is_prime(p)) return p;
    return 1;
}

}  // namespace

TEST(Sizes, AreMadeUnlessAPrimeFactorIsAbove37) {
    std::set<shape> seen;
    for (const form& f : forms()) {
        if (f.loop == shape::cosine_rows || !seen.insert(f.loop).second) continue;
        for (int size = 2; size <= 48; ++size)
            EXPECT_EQ(refusal(f, size).empty(), largest_prime_factor(size) <= 37) << f.name << " " << size;
    }
}

TEST(Sizes, AreRefusedWithAReason) {
    EXPECT_EQ(refusal(family("direct_contig_neon"), 41), "the transform of size 41 has no method");
    EXPECT_EQ(refusal(family("first_contig_sve"), 82), "the transform of size 41 has no method");
    EXPECT_EQ(refusal(family("r2c_direct"), 43), "the real transform of size 43 has no method");
    EXPECT_EQ(refusal(family("sorensen_last_neon"), 86), "the real transform of size 43 has no method");
    EXPECT_EQ(refusal(family("redft00_loop"), 22), "the type I cosine transform of size 22 has no method");
    EXPECT_EQ(refusal(family("redft00_loop"), 25), "the type II cosine transform of size 3 has no method");
}

// Per element, by the largest prime factor p: (p - 1) / 2 multiply-adds and about as many operations for the rest of
// the factors. 25 by the formula of a prime would take 48 an element.
TEST(Sizes, OfRealDataNeedFewOperations) {
    for (const form& f : forms()) {
        if (f.sign == 0 || f.loop == shape::cosine_rows) continue;
        for (int size : sizes_to_try(f))
            for (const auto& b : different_bodies(f, size, f.sign)) {
                if (has(*b, op::mul)) continue;  // complex rows
                const int p = largest_prime_factor(size), rest = size / p;
                EXPECT_LE(arithmetic(*b), size * (p + 2 * rest)) << f.name << " " << size;
            }
    }
}
