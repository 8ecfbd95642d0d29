// SPDX-License-Identifier: Apache-2.0
// The argument checks of the fourteen guru calls, with what differs between them, and the shape test over an
// enumeration against a plain transcription of its rule.
#include "interface/guru_arguments.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace {

float array_a[2], array_b[2], array_c[2], array_d[2];
const uint32_t some_kinds[4] = {};

struct family {
    const char* name;
    uint32_t kind;
    int64_t split;
};
constexpr family families[] = {{"dft", kind_c2c, -1},     {"r2c", kind_r2c, -1},      {"c2r", kind_c2r, -1},
                               {"r2r", kind_r2r, -1},     {"split dft", kind_c2c, 1}, {"split r2c", kind_r2c, 1},
                               {"split c2r", kind_c2r, 1}};

// A problem that every check passes: sizes 4, 3, 3, 2 with nested strides, no batch.
struct problem {
    fft_iodim dims[4] = {{4, 1000, 1000}, {3, 200, 200}, {3, 20, 20}, {2, 2, 2}};
    fft_iodim batch[4] = {{3, 9000, 9000}, {3, 3000, 3000}, {2, 1000, 1000}, {2, 1, 1}};
    fft_iodim64 wide_dims[4], wide_batch[4];
    guru_arguments a;

    problem(const family& f, width w, int rank, int howmany_rank)
        : a{w, f.kind, -1, f.split, 0, rank, dims, howmany_rank, batch, array_a, array_b, array_c, array_d, nullptr} {
        if (f.kind == kind_r2r) a.r2r_kinds = some_kinds;
    }
    // The arguments with the triples in the width of the call.
    guru_arguments in_width() {
        for (int k = 0; k < 4; ++k) {
            wide_dims[k] = {dims[k].n, dims[k].is, dims[k].os};
            wide_batch[k] = {batch[k].n, batch[k].is, batch[k].os};
        }
        guru_arguments b = a;
        if (b.call == width::wide) {
            if (b.dims) b.dims = wide_dims;
            if (b.howmany_dims) b.howmany_dims = wide_batch;
        }
        return b;
    }
    std::string refusal() {
        const char* text = guru_refusal(in_width());
        return text ? text : "";
    }
};

const fft_iodim* const no_dims = nullptr;

template <class Body>
void for_all_calls(Body body) {
    for (const family& f : families)
        for (width w : {width::narrow, width::wide}) {
            SCOPED_TRACE(std::string(f.name) + (w == width::wide ? " 64" : ""));
            body(f, w);
        }
}

bool takes_rank_0(const family& f) { return f.split == -1 && (f.kind == kind_c2c || f.kind == kind_r2r); }

}  // namespace

TEST(GuruArguments, PassIfTheyAreValid) {
    for_all_calls([](const family& f, width w) {
        for (int rank = takes_rank_0(f) ? 0 : 1; rank <= 4; ++rank)
            for (int howmany_rank = 0; howmany_rank <= 4; ++howmany_rank)
                EXPECT_EQ(problem(f, w, rank, howmany_rank).refusal(), "") << rank << " " << howmany_rank;
    });
}

TEST(GuruArguments, NullDimsPassOnlyInTwoNarrowCallsAtRank0) {
    for_all_calls([](const family& f, width w) {
        for (int rank = 0; rank <= 4; ++rank) {
            problem p(f, w, rank, 1);
            p.a.dims = no_dims;
            const bool passes = rank == 0 && w == width::narrow && takes_rank_0(f);
            EXPECT_EQ(p.refusal(), passes ? "" : "dims is not null") << rank;
        }
    });
}

TEST(GuruArguments, BatchDimensionsAreNeededOnlyWhereThereIsABatch) {
    for_all_calls([](const family& f, width w) {
        problem p(f, w, 1, 1);
        p.a.howmany_dims = no_dims;
        EXPECT_EQ(p.refusal(), "howmany_dims is not null");
        p.a.howmany_rank = 0;
        EXPECT_EQ(p.refusal(), "");
        p.a.howmany_rank = -1;  // goes past this test and fails a later one
        EXPECT_EQ(p.refusal(), "howmany_rank is 0 to 4");
    });
}

