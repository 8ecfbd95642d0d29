// SPDX-License-Identifier: Apache-2.0
// The argument checks of the many calls: each demand at its boundary, and the in-place test over an enumeration against
// a plain transcription of its rule.
#include "interface/many_arguments.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <string>
#include <vector>

namespace {

float array_a[2], array_b[2];
const uint32_t some_kinds[4] = {};

// A problem of the given type and rank that every check passes; sizes 4, 5, 6, 7, out of place, a batch of 3.
struct problem {
    int n[4] = {4, 5, 6, 7};
    int inembed[4] = {0, 0, 0, 0};
    int onembed[4] = {0, 0, 0, 0};
    many_arguments a = {};

    problem(uint32_t kind, int rank) {
        for (int k = 1; k < rank; ++k) inembed[k] = onembed[k] = n[k];
        a = {kind,
             kind == kind_c2r ? 1 : -1,
             0,
             rank,
             n,
             3,
             array_a,
             nullptr,
             1,
             1000,
             array_b,
             nullptr,
             1,
             1000,
             kind == kind_r2r ? some_kinds : nullptr};
        if (kind == kind_r2r) a.sign = 0;
    }
    void use_embeds() {
        a.inembed = inembed;
        a.onembed = onembed;
    }
    std::string refusal() const {
        const char* text = many_refusal(a);
        return text ? text : "";
    }
};

constexpr uint32_t all_kinds[] = {kind_c2c, kind_r2c, kind_c2r, kind_r2r};

}  // namespace

TEST(ManyArguments, PassIfTheyAreValid) {
    for (uint32_t kind : all_kinds)
        for (int rank = 1; rank <= 4; ++rank) {
            problem p(kind, rank);
            EXPECT_EQ(p.refusal(), "") << kind << " " << rank;
            p.use_embeds();
            EXPECT_EQ(p.refusal(), "") << kind << " " << rank;
        }
}

TEST(ManyArguments, SizesAreNeeded) {
    for (uint32_t kind : all_kinds) {
        problem p(kind, 1);
        p.a.n = nullptr;
        EXPECT_EQ(p.refusal(), "n is not null");
    }
}

TEST(ManyArguments, HaveASignOfOneInTheComplexCall) {
    for (int sign : {INT_MIN, -3, -2, -1, 0, 2, 3, 7, INT_MAX}) {
        problem p(kind_c2c, 1);
        p.a.sign = sign;
        EXPECT_EQ(p.refusal(), sign == -1 ? "" : "sign is -1 or +1") << sign;
    }
    problem p(kind_c2c, 2);
    p.a.sign = 1;
    EXPECT_EQ(p.refusal(), "");
}

TEST(ManyArguments, RankIs1To4) {
    for (uint32_t kind : all_kinds)
        for (int rank : {INT_MIN, -1, 0, 5, 6, INT_MAX}) {
            problem p(kind, 1);
            p.a.rank = rank;
            EXPECT_EQ(p.refusal(), "rank is 1 to 4") << rank;
        }
}

TEST(ManyArguments, EverySizeIsAtLeast1) {
    for (uint32_t kind : all_kinds)
        for (int rank = 1; rank <= 4; ++rank)
            for (int k = 0; k < 4; ++k)
                for (int size : {INT_MIN, -1, 0, 1}) {
                    problem p(kind, rank);
                    p.n[k] = size;
                    EXPECT_EQ(p.refusal(), size < 1 && k < rank ? "every size is at least 1" : "")
                        << "kind " << kind << " rank " << rank << " n[" << k << "] " << size;
                }
}

// The smallest embed of dimension k that passes: nothing for k = 0, the size, or on the complex side half of it.
TEST(ManyArguments, EmbedsHoldTheSizes) {
    for (uint32_t kind : all_kinds)
        for (int rank = 1; rank <= 4; ++rank)
            for (int k = 0; k < rank; ++k)
                for (bool input : {true, false})
                    for (int last_size : {6, 7}) {
                        problem p(kind, rank);
                        p.use_embeds();
                        p.n[rank - 1] = last_size;
                        const bool half = k == rank - 1 && kind == (input ? kind_c2r : kind_r2c);
                        const int smallest = half ? p.n[k] / 2 + 1 : p.n[k];
                        for (int j = 1; j < rank; ++j) p.inembed[j] = p.onembed[j] = p.n[j];
                        int& embed = (input ? p.inembed : p.onembed)[k];
                        embed = smallest;
                        EXPECT_EQ(p.refusal(), "");
                        for (int less : {smallest - 1, 0, -5, INT_MIN}) {
                            embed = less;
                            const char* demand =
                                input ? "inembed holds the input's sizes" : "onembed holds the output's sizes";
                            EXPECT_EQ(p.refusal(), k == 0 ? "" : demand)
                                << "kind " << kind << " rank " << rank << " embed " << k << " of " << less;
                        }
                    }
}

TEST(ManyArguments, KindsAreNeeded) {
    problem p(kind_r2r, 2);
    p.a.r2r_kinds = nullptr;
    EXPECT_EQ(p.refusal(), "kinds is not null");
}

