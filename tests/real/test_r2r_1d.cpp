// SPDX-License-Identifier: Apache-2.0
// Single real-to-real transforms of all kinds against their defining sums, and against their inverses.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <ostream>
#include <string>
#include <thread>

#include "include/qfftf.h"
#include "record/fft_plan.h"
#include "tests/support/emulated.h"
#include "tests/support/guarded_floats.h"
#include "tests/support/reference_r2r.h"
#include "tests/support/signals.h"

namespace {

// All lengths to 96, and above that every one or, emulated, one in 37: the defining sums take n^2 operations.
int next_length(int n) { return n + (is_emulated && n > 96 ? 37 : 1); }
constexpr int last_strided_length = is_emulated ? 36 : 130;

const char* const kind_names[] = {"r2hc",    "hc2r",    "dht",     "redft00", "redft01", "redft10",
                                  "redft11", "rodft00", "rodft01", "rodft10", "rodft11"};

struct problem {
    uint32_t kind;
    int n, is, os;
    bool in_place;
};

std::ostream& operator<<(std::ostream& out, const problem& p) {
    return out << kind_names[p.kind] << " n " << p.n << " is " << p.is << " os " << p.os
               << (p.in_place ? " in place" : " out of place");
}

struct destroy {
    void operator()(fft_plan* plan) const { qsl_fftf_destroy_plan(plan); }
};
using plan_handle = std::unique_ptr<fft_plan, destroy>;

plan_handle make_plan(const problem& p, float* in, float* out, unsigned flags = 0) {
    const qsl_fftf_r2r_kind kind = p.kind;
    return plan_handle(qsl_fftf_plan_many_r2r(1, &p.n, 1, in, nullptr, p.is, 0, out, nullptr, p.os, 0, &kind, flags));
}

double error_bound(const problem& p) { return (p.kind <= r2r_dht ? 2.6 : 3.4) * error_unit(static_cast<size_t>(p.n)); }

void check(const problem& p) {
    SCOPED_TRACE(testing::Message() << p);
    guarded_floats input(1 + static_cast<size_t>(p.n - 1) * p.is), separate(1 + static_cast<size_t>(p.n - 1) * p.os);
    guarded_floats& output = p.in_place ? input : separate;
    uniform_noise noise(static_cast<uint64_t>(p.n) * 16 + p.kind);
    std::vector<double> x(p.n);
    const plan_handle plan = make_plan(p, input.data(), output.data());
    ASSERT_NE(plan, nullptr);
    for (int j = 0; j < p.n; ++j) x[j] = input[static_cast<size_t>(j) * p.is] = noise();
    qsl_fftf_execute(plan.get());
    const std::vector<double> expected = reference::r2r(x, p.kind);
    double difference = 0, size = 0;
    for (int k = 0; k < p.n; ++k) {
        const double error = output[static_cast<size_t>(k) * p.os] - expected[k];
        difference += error * error;
        size += expected[k] * expected[k];
    }
    EXPECT_LT(std::sqrt(difference / size), error_bound(p)) << plan->solver_name << " " << plan->execute_name;
    for (size_t i = 0; i < output.size(); ++i)
        if (i % p.os) {
            EXPECT_TRUE(output.is_untouched(i)) << "gap at float " << i;
        }
    if (!p.in_place) {
        for (int j = 0; j < p.n; ++j)
            ASSERT_EQ(static_cast<float>(x[j]), input[static_cast<size_t>(j) * p.is])
                << "input " << j << " was changed";
    }
    EXPECT_TRUE(input.zones_are_intact() && separate.zones_are_intact());
}

class R2r : public testing::TestWithParam<uint32_t> {};

int shortest(uint32_t kind) { return kind == r2r_redft00 ? 2 : 1; }

TEST_P(R2r, IsRightForEveryLength) {
    for (int n = shortest(GetParam()); n <= 512 && !HasFatalFailure(); n = next_length(n))
        check({GetParam(), n, 1, 1, false});
}

TEST_P(R2r, IsRightForEveryLengthStridedAndInPlace) {
    for (int n = shortest(GetParam()); n <= last_strided_length && !HasFatalFailure(); ++n) {
        check({GetParam(), n, 3, 1, false});
        check({GetParam(), n, 1, 2, false});
        check({GetParam(), n, 5, 7, false});
        check({GetParam(), n, 1, 1, true});
        check({GetParam(), n, 2, 2, true});
    }
}

TEST_P(R2r, InverseGivesTheInputTimesItsFactor) {
    const uint32_t kind = GetParam();
    for (int n : {2, 3, 5, 16, 17, 30, 100, 257, 1000, 1024, 1025}) {
        std::vector<float> x(n), y(n), z(n);
        uniform_noise noise(n);
        const plan_handle forth = make_plan({kind, n, 1, 1, false}, x.data(), y.data());
        const plan_handle back = make_plan({reference::r2r_inverse(kind), n, 1, 1, false}, y.data(), z.data());
        ASSERT_TRUE(forth && back) << kind_names[kind] << " n " << n;
        for (float& v : x) v = noise();
        qsl_fftf_execute(forth.get());
        qsl_fftf_execute(back.get());
        for (int j = 0; j < n; ++j)
            ASSERT_NEAR(z[j] / reference::r2r_inverse_factor(kind, n), x[j], 1e-5) << kind_names[kind] << " n " << n;
    }
}

TEST_P(R2r, BringsScratchOnAThreadThatNeverPlanned) {
    for (int n : {12, 15, 22, 100}) {
        std::vector<float> x(n, 0.25f), y(n), z(n);
        x[1] = -1;
        const plan_handle plan = make_plan({GetParam(), n, 1, 1, false}, x.data(), y.data());
        ASSERT_NE(plan, nullptr);
        qsl_fftf_execute(plan.get());
        std::thread([&] { qsl_fftf_execute_r2r(plan.get(), x.data(), z.data()); }).join();
        EXPECT_EQ(y, z) << kind_names[GetParam()] << " n " << n;
    }
}

INSTANTIATE_TEST_SUITE_P(AllKinds, R2r, testing::Range(0u, 11u),
                         [](const auto& info) { return kind_names[info.param]; });

}  // namespace

