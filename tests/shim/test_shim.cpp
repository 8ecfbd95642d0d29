// SPDX-License-Identifier: Apache-2.0
// The shim by itself, through the names that a program links.
#include "shim/include/fftw3.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <functional>
#include <numbers>
#include <regex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>
#include <sys/time.h>

namespace {

std::atomic<int> looks_at_the_clock{0};

}  // namespace

// The library looks at this clock when a plan call begins, and then only to measure.
extern "C" int gettimeofday(timeval* now, void*) noexcept {
    ++looks_at_the_clock;
    timespec t;
    clock_gettime(CLOCK_REALTIME, &t);
    *now = {t.tv_sec, t.tv_nsec / 1000};
    return 0;
}

namespace {

struct numbers {
    std::vector<float> floats;
    explicit numbers(size_t complex_count, unsigned seed = 0) : floats(2 * complex_count) {
        for (size_t i = 0; i < floats.size(); ++i)
            floats[i] = seed ? float((i * 7919 + seed * 104729) % 2003) / 1000 - 1 : 0;
    }
    operator fftwf_complex*() { return reinterpret_cast<fftwf_complex*>(floats.data()); }
    operator float*() { return floats.data(); }
};

// One coefficient of a contiguous forward transform, in double precision.
void expect_coefficient(const numbers& in, const numbers& out, size_t n, size_t k, size_t offset = 0) {
    double re = 0, im = 0;
    for (size_t j = 0; j < n; ++j) {
        const double angle = -2 * std::numbers::pi * double(j * k % n) / double(n);
        const double x = in.floats[2 * (offset + j)], y = in.floats[2 * (offset + j) + 1];
        re += x * cos(angle) - y * sin(angle);
        im += x * sin(angle) + y * cos(angle);
    }
    EXPECT_NEAR(out.floats[2 * (offset + k)], re, 1e-4 * std::sqrt(double(n))) << "n " << n << " k " << k;
    EXPECT_NEAR(out.floats[2 * (offset + k) + 1], im, 1e-4 * std::sqrt(double(n))) << "n " << n << " k " << k;
}

// The names between "global:" and "local:" of a version script.
std::set<std::string> listed_names() {
    std::ifstream file(SHIM_EXPORTS);
    std::set<std::string> names;
    const std::regex name("([a-z0-9_]+);");
    for (std::string line; std::getline(file, line);)
        for (std::sregex_iterator i(line.begin(), line.end(), name), end; i != end; ++i) names.insert((*i)[1]);
    return names;
}

std::set<std::string> declared_names() {
    std::ifstream file(SHIM_HEADER);
    std::set<std::string> names;
    const std::regex name("\\b(fftwf_[a-z0-9_]+)(\\(|\\[\\];)");
    for (std::string line; std::getline(file, line);)
        if (std::smatch match; std::regex_search(line, match, name)) names.insert(match[1]);
    return names;
}

}  // namespace

TEST(ShimNames, EveryDeclaredNameIsListedAndEveryListedNameIsThere) {
    const auto listed = listed_names(), declared = declared_names();
    ASSERT_GE(declared.size(), 75u);
    for (const std::string& name : declared) EXPECT_TRUE(listed.contains(name)) << name;
    for (const std::string& name : listed) EXPECT_TRUE(dlsym(RTLD_DEFAULT, name.c_str())) << name;
}

TEST(ShimPlans, BasicCallsOfOneTwoAndThreeDimensionsAgreeWithTheGeneralOne) {
    const int sizes[] = {6, 10, 9};
    for (int rank = 1; rank <= 3; ++rank) {
        numbers in(600, 1), general(600), basic(600);
        fftwf_plan p = fftwf_plan_dft(rank, sizes, in, general, FFTW_FORWARD, FFTW_ESTIMATE);
        fftwf_plan q = rank == 1   ? fftwf_plan_dft_1d(6, in, basic, FFTW_FORWARD, FFTW_ESTIMATE)
                       : rank == 2 ? fftwf_plan_dft_2d(6, 10, in, basic, FFTW_FORWARD, FFTW_ESTIMATE)
                                   : fftwf_plan_dft_3d(6, 10, 9, in, basic, FFTW_FORWARD, FFTW_ESTIMATE);
        ASSERT_TRUE(p && q);
        fftwf_execute(p);
        fftwf_execute(q);
        EXPECT_EQ(general.floats, basic.floats) << rank;
        if (rank == 1) expect_coefficient(in, basic, 6, 5);
        fftwf_destroy_plan(p);
        fftwf_destroy_plan(q);
    }
}

