// SPDX-License-Identifier: Apache-2.0
#include "problems/problem.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace problems;

namespace {

std::vector<size_t> offsets(const problem& p, const side& s) {
    std::vector<size_t> result;
    for_each_element(p, s, [&](size_t at) { result.push_back(at); });
    return result;
}

}  // namespace

TEST(ProblemLanguage, ReadsASimpleTransform) {
    const problem p = parse_problem("c2c 1024");
    EXPECT_EQ(p.kind, family::c2c);
    EXPECT_EQ(p.n, std::vector{1024});
    EXPECT_EQ(p.sign, -1);
    EXPECT_FALSE(p.in_place || p.interleaved || p.measured);
    EXPECT_EQ(p.batch * p.threads, 1);
    EXPECT_EQ(p.in.stride, 1);
    EXPECT_EQ(p.in.dist, 1024);
    EXPECT_EQ(span_floats(p, p.in), 2048u);
    EXPECT_DOUBLE_EQ(p.nominal_flops(), 5 * 1024 * 10);
}

TEST(ProblemLanguage, EveryWordInAnyOrderHasOneCanonicalForm) {
    const char* canonical =
        "c2c 8x9 backward inplace batch=3 interleaved istride=4 ostride=5 idist=6 odist=7 measured threads=2";
    EXPECT_EQ(parse_problem(canonical).text, canonical);
    const problem p = parse_problem(
        " c2c,8x9 threads=2,measured odist=7 idist=6 ostride=5 istride=4 interleaved batch=3 inplace backward ");
    EXPECT_EQ(p.text, canonical);
    EXPECT_EQ(p.sign, +1);
    EXPECT_TRUE(p.in_place && p.interleaved && p.measured);
    EXPECT_EQ(p.batch, 3);
    EXPECT_EQ(p.threads, 2);
    EXPECT_EQ(p.in.stride, 4);
    EXPECT_EQ(p.out.stride, 5);
    EXPECT_EQ(p.in.dist, 6);
    EXPECT_EQ(p.out.dist, 7);
}

TEST(ProblemLanguage, NumbersTheRealKinds) {
    const char* names[] = {"r2hc",    "hc2r",    "dht",     "redft00", "redft01", "redft10",
                           "redft11", "rodft00", "rodft01", "rodft10", "rodft11"};
    for (int kind = 0; kind < 11; ++kind) {
        const problem p = parse_problem(std::string(names[kind]) + " 5x6x7");
        EXPECT_EQ(p.kind, family::r2r);
        EXPECT_EQ(p.r2r_kinds, (std::vector{kind, kind, kind})) << names[kind];
    }
    EXPECT_EQ(parse_problem("redft10/dht 5x6").r2r_kinds, (std::vector{5, 2}));
}

TEST(ProblemLanguage, MistakesAreNamed) {
    for (const char* text : {"",
                             "c2c",
                             "foo 8",
                             "c2c 0",
                             "c2c -8",
                             "c2c 8y9",
                             "c2c 1x2x3x4x5",
                             "redft10/dht 8",
                             "c2c 8 backwards",
                             "r2c 8 backward",
                             "c2c 8 batch",
                             "c2c 8 batch=",
                             "c2c 8 batch=x",
                             "c2c 8 batch=2x",
                             "c2c 99999999999",
                             "transpose 8",
                             "transpose 8x9 batch=2",
                             "r2c 8 inplace interleaved batch=2",
                             "dht/ 8x8",
                             "redft10/nix 8x8"})
        EXPECT_THROW(parse_problem(text), std::invalid_argument) << text;
    try {
        parse_problem("c2c 8 inplace sideways");
        FAIL();
    } catch (const std::invalid_argument& error) {
        EXPECT_NE(std::string(error.what()).find("'sideways'"), std::string::npos);
    }
}

