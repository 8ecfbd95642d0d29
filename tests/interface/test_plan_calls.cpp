// SPDX-License-Identifier: Apache-2.0
// What each plan call writes into the record that reaches the planner, and what it does with the planner's answer.
#include "interface/plan_call.h"
#include "tests/interface/captured_plan.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

namespace {

qsl_fftf_complex complex_a[4], complex_b[4];
float float_a[8], float_b[8], float_c[8], float_d[8];

// The record of a call that goes through `describe`, from the fields that aren't zero.
struct expected : fft_plan {
    expected(uint32_t kind_, int64_t sign_, void* in_, void* out_, std::vector<fft_dim> dims_) : fft_plan{} {
        kind = kind_;
        sign = sign_;
        split = -1;
        nthreads = 1;
        in = static_cast<float*>(in_);
        out = static_cast<float*>(out_);
        rank = static_cast<int>(dims_.size());
        std::copy(dims_.begin(), dims_.end(), dims);
    }
    expected& batch(std::vector<fft_dim> dims_) {
        howmany_rank = static_cast<int>(dims_.size());
        std::copy(dims_.begin(), dims_.end(), howmany);
        return *this;
    }
    expected& r2r(std::vector<uint32_t> kinds) {
        std::copy(kinds.begin(), kinds.end(), r2r_kind);
        return *this;
    }
    expected& split_parts(void* in_im, void* out_im) {
        split = 1;
        in_imag = static_cast<float*>(in_im);
        out_imag = static_cast<float*>(out_im);
        return *this;
    }
};

template <class Call>
void expect_record(Call call, const expected& record) {
    EXPECT_EQ(captured(call), describe(record));
}

const int sizes[] = {2, 3, 4, 6};

}  // namespace

TEST(PlanCalls, FillBasicComplexRecords) {
    expect_record([] { return qsl_fftf_plan_dft_1d(8, complex_a, complex_b, -1, 0); },
                  {kind_c2c, -1, complex_a, complex_b, {{8, 1, 1}}});
    expect_record([] { return qsl_fftf_plan_dft_2d(2, 3, complex_a, complex_b, 1, 0); },
                  {kind_c2c, 1, complex_a, complex_b, {{2, 3, 3}, {3, 1, 1}}});
    expect_record([] { return qsl_fftf_plan_dft_3d(2, 3, 4, complex_a, complex_a, 1, 0); },
                  {kind_c2c, 1, complex_a, complex_a, {{2, 12, 12}, {3, 4, 4}, {4, 1, 1}}});
    expect_record([] { return qsl_fftf_plan_dft(4, sizes, complex_a, complex_b, -1, 0); },
                  {kind_c2c, -1, complex_a, complex_b, {{2, 72, 72}, {3, 24, 24}, {4, 6, 6}, {6, 1, 1}}});
}

TEST(PlanCalls, FillBasicRealToComplexRecords) {
    expect_record([] { return qsl_fftf_plan_dft_r2c_1d(8, float_a, complex_b, 0); },
                  {kind_r2c, -1, float_a, complex_b, {{8, 1, 1}}});
    expect_record([] { return qsl_fftf_plan_dft_r2c_2d(5, 8, float_a, complex_b, 0); },
                  {kind_r2c, -1, float_a, complex_b, {{5, 8, 5}, {8, 1, 1}}});
    expect_record(
        [] { return qsl_fftf_plan_dft_r2c_3d(2, 5, 8, float_a, reinterpret_cast<qsl_fftf_complex*>(float_a), 0); },
        {kind_r2c, -1, float_a, float_a, {{2, 50, 25}, {5, 10, 5}, {8, 1, 1}}});
    expect_record([] { return qsl_fftf_plan_dft_r2c(2, sizes, float_a, complex_b, 0); },
                  {kind_r2c, -1, float_a, complex_b, {{2, 3, 2}, {3, 1, 1}}});
}

