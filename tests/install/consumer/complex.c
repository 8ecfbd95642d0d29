/* SPDX-License-Identifier: Apache-2.0 */
/* A user's program in C99 with <complex.h>: forward and backward in place give the input times the length. */
#include <complex.h>
#include <math.h>
#include <qfftf.h>
#include <stdio.h>

enum { n = 1024 };

int main(void) {
    float _Complex* data = qsl_fftf_malloc(n * sizeof *data);
    if (!data) {
        puts("no memory");
        return 1;
    }
    qsl_fftf_plan forward = qsl_fftf_plan_dft_1d(n, data, data, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
    qsl_fftf_plan backward = qsl_fftf_plan_dft_1d(n, data, data, QSL_FFTF_BACKWARD, QSL_FFTF_RULES);
    if (!forward || !backward) {
        puts("no plan");
        return 1;
    }
    for (int j = 0; j < n; j++) {
        data[j] = (float)(j % 7) - 3 + ((float)(j % 5) - 2) * I;
    }
    qsl_fftf_execute(forward);
    qsl_fftf_execute(backward);
    double worst = 0;
    for (int j = 0; j < n; j++) {
        const double complex expected = (float)(j % 7) - 3 + ((float)(j % 5) - 2) * I;
        worst = fmax(worst, cabs(data[j] / (double)n - expected));
    }
    qsl_fftf_destroy_plan(forward);
    qsl_fftf_destroy_plan(backward);
    qsl_fftf_free(data);
    printf("largest error %.1e\n", worst);
    return worst < 3e-6 ? 0 : 1;
}
