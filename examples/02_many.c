/* SPDX-License-Identifier: Apache-2.0 */
/* Many transforms by one plan: the columns of a matrix, in place. A column's elements are `columns` apart, and the next
 * column begins one element further on. */
#include <complex.h>
#include <qfftf.h>
#include <stdio.h>

enum { rows = 8, columns = 100 };

int main(void) {
    static float _Complex matrix[rows][columns];
    const int length = rows;
    qsl_fftf_plan plan = qsl_fftf_plan_many_dft(1, &length, columns, matrix[0], NULL, columns, 1, matrix[0], NULL,
                                                columns, 1, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
    if (!plan) {
        return 1;
    }
    for (int c = 0; c < columns; c++) {
        matrix[c % rows][c] = 1; /* a pulse in every column, in row c % 8: its transform turns c % 8 times */
    }
    qsl_fftf_execute(plan);
    for (int c = 0; c < columns; c += 33) {
        printf("column %2d: %4.1f %4.1f, then %4.1f %4.1f\n", c, crealf(matrix[0][c]), cimagf(matrix[0][c]),
               crealf(matrix[2][c]), cimagf(matrix[2][c]));
    }
    qsl_fftf_destroy_plan(plan);
    return 0;
}
/* Prints:
column  0:  1.0  0.0, then  1.0  0.0
column 33:  1.0  0.0, then  0.0 -1.0
column 66:  1.0  0.0, then -1.0  0.0
column 99:  1.0  0.0, then  0.0  1.0
*/
