// SPDX-License-Identifier: Apache-2.0
// What becomes of zeros, powers of two, the smallest and the largest numbers, infinities and NaN. docs/user/accuracy.md
// tells it.
#include "include/qfftf.h"
#include "tests/accuracy/transforms.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

namespace {

// Of kernels, of two and three stages, with factors of every kind, and of the two convolutions: by Rader where n - 1
// has small factors, by Bluestein elsewhere.
constexpr int lengths[] = {2, 3, 4, 5, 8, 13, 16, 31, 37, 53, 64, 83, 100, 128, 360, 529, 1024};

std::vector<float> noise_for(transform t, int n) {
    uniform_noise noise(3);
    std::vector<float> x(floats_in(t, n));
    for (float& v : x) v = noise();
    return x;
}

std::vector<float> times(std::vector<float> x, float factor) {
    for (float& v : x) v *= factor;
    return x;
}

void for_each_problem(auto visit) {
    for (int t = 0; t < transform_count; ++t)
        for (const int n : lengths) {
            SCOPED_TRACE(std::string(name_of(transform(t))) + " " + std::to_string(n));
            visit(transform(t), n);
        }
}

// A coefficient is one part of the result, or two.
size_t parts_of_result(transform t) { return t <= transform::r2c ? 2 : 1; }

bool is_number(transform t, const std::vector<float>& out, size_t coefficient) {
    const size_t parts = parts_of_result(t), i = coefficient * parts;
    return std::isfinite(out[i]) && std::isfinite(out[i + parts - 1]);
}

// Whether coefficients depend on element i of the input: the sine of 0 leaves some of them alone.
std::vector<bool> dependent(transform t, int n, size_t i) {
    std::vector<float> impulse(floats_in(t, n));
    impulse[i] = 1;
    const std::vector<double> factors = by_reference(t, n, impulse);
    const size_t parts = parts_of_result(t);
    std::vector<bool> yes(factors.size() / parts);
    for (size_t k = 0; k < yes.size(); ++k)
        yes[k] = std::abs(factors[k * parts]) > 1e-9 || std::abs(factors[(k + 1) * parts - 1]) > 1e-9;
    return yes;
}

}  // namespace

TEST(SpecialValues, ZerosGiveZeros) {
    for_each_problem([](transform t, int n) {
        for (const float x : by_library(t, n, std::vector<float>(floats_in(t, n)))) ASSERT_EQ(x, 0);
    });
}

// No constant is added anywhere and every product has a constant for a factor, so a power of two goes straight through.
TEST(SpecialValues, AFactorThatIsAPowerOfTwoGoesThroughExactly) {
    for_each_problem([](transform t, int n) {
        const std::vector<float> x = noise_for(t, n), y = by_library(t, n, x);
        for (const float factor : {0x1p-60f, 0x1p+90f}) {
            const std::vector<float> scaled = by_library(t, n, times(x, factor));
            ASSERT_EQ(scaled, times(y, factor)) << factor;
        }
    });
}

TEST(SpecialValues, ChangedSignsOfTheInputChangeThoseOfTheResultAndNothingElse) {
    for_each_problem([](transform t, int n) {
        const std::vector<float> x = noise_for(t, n);
        ASSERT_EQ(by_library(t, n, times(x, -1)), times(by_library(t, n, x), -1));
    });
}

// Numbers below 2^-126 are computed with, at their spacing of 2^-149. Every operation on them is off by half of that at
// the most, and the errors of one stage grow by the ones behind it, which eight square roots of n bound with room.
TEST(SpecialValues, SubnormalNumbersAreComputedWithAtTheirSpacing) {
    for_each_problem([](transform t, int n) {
        std::vector<float> x = noise_for(t, n);
        for (float& v : x) v *= 0x1p-130f;
        const std::vector<float> y = by_library(t, n, x);
        const std::vector<double> expected = by_reference(t, n, x);
        double difference = 0;
        for (size_t i = 0; i < y.size(); ++i) difference = std::max(difference, std::abs(y[i] - expected[i]));
        EXPECT_LT(difference, 0x1p-149 * (8 + 8 * std::sqrt(n)));
    });
}

// The sum of the magnitudes, twice for kinds that weigh by 2, is what a result and all that leads to it stay below.
TEST(SpecialValues, LargeNumbersDoNotOverflowOnTheWayToAFiniteResult) {
    for_each_problem([](transform t, int n) {
        std::vector<float> x = noise_for(t, n);
        double sum = 0;
        for (const float v : x) sum += 2 * std::abs(double(v));
        const std::vector<float> y = by_library(t, n, times(x, float(FLT_MAX / 4 / sum)));
        EXPECT_TRUE(std::ranges::all_of(y, [](float v) { return std::isfinite(v); }));
    });
}

TEST(SpecialValues, OneNaNOrInfinityReachesEveryCoefficientThatDependsOnIt) {
    for_each_problem([](transform t, int n) {
        const std::vector<float> x = noise_for(t, n);
        for (size_t i = 0; i < x.size(); i += std::max<size_t>(1, x.size() / 3)) {
            const std::vector<bool> depends = dependent(t, n, i);
            for (const float special :
                 {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
                std::vector<float> with = x;
                with[i] = special;
                const std::vector<float> y = by_library(t, n, with);
                for (size_t k = 0; k < depends.size(); ++k)
                    if (depends[k]) {
                        ASSERT_FALSE(is_number(t, y, k)) << special << " at " << i << ", coefficient " << k;
                    }
            }
        }
    });
}

// Whatever lane its neighbours have.
TEST(SpecialValues, NaNInOneTransformOfABatchLeavesTheOthersAsTheyAre) {
    for (const int n : lengths)
        for (const int howmany : {2, 3, 5, 8, 13})
            for (const bool interleaved : {false, true}) {
                const int stride = interleaved ? howmany : 1, distance = interleaved ? 1 : n;
                const auto element = [&](int b, int j) { return 2 * size_t(b * distance + j * stride); };
                const auto run = [&](const std::vector<float>& x) {
                    std::vector<float> in = x, out(x.size());
                    const auto a = reinterpret_cast<qsl_fftf_complex*>(in.data()),
                               b = reinterpret_cast<qsl_fftf_complex*>(out.data());
                    qsl_fftf_plan plan =
                        qsl_fftf_plan_many_dft(1, &n, howmany, a, nullptr, stride, distance, b, nullptr, stride,
                                               distance, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
                    qsl_fftf_execute(plan);
                    qsl_fftf_destroy_plan(plan);
                    return out;
                };
                const std::vector<float> x = noise_for(transform::c2c, n * howmany), y = run(x);
                for (int marked = 0; marked < howmany; ++marked) {
                    std::vector<float> with = x;
                    with[element(marked, n / 2)] = NAN;
                    const std::vector<float> z = run(with);
                    for (int b = 0; b < howmany; ++b)
                        for (int k = 0; k < n && b != marked; ++k)
                            for (int part = 0; part < 2; ++part)
                                ASSERT_EQ(z[element(b, k) + size_t(part)], y[element(b, k) + size_t(part)])
                                    << howmany << " of " << n << (interleaved ? " interleaved, " : ", ") << marked
                                    << " has NaN, found in " << b << " at " << k;
                }
            }
}