TEST(ShimPlans, RealCallsGoThereAndBackInEveryRank) {
    const int sizes[] = {6, 10, 9};
    const auto there_and_back = [](int rank, fftwf_plan there, fftwf_plan back, numbers& in, numbers& result,
                                   int points) {
        ASSERT_TRUE(there && back) << rank;
        const std::vector<float> kept = in.floats;
        fftwf_execute(there);
        fftwf_execute(back);
        for (int i = 0; i < points; ++i)
            ASSERT_NEAR(result.floats[i], kept[i] * points, 1e-3 * points) << rank << ' ' << i;
        fftwf_destroy_plan(there);
        fftwf_destroy_plan(back);
    };
    numbers in(600, 2), half(600), result(600);
    const unsigned E = FFTW_ESTIMATE;
    there_and_back(1, fftwf_plan_dft_r2c_1d(6, in, half, E), fftwf_plan_dft_c2r_1d(6, half, result, E), in, result, 6);
    there_and_back(2, fftwf_plan_dft_r2c_2d(6, 10, in, half, E), fftwf_plan_dft_c2r_2d(6, 10, half, result, E), in,
                   result, 60);
    there_and_back(3, fftwf_plan_dft_r2c_3d(6, 10, 9, in, half, E), fftwf_plan_dft_c2r_3d(6, 10, 9, half, result, E),
                   in, result, 540);
    there_and_back(0, fftwf_plan_dft_r2c(3, sizes, in, half, E), fftwf_plan_dft_c2r(3, sizes, half, result, E), in,
                   result, 540);
    const fftwf_r2r_kind to[] = {FFTW_R2HC, FFTW_R2HC, FFTW_DHT}, from[] = {FFTW_HC2R, FFTW_HC2R, FFTW_DHT};
    there_and_back(-1, fftwf_plan_r2r_1d(6, in, half, to[0], E), fftwf_plan_r2r_1d(6, half, result, from[0], E), in,
                   result, 6);
    there_and_back(-2, fftwf_plan_r2r_2d(6, 10, in, half, to[0], to[1], E),
                   fftwf_plan_r2r_2d(6, 10, half, result, from[0], from[1], E), in, result, 60);
    there_and_back(-3, fftwf_plan_r2r_3d(6, 10, 9, in, half, to[0], to[1], to[2], E),
                   fftwf_plan_r2r_3d(6, 10, 9, half, result, from[0], from[1], from[2], E), in, result, 540);
}

TEST(ShimPlans, SplitCallsOf32BitsAgreeWithInterleavedOnes) {
    constexpr int n = 60;
    numbers in(n, 3), out(n), re(n), im(n);
    float in_re[n], in_im[n];
    for (int i = 0; i < n; ++i) in_re[i] = in.floats[2 * i], in_im[i] = in.floats[2 * i + 1];
    const fftwf_iodim line = {n, 1, 1};
    fftwf_plan p = fftwf_plan_guru_split_dft(1, &line, 0, nullptr, in_re, in_im, re, im, FFTW_ESTIMATE);
    fftwf_plan q = fftwf_plan_dft_1d(n, in, out, FFTW_FORWARD, FFTW_ESTIMATE);
    ASSERT_TRUE(p && q);
    fftwf_execute(p);
    fftwf_execute(q);
    for (int i = 0; i < n; ++i) {
        EXPECT_NEAR(re.floats[i], out.floats[2 * i], 1e-4) << i;
        EXPECT_NEAR(im.floats[i], out.floats[2 * i + 1], 1e-4) << i;
    }
    fftwf_destroy_plan(p);
    fftwf_destroy_plan(q);
    p = fftwf_plan_guru_split_dft_r2c(1, &line, 0, nullptr, in_re, re, im, FFTW_ESTIMATE);
    q = fftwf_plan_guru_split_dft_c2r(1, &line, 0, nullptr, re, im, in_im, FFTW_ESTIMATE);
    ASSERT_TRUE(p && q);
    fftwf_execute(p);
    fftwf_execute_split_dft_c2r(q, re, im, in_im);
    for (int i = 0; i < n; ++i) EXPECT_NEAR(in_im[i], in_re[i] * n, 1e-3) << i;
    fftwf_destroy_plan(p);
    fftwf_destroy_plan(q);
}

// The two sides begin at different addresses then: to the library they would be two arrays that overlap.
TEST(ShimPlans, AreRightInPlaceFromOtherEndsOfTwoLayouts) {
    numbers apart(1300, 8), result(1300), in_place = apart;
    const fftwf_iodim line = {5, 1, 1}, rows = {60, -20, -10};
    const auto plan = [&](numbers& in, numbers& out) {
        return fftwf_plan_guru_dft(1, &line, 1, &rows, static_cast<fftwf_complex*>(in) + 1200,
                                   static_cast<fftwf_complex*>(out) + 1200, FFTW_FORWARD, FFTW_ESTIMATE);
    };
    fftwf_plan p = plan(apart, result), q = plan(in_place, in_place);
    ASSERT_TRUE(p && q);
    fftwf_execute(p);
    fftwf_execute(q);
    for (int row = 0; row < 60; ++row)
        for (int i = 0; i < 10; ++i) {
            const int at = 2 * (1200 - 10 * row) + i;
            EXPECT_NEAR(in_place.floats[at], result.floats[at], 1e-5) << row << ' ' << i;
        }
    fftwf_destroy_plan(p);
    fftwf_destroy_plan(q);
}

