// SPDX-License-Identifier: Apache-2.0
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

namespace {

using reference::complex;

std::vector<complex> noise(size_t n) { return widened(complex_noise(n, n)); }

double distance(const std::vector<complex>& a, const std::vector<complex>& b) {
    double difference = 0, size = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        difference += std::norm(a[i] - b[i]);
        size += std::norm(a[i]);
    }
    return std::sqrt(difference / size);
}

}  // namespace

// The sum itself against roots in long double, computed by another library call.
TEST(ReferenceDft, TheSumIsTheDefinition) {
    for (size_t n : {1, 2, 3, 4, 5, 8, 12, 37, 41, 100})
        for (int sign : {-1, 1}) {
            const std::vector<complex> x = noise(n);
            std::vector<complex> expected(n);
            for (size_t k = 0; k < n; ++k) {
                std::complex<long double> sum = 0;
                for (size_t j = 0; j < n; ++j)
                    sum += std::complex<long double>(x[j]) *
                           std::polar(1.0L, sign * 6.283185307179586476925286766559L * (j * k % n) / n);
                expected[k] = complex(sum);
            }
            EXPECT_LT(distance(expected, reference::dft_by_sum(x, sign)), 5e-16 * std::sqrt(n)) << n;
        }
}

TEST(ReferenceDft, EqualsTheSumWhereItIsFast) {
    for (size_t n = 1; n <= 150; ++n)
        for (int sign : {-1, 1})
            EXPECT_LT(distance(reference::dft_by_sum(noise(n), sign), reference::dft(noise(n), sign)), 4e-15) << n;
    for (size_t n : {256, 509, 512, 2 * 3 * 67})
        EXPECT_LT(distance(reference::dft_by_sum(noise(n), -1), reference::dft(noise(n), -1)), 1e-14) << n;
}

// Of longer transforms a few outputs: a sine wave has one line, an impulse a flat spectrum that turns.
TEST(ReferenceDft, IsRightForWavesAndImpulsesOfLongTransforms) {
    for (size_t n : {4096, 67 * 71, 10007, 3 * 32768})
        for (size_t k : {size_t{1}, n / 3, n - 1}) {
            std::vector<complex> wave(n), line(n), impulse(n), turning(n);
            for (size_t j = 0; j < n; ++j) {
                wave[j] = std::polar(1.0, 6.283185307179586 * double(j * k % n) / double(n));
                turning[j] = std::conj(wave[j]);
            }
            line[k] = double(n);
            impulse[k] = 1;
            EXPECT_LT(distance(line, reference::dft(wave, -1)), 1e-14) << n;
            EXPECT_LT(distance(turning, reference::dft(impulse, -1)), 1e-14) << n;
        }
}

TEST(ReferenceDft, ThereAndBackGivesTheInputTimesTheLength) {
    for (size_t n : {1 << 15, 10007}) {
        std::vector<complex> expected = noise(n);
        for (complex& x : expected) x *= double(n);
        EXPECT_LT(distance(expected, reference::dft(reference::dft(noise(n), -1), 1)), 1e-14) << n;
    }
}

TEST(ReferenceDft, GivesTheOtherDirection) {
    for (size_t n = 1; n <= 70; ++n)
        EXPECT_LT(distance(reference::dft(noise(n), 1), reference::other_direction(reference::dft(noise(n), -1))),
                  1e-14)
            << n;
}
