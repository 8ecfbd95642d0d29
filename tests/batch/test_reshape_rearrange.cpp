// SPDX-License-Identifier: Apache-2.0
// Plans of rank 0, in place and out of place, and complex transforms of length 1: every float of the arrays is compared
// with what a plain loop leaves there.
#include "reshape_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <numeric>

namespace {

constexpr int64_t guard = 32;  // floats

struct arrays {
    std::vector<float> in, out;  // `out` is empty in place
    float* in_data() { return in.data() + guard; }
    float* out_data() { return out.empty() ? in_data() : out.data() + guard; }
};

int width_of(const problem& p) { return p.kind == kind_r2r ? 1 : 2; }

arrays fill(const problem& p) {
    const int64_t in = p.reach(true) * width_of(p), out = p.reach(false) * width_of(p);
    arrays a;
    a.in.resize((p.in_place ? std::max(in, out) : in) + 2 * guard);
    if (!p.in_place) a.out.resize(out + 2 * guard);
    std::iota(a.in.begin(), a.in.end(), 1.0f);
    std::iota(a.out.begin(), a.out.end(), -1e6f);
    return a;
}

// What the arrays hold when every element has been copied at once.
arrays moved(const problem& p, const arrays& before) {
    arrays after = before;
    std::vector<fft_dim> triples = p.dims;
    triples.insert(triples.end(), p.batch.begin(), p.batch.end());
    for_each_position(triples, [&](int64_t in, int64_t out) {
        const int w = width_of(p);
        memcpy(after.out_data() + out * w, before.in.data() + guard + in * w, w * sizeof(float));
    });
    return after;
}

void expect_equal(const arrays& actual, const arrays& expected, const problem& p) {
    ASSERT_EQ(actual.in, expected.in) << p.text();
    ASSERT_EQ(actual.out, expected.out) << p.text();
}

void check(const problem& p, const std::string& expected_tree = "") {
    const arrays before = fill(p), expected = moved(p, before);
    arrays a = before;
    const plan_pointer plan = p.plan(a.in_data(), a.out_data());
    ASSERT_NE(plan, nullptr) << p.text();
    if (!expected_tree.empty()) {
        EXPECT_EQ(tree(*plan), expected_tree) << p.text();
    }
    const auto run = [&] {
        a.in = before.in;
        a.out = before.out;
        plan->execute(plan.get(), a.in_data(), a.out_data());
        expect_equal(a, expected, p);
    };
    run();
    run();
    with_own_scratch(run);
}

problem rearrangement(uint32_t kind, std::vector<fft_dim> batch, bool in_place) {
    problem p;
    p.kind = kind;
    p.batch = std::move(batch);
    p.in_place = in_place;
    return p;
}

const uint32_t kinds[] = {kind_c2c, kind_r2r};

// Strides of `n` for the index order `order`, last one fastest; every row of the fastest has `padding` more elements.
std::vector<int64_t> strides_for(const std::vector<int64_t>& n, const std::vector<int>& order, int64_t padding) {
    std::vector<int64_t> s(n.size());
    int64_t step = 1;
    for (size_t k = order.size(); k-- > 0;) {
        s[order[k]] = step;
        step = step * n[order[k]] + (k + 1 == order.size() ? padding : 0);
    }
    return s;
}

// All layouts of the counts `n` on both sides: every order of the indices, with and without padding.
void check_all_layouts(const std::vector<int64_t>& n) {
    std::vector<std::vector<int64_t>> sides;
    std::vector<int> order(n.size());
    std::iota(order.begin(), order.end(), 0);
    do
        for (int64_t padding : {0, 3}) sides.push_back(strides_for(n, order, padding));
    while (std::next_permutation(order.begin(), order.end()));
    for (const auto& is : sides)
        for (const auto& os : sides)
            for (uint32_t kind : kinds)
                for (bool in_place : {false, true}) {
                    std::vector<fft_dim> batch;
                    for (size_t i = 0; i < n.size(); ++i) batch.push_back({n[i], is[i], os[i]});
                    check(rearrangement(kind, batch, in_place));
                }
}

}  // namespace

TEST(Rearrange, MovesOneBatchDimension) {
    for (int64_t n : {2, 3, 8, 17, 40})
        for (uint32_t kind : kinds)
            for (bool in_place : {false, true})
                for (int64_t is : {1, 3})
                    for (int64_t os : {1, 2}) check(rearrangement(kind, {{n, is, os}}, in_place));
}

TEST(Rearrange, MovesTwoBatchDimensions) {
    for (int64_t rows : {1, 2, 5, 16, 17})
        for (int64_t columns : {1, 3, 5, 16, 20}) check_all_layouts({rows, columns});
}

TEST(Rearrange, MovesThreeBatchDimensions) { check_all_layouts({3, 2, 5}); }

TEST(Rearrange, MovesFourBatchDimensions) { check_all_layouts({2, 3, 1, 4}); }

TEST(Rearrange, TransposesASquareWhereItStands) {
    for (int64_t n : {2, 5, 8, 9, 16, 40, 64})
        for (int64_t padding : {0, 3}) {
            const std::vector<fft_dim> batch = {{n, n + padding, 1}, {n, 1, n + padding}};
            check(rearrangement(kind_c2c, batch, true),
                  "solve_problem_rearrange_inplace: execute_trans_cpx_square_matrix\n");
            check(rearrangement(kind_r2r, batch, true),
                  "solve_problem_rearrange_inplace: execute_trans_fp_square_matrix\n");
        }
}

