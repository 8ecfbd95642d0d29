// SPDX-License-Identifier: Apache-2.0
// Properties of long transforms, which need no reference: linearity, shifts in time and in frequency, impulses,
// Parseval's theorem, the inverse. To 2^18 points, and where LARGE is set to 2^26 and 512 x 512 x 512.
#include "include/qfftf.h"
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdlib>
#include <memory>
#include <numbers>
#include <vector>

namespace {

using complex_float = std::complex<float>;
using complex_double = std::complex<double>;
constexpr double limit = 1e-6;  // relative L2 error; a transform of 2^26 points alone is 2e-7 off

bool whole() { return getenv("LARGE") != nullptr; }

// Powers of two by their own algorithm, smooth lengths, and a length with a large prime factor.
std::vector<int> lengths() {
    if (whole()) return {1 << 22, 1 << 23, 1 << 24, 1 << 26, 10'000'000, 3 << 23, 10'000'019};
    return {1 << 17, 1 << 18, 100'000, 65'537};
}

// qsl_fftf_malloc gives zeros without touching the pages.
struct release {
    void operator()(void* p) const { qsl_fftf_free(p); }
};
template <class T>
class array {
public:
    explicit array(size_t size) : size_(size), data_(static_cast<T*>(qsl_fftf_malloc(size * sizeof(T)))) {}
    T& operator[](size_t i) const { return data_.get()[i]; }
    T* get() const { return data_.get(); }
    size_t size() const { return size_; }
    bool missing() const { return !data_; }

private:
    size_t size_;
    std::unique_ptr<T, release> data_;
};

qsl_fftf_complex* pairs(complex_float* x) { return reinterpret_cast<qsl_fftf_complex*>(x); }

void transform_in_place(const array<complex_float>& x, int sign) {
    qsl_fftf_plan plan = qsl_fftf_plan_dft_1d(int(x.size()), pairs(x.get()), pairs(x.get()), sign, QSL_FFTF_RULES);
    ASSERT_NE(plan, nullptr);
    qsl_fftf_execute(plan);
    qsl_fftf_destroy_plan(plan);
}

// exp(-2 pi i j k / n)
complex_double root(uint64_t j, uint64_t k, uint64_t n) {
    const double turn = double(static_cast<unsigned __int128>(j) * k % n) / double(n);
    return std::polar(1.0, -2 * std::numbers::pi * turn);
}

class distance {
public:
    void add(complex_double actual, complex_double expected) {
        difference_ += std::norm(actual - expected);
        size_ += std::norm(expected);
    }
    double relative() const { return std::sqrt(difference_ / size_); }

private:
    double difference_ = 0, size_ = 0;
};

// Every coefficient of short transforms, and a few million of the others.
size_t step_for(size_t n) { return n > (1 << 22) ? 17 : 1; }

void fill(const array<complex_float>& x, uint64_t seed) {
    uniform_noise noise(seed);
    for (size_t j = 0; j < x.size(); ++j) {
        const float real = noise();
        x[j] = {real, noise()};
    }
}

}  // namespace

TEST(LongTransforms, OfAnImpulseAreRootsOfUnity) {
    for (const int n : lengths()) {
        array<complex_float> x{size_t(n)};
        ASSERT_FALSE(x.missing());
        for (const size_t place : {size_t(0), size_t(1), size_t(n) / 3, size_t(n) - 1}) {
            std::fill_n(x.get(), x.size(), complex_float());
            x[place] = 1;
            transform_in_place(x, QSL_FFTF_FORWARD);
            distance d;
            for (size_t k = 0; k < x.size(); k += step_for(x.size())) d.add(x[k], root(place, k, x.size()));
            EXPECT_LT(d.relative(), limit) << n << " points, impulse at " << place;
        }
    }
}

