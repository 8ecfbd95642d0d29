/* SPDX-License-Identifier: Apache-2.0 */
/* One complex transform: which waves are in a signal of 16 samples? */
#include <complex.h>
#include <math.h>
#include <qfftf.h>
#include <stdio.h>

enum { n = 16 };

int main(void) {
    float _Complex signal[n], spectrum[n];
    qsl_fftf_plan plan = qsl_fftf_plan_dft_1d(n, signal, spectrum, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
    if (!plan) {
        return 1;
    }
    const double turn = 2 * acos(-1);
    for (int j = 0; j < n; j++) {
        signal[j] = (float)(3 * cos(turn * 2 * j / n) + sin(turn * 5 * j / n));
    }
    qsl_fftf_execute(plan);
    for (int k = 0; k <= n / 2; k++) {
        const float amplitude = cabsf(spectrum[k]) * 2 / n; /* nothing is normalised */
        if (amplitude > 1e-3f) {
            printf("%d waves of amplitude %.3f\n", k, amplitude);
        }
    }
    qsl_fftf_destroy_plan(plan);
    return 0;
}
/* Prints:
2 waves of amplitude 3.000
5 waves of amplitude 1.000
*/