namespace {

struct storage {
    uint64_t buffer, aux;
};

// Of the cosine and sine transforms that no kernel takes.
storage storage_of(uint32_t kind, int64_t n) {
    const uint64_t points = static_cast<uint64_t>(n), half = points / 2, full = 8 * (points + points / 4);
    switch (kind) {
        case r2r_redft00:
            return {32 * (points - 1), 8 * (points - 1)};
        case r2r_rodft00:
            return {64 * (points + 1), 8 * (points + 1)};
        case r2r_redft11:
        case r2r_rodft11:
            return {32 * (points + 3), n % 4 ? 16 * half + 8 : full};
        default:
            return {32 * (points + 3), n % 2 ? 16 * half + 8 : 24 * half};
    }
}

}  // namespace

TEST(R2rStorage, IsAsToldForEveryLength) {
    for (const uint32_t kind :
         {r2r_redft00, r2r_redft01, r2r_redft10, r2r_redft11, r2r_rodft00, r2r_rodft01, r2r_rodft10, r2r_rodft11})
        for (int n = 1; n <= 200; ++n) {
            float in, out;
            const plan_handle plan = make_plan({kind, n, 1, 1, false}, &in, &out);
            if (!plan || std::string(plan->solver_name) == "solve_problem_redft00_direct") continue;
            const storage expected = storage_of(kind, n);
            EXPECT_EQ(plan->buffer_size, expected.buffer) << "kind " << kind << " n " << n;
            EXPECT_EQ(plan->aux_size, expected.aux) << "kind " << kind << " n " << n;
            EXPECT_EQ(plan->aux_owned, 1u) << "kind " << kind << " n " << n;
        }
}
