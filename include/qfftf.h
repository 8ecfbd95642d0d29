/* SPDX-License-Identifier: Apache-2.0 */
/*
 * qfftf: single-precision discrete Fourier transforms for 64-bit Arm machines. For C99 and C++.
 *
 * Make a plan for a problem, execute it as often as you like, destroy it:
 *
 *     qsl_fftf_plan plan = qsl_fftf_plan_dft_1d(1024, in, out, QSL_FFTF_FORWARD, QSL_FFTF_RULES);
 *     qsl_fftf_execute(plan);
 *     qsl_fftf_destroy_plan(plan);
 *
 * What holds for every call:
 * - A transform computes out[k] = sum over j of in[j] exp(sign 2 pi i j k / n). Nothing is normalised: forward and then
 *   backward gives the input times the number of points. (Upsampling alone has a scale.)
 * - Arrays are row-major: n[0] varies slowest, n[rank-1] fastest. The sizes of a real transform are those of its real
 *   side; its complex side has n[rank-1] / 2 + 1 elements in the last dimension.
 * - Strides and distances count elements of the array's own type: complex numbers on a complex side, floats on a real
 *   side and on each array of a split pair.
 * - A transform is in place when `in` and `out` are the same address. Arrays that overlap otherwise aren't supported.
 *   Out of place the input is kept, by transforms of every kind.
 * - A null plan is the only sign of failure: an argument out of its documented range, a problem that no method takes,
 *   or no memory. Execute and housekeeping calls do nothing when they are given a null pointer.
 * - Planning with QSL_FFTF_RULES never touches the arrays, which may be null if the plan is only executed on other
 *   arrays (both null counts as in place). Planning with QSL_FFTF_MEASURED runs transforms on them and overwrites both.
 * - Any number of threads may plan at once, and any number may execute at once, different plans or one plan on
 *   different arrays. A plan's working storage is lent to one execution at a time; an execution that finds it lent, and
 *   any on a thread that has never made a plan, allocates storage of its own, or does nothing at all where memory is
 *   short.
 *
 * Fortran: every planning, execute, memory and thread call below has a twin of the same name with a trailing underscore
 * that takes its integers and plans by address (not qsl_fftf_plan_upsampling_2d, qsl_fftf_plan_with_nthreads_local,
 * qsl_fftf_set_timelimit and qsl_fftf_cleanup).
 */
#ifndef QFFTF_H
#define QFFTF_H

#include <stdint.h>

#if defined(__GNUC__)
#define QFFTF_API __attribute__((visibility("default")))
#else
#define QFFTF_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* A complex number: two floats, real part first. Where <complex.h> came first, C's own type of the same layout; an
 * array of std::complex<float> may be passed by reinterpret_cast<qsl_fftf_complex*>. */
#if !defined(__cplusplus) && defined(_Complex_I) && defined(complex) && defined(I)
typedef float _Complex qsl_fftf_complex;
#else
typedef float qsl_fftf_complex[2];
#endif

/* The handle of a plan. */
typedef struct fft_plan* qsl_fftf_plan;

/* One dimension of a guru call: length or count, and the distance between consecutive indices on each side. */
typedef struct fft_iodim {
    int n;
    int is;
    int os;
} fft_iodim;
typedef struct fft_iodim64 {
    int64_t n;
    int64_t is;
    int64_t os;
} fft_iodim64;

/* `sign`: the sign of the exponent. */
#define QSL_FFTF_FORWARD (-1)
#define QSL_FFTF_BACKWARD (+1)

/* `flags`: any value but QSL_FFTF_MEASURED plans by rules. */
#define QSL_FFTF_RULES (0u)     /* at once, by the library's rules */
#define QSL_FFTF_MEASURED (32u) /* build several plans, run them on the arrays and keep the fastest */

