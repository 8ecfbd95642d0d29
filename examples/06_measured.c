/* SPDX-License-Identifier: Apache-2.0 */
/* Measured planning runs several plans on the arrays and keeps the fastest: worth it where a plan runs often. The
 * arrays are filled afterwards, because the runs overwrite them. */
#include <complex.h>
#include <qfftf.h>
#include <stdio.h>

enum { n = 720 };

int main(void) {
    float _Complex* in = qsl_fftf_malloc(n * sizeof *in);
    float _Complex* out = qsl_fftf_malloc(n * sizeof *out);
    if (!in || !out) {
        return 1;
    }
    qsl_fftf_set_timelimit(0.5); /* no further plan is tried after half a second */
    qsl_fftf_plan plan = qsl_fftf_plan_dft_1d(n, in, out, QSL_FFTF_FORWARD, QSL_FFTF_MEASURED);
    if (!plan) {
        return 1;
    }
    for (int j = 0; j < n; j++) {
        in[j] = 1;
    }
    qsl_fftf_execute(plan);
    printf("sum %.0f, anything else %.0f\n", crealf(out[0]), cabsf(out[1]));
    qsl_fftf_destroy_plan(plan);
    qsl_fftf_free(in);
    qsl_fftf_free(out);
    return 0;
}
/* Prints:
sum 720, anything else 0
*/
