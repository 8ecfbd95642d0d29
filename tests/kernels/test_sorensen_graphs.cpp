// SPDX-License-Identifier: Apache-2.0
// Every body of a stage kernel of Hermitian spectra as the generator records it, like test_graphs.cpp.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>

#include "families.h"
#include "graph_checks.h"
#include "kernels/generator/bodies/hermitian.h"
#include "kernels/generator/passes/interpretation.h"
#include "tests/support/reference_sorensen.h"
#include "tests/support/signals.h"

namespace {

using namespace generator;

constexpr double tolerance = 1e-12;
constexpr int branches = 4;
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// What a body computes: some of the rows of a stage.
enum class rows { complex_row, complex_rows_in_lanes, zero, middle, unknown };
struct body_use {
    rows of = rows::unknown;
    bool one = false;  // of real rows: one branch
    int lanes = 2;     // of complex rows
    bool is_real() const { return of == rows::zero || of == rows::middle; }
};

// The bodies of a size with what they compute, made once.
const std::vector<std::pair<body, body_use>>& known_bodies(int size) {
    static std::map<int, std::vector<std::pair<body, body_use>>> known;
    auto& result = known[size];
    if (!result.empty()) return result;
    for (const vectors* in : {&neon_pair, &sve_quad}) {
        result.emplace_back(make_hermitian_body({.size = size, .in = in}), body_use{rows::complex_row});
        result.emplace_back(make_hermitian_body({.size = size, .transposed = true, .in = in}),
                            body_use{rows::complex_rows_in_lanes, false, in->lanes});
        for (const bool one : {false, true})
            for (const auto& [row, of] :
                 {std::pair(edge_row::zero, rows::zero), std::pair(edge_row::middle, rows::middle)})
                result.emplace_back(make_edge_row_body({.size = size, .row = row, .one = one, .in = in}),
                                    body_use{of, one});
    }
    return result;
}

body_use use_of(const body& b, int size) {
    for (const auto& [known, use] : known_bodies(size))
        if (same_graph(b, known)) return use;
    return {};
}

// Spectra of four branches and what the stage makes of them.
class stage {
public:
    stage(int r, int L) : r_(r), L_(L), in_(complex_noise((r * L / 2 + 1) * branches, 10 * r + L)) {
        out_ = reference::hermitian_stage(reinterpret_cast<const float*>(in_.data()), branches, r, L);
    }
    // Coefficient k as stored; the imaginary parts of those that are real are poison.
    number in(int k, int branch) const {
        const auto x = in_[k * branches + branch];
        return {x.real(), k == 0 || 2 * k == r_ * L_ ? nan : x.imag()};
    }
    number out(int j, int k, int branch) const { return out_[(k * r_ + j) * branches + branch]; }
    number twiddle(int j, int k) const { return std::polar(1.0, 2 * std::numbers::pi * j * k / (r_ * L_)); }
    // Input q of row k: a coefficient, or the one whose conjugate it is.
    number input(int q, int k, int branch) const {
        const int from = k + q * L_;
        return in(q < stored_inputs(r_) || k == 0 ? from : r_ * L_ - from, branch);
    }

private:
    int r_, L_;
    std::vector<std::complex<float>> in_;
    std::vector<reference::complex> out_;
};

// Rows 1 and up, each of another branch, in the lanes.
double error_of_complex_rows(const body& b, bool transposed, int lanes, int r) {
    const stage s(r, 2 * lanes + 1);
    const auto k_of = [](int lane) { return lane + 1; };
    const auto in_lanes = [&](const auto& number_of) {
        graph_vector v{};
        for (int lane = 0; lane < lanes; ++lane) v[lane] = number_of(lane);
        return v;
    };
    const auto load = [&](int q) { return in_lanes([&](int lane) { return s.input(q, k_of(lane), lane); }); };
    const auto twiddle = [&](int j) { return in_lanes([&](int lane) { return s.twiddle(j, k_of(lane)); }); };
    double error = 0;
    for (const auto& [slot, result] : interpret(b, lanes, load, twiddle)) {
        const transposed_slot along = transposed_slot::unpack(slot);
        for (int c = 0; c < lanes; ++c) {
            const bool column = !transposed || along.row == lanes;  // one output of all rows
            const int place = along.row * r + along.column + c;     // rows follow each other
            const int j = !transposed ? slot : column ? along.column : place % r, lane = column ? c : place / r;
            error = std::max(error, std::abs(result[c] - s.out(j, k_of(lane), lane)));
        }
    }
    return error;
}

// One branch in every lane; vectors of complex numbers hold two branches each.
double error_of_real_row(const body& b, const body_use& use, int r) {
    const int L = use.of == rows::zero ? 5 : 4, k = use.of == rows::zero ? 0 : L / 2;
    const stage s(r, L);
    const auto load = [&](int slot) {
        graph_vector v{};
        for (int c = 0; c < branches; ++c) {
            const int branch = use.one ? c : slot % 2 * 2 + c / 2;
            const number x = s.input(slot / 2, k, branch);
            v[c] = (use.one ? slot : c) % 2 ? x.imag() : x.real();
        }
        return v;
    };
    double error = 0;
    for (const auto& [j, result] : interpret(b, branches, load, load))
        for (int c = 0; c < branches; ++c) {
            const double e = std::abs(result[c] - s.out(j, k, c));
            if (std::isnan(e)) return e;
            error = std::max(error, e);
        }
    return error;
}

// The slots that a body must load and store, each once.
std::vector<int> expected_loads(const body_use& use, int r) {
    std::vector<int> slots;
    if (!use.is_real()) {
        for (int q = 0; q < r; ++q) slots.push_back(q);
        return slots;
    }
    const int inputs = use.of == rows::zero ? r / 2 + 1 : stored_inputs(r);
    for (int q = 0; q < inputs; ++q) {
        const bool is_real = use.of == rows::zero ? q == 0 || 2 * q == r : 2 * q + 1 == r;
        slots.push_back(2 * q);
        if (!use.one || !is_real) slots.push_back(2 * q + 1);
    }
    return slots;
}

std::vector<int> expected_stores(const body_use& use, int r) {
    std::vector<int> slots;
    if (use.of != rows::complex_rows_in_lanes) {
        for (int j = 0; j < r; ++j) slots.push_back(j);
        return slots;
    }
    const int lanes = use.lanes;
    if (lanes == 4 && r == 2) return {transposed_slot{0, 0}.pack(), transposed_slot{2, 0}.pack()};
    const int in_vectors = r / lanes * lanes;
    for (int row = 0; row < lanes; ++row)
        for (int column = 0; column < in_vectors; column += lanes) slots.push_back(transposed_slot{row, column}.pack());
    for (int column = in_vectors; column < r; ++column) slots.push_back(transposed_slot{lanes, column}.pack());
    return slots;
}

std::vector<int> sorted(std::vector<int> slots) {
    std::sort(slots.begin(), slots.end());
    return slots;
}

class sorensen_graphs : public testing::TestWithParam<int> {
protected:
    const form& family() const { return forms()[GetParam()]; }