TEST(ProblemLanguage, HugeLayoutsAreCountedInFull) {
    const problem p = parse_problem("c2c 65536x65537");
    EXPECT_EQ(p.in.row_stride, (std::vector<int64_t>{65537, 1}));
    EXPECT_EQ(p.in.dist, int64_t{65536} * 65537);
    EXPECT_EQ(span_floats(p, p.in), 2ull * 65536 * 65537);
    EXPECT_THROW(parse_problem("c2c 65536x65537 batch=2"), std::invalid_argument);
    EXPECT_EQ(parse_problem("c2c 65536x65537 batch=2 interleaved").in.dist, 1);
    EXPECT_EQ(parse_problem("r2c 2147483647 inplace").in.dist, 2147483648);
    const problem beyond = parse_problem("c2c 2147483647x2147483647x2147483647x2147483647 istride=2147483647");
    EXPECT_GE(span_floats(beyond, beyond.in), size_t{1} << 61);
}

TEST(ProblemLanguage, PutsABatchOneAfterTheOther) {
    const problem p = parse_problem("c2c 3 batch=2");
    EXPECT_EQ(offsets(p, p.in), (std::vector<size_t>{0, 2, 4, 6, 8, 10}));
    const problem strided = parse_problem("dht 3 batch=2 istride=2 odist=5");
    EXPECT_EQ(offsets(strided, strided.in), (std::vector<size_t>{0, 2, 4, 6, 8, 10}));
    EXPECT_EQ(offsets(strided, strided.out), (std::vector<size_t>{0, 1, 2, 5, 6, 7}));
}

TEST(ProblemLanguage, PutsAnInterleavedBatchSideBySide) {
    const problem p = parse_problem("dht 3 batch=2 interleaved");
    EXPECT_EQ(offsets(p, p.in), (std::vector<size_t>{0, 2, 4, 1, 3, 5}));
}

TEST(ProblemLanguage, LaysOutRowsOfRealTransforms) {
    const problem out_of_place = parse_problem("r2c 2x4 batch=2");
    EXPECT_EQ(offsets(out_of_place, out_of_place.in).back(), 15u);
    EXPECT_EQ(out_of_place.out.extent, (std::vector{2, 3}));
    EXPECT_EQ(span_floats(out_of_place, out_of_place.out), 2u * 12);
    const problem in_place = parse_problem("c2r 2x5 inplace");
    EXPECT_EQ(in_place.out.row_stride, (std::vector<int64_t>{6, 1}));
    EXPECT_EQ(in_place.in.row_stride, (std::vector<int64_t>{3, 1}));
    EXPECT_EQ(parse_problem("r2c 5 inplace batch=3").in.dist, 6);
    EXPECT_EQ(parse_problem("r2c 5 inplace batch=3").out.dist, 3);
}

TEST(ProblemLanguage, LaysOutATranspose) {
    const problem p = parse_problem("transpose 2x3");
    EXPECT_EQ(offsets(p, p.in), (std::vector<size_t>{0, 2, 4, 6, 8, 10}));
    EXPECT_EQ(offsets(p, p.out), (std::vector<size_t>{0, 4, 8, 2, 6, 10}));
    EXPECT_EQ(p.nominal_flops(), 0);
}

TEST(ProblemLanguage, TellsWhichInputSurvives) {
    EXPECT_TRUE(parse_problem("c2c 8").keeps_input());
    EXPECT_TRUE(parse_problem("r2c 8").keeps_input());
    EXPECT_FALSE(parse_problem("c2r 8").keeps_input());
    EXPECT_FALSE(parse_problem("c2c 8 inplace").keeps_input());
}

TEST(ProblemLanguage, SpectrumProblemIsCompact) {
    const problem p = spectrum_problem(parse_problem("c2r 4x6 batch=3 istride=9 inplace"));
    EXPECT_EQ(p.text, "r2c 4x6 batch=3");
    EXPECT_EQ(span_floats(p, p.out), 2u * 3 * 4 * 4);
}