TEST(GuruArguments, RanksAre0To4) {
    for_all_calls([](const family& f, width w) {
        for (int rank : {INT_MIN, -1, 5, INT_MAX}) {
            problem p(f, w, rank, 0);
            EXPECT_EQ(p.refusal(), "rank is 0 to 4") << rank;
            problem q(f, w, 1, rank);
            EXPECT_EQ(q.refusal(), "howmany_rank is 0 to 4") << rank;
        }
    });
}

TEST(GuruArguments, Rank0IsForComplexAndR2r) {
    for_all_calls([](const family& f, width w) {
        EXPECT_EQ(problem(f, w, 0, 1).refusal(),
                  takes_rank_0(f) ? "" : "rank is at least 1 but for interleaved complex and r2r");
    });
}

TEST(GuruArguments, EveryNumberIsAtLeast1) {
    for_all_calls([](const family& f, width w) {
        for (int value : {INT_MIN, -1, 0})
            for (int k = 0; k < 4; ++k)
                for (int fft_iodim::* field : {&fft_iodim::n, &fft_iodim::is, &fft_iodim::os}) {
                    problem p(f, w, 3, 3);
                    p.dims[k].*field = value;
                    EXPECT_EQ(p.refusal(), k < 3 ? "all of dims are at least 1" : "");
                    problem q(f, w, 3, 3);
                    q.batch[k].*field = value;
                    EXPECT_EQ(q.refusal(), k < 3 ? "all of howmany_dims are at least 1" : "");
                }
    });
}

TEST(GuruArguments, KindsMayLackOnlyInTheNarrowCallAtRank0) {
    for (width w : {width::narrow, width::wide})
        for (int rank = 0; rank <= 4; ++rank) {
            problem p(families[3], w, rank, 1);
            p.a.r2r_kinds = nullptr;
            EXPECT_EQ(p.refusal(), rank == 0 && w == width::narrow ? "" : "kinds is not null") << rank;
        }
}

TEST(GuruArguments, OneR2rInPlaceNeedsEqualStridesInTheNarrowCall) {
    for_all_calls([](const family& f, width w) {
        for (int n : {1, 4})
            for (int howmany_rank : {0, 1})
                for (bool in_place : {true, false}) {
                    problem p(f, w, 1, howmany_rank);
                    p.dims[0] = {n, 2, 3};
                    p.a.out = in_place ? p.a.in : array_c;
                    const bool refused =
                        w == width::narrow && f.kind == kind_r2r && n == 4 && howmany_rank == 0 && in_place;
                    EXPECT_EQ(p.refusal(), refused ? "a single r2r in place has equal strides" : "");
                    p.dims[0].os = 2;
                    EXPECT_EQ(p.refusal(), "");
                }
    });
}

TEST(GuruArguments, InterleavedDimensionsAreRefusedByTheNarrowComplexCalls) {
    for_all_calls([](const family& f, width w) {
        problem p(f, w, 2, 0);
        p.dims[0] = {2, 3, 1000};
        p.dims[1] = {4, 2, 2};
        const bool tests_shape = w == width::narrow && f.kind == kind_c2c;
        EXPECT_EQ(p.refusal(), tests_shape ? "dimensions do not interleave" : "");
    });
}

TEST(GuruArguments, BatchDimensionsOfTheNarrowComplexCallsStandSlowestFirst) {
    for_all_calls([](const family& f, width w) {
        problem p(f, w, 1, 2);
        p.batch[0] = {3, 10, 10};
        p.batch[1] = {10, 1, 1};
        EXPECT_EQ(p.refusal(), "") << f.name;
        std::swap(p.batch[0], p.batch[1]);
        const bool tests_shape = w == width::narrow && f.kind == kind_c2c;
        EXPECT_EQ(p.refusal(), tests_shape ? "batch dimensions stand slowest first, each at least as far apart as the "
                                             "ones behind it are long"
                                           : "")
            << f.name;
    });
}

