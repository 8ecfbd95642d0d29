// SPDX-License-Identifier: Apache-2.0
// Split arrays as a caller may give them: without an imaginary part, which is a null array, and in place with the two
// parts exchanged.
#include <gtest/gtest.h>

#include <cstring>

#include "problems/plan_tree.h"
#include "tests/batch/reshape_support.h"
#include "tests/support/guru_calls.h"
#include "tests/support/signals.h"

namespace {

using floats = std::vector<float>;
using plan_handle = std::unique_ptr<fft_plan, plan_deleter>;

struct split_case {
    uint32_t kind;
    std::vector<fft_iodim64> dims, batch;
    unsigned flags;
};

plan_handle plan_of(const split_case& c, float* in_re, float* in_im, float* out_re, float* out_im) {
    using call = guru64_calls;
    const int rank = static_cast<int>(c.dims.size()), loops = static_cast<int>(c.batch.size());
    const fft_iodim64 *dims = c.dims.data(), *batch = c.batch.data();
    switch (c.kind) {
        case kind_c2c:
            return plan_handle(call::split_dft(rank, dims, loops, batch, in_re, in_im, out_re, out_im, c.flags));
        case kind_r2c:
            return plan_handle(call::split_r2c(rank, dims, loops, batch, in_re, out_re, out_im, c.flags));
        default:
            return plan_handle(call::split_c2r(rank, dims, loops, batch, in_re, in_im, out_re, c.flags));
    }
}

floats noise_of(size_t count, uint64_t seed) {
    uniform_noise noise(seed);
    floats list(count);
    for (float& x : list) x = noise();
    return list;
}

std::string text(const split_case& c) {
    std::string s = "kind " + std::to_string(c.kind) + " flags " + std::to_string(c.flags);
    for (const auto* list : {&c.dims, &c.batch}) {
        s += list == &c.dims ? " dims" : " batch";
        for (const auto& d : *list)
            s += " " + std::to_string(d.n) + ":" + std::to_string(d.is) + ":" + std::to_string(d.os);
    }
    return s;
}

}  // namespace

TEST(SplitArrays, WithoutAnImaginaryArrayNothingRuns) {
    const std::vector<std::vector<fft_iodim64>> batches = {{}, {{3, 100, 100}}, {{2, 300, 300}, {3, 100, 100}}};
    for (const uint32_t kind : {kind_c2c, kind_r2c, kind_c2r})
        for (const auto& batch : batches)
            for (const int64_t n : {5, 8, 60})
                for (const unsigned missing : {1u, 2u, 3u}) {
                    const split_case rules = {kind, {{n, 1, 1}}, batch, 0}, measured = {kind, {{n, 1, 1}}, batch, 32};
                    if (kind != kind_c2c && missing != (kind == kind_r2c ? 2u : 1u)) continue;
                    floats arrays[4];
                    for (int i = 0; i < 4; ++i) arrays[i] = noise_of(600, i);
                    const std::vector<floats> before(arrays, arrays + 4);
                    float* const in_im = missing & 1 ? nullptr : arrays[1].data();
                    float* const out_im = missing & 2 ? nullptr : arrays[3].data();
                    const auto by_rules = plan_of(rules, arrays[0].data(), in_im, arrays[2].data(), out_im);
                    const auto by_clock = plan_of(measured, arrays[0].data(), in_im, arrays[2].data(), out_im);
                    ASSERT_TRUE(by_rules && by_clock) << text(rules) << " missing " << missing;
                    EXPECT_EQ(plan_tree_line(*by_clock), plan_tree_line(*by_rules)) << text(rules);
                    qsl_fftf_execute(by_rules.get());
                    qsl_fftf_execute(by_clock.get());
                    for (int i = 0; i < 4; ++i) EXPECT_EQ(arrays[i], before[i]) << text(rules) << " array " << i;
                }
}

// The two arrays exchanged, every input layout with every output layout, in a loop of one around the batch and without:
// whoever plans that gets what a plan out of place computes.
TEST(SplitArrays, MayBeExchangedInPlace) {
    constexpr int64_t size = 200;
    for (const int64_t n : {1, 2, 3, 4, 8})
        for (const int64_t count : {1, 2, 3, 4}) {
            const std::pair<int64_t, int64_t> layouts[] = {{1, n}, {count, 1}, {1, n + 3}, {2, 2 * n}, {count + 1, 1}};
            for (const auto& [is, in_distance] : layouts)
                for (const auto& [os, out_distance] : layouts)
                    for (const bool loop_of_one : {false, true}) {
                        split_case c = {kind_c2c, {{n, is, os}}, {{count, in_distance, out_distance}}, 0};
                        if (loop_of_one) c.batch.insert(c.batch.begin(), {1, 7, 5});
                        const floats re = noise_of(size, 1), im = noise_of(size, 2);
                        floats a = re, b = im;
                        const auto exchanged = plan_of(c, a.data(), b.data(), b.data(), a.data());
                        ASSERT_TRUE(exchanged) << text(c);
                        floats in_re = re, in_im = im, out_re = im, out_im = re;
                        const auto apart = plan_of(c, in_re.data(), in_im.data(), out_re.data(), out_im.data());
                        ASSERT_TRUE(apart) << text(c);
                        qsl_fftf_execute(apart.get());
                        qsl_fftf_execute(exchanged.get());
                        EXPECT_EQ(b, out_re) << text(c) << "\n" << tree(*exchanged);
                        EXPECT_EQ(a, out_im) << text(c) << "\n" << tree(*exchanged);
                    }
        }
}
