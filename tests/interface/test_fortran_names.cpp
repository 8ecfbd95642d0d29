// SPDX-License-Identifier: Apache-2.0
// Every Fortran name does what its plain call does. The type of a name follows from that of the call: integers and
// plans by address, all else as it is.
#include "tests/interface/captured_plan.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace {

template <class T>
using by_address = std::conditional_t<std::is_integral_v<T> || std::is_same_v<T, qsl_fftf_plan>, const T*, T>;

template <class Function>
struct twin;
template <class Result, class... P>
struct twin<Result(P...)> {
    using type = Result(by_address<P>...);
};

template <class T>
by_address<T> pass(const T& value) {
    if constexpr (std::is_same_v<by_address<T>, T>)
        return value;
    else
        return &value;
}

template <class T>
struct same {
    using type = T;
};

// Both calls must hand the same record to the planner; the record isn't the one of a refused call.
template <class... P>
void expect_same_plan(qsl_fftf_plan (*plain)(P...), qsl_fftf_plan (*fortran)(by_address<P>...),
                      typename same<P>::type... arguments) {
    const std::string expected = captured([&] { return plain(arguments...); });
    EXPECT_NE(expected, "null");
    EXPECT_EQ(captured([&] { return fortran(pass(arguments)...); }), expected);
}

std::vector<std::vector<const void*>> calls;
void record(fft_plan* plan, float* in, float* out) { calls.push_back({plan, in, out}); }
void record_split(fft_plan* plan, float* a, float* b, float* c, float* d) { calls.push_back({plan, a, b, c, d}); }

// Both calls must reach the plan's function in the same way.
template <class... P>
void expect_same_run(void (*plain)(P...), void (*fortran)(by_address<P>...), typename same<P>::type... arguments) {
    calls.clear();
    plain(arguments...);
    fortran(pass(arguments)...);
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0], calls[1]);
}

qsl_fftf_complex ca[4], cb[4];
float a[4], b[4], c[4], d[4];
const int n[] = {2, 3, 4, 5};
const int embed[] = {0, 7, 8, 9};
const uint32_t kinds[] = {3, 4, 5, 6};
const fft_iodim dims[] = {{4, 100, 200}, {3, 7, 8}};
const fft_iodim batch[] = {{5, 5000, 6000}};
const fft_iodim64 dims64[] = {{4, 100, 200}, {3, 7, 8}};
const fft_iodim64 batch64[] = {{5, 5000, 6000}};

}  // namespace

#define TWIN(name) extern "C" twin<decltype(name)>::type name##_;
#define SAME_PLAN(name, ...) expect_same_plan(name, name##_, __VA_ARGS__)
#define SAME_RUN(name, ...) expect_same_run(name, name##_, __VA_ARGS__)

