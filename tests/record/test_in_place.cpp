// SPDX-License-Identifier: Apache-2.0
// may_run_in_pieces against the exact sets of floats that the items of small problems read and write.
#include "record/in_place.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int64_t span = 512;  // floats; no problem below reaches further

// Which item of the batch each float belongs to on one side, -1 for none.
struct side {
    std::array<int, span> owner;
    bool valid = true;  // no float belongs to two elements
    side() { owner.fill(-1); }
};

void collect(const fft_dim* dims, int count, bool input, int width, int64_t at, int item, side& s) {
    if (count == 0) {
        for (int64_t f = at; f < at + width; ++f) {
            ASSERT_LT(f, span);
            s.valid &= s.owner[f] < 0;
            s.owner[f] = item;
        }
        return;
    }
    const int64_t step = (input ? dims->is : dims->os) * width;
    for (int64_t i = 0; i < dims->n; ++i) collect(dims + 1, count - 1, input, width, at + i * step, item, s);
}

side floats_of(const fft_plan& p, bool input) {
    uint64_t bytes[2];
    fft_element_sizes(p.kind, &bytes[0], &bytes[1]);
    const int width = static_cast<int>(bytes[!input] / 4), count = p.rank + p.howmany_rank - 1;
    fft_dim dims[2 * max_rank];
    std::copy(p.dims, p.dims + p.rank, dims);
    if (p.rank && bytes[0] != bytes[1] && width == 2) dims[p.rank - 1].n = dims[p.rank - 1].n / 2 + 1;
    std::copy(p.howmany + 1, p.howmany + p.howmany_rank, dims + p.rank);
    const int64_t step = (input ? p.howmany[0].is : p.howmany[0].os) * width;
    side s;
    for (int k = 0; k < p.howmany[0].n; ++k) collect(dims, count, input, width, k * step, k, s);
    return s;
}

// True when no item writes what another one reads.
bool items_keep_apart(const side& in, const side& out) {
    for (int64_t f = 0; f < span; ++f)
        if (in.owner[f] >= 0 && out.owner[f] >= 0 && in.owner[f] != out.owner[f]) return false;
    return true;
}

std::string text(const fft_plan& p) {
    std::ostringstream s;
    s << "kind " << p.kind;
    for (int d = 0; d < p.rank; ++d) s << " dim " << p.dims[d].n << ":" << p.dims[d].is << ":" << p.dims[d].os;
    for (int b = 0; b < p.howmany_rank; ++b)
        s << " batch " << p.howmany[b].n << ":" << p.howmany[b].is << ":" << p.howmany[b].os;
    return s.str();
}

float array_in_place[1];

fft_plan problem(uint32_t kind, std::vector<fft_dim> dims, std::vector<fft_dim> batch) {
    fft_plan p = {};
    p.kind = kind;
    p.rank = static_cast<int>(dims.size());
    p.howmany_rank = static_cast<int>(batch.size());
    fft_plan_copy_dims(p.dims, dims.data(), p.rank);
    fft_plan_copy_dims(p.howmany, batch.data(), p.howmany_rank);
    p.in = p.out = array_in_place;
    return p;
}

const uint32_t kinds[] = {kind_c2c, kind_c2r, kind_r2c, kind_r2r};
struct tally {
    int yes = 0, no = 0;
};

void check(const fft_plan& p, tally& count) {
    const side in = floats_of(p, true), out = floats_of(p, false);
    if (!in.valid || !out.valid) return;
    if (!may_run_in_pieces(p)) {
        ++count.no;
        return;
    }
    ++count.yes;
    ASSERT_TRUE(items_keep_apart(in, out)) << text(p);
}

}  // namespace

TEST(InPlace, RankOneNeverLetsItemsMeet) {
    for (uint32_t kind : kinds) {
        tally count;
        for (int64_t n = 1; n <= 4; ++n)
            for (int64_t c = 2; c <= 3; ++c)
                for (int64_t is = 1; is <= 5; ++is)
                    for (int64_t os = 1; os <= 5; ++os)
                        for (int64_t id = 1; id <= 12; ++id)
                            for (int64_t od = 1; od <= 12; ++od)
                                check(problem(kind, {{n, is, os}}, {{c, id, od}}), count);
        EXPECT_GT(count.yes, 50) << "kind " << kind;
        EXPECT_GT(count.no, 50) << "kind " << kind;
    }
}