TEST(ShimPlans, MeasuringLeavesTheArraysAloneAndItsPlanIsRight) {
    for (unsigned flags : {FFTW_MEASURE, FFTW_PATIENT, FFTW_EXHAUSTIVE, FFTW_PATIENT | FFTW_DESTROY_INPUT}) {
        numbers in(96, 4), out(96, 5);
        const auto in_before = in.floats, out_before = out.floats;
        fftwf_plan p = fftwf_plan_dft_1d(96, in, out, FFTW_FORWARD, flags);
        ASSERT_TRUE(p);
        EXPECT_EQ(in.floats, in_before) << flags;
        EXPECT_EQ(out.floats, out_before) << flags;
        fftwf_execute(p);
        expect_coefficient(in, out, 96, 17);
        fftwf_destroy_plan(p);
    }
}

bool is_measured_with(unsigned flags) {
    numbers in(96, 4), out(96);
    looks_at_the_clock = 0;
    fftwf_plan p = fftwf_plan_dft_1d(96, in, out, FFTW_FORWARD, flags);
    EXPECT_TRUE(p) << flags;
    fftwf_destroy_plan(p);
    return looks_at_the_clock > 1;
}

// FFTW_MEASURE is 0, and so is in every combination of flags; FFTW_PATIENT isn't lost beside other bits.
TEST(ShimFlags, PatienceMeasuresAndMeasureDoesWhereTheEnvironmentSaysSo) {
    ASSERT_EQ(FFTW_MEASURE, 0);
    const unsigned others[] = {0,
                               FFTW_DESTROY_INPUT,
                               FFTW_UNALIGNED,
                               FFTW_PRESERVE_INPUT,
                               FFTW_CONSERVE_MEMORY,
                               FFTW_DESTROY_INPUT | FFTW_UNALIGNED};
    const auto expect = [&](unsigned care, bool measured) {
        for (unsigned more : others) EXPECT_EQ(is_measured_with(care | more), measured) << (care | more);
    };
    unsetenv("QFFTF_FFTW3_MEASURE");
    expect(FFTW_ESTIMATE, false);
    expect(FFTW_MEASURE, false);
    expect(FFTW_PATIENT, true);
    expect(FFTW_EXHAUSTIVE, true);
    expect(FFTW_ESTIMATE | FFTW_PATIENT, false);
    setenv("QFFTF_FFTW3_MEASURE", "1", 1);
    expect(FFTW_ESTIMATE, false);
    expect(FFTW_MEASURE, true);
    expect(FFTW_PATIENT, true);
    setenv("QFFTF_FFTW3_MEASURE", "0", 1);
    expect(FFTW_MEASURE, false);
    unsetenv("QFFTF_FFTW3_MEASURE");
}

TEST(ShimFlags, NoTimeForbidsMeasuringAndANegativeLimitIsNone) {
    fftwf_set_timelimit(0);
    EXPECT_FALSE(is_measured_with(FFTW_PATIENT));
    EXPECT_FALSE(is_measured_with(FFTW_EXHAUSTIVE));
    fftwf_set_timelimit(10);
    EXPECT_TRUE(is_measured_with(FFTW_PATIENT));
    fftwf_set_timelimit(0);
    fftwf_set_timelimit(FFTW_NO_TIMELIMIT);
    EXPECT_TRUE(is_measured_with(FFTW_PATIENT));
}

// A layout that goes through compact storage and one that doesn't.
std::vector<fftwf_plan> plans_to_share(numbers& in, numbers& out) {
    fftwf_iodim64 line = {1024, 1, 1}, rows = {2, 1024, 1024}, mixed = {2, -1024, 1024};
    fftwf_complex *from = in, *to = out;
    return {fftwf_plan_guru64_dft(1, &line, 1, &rows, from, to, FFTW_FORWARD, FFTW_ESTIMATE),
            fftwf_plan_guru64_dft(1, &line, 1, &mixed, from + 1024, to, FFTW_FORWARD, FFTW_ESTIMATE)};
}

