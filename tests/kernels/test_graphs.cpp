// SPDX-License-Identifier: Apache-2.0
// Every body of a complex kernel as the generator records it: its promises, read off the graph, and the transform that
// it computes, in double precision. What compilers make of a body is test_kernels' business.
#include <gtest/gtest.h>

#include <numbers>

#include "families.h"
#include "graph_checks.h"
#include "kernels/generator/passes/interpretation.h"

namespace {

using namespace generator;

constexpr double tolerance = 1e-13;
constexpr int signs[] = {-1, 1};
constexpr int complex_lanes = 2;

bool is_direct(const form& f) {
    return f.loop == shape::direct || f.loop == shape::many || f.loop == shape::assemble || f.loop == shape::rows;
}

bool may_have_rows(const form& f) { return f.loop == shape::rows || f.loop == shape::assemble; }

std::string describe(const form& f, int size, int sign) {
    return std::string(f.name) + " n=" + std::to_string(size) + " sign=" + std::to_string(sign);
}

class graphs : public testing::TestWithParam<int> {
protected:
    const form& family() const { return forms()[GetParam()]; }

    template <class Check>
    void for_each_body(const Check& check) const {
        for (const int size : sizes_to_try(family()))
            for (const int sign : signs) {
                SCOPED_TRACE(describe(family(), size, sign));
                const bodies all = different_bodies(family(), size, sign);
                ASSERT_FALSE(all.empty());
                for (const auto& b : all) check(*b, size, sign);
            }
    }
};

number root(int64_t num, int64_t den) {
    return std::polar(1.0, 2 * std::numbers::pi * double(num % den) / double(den));
}

// Some number of modulus 1 for every element and lane.
number twiddle_of(int j, int lane) { return j == 0 ? 1 : root(7 * j + 3 * lane + 1, 101); }

// An impulse in one element of each lane; the lanes' impulses stand in different elements.
struct impulses {
    int size, element;

