// SPDX-License-Identifier: Apache-2.0
// Every body of a kernel of real data as the generator records it, like test_graphs.cpp.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "families.h"
#include "graph_checks.h"
#include "kernels/generator/passes/interpretation.h"
#include "real_problem.h"
#include "real_slots.h"

namespace {

using namespace generator;

constexpr double tolerance = 1e-12;
constexpr int lanes = 4;

class real_graphs : public testing::TestWithParam<int> {
protected:
    const form& family() const { return forms()[GetParam()]; }

    template <class Check>
    void for_each_body(const Check& check) const {
        for (const int size : sizes_to_try(family())) {
            SCOPED_TRACE(std::string(family().name) + " n=" + std::to_string(size));
            const real_rows rows(family(), size);
            const bodies all = different_bodies(family(), size, family().sign);
            ASSERT_FALSE(all.empty());
            for (const auto& b : all) {
                const lane_use use = lane_use_of(family(), size, *b);
                ASSERT_NE(use, lane_use::unknown);
                check(*b, use, size, rows);
            }
        }
    }

    // How often each number of one of the four rows is moved by the operations of a kind.
    static std::map<std::pair<int, int>, int> moves(const body& b, lane_use use, int size, op what) {
        std::map<std::pair<int, int>, int> count;
        for (const int slot : slots_of(b, what))
            for (const auto& [row, number] : (what == op::load ? loaded : stored)(use, size, slot))
                if (number >= 0) ++count[{row, number}];
        return count;
    }
};

size_t index_of(const std::vector<int>& slots, int number) {
    return std::find(slots.begin(), slots.end(), number) - slots.begin();
}

// What a row of the input holds: imaginary parts that don't exist are no numbers.
double number_of(const real_rows& rows, int row, int number) {
    const size_t i = index_of(rows.in_slots, number);
    return i < rows.in_slots.size() ? rows.in[row][i] : std::numeric_limits<double>::quiet_NaN();
}

bool has_number(const std::vector<int>& slots, int number) { return index_of(slots, number) < slots.size(); }

// The largest difference, with rows `first` and up of the reference in the place of rows 0 and up.
double error_of(const body& b, lane_use use, int size, const real_rows& rows, int first) {
    const auto reference_row = [&](int row) { return (first + row) % real_rows::most; };
    const auto load = [&](int slot) {
        graph_vector v{};
        const moved_numbers moved = loaded(use, size, slot);
        for (int c = 0; c < lanes; ++c)
            if (moved[c].number >= 0) v[c] = number_of(rows, reference_row(moved[c].row), moved[c].number);
        return v;
    };
    double error = 0;
    for (const auto& [slot, result] : interpret(b, lanes, load, load)) {
        const moved_numbers moved = stored(use, size, slot);
        for (int c = 0; c < lanes; ++c) {
            if (moved[c].number < 0) continue;
            const double want = rows.out[reference_row(moved[c].row)].at(index_of(rows.out_slots, moved[c].number));
            const double difference = std::abs(result[c] - want);
            if (std::isnan(difference)) return difference;
            error = std::max(error, difference);
        }
    }
    return error;
}

// Random rows: a body is linear, and a wrong weight can't hide in all of them.
TEST_P(real_graphs, compute_their_transforms) {
    for_each_body([&](const body& b, lane_use use, int size, const real_rows& rows) {
        for (int first = 0; first < real_rows::most; ++first)
            EXPECT_LT(error_of(b, use, size, rows, first), tolerance) << "from row " << first;
    });
}

// Imaginary parts that don't exist are neither read nor written, but by whole rows. Vectors along a row may overlap
// where they load.
TEST_P(real_graphs, keep_their_promises) {
    for_each_body([&](const body& b, lane_use use, int size, const real_rows& rows) {
        EXPECT_EQ(order_complaints(b), complaints{});
        EXPECT_EQ(constant_complaints(b), complaints{});
        EXPECT_EQ(in_place_complaints(b), complaints{});
        auto loads = moves(b, use, size, op::load);
        const auto stores = moves(b, use, size, op::store);
        if (use == lane_use::whole_rows)
            std::erase_if(loads, [&](const auto& move) { return !has_number(rows.in_slots, move.first.second); });
        const int moved_rows = loads.rbegin()->first.first + 1;
        EXPECT_EQ(loads.size(), moved_rows * rows.in_slots.size());
        EXPECT_EQ(stores.size(), moved_rows * rows.out_slots.size());
        for (const auto& [place, times] : loads)
            EXPECT_LT(index_of(rows.in_slots, place.second), rows.in_slots.size()) << "loads " << place.second;
        for (const auto& [place, times] : stores) {
            EXPECT_LT(index_of(rows.out_slots, place.second), rows.out_slots.size()) << "stores " << place.second;
            EXPECT_EQ(times, 1) << "stores " << place.second;
        }
    });
}

INSTANTIATE_TEST_SUITE_P(all, real_graphs, testing::ValuesIn(real_families()),
                         [](const auto& info) { return std::string(forms()[info.param].name); });

}  // namespace
