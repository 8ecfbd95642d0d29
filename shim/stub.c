/* SPDX-License-Identifier: Apache-2.0 */
/* libfftw3f_threads.so.3 and libfftw3f_omp.so.3 hold nothing: they bring libfftw3f.so.3, in which their names are. */
typedef int nothing;