    int element_of(int lane) const { return (element + lane) % size; }
    number in(int j, int lane) const { return j == element_of(lane) ? number(1, lane) : 0; }
    number out(int k, int lane, int sign, bool twiddled) const {
        const int j = element_of(lane);
        return number(1, lane) * (twiddled ? twiddle_of(j, lane) : 1) * root(int64_t(sign) * j * k, size);
    }
};

double error_of(const body& b, const impulses& x, int sign) {
    const bool twiddled = has(b, op::twiddle);
    // Of both rows, or of two columns of a row.
    const auto lanes = [](bool transposed, int slot, const auto& number_at) -> graph_vector {
        if (!transposed) return {number_at(slot, 0), number_at(slot, 1)};
        const transposed_slot s = transposed_slot::unpack(slot);
        if (s.row == transposed_slot::both) return {number_at(s.column, 0), number_at(s.column, 1)};
        return {number_at(s.column, s.row), number_at(s.column + 1, s.row)};
    };
    const auto load = [&](int slot) {
        return lanes(is_transposed(b), slot, [&](int j, int lane) { return x.in(j, lane); });
    };
    const auto twiddle = [&](int slot) { return lanes(has_rows_twiddles(b), slot, twiddle_of); };
    double error = 0;
    for (const auto& [k, result] : interpret(b, complex_lanes, load, twiddle))
        for (int c = 0; c < complex_lanes; ++c)
            error = std::max(error, std::abs(result[c] - x.out(k, c, sign, twiddled)));
    return error;
}

// Of bodies with vectors of two adjacent numbers of a row, on either side. The rows' impulses stand in different
// elements.
double error_in_rows(const body& b, const impulses& x, int sign) {
    const auto vector = [&](int slot, const auto& number_of) -> graph_vector {
        if (!row_slot::is_one(slot)) return {number_of(slot, 0), number_of(slot, 1)};
        const auto [row, i] = row_slot::unpack(slot);
        const int first = first_in_vector(i, x.size);
        return {number_of(first, row), number_of(first + 1, row)};
    };
    const auto load = [&](int slot) { return vector(slot, [&](int j, int row) { return x.in(j, row); }); };
    const auto no_twiddle = [](int) { return graph_vector{}; };
    double error = 0;
    for (const auto& [slot, result] : interpret(b, complex_lanes, load, no_twiddle)) {
        const graph_vector want = vector(slot, [&](int k, int row) { return x.out(k, row, sign, false); });
        for (int c = 0; c < complex_lanes; ++c) error = std::max(error, std::abs(result[c] - want[c]));
    }
    return error;
}

// A first stage may have another body for arrays that don't overlap: see loops/columns.cpp.
bool wants_arrays_apart(const body& b) { return !b.loads_first && b.did.loaded_again > 0; }

// All operations are linear: a body that is right for an impulse in every element is right.
TEST_P(graphs, compute_their_transforms) {
    const auto error = may_have_rows(family()) ? error_in_rows : error_of;
    for_each_body([&](const body& b, int size, int sign) {
        for (int j = 0; j < size; ++j) EXPECT_LT(error(b, {size, j}, sign), tolerance) << "impulse at " << j;
    });
}

TEST_P(graphs, keep_their_promises) {
    const bool in_place = is_direct(family()) || family().loop == shape::first;
    for_each_body([&](const body& b, int size, int) {
        EXPECT_EQ(order_complaints(b), complaints{});
        if (may_have_rows(family())) {
            EXPECT_EQ(row_complaints(b, size), complaints{});
        } else {
            EXPECT_EQ(load_complaints(b, size), complaints{});
            EXPECT_EQ(store_complaints(b, size), complaints{});
        }
        EXPECT_EQ(constant_complaints(b), complaints{});
        if (in_place && !wants_arrays_apart(b)) {
            EXPECT_EQ(in_place_complaints(b), complaints{});
        }
        if (b.graph.overwrites() && family().loop != shape::direct) {
            EXPECT_EQ(copy_complaints(b), complaints{});
        }
    });
}

// Stages: the first has no twiddles; a middle one has a row without and rows with them; all rows of the last have them.
TEST_P(graphs, have_the_bodies_of_their_shape) {
    for (const int size : family().sizes) {
        SCOPED_TRACE(describe(family(), size, -1));
        const bodies all = different_bodies(family(), size, -1);
        const auto twiddled = std::count_if(all.begin(), all.end(), [](const auto& b) { return has(*b, op::twiddle); });
        const auto plain = int64_t(all.size()) - twiddled;
        const bool last = family().loop == shape::last, other = family().loop == shape::other;
        const bool by_rows = last && family().data != layout::batch && family().in->lanes > 1;
        const bool turns = family().loop == shape::assemble && has_turned_rows(size);
        const auto overlapping = std::count_if(
            all.begin(), all.end(), [](const auto& b) { return !has(*b, op::twiddle) && !wants_arrays_apart(*b); });
        if (family().loop == shape::first) {
            EXPECT_EQ(overlapping, 1);
            EXPECT_LE(plain, 2);
        } else {
            EXPECT_EQ(plain, last ? 0 : turns ? 3 : 1);  // rows to columns and back
        }
        // The vectors of two rows, or of four in an SVE register, have another body than a single row.
        EXPECT_LE(twiddled, by_rows ? 2 : 1);
        EXPECT_GE(twiddled, last || other ? 1 : 0);
        const auto any_body = [&](bool (*is_so)(const body&)) {
            return std::any_of(all.begin(), all.end(), [&](const auto& b) { return is_so(*b); });
        };
        EXPECT_EQ(any_body(is_transposed), (by_rows && !family().in->gathers) || family().loop == shape::rows || turns);
        EXPECT_EQ(any_body(has_rows_twiddles), by_rows && family().data == layout::strided);
    }
}

// The symmetric form of a prime p has h (2 h - 1) multiply-adds, with h = (p - 1) / 2, and both directions are one
// sequence of operations.
TEST_P(graphs, of_primes_have_the_symmetric_form) {
    for (const int p : {3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37}) {
        if (std::find(family().sizes.begin(), family().sizes.end(), p) == family().sizes.end()) continue;
        SCOPED_TRACE(describe(family(), p, 0));
        const bodies forward = different_bodies(family(), p, -1), backward = different_bodies(family(), p, 1);
        const int h = (p - 1) / 2;
        ASSERT_EQ(forward.size(), backward.size());
        for (size_t i = 0; i < forward.size(); ++i) {
            const int chained = count_operations(*forward[i]).fused;
            EXPECT_EQ(chained, h * (2 * h - 1));
            EXPECT_TRUE(same_graph(*forward[i], *backward[i]));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(all, graphs, testing::ValuesIn(complex_families()),
                         [](const auto& info) { return std::string(forms()[info.param].name); });

}  // namespace
