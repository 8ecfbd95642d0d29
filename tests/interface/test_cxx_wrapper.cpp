// SPDX-License-Identifier: Apache-2.0
// The C++ header: results, lengths that are checked, plans that move, one plan per thread.
#include "qfftf.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

namespace {

using qfftf::complex;

std::vector<complex> ramp(int count) {
    std::vector<complex> x(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) x[static_cast<size_t>(i)] = {float(i % 7) - 3, float(i % 5) - 2};
    return x;
}

// Coefficient k of n points that stand `stride` apart.
complex coefficient(const complex* x, int n, int stride, int k, int sign) {
    std::complex<double> sum = 0;
    for (int j = 0; j < n; ++j)
        sum += std::complex<double>(x[j * stride]) * std::polar(1.0, sign * 2 * M_PI * (j * k % n) / n);
    return complex(sum);
}

void expect_near(complex a, complex b) { EXPECT_LT(std::abs(a - b), 1e-4f * (1 + std::abs(b))); }

}  // namespace

TEST(CxxWrapper, TransformsComplexForwardAndInPlaceBackward) {
    auto x = ramp(24);
    std::vector<complex> y(24);
    const auto forth = qfftf::plan_c2c({24}, std::span(x), std::span(y), qfftf::forward);
    forth();
    for (int k = 0; k < 24; ++k) expect_near(y[k], coefficient(x.data(), 24, 1, k, -1));
    const auto back = qfftf::plan_c2c({24}, std::span(y), std::span(y), qfftf::backward);
    back();
    for (int j = 0; j < 24; ++j) expect_near(y[j] / 24.0f, x[j]);
}

TEST(CxxWrapper, PlansBatchesWithLayouts) {
    auto x = ramp(40);
    std::vector<complex> y(40);
    const qfftf::batch columns = {5, {.stride = 5, .distance = 1}, {}};
    const auto plan = qfftf::plan_c2c({8}, std::span(x), std::span(y), qfftf::forward, columns);
    EXPECT_EQ(plan.input_length(), 40u);
    EXPECT_EQ(plan.output_length(), 40u);
    plan();
    for (int t = 0; t < 5; ++t)
        for (int k = 0; k < 8; ++k) expect_near(y[8 * t + k], coefficient(&x[t], 8, 5, k, -1));
}

TEST(CxxWrapper, TransformsRealThereAndBackOnNewArrays) {
    std::vector<float> x(60), z(60);
    std::vector<complex> y(6 * 6);
    for (size_t i = 0; i < x.size(); ++i) x[i] = float(i % 11) - 5;
    const auto forth = qfftf::plan_r2c({6, 10}, std::span(x), std::span(y));
    const auto back = qfftf::plan_c2r({6, 10}, std::span(y), std::span(z));
    EXPECT_EQ(forth.output_length(), 36u);
    const auto kept = x;
    std::vector<complex> other(36);
    forth(std::span(x), std::span(other));
    back(std::span(other), std::span(z));
    for (size_t i = 0; i < 60; ++i) EXPECT_NEAR(z[i] / 60, kept[i], 1e-5);
}

TEST(CxxWrapper, RealInPlaceHasPaddedRows) {
    std::vector<complex> array(4 * 5);
    const auto plan = qfftf::plan_r2c({4, 8}, qfftf::as_floats(array), std::span(array));
    EXPECT_EQ(plan.input_length(), 3u * 10 + 8);
    EXPECT_EQ(plan.output_length(), 20u);
    for (int row = 0; row < 4; ++row)
        for (int i = 0; i < 8; ++i) qfftf::as_floats(array)[static_cast<size_t>(10 * row + i)] = 1;
    plan();
    expect_near(array[0], 32);
    for (size_t i = 1; i < 20; ++i) expect_near(array[i], 0);
}

TEST(CxxWrapper, TransformsRealToReal) {
    std::vector<float> x = {1, 2, 3, 4}, y(4);
    qfftf::plan_r2r({4}, std::span(x), std::span(y), {qfftf::r2r::dht})();
    EXPECT_NEAR(y[0], 10, 1e-5);
}

TEST(CxxWrapper, LeavesConstInputsAlone) {
    const auto x = ramp(24);
    std::vector<complex> y(24);
    for (const auto flags : {qfftf::rules, qfftf::measured}) {
        const auto before = x;
        const auto plan = qfftf::plan_c2c({24}, x, y, qfftf::forward, {}, flags);
        EXPECT_EQ(x, before) << "planned with flags " << flags;
        std::fill(y.begin(), y.end(), complex(0));
        plan();
        for (int k = 0; k < 24; ++k) expect_near(y[k], coefficient(x.data(), 24, 1, k, -1));
        plan(std::span(x), std::span(y));
        EXPECT_EQ(x, before);
    }
    const std::vector<complex> spectrum(4 * 5, complex(1));
    std::vector<float> image(4 * 8);
    qfftf::plan_c2r({4, 8}, spectrum, image)();
    EXPECT_EQ(spectrum, std::vector<complex>(20, complex(1)));
    EXPECT_NEAR(image[0], 32, 1e-4);
    const std::vector<float> samples = {1, 2, 3, 4};
    std::vector<complex> half(3);
    std::vector<float> hartley(4);
    qfftf::plan_r2c({4}, samples, half)();
    qfftf::plan_r2r({4}, samples, hartley, {qfftf::r2r::dht})();
    EXPECT_NEAR(half[0].real(), hartley[0], 1e-5);
}

