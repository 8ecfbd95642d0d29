/* SPDX-License-Identifier: Apache-2.0 */
/* One plan for many arrays: a plan by rules needs no arrays of its own, only to know that it works in place, which two
 * null pointers say. */
#include <complex.h>
#include <qfftf.h>
#include <stdio.h>

enum { n = 360, signals = 3 };

int main(void) {
    static float _Complex data[signals][n];
    qsl_fftf_plan plan = qsl_fftf_plan_dft_1d(n, NULL, NULL, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
    if (!plan) {
        return 1;
    }
    for (int s = 0; s < signals; s++) {
        for (int j = 0; j < n; j++) {
            data[s][j] = (float)(s + 1);
        }
        qsl_fftf_execute_dft(plan, data[s], data[s]);
        printf("signal %d: sum %.0f\n", s, crealf(data[s][0]));
    }
    qsl_fftf_destroy_plan(plan);
    return 0;
}
/* Prints:
signal 0: sum 360
signal 1: sum 720
signal 2: sum 1080
*/
