// SPDX-License-Identifier: Apache-2.0
// Out of place every transform keeps its input, bit by bit, gaps included: all kinds, one to four dimensions, single
// and in batches, compact and with strides, by rules and measured.
#include "qfftf.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

enum kind { c2c, r2c, c2r, r2r, kinds };
constexpr const char* kind_names[] = {"c2c", "r2c", "c2r", "r2r"};

struct transform {
    enum kind kind;
    std::vector<int> n;
    int count, stride;
    unsigned flags;

    bool half() const { return kind == r2c || kind == c2r; }
    bool complex(bool input) const { return kind == c2c || (half() && input == (kind == c2r)); }
    int elements(bool input) const {
        int result = 1;
        for (int size : n) result *= size;
        return half() && complex(input) ? result / n.back() * (n.back() / 2 + 1) : result;
    }
    int distance(bool input) const { return elements(input) * stride + 1; }
    size_t floats(bool input) const { return size_t(distance(input)) * size_t(count) * (complex(input) ? 2 : 1); }

    qsl_fftf_plan plan(float* in, float* out) const {
        const int rank = int(n.size()), id = distance(true), od = distance(false);
        const auto pairs = [](float* array) { return reinterpret_cast<qsl_fftf_complex*>(array); };
        const qsl_fftf_r2r_kind list[] = {QSL_FFTF_REDFT10, QSL_FFTF_HC2R, QSL_FFTF_DHT, QSL_FFTF_RODFT00};
        switch (kind) {
            case c2c:
                return qsl_fftf_plan_many_dft(rank, n.data(), count, pairs(in), nullptr, stride, id, pairs(out),
                                              nullptr, stride, od, QSL_FFTF_BACKWARD, flags);
            case r2c:
                return qsl_fftf_plan_many_dft_r2c(rank, n.data(), count, in, nullptr, stride, id, pairs(out), nullptr,
                                                  stride, od, flags);
            case c2r:
                return qsl_fftf_plan_many_dft_c2r(rank, n.data(), count, pairs(in), nullptr, stride, id, out, nullptr,
                                                  stride, od, flags);
            default:
                return qsl_fftf_plan_many_r2r(rank, n.data(), count, in, nullptr, stride, id, out, nullptr, stride, od,
                                              list, flags);
        }
    }
    std::string text() const {
        std::string text = kind_names[kind];
        for (int size : n) text += " " + std::to_string(size);
        return text + " count " + std::to_string(count) + " stride " + std::to_string(stride) + " flags " +
               std::to_string(flags);
    }
};

void expect_input_kept(const transform& t) {
    std::vector<float> in(t.floats(true)), out(t.floats(false));
    qsl_fftf_plan plan = t.plan(in.data(), out.data());
    ASSERT_TRUE(plan) << t.text();
    for (size_t i = 0; i < in.size(); ++i) in[i] = float(i % 251) - 125 + float(i % 7) / 8;
    const std::vector<float> before = in;
    for (int run = 0; run < 2; ++run) {
        qsl_fftf_execute(plan);
        EXPECT_EQ(memcmp(in.data(), before.data(), in.size() * sizeof(float)), 0) << t.text();
    }
    qsl_fftf_destroy_plan(plan);
}

}  // namespace

TEST(InputKept, IsTrueOutOfPlaceOfEveryTransform) {
    const std::vector<std::vector<int>> sizes = {
        {1},      {2},      {7},       {16},      {24},      {41},       {64},        {101},        {120},
        {1024},   {2048},   {2, 3},    {4, 8},    {5, 7},    {7, 6},     {16, 16},    {24, 41},     {64, 20},
        {128, 9}, {3, 512}, {2, 3, 4}, {5, 6, 7}, {8, 8, 8}, {3, 41, 2}, {16, 4, 10}, {2, 3, 4, 5}, {3, 4, 2, 9}};
    for (int k = 0; k < kinds; ++k)
        for (const auto& n : sizes)
            for (int count : {1, 2, 5, 9})
                for (int stride : {1, 3})
                    for (unsigned flags : {QSL_FFTF_RULES, QSL_FFTF_MEASURED}) {
                        if (flags == QSL_FFTF_MEASURED && (count == 2 || count == 9)) continue;
                        expect_input_kept({kind(k), n, count, stride, flags});
                    }
}

// What the headers and the pages for users say of it.
TEST(InputKept, NothingSaysOtherwise) {
    for (const char* file : {"include/qfftf.h", "include/qfftf.hpp", "docs/user/plans.md"}) {
        std::ifstream stream(std::string(SOURCE_FOLDER "/") + file);
        const std::string text{std::istreambuf_iterator<char>(stream), {}};
        ASSERT_GT(text.size(), 1000u) << file;
        for (const char* words : {"may overwrite it", "may be overwritten", "use it as scratch"})
            EXPECT_EQ(text.find(words), text.npos) << file << ": " << words;
    }
}