TEST(PlanCalls, FillBasicComplexToRealRecords) {
    expect_record([] { return qsl_fftf_plan_dft_c2r_1d(8, complex_a, float_b, 0); },
                  {kind_c2r, 1, complex_a, float_b, {{8, 1, 1}}});
    expect_record([] { return qsl_fftf_plan_dft_c2r_2d(5, 8, complex_a, float_b, 0); },
                  {kind_c2r, 1, complex_a, float_b, {{5, 5, 8}, {8, 1, 1}}});
    expect_record([] { return qsl_fftf_plan_dft_c2r_3d(2, 5, 7, complex_a, reinterpret_cast<float*>(complex_a), 0); },
                  {kind_c2r, 1, complex_a, complex_a, {{2, 20, 40}, {5, 4, 8}, {7, 1, 1}}});
    expect_record([] { return qsl_fftf_plan_dft_c2r(2, sizes, complex_a, float_b, 0); },
                  {kind_c2r, 1, complex_a, float_b, {{2, 2, 3}, {3, 1, 1}}});
}

TEST(PlanCalls, FillBasicRealToRealRecords) {
    expect_record([] { return qsl_fftf_plan_r2r_1d(8, float_a, float_b, 7, 0); },
                  expected(kind_r2r, 0, float_a, float_b, {{8, 1, 1}}).r2r({7}));
    expect_record([] { return qsl_fftf_plan_r2r_2d(2, 3, float_a, float_b, 4, 5, 0); },
                  expected(kind_r2r, 0, float_a, float_b, {{2, 3, 3}, {3, 1, 1}}).r2r({4, 5}));
    expect_record([] { return qsl_fftf_plan_r2r_3d(2, 3, 4, float_a, float_b, 4, 5, 99, 0); },
                  expected(kind_r2r, 0, float_a, float_b, {{2, 12, 12}, {3, 4, 4}, {4, 1, 1}}).r2r({4, 5, 99}));
    const uint32_t kinds[] = {1, 2, 3, 4};
    expect_record([&] { return qsl_fftf_plan_r2r(2, sizes, float_a, float_b, kinds, 0); },
                  expected(kind_r2r, 0, float_a, float_b, {{2, 3, 3}, {3, 1, 1}}).r2r({1, 2}));
}

TEST(PlanCalls, FillManyRecords) {
    const int embed[] = {0, 9, 0, 0};
    expect_record(
        [&] {
            return qsl_fftf_plan_many_dft(2, sizes, 5, complex_a, embed, 2, 100, complex_b, nullptr, 3, 200, -1, 0);
        },
        expected(kind_c2c, -1, complex_a, complex_b, {{2, 18, 9}, {3, 2, 3}}).batch({{5, 100, 200}}));
    expect_record(
        [&] { return qsl_fftf_plan_many_dft_r2c(2, sizes, 5, float_a, nullptr, 2, 100, complex_b, embed, 3, 200, 0); },
        expected(kind_r2c, -1, float_a, complex_b, {{2, 6, 27}, {3, 2, 3}}).batch({{5, 100, 200}}));
    expect_record(
        [&] { return qsl_fftf_plan_many_dft_c2r(2, sizes, 5, complex_a, nullptr, 2, 100, float_b, embed, 3, 200, 0); },
        expected(kind_c2r, 1, complex_a, float_b, {{2, 4, 27}, {3, 2, 3}}).batch({{5, 100, 200}}));
    const uint32_t kinds[] = {8, 9};
    expect_record(
        [&] {
            return qsl_fftf_plan_many_r2r(2, sizes, 5, float_a, nullptr, 2, 100, float_b, nullptr, 3, 200, kinds, 0);
        },
        expected(kind_r2r, 0, float_a, float_b, {{2, 6, 9}, {3, 2, 3}}).batch({{5, 100, 200}}).r2r({8, 9}));
}

TEST(PlanCalls, ABatchOfOneKeepsNoDistances) {
    expect_record(
        [] {
            return qsl_fftf_plan_many_dft(1, sizes, 1, complex_a, nullptr, 1, -7, complex_b, nullptr, 1, INT_MIN, 1, 0);
        },
        {kind_c2c, 1, complex_a, complex_b, {{2, 1, 1}}});
}

TEST(PlanCalls, FillUpsamplingRecords) {
    expected record(kind_upsampling_2d, 0, float_a, float_b, {{2, 0, 0}, {3, 0, 0}});
    record.batch({{4, 0, 0}, {6, 0, 0}});
    record.upsample_shift_x = 0.5f;
    record.upsample_shift_y = -2.0f;
    expect_record([] { return qsl_fftf_plan_upsampling_2d(2, 3, 4, 6, float_a, float_b, 0, 0.5f, -2.0f); }, record);
}

