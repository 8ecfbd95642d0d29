// SPDX-License-Identifier: Apache-2.0
// Single r2c and c2r transforms of every length against a double-precision reference.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <ostream>

#include "dft/sizes.h"
#include "include/qfftf.h"
#include "record/fft_plan.h"
#include "tests/support/emulated.h"
#include "tests/support/guarded_floats.h"
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"

namespace {

// All lengths to 256, and above that every one or, emulated, one in eleven.
int next_length(int n) { return n + (is_emulated && n > 256 ? 11 : 1); }
constexpr int last_strided_length = is_emulated ? 72 : 200;
constexpr int last_large_length = is_emulated ? 16384 : 100000;

struct problem {
    int n, is, os;
    bool in_place;
};

std::ostream& operator<<(std::ostream& out, const problem& p) {
    return out << "n " << p.n << " is " << p.is << " os " << p.os << (p.in_place ? " in place" : " out of place");
}

struct destroy {
    void operator()(fft_plan* plan) const { qsl_fftf_destroy_plan(plan); }
};
using plan_handle = std::unique_ptr<fft_plan, destroy>;
using complex_pointer = qsl_fftf_complex*;

plan_handle plan_r2c(const problem& p, float* in, float* out, unsigned flags = 0) {
    return plan_handle(qsl_fftf_plan_many_dft_r2c(1, &p.n, 1, in, nullptr, p.is, 0,
                                                  reinterpret_cast<complex_pointer>(out), nullptr, p.os, 0, flags));
}

plan_handle plan_c2r(const problem& p, float* in, float* out, unsigned flags = 0) {
    return plan_handle(qsl_fftf_plan_many_dft_c2r(1, &p.n, 1, reinterpret_cast<complex_pointer>(in), nullptr, p.is, 0,
                                                  out, nullptr, p.os, 0, flags));
}

// Goals: 1.4 units for smooth lengths, 2.6 with a large prime factor; the smallest lengths have no room for either.
double error_bound(int n) { return (has_large_prime_factor(n) ? 2.6 : 1.5) * error_unit(n < 8 ? 8 : n); }

size_t real_floats(int n, int stride) { return 1 + static_cast<size_t>(n - 1) * stride; }
size_t complex_floats(int n, int stride) { return 2 * (1 + static_cast<size_t>(n / 2) * stride); }

void check_r2c(const problem& p) {
    SCOPED_TRACE(testing::Message() << "r2c " << p);
    const size_t in_size = real_floats(p.n, p.is), out_size = complex_floats(p.n, p.os);
    guarded_floats input(p.in_place ? std::max(in_size, out_size) : in_size), separate(out_size);
    guarded_floats& output = p.in_place ? input : separate;
    const plan_handle plan = plan_r2c(p, input.data(), output.data());
    ASSERT_NE(plan, nullptr);
    uniform_noise noise(p.n);
    std::vector<reference::complex> x(p.n);
    for (int j = 0; j < p.n; ++j) x[j] = input[static_cast<size_t>(j) * p.is] = noise();
    qsl_fftf_execute(plan.get());
    std::vector<reference::complex> expected = reference::dft(x, -1);
    std::vector<std::complex<float>> actual;
    for (int k = 0; k <= p.n / 2; ++k) actual.push_back(output.complex_at(static_cast<size_t>(k) * p.os));
    expected.resize(actual.size());
    EXPECT_LT(relative_error(actual, expected), error_bound(p.n)) << plan->solver_name << " " << plan->execute_name;
    if (p.n % 2 == 0) {
        EXPECT_TRUE(actual[0].imag() == 0 && actual.back().imag() == 0) << "imaginary parts of the ends";
    }
    if (!p.in_place) {
        for (size_t i = 0; i < out_size; ++i)
            if (i / 2 % p.os) {
                ASSERT_TRUE(output.is_untouched(i)) << "gap at float " << i;
            }
        for (int j = 0; j < p.n; ++j)
            ASSERT_EQ(static_cast<float>(x[j].real()), input[static_cast<size_t>(j) * p.is])
                << "input changed at " << j;
    }
    EXPECT_TRUE(input.zones_are_intact() && separate.zones_are_intact());
}

// The lower half of a Hermitian spectrum whose imaginary parts at 0 and n / 2 are told.
std::vector<std::complex<float>> half_spectrum(int n, float unread) {
    std::vector<std::complex<float>> z = complex_noise(n / 2 + 1, n);
    z[0].imag(n % 2 == 0 ? unread : 0);
    if (n % 2 == 0) z.back().imag(unread);
    return z;
}

std::vector<reference::complex> whole_spectrum(const std::vector<std::complex<float>>& z, int n) {
    std::vector<reference::complex> whole(n);
    for (int k = 0; k <= n / 2; ++k) {
        whole[k] = z[k];
        if (k) whole[n - k] = std::conj(whole[k]);
    }
    whole[0].imag(0);
    if (n % 2 == 0) whole[n / 2].imag(0);
    return whole;
}

void check_c2r(const problem& p, float unread) {
    SCOPED_TRACE(testing::Message() << "c2r " << p << ", imaginary parts without effect " << unread);
    const size_t in_size = complex_floats(p.n, p.is), out_size = real_floats(p.n, p.os);
    guarded_floats input(p.in_place ? std::max(in_size, out_size) : in_size), separate(out_size);
    guarded_floats& output = p.in_place ? input : separate;
    const plan_handle plan = plan_c2r(p, input.data(), output.data());
    ASSERT_NE(plan, nullptr);
    const auto z = half_spectrum(p.n, unread);
    for (int k = 0; k <= p.n / 2; ++k) input.set_complex(static_cast<size_t>(k) * p.is, z[k]);
    qsl_fftf_execute(plan.get());
    const std::vector<reference::complex> expected = reference::dft(whole_spectrum(z, p.n), 1);
    std::vector<std::complex<float>> actual;
    for (int j = 0; j < p.n; ++j) actual.push_back(output[static_cast<size_t>(j) * p.os]);
    EXPECT_LT(relative_error(actual, expected), error_bound(p.n)) << plan->solver_name << " " << plan->execute_name;
    if (!p.in_place) {
        for (size_t i = 0; i < out_size; ++i)
            if (i % p.os) {
                ASSERT_TRUE(output.is_untouched(i)) << "gap at float " << i;
            }
        for (int k = 0; k <= p.n / 2; ++k)
            ASSERT_EQ(z[k], input.complex_at(static_cast<size_t>(k) * p.is)) << "input changed at " << k;
    }
    EXPECT_TRUE(input.zones_are_intact() && separate.zones_are_intact());
}

TEST(R2c, IsRightForEveryLength) {
    for (int n = 1; n <= 1024; n = next_length(n)) check_r2c({n, 1, 1, false});
}

TEST(R2c, IsRightForEveryLengthStridedAndInPlace) {
    for (int n = 1; n <= last_strided_length; ++n) {
        check_r2c({n, 3, 1, false});
        check_r2c({n, 1, 2, false});
        check_r2c({n, 5, 7, false});
        check_r2c({n, 1, 1, true});
        check_r2c({n, 4, 2, true});
    }
}

TEST(C2r, IsRightForEveryLength) {
    for (int n = 1; n <= 1024; n = next_length(n)) check_c2r({n, 1, 1, false}, 0);
}

TEST(C2r, IsRightForEveryLengthStridedAndInPlace) {
    for (int n = 1; n <= last_strided_length; ++n) {
        check_c2r({n, 3, 1, false}, 0);
        check_c2r({n, 1, 2, false}, 0);
        check_c2r({n, 5, 7, false}, 0);
        check_c2r({n, 1, 1, true}, 0);
        check_c2r({n, 2, 4, true}, 0);
    }
}

TEST(C2r, ImaginaryPartsOfTheEndsHaveNoEffectForEvenLengths) {
    for (int n = 2; n <= last_strided_length; n += 2) {
        check_c2r({n, 1, 1, false}, 1000.0f);
        check_c2r({n, 2, 3, false}, 1000.0f);
    }
}

TEST(Real, TransformsOfLargeLengthsAreRight) {
    for (int n : {1025, 2048, 4096, 6144, 10007, 16384, 30030, 32768, 65536, 100000}) {
        if (n > last_large_length) continue;
        check_r2c({n, 1, 1, false});
        check_c2r({n, 1, 1, false}, 0);
    }
}

}  // namespace