/* Kinds of real-to-real transforms, of n points each, j and k from 0 to n - 1. */
typedef uint32_t qsl_fftf_r2r_kind;
#define QSL_FFTF_R2HC 0u     /* real to half-complex: r0, r1, ..., r(n/2), i((n+1)/2-1), ..., i2, i1; sign -1 */
#define QSL_FFTF_HC2R 1u     /* half-complex to real; sign +1 */
#define QSL_FFTF_DHT 2u      /* Hartley: sum x[j] (cos(2 pi j k / n) + sin(2 pi j k / n)) */
#define QSL_FFTF_REDFT00 3u  /* DCT-I: x[0] + (-1)^k x[n-1] + 2 sum x[j] cos(pi j k / (n-1)), j = 1 to n-2; n >= 2 */
#define QSL_FFTF_REDFT01 4u  /* DCT-III: x[0] + 2 sum x[j] cos(pi j (k + 1/2) / n), j = 1 to n-1 */
#define QSL_FFTF_REDFT10 5u  /* DCT-II: 2 sum x[j] cos(pi (j + 1/2) k / n) */
#define QSL_FFTF_REDFT11 6u  /* DCT-IV: 2 sum x[j] cos(pi (j + 1/2) (k + 1/2) / n) */
#define QSL_FFTF_RODFT00 7u  /* DST-I: 2 sum x[j] sin(pi (j + 1) (k + 1) / (n + 1)) */
#define QSL_FFTF_RODFT01 8u  /* DST-III: (-1)^k x[n-1] + 2 sum x[j] sin(pi (j + 1) (k + 1/2) / n), j = 0 to n-2 */
#define QSL_FFTF_RODFT10 9u  /* DST-II: 2 sum x[j] sin(pi (j + 1/2) (k + 1) / n) */
#define QSL_FFTF_RODFT11 10u /* DST-IV: 2 sum x[j] sin(pi (j + 1/2) (k + 1/2) / n) */

/* ---- Complex transforms ------------------------------------------------------------------------------------------ */

/* One complex transform of n >= 1 contiguous points. `sign` is QSL_FFTF_FORWARD or QSL_FFTF_BACKWARD; any other value
 * gives null. In place or out of place. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft_1d(int n, qsl_fftf_complex* in, qsl_fftf_complex* out, int sign,
                                             unsigned flags);

/* One contiguous complex transform of n0 rows of n1 points. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft_2d(int n0, int n1, qsl_fftf_complex* in, qsl_fftf_complex* out, int sign,
                                             unsigned flags);

/* One contiguous complex transform of n0 planes of n1 rows of n2 points. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft_3d(int n0, int n1, int n2, qsl_fftf_complex* in, qsl_fftf_complex* out,
                                             int sign, unsigned flags);

/* One contiguous complex transform of 1 to 4 dimensions, sizes n[0] to n[rank-1]. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft(int rank, const int* n, qsl_fftf_complex* in, qsl_fftf_complex* out, int sign,
                                          unsigned flags);

/* `howmany` complex transforms of the same size and layout. Transform t starts at in + t * idist and out + t * odist.
 * Element (j0, ..., jr) stands at istride * (((j0 * inembed[1] + j1) * inembed[2] + j2) ...): the transform is a block
 * of a larger array of `inembed` sizes, of which inembed[0] isn't read and the others are at least those of n. A null
 * `inembed` means n. The output likewise with `onembed` and `ostride`. Strides, and for howmany > 1 the distances, are
 * at least 1. In place with howmany > 1, the transforms of a side may not interleave in part (null). */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_many_dft(int rank, const int* n, int howmany, qsl_fftf_complex* in,
                                               const int* inembed, int istride, int idist, qsl_fftf_complex* out,
                                               const int* onembed, int ostride, int odist, int sign, unsigned flags);

/* ---- Real to complex (forward) ----------------------------------------------------------------------------------- */

