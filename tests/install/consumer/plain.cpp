// SPDX-License-Identifier: Apache-2.0
// A user's program in C++: the transform of one wave has one coefficient, and std::complex needs no copy.
#include <qfftf.h>

#include <cmath>
#include <complex>
#include <cstdio>
#include <vector>

int main() {
    const int n = 1000, wave = 17;
    const double turn = 2 * 3.14159265358979323846;
    std::vector<std::complex<float>> in(n), out(n);
    qsl_fftf_plan plan =
        qsl_fftf_plan_dft_1d(n, reinterpret_cast<qsl_fftf_complex*>(in.data()),
                             reinterpret_cast<qsl_fftf_complex*>(out.data()), QSL_FFTF_FORWARD, QSL_FFTF_RULES);
    if (!plan) {
        std::puts("no plan");
        return 1;
    }
    for (int j = 0; j < n; ++j) {
        in[j] = std::complex<float>(std::polar(1.0, turn * (wave * j % n) / n));
    }
    qsl_fftf_execute(plan);
    qsl_fftf_destroy_plan(plan);
    double worst = 0;
    for (int k = 0; k < n; ++k) {
        worst = std::fmax(worst, std::abs(out[k] - std::complex<float>(k == wave ? n : 0)));
    }
    std::printf("largest error %.1e\n", worst);
    return worst < 1e-3 ? 0 : 1;
}
