// SPDX-License-Identifier: Apache-2.0
// The basic calls: one contiguous transform, passed on to the many call of its type. Those check the arguments.
#include "include/qfftf.h"

// Complex.

qsl_fftf_plan qsl_fftf_plan_dft_1d(int n, qsl_fftf_complex* in, qsl_fftf_complex* out, int sign, unsigned flags) {
    return qsl_fftf_plan_many_dft(1, &n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, sign, flags);
}

qsl_fftf_plan qsl_fftf_plan_dft_2d(int n0, int n1, qsl_fftf_complex* in, qsl_fftf_complex* out, int sign,
                                   unsigned flags) {
    const int n[] = {n0, n1};
    return qsl_fftf_plan_many_dft(2, n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, sign, flags);
}

qsl_fftf_plan qsl_fftf_plan_dft_3d(int n0, int n1, int n2, qsl_fftf_complex* in, qsl_fftf_complex* out, int sign,
                                   unsigned flags) {
    const int n[] = {n0, n1, n2};
    return qsl_fftf_plan_many_dft(3, n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, sign, flags);
}

qsl_fftf_plan qsl_fftf_plan_dft(int rank, const int* n, qsl_fftf_complex* in, qsl_fftf_complex* out, int sign,
                                unsigned flags) {
    return qsl_fftf_plan_many_dft(rank, n, 1, in, nullptr, 1, 0, out, nullptr, 1, 0, sign, flags);
}

// Real to complex.

qsl_fftf_plan qsl_fftf_plan_dft_r2c_1d(int n, float* in, qsl_fftf_complex* out, unsigned flags) {
    return qsl_fftf_plan_many_dft_r2c(1, &n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, flags);
}

qsl_fftf_plan qsl_fftf_plan_dft_r2c_2d(int n0, int n1, float* in, qsl_fftf_complex* out, unsigned flags) {
    const int n[] = {n0, n1};
    return qsl_fftf_plan_many_dft_r2c(2, n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, flags);
}

qsl_fftf_plan qsl_fftf_plan_dft_r2c_3d(int n0, int n1, int n2, float* in, qsl_fftf_complex* out, unsigned flags) {
    const int n[] = {n0, n1, n2};
    return qsl_fftf_plan_many_dft_r2c(3, n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, flags);
}

qsl_fftf_plan qsl_fftf_plan_dft_r2c(int rank, const int* n, float* in, qsl_fftf_complex* out, unsigned flags) {
    return qsl_fftf_plan_many_dft_r2c(rank, n, 1, in, nullptr, 1, 0, out, nullptr, 1, 0, flags);
}

// Complex to real.

qsl_fftf_plan qsl_fftf_plan_dft_c2r_1d(int n, qsl_fftf_complex* in, float* out, unsigned flags) {
    return qsl_fftf_plan_many_dft_c2r(1, &n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, flags);
}

qsl_fftf_plan qsl_fftf_plan_dft_c2r_2d(int n0, int n1, qsl_fftf_complex* in, float* out, unsigned flags) {
    const int n[] = {n0, n1};
    return qsl_fftf_plan_many_dft_c2r(2, n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, flags);
}

qsl_fftf_plan qsl_fftf_plan_dft_c2r_3d(int n0, int n1, int n2, qsl_fftf_complex* in, float* out, unsigned flags) {
    const int n[] = {n0, n1, n2};
    return qsl_fftf_plan_many_dft_c2r(3, n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, flags);
}

qsl_fftf_plan qsl_fftf_plan_dft_c2r(int rank, const int* n, qsl_fftf_complex* in, float* out, unsigned flags) {
    return qsl_fftf_plan_many_dft_c2r(rank, n, 1, in, nullptr, 1, 0, out, nullptr, 1, 0, flags);
}

// Real to real.

qsl_fftf_plan qsl_fftf_plan_r2r_1d(int n, float* in, float* out, qsl_fftf_r2r_kind kind, unsigned flags) {
    return qsl_fftf_plan_many_r2r(1, &n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, &kind, flags);
}

qsl_fftf_plan qsl_fftf_plan_r2r_2d(int n0, int n1, float* in, float* out, qsl_fftf_r2r_kind kind0,
                                   qsl_fftf_r2r_kind kind1, unsigned flags) {
    const int n[] = {n0, n1};
    const qsl_fftf_r2r_kind kinds[] = {kind0, kind1};
    return qsl_fftf_plan_many_r2r(2, n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, kinds, flags);
}

qsl_fftf_plan qsl_fftf_plan_r2r_3d(int n0, int n1, int n2, float* in, float* out, qsl_fftf_r2r_kind kind0,
                                   qsl_fftf_r2r_kind kind1, qsl_fftf_r2r_kind kind2, unsigned flags) {
    const int n[] = {n0, n1, n2};
    const qsl_fftf_r2r_kind kinds[] = {kind0, kind1, kind2};
    return qsl_fftf_plan_many_r2r(3, n, 1, in, nullptr, 1, 1, out, nullptr, 1, 1, kinds, flags);
}

qsl_fftf_plan qsl_fftf_plan_r2r(int rank, const int* n, float* in, float* out, const qsl_fftf_r2r_kind* kinds,
                                unsigned flags) {
    return qsl_fftf_plan_many_r2r(rank, n, 1, in, nullptr, 1, 0, out, nullptr, 1, 0, kinds, flags);
}
