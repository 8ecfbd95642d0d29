// SPDX-License-Identifier: Apache-2.0
// Planning calls in words: what record they make, what refuses them, and words that are no call.
#include "problems/call_words.h"
#include "problems/plan_tree.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

std::string record_text(const char* words) {
    const call_words call(words);
    fft_plan* record = call.record();
    const std::string text = record ? problem_text(*record) : "refused";
    EXPECT_EQ(record == nullptr, !call.reason().empty()) << words;
    fft_plan_free(record);
    return text;
}

std::string refusal_text(const char* words) { return call_words(words).reason(); }

}  // namespace

TEST(CallWords, AreToldFromProblems) {
    EXPECT_TRUE(call_words::are_in("many c2c n=4"));
    EXPECT_TRUE(call_words::are_in("guru c2c"));
    EXPECT_FALSE(call_words::are_in("c2c 4"));
    EXPECT_FALSE(call_words::are_in("manyfold"));
}

TEST(CallWords, TellManyCalls) {
    EXPECT_EQ(record_text("many c2c n=8"), "c2c- 8");
    EXPECT_EQ(record_text("many c2c n=4,6 howmany=3 istride=2 idist=50 odist=24 sign=1"), "c2c+ 4:12:6x6:2:1 *3:50:24");
    EXPECT_EQ(record_text("many r2c n=4,8 inplace"), "r2c 4:10:5x8:1:1 =");
    EXPECT_EQ(record_text("many c2r n=4,8 inembed=1,9 onembed=1,12"), "c2r 4:9:12x8:1:1");
    EXPECT_EQ(record_text("many r2r n=4,8 kinds=3,5"), "r2r redft00/redft10 4x8");
}

TEST(CallWords, TellGuruCalls) {
    EXPECT_EQ(record_text("guru c2c dims=8:1:1 batch=3:8:9 sign=7"), "c2c+ 8 *3:8:9");
    EXPECT_EQ(record_text("guru r2c dims=8:2:1 split wide"), "r2c split 8:2:1");
    EXPECT_EQ(record_text("guru r2r dims=8:1:1 kinds=2 inplace"), "r2r dht 8 =");
    EXPECT_EQ(record_text("guru c2c batch=3:1:2"), "c2c- point *3:1:2");
    EXPECT_EQ(record_text("guru c2c batch=3:1:2 wide"), "refused");
    EXPECT_EQ(record_text("guru c2c dims= batch=3:1:2 wide"), "c2c- point *3:1:2");
    EXPECT_EQ(record_text("guru r2r dims= batch=3:1:2 kinds= wide"), "r2r point *3:1:2");
    EXPECT_EQ(record_text("guru c2c dims=8:1:1 batch= wide"), "c2c- 8");
}

TEST(CallWords, ExplainRefusals) {
    EXPECT_EQ(refusal_text("many c2c"), "n is null");
    EXPECT_EQ(refusal_text("many c2c n=4,-5"), "n[1] = -5 is below 1");
    EXPECT_EQ(refusal_text("many c2c n=4 sign=0"), "sign = 0 is neither -1 nor +1");
    EXPECT_EQ(refusal_text("many c2c n=4 howmany=3 idist=1 odist=1 istride=2 inplace"),
              "in place, the transforms of the batch interleave in part: istride = 2 is below idist * howmany = 3, and "
              "idist = 1 is not above (points - 1) * istride = 6");
    EXPECT_EQ(refusal_text("guru c2c dims=2:3:9,4:2:1"),
              "dims[1].is = 2 is below dims[0].is = 3, and that is not above (dims[1].n - 1) * dims[1].is = 6: the "
              "dimensions interleave");
    EXPECT_EQ(refusal_text("guru c2c dims=2:3:9,4:2:1 wide"), "");
    EXPECT_EQ(refusal_text("guru c2c wide batch=3:1:2"), "dims is null");
    EXPECT_EQ(refusal_text("guru r2r dims=4:1:1"), "kinds is null");
}

TEST(CallWords, OtherWordsThrow) {
    for (const char* words : {"many c2c n=4 wide", "many c2c n=4 split", "many c2d n=4", "many c2c n=x",
                              "many c2c n=99999999999", "guru c2c dims=4:1", "guru c2c dims=4:1:1 size=3",
                              "many c2c n=4,5 inembed=4", "many c2c n=4 forward", "many "})
        EXPECT_THROW(call_words{words}, std::invalid_argument) << words;
}
