/* SPDX-License-Identifier: Apache-2.0 */
/* Several threads inside one execution: a batch of 256 transforms is cut into one part for each of 4 threads. */
#include <complex.h>
#include <qfftf.h>
#include <stdio.h>

enum { n = 512, batch = 256 };

int main(void) {
    const int length = n;
    float _Complex* data = qsl_fftf_malloc(sizeof *data * n * batch);
    qsl_fftf_init_threads();
    qsl_fftf_plan_with_nthreads(4); /* for the plans that follow */
    qsl_fftf_plan plan =
        qsl_fftf_plan_many_dft(1, &length, batch, data, NULL, 1, n, data, NULL, 1, n, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
    if (!data || !plan) {
        return 1;
    }
    for (int t = 0; t < batch; t++) {
        data[t * n] = (float)t; /* a pulse of height t: its transform is t everywhere */
    }
    qsl_fftf_execute(plan);
    int right = 0;
    for (int t = 0; t < batch; t++) {
        right += crealf(data[t * n + n / 3]) == (float)t;
    }
    printf("%d of %d transforms are right\n", right, batch);
    qsl_fftf_destroy_plan(plan);
    qsl_fftf_cleanup_threads(); /* the threads would wait for more work until the program ends */
    qsl_fftf_free(data);
    return 0;
}
/* Prints:
256 of 256 transforms are right
*/