    template <class Check>
    void for_each_body(const Check& check) const {
        for (const int r : sizes_to_try(family())) {
            SCOPED_TRACE(std::string(family().name) + " r=" + std::to_string(r));
            for (const auto& b : different_bodies(family(), r, family().sign)) {
                const body_use use = use_of(*b, r);
                ASSERT_NE(use.of, rows::unknown);
                check(*b, use, r);
            }
        }
    }
};

TEST_P(sorensen_graphs, compute_their_rows) {
    for_each_body([](const body& b, const body_use& use, int r) {
        const double error = use.is_real()
                                 ? error_of_real_row(b, use, r)
                                 : error_of_complex_rows(b, use.of == rows::complex_rows_in_lanes, use.lanes, r);
        EXPECT_LT(error, tolerance) << "rows " << int(use.of) << (use.one ? ", one branch" : "");
    });
}

TEST_P(sorensen_graphs, keep_their_promises) {
    for_each_body([](const body& b, const body_use& use, int r) {
        EXPECT_EQ(order_complaints(b), complaints{});
        EXPECT_EQ(constant_complaints(b), complaints{});
        EXPECT_EQ(sorted(slots_of(b, op::load)), expected_loads(use, r));
        EXPECT_EQ(sorted(slots_of(b, op::store)), expected_stores(use, r));
        std::vector<int> twiddles;
        for (int j = 1; j < r && !use.is_real(); ++j) twiddles.push_back(j);
        EXPECT_EQ(sorted(slots_of(b, op::twiddle)), twiddles);
    });
}

// Last stages have row 0 alone, all others three kinds of rows; first stages transpose.
TEST_P(sorensen_graphs, have_the_bodies_of_their_shape) {
    const bool last = family().loop == shape::hermitian_last, first = family().loop == shape::hermitian_first;
    for (const int r : family().sizes) {
        SCOPED_TRACE(std::string(family().name) + " r=" + std::to_string(r));
        const bodies all = different_bodies(family(), r, family().sign);
        const auto count = [&](rows of) {
            return std::count_if(all.begin(), all.end(), [&](const auto& b) { return use_of(*b, r).of == of; });
        };
        EXPECT_EQ(count(rows::zero), first ? 1 : 2);
        EXPECT_EQ(count(rows::middle), last ? 0 : first ? 1 : 2);
        EXPECT_EQ(count(rows::complex_rows_in_lanes), first ? 1 : 0);
        EXPECT_EQ(count(rows::complex_row) > 0, !last);
    }
}

INSTANTIATE_TEST_SUITE_P(all, sorensen_graphs, testing::ValuesIn(sorensen_families()),
                         [](const auto& info) { return std::string(forms()[info.param].name); });

}  // namespace