TEST(LongTransforms, OfAWaveAreOneCoefficient) {
    for (const int n : lengths()) {
        array<complex_float> x{size_t(n)};
        ASSERT_FALSE(x.missing());
        const size_t wanted = size_t(n) / 5 + 1;
        for (size_t j = 0; j < x.size(); ++j) x[j] = complex_float(std::conj(root(wanted, j, x.size())));
        transform_in_place(x, QSL_FFTF_FORWARD);
        distance d;
        for (size_t k = 0; k < x.size(); ++k) d.add(x[k], k == wanted ? n : 0);
        EXPECT_LT(d.relative(), limit) << n << " points";
    }
}

TEST(LongTransforms, KeepEnergyFollowShiftsAreLinearAndAreUndone) {
    for (const int n : lengths()) {
        SCOPED_TRACE(n);
        const size_t count = size_t(n), shift = count / 7 + 3;
        array<complex_float> spectrum(count), other(count);
        ASSERT_FALSE(spectrum.missing() || other.missing());
        fill(spectrum, 5);
        double energy = 0, energy_of_result = 0;
        for (size_t j = 0; j < count; ++j) energy += std::norm(complex_double(spectrum[j]));
        for (size_t j = 0; j < count; ++j) other[(j + shift) % count] = spectrum[j];
        transform_in_place(spectrum, QSL_FFTF_FORWARD);
        for (size_t k = 0; k < count; ++k) energy_of_result += std::norm(complex_double(spectrum[k]));
        EXPECT_NEAR(energy_of_result / energy / n, 1, limit) << "Parseval";

        transform_in_place(other, QSL_FFTF_FORWARD);
        distance in_time, in_frequency, of_sum, undone;
        for (size_t k = 0; k < count; k += step_for(count))
            in_time.add(other[k], complex_double(spectrum[k]) * root(shift, k, count));
        EXPECT_LT(in_time.relative(), limit) << "shifted in time";

        fill(other, 5);
        for (size_t j = 0; j < count; ++j)
            other[j] = complex_float(complex_double(other[j]) * std::conj(root(shift, j, count)));
        transform_in_place(other, QSL_FFTF_FORWARD);
        for (size_t k = 0; k < count; ++k) in_frequency.add(other[(k + shift) % count], spectrum[k]);
        EXPECT_LT(in_frequency.relative(), limit) << "shifted in frequency";

        array<complex_float> sum(count);
        ASSERT_FALSE(sum.missing());
        fill(sum, 5);
        fill(other, 6);
        for (size_t j = 0; j < count; ++j) sum[j] += 3.0f * other[j];
        transform_in_place(sum, QSL_FFTF_FORWARD);
        transform_in_place(other, QSL_FFTF_FORWARD);
        for (size_t k = 0; k < count; ++k)
            of_sum.add(sum[k], complex_double(spectrum[k]) + 3.0 * complex_double(other[k]));
        EXPECT_LT(of_sum.relative(), limit) << "of a sum";

        transform_in_place(spectrum, QSL_FFTF_BACKWARD);
        fill(other, 5);
        for (size_t j = 0; j < count; ++j) undone.add(complex_double(spectrum[j]) / double(n), other[j]);
        EXPECT_LT(undone.relative(), limit) << "undone";
    }
}

// In place, where the rows of floats are padded.
TEST(LongRealTransforms, OfAnImpulseAreRootsOfUnityAndAreUndone) {
    for (const int n : lengths()) {
        SCOPED_TRACE(n);
        const size_t count = size_t(n), half = count / 2 + 1, place = count / 3;
        array<complex_float> x(half);
        ASSERT_FALSE(x.missing());
        float* const reals = reinterpret_cast<float*>(x.get());
        reals[place] = 1;
        qsl_fftf_plan forth = qsl_fftf_plan_dft_r2c_1d(n, reals, pairs(x.get()), QSL_FFTF_RULES);
        qsl_fftf_plan back = qsl_fftf_plan_dft_c2r_1d(n, pairs(x.get()), reals, QSL_FFTF_RULES);
        ASSERT_TRUE(forth && back);
        qsl_fftf_execute(forth);
        distance d, undone;
        for (size_t k = 0; k < half; k += step_for(count)) d.add(x[k], root(place, k, count));
        EXPECT_LT(d.relative(), limit);
        qsl_fftf_execute(back);
        for (size_t j = 0; j < count; ++j) undone.add(double(reals[j]) / n, j == place);
        EXPECT_LT(undone.relative(), limit);
        qsl_fftf_destroy_plan(forth);
        qsl_fftf_destroy_plan(back);
    }
}