/* n floats to n / 2 + 1 complex numbers, the non-redundant half of the forward transform. In place the array holds
 * n / 2 + 1 complex numbers. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft_r2c_1d(int n, float* in, qsl_fftf_complex* out, unsigned flags);

/* n0 rows of n1 floats to n0 rows of n1 / 2 + 1 complex numbers. In place every row of floats is padded to
 * 2 (n1 / 2 + 1). */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft_r2c_2d(int n0, int n1, float* in, qsl_fftf_complex* out, unsigned flags);

/* n0 x n1 x n2 floats to n0 x n1 x (n2 / 2 + 1) complex numbers. In place rows are padded as in two dimensions. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft_r2c_3d(int n0, int n1, int n2, float* in, qsl_fftf_complex* out,
                                                 unsigned flags);

/* The same for 1 to 4 dimensions, sizes n[0] to n[rank-1]. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft_r2c(int rank, const int* n, float* in, qsl_fftf_complex* out, unsigned flags);

/* `howmany` real-to-complex transforms, laid out as in qsl_fftf_plan_many_dft. `istride` and `idist` count floats,
 * `ostride` and `odist` complex numbers. onembed[rank-1] is at least n[rank-1] / 2 + 1; a null `onembed` means n with
 * that last size, a null `inembed` means n, or for `in` equal to `out` the padded rows of the 2-D call. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_many_dft_r2c(int rank, const int* n, int howmany, float* in, const int* inembed,
                                                   int istride, int idist, qsl_fftf_complex* out, const int* onembed,
                                                   int ostride, int odist, unsigned flags);

/* ---- Complex to real (backward) ---------------------------------------------------------------------------------- */

/* n / 2 + 1 complex numbers, the non-redundant half of a Hermitian sequence, to the n floats of the backward
 * transform. In place the array holds n / 2 + 1 complex numbers. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft_c2r_1d(int n, qsl_fftf_complex* in, float* out, unsigned flags);

/* n0 rows of n1 / 2 + 1 complex numbers to n0 rows of n1 floats. In place the rows of floats stand 2 (n1 / 2 + 1)
 * apart. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft_c2r_2d(int n0, int n1, qsl_fftf_complex* in, float* out, unsigned flags);

/* n0 x n1 x (n2 / 2 + 1) complex numbers to n0 x n1 x n2 floats. Rows in place as in two dimensions. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft_c2r_3d(int n0, int n1, int n2, qsl_fftf_complex* in, float* out,
                                                 unsigned flags);

/* The same for 1 to 4 dimensions, sizes n[0] to n[rank-1]. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_dft_c2r(int rank, const int* n, qsl_fftf_complex* in, float* out, unsigned flags);

/* `howmany` complex-to-real transforms, laid out as in qsl_fftf_plan_many_dft. `istride` and `idist` count complex
 * numbers, `ostride` and `odist` floats. inembed[rank-1] is at least n[rank-1] / 2 + 1; a null `inembed` means n with
 * that last size, a null `onembed` means n, or for `in` equal to `out` the padded rows of the 2-D call. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_many_dft_c2r(int rank, const int* n, int howmany, qsl_fftf_complex* in,
                                                   const int* inembed, int istride, int idist, float* out,
                                                   const int* onembed, int ostride, int odist, unsigned flags);

/* ---- Real to real ------------------------------------------------------------------------------------------------ */

/* One real-to-real transform of n contiguous floats, of one of the kinds above. In place or out of place. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_r2r_1d(int n, float* in, float* out, qsl_fftf_r2r_kind kind, unsigned flags);

/* n0 rows of n1 floats: transforms of kind1 along the rows, of kind0 along the columns. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_r2r_2d(int n0, int n1, float* in, float* out, qsl_fftf_r2r_kind kind0,
                                             qsl_fftf_r2r_kind kind1, unsigned flags);

/* n0 x n1 x n2 floats, one kind for each dimension in the order of the sizes. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_r2r_3d(int n0, int n1, int n2, float* in, float* out, qsl_fftf_r2r_kind kind0,
                                             qsl_fftf_r2r_kind kind1, qsl_fftf_r2r_kind kind2, unsigned flags);

/* 1 to 4 dimensions, sizes n[0] to n[rank-1] and kinds[0] to kinds[rank-1]. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_r2r(int rank, const int* n, float* in, float* out, const qsl_fftf_r2r_kind* kinds,
                                          unsigned flags);

/* `howmany` real-to-real transforms, laid out as in qsl_fftf_plan_many_dft; all strides and distances count floats. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_many_r2r(int rank, const int* n, int howmany, float* in, const int* inembed,
                                               int istride, int idist, float* out, const int* onembed, int ostride,
                                               int odist, const qsl_fftf_r2r_kind* kinds, unsigned flags);

/* ---- Upsampling -------------------------------------------------------------------------------------------------- */

