// SPDX-License-Identifier: Apache-2.0
// The relative L2 error of every kind of transform stays below the limits that are published, in units of
// 2^-24 sqrt(log2 n), on uniform numbers.
#include "tests/accuracy/transforms.h"
#include "tests/support/emulated.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

// Without fused multiply-adds every product is rounded by itself.
#ifdef __aarch64__
constexpr bool is_portable = false;
#else
constexpr bool is_portable = true;
#endif

struct limits {
    double smooth, middle, large;  // by the largest prime factor: up to 13, 17 to 37, above
};

// Those of complex transforms are aims. Those of real transforms are the worst measured with all instructions of a
// processor, of all lengths to 512 and those below, and a twentieth. redft10 and rodft10 have the same limits,
// redft11 and rodft11 too.
constexpr limits limits_of[transform_count] = {
    {0.80, 0.80, 1.35},  // c2c
    {0.80, 0.80, 1.35},  // c2c backward
    {0.81, 0.80, 1.34},  // r2c
    {0.76, 0.77, 1.17},  // c2r
    {0.81, 0.80, 1.34},  // r2hc
    {0.79, 0.77, 1.16},  // hc2r
    {0.83, 0.82, 1.35},  // dht
    {0.70, 0.71, 1.11},  // redft00
    {0.83, 0.82, 1.23},  // redft01
    {0.84, 0.83, 1.26},  // redft10
    {0.86, 0.83, 1.37},  // redft11
    {0.70, 0.71, 1.19},  // rodft00
    {0.88, 0.81, 1.17},  // rodft01
    {0.84, 0.83, 1.26},  // rodft10
    {0.86, 0.83, 1.37},  // rodft11
};

// Of as many transforms as make 256 points: the error of a single short one is a matter of luck.
double error_in_units(transform t, int n) {
    uniform_noise noise(static_cast<uint64_t>(n));
    std::vector<float> in(floats_in(t, n));
    double difference = 0, size = 0;
    for (int points = 0; points < 256; points += n) {
        for (float& x : in) x = noise();
        const std::vector<float> actual = by_library(t, n, in);
        const std::vector<double> expected = by_reference(t, n, in);
        if (actual.size() != expected.size()) return NAN;
        for (size_t i = 0; i < expected.size(); ++i) {
            difference += (actual[i] - expected[i]) * (actual[i] - expected[i]);
            size += expected[i] * expected[i];
        }
    }
    return std::sqrt(difference / size) / error_unit(size_t(n));
}

class Accuracy : public testing::TestWithParam<int> {
protected:
    const transform kind = transform(GetParam());
    const limits& limit = limits_of[GetParam()];

    void expect_within_limits(int n) {
        const int prime = largest_prime_factor(deciding_length(kind, n));
        const int group = prime <= 13 ? 0 : prime <= 37 ? 1 : 2;
        double most = group == 0 ? limit.smooth : group == 1 ? limit.middle : limit.large;
        if (is_portable) most *= 1.3;
        const double error = error_in_units(kind, n);
        EXPECT_LT(error, most) << name_of(kind) << " of " << n;
        if (!(error <= worst[group])) worst[group] = error, worst_length[group] = n;
    }
    void TearDown() override {
        printf("%s: worst %.3f (%d), %.3f (%d), %.3f (%d)\n", name_of(kind), worst[0], worst_length[0], worst[1],
               worst_length[1], worst[2], worst_length[2]);
    }

    double worst[3] = {};
    int worst_length[3] = {};
};

}  // namespace

TEST_P(Accuracy, IsWithinTheLimitsForShortLengths) {
    for (int n = 4; n <= 512; n += is_emulated && n >= 48 ? 31 : 1) expect_within_limits(n);
}

// Powers of two, other smooth lengths, primes of the kernels and their products, primes and twice primes above.
TEST_P(Accuracy, IsWithinTheLimitsForLongLengths) {
    std::vector<int> lengths = {1000, 1024, 1155, 1021, 1369, 2018, 2048};
    if (!is_emulated)
        for (int n : {529,  587,  667,  841,  961,   1009,  1536,  2310,  2503,  3125, 4096,
                      4099, 4913, 6561, 8192, 10000, 10007, 16384, 27720, 32768, 65536})
            lengths.push_back(n);
    for (int n : lengths) expect_within_limits(n + n - deciding_length(kind, n));
}

INSTANTIATE_TEST_SUITE_P(Of, Accuracy, testing::Range(0, transform_count), [](const auto& info) {
    std::string name = name_of(transform(info.param));
    std::ranges::replace(name, ' ', '_');
    return name;
});
