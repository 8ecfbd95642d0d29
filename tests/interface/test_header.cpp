// SPDX-License-Identifier: Apache-2.0
// The header in C99 with and without <complex.h> and in C++: programs in both languages compile, link and run.
#include "qfftf.h"

#include <gtest/gtest.h>

#include <complex>

extern "C" int plan_with_pairs_of_floats(void);
extern "C" int plan_with_complex_numbers(void);

TEST(Header, C99) { EXPECT_EQ(plan_with_pairs_of_floats(), 0); }

TEST(Header, C99BehindComplexH) { EXPECT_EQ(plan_with_complex_numbers(), 0); }

TEST(Header, CxxWithStdComplex) {
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