namespace {

// Spans as long as they are said to be over no memory at all: planning by rules doesn't touch it.
std::span<complex> told_span(std::uintptr_t address, std::size_t length) {
    return {reinterpret_cast<complex*>(address), length};
}

}  // namespace

TEST(CxxWrapper, HasDefaultDistancesForBatches) {
    const auto lengths = [](const qfftf::sizes& n, const qfftf::batch& b) {
        const std::size_t much = std::size_t{1} << 40;
        const auto plan = qfftf::plan_c2c(n, told_span(std::uintptr_t{1} << 50, much),
                                          told_span(std::uintptr_t{1} << 52, much), qfftf::forward, b);
        return std::pair(plan.input_length(), plan.output_length());
    };
    using pair = std::pair<std::size_t, std::size_t>;
    EXPECT_EQ(lengths({16}, {3, {}, {.stride = 2}}), pair(48, 2 * 32 + 31));
    EXPECT_EQ(lengths({16}, {3, {.embed = {20}}, {.stride = 2, .embed = {17}}}), pair(2 * 20 + 16, 2 * 34 + 31));
    EXPECT_EQ(lengths({4, 6}, {2, {.embed = {5, 7}}, {}}), pair(35 + 3 * 7 + 6, 48));
    EXPECT_EQ(lengths({4, 6}, {2, {.distance = 30, .embed = {1, 7}}, {}}), pair(30 + 3 * 7 + 6, 48));
    EXPECT_THROW(lengths({4, 6}, {2, {.embed = {1, 7}}, {}}), qfftf::refused);
    EXPECT_EQ(lengths({3, 4}, {1, {.embed = {3, 1 << 30}}, {}}).first, (std::size_t{2} << 30) + 4);
    try {
        lengths({65536, 65537}, {.count = 2});
        ADD_FAILURE() << "a distance of 4295032832 was taken";
    } catch (const qfftf::refused& e) {
        EXPECT_NE(std::string(e.what()).find("fits an int"), std::string::npos) << e.what();
    }
    EXPECT_THROW(lengths({2147483647, 2147483647, 2147483647, 2147483647}, {}), qfftf::refused);
}

TEST(CxxWrapper, RefusalsSayWhy) {
    auto x = ramp(8);
    const auto reason = [&](auto call) {
        try {
            call();
        } catch (const qfftf::refused& e) {
            return std::string(e.what());
        }
        return std::string("planned");
    };
    const std::span<complex> all(x), few = all.first(7);
    EXPECT_NE(reason([&] { qfftf::plan_c2c({8}, few, all, qfftf::forward); }).find("input array"), std::string::npos);
    EXPECT_NE(reason([&] { qfftf::plan_c2c({0}, all, all, qfftf::forward); }).find("size"), std::string::npos);
    EXPECT_NE(reason([&] { qfftf::plan_c2c({}, all, all, qfftf::forward); }).find("1 to 4"), std::string::npos);
    auto y = x;
    const auto plan = qfftf::plan_c2c({8}, all, std::span(y), qfftf::forward);
    EXPECT_NE(reason([&] { plan(few, std::span(y)); }).find("input array"), std::string::npos);
    EXPECT_NE(reason([&] { plan(all, all); }).find("in place"), std::string::npos);
}

TEST(CxxWrapper, PlansMoveAndDoNotCopy) {
    static_assert(std::is_nothrow_move_constructible_v<qfftf::c2c_plan> &&
                  !std::is_copy_constructible_v<qfftf::c2c_plan>);
    auto x = ramp(8), y = x;
    auto first = qfftf::plan_c2c({8}, std::span(x), std::span(y), qfftf::forward);
    const auto second = std::move(first);
    second();
    expect_near(y[0], coefficient(x.data(), 8, 1, 0, -1));
}

TEST(CxxWrapper, LetsEveryThreadHaveAPlan) {
    auto x = ramp(360);
    qfftf::per_thread<qfftf::c2c_plan> plans([&] {
        static thread_local std::vector<complex> out(360);
        return qfftf::plan_c2c({360}, std::span(x), std::span(out), qfftf::forward);
    });
    std::vector<std::vector<complex>> results(3, std::vector<complex>(360));
    std::vector<std::thread> threads;
    for (auto& result : results)
        threads.emplace_back([&] {
            EXPECT_EQ(&plans.get(), &plans.get());
            plans.get()(std::span(x), std::span(result));
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(results[0], results[1]);
    EXPECT_EQ(results[0], results[2]);
    expect_near(results[0][7], coefficient(x.data(), 360, 1, 7, -1));
}
