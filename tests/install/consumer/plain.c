/* SPDX-License-Identifier: Apache-2.0 */
/* A user's program in C99 without <complex.h>: one transform of 360 points against the sum that defines it. */
#include <math.h>
#include <qfftf.h>
#include <stdio.h>

enum { n = 360 };
static float in[n][2], out[n][2];

static double relative_error(void) {
    double error = 0, norm = 0;
    for (int k = 0; k < n; k++) {
        double re = 0, im = 0;
        for (int j = 0; j < n; j++) {
            const double angle = -2 * 3.14159265358979323846 * ((double)j * k / n);
            re += in[j][0] * cos(angle) - in[j][1] * sin(angle);
            im += in[j][0] * sin(angle) + in[j][1] * cos(angle);
        }
        error += (out[k][0] - re) * (out[k][0] - re) + (out[k][1] - im) * (out[k][1] - im);
        norm += re * re + im * im;
    }
    return sqrt(error / norm);
}

int main(void) {
    for (int j = 0; j < n; j++) {
        in[j][0] = (float)(j * j % 17) - 8;
        in[j][1] = (float)(j * 5 % 13) - 6;
    }
    qsl_fftf_plan plan = qsl_fftf_plan_dft_1d(n, in, out, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
    if (!plan) {
        puts("no plan");
        return 1;
    }
    qsl_fftf_execute(plan);
    qsl_fftf_destroy_plan(plan);
    const double error = relative_error();
    printf("relative error %.1e\n", error);
    return error < 3e-7 ? 0 : 1;
}