namespace {

// Which floats of an array the layout of its side addresses.
std::vector<bool> addressed(size_t size, int elements, int stride, int width) {
    std::vector<bool> list(size);
    for (int k = 0; k < elements; ++k)
        for (int part = 0; part < width; ++part) list[static_cast<size_t>(width * k * stride + part)] = true;
    return list;
}

void expect_gaps_untouched(guarded_floats& array, const std::vector<bool>& addressed, const char* side) {
    EXPECT_TRUE(array.zones_are_intact()) << side;
    for (size_t i = 0; i < addressed.size(); ++i)
        if (!addressed[i]) {
            ASSERT_TRUE(array.is_untouched(i)) << side << " float " << i;
        }
}

}  // namespace

// The transforms inside are timed too, on storage of the plan's own.
TEST(Real1d, MeasuringWritesNothingBetweenTheStrides) {
    for (int n = 2; n <= (is_emulated ? 40 : 150); ++n)
        for (const auto& [is, os] : {std::pair{1, 2}, {2, 1}, {3, 3}})
            for (const bool forward : {true, false}) {
                const problem p = {n, is, os, false};
                SCOPED_TRACE(testing::Message() << (forward ? "r2c " : "c2r ") << p);
                const auto size = [&](bool real, int stride) {
                    return real ? real_floats(n, stride) : complex_floats(n, stride);
                };
                guarded_floats in(size(forward, is)), out(size(!forward, os));
                const auto in_elements = addressed(in.size(), forward ? n : n / 2 + 1, is, forward ? 1 : 2);
                const auto out_elements = addressed(out.size(), forward ? n / 2 + 1 : n, os, forward ? 2 : 1);
                for (size_t i = 0; i < in.size(); ++i)
                    if (in_elements[i]) in[i] = 0;
                const plan_handle plan = (forward ? plan_r2c : plan_c2r)(p, in.data(), out.data(), plan_flag_measured);
                ASSERT_NE(plan, nullptr);
                expect_gaps_untouched(in, in_elements, "input");
                expect_gaps_untouched(out, out_elements, "output");
            }
}