/* Fourier interpolation of a real image of n0 x n1 samples to m0 x m1 samples, m0 >= n0 and m1 >= n1, both contiguous
 * and apart. Output (p, q) is the image at row (p + shift_x) n0 / m0 and column (q + shift_y) n1 / m1, continued
 * periodically, times n0 n1 / (m0 m1). Only the first execution in the plan's own storage is exact, which is where a
 * thread that has made a plan works: make a new plan for another image, or execute on a thread that has made none. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_upsampling_2d(int n0, int n1, int m0, int m1, float* in, float* out,
                                                    unsigned flags, float shift_x, float shift_y);

/* ---- Guru planning ----------------------------------------------------------------------------------------------- */
/* 0 to 4 transform dimensions and 0 to 4 batch dimensions, each with its own size and strides, all at least 1. `dims`
 * are in row-major order as everywhere, and nothing is sorted or computed: dims[rank-1] is the fastest one by
 * convention. The _64 forms take 64-bit numbers. Split forms take real and imaginary parts in two arrays of floats. */

/* Complex transforms. Rank 0 (`dims` may then be null) copies or transposes the batch, and so does rank 1 of length 1.
 * `sign` -1 is forward, any other value backward. Dimensions that interleave give null, and so do batch dimensions that
 * don't stand slowest first: each one's stride is at least the n times stride of the next, on either side (of up to
 * three batch dimensions; four aren't looked at). */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru_dft(int rank, const fft_iodim* dims, int howmany_rank,
                                               const fft_iodim* howmany_dims, qsl_fftf_complex* in,
                                               qsl_fftf_complex* out, int sign, unsigned flags);

/* The same in 64 bits; `dims` is never null, dimensions may interleave, batch dimensions stand in any order, and length
 * 1 is a transform like any other. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru64_dft(int rank, const fft_iodim64* dims, int howmany_rank,
                                                 const fft_iodim64* howmany_dims, qsl_fftf_complex* in,
                                                 qsl_fftf_complex* out, int sign, unsigned flags);

/* Real to complex, rank 1 to 4. `is` counts floats, `os` complex numbers, `n` is the size of the real side. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru_dft_r2c(int rank, const fft_iodim* dims, int howmany_rank,
                                                   const fft_iodim* howmany_dims, float* in, qsl_fftf_complex* out,
                                                   unsigned flags);
/* The same in 64 bits. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru64_dft_r2c(int rank, const fft_iodim64* dims, int howmany_rank,
                                                     const fft_iodim64* howmany_dims, float* in, qsl_fftf_complex* out,
                                                     unsigned flags);

/* Complex to real, rank 1 to 4. `is` counts complex numbers, `os` floats. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru_dft_c2r(int rank, const fft_iodim* dims, int howmany_rank,
                                                   const fft_iodim* howmany_dims, qsl_fftf_complex* in, float* out,
                                                   unsigned flags);
/* The same in 64 bits. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru64_dft_c2r(int rank, const fft_iodim64* dims, int howmany_rank,
                                                     const fft_iodim64* howmany_dims, qsl_fftf_complex* in, float* out,
                                                     unsigned flags);

/* Real to real, one kind for each dimension. Rank 0 (`dims` and `kinds` may then be null) copies or transposes. One
 * transform in place needs equal strides (null otherwise). */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru_r2r(int rank, const fft_iodim* dims, int howmany_rank,
                                               const fft_iodim* howmany_dims, float* in, float* out,
                                               const qsl_fftf_r2r_kind* kinds, unsigned flags);
