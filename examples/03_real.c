/* SPDX-License-Identifier: Apache-2.0 */
/* Real data: n floats have n / 2 + 1 complex coefficients. Noise above the tenth is cut off, and the way back gives n
 * times the signal. */
#include <complex.h>
#include <math.h>
#include <qfftf.h>
#include <stdio.h>

enum { n = 1000, kept = 10 };

int main(void) {
    static float signal[n], clean[n];
    static float _Complex spectrum[n / 2 + 1];
    qsl_fftf_plan forward = qsl_fftf_plan_dft_r2c_1d(n, signal, spectrum, QSL_FFTF_RULES);
    qsl_fftf_plan backward = qsl_fftf_plan_dft_c2r_1d(n, spectrum, clean, QSL_FFTF_RULES);
    if (!forward || !backward) {
        return 1;
    }
    const double turn = 2 * acos(-1);
    for (int j = 0; j < n; j++) {
        signal[j] = (float)(sin(turn * 3 * j / n) + 0.5 * sin(turn * 321 * j / n));
    }
    qsl_fftf_execute(forward);
    for (int k = kept; k <= n / 2; k++) {
        spectrum[k] = 0;
    }
    qsl_fftf_execute(backward);
    double before = 0, after = 0;
    for (int j = 0; j < n; j++) {
        const double ideal = sin(turn * 3 * j / n);
        before = fmax(before, fabs(signal[j] - ideal));
        after = fmax(after, fabs(clean[j] / n - ideal));
    }
    printf("largest error before: %.2f, after: %s\n", before, after < 1e-6 ? "below 1e-6" : "too large");
    qsl_fftf_destroy_plan(forward);
    qsl_fftf_destroy_plan(backward);
    return 0;
}
/* Prints:
largest error before: 0.50, after: below 1e-6
*/
