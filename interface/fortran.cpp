// SPDX-License-Identifier: Apache-2.0
// The Fortran names: the call's own name and an underscore. Integers and plans come by address, arrays and data as they
// are. Dimensions are not reversed: the caller gets row-major semantics.
#include "include/qfftf.h"

using complex_array = qsl_fftf_complex*;
using kind_t = qsl_fftf_r2r_kind;
#define TWIN extern "C" QFFTF_API

// Complex.

TWIN qsl_fftf_plan qsl_fftf_plan_dft_1d_(const int* n, complex_array in, complex_array out, const int* sign,
                                         const unsigned* flags) {
    return qsl_fftf_plan_dft_1d(*n, in, out, *sign, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_dft_2d_(const int* n0, const int* n1, complex_array in, complex_array out,
                                         const int* sign, const unsigned* flags) {
    return qsl_fftf_plan_dft_2d(*n0, *n1, in, out, *sign, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_dft_3d_(const int* n0, const int* n1, const int* n2, complex_array in,
                                         complex_array out, const int* sign, const unsigned* flags) {
    return qsl_fftf_plan_dft_3d(*n0, *n1, *n2, in, out, *sign, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_dft_(const int* rank, const int* n, complex_array in, complex_array out,
                                      const int* sign, const unsigned* flags) {
    return qsl_fftf_plan_dft(*rank, n, in, out, *sign, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_many_dft_(const int* rank, const int* n, const int* howmany, complex_array in,
                                           const int* inembed, const int* istride, const int* idist, complex_array out,
                                           const int* onembed, const int* ostride, const int* odist, const int* sign,
                                           const unsigned* flags) {
    return qsl_fftf_plan_many_dft(*rank, n, *howmany, in, inembed, *istride, *idist, out, onembed, *ostride, *odist,
                                  *sign, *flags);
}

// Real to complex.

TWIN qsl_fftf_plan qsl_fftf_plan_dft_r2c_1d_(const int* n, float* in, complex_array out, const unsigned* flags) {
    return qsl_fftf_plan_dft_r2c_1d(*n, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_dft_r2c_2d_(const int* n0, const int* n1, float* in, complex_array out,
                                             const unsigned* flags) {
    return qsl_fftf_plan_dft_r2c_2d(*n0, *n1, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_dft_r2c_3d_(const int* n0, const int* n1, const int* n2, float* in, complex_array out,
                                             const unsigned* flags) {
    return qsl_fftf_plan_dft_r2c_3d(*n0, *n1, *n2, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_dft_r2c_(const int* rank, const int* n, float* in, complex_array out,
                                          const unsigned* flags) {
    return qsl_fftf_plan_dft_r2c(*rank, n, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_many_dft_r2c_(const int* rank, const int* n, const int* howmany, float* in,
                                               const int* inembed, const int* istride, const int* idist,
                                               complex_array out, const int* onembed, const int* ostride,
                                               const int* odist, const unsigned* flags) {
    return qsl_fftf_plan_many_dft_r2c(*rank, n, *howmany, in, inembed, *istride, *idist, out, onembed, *ostride, *odist,
                                      *flags);
}

// Complex to real.

TWIN qsl_fftf_plan qsl_fftf_plan_dft_c2r_1d_(const int* n, complex_array in, float* out, const unsigned* flags) {
    return qsl_fftf_plan_dft_c2r_1d(*n, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_dft_c2r_2d_(const int* n0, const int* n1, complex_array in, float* out,
                                             const unsigned* flags) {
    return qsl_fftf_plan_dft_c2r_2d(*n0, *n1, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_dft_c2r_3d_(const int* n0, const int* n1, const int* n2, complex_array in, float* out,
                                             const unsigned* flags) {
    return qsl_fftf_plan_dft_c2r_3d(*n0, *n1, *n2, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_dft_c2r_(const int* rank, const int* n, complex_array in, float* out,
                                          const unsigned* flags) {
    return qsl_fftf_plan_dft_c2r(*rank, n, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_many_dft_c2r_(const int* rank, const int* n, const int* howmany, complex_array in,
                                               const int* inembed, const int* istride, const int* idist, float* out,
                                               const int* onembed, const int* ostride, const int* odist,
                                               const unsigned* flags) {
    return qsl_fftf_plan_many_dft_c2r(*rank, n, *howmany, in, inembed, *istride, *idist, out, onembed, *ostride, *odist,
                                      *flags);
}

// Real to real.

TWIN qsl_fftf_plan qsl_fftf_plan_r2r_1d_(const int* n, float* in, float* out, const kind_t* kind,
                                         const unsigned* flags) {
    return qsl_fftf_plan_r2r_1d(*n, in, out, *kind, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_r2r_2d_(const int* n0, const int* n1, float* in, float* out, const kind_t* kind0,
                                         const kind_t* kind1, const unsigned* flags) {
    return qsl_fftf_plan_r2r_2d(*n0, *n1, in, out, *kind0, *kind1, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_r2r_3d_(const int* n0, const int* n1, const int* n2, float* in, float* out,
                                         const kind_t* kind0, const kind_t* kind1, const kind_t* kind2,
                                         const unsigned* flags) {
    return qsl_fftf_plan_r2r_3d(*n0, *n1, *n2, in, out, *kind0, *kind1, *kind2, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_r2r_(const int* rank, const int* n, float* in, float* out, const kind_t* kinds,
                                      const unsigned* flags) {
    return qsl_fftf_plan_r2r(*rank, n, in, out, kinds, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_many_r2r_(const int* rank, const int* n, const int* howmany, float* in,
                                           const int* inembed, const int* istride, const int* idist, float* out,
                                           const int* onembed, const int* ostride, const int* odist,
                                           const kind_t* kinds, const unsigned* flags) {
    return qsl_fftf_plan_many_r2r(*rank, n, *howmany, in, inembed, *istride, *idist, out, onembed, *ostride, *odist,
                                  kinds, *flags);
}

// Guru, 32 bits.

TWIN qsl_fftf_plan qsl_fftf_plan_guru_dft_(const int* rank, const fft_iodim* dims, const int* howmany_rank,
                                           const fft_iodim* howmany_dims, complex_array in, complex_array out,
                                           const int* sign, const unsigned* flags) {
    return qsl_fftf_plan_guru_dft(*rank, dims, *howmany_rank, howmany_dims, in, out, *sign, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru_dft_r2c_(const int* rank, const fft_iodim* dims, const int* howmany_rank,
                                               const fft_iodim* howmany_dims, float* in, complex_array out,
                                               const unsigned* flags) {
    return qsl_fftf_plan_guru_dft_r2c(*rank, dims, *howmany_rank, howmany_dims, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru_dft_c2r_(const int* rank, const fft_iodim* dims, const int* howmany_rank,
                                               const fft_iodim* howmany_dims, complex_array in, float* out,
                                               const unsigned* flags) {
    return qsl_fftf_plan_guru_dft_c2r(*rank, dims, *howmany_rank, howmany_dims, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru_r2r_(const int* rank, const fft_iodim* dims, const int* howmany_rank,
                                           const fft_iodim* howmany_dims, float* in, float* out, const kind_t* kinds,
                                           const unsigned* flags) {
    return qsl_fftf_plan_guru_r2r(*rank, dims, *howmany_rank, howmany_dims, in, out, kinds, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru_split_dft_(const int* rank, const fft_iodim* dims, const int* howmany_rank,
                                                 const fft_iodim* howmany_dims, float* in_re, float* in_im,
                                                 float* out_re, float* out_im, const unsigned* flags) {
    return qsl_fftf_plan_guru_split_dft(*rank, dims, *howmany_rank, howmany_dims, in_re, in_im, out_re, out_im, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru_split_dft_r2c_(const int* rank, const fft_iodim* dims, const int* howmany_rank,
                                                     const fft_iodim* howmany_dims, float* in, float* out_re,
                                                     float* out_im, const unsigned* flags) {
    return qsl_fftf_plan_guru_split_dft_r2c(*rank, dims, *howmany_rank, howmany_dims, in, out_re, out_im, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru_split_dft_c2r_(const int* rank, const fft_iodim* dims, const int* howmany_rank,
                                                     const fft_iodim* howmany_dims, float* in_re, float* in_im,
                                                     float* out, const unsigned* flags) {
    return qsl_fftf_plan_guru_split_dft_c2r(*rank, dims, *howmany_rank, howmany_dims, in_re, in_im, out, *flags);
}

// Guru, 64 bits.

TWIN qsl_fftf_plan qsl_fftf_plan_guru64_dft_(const int* rank, const fft_iodim64* dims, const int* howmany_rank,
                                             const fft_iodim64* howmany_dims, complex_array in, complex_array out,
                                             const int* sign, const unsigned* flags) {
    return qsl_fftf_plan_guru64_dft(*rank, dims, *howmany_rank, howmany_dims, in, out, *sign, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru64_dft_r2c_(const int* rank, const fft_iodim64* dims, const int* howmany_rank,
                                                 const fft_iodim64* howmany_dims, float* in, complex_array out,
                                                 const unsigned* flags) {
    return qsl_fftf_plan_guru64_dft_r2c(*rank, dims, *howmany_rank, howmany_dims, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru64_dft_c2r_(const int* rank, const fft_iodim64* dims, const int* howmany_rank,
                                                 const fft_iodim64* howmany_dims, complex_array in, float* out,
                                                 const unsigned* flags) {
    return qsl_fftf_plan_guru64_dft_c2r(*rank, dims, *howmany_rank, howmany_dims, in, out, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru64_r2r_(const int* rank, const fft_iodim64* dims, const int* howmany_rank,
                                             const fft_iodim64* howmany_dims, float* in, float* out,
                                             const kind_t* kinds, const unsigned* flags) {
    return qsl_fftf_plan_guru64_r2r(*rank, dims, *howmany_rank, howmany_dims, in, out, kinds, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru64_split_dft_(const int* rank, const fft_iodim64* dims, const int* howmany_rank,
                                                   const fft_iodim64* howmany_dims, float* in_re, float* in_im,
                                                   float* out_re, float* out_im, const unsigned* flags) {
    return qsl_fftf_plan_guru64_split_dft(*rank, dims, *howmany_rank, howmany_dims, in_re, in_im, out_re, out_im,
                                          *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru64_split_dft_r2c_(const int* rank, const fft_iodim64* dims,
                                                       const int* howmany_rank, const fft_iodim64* howmany_dims,
                                                       float* in, float* out_re, float* out_im, const unsigned* flags) {
    return qsl_fftf_plan_guru64_split_dft_r2c(*rank, dims, *howmany_rank, howmany_dims, in, out_re, out_im, *flags);
}
TWIN qsl_fftf_plan qsl_fftf_plan_guru64_split_dft_c2r_(const int* rank, const fft_iodim64* dims,
                                                       const int* howmany_rank, const fft_iodim64* howmany_dims,
                                                       float* in_re, float* in_im, float* out, const unsigned* flags) {
    return qsl_fftf_plan_guru64_split_dft_c2r(*rank, dims, *howmany_rank, howmany_dims, in_re, in_im, out, *flags);
}

// Execution.

TWIN void qsl_fftf_execute_(const qsl_fftf_plan* plan) { qsl_fftf_execute(*plan); }
TWIN void qsl_fftf_execute_dft_(const qsl_fftf_plan* plan, complex_array in, complex_array out) {
    qsl_fftf_execute_dft(*plan, in, out);
}
TWIN void qsl_fftf_execute_dft_r2c_(const qsl_fftf_plan* plan, float* in, complex_array out) {
    qsl_fftf_execute_dft_r2c(*plan, in, out);
}
TWIN void qsl_fftf_execute_dft_c2r_(const qsl_fftf_plan* plan, complex_array in, float* out) {
    qsl_fftf_execute_dft_c2r(*plan, in, out);
}
TWIN void qsl_fftf_execute_r2r_(const qsl_fftf_plan* plan, float* in, float* out) {
    qsl_fftf_execute_r2r(*plan, in, out);
}
TWIN void qsl_fftf_execute_split_dft_(const qsl_fftf_plan* plan, float* in_re, float* in_im, float* out_re,
                                      float* out_im) {
    qsl_fftf_execute_split_dft(*plan, in_re, in_im, out_re, out_im);
}
TWIN void qsl_fftf_execute_split_dft_r2c_(const qsl_fftf_plan* plan, float* in, float* out_re, float* out_im) {
    qsl_fftf_execute_split_dft_r2c(*plan, in, out_re, out_im);
}
TWIN void qsl_fftf_execute_split_dft_c2r_(const qsl_fftf_plan* plan, float* in_re, float* in_im, float* out) {
    qsl_fftf_execute_split_dft_c2r(*plan, in_re, in_im, out);
}

// Housekeeping.

TWIN void qsl_fftf_destroy_plan_(const qsl_fftf_plan* plan) { qsl_fftf_destroy_plan(*plan); }
TWIN void* qsl_fftf_malloc_(const uint64_t* size) { return qsl_fftf_malloc(*size); }
TWIN void qsl_fftf_free_(void* pointer) { qsl_fftf_free(pointer); }
TWIN int qsl_fftf_init_threads_(void) { return qsl_fftf_init_threads(); }
TWIN void qsl_fftf_cleanup_threads_(void) { qsl_fftf_cleanup_threads(); }
TWIN void qsl_fftf_plan_with_nthreads_(const int* n) { qsl_fftf_plan_with_nthreads(*n); }