/* The same in 64 bits; `dims` and `kinds` are never null. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru64_r2r(int rank, const fft_iodim64* dims, int howmany_rank,
                                                 const fft_iodim64* howmany_dims, float* in, float* out,
                                                 const qsl_fftf_r2r_kind* kinds, unsigned flags);

/* Complex transforms of split arrays, always forward: for the backward transform exchange real and imaginary parts on
 * both sides. Rank 1 to 4; dimensions that interleave, and batch dimensions that don't stand slowest first, give null.
 */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru_split_dft(int rank, const fft_iodim* dims, int howmany_rank,
                                                     const fft_iodim* howmany_dims, float* in_re, float* in_im,
                                                     float* out_re, float* out_im, unsigned flags);
/* The same in 64 bits; dimensions may interleave, and batch dimensions stand in any order. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru64_split_dft(int rank, const fft_iodim64* dims, int howmany_rank,
                                                       const fft_iodim64* howmany_dims, float* in_re, float* in_im,
                                                       float* out_re, float* out_im, unsigned flags);

/* Real to complex with a split output. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru_split_dft_r2c(int rank, const fft_iodim* dims, int howmany_rank,
                                                         const fft_iodim* howmany_dims, float* in, float* out_re,
                                                         float* out_im, unsigned flags);
/* The same in 64 bits. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru64_split_dft_r2c(int rank, const fft_iodim64* dims, int howmany_rank,
                                                           const fft_iodim64* howmany_dims, float* in, float* out_re,
                                                           float* out_im, unsigned flags);

/* Complex to real with a split input. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru_split_dft_c2r(int rank, const fft_iodim* dims, int howmany_rank,
                                                         const fft_iodim* howmany_dims, float* in_re, float* in_im,
                                                         float* out, unsigned flags);
/* The same in 64 bits. */
QFFTF_API qsl_fftf_plan qsl_fftf_plan_guru64_split_dft_c2r(int rank, const fft_iodim64* dims, int howmany_rank,
                                                           const fft_iodim64* howmany_dims, float* in_re, float* in_im,
                                                           float* out, unsigned flags);

/* ---- Execution --------------------------------------------------------------------------------------------------- */

/* Runs the plan on the arrays that it was made with. Nothing happens when the plan or one of its arrays is null. */
QFFTF_API void qsl_fftf_execute(qsl_fftf_plan plan);

/* Runs an interleaved plan on other arrays, which have the layout that was planned and are in place or apart as
 * planned; neither is checked. Alignment is free. The four calls are one function under four types. */
QFFTF_API void qsl_fftf_execute_dft(qsl_fftf_plan plan, qsl_fftf_complex* in, qsl_fftf_complex* out);
QFFTF_API void qsl_fftf_execute_dft_r2c(qsl_fftf_plan plan, float* in, qsl_fftf_complex* out);
QFFTF_API void qsl_fftf_execute_dft_c2r(qsl_fftf_plan plan, qsl_fftf_complex* in, float* out);
QFFTF_API void qsl_fftf_execute_r2r(qsl_fftf_plan plan, float* in, float* out);

/* Run a plan of the matching split planning call on other arrays. With a plan of any other call the behaviour is
 * undefined. */
QFFTF_API void qsl_fftf_execute_split_dft(qsl_fftf_plan plan, float* in_re, float* in_im, float* out_re, float* out_im);
QFFTF_API void qsl_fftf_execute_split_dft_r2c(qsl_fftf_plan plan, float* in, float* out_re, float* out_im);
QFFTF_API void qsl_fftf_execute_split_dft_c2r(qsl_fftf_plan plan, float* in_re, float* in_im, float* out);