TWIN(qsl_fftf_plan_dft_1d)
TWIN(qsl_fftf_plan_dft_2d)
TWIN(qsl_fftf_plan_dft_3d)
TWIN(qsl_fftf_plan_dft)
TWIN(qsl_fftf_plan_dft_r2c_1d)
TWIN(qsl_fftf_plan_dft_r2c_2d)
TWIN(qsl_fftf_plan_dft_r2c_3d)
TWIN(qsl_fftf_plan_dft_r2c)
TWIN(qsl_fftf_plan_dft_c2r_1d)
TWIN(qsl_fftf_plan_dft_c2r_2d)
TWIN(qsl_fftf_plan_dft_c2r_3d)
TWIN(qsl_fftf_plan_dft_c2r)
TWIN(qsl_fftf_plan_r2r_1d)
TWIN(qsl_fftf_plan_r2r_2d)
TWIN(qsl_fftf_plan_r2r_3d)
TWIN(qsl_fftf_plan_r2r)
TWIN(qsl_fftf_plan_many_dft)
TWIN(qsl_fftf_plan_many_dft_r2c)
TWIN(qsl_fftf_plan_many_dft_c2r)
TWIN(qsl_fftf_plan_many_r2r)
TWIN(qsl_fftf_plan_guru_dft)
TWIN(qsl_fftf_plan_guru_dft_r2c)
TWIN(qsl_fftf_plan_guru_dft_c2r)
TWIN(qsl_fftf_plan_guru_r2r)
TWIN(qsl_fftf_plan_guru_split_dft)
TWIN(qsl_fftf_plan_guru_split_dft_r2c)
TWIN(qsl_fftf_plan_guru_split_dft_c2r)
TWIN(qsl_fftf_plan_guru64_dft)
TWIN(qsl_fftf_plan_guru64_dft_r2c)
TWIN(qsl_fftf_plan_guru64_dft_c2r)
TWIN(qsl_fftf_plan_guru64_r2r)
TWIN(qsl_fftf_plan_guru64_split_dft)
TWIN(qsl_fftf_plan_guru64_split_dft_r2c)
TWIN(qsl_fftf_plan_guru64_split_dft_c2r)
TWIN(qsl_fftf_execute)
TWIN(qsl_fftf_execute_dft)
TWIN(qsl_fftf_execute_dft_r2c)
TWIN(qsl_fftf_execute_dft_c2r)
TWIN(qsl_fftf_execute_r2r)
TWIN(qsl_fftf_execute_split_dft)
TWIN(qsl_fftf_execute_split_dft_r2c)
TWIN(qsl_fftf_execute_split_dft_c2r)
TWIN(qsl_fftf_destroy_plan)
TWIN(qsl_fftf_malloc)
TWIN(qsl_fftf_free)
TWIN(qsl_fftf_init_threads)
TWIN(qsl_fftf_cleanup_threads)
TWIN(qsl_fftf_plan_with_nthreads)

TEST(FortranNames, MakeBasicPlans) {
    SAME_PLAN(qsl_fftf_plan_dft_1d, 8, ca, cb, -1, 32u);
    SAME_PLAN(qsl_fftf_plan_dft_2d, 8, 9, ca, cb, 1, 0u);
    SAME_PLAN(qsl_fftf_plan_dft_3d, 8, 9, 10, ca, cb, -1, 0u);
    SAME_PLAN(qsl_fftf_plan_dft, 3, n, ca, cb, -1, 0u);
    SAME_PLAN(qsl_fftf_plan_dft_r2c_1d, 8, a, cb, 32u);
    SAME_PLAN(qsl_fftf_plan_dft_r2c_2d, 8, 9, a, cb, 0u);
    SAME_PLAN(qsl_fftf_plan_dft_r2c_3d, 8, 9, 10, a, cb, 0u);
    SAME_PLAN(qsl_fftf_plan_dft_r2c, 3, n, a, cb, 0u);
    SAME_PLAN(qsl_fftf_plan_dft_c2r_1d, 8, ca, b, 32u);
    SAME_PLAN(qsl_fftf_plan_dft_c2r_2d, 8, 9, ca, b, 0u);
    SAME_PLAN(qsl_fftf_plan_dft_c2r_3d, 8, 9, 10, ca, b, 0u);
    SAME_PLAN(qsl_fftf_plan_dft_c2r, 3, n, ca, b, 0u);
    SAME_PLAN(qsl_fftf_plan_r2r_1d, 8, a, b, 7u, 32u);
    SAME_PLAN(qsl_fftf_plan_r2r_2d, 8, 9, a, b, 7u, 8u, 0u);
    SAME_PLAN(qsl_fftf_plan_r2r_3d, 8, 9, 10, a, b, 7u, 8u, 9u, 0u);
    SAME_PLAN(qsl_fftf_plan_r2r, 3, n, a, b, kinds, 0u);
}

TEST(FortranNames, MakeManyPlans) {
    SAME_PLAN(qsl_fftf_plan_many_dft, 3, n, 6, ca, embed, 2, 1000, cb, nullptr, 3, 1100, 1, 32u);
    SAME_PLAN(qsl_fftf_plan_many_dft_r2c, 3, n, 6, a, nullptr, 2, 1000, cb, embed, 3, 1100, 32u);
    SAME_PLAN(qsl_fftf_plan_many_dft_c2r, 3, n, 6, ca, embed, 2, 1000, b, nullptr, 3, 1100, 32u);
    SAME_PLAN(qsl_fftf_plan_many_r2r, 3, n, 6, a, embed, 2, 1000, b, nullptr, 3, 1100, kinds, 32u);
}

