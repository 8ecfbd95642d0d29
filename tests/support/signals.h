// SPDX-License-Identifier: Apache-2.0
// Inputs and error measures that the tests of all areas share.
#pragma once
#include <cmath>
#include <complex>
#include <cstdint>
#include <vector>

// Uniform numbers in [-0.5, 0.5), the same on every machine.
class uniform_noise {
public:
    explicit uniform_noise(uint64_t seed) : state_(seed * 2 + 1) {}
    float operator()() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<float>(state_ >> 40) * 0x1p-24f - 0.5f;
    }

private:
    uint64_t state_;
};

inline std::vector<std::complex<float>> complex_noise(size_t count, uint64_t seed) {
    uniform_noise noise(seed);
    std::vector<std::complex<float>> signal(count);
    for (auto& x : signal) {
        const float real = noise();
        x = {real, noise()};
    }
    return signal;
}

inline std::vector<std::complex<double>> widened(const std::vector<std::complex<float>>& signal) {
    return {signal.begin(), signal.end()};
}

// The L2 norm of the difference over that of the reference. NaN where a result is NaN, so compare with EXPECT_LT.
inline double relative_error(const std::vector<std::complex<float>>& actual,
                             const std::vector<std::complex<double>>& expected) {
    double difference = 0, size = 0;
    for (size_t i = 0; i < expected.size(); ++i) {
        difference += std::norm(std::complex<double>(actual[i]) - expected[i]);
        size += std::norm(expected[i]);
    }
    return std::sqrt(difference / size);
}

// Errors of a transform of length n in single precision are stated in this unit: 2^-24 times the square root of log2 n.
inline double error_unit(size_t n) { return 0x1p-24 * std::sqrt(std::log2(static_cast<double>(n < 2 ? 2 : n))); }
