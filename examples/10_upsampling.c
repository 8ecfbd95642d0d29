/* SPDX-License-Identifier: Apache-2.0 */
/* Fourier interpolation of a small image to twice its size, taken half a new sample further on. A wave stays a wave:
 * the values between the samples are those of the function. examples/gallery/upsampling.cpp does this to a photograph.
 */
#include <math.h>
#include <qfftf.h>
#include <stdio.h>

enum { rows = 10, columns = 12, factor = 2 };

static double wave(double row, double column) {
    const double turn = 2 * acos(-1);
    return cos(turn * (2 * row / rows - 3 * column / columns));
}

int main(void) {
    static float image[rows][columns], larger[factor * rows][factor * columns];
    const float shift = 0.5f;
    qsl_fftf_plan plan = qsl_fftf_plan_upsampling_2d(rows, columns, factor * rows, factor * columns, image[0],
                                                     larger[0], QSL_FFTF_RULES, shift, shift);
    if (!plan) {
        return 1;
    }
    for (int r = 0; r < rows; r++) {
        for (int c = 0; c < columns; c++) {
            image[r][c] = (float)wave(r, c);
        }
    }
    qsl_fftf_execute(plan); /* the amplitude becomes that of the image divided by the number of samples per sample */
    double worst = 0;
    for (int r = 0; r < factor * rows; r++) {
        for (int c = 0; c < factor * columns; c++) {
            const double expected = wave((double)(r + shift) / factor, (double)(c + shift) / factor);
            worst = fmax(worst, fabs(larger[r][c] * factor * factor - expected));
        }
    }
    printf("%d x %d samples, largest error %s\n", factor * rows, factor * columns,
           worst < 1e-6 ? "below 1e-6" : "too large");
    qsl_fftf_destroy_plan(plan);
    return 0;
}
/* Prints:
20 x 24 samples, largest error below 1e-6
*/
