// SPDX-License-Identifier: Apache-2.0
// Measured planning keeps whatever plan the clock prefers, so each one has to be right: every candidate wins in turn,
// by a clock that the test steers, and several settlements of the races below it are tried. By hand, with longer
// columns:  test_candidates [most elements]
#include <gtest/gtest.h>

#include <cstdlib>

#include "batch/block_col_col_table.h"
#include "tests/batch/differential/check.h"
#include "tests/support/emulated.h"

namespace {

int64_t most_elements = is_emulated ? 16384 : 262144;

transform_problem measured(uint32_t kind, std::vector<fft_dim> dims, std::vector<fft_dim> batch, int clock_seeds) {
    transform_problem p;
    p.kind = kind;
    p.sign = kind == kind_c2r ? 1 : -1;
    p.dims = std::move(dims);
    p.batch = std::move(batch);
    p.measured = true;
    p.clock_seeds = clock_seeds;
    return p;
}

void expect_every_candidate_right(const transform_problem& p) {
    const check_result result = check_problem(p);
    EXPECT_EQ(result.failure, "") << p.text() << "\n" << result.tree;
}

// Columns side by side, both sides alike.
transform_problem columns(int64_t n, int64_t count, int clock_seeds) {
    return measured(kind_c2c, {{n, count, count}}, {{count, 1, 1}}, clock_seeds);
}

}  // namespace

TEST(Candidates, OfColumnsAreRightForEveryShapeOfTheBlockTable) {
    int shapes = 0;
    for (const block_col_col_case& c : block_col_col_table) {
        const auto n = static_cast<int64_t>(c.n);
        const auto count = static_cast<int64_t>(c.exact ? c.exact & ~uint64_t{3} : 2 * c.block);
        if (n * count > most_elements) continue;
        ++shapes;
        expect_every_candidate_right(columns(n, count, is_emulated || n * count > 32768 ? 1 : 4));
    }
    EXPECT_GE(shapes, is_emulated ? 3 : 16);
}

// Where a race below settles on another plan than the rules do, what runs above it has to do without the storage that
// the rules' plan has.
TEST(Candidates, OfColumnsAreRightHoweverTheRacesOfTheirBlocksEnd) {
    expect_every_candidate_right(columns(64, 256, is_emulated ? 5 : 40));
    transform_problem square = measured(kind_c2c, {{64, 64, 64}, {64, 1, 1}}, {}, is_emulated ? 2 : 10);
    expect_every_candidate_right(square);
    square.in_place = true;
    expect_every_candidate_right(square);
}

TEST(Candidates, OfEveryKindAreRightInEveryShape) {
    static constexpr int64_t lengths[] = {1, 2, 6, 15, 16, 24, 25, 32, 41, 60, 64, 83, 100, 128, 240, 256};
    for (const uint32_t kind : {kind_c2c, kind_r2c, kind_c2r, kind_r2r})
        for (const int64_t n : lengths)
            for (const int64_t batch : {1, 4, 7, 16})
                for (const bool interleaved : {false, true}) {
                    const bool alone = batch == 1;
                    if (alone && interleaved) continue;
                    if (is_emulated && (n > 128 || batch == 7)) continue;
                    const int64_t half = n / 2 + 1;
                    const int64_t in = kind == kind_c2r ? half : n, out = kind == kind_r2c ? half : n;
                    const int64_t step = interleaved ? batch : 1;
                    std::vector<fft_dim> many;
                    if (!alone) many.push_back({batch, interleaved ? 1 : in, interleaved ? 1 : out});
                    transform_problem p = measured(kind, {{n, step, step}}, many, is_emulated ? 1 : 3);
                    if (kind == kind_r2r) {
                        p.sign = 0;
                        p.r2r_kinds = {n == 1 ? uint32_t{r2r_dht} : static_cast<uint32_t>((n + batch) % 11)};
                    }
                    expect_every_candidate_right(p);
                }
}

TEST(Candidates, OfSeveralDimensionsAreRight) {
    struct {
        int64_t rows, columns;
    } shapes[] = {{8, 6}, {16, 64}, {32, 20}, {60, 64}, {64, 100}};
    for (const uint32_t kind : {kind_c2c, kind_r2c, kind_c2r})
        for (const auto& s : shapes)
            for (const int64_t batch : {1, 3}) {
                const int64_t half = s.columns / 2 + 1;
                const int64_t in = kind == kind_c2r ? half : s.columns, out = kind == kind_r2c ? half : s.columns;
                std::vector<fft_dim> many;
                if (batch > 1) many.push_back({batch, s.rows * in, s.rows * out});
                expect_every_candidate_right(
                    measured(kind, {{s.rows, in, out}, {s.columns, 1, 1}}, many, is_emulated ? 1 : 3));
            }
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (argc > 1) most_elements = std::atoll(argv[1]);
    return RUN_ALL_TESTS();
}