TEST(PlanCalls, UpsamplingRefusesSizesBelow1AndTargetsBelowTheSource) {
    for (int i = 0; i < 4; ++i)
        for (int bad : {0, -1, INT_MIN}) {
            int n[] = {2, 3, 4, 6};
            n[i] = bad;
            EXPECT_EQ(captured([&] {
                          return qsl_fftf_plan_upsampling_2d(n[0], n[1], n[2], n[3], float_a, float_b, 0, 0, 0);
                      }),
                      "null");
        }
    const auto with = [](int n0, int n1, int m0, int m1) {
        return captured([=] { return qsl_fftf_plan_upsampling_2d(n0, n1, m0, m1, float_a, float_b, 0, 0, 0); });
    };
    EXPECT_EQ(with(5, 3, 4, 6), "null");
    EXPECT_EQ(with(2, 7, 4, 6), "null");
    EXPECT_NE(with(4, 6, 4, 6), "null");
    EXPECT_NE(with(1, 1, 1, 1), "null");
    EXPECT_EQ(with(1, 1, INT_MAX, INT_MAX), "null");  // no address space holds it
}

namespace {

constexpr fft_iodim dims[] = {{4, 100, 200}, {3, 7, 8}};
constexpr fft_iodim64 dims64[] = {{4, 100, 200}, {3, 7, 8}};
constexpr fft_iodim batch[] = {{5, 5000, 6000}, {2, 1000, 2000}};
constexpr fft_iodim64 batch64[] = {{5, 5000, 6000}, {2, 1000, 2000}};

expected guru_record(uint32_t kind, int64_t sign, void* in, void* out) {
    return expected(kind, sign, in, out, {{4, 100, 200}, {3, 7, 8}}).batch({{5, 5000, 6000}, {2, 1000, 2000}});
}

}  // namespace

TEST(PlanCalls, FillGuruRecordsInBothWidths) {
    expect_record([] { return qsl_fftf_plan_guru_dft(2, dims, 2, batch, complex_a, complex_b, 7, 0); },
                  guru_record(kind_c2c, 7, complex_a, complex_b));
    expect_record([] { return qsl_fftf_plan_guru64_dft(2, dims64, 2, batch64, complex_a, complex_b, -9, 0); },
                  guru_record(kind_c2c, -9, complex_a, complex_b));
    expect_record([] { return qsl_fftf_plan_guru_dft_r2c(2, dims, 2, batch, float_a, complex_b, 0); },
                  guru_record(kind_r2c, -1, float_a, complex_b));
    expect_record([] { return qsl_fftf_plan_guru64_dft_r2c(2, dims64, 2, batch64, float_a, complex_b, 0); },
                  guru_record(kind_r2c, -1, float_a, complex_b));
    expect_record([] { return qsl_fftf_plan_guru_dft_c2r(2, dims, 2, batch, complex_a, float_b, 0); },
                  guru_record(kind_c2r, 1, complex_a, float_b));
    expect_record([] { return qsl_fftf_plan_guru64_dft_c2r(2, dims64, 2, batch64, complex_a, float_b, 0); },
                  guru_record(kind_c2r, 1, complex_a, float_b));
    const uint32_t kinds[] = {3, 10, 7};
    expect_record([&] { return qsl_fftf_plan_guru_r2r(2, dims, 2, batch, float_a, float_b, kinds, 0); },
                  guru_record(kind_r2r, 0, float_a, float_b).r2r({3, 10}));
    expect_record([&] { return qsl_fftf_plan_guru64_r2r(2, dims64, 2, batch64, float_a, float_b, kinds, 0); },
                  guru_record(kind_r2r, 0, float_a, float_b).r2r({3, 10}));
}

