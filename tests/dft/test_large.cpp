// SPDX-License-Identifier: Apache-2.0
// Large powers of two: acceptance, storage, the twiddles of the columns, results.
#include "dft/twiddles.h"
#include "planner/solvers.h"
#include "tests/dft/problems.h"

#include <cstring>
#include <numbers>

namespace {

complex_problem with_threads(int64_t n, int64_t nthreads) {
    complex_problem p = {n};
    p.nthreads = nthreads;
    return p;
}

bool is_large(const complex_problem& p) { return planned(record_of(p)).solver() == "solve_problem_c2c_1d_large"; }

}  // namespace

TEST(Large, TakesLongPowersOfTwoByThreadCount) {
    for (int64_t n : {4096, 8192, 16384, 32768, 65536, 1 << 17, 1 << 18})
        for (int64_t nthreads : {0, 1, 2, 4})
            EXPECT_EQ(is_large(with_threads(n, nthreads)), n > (nthreads <= 1 ? 32768 : 4096))
                << n << " threads " << nthreads;
    EXPECT_FALSE(is_large({3 * 32768}));
    EXPECT_FALSE(is_large({1 << 16, -1, 2, 1}));
    EXPECT_FALSE(is_large({1 << 16, -1, 1, 2}));
    std::vector<fft_plan> others(5, record_of({1 << 16}));
    others[0].kind = kind_c2c_large_piece;
    others[1].split = split_arrays;
    others[2].howmany_rank = 1;
    others[2].howmany[0] = {2, 1 << 16, 1 << 16};
    others[3].rank = 2;
    others[3].dims[1] = {4, 1, 1};
    others[4].kind = kind_r2c;
    for (size_t i = 0; i < others.size(); ++i) EXPECT_FALSE(bool(planned(others[i], solve_problem_c2c_1d_large))) << i;
}

TEST(Large, HasItsToldStorageAndSubplans) {
    const struct {
        int64_t n, r, m, nthreads;
    } cases[] = {{65536, 256, 256, 1}, {1 << 17, 256, 512, 1}, {8192, 64, 128, 4}, {1 << 18, 512, 512, 2}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.n);
        const planned plan(record_of(with_threads(c.n, c.nthreads)));
        ASSERT_TRUE(bool(plan));
        EXPECT_EQ(plan.execution(), "execute_c2c_1d_large");
        EXPECT_EQ(plan->buffer_size, 16u * c.n);
        EXPECT_EQ(plan->aux_size, 8u * c.n);
        EXPECT_EQ(plan->aux_owned, 1u);
        ASSERT_EQ(plan->subplan_count, 2);
        const fft_plan &columns = *plan->subplans[0], &rows = *plan->subplans[1];
        EXPECT_EQ(columns.kind, uint32_t{kind_c2c_large_piece});
        EXPECT_EQ(columns.dims[0].n, c.r);
        EXPECT_EQ(columns.dims[0].is, c.m);
        EXPECT_EQ(columns.dims[0].os, c.m);
        EXPECT_EQ(columns.howmany[0].n, c.m);
        EXPECT_EQ(columns.howmany[0].is, 1);
        EXPECT_EQ(columns.howmany[0].os, 1);
        EXPECT_EQ(columns.aux, plan->aux);
        EXPECT_EQ(columns.aux_size, 8u * c.n);
        EXPECT_EQ(columns.aux_owned, 0u);
        EXPECT_EQ(columns.sign, -1);
        EXPECT_EQ(rows.kind, uint32_t{kind_c2c});
        EXPECT_EQ(rows.dims[0].n, c.m);
        EXPECT_EQ(rows.dims[0].is, 1);
        EXPECT_EQ(rows.dims[0].os, c.r);
        EXPECT_EQ(rows.howmany[0].n, c.r);
        EXPECT_EQ(rows.howmany[0].is, c.m);
        EXPECT_EQ(rows.howmany[0].os, 1);
        EXPECT_EQ(rows.sign, -1);
    }
}

// Four columns at a time stand together; every product of a power of two has full groups only.
TEST(Large, HasItsTwiddlesBitByBit) {
    for (int64_t sign : {-1, 1}) {
        complex_problem p = with_threads(8192, 2);
        p.sign = sign;
        const int64_t r = 64, m = 128;
        const planned plan(record_of(p));
        const float* table = static_cast<float*>(plan->aux);
        for (int64_t i = 0; i < m; ++i)
            for (int64_t j = 0; j < r; ++j) {
                float expected[2];
                twiddle_unit(sign * i * j, r * m, expected);
                EXPECT_EQ(memcmp(table + 2 * (4 * (i / 4 * r + j) + i % 4), expected, 8), 0) << i << " " << j;
            }
    }
}