/* ---- Housekeeping ------------------------------------------------------------------------------------------------ */

/* Releases a plan and all that belongs to it, except the arrays. Null is allowed. No thread may be executing it. */
QFFTF_API void qsl_fftf_destroy_plan(qsl_fftf_plan plan);

/* Does nothing: the library keeps no state between plans that could be released. */
QFFTF_API void qsl_fftf_cleanup(void);

/* Stops measured planning from timing a further candidate once so many seconds have passed. 0, the initial value, means
 * no limit; a negative value changes nothing. The first candidate, and the search of a method for its radices, always
 * run to their end. */
QFFTF_API void qsl_fftf_set_timelimit(double seconds);

/* Zeroed memory on a 64-byte boundary, to be released by qsl_fftf_free; null when memory is short. Optional: arrays of
 * any alignment are fine. */
QFFTF_API void* qsl_fftf_malloc(uint64_t size);

/* Releases memory of qsl_fftf_malloc. Null is allowed. */
QFFTF_API void qsl_fftf_free(void* pointer);

/* ---- Threads ----------------------------------------------------------------------------------------------------- */
/* The environment variable QSL_FFT_THREAD_TYPE, read when the library is loaded, chooses the team: OMP for OpenMP, TARN
 * for the tarn library where it is installed, anything else for threads of the library's own. */

/* Prepares the team; returns 1. Optional, but for the tarn library, whose executor groups it makes room for. */
QFFTF_API int qsl_fftf_init_threads(void);

/* Ends the threads that the library keeps. No plan may be executing. Plans stay valid: the next execution of one with
 * several threads makes new threads (under the tarn library after qsl_fftf_init_threads). */
QFFTF_API void qsl_fftf_cleanup_threads(void);

/* Sets how many threads the plans made from now on use, whichever thread makes them: n is cut to 1 to 512. Finished
 * plans keep the count that stood when they were made. */
QFFTF_API void qsl_fftf_plan_with_nthreads(int n);

/* The same for plans made by the calling thread only. It wins over the count for all threads from then on. */
QFFTF_API void qsl_fftf_plan_with_nthreads_local(int n);

/* ---- Version ----------------------------------------------------------------------------------------------------- */
/* QFFTF_VERSION is the version of this package: of this header, and of the library that was installed with it. The
 * calls below tell what a running program has loaded: the record names the product that the library is a module of, and
 * qsl_fftf_version the transforms by their own count. These texts stand still while the package's version moves on. */
#define QFFTF_VERSION_MAJOR 1
#define QFFTF_VERSION_MINOR 0
#define QFFTF_VERSION_PATCH 0
#define QFFTF_VERSION "1.0.0"

typedef struct qfft_version {
    char product_name[100];
    char product_version[100];
    char component_name[100];
    char component_version[100];
    char component_revision[100];
    char compiler[100];
    char module_name[100];
    char module_version[100];
} qfft_version;

/* Fills the record with zero-terminated texts (bytes behind a terminator are left alone) and returns 1; 0 for null. */
QFFTF_API int QFFTGetVersion(qfft_version* record);

/* qsl_fftf_version: the version of the transforms, as zero-terminated text. */
QFFTF_API extern const char qsl_fftf_version[50];

/* ---- Lengths ----------------------------------------------------------------------------------------------------- */

/* The next length from n up that runs well, for a caller that may choose: it has no prime factor above 7. 0 when n is
 * below 1 or no such length fits an int. Not a function of the library but of this header. */
static inline int qfftf_good_length(int n) {
    int length = n, rest;
    if (n < 1) return 0;
    for (;;) {
        for (rest = length; rest % 2 == 0;) rest /= 2;
        while (rest % 3 == 0) rest /= 3;
        while (rest % 5 == 0) rest /= 5;
        while (rest % 7 == 0) rest /= 7;
        if (rest == 1) return length;
        if (length == 0x7fffffff) return 0;
        ++length;
    }
}

#ifdef __cplusplus
}
#endif
#endif
