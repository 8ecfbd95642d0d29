// SPDX-License-Identifier: Apache-2.0
// Every kernel of real data, run as built: all counts on either side of two groups of rows, rows one after the other,
// side by side and apart, both storages of the spectrum, in place; in arrays between guard zones, before a page that
// must not be touched, and behind one.
#include <gtest/gtest.h>

#include <algorithm>

#include "families.h"
#include "real_problem.h"

namespace {

using namespace generator;

class real_kernels : public testing::TestWithParam<int> {
protected:
    const form& family() const { return forms()[GetParam()]; }
    bool cosine() const { return family().loop == shape::cosine_rows; }
    bool alone() const { return family().loop == shape::alone; }
    storage of_spectrum() const {
        return family().spectrum == row_spectrum::pairs     ? storage::complex_numbers
               : family().spectrum == row_spectrum::hartley ? storage::hartley
                                                            : storage::half_complex;
    }
    bool whole_rows() const { return family().loop == shape::whole_rows; }
    std::vector<storage> storages() const {
        if (cosine()) return {storage::plain};
        if (whole_rows()) return {storage::complex_numbers};
        if (alone()) return {of_spectrum()};
        return {storage::complex_numbers, storage::half_complex};
    }
    std::vector<int> counts() const {
        if (family().loop == shape::real_row || alone()) return {1};
        return {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    }

    void check_layouts(real_problem p, const real_rows& rows) const {
        const int n = p.n, count = std::max(p.count, 1);
        const int spectrum = p.spectrum == storage::complex_numbers ? n / 2 + 1 : n;
        // stride and distance of the sequence, of the spectrum
        const int layouts[][4] = {
            {1, n, 1, spectrum},                  // rows one after the other
            {count, 1, count, 1},                 // side by side
            {count + 2, 1, count + 1, 1},         // side by side, with gaps
            {1, n + 3, 1, spectrum + 2},          // with gaps
            {1, n + 3, count, 1},                 // one after the other on one side only
            {count, 1, 1, spectrum + 1},          //
            {3, 3 * n + 1, 2, 2 * spectrum + 1},  // apart
            {2 * count, 2, 3 * count, 3},         //
        };
        for (const auto& l : layouts) {
            if ((whole_rows() || alone()) && (l[0] != 1 || l[2] != 1)) continue;
            p.stride = l[0], p.distance = l[1], p.spectrum_stride = l[2], p.spectrum_distance = l[3];
            EXPECT_EQ(check(p, rows), "") << describe(p);
        }
        const bool pairs = p.spectrum == storage::complex_numbers;
        p.in_place = true;
        const int in_place[][4] = {
            {1, pairs ? 2 * spectrum : n, 1, spectrum},  // padded rows
            {3, 3 * n + 7, 3, 3 * n + 7},                //
            {count, 1, count, 1},                        // side by side, elementwise
        };
        for (const auto& l : in_place) {
            if ((pairs || alone()) && l[0] != 1) continue;  // complex numbers and reals don't share places then
            p.stride = l[0], p.distance = l[1], p.spectrum_stride = l[2], p.spectrum_distance = l[3];
            EXPECT_EQ(check(p, rows), "") << describe(p);
        }
    }
};

TEST_P(real_kernels, compute_their_transforms) {
    for (const int n : family().sizes) {
        const any_kernel kernel = kernel_families[GetParam()].tables[family().sign > 0][n - 1];
        ASSERT_NE(kernel, nullptr) << family().name << " " << n;
        const real_rows rows(family(), n);
        for (const storage s : storages())
            for (const int count : counts())
                for (const placement where :
                     {placement::between_guards, placement::ends_at_page, placement::starts_at_page})
                    check_layouts({&family(), kernel, n, s, count, 0, 0, 0, 0, false, where}, rows);
    }
}

TEST_P(real_kernels, exist_for_the_sizes_of_the_family_only) {
    const kernel_family& built = kernel_families[GetParam()];
    ASSERT_STREQ(family().name, built.name);
    EXPECT_EQ(built.tables[family().sign < 0], nullptr) << "one direction only";
    for (int size = 1; size <= 128; ++size) {
        const bool listed = std::ranges::count(family().sizes, size) > 0;
        EXPECT_EQ(built.tables[family().sign > 0][size - 1] != nullptr, listed) << family().name << size;
    }
}

INSTANTIATE_TEST_SUITE_P(all, real_kernels, testing::ValuesIn(real_families()),
                         [](const auto& info) { return std::string(forms()[info.param].name); });

}  // namespace
