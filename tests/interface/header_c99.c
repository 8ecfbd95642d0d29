/* SPDX-License-Identifier: Apache-2.0 */
/* The header in C99 without <complex.h>: complex numbers are pairs of floats. */
#include "qfftf.h"

int plan_with_pairs_of_floats(void) {
    qsl_fftf_complex x[8] = {{1.0f, 0.0f}};
    qsl_fftf_plan plan;
    if (sizeof(qsl_fftf_complex) != 2 * sizeof(float)) return 1;
    plan = qsl_fftf_plan_dft_1d(0, x, x, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
    qsl_fftf_execute(plan);
    qsl_fftf_destroy_plan(plan);
    return plan != 0;
}
