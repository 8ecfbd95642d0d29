// SPDX-License-Identifier: Apache-2.0
// may_run_in_pieces on split arrays that meet each other in every way, against the exact sets of floats. A batch of
// two dimensions is told apart to the last item, since the loop over one dimension answers for the inner loop too.
#include "record/in_place.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int64_t span = 400;
float arena[span];

struct side {
    std::vector<int> owner = std::vector<int>(span, -1);
    bool valid = true;
};

void collect(const fft_plan& p, const float* array, bool input, side& s, bool distinct) {
    const bool half = input ? p.kind == kind_c2r : p.kind == kind_r2c;
    const int64_t n = half ? p.dims[0].n / 2 + 1 : p.dims[0].n;
    for (int64_t a = 0; a < p.howmany[0].n; ++a)
        for (int64_t b = 0; b < p.howmany[1].n; ++b)
            for (int64_t j = 0; j < n; ++j) {
                auto at = [&](const fft_dim& d, int64_t i) { return i * (input ? d.is : d.os); };
                const int64_t f = array - arena + at(p.howmany[0], a) + at(p.howmany[1], b) + at(p.dims[0], j);
                int& owner = s.owner.at(f);
                if (distinct && owner >= 0) s.valid = false;
                owner = static_cast<int>(a * p.howmany[1].n + b);
            }
}

std::string text(const fft_plan& p) {
    std::ostringstream s;
    s << "kind " << p.kind << " arrays " << p.in - arena << " " << p.in_imag - arena << " -> " << p.out - arena << " "
      << p.out_imag - arena;
    for (const fft_dim& d : {p.dims[0], p.howmany[0], p.howmany[1]}) s << " " << d.n << ":" << d.is << ":" << d.os;
    return s.str();
}

struct tally {
    int yes = 0, no = 0;
};

// Both loops have to agree before an item runs: the outer on the whole problem, the inner on its own subplan.
bool runs_in_pieces(const fft_plan& p) {
    if (!may_run_in_pieces(p)) return false;
    fft_plan inner = p;
    inner.howmany_rank = 1;
    inner.howmany[0] = p.howmany[1];
    inner.out_imag = p.out;
    return may_run_in_pieces(inner);
}

void check(const fft_plan& p, tally& count) {
    side in, out;
    collect(p, p.in, true, in, true);
    if (p.kind != kind_r2c) collect(p, p.in_imag, true, in, true);
    collect(p, p.out, false, out, true);
    if (p.kind != kind_c2r) collect(p, p.out_imag, false, out, true);
    if (!in.valid || !out.valid) return;
    if (!runs_in_pieces(p)) {
        ++count.no;
        return;
    }
    ++count.yes;
    for (int64_t f = 0; f < span; ++f)
        ASSERT_TRUE(in.owner[f] < 0 || out.owner[f] < 0 || in.owner[f] == out.owner[f]) << text(p);
}

}  // namespace

TEST(InPlaceSplit, ItemsNeverMeet) {
    const fft_dim dims[] = {{4, 1, 1}, {4, 2, 2}, {4, 6, 6}, {4, 1, 2}};
    const fft_dim batches[] = {{2, 1, 1}, {2, 12, 12}, {2, 24, 24}, {2, 12, 24},
                               {2, 8, 6}, {3, 40, 40}, {3, 40, 44}, {1, 5, 7}};
    const int64_t offsets[] = {0, 1, 3, 5, 12, 60};
    for (uint32_t kind : {kind_c2c, kind_c2r, kind_r2c}) {
        tally count;
        for (const fft_dim& d : dims)
            for (const fft_dim& outer : batches)
                for (const fft_dim& inner : batches)
                    for (int64_t in_imag : offsets)
                        for (int64_t out : offsets)
                            for (int64_t out_imag : offsets) {
                                fft_plan p = {};
                                p.kind = kind;
                                p.split = split_arrays;
                                p.rank = 1;
                                p.howmany_rank = 2;
                                p.dims[0] = d;
                                p.howmany[0] = outer;
                                p.howmany[1] = inner;
                                p.in = arena;
                                p.in_imag = kind == kind_r2c ? nullptr : arena + in_imag;
                                p.out = arena + out;
                                p.out_imag = kind == kind_c2r ? nullptr : arena + out_imag;
                                check(p, count);
                            }
        EXPECT_GT(count.yes, 100) << "kind " << kind;
        EXPECT_GT(count.no, 100) << "kind " << kind;
    }
}

TEST(InPlaceSplit, CommonLayoutsRun) {
    fft_plan p = {};
    p.split = split_arrays;
    p.rank = 1;
    p.howmany_rank = 2;
    p.dims[0] = {4, 6, 6};
    p.howmany[0] = {2, 1, 1};
    p.howmany[1] = {3, 40, 40};
    p.in = p.out = arena;
    p.in_imag = p.out_imag = arena + 200;
    EXPECT_TRUE(runs_in_pieces(p)) << "columns in place";
    std::swap(p.out, p.out_imag);
    EXPECT_TRUE(runs_in_pieces(p)) << "in place with the parts exchanged";
    p.in_imag = arena + 1;
    p.out = arena;
    p.out_imag = arena + 1;
    for (fft_dim* d : {&p.dims[0], &p.howmany[0], &p.howmany[1]}) *d = {d->n, 2 * d->is, 2 * d->os};
    EXPECT_TRUE(runs_in_pieces(p)) << "interleaved pairs in place";
    p.dims[0] = {4, 1, 5};
    p.howmany[0] = {2, 7, 1};
    p.howmany[1] = {3, 20, 22};
    p.in_imag = arena + 100;
    p.out = arena + 200;
    p.out_imag = arena + 300;
    EXPECT_TRUE(runs_in_pieces(p)) << "out of place with two layouts";
}

// Half as many coefficients as points: arrays may stand closer than the longer one is long.
TEST(InPlaceSplit, NeighboursOfHalfTheLengthDoNotMeet) {
    fft_plan p = {};
    p.kind = kind_c2r;
    p.split = split_arrays;
    p.rank = 1;
    p.howmany_rank = 2;
    p.dims[0] = {7, 4, 4};
    p.howmany[0] = {4, 1, 1};
    p.howmany[1] = {1, 1, 1};
    p.in = arena;
    p.in_imag = arena + 16;
    p.out = arena + 32;
    EXPECT_TRUE(runs_in_pieces(p)) << "coefficients in front";
    p.out = arena + 31;
    EXPECT_FALSE(runs_in_pieces(p)) << "one float shared";
    p.out = arena;
    p.in = arena + 28;
    p.in_imag = arena + 44;
    EXPECT_TRUE(runs_in_pieces(p)) << "points in front";
}