TEST(FortranNames, MakeGuruPlans) {
    SAME_PLAN(qsl_fftf_plan_guru_dft, 2, dims, 1, batch, ca, cb, 7, 32u);
    SAME_PLAN(qsl_fftf_plan_guru_dft_r2c, 2, dims, 1, batch, a, cb, 32u);
    SAME_PLAN(qsl_fftf_plan_guru_dft_c2r, 2, dims, 1, batch, ca, b, 32u);
    SAME_PLAN(qsl_fftf_plan_guru_r2r, 2, dims, 1, batch, a, b, kinds, 32u);
    SAME_PLAN(qsl_fftf_plan_guru_split_dft, 2, dims, 1, batch, a, b, c, d, 32u);
    SAME_PLAN(qsl_fftf_plan_guru_split_dft_r2c, 2, dims, 1, batch, a, b, c, 32u);
    SAME_PLAN(qsl_fftf_plan_guru_split_dft_c2r, 2, dims, 1, batch, a, b, c, 32u);
    SAME_PLAN(qsl_fftf_plan_guru64_dft, 2, dims64, 1, batch64, ca, cb, 7, 32u);
    SAME_PLAN(qsl_fftf_plan_guru64_dft_r2c, 2, dims64, 1, batch64, a, cb, 32u);
    SAME_PLAN(qsl_fftf_plan_guru64_dft_c2r, 2, dims64, 1, batch64, ca, b, 32u);
    SAME_PLAN(qsl_fftf_plan_guru64_r2r, 2, dims64, 1, batch64, a, b, kinds, 32u);
    SAME_PLAN(qsl_fftf_plan_guru64_split_dft, 2, dims64, 1, batch64, a, b, c, d, 32u);
    SAME_PLAN(qsl_fftf_plan_guru64_split_dft_r2c, 2, dims64, 1, batch64, a, b, c, 32u);
    SAME_PLAN(qsl_fftf_plan_guru64_split_dft_c2r, 2, dims64, 1, batch64, a, b, c, 32u);
}

TEST(FortranNames, ExecutePlans) {
    fft_plan plan = {};
    plan.in = a;
    plan.out = b;
    plan.execute = record;
    plan.execute_split = record_split;
    SAME_RUN(qsl_fftf_execute, &plan);
    SAME_RUN(qsl_fftf_execute_dft, &plan, ca, cb);
    SAME_RUN(qsl_fftf_execute_dft_r2c, &plan, c, cb);
    SAME_RUN(qsl_fftf_execute_dft_c2r, &plan, ca, d);
    SAME_RUN(qsl_fftf_execute_r2r, &plan, c, d);
    SAME_RUN(qsl_fftf_execute_split_dft, &plan, a, b, c, d);
    SAME_RUN(qsl_fftf_execute_split_dft_r2c, &plan, a, c, d);
    SAME_RUN(qsl_fftf_execute_split_dft_c2r, &plan, a, b, d);
}

TEST(FortranNames, DoTheHousekeeping) {
    const qsl_fftf_plan none = nullptr;
    qsl_fftf_destroy_plan_(&none);
    fake::clear();
    fake::rows[0] = fake::accept;
    const qsl_fftf_plan plan = qsl_fftf_plan_dft_1d(8, ca, cb, -1, 0);
    ASSERT_NE(plan, nullptr);
    qsl_fftf_destroy_plan_(&plan);

    const uint64_t size = 100;
    char* memory = static_cast<char*>(qsl_fftf_malloc_(&size));
    ASSERT_NE(memory, nullptr);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(memory) % 64, 0u);
    for (uint64_t i = 0; i < size; ++i) memory[i] = 1;
    qsl_fftf_free_(memory);

    EXPECT_EQ(qsl_fftf_init_threads_(), 1);
    const int threads = 5;
    qsl_fftf_plan_with_nthreads_(&threads);
    EXPECT_NE(captured([] { return qsl_fftf_plan_dft_1d(8, ca, cb, -1, 0); }).find("threads 5"), std::string::npos);
    qsl_fftf_cleanup_threads_();
}