TEST(ManyArguments, HowmanyIsAtLeast1) {
    for (uint32_t kind : all_kinds)
        for (int howmany : {INT_MIN, -1, 0}) {
            problem p(kind, 1);
            p.a.howmany = howmany;
            EXPECT_EQ(p.refusal(), "howmany is at least 1");
        }
}

TEST(ManyArguments, StridesAreAtLeast1) {
    for (uint32_t kind : all_kinds)
        for (int stride : {INT_MIN, -1, 0}) {
            problem p(kind, 1);
            p.a.istride = stride;
            EXPECT_EQ(p.refusal(), "strides are at least 1");
            problem q(kind, 2);
            q.a.ostride = stride;
            EXPECT_EQ(q.refusal(), "strides are at least 1");
        }
}

TEST(ManyArguments, DistancesCountOnlyInABatch) {
    for (uint32_t kind : all_kinds)
        for (int distance : {INT_MIN, -1, 0}) {
            problem p(kind, 1);
            p.a.idist = distance;
            EXPECT_EQ(p.refusal(), "distances are at least 1 where howmany is above 1");
            p.a.howmany = 1;
            EXPECT_EQ(p.refusal(), "");
            problem q(kind, 1);
            q.a.odist = distance;
            EXPECT_EQ(q.refusal(), "distances are at least 1 where howmany is above 1");
            q.a.howmany = 1;
            EXPECT_EQ(q.refusal(), "");
        }
}

namespace {

// The in-place rule as the manual tells it, case by case, in wide numbers that are cut to 32 bits.
bool in_place_rule(const problem& p) {
    const many_arguments& a = p.a;
    if (a.howmany == 1) return true;
    const auto cut = [](int64_t x) { return static_cast<int32_t>(static_cast<uint32_t>(x)); };
    int64_t points = 1;
    for (int k = 0; k < a.rank; ++k) points = static_cast<uint32_t>(points * p.n[k]);
    const auto apart = [&](int stride, int dist) {
        return stride >= cut(int64_t{dist} * a.howmany) || dist > cut((points - 1) * stride);
    };
    if (a.rank == 2 && a.istride == 1) {
        if (a.idist < p.n[1]) return false;
        return a.ostride == 1 ? a.odist >= p.n[1] : apart(a.ostride, a.odist);
    }
    if (a.rank == 2 && a.ostride == 1) return a.odist >= p.n[1] && apart(a.istride, a.idist);
    if (a.istride != 1 && !apart(a.istride, a.idist)) return false;
    if (a.ostride != 1 && !apart(a.ostride, a.odist)) return false;
    return true;
}

void expect_in_place_rule(const problem& p) {
    const std::string expected =
        in_place_rule(p) ? "" : "in place, the transforms of a batch do not interleave in part";
    ASSERT_EQ(p.refusal(), expected) << "rank " << p.a.rank << " n " << p.n[0] << " " << p.n[1] << " " << p.n[2]
                                     << " howmany " << p.a.howmany << " strides " << p.a.istride << " " << p.a.ostride
                                     << " distances " << p.a.idist << " " << p.a.odist;
}

}  // namespace

TEST(ManyArguments, AgreeWithTheInPlaceRuleOverSmallNumbers) {
    int refused = 0, passed = 0;
    const int sizes[][4] = {{1, 1, 1, 1}, {2, 3, 1, 2}, {4, 2, 2, 1}};
    for (int rank = 1; rank <= 4; ++rank)
        for (const auto& n : sizes)
            for (int howmany : {1, 2, 3})
                for (int istride = 1; istride <= 4; ++istride)
                    for (int ostride : {1, 2, 5})
                        for (int idist : {1, 2, 3, 4, 6, 7, 12, 13})
                            for (int odist : {1, 2, 3, 5, 6, 10, 30}) {
                                problem p(kind_c2c, rank);
                                std::copy(n, n + 4, p.n);
                                p.a.out = p.a.in;
                                p.a.howmany = howmany;
                                p.a.istride = istride;
                                p.a.ostride = ostride;
                                p.a.idist = idist;
                                p.a.odist = odist;
                                expect_in_place_rule(p);
                                ++(in_place_rule(p) ? passed : refused);
                            }
    EXPECT_GT(passed, 1000);
    EXPECT_GT(refused, 1000);
}

TEST(ManyArguments, InPlaceRuleWrapsAt32Bits) {
    const int numbers[] = {1, 2, 65536, 65537, 1 << 30, INT_MAX};
    for (int rank : {1, 2, 3, 4})
        for (int size : numbers)
            for (int howmany : {2, 65536, INT_MAX})
                for (int stride : numbers)
                    for (int dist : numbers) {
                        problem p(kind_c2c, rank);
                        p.n[0] = p.n[1] = size;
                        p.a.out = p.a.in;
                        p.a.howmany = howmany;
                        p.a.istride = stride;
                        p.a.idist = dist;
                        p.a.odist = INT_MAX;
                        expect_in_place_rule(p);
                    }
}