TEST(PlanCalls, FillSplitGuruRecordsInBothWidths) {
    const expected complex_record = guru_record(kind_c2c, -1, float_a, float_c).split_parts(float_b, float_d);
    expect_record([] { return qsl_fftf_plan_guru_split_dft(2, dims, 2, batch, float_a, float_b, float_c, float_d, 0); },
                  complex_record);
    expect_record(
        [] { return qsl_fftf_plan_guru64_split_dft(2, dims64, 2, batch64, float_a, float_b, float_c, float_d, 0); },
        complex_record);
    const expected r2c_record = guru_record(kind_r2c, -1, float_a, float_c).split_parts(nullptr, float_d);
    expect_record([] { return qsl_fftf_plan_guru_split_dft_r2c(2, dims, 2, batch, float_a, float_c, float_d, 0); },
                  r2c_record);
    expect_record(
        [] { return qsl_fftf_plan_guru64_split_dft_r2c(2, dims64, 2, batch64, float_a, float_c, float_d, 0); },
        r2c_record);
    const expected c2r_record = guru_record(kind_c2r, 1, float_a, float_c).split_parts(float_b, nullptr);
    expect_record([] { return qsl_fftf_plan_guru_split_dft_c2r(2, dims, 2, batch, float_a, float_b, float_c, 0); },
                  c2r_record);
    expect_record(
        [] { return qsl_fftf_plan_guru64_split_dft_c2r(2, dims64, 2, batch64, float_a, float_b, float_c, 0); },
        c2r_record);
}

TEST(PlanCalls, GuruOfOnePointHasRank0) {
    const fft_iodim one[] = {{1, 5, 5}};
    const fft_iodim64 one64[] = {{1, 5, 5}};
    const fft_iodim eight[] = {{8, 1, 2}};
    const fft_iodim64 eight64[] = {{8, 1, 2}};
    expect_record([&] { return qsl_fftf_plan_guru_dft(1, one, 1, eight, complex_a, complex_b, -1, 0); },
                  expected(kind_c2c, -1, complex_a, complex_b, {}).batch({{8, 1, 2}}));
    expect_record([&] { return qsl_fftf_plan_guru64_dft(1, one64, 1, eight64, complex_a, complex_b, -1, 0); },
                  expected(kind_c2c, -1, complex_a, complex_b, {{1, 5, 5}}).batch({{8, 1, 2}}));
    const uint32_t dht = r2r_dht, redft10 = r2r_redft10;
    expect_record([&] { return qsl_fftf_plan_guru_r2r(1, one, 1, eight, float_a, float_b, &dht, 0); },
                  expected(kind_r2r, 0, float_a, float_b, {}).batch({{8, 1, 2}}));
    expect_record([&] { return qsl_fftf_plan_guru_r2r(1, one, 1, eight, float_a, float_b, &redft10, 0); },
                  expected(kind_r2r, 0, float_a, float_b, {{1, 5, 5}}).batch({{8, 1, 2}}).r2r({r2r_redft10}));
    expect_record([&] { return qsl_fftf_plan_guru_dft(0, nullptr, 1, eight, complex_a, complex_b, -1, 0); },
                  expected(kind_c2c, -1, complex_a, complex_b, {}).batch({{8, 1, 2}}));
}

TEST(PlanCalls, OnlyExactly32IsMeasured) {
    for (unsigned flags : {0u, 1u, 2u, 31u, 33u, 64u, 96u, ~0u, 0x80000020u}) {
        fake::clear();
        fake::rows[5] = fake::accept;
        qsl_fftf_plan plan = qsl_fftf_plan_dft_1d(8, complex_a, complex_b, -1, flags);
        ASSERT_NE(plan, nullptr);
        EXPECT_EQ(plan->flags, 0u) << flags;
        qsl_fftf_destroy_plan(plan);
    }
    fake::clear();
    fake::rows[5] = fake::accept;
    qsl_fftf_plan plan = qsl_fftf_plan_dft_1d(8, complex_a, complex_b, -1, 32);
    ASSERT_NE(plan, nullptr);
    EXPECT_EQ(plan->flags, 32u);
    qsl_fftf_destroy_plan(plan);
}

TEST(PlanCalls, ThreadCountIsThatOfTheMoment) {
    qsl_fftf_plan_with_nthreads(3);
    EXPECT_NE(captured([] { return qsl_fftf_plan_dft_1d(8, complex_a, complex_b, -1, 0); }).find("threads 3"),
              std::string::npos);
    EXPECT_NE(
        captured([] { return qsl_fftf_plan_upsampling_2d(2, 2, 4, 4, float_a, float_b, 0, 0, 0); }).find("threads 3"),
        std::string::npos);
    EXPECT_NE(captured([] {
                  return qsl_fftf_plan_guru_dft(2, dims, 2, batch, complex_a, complex_b, 7, 0);
              }).find("threads 3"),
              std::string::npos);
    qsl_fftf_plan_with_nthreads(1);
}