TEST(Large, IsRightInBothDirections) {
    for (int64_t n : {8192, 65536, 1 << 17}) {
        if (is_emulated && n > 65536) continue;
        const sample expected(n);
        for (int64_t sign : {-1, 1})
            for (bool in_place : {false, true}) {
                complex_problem p = with_threads(n, n == 8192 ? 4 : 1);
                p.sign = sign;
                p.in_place = in_place;
                if (is_emulated && n > 8192 && (sign == 1) != in_place) continue;
                EXPECT_TRUE(computes(p, expected));
            }
    }
}

namespace {

using complexes = std::vector<std::complex<float>>;

// Output k of a forward transform by its sum, with roots from two tables of square-root length.
class single_outputs {
public:
    explicit single_outputs(int64_t n) : n_(n), steps_(int64_t{1} << 12), fine_(steps_), coarse_(n / steps_ + 1) {
        for (int64_t j = 0; j < steps_; ++j) fine_[j] = root(j);
        for (size_t j = 0; j < coarse_.size(); ++j) coarse_[j] = root(int64_t(j) * steps_);
    }
    reference::complex operator()(const complexes& x, int64_t k) const {
        double re = 0, im = 0;
        for (int64_t j = 0, jk = 0; j < n_; ++j, jk = (jk + k) & (n_ - 1)) {
            const reference::complex &a = coarse_[jk / steps_], &b = fine_[jk % steps_];
            const double c = a.real() * b.real() - a.imag() * b.imag(), s = a.real() * b.imag() + a.imag() * b.real();
            re += x[j].real() * c - x[j].imag() * s;
            im += x[j].real() * s + x[j].imag() * c;
        }
        return {re, im};
    }

private:
    reference::complex root(int64_t k) const { return std::polar(1.0, -2 * std::numbers::pi * double(k) / double(n_)); }

    int64_t n_, steps_;
    std::vector<reference::complex> fine_, coarse_;
};

void run(const complex_problem& p, complexes& in, complexes& out) {
    fft_plan record = record_of(p);
    record.in = reinterpret_cast<float*>(in.data());
    record.out = reinterpret_cast<float*>(out.data());
    const planned plan(record);
    ASSERT_TRUE(bool(plan)) << description(p, nullptr);
    plan->execute(plan.get(), record.in, record.out);
}

// Forward out of place: some outputs by their sums. Back in place: n times the input, all of it.
void there_and_back(int64_t n, int64_t threads_there, int64_t threads_back) {
    SCOPED_TRACE(std::to_string(n) + " threads " + std::to_string(threads_there) + " " + std::to_string(threads_back));
    complexes x = complex_noise(n, 5), spectrum(n);
    run(with_threads(n, threads_there), x, spectrum);
    const single_outputs output(n);
    const double limit = error_limit(n), typical = std::sqrt(double(n) / 6);  // parts in [-0.5, 0.5)
    for (int64_t i = 0; i < (n > 1 << 20 ? 3 : 5); ++i) {
        const int64_t k = i == 0 ? 0 : (i * n / 5 + 12347 * i) % n;
        EXPECT_LT(std::abs(reference::complex(spectrum[k]) - output(x, k)), 8 * limit * typical) << "output " << k;
    }
    complex_problem back = with_threads(n, threads_back);
    back.sign = 1;
    back.in_place = true;
    run(back, spectrum, spectrum);
    double error = 0, norm = 0;
    for (int64_t j = 0; j < n; ++j) {
        error += std::norm(reference::complex(spectrum[j]) / double(n) - reference::complex(x[j]));
        norm += std::norm(reference::complex(x[j]));
    }
    EXPECT_LT(std::sqrt(error / norm), 2 * limit);
}

}  // namespace

// With one thread and with several the rows that take a length differ.
TEST(Large, GivesTheInputAgainThereAndBack) {
    for (int64_t n = 4096; n <= (is_emulated ? 65536 : 1 << 24); n *= 2) {
        there_and_back(n, 1, 3);
        if (n <= (is_emulated ? 8192 : 1 << 20)) there_and_back(n, 3, 1);
    }
}

TEST(Large, MeasuredPlansCompute) {
    for (bool in_place : {false, true})
        for (int64_t sign : {-1, 1}) {
            complex_problem p = with_threads(8192, 2);
            p.sign = sign;
            p.in_place = in_place;
            p.flags = plan_flag_measured;
            EXPECT_TRUE(computes(p, solve_problem_c2c_1d_large));
        }
}
