/* SPDX-License-Identifier: Apache-2.0 */
/* The header behind <complex.h>: complex numbers are C's own. */
#include <complex.h>

#include "qfftf.h"

int plan_with_complex_numbers(void) {
    float complex x[8] = {1.0f + 0.5f * I};
    qsl_fftf_complex* first = x;
    qsl_fftf_plan plan = qsl_fftf_plan_dft_1d(0, x, x, QSL_FFTF_BACKWARD, QSL_FFTF_MEASURED);
    qsl_fftf_execute_dft(plan, x, x);
    qsl_fftf_destroy_plan(plan);
    return plan != 0 || crealf(first[0]) != 1.0f;
}