TEST(PlanCalls, NoRowMeansNull) {
    fake::clear();
    EXPECT_EQ(qsl_fftf_plan_dft_1d(8, complex_a, complex_b, -1, 0), nullptr);
    EXPECT_EQ(fake::calls.size(), 68u);
    EXPECT_EQ(qsl_fftf_plan_guru_dft(0, nullptr, 0, nullptr, complex_a, complex_b, -1, 0), nullptr);
}

TEST(PlanCalls, ARefusedArgumentNeverReachesThePlanner) {
    fake::clear();
    EXPECT_EQ(qsl_fftf_plan_dft_1d(0, complex_a, complex_b, -1, 0), nullptr);
    EXPECT_EQ(qsl_fftf_plan_dft_1d(8, complex_a, complex_b, 0, 0), nullptr);
    EXPECT_EQ(qsl_fftf_plan_dft_2d(8, 8, complex_a, complex_b, 2, 0), nullptr);
    EXPECT_EQ(qsl_fftf_plan_dft_3d(8, 8, 8, complex_a, complex_b, 2, 0), nullptr);
    EXPECT_EQ(qsl_fftf_plan_dft(1, sizes, complex_a, complex_b, 0, 0), nullptr);
    EXPECT_EQ(qsl_fftf_plan_dft(5, sizes, complex_a, complex_b, -1, 0), nullptr);
    EXPECT_EQ(qsl_fftf_plan_dft(0, sizes, complex_a, complex_b, -1, 0), nullptr);
    EXPECT_EQ(qsl_fftf_plan_r2r(1, sizes, float_a, float_b, nullptr, 0), nullptr);
    EXPECT_EQ(qsl_fftf_plan_guru64_dft(0, nullptr, 0, nullptr, complex_a, complex_b, -1, 0), nullptr);
    EXPECT_TRUE(fake::calls.empty());
}

// Layouts beyond any address space are refused, so that no product of sizes and strides in a solver can wrap.
TEST(PlanCalls, LayoutsBeyondTheAddressSpaceAreNull) {
    const int64_t huge = INT64_MAX;
    const int huge32[] = {INT_MAX, INT_MAX, INT_MAX, INT_MAX};
    fake::clear();
    fake::rows[0] = fake::accept;
    for (int rank : {2, 3, 4}) EXPECT_EQ(qsl_fftf_plan_dft(rank, huge32, complex_a, complex_b, -1, 0), nullptr);
    for (const fft_iodim64& t : {fft_iodim64{huge, 1, 1}, {2, huge, 1}, {2, 1, huge}}) {
        const fft_iodim64 plain[] = {{2, 1, 1}, {2, 2, 2}};
        EXPECT_EQ(qsl_fftf_plan_guru64_dft(1, &t, 1, plain, complex_a, complex_b, -1, 0), nullptr);
        EXPECT_EQ(qsl_fftf_plan_guru64_dft(1, plain, 1, &t, complex_a, complex_b, -1, 0), nullptr);
    }
    const fft_iodim64 many[] = {{1 << 16, 1, 1}, {1 << 16, 1, 1}, {1 << 16, 1, 1}, {2, 1, 1}};  // 2^49 points
    EXPECT_EQ(qsl_fftf_plan_guru64_dft(4, many, 0, many, complex_a, complex_b, -1, 0), nullptr);
    EXPECT_EQ(qsl_fftf_plan_guru64_dft(2, many, 2, many + 2, complex_a, complex_b, -1, 0), nullptr);
    qsl_fftf_plan plan = qsl_fftf_plan_guru64_dft(3, many, 0, many, complex_a, complex_b, -1, 0);
    EXPECT_NE(plan, nullptr);
    qsl_fftf_destroy_plan(plan);
    plan = qsl_fftf_plan_dft_1d(INT_MAX, complex_a, complex_b, -1, 0);
    EXPECT_NE(plan, nullptr);
    qsl_fftf_destroy_plan(plan);
}
