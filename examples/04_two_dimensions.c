/* SPDX-License-Identifier: Apache-2.0 */
/* Two dimensions: how far has a picture moved? The cross-correlation of the two, by transforms, has its peak there. */
#include <complex.h>
#include <qfftf.h>
#include <stdio.h>

enum { rows = 60, columns = 84, half = columns / 2 + 1, down = 7, right = 23 };

static float first[rows][columns], second[rows][columns], correlation[rows][columns];
static float _Complex first_spectrum[rows][half], second_spectrum[rows][half];

int main(void) {
    qsl_fftf_plan forward = qsl_fftf_plan_dft_r2c_2d(rows, columns, first[0], first_spectrum[0], QSL_FFTF_RULES);
    qsl_fftf_plan backward = qsl_fftf_plan_dft_c2r_2d(rows, columns, first_spectrum[0], correlation[0], QSL_FFTF_RULES);
    if (!forward || !backward) {
        return 1;
    }
    unsigned noise = 1;
    for (int r = 0; r < rows; r++) {
        for (int c = 0; c < columns; c++) {
            noise = noise * 1664525u + 1013904223u;
            first[r][c] = second[(r + down) % rows][(c + right) % columns] = (float)(noise >> 24) - 127.5f;
        }
    }
    qsl_fftf_execute(forward);
    qsl_fftf_execute_dft_r2c(forward, second[0], second_spectrum[0]);
    for (int i = 0; i < rows * half; i++) {
        first_spectrum[0][i] = conjf(first_spectrum[0][i]) * second_spectrum[0][i];
    }
    qsl_fftf_execute(backward);
    int peak = 0;
    for (int i = 1; i < rows * columns; i++) {
        peak = correlation[0][i] > correlation[0][peak] ? i : peak;
    }
    printf("moved by %d rows and %d columns\n", peak / columns, peak % columns);
    qsl_fftf_destroy_plan(forward);
    qsl_fftf_destroy_plan(backward);
    return 0;
}
/* Prints:
moved by 7 rows and 23 columns
*/
