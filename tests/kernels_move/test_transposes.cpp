// SPDX-License-Identifier: Apache-2.0
// Every transpose by itself, against a plain double loop, over all small shapes and the edges of the blocks.
#include "kernels/move/leaves.h"
#include "kernels/move/move.h"

#include "arrays.h"

#include <array>

namespace {

using transpose_kernel = void (*)(const float*, float*, int64_t, int64_t, int64_t, int64_t);
struct transpose_case {
    const char* name;
    transpose_kernel kernel;
    int width;  // floats of one element
};
const transpose_case transposes[] = {{"transpose_cpx", transpose_cpx, 2},
                                     {"transpose_cpx_tiled", transpose_cpx_tiled, 2},
                                     {"transpose_fp", transpose_fp, 1}};

void check_transpose(const transpose_case& t, int64_t rows, int64_t columns, int64_t source_ld,
                     int64_t destination_ld) {
    const std::vector<float> source = numbered(span(rows, columns, source_ld), t.width);
    guarded result(span(columns, rows, destination_ld), t.width), expected = result;
    for (int64_t i = 0; i < rows; ++i)
        for (int64_t j = 0; j < columns; ++j)
            expected.put(j * destination_ld + i, source.data() + (i * source_ld + j) * t.width);
    t.kernel(source.data(), result.data(), rows, columns, source_ld, destination_ld);
    ASSERT_EQ(result.difference(expected), "") << t.name << " rows " << rows << " columns " << columns << " source ld "
                                               << source_ld << " destination ld " << destination_ld;
}

const int64_t block_edges[] = {63, 64, 65, 127, 128, 129};

class Transpose : public testing::TestWithParam<transpose_case> {};

}  // namespace

TEST_P(Transpose, IsRightForAllSmallShapes) {
    for (int64_t rows = 0; rows <= 40; ++rows)
        for (int64_t columns = 0; columns <= 40; ++columns) {
            check_transpose(GetParam(), rows, columns, columns, rows);
            check_transpose(GetParam(), rows, columns, columns + 5, rows + 3);
        }
}

TEST_P(Transpose, IsRightAtBlockEdges) {
    for (int64_t rows : block_edges)
        for (int64_t columns : block_edges) {
            check_transpose(GetParam(), rows, columns, columns, rows);
            check_transpose(GetParam(), rows, columns, columns + 1, rows + 7);
        }
}

TEST_P(Transpose, IsRightForNarrowShapesBesideBlockEdges) {
    for (int64_t narrow : {1, 2, 3, 4, 7, 8, 9, 15, 16, 17})
        for (int64_t wide : block_edges) {
            check_transpose(GetParam(), narrow, wide, wide + 2, narrow + 1);
            check_transpose(GetParam(), wide, narrow, narrow + 1, wide + 2);
        }
}

INSTANTIATE_TEST_SUITE_P(Kernels, Transpose, testing::ValuesIn(transposes),
                         [](const auto& info) { return std::string(info.param.name); });

namespace {

void check_square(const char* name, void (*kernel)(float*, int64_t, int64_t), int width, int64_t size, int64_t ld) {
    guarded result(span(size, size, ld), width);
    const std::vector<float> values = numbered(span(size, size, ld), width);
    guarded expected = result;
    for (int64_t i = 0; i < size; ++i)
        for (int64_t j = 0; j < size; ++j) {
            result.put(i * ld + j, values.data() + (i * ld + j) * width);
            expected.put(j * ld + i, values.data() + (i * ld + j) * width);
        }
    kernel(result.data(), size, ld);
    ASSERT_EQ(result.difference(expected), "") << name << " size " << size << " ld " << ld;
}

void check_square(int64_t size, int64_t ld) {
    check_square("transpose_cpx_square", transpose_cpx_square, 2, size, ld);
    check_square("transpose_fp_square", transpose_fp_square, 1, size, ld);
}

}  // namespace

TEST(TransposeSquare, WorksInPlace) {
    for (int64_t size = 0; size <= 40; ++size)
        for (int64_t padding : {0, 1, 5}) check_square(size, size + padding);
    for (int64_t size : {63, 64, 65, 100})
        for (int64_t padding : {0, 1, 28}) check_square(size, size + padding);
}

namespace {

using leaf = std::array<int64_t, 4>;  // row, column, rows, columns

std::vector<leaf> leaves_of(int64_t rows, int64_t columns) {
    std::vector<leaf> leaves;
    for_each_leaf(0, 0, rows, columns,
                  [&](int64_t i, int64_t j, int64_t r, int64_t c) { leaves.push_back({i, j, r, c}); });
    return leaves;
}

}  // namespace

TEST(Leaves, CutAtPowersStrictlyBelow) {
    EXPECT_EQ(power_below(2), 1);
    EXPECT_EQ(power_below(16), 8);
    EXPECT_EQ(power_below(17), 16);
    EXPECT_EQ(power_below(32), 16);
    EXPECT_EQ(power_below(33), 32);
}

TEST(Leaves, StandInTheKnownOrder) {
    EXPECT_EQ(leaves_of(16, 16), (std::vector<leaf>{{0, 0, 16, 16}}));
    EXPECT_EQ(leaves_of(17, 16), (std::vector<leaf>{{0, 0, 16, 16}, {16, 0, 1, 16}}));
    EXPECT_EQ(leaves_of(32, 32),
              (std::vector<leaf>{{0, 0, 16, 16}, {16, 0, 16, 16}, {0, 16, 16, 16}, {16, 16, 16, 16}}));
    EXPECT_EQ(leaves_of(3, 40), (std::vector<leaf>{{0, 0, 3, 16}, {0, 16, 3, 16}, {0, 32, 3, 8}}));
}

TEST(Leaves, CoverEveryElementOnce) {
    for (int64_t rows : {1, 5, 16, 17, 31, 33, 64, 100})
        for (int64_t columns : {1, 15, 16, 18, 47, 129}) {
            std::vector<int> visits(rows * columns);
            for (const leaf& l : leaves_of(rows, columns)) {
                EXPECT_LE(l[2], leaf_side);
                EXPECT_LE(l[3], leaf_side);
                for (int64_t i = l[0]; i < l[0] + l[2]; ++i)
                    for (int64_t j = l[1]; j < l[1] + l[3]; ++j) ++visits.at(i * columns + j);
            }
            for (int v : visits) ASSERT_EQ(v, 1) << rows << " by " << columns;
        }
}
