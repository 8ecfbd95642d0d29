// SPDX-License-Identifier: Apache-2.0
// Upsampling against its steps carried out in double precision, over small sizes of every parity.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <ostream>
#include <thread>

#include "include/qfftf.h"
#include "record/fft_plan.h"
#include "tests/support/guarded_floats.h"
#include "tests/support/reference_dft.h"
#include "tests/support/signals.h"

namespace {

using reference::complex;

struct problem {
    int n0, n1, m0, m1;
    float shift_x, shift_y;
};

std::ostream& operator<<(std::ostream& out, const problem& p) {
    return out << p.n0 << " x " << p.n1 << " to " << p.m0 << " x " << p.m1 << " shift " << p.shift_x << ", "
               << p.shift_y;
}

struct destroy {
    void operator()(fft_plan* plan) const { qsl_fftf_destroy_plan(plan); }
};
using plan_handle = std::unique_ptr<fft_plan, destroy>;

plan_handle make_plan(const problem& p, float* in, float* out, unsigned flags = 0) {
    return plan_handle(qsl_fftf_plan_upsampling_2d(p.n0, p.n1, p.m0, p.m1, in, out, flags, p.shift_x, p.shift_y));
}

// The transform over both dimensions of rows x columns numbers.
std::vector<complex> dft_2d(std::vector<complex> x, int rows, int columns, int sign) {
    for (int i = 0; i < rows; ++i) {
        const std::vector<complex> row = reference::dft({x.begin() + i * columns, x.begin() + (i + 1) * columns}, sign);
        std::copy(row.begin(), row.end(), x.begin() + i * columns);
    }
    for (int j = 0; j < columns; ++j) {
        std::vector<complex> column(rows);
        for (int i = 0; i < rows; ++i) column[i] = x[i * columns + j];
        column = reference::dft(column, sign);
        for (int i = 0; i < rows; ++i) x[i * columns + j] = column[i];
    }
    return x;
}

double angle_x(const problem& p, int i) {
    const double step = 2 * std::numbers::pi / p.m0 * p.shift_x;
    return i <= p.n0 / 2 ? i * step : (i - p.n0) * step;
}

std::vector<double> expected(const problem& p, const std::vector<complex>& image) {
    const int half = p.n1 / 2 + 1;
    const std::vector<complex> source = dft_2d(image, p.n0, p.n1, -1);
    std::vector<complex> target(static_cast<size_t>(p.m0) * p.m1);
    std::vector<std::vector<complex>> rows(p.m0, std::vector<complex>(p.m1 / 2 + 1));
    for (int i = 0; i < p.n0; ++i)
        for (int j = 0; j < half; ++j) {
            const double angle = angle_x(p, i) + 2 * std::numbers::pi / p.m1 * p.shift_y * j;
            complex z = source[i * p.n1 + j] * std::polar(1.0 / (p.m0 * p.m1), angle);
            if (p.n1 < p.m1 && p.n1 % 2 == 0 && j == p.n1 / 2) z *= 0.5;
            rows[i <= p.n0 / 2 ? i : p.m0 - p.n0 + i][j] = z;
        }
    if (p.n0 < p.m0 && p.n0 % 2 == 0)
        for (complex& z : rows[p.n0 / 2]) {
            z *= 0.5;
            rows[p.m0 - p.n0 / 2][&z - rows[p.n0 / 2].data()] = z;
        }
    // columns first, then each row as the real result of half a spectrum
    std::vector<double> result(static_cast<size_t>(p.m0) * p.m1);
    for (int j = 0; j <= p.m1 / 2; ++j) {
        std::vector<complex> column(p.m0);
        for (int i = 0; i < p.m0; ++i) column[i] = rows[i][j];
        column = reference::dft(column, 1);
        for (int i = 0; i < p.m0; ++i) rows[i][j] = column[i];
    }
    for (int i = 0; i < p.m0; ++i) {
        std::vector<complex> row(p.m1);
        for (int j = 0; j <= p.m1 / 2; ++j) {
            row[j] = rows[i][j];
            if (j && 2 * j != p.m1) row[p.m1 - j] = std::conj(rows[i][j]);
        }
        if (p.m1 % 2 == 0) {
            row[0] = row[0].real();
            row[p.m1 / 2] = row[p.m1 / 2].real();
        }
        row = reference::dft(row, 1);
        for (int j = 0; j < p.m1; ++j) result[i * p.m1 + j] = row[j].real();
    }
    return result;
}

double error_of(const float* actual, const std::vector<double>& expected) {
    double difference = 0, size = 0;
    for (size_t i = 0; i < expected.size(); ++i) {
        difference += (actual[i] - expected[i]) * (actual[i] - expected[i]);
        size += expected[i] * expected[i];
    }
    return std::sqrt(difference / size);
}

void check(const problem& p) {
    SCOPED_TRACE(testing::Message() << p);
    guarded_floats in(static_cast<size_t>(p.n0) * p.n1), out(static_cast<size_t>(p.m0) * p.m1);
    const plan_handle plan = make_plan(p, in.data(), out.data());
    ASSERT_NE(plan, nullptr);
    EXPECT_STREQ(plan->solver_name, "solve_problem_upsampling_2d");
    EXPECT_STREQ(plan->execute_name, "execute_upsampling_2d");
    EXPECT_EQ(plan->subplans[2]->kind, p.m1 == 2 * p.n1 ? kind_c2r_upsampling : kind_c2r);
    uniform_noise noise(p.n0 * 64 + p.n1);
    std::vector<complex> image(in.size());
    for (size_t i = 0; i < in.size(); ++i) image[i] = in[i] = noise();
    qsl_fftf_execute(plan.get());
    const std::vector<double> wanted = expected(p, image);
    EXPECT_LT(error_of(out.data(), wanted), 1e-6);
    // fresh scratch on a thread that never planned gives the same, again and again
    std::vector<float> again(out.size());
    std::thread([&] { plan->execute(plan.get(), in.data(), again.data()); }).join();
    EXPECT_LT(error_of(again.data(), wanted), 1e-6);
    EXPECT_TRUE(in.zones_are_intact() && out.zones_are_intact());
}

TEST(Upsampling, IsRightForSmallSizesOfEveryParity) {
    for (int n0 = 1; n0 <= 6; ++n0)
        for (int n1 = 1; n1 <= 6; ++n1)
            for (int m0 : {n0, n0 + 1, 2 * n0, 3 * n0 + 1})
                for (int m1 : {n1, n1 + 1, 2 * n1, 3 * n1}) {
                    check({n0, n1, m0, m1, 0, 0});
                    check({n0, n1, m0, m1, 0.25f, -1.5f});
                }
}

TEST(Upsampling, IsRightForLargerImages) {
    check({48, 64, 192, 256, 0.5f, 0.25f});
    check({30, 50, 60, 100, -0.5f, 0.75f});
    check({33, 21, 64, 64, 0, 0});
}

TEST(Upsampling, SameSizeWithoutShiftIsTheImage) {
    const problem p = {12, 15, 12, 15, 0, 0};
    std::vector<float> in(180), out(180);
    uniform_noise noise(1);
    const plan_handle plan = make_plan(p, in.data(), out.data());
    for (float& x : in) x = noise();
    qsl_fftf_execute(plan.get());
    for (size_t i = 0; i < in.size(); ++i) EXPECT_NEAR(in[i], out[i], 1e-6);
}

TEST(Upsampling, TargetSmallerThanSourceGivesNull) {
    float x[64] = {};
    EXPECT_EQ(make_plan({4, 4, 3, 8, 0, 0}, x, x), nullptr);
    EXPECT_EQ(make_plan({4, 4, 8, 3, 0, 0}, x, x), nullptr);
    EXPECT_EQ(make_plan({0, 4, 8, 8, 0, 0}, x, x), nullptr);
}

TEST(Upsampling, ASecondExecutionInThePlansBufferDiffers) {
    const problem p = {4, 4, 16, 16, 0, 0};
    std::vector<float> in(16), first(256), second(256);
    uniform_noise noise(2);
    const plan_handle plan = make_plan(p, in.data(), first.data());
    for (float& x : in) x = noise();
    qsl_fftf_execute(plan.get());
    plan->execute(plan.get(), in.data(), second.data());
    EXPECT_NE(first, second);
}

TEST(Upsampling, MeasuredPlanIsRight) {
    const problem p = {6, 8, 12, 16, 0.5f, 0.25f};
    std::vector<float> in(48), out(192);
    const plan_handle plan = make_plan(p, in.data(), out.data(), plan_flag_measured);
    ASSERT_NE(plan, nullptr);
    uniform_noise noise(3);
    std::vector<complex> image(48);
    for (size_t i = 0; i < in.size(); ++i) image[i] = in[i] = noise();
    qsl_fftf_execute(plan.get());
    EXPECT_LT(error_of(out.data(), expected(p, image)), 1e-6);
}

}  // namespace