// Each kind's row of the definition for one element, by angles that are reduced exactly.
TEST(LongRealTransforms, OfTheCosineAndSineKindsOfAnImpulseAreCosinesAndSines) {
    struct type {
        unsigned kind;
        int p, q, extra;  // 2 f(2 pi (2j + p)(2k + q) / 8 (n + extra))
        bool sine;
    };
    constexpr type types[] = {{QSL_FFTF_REDFT00, 0, 0, -1, false}, {QSL_FFTF_REDFT01, 0, 1, 0, false},
                              {QSL_FFTF_REDFT10, 1, 0, 0, false},  {QSL_FFTF_REDFT11, 1, 1, 0, false},
                              {QSL_FFTF_RODFT00, 2, 2, 1, true},   {QSL_FFTF_RODFT01, 2, 1, 0, true},
                              {QSL_FFTF_RODFT10, 1, 2, 0, true},   {QSL_FFTF_RODFT11, 1, 1, 0, true}};
    const int n = whole() ? 1 << 24 : 1 << 16;
    for (const type& t : types) {
        array<float> x{size_t(n - t.extra)};
        ASSERT_FALSE(x.missing());
        const size_t count = x.size(), j = count / 3, whole_turn = 8 * size_t(n);
        x[j] = 1;
        qsl_fftf_plan plan = qsl_fftf_plan_r2r_1d(int(count), x.get(), x.get(), t.kind, QSL_FFTF_RULES);
        ASSERT_NE(plan, nullptr);
        qsl_fftf_execute(plan);
        qsl_fftf_destroy_plan(plan);
        distance d;
        for (size_t k = 0; k < count; k += step_for(count)) {
            const complex_double w = std::conj(root(2 * j + size_t(t.p), 2 * k + size_t(t.q), whole_turn));
            d.add(double(x[k]), 2 * (t.sine ? w.imag() : w.real()));
        }
        EXPECT_LT(d.relative(), limit) << "kind " << t.kind << ", " << count << " points";
    }
}

// The transform of a product of three sequences is the product of their transforms: a reference for every element.
TEST(LongTransforms, OfThreeDimensionsFactorWhereTheInputDoes) {
    const int sizes[3] = {whole() ? 512 : 64, whole() ? 512 : 32, whole() ? 512 : 48};
    std::vector<complex_double> factors[3], results[3];
    for (int d = 0; d < 3; ++d) {
        factors[d] = widened(complex_noise(size_t(sizes[d]), uint64_t(d) + 1));
        results[d] = reference::dft(factors[d], -1);
    }
    const auto product = [&](const std::vector<complex_double>* f, size_t at) {
        const size_t last = at % size_t(sizes[2]), rest = at / size_t(sizes[2]);
        return f[0][rest / size_t(sizes[1])] * f[1][rest % size_t(sizes[1])] * f[2][last];
    };
    array<complex_float> x(size_t(sizes[0]) * size_t(sizes[1]) * size_t(sizes[2]));
    ASSERT_FALSE(x.missing());
    for (size_t at = 0; at < x.size(); ++at) x[at] = complex_float(product(factors, at));
    qsl_fftf_plan plan = qsl_fftf_plan_dft(3, sizes, pairs(x.get()), pairs(x.get()), QSL_FFTF_FORWARD, QSL_FFTF_RULES);
    ASSERT_NE(plan, nullptr);
    qsl_fftf_execute(plan);
    qsl_fftf_destroy_plan(plan);
    distance d;
    for (size_t at = 0; at < x.size(); ++at) d.add(x[at], product(results, at));
    EXPECT_LT(d.relative(), limit);
}
