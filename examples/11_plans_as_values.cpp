// SPDX-License-Identifier: Apache-2.0
// The C++ header: plans are values that own what they need, arrays are spans of std::complex, and a refusal says why.
#include <complex>
#include <cstdio>
#include <qfftf.hpp>
#include <vector>

int main() {
    constexpr int n = 120;
    std::vector<std::complex<float>> signal(n, 1.0F), spectrum(n);
    const auto forward = qfftf::plan_c2c({n}, signal, spectrum, qfftf::forward);
    forward();
    std::printf("sum %.0f, anything else %.0f\n", spectrum[0].real(), std::abs(spectrum[n / 3]));

    std::vector<float> image(8 * 10, 0.5F);
    std::vector<std::complex<float>> half(8 * (10 / 2 + 1));
    qfftf::plan_r2c({8, 10}, std::span(image), std::span(half))();
    std::printf("8 x 10 pixels of a half: %.0f\n", half[0].real());

    try {
        half.pop_back();
        qfftf::plan_r2c({8, 10}, std::span(image), std::span(half));
    } catch (const qfftf::refused& reason) {
        std::puts(reason.what());
    }
}
/* Prints:
sum 120, anything else 0
8 x 10 pixels of a half: 40
qfftf demands: the output array holds the problem
*/
