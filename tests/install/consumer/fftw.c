/* SPDX-License-Identifier: Apache-2.0 */
/* A program of another library's interface. Ends with 0 if a transform of 8 ones is 8 and zeros. */
#include <complex.h>
#include <fftw3.h>
#include <string.h>

int main(void) {
    fftwf_complex* data = fftwf_alloc_complex(8);
    if (!data) return 1;
    fftwf_plan plan = fftwf_plan_dft_1d(8, data, data, FFTW_FORWARD, FFTW_MEASURE);
    if (!plan) return 2;
    for (int i = 0; i < 8; ++i) data[i] = 1;
    fftwf_execute(plan);
    fftwf_destroy_plan(plan);
    for (int i = 0; i < 8; ++i)
        if (cabsf(data[i] - (i ? 0 : 8)) > 1e-6f) return 3;
    fftwf_free(data);
    return strncmp(fftwf_version, "qfftf-", 6) == 0 ? 0 : 4;
}