TEST(Layout, OfASingleElementMayHaveAnyStride) {
    const int64_t far[] = {int64_t{1} << 49, int64_t{1} << 62, INT64_MAX};
    float in[24], expected[24], out[24] = {};
    for (int i = 0; i < 24; ++i) in[i] = float(i * i % 11) - 4;
    const auto complex = [](float* array) { return reinterpret_cast<qsl_fftf_complex*>(array); };
    qsl_fftf_plan plain = qsl_fftf_plan_dft_1d(12, complex(in), complex(expected), -1, 0);
    qsl_fftf_execute(plain);
    for (int64_t is : far)
        for (int64_t os : far) {
            const fft_iodim64 dims[] = {{1, is, os}, {12, 1, 1}}, batch[] = {{1, os, is}};
            for (int form = 0; form < 3; ++form) {
                qsl_fftf_plan plan =
                    form == 0
                        ? qsl_fftf_plan_guru64_dft(2, dims, 0, batch, complex(in), complex(out), -1, QSL_FFTF_RULES)
                    : form == 1
                        ? qsl_fftf_plan_guru64_dft(1, dims + 1, 1, batch, complex(in), complex(out), -1, QSL_FFTF_RULES)
                        : qsl_fftf_plan_guru64_dft(2, dims, 1, batch, complex(in), complex(out), -1, QSL_FFTF_MEASURED);
                for (int i = 0; i < 24; ++i) in[i] = float(i * i % 11) - 4;
                ASSERT_TRUE(plan) << form << " " << is << " " << os;
                qsl_fftf_execute(plan);
                for (int i = 0; i < 24; ++i) EXPECT_NEAR(out[i], expected[i], 1e-4) << form << " " << is << " " << os;
                qsl_fftf_destroy_plan(plan);
            }
        }
    qsl_fftf_destroy_plan(plain);
}

namespace {

// The rule as the manual tells it, with wide numbers that are cut to 32 bits.
bool shape_rule(int rank, const fft_iodim* d, int howmany_rank, const fft_iodim* m) {
    const auto cut = [](int64_t x) { return static_cast<int32_t>(static_cast<uint32_t>(x)); };
    const auto times = [&](int64_t x, int64_t y) { return cut(x * y); };
    if (rank == 4) {
        if (times(d[2].n - 1, d[2].is) >= d[1].is) return false;
        if (times(d[2].n - 1, d[2].os) >= d[1].os) return false;
        if (times(d[1].is, d[1].n) > d[0].is) return false;
        if (times(d[1].os, d[1].n) > d[0].os) return false;
    }
    if (rank == 2) {
        if (d[1].is < d[0].is && d[0].is <= times(d[1].n - 1, d[1].is)) return false;
        if (d[1].os < d[0].os && d[0].os <= times(d[1].n - 1, d[1].os)) return false;
    }
    if (rank == 0) return true;
    if (rank == 1 && d[0].n == 1) return true;
    if (howmany_rank == 3) {
        if (times(m[2].n, m[2].is) > m[1].is || times(m[2].n, m[2].os) > m[1].os) return false;
        if (times(m[1].is, m[1].n) > m[0].is || times(m[1].os, m[1].n) > m[0].os) return false;
    }
    if (howmany_rank == 2)
        if (times(m[1].n, m[1].is) > m[0].is || times(m[1].n, m[1].os) > m[0].os) return false;
    return true;
}

int expect_shape_rule(int rank, const fft_iodim* d, int howmany_rank, const fft_iodim* m) {
    const bool expected = shape_rule(rank, d, howmany_rank, m);
    const auto print = [](const fft_iodim& t) {
        return " (" + std::to_string(t.n) + "," + std::to_string(t.is) + "," + std::to_string(t.os) + ")";
    };
    std::string text = "rank " + std::to_string(rank);
    for (int k = 0; k < rank; ++k) text += print(d[k]);
    text += " batch";
    for (int k = 0; k < howmany_rank; ++k) text += print(m[k]);
    EXPECT_EQ(guru_shape_test(rank, d, howmany_rank, m), expected) << text;
    return expected;
}

}  // namespace

