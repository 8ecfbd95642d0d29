// SPDX-License-Identifier: Apache-2.0
// The header in C99 with and without <complex.h> and in C++: programs in both languages compile, link and run.
#include "qfftf.h"

#include <gtest/gtest.h>

#include <string>

#include <complex>

extern "C" int plan_with_pairs_of_floats(void);
extern "C" int plan_with_complex_numbers(void);

TEST(Header, IsC99) { EXPECT_EQ(plan_with_pairs_of_floats(), 0); }

TEST(Header, IsC99BehindComplexH) { EXPECT_EQ(plan_with_complex_numbers(), 0); }

TEST(Header, FitsStdComplex) {
    std::complex<float> x[4];
    static_assert(sizeof(qsl_fftf_complex) == sizeof x[0]);
    auto* array = reinterpret_cast<qsl_fftf_complex*>(x);
    EXPECT_EQ(qsl_fftf_plan_dft_1d(0, array, array, QSL_FFTF_FORWARD, QSL_FFTF_RULES), nullptr);
}

TEST(Header, ConstantsHaveTheirDocumentedValues) {
    EXPECT_EQ(QSL_FFTF_FORWARD, -1);
    EXPECT_EQ(QSL_FFTF_BACKWARD, 1);
    EXPECT_EQ(QSL_FFTF_RULES, 0u);
    EXPECT_EQ(QSL_FFTF_MEASURED, 32u);
    const qsl_fftf_r2r_kind kinds[] = {QSL_FFTF_R2HC,    QSL_FFTF_HC2R,    QSL_FFTF_DHT,     QSL_FFTF_REDFT00,
                                       QSL_FFTF_REDFT01, QSL_FFTF_REDFT10, QSL_FFTF_REDFT11, QSL_FFTF_RODFT00,
                                       QSL_FFTF_RODFT01, QSL_FFTF_RODFT10, QSL_FFTF_RODFT11};
    for (unsigned i = 0; i < 11; ++i) EXPECT_EQ(kinds[i], i);
}

TEST(Header, TellsTheNextGoodLength) {
    const auto is_good = [](int n) {
        for (int factor : {2, 3, 5, 7})
            while (n % factor == 0) n /= factor;
        return n == 1;
    };
    int next = 0;
    for (int n = 20000; n >= 1; --n) {
        if (is_good(n)) next = n;
        if (next) {
            ASSERT_EQ(qfftf_good_length(n), next) << n;
        }
    }
    EXPECT_EQ(qfftf_good_length(1000), 1000);
    EXPECT_EQ(qfftf_good_length(1001), 1008);
    EXPECT_EQ(qfftf_good_length(2'100'000'001), 2'100'394'800);
    for (int none : {0, -1, -2147483647 - 1, 2147483647}) EXPECT_EQ(qfftf_good_length(none), 0) << none;
}

TEST(Header, VersionsAreOne) {
    EXPECT_EQ(std::string(QFFTF_VERSION), std::to_string(QFFTF_VERSION_MAJOR) + "." +
                                              std::to_string(QFFTF_VERSION_MINOR) + "." +
                                              std::to_string(QFFTF_VERSION_PATCH));
}
