// SPDX-License-Identifier: Apache-2.0
// Every kernel of every complex family, run as built: both directions, all small row and column counts, several
// strides, in place where that is promised, in arrays between guard zones, before a page that must not be touched, and
// behind one.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "families.h"
#include "kernel_problem.h"
#include "kernels/kernel_types.h"
#include "tests/support/emulated.h"

namespace {

using namespace generator;

constexpr int strides[][2] = {{1, 1}, {3, 1}, {1, 2}, {5, 7}};

class kernels : public testing::TestWithParam<int> {
protected:
    const form& family() const { return forms()[GetParam()]; }
    bool direct() const {
        return family().loop == shape::direct || family().loop == shape::many || family().loop == shape::assemble ||
               family().loop == shape::rows;
    }
    bool in_place_promised() const { return direct() || family().loop == shape::first; }
    twiddled_rows rows() const {
        if (direct() || family().loop == shape::first) return twiddled_rows::none;
        return family().loop == shape::other ? twiddled_rows::all_but_first : twiddled_rows::all;
    }

    // The n-th choice of strides. Distances between lanes leave room for one lane's span.
    kernel_problem with_strides(kernel_problem p, int n) const {
        if (family().loop == shape::rows) {
            p.count = 1 + n % 5;
            p.idist = p.radix + n % 4;
            p.odist = p.radix + (n + 1) % 3;
        }
        if (family().data == layout::contig) return p;
        p.is = strides[n % 4][0];
        p.os = strides[n % 4][1];
        if (family().loop == shape::assemble) {
            p.idist = p.is * p.radix + 1;
            p.odist = p.os * p.radix + 2;
            if (n % 6 == 4) p.is = 1, p.idist = p.radix + 1, p.os = 2 + n % 4, p.odist = 1;  // rows to columns
            if (n % 6 == 5) p.is = 2 + n % 4, p.idist = 1, p.os = 1, p.odist = p.radix + 2;
        } else if (family().data == layout::batch) {
            p.is += lanes_of(family()) - 1;
            p.os += lanes_of(family()) - 1;
        }
        return p;
    }

    bool tells_strides_apart() const { return family().data == layout::strided && !direct(); }

    // Row and column counts that the family's loops tell apart.
    int most_rows() const {
        return family().loop == shape::other || family().loop == shape::last ? transform_grid::side : 1;
    }
    int most_columns() const {
        return family().loop == shape::other || family().loop == shape::first ? transform_grid::side : 1;
    }

    const transform_grid& grid_of(int size, int sign) const {
        static std::map<std::tuple<int, int, twiddled_rows>, transform_grid> grids;
        return grids.try_emplace({size, sign, rows()}, size, sign, rows()).first->second;
    }

    template <class Check>
    void for_each_kernel(const Check& check_kernel) const {
        for (const int size : family().sizes)
            for (const int sign : {-1, 1}) {
                const any_kernel kernel = kernel_families[GetParam()].tables[sign > 0][size - 1];
                ASSERT_NE(kernel, nullptr) << family().name << " " << size;
                check_kernel(kernel_problem{&family(), kernel, size, sign, 1, 1}, grid_of(size, sign));
            }
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

// Every count on either side of a small one, the strides taking turns; all strides for a single butterfly, and where
// loops tell strides apart.
TEST_P(kernels, compute_their_transforms) {
    for_each_kernel([&](kernel_problem p, const transform_grid& grid) {
        for (p.done = 1; p.done <= most_rows(); ++p.done) {
            const int last = p.done <= 2 ? most_columns() : std::min(most_columns(), 2);
            for (p.rest = 1; p.rest <= last; ++p.rest)
                for (int n = 0; n < (p.done * p.rest == 1 || tells_strides_apart() ? 4 : 1); ++n)
                    check_all(with_strides(p, n + p.done + 3 * p.rest), grid);
        }
    });
}

// All ends that a loop over vectors of four can have. Emulated, in one direction.
TEST_P(kernels, touch_nothing_outside_their_arrays) {
    const int count = is_emulated ? 5 : transform_grid::side;
    for_each_kernel([&](kernel_problem p, const transform_grid& grid) {
        if (is_emulated && p.sign > 0) return;
        for (p.where = placement::ends_at_page;; p.where = placement::starts_at_page) {
            for (p.done = 1; p.done <= std::min(most_rows(), count); ++p.done)
                for (p.rest = 1; p.rest <= std::min(most_columns(), p.done <= 2 ? count : 1); ++p.rest)
                    for (int n = 0; n < (tells_strides_apart() ? 4 : 1); ++n)
                        check_all(with_strides(p, n + p.done + 3 * p.rest), grid);
            if (p.where == placement::starts_at_page) return;
        }
    });
}

// Rows between the last two stages, on whole numbers of blocks.
TEST_P(kernels, pass_rows_in_blocks) {
    const shape loop = family().loop;
    const bool is_stage = loop == shape::first || loop == shape::other || loop == shape::last;
    if (!is_stage || !family().in->masked || family().data != layout::contig) return;
    for_each_kernel([&](kernel_problem p, const transform_grid& grid) {
        if (loop == shape::last ? !takes_blocks(p.radix) : loop == shape::first && p.radix % 4 != 0) return;
        p.in_blocks = true;
        for (const placement where : {placement::between_guards, placement::ends_at_page, placement::starts_at_page})
            for (const int groups : {1, 2}) {
                p.where = where;
                p.done = loop == shape::first ? 1 : loop == shape::other ? 4 : 4 * groups;
                p.rest = loop == shape::last ? 1 : 4 * groups;
                EXPECT_EQ(check(p, grid), "") << describe(p);
            }
    });
}

TEST_P(kernels, exist_for_the_sizes_of_the_family_only) {
    ASSERT_STREQ(family().name, kernel_families[GetParam()].name);
    const int slots = family().sizes.back() > 64 ? 128 : 64;
    for (int size = 1; size <= slots; ++size) {
        const bool listed = std::find(family().sizes.begin(), family().sizes.end(), size) != family().sizes.end();
        for (int d = 0; d < 2; ++d)
            EXPECT_EQ(kernel_families[GetParam()].tables[d][size - 1] != nullptr, listed) << family().name << size;
    }
}

// What the tests above rely on.
TEST(placed_arrays, notice_every_touch_of_their_pages) {
    for (const placement where : {placement::ends_at_page, placement::starts_at_page})
        for (const size_t count : {1, 7, 64, 511, 512, 513, 5000}) {
            placed_array a(count, where);
            const auto survives_at = [&](ptrdiff_t i) {
                const void* address;
                const volatile float* x = reinterpret_cast<float*>(a.data() + i);
                const bool survived = survives([&] { (void)*x; }, address);
                if (!survived) {
                    EXPECT_EQ(address, const_cast<const float*>(x));
                }
                return survived;
            };
            EXPECT_TRUE(survives_at(0));
            EXPECT_TRUE(survives_at(ptrdiff_t(count) - 1));
            EXPECT_EQ(survives_at(-1), where == placement::ends_at_page);
            EXPECT_EQ(survives_at(ptrdiff_t(count)), where == placement::starts_at_page);
        }
}

INSTANTIATE_TEST_SUITE_P(all, kernels, testing::ValuesIn(complex_families()),
                         [](const auto& info) { return std::string(forms()[info.param].name); });

}  // namespace