TEST(ShapeTest, IsExactAtTheEdgeOfTwoDimensions) {
    const fft_iodim none[1] = {};
    const fft_iodim refused[] = {{2, 3, 100}, {4, 2, 1}};  // 2 is below 3, and 3 is at most 6
    EXPECT_FALSE(guru_shape_test(2, refused, 0, none));
    const fft_iodim beyond[] = {{2, 7, 100}, {4, 2, 1}};
    EXPECT_TRUE(guru_shape_test(2, beyond, 0, none));
    const fft_iodim exchanged[] = {{2, 2, 100}, {4, 3, 1}};
    EXPECT_TRUE(guru_shape_test(2, exchanged, 0, none));
}

TEST(ShapeTest, AgreesWithItsRuleOverSmallNumbers) {
    int counts[2] = {};
    const fft_iodim batches[][3] = {{{2, 1, 1}, {2, 1, 1}, {2, 1, 1}},
                                    {{2, 6, 6}, {3, 2, 2}, {2, 1, 1}},
                                    {{2, 6, 5}, {3, 2, 2}, {2, 1, 1}},
                                    {{2, 6, 6}, {3, 2, 1}, {2, 1, 1}}};
    for (int rank = 0; rank <= 4; ++rank)
        for (int howmany_rank = 0; howmany_rank <= 3; ++howmany_rank)
            for (const auto& m : batches)
                for (int n : {1, 2, 4})
                    for (int s0 : {1, 3, 4, 12, 13})
                        for (int s1 : {1, 3, 4})
                            for (int s2 : {1, 2, 4})
                                for (int other : {1, 40}) {
                                    fft_iodim d[4] = {{n, s0, 40 * s0}, {n, s1, other}, {2, s2, 1}, {9, 9, 9}};
                                    ++counts[expect_shape_rule(rank, d, howmany_rank, m)];
                                    for (auto& t : d) std::swap(t.is, t.os);
                                    ++counts[expect_shape_rule(rank, d, howmany_rank, m)];
                                }
    EXPECT_GT(counts[false], 1000);
    EXPECT_GT(counts[true], 1000);
}

TEST(ShapeTest, ProductsWrapAt32Bits) {
    const int numbers[] = {1, 65536, 65537, 1 << 30, INT_MAX};
    for (int n : numbers)
        for (int s : numbers)
            for (int outer : numbers) {
                const fft_iodim d[4] = {{2, outer, INT_MAX}, {n, s, 1}, {n, s, 1}, {2, 1, 1}};
                for (int rank : {1, 2, 3, 4})
                    for (int howmany_rank : {0, 2, 3}) expect_shape_rule(rank, d, howmany_rank, d);
            }
}

TEST(Rank0, OnePointBecomesDataMovementInTwoCallsAndForTheIdentityKinds) {
    for_all_calls([](const family& f, width w) {
        for (uint32_t r2r_kind = 0; r2r_kind <= 11; ++r2r_kind)
            for (int rank : {1, 2})
                for (int n : {1, 2}) {
                    problem p(f, w, rank, 1);
                    p.dims[0].n = n;
                    const uint32_t kinds[] = {r2r_kind, 0};
                    if (f.kind == kind_r2r) p.a.r2r_kinds = kinds;
                    const bool identity = f.kind != kind_r2r || r2r_kind == r2r_r2hc || r2r_kind == r2r_hc2r ||
                                          r2r_kind == r2r_dht || r2r_kind == r2r_redft01 || r2r_kind == r2r_rodft01;
                    const bool expected = takes_rank_0(f) && w == width::narrow && rank == 1 && n == 1 && identity;
                    EXPECT_EQ(becomes_rank_0(p.in_width()), expected) << "r2r kind " << r2r_kind << " n " << n;
                }
    });
}
