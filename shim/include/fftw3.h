/* SPDX-License-Identifier: Apache-2.0 */
/*
 * The single-precision calls of the interface of FFTW 3, as its manual documents them, for programs that are compiled
 * against libqfftf_fftw3f.so. Opt-in: it stands in a folder of its own (include/qfftf), so that #include <fftw3.h>
 * finds it only where -I names that folder. Double and long double have no names here. For C99 and C++.
 *
 * What each call does is documented there; what differs here, in docs/user/from-fftw-binaries.md.
 */
#ifndef QFFTF_FFTW3_H
#define QFFTF_FFTW3_H

#include <stddef.h>
#include <stdio.h>

#if defined(__GNUC__)
#define QFFTF_FFTW3_API __attribute__((visibility("default")))
#else
#define QFFTF_FFTW3_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Where <complex.h> came first, C's own type of the same layout. */
#if !defined(__cplusplus) && defined(_Complex_I) && defined(complex) && defined(I)
typedef float _Complex fftwf_complex;
#else
typedef float fftwf_complex[2];
#endif

typedef struct fftwf_plan_s* fftwf_plan;

typedef struct fftwf_iodim_s {
    int n;
    int is;
    int os;
} fftwf_iodim;
typedef struct fftwf_iodim64_s {
    ptrdiff_t n;
    ptrdiff_t is;
    ptrdiff_t os;
} fftwf_iodim64;

typedef enum fftwf_r2r_kind_e {
    FFTW_R2HC = 0,
    FFTW_HC2R = 1,
    FFTW_DHT = 2,
    FFTW_REDFT00 = 3,
    FFTW_REDFT01 = 4,
    FFTW_REDFT10 = 5,
    FFTW_REDFT11 = 6,
    FFTW_RODFT00 = 7,
    FFTW_RODFT01 = 8,
    FFTW_RODFT10 = 9,
    FFTW_RODFT11 = 10
} fftwf_r2r_kind;

typedef void (*fftwf_write_char_func)(char c, void* data);
typedef int (*fftwf_read_char_func)(void* data);

#define FFTW_FORWARD (-1)
#define FFTW_BACKWARD (+1)
#define FFTW_NO_TIMELIMIT (-1.0)

#define FFTW_MEASURE (0U)
#define FFTW_DESTROY_INPUT (1U << 0)
#define FFTW_UNALIGNED (1U << 1)
#define FFTW_CONSERVE_MEMORY (1U << 2)
#define FFTW_EXHAUSTIVE (1U << 3)
#define FFTW_PRESERVE_INPUT (1U << 4)
#define FFTW_PATIENT (1U << 5)
#define FFTW_ESTIMATE (1U << 6)
#define FFTW_WISDOM_ONLY (1U << 21)

