// SPDX-License-Identifier: Apache-2.0
// Lengths whose tables fit into no memory, or not into this machine's: a plan call looks for the memory first, gives
// null and is soon back, whatever the length is a product of.
#include <gtest/gtest.h>
#include <unistd.h>

#include <ctime>
#include <functional>
#include <string>

#include "record/fft_plan.h"
#include "tests/support/emulated.h"
#include "tests/support/guru_calls.h"

namespace {

using call = guru64_calls;
using triple = fft_iodim64;

constexpr double longest_seconds = is_emulated ? 2.0 : 0.5;

float arrays[2][4];
float *const in = arrays[0], *const out = arrays[1];
qsl_fftf_complex* complex_of(float* x) { return reinterpret_cast<qsl_fftf_complex*>(x); }

double seconds_of(const std::function<qsl_fftf_plan()>& plan_call, bool& planned) {
    const clock_t start = clock();
    qsl_fftf_plan plan = plan_call();
    const double seconds = static_cast<double>(clock() - start) / CLOCKS_PER_SEC;
    planned = plan != nullptr;
    qsl_fftf_destroy_plan(plan);
    return seconds;
}

void expect_soon_null(const std::string& what, const std::function<qsl_fftf_plan()>& plan_call) {
    bool planned = false;
    const double seconds = seconds_of(plan_call, planned);
    EXPECT_FALSE(planned) << what;
    EXPECT_LT(seconds, longest_seconds) << what;
}

// Every kind of problem with one dimension of this length, alone, in batches, and in front of and behind others.
void expect_every_call_refuses(int64_t n, unsigned flags) {
    const triple alone[] = {{n, 1, 1}}, strided[] = {{n, 2, 3}}, plane[] = {{3, n, n}, {n, 1, 1}};
    const triple columns[] = {{n, 3, 3}, {3, 1, 1}};
    const triple none[] = {{1, 1, 1}}, many[] = {{7, 1, 1}}, loops[] = {{2, 1, 1}, {3, 2, 2}, {2, 6, 6}, {3, 12, 12}};
    struct layout {
        const char* name;
        int rank;
        const triple* dims;
        int loops;
        const triple* batch;
    };
    const layout layouts[] = {{"alone", 1, alone, 0, none},     {"strided", 1, strided, 0, none},
                              {"batch", 1, alone, 1, many},     {"loops", 1, strided, 4, loops},
                              {"plane", 2, plane, 0, none},     {"columns", 2, columns, 1, many},
                              {"columns", 2, columns, 4, loops}};
    for (const layout& l : layouts) {
        const std::string what = std::string(l.name) + " of " + std::to_string(n) + " flags " + std::to_string(flags);
        for (const int sign : {-1, 1})
            expect_soon_null("c2c " + what, [&] {
                return call::dft(l.rank, l.dims, l.loops, l.batch, complex_of(in), complex_of(out), sign, flags);
            });
        expect_soon_null("r2c " + what,
                         [&] { return call::r2c(l.rank, l.dims, l.loops, l.batch, in, complex_of(out), flags); });
        expect_soon_null("c2r " + what,
                         [&] { return call::c2r(l.rank, l.dims, l.loops, l.batch, complex_of(in), out, flags); });
        expect_soon_null("split " + what, [&] {
            return call::split_dft(l.rank, l.dims, l.loops, l.batch, in, in + 1, out, out + 1, flags);
        });
        for (int kind = 0; kind <= 10; ++kind) {
            const qsl_fftf_r2r_kind kinds[] = {static_cast<qsl_fftf_r2r_kind>(kind),
                                               static_cast<qsl_fftf_r2r_kind>(kind)};
            expect_soon_null("r2r " + std::to_string(kind) + " " + what,
                             [&] { return call::r2r(l.rank, l.dims, l.loops, l.batch, in, out, kinds, flags); });
        }
    }
}

uint64_t memory_bytes() {
    return static_cast<uint64_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<uint64_t>(sysconf(_SC_PAGESIZE));
}

bool has_kernel_factor(int64_t n) {
    for (const int64_t prime : {2, 3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37})
        if (n % prime == 0) return true;
    return false;
}

}  // namespace

TEST(HostileLengths, BeyondAnyMemoryAreRefusedAtOnce) {
    const int64_t two_to_46 = int64_t{1} << 46;
    for (const int64_t n : {
             two_to_46,                                      // smooth
             two_to_46 - 21,                                 // next to it
             int64_t{70368744177643},                        // primes
             int64_t{100000000000031},                       //
             int64_t{5003} * 5009 * 1000003,                 // products of large primes
             int64_t{4999} << 33,                            //
             int64_t{37} * 37 * 37 * 37 * 37 * 37 * 37 * 37  // many kernel primes
         })
        expect_every_call_refuses(n, 0);
    expect_every_call_refuses(100000000000031, plan_flag_measured);
}

// Whether these fit or not, on whatever machine: planning doesn't search for what it can compute.
TEST(HostileLengths, SearchNothingSlowly) {
    if (memory_bytes() > (uint64_t{1} << 40)) GTEST_SKIP() << "there is memory for their tables";
    for (const int64_t n : {int64_t{100000000003}, int64_t{99999999977}, int64_t{2147483647} * 47})
        for (const int sign : {-1, 1}) {
            const triple dims[] = {{n, 1, 1}};
            expect_soon_null("c2c " + std::to_string(n),
                             [&] { return call::dft(1, dims, 0, nullptr, complex_of(in), complex_of(out), sign, 0); });
        }
}

// Each table of such a transform would fit for itself.
TEST(HostileLengths, WhoseTablesDoNotFitTogetherAreRefused) {
    const auto bytes = static_cast<int64_t>(memory_bytes());
    int64_t no_kernel = bytes / 60, power = 1 << 20;
    while (has_kernel_factor(no_kernel)) ++no_kernel;
    while (power < bytes / 23) power *= 2;
    for (const int64_t n : {no_kernel, power}) {
        const triple dims[] = {{n, 1, 1}}, plane[] = {{3, n, n}, {n, 1, 1}};
        const triple loops[] = {{2, 1, 1}, {3, 2, 2}, {2, 6, 6}, {3, 12, 12}};
        for (const int loop_count : {0, 1, 4})
            for (const bool is_plane : {false, true})
                expect_soon_null("c2c " + std::to_string(n) + " in " + std::to_string(loop_count) + " loops", [&] {
                    return call::dft(is_plane ? 2 : 1, is_plane ? plane : dims, loop_count, loops, complex_of(in),
                                     complex_of(out), -1, 0);
                });
    }
}
