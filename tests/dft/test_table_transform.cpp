// SPDX-License-Identifier: Apache-2.0
// The transforms of tables: the true values rounded once, and those of the plan where the table is long.
#include "dft/sizes.h"
#include "dft/table_transform.h"
#include "tests/dft/problems.h"

namespace {

std::vector<std::complex<float>> transformed(int64_t n, const std::vector<std::complex<float>>& table, fft_plan* plan) {
    std::vector<std::complex<float>> result = table;
    EXPECT_TRUE(transform_table(plan, reinterpret_cast<float*>(result.data()))) << n;
    return result;
}

}  // namespace

TEST(TableTransform, RoundsTheTrueValuesOnce) {
    std::vector<int64_t> lengths = {1024, 4096, 6561, 9240, 20160, 17 * 19 * 23, 29 * 31 * 37, 2 * 13 * 13 * 11, 65536};
    for (int64_t n = 1; n <= 700; ++n)
        if (!has_large_prime_factor(n)) lengths.push_back(n);
    for (int64_t n : lengths) {
        fft_plan length = {};
        length.dims[0].n = n;  // all that is asked of the plan
        const auto table = complex_noise(n, n);
        const auto actual = transformed(n, table, &length);
        const auto expected = reference::dft(widened(table), -1);
        // What both transforms are off by, of the size of a coefficient; the roots of long ones are products.
        const double exact = (1e-14 + 4e-18 * static_cast<double>(n)) * std::sqrt(static_cast<double>(n));
        for (int64_t k = 0; k < n; ++k) {
            const double re = expected[k].real(), im = expected[k].imag();
            EXPECT_LE(std::abs(actual[k].real() - re), 0x1p-24 * std::abs(re) + exact) << n << ", " << k;
            EXPECT_LE(std::abs(actual[k].imag() - im), 0x1p-24 * std::abs(im) + exact) << n << ", " << k;
        }
    }
}

TEST(TableTransform, RunsThePlanForLongTables) {
    const int64_t n = 270000;
    const planned plan(record_of({n, sign_forward, 1, 1, true}));
    ASSERT_TRUE(plan);
    const auto table = complex_noise(n, 1);
    auto by_plan = table;
    plan->execute(plan.get(), reinterpret_cast<float*>(by_plan.data()), reinterpret_cast<float*>(by_plan.data()));
    EXPECT_EQ(transformed(n, table, plan.get()), by_plan);
}