TEST(InPlace, TwoDimensionsOrTwoBatchesNeverLetItemsMeet) {
    const int64_t strides[] = {1, 2, 3, 4, 6, 8};
    for (uint32_t kind : kinds) {
        tally count;
        for (bool second_is_batch : {false, true})
            for (int64_t a_is : strides)
                for (int64_t a_os : strides)
                    for (int64_t b_is : strides)
                        for (int64_t b_os : strides)
                            for (int64_t d : {1, 2, 3, 6, 9, 12, 18, 24})
                                for (int64_t twice : {0, 1, -1}) {
                                    const fft_dim batch = {2, twice < 0 ? 2 * d : d, twice > 0 ? 2 * d : d};
                                    const fft_dim a = {2, a_is, a_os}, b = {3, b_is, b_os};
                                    check(second_is_batch ? problem(kind, {b}, {batch, a})
                                                          : problem(kind, {a, b}, {batch}),
                                          count);
                                }
        EXPECT_GT(count.yes, 50) << "kind " << kind;
        EXPECT_GT(count.no, 50) << "kind " << kind;
    }
}

TEST(InPlace, CommonLayoutsRun) {
    EXPECT_TRUE(may_run_in_pieces(problem(kind_c2c, {{8, 1, 1}}, {{5, 8, 8}})));               // rows
    EXPECT_TRUE(may_run_in_pieces(problem(kind_c2c, {{8, 5, 5}}, {{5, 1, 1}})));               // columns
    EXPECT_TRUE(may_run_in_pieces(problem(kind_c2c, {{4, 1, 4}, {4, 4, 1}}, {{5, 16, 16}})));  // transposed planes
    EXPECT_TRUE(may_run_in_pieces(problem(kind_r2r, {{8, 5, 5}}, {{5, 1, 1}})));
    EXPECT_TRUE(may_run_in_pieces(problem(kind_r2c, {{7, 1, 1}}, {{5, 8, 4}})));  // padded rows
    EXPECT_TRUE(may_run_in_pieces(problem(kind_c2r, {{6, 8, 16}, {6, 1, 1}}, {{5, 64, 128}})));
    EXPECT_TRUE(may_run_in_pieces(problem(kind_r2c, {{3, 40, 20}, {7, 1, 1}}, {{5, 8, 4}})));  // rows of items in turn
}

TEST(InPlace, ItemsThatMeetDoNotRun) {
    EXPECT_FALSE(may_run_in_pieces(problem(kind_c2c, {{4, 1, 4}}, {{4, 4, 1}})));  // a transpose
    EXPECT_FALSE(may_run_in_pieces(problem(kind_c2c, {{4, 1, 1}}, {{4, 8, 4}})));  // packing rows closer
    EXPECT_FALSE(may_run_in_pieces(problem(kind_c2c, {{1, 1, 1}}, {{4, 1, 2}})));  // one point each, spread
    EXPECT_FALSE(may_run_in_pieces(problem(kind_r2c, {{8, 5, 5}}, {{5, 1, 1}})));  // columns of two element sizes
    EXPECT_FALSE(may_run_in_pieces(problem(kind_r2c, {{8, 1, 1}}, {{5, 8, 4}})));  // rows without padding
}

TEST(InPlace, OutOfPlaceAndSingleItemsAlwaysRun) {
    fft_plan p = problem(kind_c2c, {{4, 1, 4}}, {{4, 4, 1}});
    p.howmany[0].n = 1;
    EXPECT_TRUE(may_run_in_pieces(p));
    p.howmany_rank = 0;
    EXPECT_TRUE(may_run_in_pieces(p));
    p = problem(kind_c2c, {{4, 1, 4}}, {{4, 4, 1}});
    float other[1];
    p.out = other;
    EXPECT_TRUE(may_run_in_pieces(p));
}
