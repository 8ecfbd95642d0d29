// SPDX-License-Identifier: Apache-2.0
// The same problem gives the same bits on one machine, whatever the run, the thread, the process and the alignment of
// the arrays; and what does change them.
#include "include/qfftf.h"
#include "tests/scratch/every_execution.h"
#include "tests/support/signals.h"
#include "tests/threads/support/start_program.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <thread>

namespace {

// By the bits: two zeros of different signs aren't the same, two equal NaN are.
uint64_t digest(uint64_t so_far, const floats& x) {
    for (const float v : x) so_far = (so_far ^ std::bit_cast<uint32_t>(v)) * 1099511628211u;  // as FNV-1a, by words
    return so_far;
}
uint64_t digest(const arrays& a) { return digest(digest(14695981039346656037u, a.in), a.out); }

// Of the plans that the rules make, and of all others where EVERY_ROW is set, which takes minutes. An upsampling plan
// is exact once (qfftf.h), so that its second execution has other bits.
void for_each_repeatable(const std::function<void(const planned_execution&)>& visit) {
    const auto unless_upsampling = [&](const planned_execution& e) {
        if (e.plan().kind != kind_upsampling_2d) visit(e);
    };
    if (getenv("EVERY_ROW")) return for_each_execution(unless_upsampling);
    for (const problem_case& problem : every_problem())
        if (const planned_execution e(problem, -1); e) unless_upsampling(e);
}

// Of one in eleven.
uint64_t digest_of_many() {
    uint64_t all = 0, number = 0;
    for_each_repeatable([&](const planned_execution& e) {
        if (number++ % 11 == 0) all = all * 31 + digest(e.result());
    });
    return all;
}

arrays result_on_another_thread(const planned_execution& e) {
    arrays result;
    std::thread([&] { result = e.result(); }).join();
    return result;
}

// Plans by the public calls, in place of records that name their row.
using complex_floats = qsl_fftf_complex*;
complex_floats as_complex(floats& x) { return reinterpret_cast<complex_floats>(x.data()); }

floats noise_of(size_t count) {
    uniform_noise noise(11);
    floats x(count);
    for (float& v : x) v = noise();
    return x;
}

floats executed(qsl_fftf_plan plan, floats in, size_t count) {
    floats out(count);
    EXPECT_NE(plan, nullptr);
    qsl_fftf_execute_dft(plan, as_complex(in), as_complex(out));
    qsl_fftf_destroy_plan(plan);
    return out;
}

}  // namespace

TEST(SameBits, ComeWhateverTheRunTheThreadAndTheAlignmentOfTheArrays) {
    int seen = 0;
    for_each_repeatable([&](const planned_execution& e) {
        ++seen;
        const uint64_t expected = digest(e.result());
        EXPECT_EQ(digest(e.result()), expected) << "another run: " << e.text();
        EXPECT_EQ(digest(result_on_another_thread(e)), expected) << "another thread: " << e.text();
        EXPECT_EQ(digest(e.result_behind(1)), expected) << "aligned to a float: " << e.text();
    });
    EXPECT_GT(seen, 200);
}

// Which has other addresses.
TEST(SameBits, ComeFromAnotherProcess) {
    const program_result other =
        start_program("DIGEST=1", std::filesystem::canonical("/proc/self/exe").string() + " --gtest_filter=None");
    EXPECT_EQ(other.out.substr(0, other.out.find('\n')), std::to_string(digest_of_many()));
}