void share(const std::function<void()>& first_on_each_thread, int threads, int rounds) {
    numbers in(2048), out(2048);
    const std::vector<fftwf_plan> plans = plans_to_share(in, out);
    ASSERT_TRUE(plans[0] && plans[1]);
    std::vector<int> wrong(threads);
    const auto work = [&](int t) {
        first_on_each_thread();
        numbers x(2048, t + 1), y(2048), expected(2048);
        for (size_t k = 0; k < plans.size(); ++k) {
            fftwf_complex* from = k == 0 ? static_cast<fftwf_complex*>(x) : static_cast<fftwf_complex*>(x) + 1024;
            // Each row by itself, by a plan of this thread's own.
            fftwf_plan own = fftwf_plan_dft_1d(1024, x, expected, FFTW_FORWARD, FFTW_ESTIMATE);
            for (int row = 0; row < 2; ++row)
                fftwf_execute_dft(own, static_cast<fftwf_complex*>(x) + 1024 * (k == 0 ? row : 1 - row),
                                  static_cast<fftwf_complex*>(expected) + 1024 * row);
            fftwf_destroy_plan(own);
            for (int round = 0; round < rounds; ++round) {
                std::fill(y.floats.begin(), y.floats.end(), 0.0f);
                fftwf_execute_dft(plans[k], from, y);
                double difference = 0;
                for (size_t i = 0; i < y.floats.size(); ++i)
                    difference = std::max(difference, double(std::fabs(y.floats[i] - expected.floats[i])));
                wrong[t] += difference > 1e-3;
            }
        }
    };
    std::vector<std::thread> team;
    for (int t = 0; t < threads; ++t) team.emplace_back(work, t);
    for (std::thread& thread : team) thread.join();
    for (int t = 0; t < threads; ++t) EXPECT_EQ(wrong[t], 0) << "thread " << t << " of " << 2 * rounds << " executions";
    for (fftwf_plan p : plans) fftwf_destroy_plan(p);
}

TEST(ShimThreads, OnePlanIsExecutedByThreadsThatHaveAllPlanned) {
    share([] {}, 4, 200);
}

TEST(ShimThreads, PlanningIsSafeOnManyThreadsAtOnce) {
    std::vector<std::thread> team;
    std::vector<int> failed(4);
    for (int t = 0; t < 4; ++t)
        team.emplace_back([t, &failed] {
            numbers in(128, t + 1), out(128);
            for (int n = 2; n <= 128; ++n) {
                fftwf_plan p = fftwf_plan_dft_1d(n, in, out, FFTW_FORWARD, n % 2 ? FFTW_ESTIMATE : FFTW_MEASURE);
                if (!p) ++failed[t];
                fftwf_execute(p);
                fftwf_destroy_plan(p);
                if (n % 16 == 0) free(fftwf_export_wisdom_to_string());
                if (n % 50 == 0) fftwf_forget_wisdom();
            }
            expect_coefficient(in, out, 128, 77);
        });
    for (std::thread& thread : team) thread.join();
    EXPECT_EQ(failed, std::vector<int>(4));
}

// The library's own threads would spin; OpenMP's wait for some milliseconds and then sleep.
TEST(ShimThreads, IdleWorkersDontSpin) {
    fftwf_plan_with_nthreads(3);
    numbers in(64 * 64, 6), out(64 * 64);
    const int n[] = {64};
    fftwf_plan p = fftwf_plan_many_dft(1, n, 64, in, nullptr, 1, 64, out, nullptr, 1, 64, FFTW_FORWARD, FFTW_ESTIMATE);
    fftwf_plan_with_nthreads(1);
    ASSERT_TRUE(p);
    fftwf_execute(p);
    expect_coefficient(in, out, 64, 5, 64 * 63);
    fftwf_destroy_plan(p);
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    const clock_t before = clock();  // of all threads
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_LT(double(clock() - before) / CLOCKS_PER_SEC, 0.02);
}

TEST(ShimPlans, ANullPlanIsHarmless) {
    fftwf_execute(nullptr);
    fftwf_execute_dft(nullptr, nullptr, nullptr);
    fftwf_destroy_plan(nullptr);
    EXPECT_EQ(fftwf_estimate_cost(nullptr), 0);
    char* text = fftwf_sprint_plan(nullptr);
    EXPECT_STREQ(text, "");
    free(text);
}

TEST(ShimPlans, PrintingNamesTheMethodAndTheStagesAroundIt) {
    numbers in(64, 1), out(64);
    const fftwf_iodim64 dims = {8, 1, 1}, mixed = {3, -8, 8};
    fftwf_plan p = fftwf_plan_guru64_dft(1, &dims, 1, &mixed, static_cast<fftwf_complex*>(in) + 16, out, FFTW_FORWARD,
                                         FFTW_ESTIMATE);
    ASSERT_TRUE(p);
    char* text = fftwf_sprint_plan(p);
    EXPECT_TRUE(std::regex_match(text, std::regex("\\(gather-scatter\n  \\(.*8-x3 \".*\"[^]*\\)\\)"))) << text;
    free(text);
    fftwf_destroy_plan(p);
}
