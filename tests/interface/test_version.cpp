// SPDX-License-Identifier: Apache-2.0
#include "qfftf.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(Version, RecordHoldsTheTextsAndKeepsTheBytesBehindThem) {
    static_assert(sizeof(qfft_version) == 800);
    const char* expected[] = {"Morwen Lathe", "26.1.RC1",      "Lathe-qsl", "26.1.RC1", "1",
                              "gcc",          "lathe-qsl-fft", "26.1.RC1"};
    qfft_version record;
    memset(&record, '#', sizeof record);
    EXPECT_EQ(QFFTGetVersion(&record), 1);
    for (int i = 0; i < 8; ++i) {
        const char* field = reinterpret_cast<const char*>(&record) + 100 * i;
        EXPECT_STREQ(field, expected[i]);
        for (size_t k = strlen(expected[i]) + 1; k < 100; ++k) ASSERT_EQ(field[k], '#') << "field " << i;
    }
}

TEST(Version, NullGivesZero) { EXPECT_EQ(QFFTGetVersion(nullptr), 0); }

TEST(Version, TextFillsItsFiftyBytesWithZeros) {
    static_assert(sizeof qsl_fftf_version == 50);
    const char text[] = "fft version: 2.0.2.B001";
    EXPECT_STREQ(qsl_fftf_version, text);
    for (size_t i = sizeof text - 1; i < 50; ++i) EXPECT_EQ(qsl_fftf_version[i], 0);
}
