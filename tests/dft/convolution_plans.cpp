// SPDX-License-Identifier: Apache-2.0
#include "tests/dft/convolution_plans.h"

#include "dft/twiddles.h"

#include <cstring>

std::vector<fft_plan> all_but_one_complex_transform(int64_t n) {
    std::vector<fft_plan> others(6, record_of({n}));
    others[0].kind = kind_c2c_large_piece;
    others[1].split = split_arrays;
    others[2].howmany_rank = 1;
    others[2].howmany[0] = {2, n, n};
    others[3].rank = 2;
    others[3].dims[1] = {4, 1, 1};
    others[4].private_copy = 1;
    others[5].rank = 0;
    return others;
}

std::vector<complex_problem> convolution_layouts(int64_t n) {
    return {{n, -1}, {n, 1}, {n, -1, 3, 1}, {n, 1, 1, 2}, {n, 1, 2, 5}};
}

void expect_convolver(const fft_plan& plan, int64_t length) {
    ASSERT_EQ(plan.subplan_count, 1);
    const fft_plan& subplan = *plan.subplans[0];
    EXPECT_EQ(subplan.kind, uint32_t{kind_c2c});
    EXPECT_EQ(subplan.sign, -1);
    EXPECT_EQ(subplan.rank, 1);
    EXPECT_EQ(subplan.howmany_rank, 0);
    EXPECT_EQ(subplan.flags, 64u);
    EXPECT_EQ(subplan.dims[0].n, length);
    EXPECT_EQ(subplan.dims[0].is, 1);
    EXPECT_EQ(subplan.dims[0].os, 1);
    EXPECT_EQ(subplan.in, plan.buffer);
    EXPECT_EQ(subplan.out, plan.buffer);
}

const char* expect_stages(const stage_record* stages, const std::vector<uint64_t>& radices, const complex_problem& p,
                          twiddle_fill fill_contiguous_last, const char* tables) {
    uint64_t done = 1;
    const uint64_t n = p.n, count = radices.size();
    for (uint64_t i = 0; i < count; ++i) {
        const stage_record& stage = stages[i];
        EXPECT_EQ(stage.radix, radices[i]);
        EXPECT_EQ(stage.kernel == nullptr, i == 0);
        EXPECT_EQ(stage.done, done);
        EXPECT_EQ(stage.rest, n / done / stage.radix);
        EXPECT_EQ(stage.is, i == 0 ? p.is : 1);
        EXPECT_EQ(stage.os, i + 1 == count ? p.os : 1);
        EXPECT_EQ(stage.sign, p.sign);
        EXPECT_EQ(reinterpret_cast<char*>(stage.twiddles), tables);
        if (i > 0) {
            std::vector<float> expected(2 * (stage.radix - 1) * done);
            const bool across_rows = i + 1 == count && p.is == 1 && p.os == 1;
            (across_rows ? fill_contiguous_last : twiddle_fill_rows)(expected.data(), n, stage.radix, done, stage.rest,
                                                                     p.sign);
            EXPECT_EQ(memcmp(tables, expected.data(), expected.size() * sizeof(float)), 0) << "stage " << i;
            tables += expected.size() * sizeof(float);
        }
        done *= stage.radix;
    }
    return tables;
}
