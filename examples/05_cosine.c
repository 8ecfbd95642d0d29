/* SPDX-License-Identifier: Apache-2.0 */
/* A cosine transform (DCT-II, REDFT10) puts the shape of smooth data into few coefficients; its inverse is DCT-III
 * (REDFT01), up to the factor 2 n. */
#include <math.h>
#include <qfftf.h>
#include <stdio.h>

enum { n = 64, kept = 16 };

int main(void) {
    float data[n], coefficients[n], restored[n];
    qsl_fftf_plan forward = qsl_fftf_plan_r2r_1d(n, data, coefficients, QSL_FFTF_REDFT10, QSL_FFTF_RULES);
    qsl_fftf_plan backward = qsl_fftf_plan_r2r_1d(n, coefficients, restored, QSL_FFTF_REDFT01, QSL_FFTF_RULES);
    if (!forward || !backward) {
        return 1;
    }
    for (int j = 0; j < n; j++) {
        const double x = (j + 0.5) / n;
        data[j] = (float)exp(-3 * x);
    }
    qsl_fftf_execute(forward);
    for (int k = kept; k < n; k++) {
        coefficients[k] = 0;
    }
    qsl_fftf_execute(backward);
    double error = 0, norm = 0;
    for (int j = 0; j < n; j++) {
        error += pow(data[j] - restored[j] / (2 * n), 2);
        norm += pow(data[j], 2);
    }
    printf("%d of %d coefficients keep the data within %.1f %%\n", kept, n, 100 * sqrt(error / norm));
    qsl_fftf_destroy_plan(forward);
    qsl_fftf_destroy_plan(backward);
    return 0;
}
/* Prints:
16 of 64 coefficients keep the data within 0.9 %
*/