/* ---- Complex transforms ------------------------------------------------------------------------------------------ */
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft_1d(int n, fftwf_complex* in, fftwf_complex* out, int sign, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft_2d(int n0, int n1, fftwf_complex* in, fftwf_complex* out, int sign,
                                             unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft_3d(int n0, int n1, int n2, fftwf_complex* in, fftwf_complex* out, int sign,
                                             unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft(int rank, const int* n, fftwf_complex* in, fftwf_complex* out, int sign,
                                          unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_many_dft(int rank, const int* n, int howmany, fftwf_complex* in,
                                               const int* inembed, int istride, int idist, fftwf_complex* out,
                                               const int* onembed, int ostride, int odist, int sign, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru_dft(int rank, const fftwf_iodim* dims, int howmany_rank,
                                               const fftwf_iodim* howmany_dims, fftwf_complex* in, fftwf_complex* out,
                                               int sign, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru64_dft(int rank, const fftwf_iodim64* dims, int howmany_rank,
                                                 const fftwf_iodim64* howmany_dims, fftwf_complex* in,
                                                 fftwf_complex* out, int sign, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru_split_dft(int rank, const fftwf_iodim* dims, int howmany_rank,
                                                     const fftwf_iodim* howmany_dims, float* ri, float* ii, float* ro,
                                                     float* io, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru64_split_dft(int rank, const fftwf_iodim64* dims, int howmany_rank,
                                                       const fftwf_iodim64* howmany_dims, float* ri, float* ii,
                                                       float* ro, float* io, unsigned flags);

/* ---- Real to complex --------------------------------------------------------------------------------------------- */
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft_r2c_1d(int n, float* in, fftwf_complex* out, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft_r2c_2d(int n0, int n1, float* in, fftwf_complex* out, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft_r2c_3d(int n0, int n1, int n2, float* in, fftwf_complex* out, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft_r2c(int rank, const int* n, float* in, fftwf_complex* out, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_many_dft_r2c(int rank, const int* n, int howmany, float* in, const int* inembed,
                                                   int istride, int idist, fftwf_complex* out, const int* onembed,
                                                   int ostride, int odist, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru_dft_r2c(int rank, const fftwf_iodim* dims, int howmany_rank,
                                                   const fftwf_iodim* howmany_dims, float* in, fftwf_complex* out,
                                                   unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru64_dft_r2c(int rank, const fftwf_iodim64* dims, int howmany_rank,
                                                     const fftwf_iodim64* howmany_dims, float* in, fftwf_complex* out,
                                                     unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru_split_dft_r2c(int rank, const fftwf_iodim* dims, int howmany_rank,
                                                         const fftwf_iodim* howmany_dims, float* in, float* ro,
                                                         float* io, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru64_split_dft_r2c(int rank, const fftwf_iodim64* dims, int howmany_rank,
                                                           const fftwf_iodim64* howmany_dims, float* in, float* ro,
                                                           float* io, unsigned flags);

/* ---- Complex to real --------------------------------------------------------------------------------------------- */
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft_c2r_1d(int n, fftwf_complex* in, float* out, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft_c2r_2d(int n0, int n1, fftwf_complex* in, float* out, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft_c2r_3d(int n0, int n1, int n2, fftwf_complex* in, float* out, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_dft_c2r(int rank, const int* n, fftwf_complex* in, float* out, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_many_dft_c2r(int rank, const int* n, int howmany, fftwf_complex* in,
                                                   const int* inembed, int istride, int idist, float* out,
                                                   const int* onembed, int ostride, int odist, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru_dft_c2r(int rank, const fftwf_iodim* dims, int howmany_rank,
                                                   const fftwf_iodim* howmany_dims, fftwf_complex* in, float* out,
                                                   unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru64_dft_c2r(int rank, const fftwf_iodim64* dims, int howmany_rank,
                                                     const fftwf_iodim64* howmany_dims, fftwf_complex* in, float* out,
                                                     unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru_split_dft_c2r(int rank, const fftwf_iodim* dims, int howmany_rank,
                                                         const fftwf_iodim* howmany_dims, float* ri, float* ii,
                                                         float* out, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru64_split_dft_c2r(int rank, const fftwf_iodim64* dims, int howmany_rank,
                                                           const fftwf_iodim64* howmany_dims, float* ri, float* ii,
                                                           float* out, unsigned flags);

/* ---- Real to real ------------------------------------------------------------------------------------------------ */
QFFTF_FFTW3_API fftwf_plan fftwf_plan_r2r_1d(int n, float* in, float* out, fftwf_r2r_kind kind, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_r2r_2d(int n0, int n1, float* in, float* out, fftwf_r2r_kind kind0,
                                             fftwf_r2r_kind kind1, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_r2r_3d(int n0, int n1, int n2, float* in, float* out, fftwf_r2r_kind kind0,
                                             fftwf_r2r_kind kind1, fftwf_r2r_kind kind2, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_r2r(int rank, const int* n, float* in, float* out, const fftwf_r2r_kind* kind,
                                          unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_many_r2r(int rank, const int* n, int howmany, float* in, const int* inembed,
                                               int istride, int idist, float* out, const int* onembed, int ostride,
                                               int odist, const fftwf_r2r_kind* kind, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru_r2r(int rank, const fftwf_iodim* dims, int howmany_rank,
                                               const fftwf_iodim* howmany_dims, float* in, float* out,
                                               const fftwf_r2r_kind* kind, unsigned flags);
QFFTF_FFTW3_API fftwf_plan fftwf_plan_guru64_r2r(int rank, const fftwf_iodim64* dims, int howmany_rank,
                                                 const fftwf_iodim64* howmany_dims, float* in, float* out,
                                                 const fftwf_r2r_kind* kind, unsigned flags);

/* ---- Execution --------------------------------------------------------------------------------------------------- */
QFFTF_FFTW3_API void fftwf_execute(const fftwf_plan plan);
QFFTF_FFTW3_API void fftwf_execute_dft(const fftwf_plan plan, fftwf_complex* in, fftwf_complex* out);
QFFTF_FFTW3_API void fftwf_execute_dft_r2c(const fftwf_plan plan, float* in, fftwf_complex* out);
QFFTF_FFTW3_API void fftwf_execute_dft_c2r(const fftwf_plan plan, fftwf_complex* in, float* out);
QFFTF_FFTW3_API void fftwf_execute_r2r(const fftwf_plan plan, float* in, float* out);
QFFTF_FFTW3_API void fftwf_execute_split_dft(const fftwf_plan plan, float* ri, float* ii, float* ro, float* io);
QFFTF_FFTW3_API void fftwf_execute_split_dft_r2c(const fftwf_plan plan, float* in, float* ro, float* io);
QFFTF_FFTW3_API void fftwf_execute_split_dft_c2r(const fftwf_plan plan, float* ri, float* ii, float* out);

/* ---- Plans and memory -------------------------------------------------------------------------------------------- */
QFFTF_FFTW3_API void fftwf_destroy_plan(fftwf_plan plan);
QFFTF_FFTW3_API void fftwf_cleanup(void);
QFFTF_FFTW3_API void fftwf_set_timelimit(double seconds);
QFFTF_FFTW3_API void fftwf_flops(const fftwf_plan plan, double* add, double* mul, double* fmas);
QFFTF_FFTW3_API double fftwf_estimate_cost(const fftwf_plan plan);
QFFTF_FFTW3_API double fftwf_cost(const fftwf_plan plan);
QFFTF_FFTW3_API void fftwf_fprint_plan(const fftwf_plan plan, FILE* file);
QFFTF_FFTW3_API void fftwf_print_plan(const fftwf_plan plan);
QFFTF_FFTW3_API char* fftwf_sprint_plan(const fftwf_plan plan);
QFFTF_FFTW3_API void* fftwf_malloc(size_t n);
QFFTF_FFTW3_API float* fftwf_alloc_real(size_t n);
QFFTF_FFTW3_API fftwf_complex* fftwf_alloc_complex(size_t n);
QFFTF_FFTW3_API void fftwf_free(void* p);
QFFTF_FFTW3_API int fftwf_alignment_of(float* p);

/* ---- Threads ----------------------------------------------------------------------------------------------------- */
QFFTF_FFTW3_API int fftwf_init_threads(void);
QFFTF_FFTW3_API void fftwf_plan_with_nthreads(int nthreads);
QFFTF_FFTW3_API int fftwf_planner_nthreads(void);
QFFTF_FFTW3_API void fftwf_cleanup_threads(void);
QFFTF_FFTW3_API void fftwf_make_planner_thread_safe(void);
QFFTF_FFTW3_API void fftwf_threads_set_callback(void (*parallel_loop)(void* (*work)(char*), char* jobdata,
                                                                      size_t elsize, int njobs, void* data),
                                                void* data);

/* ---- Wisdom ------------------------------------------------------------------------------------------------------ */
QFFTF_FFTW3_API void fftwf_forget_wisdom(void);
QFFTF_FFTW3_API int fftwf_export_wisdom_to_filename(const char* filename);
QFFTF_FFTW3_API void fftwf_export_wisdom_to_file(FILE* file);
QFFTF_FFTW3_API char* fftwf_export_wisdom_to_string(void);
QFFTF_FFTW3_API void fftwf_export_wisdom(fftwf_write_char_func write_char, void* data);
QFFTF_FFTW3_API int fftwf_import_system_wisdom(void);
QFFTF_FFTW3_API int fftwf_import_wisdom_from_filename(const char* filename);
QFFTF_FFTW3_API int fftwf_import_wisdom_from_file(FILE* file);
QFFTF_FFTW3_API int fftwf_import_wisdom_from_string(const char* text);
QFFTF_FFTW3_API int fftwf_import_wisdom(fftwf_read_char_func read_char, void* data);

/* ---- Version ----------------------------------------------------------------------------------------------------- */
QFFTF_FFTW3_API extern const char fftwf_version[];
QFFTF_FFTW3_API extern const char fftwf_cc[];
QFFTF_FFTW3_API extern const char fftwf_codelet_optim[];

#ifdef __cplusplus
}
#endif
#endif
