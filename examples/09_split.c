/* SPDX-License-Identifier: Apache-2.0 */
/* Real and imaginary parts in arrays of their own, by a guru call. It always goes forward; with real and imaginary
 * parts exchanged on both sides it goes backward. */
#include <qfftf.h>
#include <stdio.h>

enum { n = 12 };

int main(void) {
    float re[n] = {0}, im[n] = {0}, spectrum_re[n], spectrum_im[n];
    const fft_iodim dimension = {n, 1, 1};
    qsl_fftf_plan plan =
        qsl_fftf_plan_guru_split_dft(1, &dimension, 0, NULL, re, im, spectrum_re, spectrum_im, QSL_FFTF_RULES);
    if (!plan) {
        return 1;
    }
    re[1] = 1;
    im[1] = 2;
    qsl_fftf_execute(plan);
    printf("forward:  %.3f %.3f at 3\n", spectrum_re[3], spectrum_im[3]);
    qsl_fftf_execute_split_dft(plan, spectrum_im, spectrum_re, im, re);
    printf("backward: %.3f %.3f at 1\n", re[1] / n, im[1] / n);
    qsl_fftf_destroy_plan(plan);
    return 0;
}
/* Prints:
forward:  2.000 -1.000 at 3
backward: 1.000 2.000 at 1
*/
