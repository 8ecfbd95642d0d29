// SPDX-License-Identifier: Apache-2.0
// Every kernel of every family, run as built: both directions, all small row and column counts, several strides, in
// place where that is promised, between guard zones.
#include <gtest/gtest.h>

#include <algorithm>

#include "kernel_problem.h"

namespace {

using namespace generator;

constexpr int strides[][2] = {{1, 1}, {3, 1}, {1, 2}, {5, 7}};

class kernels : public testing::TestWithParam<int> {
protected:
    const form& family() const { return forms()[GetParam()]; }
    bool direct() const {
        return family().loop == shape::direct || family().loop == shape::many || family().loop == shape::assemble;
    }
    bool in_place_promised() const { return direct() || family().loop == shape::first; }
    twiddled_rows rows() const {
        if (direct() || family().loop == shape::first) return twiddled_rows::none;
        return family().loop == shape::other ? twiddled_rows::all_but_first : twiddled_rows::all;
    }

    // The n-th choice of strides. Distances between lanes leave room for one lane's span.
    kernel_problem with_strides(kernel_problem p, int n) const {
        if (family().data == layout::contig) return p;
        p.is = strides[n % 4][0];
        p.os = strides[n % 4][1];
        if (family().loop == shape::assemble) {
            p.idist = p.is * p.radix + 1;
            p.odist = p.os * p.radix + 2;
        } else if (family().data == layout::batch) {
            p.is += lanes_of(family()) - 1;
            p.os += lanes_of(family()) - 1;
        }
        return p;
    }

    void check_all(const kernel_problem& p, const transform_grid& grid) const {
        EXPECT_EQ(check(p, grid), "") << describe(p);
        if (!in_place_promised()) return;
        kernel_problem q = p;
        q.in_place = true;
        q.os = q.is;
        q.odist = q.idist;
        EXPECT_EQ(check(q, grid), "") << describe(q);
    }
};

TEST_P(kernels, compute_their_transforms) {
    const int most_rows = family().loop == shape::other || family().loop == shape::last ? transform_grid::side : 1;
    const int most_columns = family().loop == shape::other || family().loop == shape::first ? transform_grid::side : 1;
    for (const int size : family().sizes)
        for (const int sign : {-1, 1}) {
            const transform_grid grid(size, sign, rows());
            const any_kernel kernel = kernel_families[GetParam()].tables[sign > 0][size - 1];
            ASSERT_NE(kernel, nullptr) << family().name << " " << size;
            // Every count on either side of a small one, the strides taking turns; all strides for a single butterfly.
            for (int m = 1; m <= most_rows; ++m)
                for (int l = 1; l <= (m <= 2 ? most_columns : std::min(most_columns, 2)); ++l)
                    for (int n = 0; n < (m * l == 1 ? 4 : 1); ++n)
                        check_all(with_strides({&family(), kernel, size, sign, m, l}, n + m + 3 * l), grid);
        }
}

TEST_P(kernels, exist_for_the_sizes_of_the_family_only) {
    ASSERT_STREQ(family().name, kernel_families[GetParam()].name);
    for (int size = 1; size <= 64; ++size) {
        const bool listed = std::find(family().sizes.begin(), family().sizes.end(), size) != family().sizes.end();
        for (int d = 0; d < 2; ++d)
            EXPECT_EQ(kernel_families[GetParam()].tables[d][size - 1] != nullptr, listed) << family().name << size;
    }
}

INSTANTIATE_TEST_SUITE_P(all, kernels, testing::Range(0, int(forms().size())),
                         [](const auto& info) { return std::string(forms()[info.param].name); });

}  // namespace