// The mirror of an element isn't at its mirrored place when the two leading dimensions differ.
TEST(Rearrange, GoesThroughTheBufferWhereLeadingDimensionsDiffer) {
    check(rearrangement(kind_c2c, {{5, 7, 1}, {5, 1, 6}}, true),
          "solve_problem_rearrange_inplace: execute_rearrange_inplace\n"
          "  solve_problem_rearrange_outplace: execute_copy_cpx\n"
          "  solve_problem_rearrange_outplace: execute_trans_cpx\n");
}

TEST(Rearrange, TransposesOrCopies) {
    check(rearrangement(kind_r2r, {{6, 9, 1}, {9, 1, 6}}, true),
          "solve_problem_rearrange_inplace: execute_rearrange_inplace\n"
          "  solve_problem_rearrange_outplace: execute_copy_fp\n"
          "  solve_problem_rearrange_outplace: execute_trans_fp\n");
    check(rearrangement(kind_c2c, {{8, 1, 2}}, false), "solve_problem_rearrange_outplace: execute_copy_cpx\n");
    check(rearrangement(kind_r2r, {{8, 1, 2}}, false), "solve_problem_rearrange_outplace: execute_copy_fp\n");
    check(rearrangement(kind_c2c, {{6, 9, 1}, {9, 1, 6}}, false),
          "solve_problem_rearrange_outplace: execute_trans_cpx\n");
    check(rearrangement(kind_r2r, {{6, 9, 1}, {9, 1, 6}}, false),
          "solve_problem_rearrange_outplace: execute_trans_fp\n");
}

TEST(Rearrange, BufferHoldsEachElementOnce) {
    float array[1];
    const plan_pointer cpx = rearrangement(kind_c2c, {{6, 20, 1}, {9, 1, 30}}, true).plan(array, array),
                       fp = rearrangement(kind_r2r, {{3, 1, 100}, {4, 50, 1}, {5, 3, 7}}, true).plan(array, array);
    EXPECT_EQ(cpx->buffer_size, 8u * 6 * 9);
    EXPECT_EQ(fp->buffer_size, 4u * 3 * 4 * 5);
    const plan_pointer square = rearrangement(kind_r2r, {{5, 5, 1}, {5, 1, 5}}, true).plan(array, array);
    EXPECT_EQ(square->buffer, nullptr);
}

TEST(Rearrange, WithoutScratchNothingIsWritten) {
    const problem p = rearrangement(kind_c2c, {{6, 9, 1}, {9, 1, 6}}, true);
    const arrays before = fill(p);
    arrays a = before;
    const plan_pointer plan = p.plan(a.in_data(), a.in_data());
    make_scratch_unaffordable(plan.get());
    with_own_scratch([&] { plan->execute(plan.get(), a.in_data(), a.in_data()); });
    expect_equal(a, before, p);
}

TEST(Rearrange, RefusesWhatIsNotPlainData) {
    float in[64], out[64];
    EXPECT_EQ(rearrangement(kind_c2c, {}, false).plan(in, out), nullptr);
    EXPECT_EQ(rearrangement(kind_r2r, {}, true).plan(in, in), nullptr);
    EXPECT_EQ(rearrangement(kind_r2c, {{3, 1, 1}}, false).plan(in, out), nullptr);
    EXPECT_EQ(rearrangement(kind_c2r, {{3, 1, 1}}, true).plan(in, in), nullptr);
    for (float* target : {in, out})
        for (const std::vector<fft_dim>& batch : {std::vector<fft_dim>{{3, 1, 2}}, {{3, 3, 1}, {3, 1, 3}}}) {
            fft_plan* split = rearrangement(kind_c2c, batch, false).record(in, target).release();
            split->split = split_arrays;
            EXPECT_NE(plan_problem(&split), accepted);
            fft_plan_free(split);
        }
}

TEST(Nop, CopiesValues) {
    problem p;
    p.dims = {{1, 1, 1}};
    check(p, "solve_problem_nop: execute_nop\n");
    for (int64_t n : {2, 7, 8, 33})
        for (int64_t is : {1, 3})
            for (int64_t os : {1, 2}) {
                p.batch = {{n, is, os}};
                p.in_place = false;
                check(p, "solve_problem_nop: execute_nop\n");
                p.in_place = true;
                if (is == os) check(p, "solve_problem_nop: execute_nop\n");
            }
}

TEST(Nop, TwoBatchDimensionsArePeeled) {
    problem p;
    p.dims = {{1, 1, 1}};
    p.batch = {{3, 10, 12}, {5, 2, 1}};
    check(p, "solve_problem_dft_many: execute_many\n  solve_problem_nop: execute_nop\n");
}

// Values would have to change places. No row takes this.
TEST(Nop, RefusesInPlaceWithTwoDistances) {
    float array[16];
    problem p;
    p.dims = {{1, 1, 1}};
    p.batch = {{3, 1, 2}};
    p.in_place = true;
    EXPECT_EQ(p.plan(array, array), nullptr);
}
