// SPDX-License-Identifier: Apache-2.0
// Bodies that break one promise each: the checks that the kernels pass must notice every one.
#include <gtest/gtest.h>

#include "graph_checks.h"
#include "kernels/generator/formulas/sizes.h"
#include "kernels/generator/passes/interpretation.h"

namespace {

using namespace generator;

// A transform of two, with what `change` does to it; all recorded nodes are printed in the order of their recording.
template <class Change>
body transform_of_two(const Change& change) {
    body b{dag(constants_of(3, -1), false), {}};
    dag& g = b.graph;
    const int x0 = g.load(0), x1 = g.load(1);
    g.store(0, g.binary(op::add, x0, x1));
    g.store(1, g.binary(op::sub, x0, x1));
    for (int n = 0; n < int(g.nodes().size()); ++n) b.order.push_back(n);
    change(b);
    return b;
}
body unchanged() {
    return transform_of_two([](body&) {});
}

complaints all_complaints(const body& b) {
    complaints all;
    for (const complaints& some : {order_complaints(b), load_complaints(b, 2), store_complaints(b, 2),
                                   in_place_complaints(b), constant_complaints(b)})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

// A node at the end of the printed order.
void print(body& b, int n) { b.order.push_back(n); }

}  // namespace

TEST(GraphChecks, HaveNothingToComplainAboutInARightBody) {
    const body b = transform_of_two([](body& changed) {
        std::swap(changed.order[3], changed.order[4]);  // both sums, then both stores
    });
    EXPECT_EQ(all_complaints(b), complaints{});
}

TEST(GraphChecks, FindWhatIsOutOfOrderTwiceOrInVain) {
    const body late = transform_of_two([](body& b) { std::swap(b.order[1], b.order[2]); });
    EXPECT_EQ(order_complaints(late).size(), 1u);  // the sum in front of a load
    const body twice = transform_of_two([](body& b) { print(b, 2); });
    EXPECT_EQ(order_complaints(twice).size(), 1u);
    const body in_vain = transform_of_two([](body& b) { print(b, b.graph.binary(op::add_i, 0, 1)); });
    EXPECT_EQ(order_complaints(in_vain).size(), 1u);
    const body left_out = transform_of_two([](body& b) { b.order.pop_back(); });
    EXPECT_EQ(order_complaints(left_out).size(), 2u);  // the store, and the difference without it
}

TEST(GraphChecks, FindOperandsOverwrittenTooEarly) {
    EXPECT_EQ(copy_complaints(unchanged()), complaints{});
    const auto rotated_pair = [](body& b) {
        print(b, b.graph.binary(op::add_i, 0, 1));
        print(b, b.graph.binary(op::sub_i, 0, 1));
    };
    EXPECT_EQ(copy_complaints(transform_of_two(rotated_pair)).size(), 1u);  // the second wants what the first took
    const body reloaded = transform_of_two([](body& b) {
        print(b, b.graph.binary(op::add_i, 0, 1));
        print(b, b.graph.reload(0));
        print(b, b.graph.binary(op::sub_i, b.order.back(), 1));
    });
    EXPECT_EQ(copy_complaints(reloaded), complaints{});
}

TEST(GraphChecks, FindSlotsLeftOutOrUsedTwice) {
    EXPECT_EQ(load_complaints(unchanged(), 3).size(), 1u);
    EXPECT_EQ(store_complaints(unchanged(), 3).size(), 1u);
    const body one_more = transform_of_two([](body& b) { print(b, b.graph.load(2)); });
    EXPECT_EQ(load_complaints(one_more, 2).size(), 1u);
    const body again = transform_of_two([](body& b) {
        b.graph.store(1, 2);
        print(b, int(b.graph.nodes().size()) - 1);
    });
    EXPECT_EQ(store_complaints(again, 2).size(), 1u);
    const body wrong_twiddle = transform_of_two([](body& b) { print(b, b.graph.twiddle(0)); });
    EXPECT_EQ(load_complaints(wrong_twiddle, 2).size(), 1u);
}

TEST(GraphChecks, FindLoadsBehindStores) {
    const body late_load = transform_of_two([](body& b) { print(b, b.graph.load(2)); });
    EXPECT_EQ(in_place_complaints(unchanged()), complaints{});
    EXPECT_EQ(in_place_complaints(late_load).size(), 1u);
}

TEST(GraphChecks, FindConstantsOutsideThePool) {
    const auto with = [](op what, constant k) {
        return constant_complaints(transform_of_two([&](body& b) { print(b, b.graph.fused(what, 0, 1, k)); })).size();
    };
    EXPECT_EQ(with(op::fma, {0, 0}), 0u);
    EXPECT_EQ(with(op::fma, {1, 0}), 1u);  // the pool of 3 has one pair
    EXPECT_EQ(with(op::fma, {0, 2}), 1u);
    EXPECT_EQ(with(op::fma, {}), 2u);  // none, which is outside the pool
    EXPECT_EQ(with(op::add, {0, 0}), 1u);
    EXPECT_EQ(with(op::fma_i, {0, 1}), 0u);
    EXPECT_EQ(with(op::fma_i, {0, 0}), 1u);
    EXPECT_EQ(with(op::fma_i, {0, 0, true}), 0u);
    EXPECT_EQ(with(op::scale, {0, 0, true}), 1u);
    EXPECT_EQ(with(op::fms, {0, 1, false, 2}), 0u);
    EXPECT_EQ(with(op::fms, {0, 1, false, 3}), 1u);
}

TEST(GraphChecks, CountEveryOperation) {
    const operation_counts counts = count_operations(unchanged());
    const operation_counts expected{.loads = 2,
                                    .twiddles = 0,
                                    .adds = 2,
                                    .turned = 0,
                                    .scales = 0,
                                    .fused = 0,
                                    .turned_fused = 0,
                                    .products = 0,
                                    .exchanges = 0,
                                    .stores = 2,
                                    .pool = 1,
                                    .peak = 3};
    EXPECT_TRUE(counts == expected);
}

TEST(Interpreter, ComputesEveryOperation) {
    const number x[] = {{1, 2}, {3, -5}};
    const auto load = [&](int slot) -> graph_vector { return {x[slot], 2.0 * x[slot]}; };
    const auto twiddle = [](int) -> graph_vector { return {number(0, 1), number(2, 0)}; };
    const number i_unit(0, 1);
    const double c = -0.5, s = -std::sqrt(0.75);  // of 3, forward
    struct {
        op what;
        constant k;
        number expected;
    } const operations[] = {
        {op::add, {}, x[0] + x[1]},
        {op::sub, {}, x[0] - x[1]},
        {op::add_i, {}, x[0] + i_unit * x[1]},
        {op::sub_i, {}, x[0] - i_unit * x[1]},
        {op::fma, {0, 0}, x[0] + c * x[1]},
        {op::fma, {0, 1}, x[0] + s * x[1]},
        {op::fms, {0, 1}, x[0] - s * x[1]},
        {op::fma_i, {0, 1}, x[0] + s * i_unit * x[1]},
        {op::fma_i, {0, 0}, x[0] + s * i_unit * x[1]},  // odd lanes, whatever is named
        {op::fms_i, {0, 0, true}, x[0] - c * i_unit * x[1]},
        {op::fms_i, {0, 0, true, true}, x[0] - 2 * c * i_unit * x[1]},
        {op::fms_i, two, x[0] - 2.0 * i_unit * x[1]},
        {op::twice_minus, {}, 2.0 * x[0] - x[1]},
    };
    for (const auto& o : operations) {
        const body b = transform_of_two([&](body& changed) {
            dag& g = changed.graph;
            print(changed, g.fused(o.what, 0, 1, o.k));
            g.store(2, changed.order.back());
            print(changed, int(g.nodes().size()) - 1);
        });
        const graph_vector result = interpret(b, 2, load, twiddle).at(2);
        EXPECT_LT(std::abs(result[0] - o.expected), 1e-15) << int(o.what);
        EXPECT_LT(std::abs(result[1] - 2.0 * o.expected), 1e-15) << int(o.what);
    }
    const body exchanged = transform_of_two([](body& b) {
        dag& g = b.graph;
        const int w = g.twiddle(1);
        const int lo = g.binary(op::zip_lo, 0, 1), hi = g.binary(op::zip_hi, 0, 1);
        g.store(2, g.binary(op::mul, lo, w));
        g.store(3, g.scale(hi, {0, 0}));
        for (int n = b.order.back() + 1; n < int(g.nodes().size()); ++n) print(b, n);
    });
    const auto results = interpret(exchanged, 2, load, twiddle);
    EXPECT_EQ(results.at(2)[0], x[0] * i_unit);
    EXPECT_EQ(results.at(2)[1], x[1] * 2.0);
    EXPECT_EQ(results.at(3)[0], x[0] * 2.0 * c);
    EXPECT_EQ(results.at(3)[1], x[1] * 2.0 * c);
}

// Exchanges of four real lanes, and constants that differ between them.
TEST(Interpreter, ComputesFourRealLanes) {
    const auto load = [](int slot) -> graph_vector {
        const double first = 10.0 * slot;
        return {first, first + 1, first + 2, first + 3};
    };
    struct {
        op what;
        graph_vector expected;
    } const exchanges[] = {
        {op::interleave_lo, {0, 10, 1, 11}}, {op::interleave_hi, {2, 12, 3, 13}}, {op::evens, {0, 2, 10, 12}},
        {op::odds, {1, 3, 11, 13}},          {op::swap_halves, {2, 3, 0, 1}},     {op::swap_pairs, {1, 0, 3, 2}},
        {op::neg, {0, -1, -2, -3}},          {op::reload, {0, 1, 2, 3}},
    };
    for (const auto& e : exchanges) {
        const body b = transform_of_two([&](body& changed) {
            const bool unary =
                e.what == op::swap_halves || e.what == op::swap_pairs || e.what == op::neg || e.what == op::reload;
            print(changed, changed.graph.binary(e.what, 0, unary ? none : 1));
            changed.graph.store(2, changed.order.back());
            print(changed, int(changed.graph.nodes().size()) - 1);
        });
        EXPECT_EQ(interpret(b, 4, load, load).at(2), e.expected) << int(e.what);
    }
    body b{dag(pool::growing(false), false), {}};
    const int x = b.graph.load(1);
    b.graph.store(0, b.graph.scale(x, b.graph.constants().add_lanes({1, 2, 3, 4})));
    b.order = {0, 1, 2};
    EXPECT_EQ(interpret(b, 4, load, load).at(0), (graph_vector{10, 22, 36, 52}));
    EXPECT_EQ(constant_complaints(b), complaints{});
}