TEST(ManyArguments, AreTestedInPlaceByTheComplexCallAlone) {
    for (uint32_t kind : all_kinds) {
        problem p(kind, 1);
        p.a.out = p.a.in;
        p.a.istride = 2;
        p.a.idist = 3;  // 4 elements 2 apart reach into the next two transforms
        EXPECT_EQ(p.refusal().empty(), kind != kind_c2c) << kind;
        p.a.out = array_b;
        EXPECT_EQ(p.refusal(), "");
    }
}

// dims, as rows of (n, is, os)
using triples = std::vector<std::array<int64_t, 3>>;

namespace {

triples filled(uint32_t kind, bool in_place, std::vector<int> n, int istride, int ostride,
               std::vector<int> inembed = {}, std::vector<int> onembed = {}) {
    fft_plan plan = {};
    plan.kind = kind;
    plan.in = array_a;
    plan.out = in_place ? array_a : array_b;
    fft_plan_fill_dims(&plan, static_cast<int>(n.size()), n.data(), inembed.empty() ? nullptr : inembed.data(), istride,
                       onembed.empty() ? nullptr : onembed.data(), ostride);
    EXPECT_EQ(plan.rank, static_cast<int>(n.size()));
    triples dims;
    for (int k = 0; k < plan.rank; ++k) dims.push_back({plan.dims[k].n, plan.dims[k].is, plan.dims[k].os});
    for (int k = plan.rank; k < 4; ++k) EXPECT_EQ(plan.dims[k].n, 0);
    return dims;
}

}  // namespace

TEST(FillDims, PadsRowsInPlace) {
    EXPECT_EQ(filled(kind_r2c, true, {5, 8}, 1, 1), (triples{{5, 10, 5}, {8, 1, 1}}));
    EXPECT_EQ(filled(kind_c2r, true, {5, 7}, 1, 1), (triples{{5, 4, 8}, {7, 1, 1}}));
    EXPECT_EQ(filled(kind_c2r, true, {5, 8}, 1, 1), (triples{{5, 5, 10}, {8, 1, 1}}));
    EXPECT_EQ(filled(kind_r2c, true, {5, 7}, 2, 3), (triples{{5, 16, 12}, {7, 2, 3}}));
}

TEST(FillDims, PacksRowsOutOfPlace) {
    EXPECT_EQ(filled(kind_c2c, false, {5, 8}, 1, 1), (triples{{5, 8, 8}, {8, 1, 1}}));
    EXPECT_EQ(filled(kind_c2c, true, {5, 8}, 3, 2), (triples{{5, 24, 16}, {8, 3, 2}}));
    EXPECT_EQ(filled(kind_r2c, false, {5, 8}, 1, 1), (triples{{5, 8, 5}, {8, 1, 1}}));
    EXPECT_EQ(filled(kind_c2r, false, {5, 7}, 1, 1), (triples{{5, 4, 7}, {7, 1, 1}}));
    EXPECT_EQ(filled(kind_r2r, true, {5, 8}, 1, 1), (triples{{5, 8, 8}, {8, 1, 1}}));
    EXPECT_EQ(filled(kind_r2c, true, {8}, 4, 5), (triples{{8, 4, 5}}));
}

TEST(FillDims, HigherRanksRepeatNoPadding) {
    EXPECT_EQ(filled(kind_r2c, true, {2, 3, 5, 8}, 1, 1), (triples{{2, 150, 75}, {3, 50, 25}, {5, 10, 5}, {8, 1, 1}}));
    EXPECT_EQ(filled(kind_c2r, true, {2, 3, 5, 7}, 1, 1), (triples{{2, 60, 120}, {3, 20, 40}, {5, 4, 8}, {7, 1, 1}}));
    EXPECT_EQ(filled(kind_c2c, false, {2, 3, 5}, 2, 1), (triples{{2, 30, 15}, {3, 10, 5}, {5, 2, 1}}));
}

TEST(FillDims, EmbedsReplaceTheSizes) {
    for (bool in_place : {false, true})
        for (uint32_t kind : all_kinds)
            EXPECT_EQ(filled(kind, in_place, {2, 3, 5, 7}, 2, 3, {-1, 10, 20, 30}, {-1, 11, 21, 31}),
                      (triples{{2, 2 * 30 * 20 * 10, 3 * 31 * 21 * 11},
                               {3, 2 * 30 * 20, 3 * 31 * 21},
                               {5, 2 * 30, 3 * 31},
                               {7, 2, 3}}));
    EXPECT_EQ(filled(kind_c2c, false, {9}, 2, 3, {1}, {1}), (triples{{9, 2, 3}}));
}

TEST(FillDims, ProductsAreTakenIn64BitsAndNeverWrap) {
    const int64_t m = INT_MAX;
    EXPECT_EQ(filled(kind_c2c, false, {INT_MAX, INT_MAX}, INT_MAX, 1), (triples{{m, m * m, m}, {m, m, 1}}));
    EXPECT_EQ(filled(kind_c2c, false, {1, INT_MAX, INT_MAX, INT_MAX}, 1, 1),
              (triples{{1, INT64_MAX, INT64_MAX}, {m, m * m, m * m}, {m, m, m}, {m, 1, 1}}));
}