TEST(SameBits, OfOneTransformComeFromEveryCallThatPlansIt) {
    for (const int n : {12, 64, 100, 1009}) {
        const floats x = noise_of(2 * size_t(n));
        floats in(x.size()), out(x.size());
        const auto a = as_complex(in), b = as_complex(out);
        const fft_iodim dim = {n, 1, 1};
        const fft_iodim64 dim64 = {n, 1, 1};
        const floats expected = executed(qsl_fftf_plan_dft_1d(n, a, b, -1, 0), x, x.size());
        for (qsl_fftf_plan plan :
             {qsl_fftf_plan_dft(1, &n, a, b, -1, 0),
              qsl_fftf_plan_many_dft(1, &n, 1, a, nullptr, 1, n, b, nullptr, 1, n, -1, 0),
              qsl_fftf_plan_guru_dft(1, &dim, 0, nullptr, a, b, -1, 0),
              qsl_fftf_plan_guru64_dft(1, &dim64, 0, nullptr, a, b, -1, 0), qsl_fftf_plan_dft_1d(n, nullptr, b, -1, 0)})
            EXPECT_EQ(digest(0, executed(plan, x, x.size())), digest(0, expected)) << n;
    }
}

// One transform of one dimension is cut into parts, not computed in another way.
TEST(SameBits, OfOneTransformOfOneDimensionComeWithAnyNumberOfThreads) {
    for (const int n : {64, 1000, 1009, 4096, 131072})
        for (const bool real : {false, true}) {
            const floats x = noise_of(size_t(n) * 2 + 2);
            floats in(x.size()), out(x.size());
            const auto plan = [&](int threads) {
                qsl_fftf_plan_with_nthreads(threads);
                qsl_fftf_plan made = real ? qsl_fftf_plan_dft_r2c_1d(n, in.data(), as_complex(out), 0)
                                          : qsl_fftf_plan_dft_1d(n, as_complex(in), as_complex(out), -1, 0);
                qsl_fftf_plan_with_nthreads(1);
                return made;
            };
            const uint64_t expected = digest(0, executed(plan(1), x, x.size()));
            for (const int threads : {2, 4})
                EXPECT_EQ(digest(0, executed(plan(threads), x, x.size())), expected)
                    << (real ? "r2c " : "c2c ") << n << " by " << threads;
        }
}

namespace {

// Whether each transform of a batch, one after the other, has the bits that it has alone.
bool batch_is_as_alone(int n, int howmany, int threads) {
    const size_t one = 2 * size_t(n);
    const floats x = noise_of(one * size_t(howmany));
    floats in(x.size()), out(x.size());
    const auto a = as_complex(in), b = as_complex(out);
    qsl_fftf_plan_with_nthreads(threads);
    qsl_fftf_plan batch = qsl_fftf_plan_many_dft(1, &n, howmany, a, nullptr, 1, n, b, nullptr, 1, n, -1, 0);
    qsl_fftf_plan_with_nthreads(1);
    const floats together = executed(batch, x, x.size());
    for (size_t t = 0; t < size_t(howmany); ++t) {
        const floats alone =
            executed(qsl_fftf_plan_dft_1d(n, a, b, -1, 0), floats(&x[t * one], &x[t * one] + one), one);
        if (memcmp(alone.data(), &together[t * one], one * sizeof(float)) != 0) return false;
    }
    return true;
}

}  // namespace

// Lengths that have a kernel of their own are computed side by side, by kernels that round in another order; the others
// one by one. docs/user/accuracy.md says so.
TEST(SameBits, OfComplexRowsAreThoseOfASingleOneWhereTheLengthHasNoKernel) {
    for (const int threads : {1, 3})
        for (const int n : {22, 25, 40, 66, 100, 1009, 1024})
            for (const int howmany : {2, 5})
                EXPECT_TRUE(batch_is_as_alone(n, howmany, threads)) << howmany << " of " << n;
    int others = 0;
    for (const int n : {3, 8, 13, 16, 31, 64}) others += !batch_is_as_alone(n, 16, 1);
    EXPECT_GT(others, 0) << "all rows are as alone now: tell it in the page";
}

// Not a test of bits, but of the same plans.
TEST(PlanningByTheRules, LeavesTheArraysAlone) {
    for (const problem_case& problem : every_problem())
        if (const planned_execution e(problem, -1); e) {
            EXPECT_EQ(digest(e.planned_on()), digest(e.before())) << e.text();
        }
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (getenv("DIGEST")) {
        printf("%llu\n", static_cast<unsigned long long>(digest_of_many()));
        return 0;
    }
    return RUN_ALL_TESTS();
}
