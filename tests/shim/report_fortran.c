/* SPDX-License-Identifier: Apache-2.0 */
/* The names of old Fortran, called as a Fortran program calls them. */
#include "tests/shim/report.h"

#include <stdio.h>
#include <string.h>

typedef const int* integer;

void sfftw_plan_dft_2d_(fftwf_plan* p, integer nx, integer ny, fftwf_complex* in, fftwf_complex* out, integer sign,
                        integer flags);
void sfftw_plan_dft_3d__(fftwf_plan* p, integer nx, integer ny, integer nz, fftwf_complex* in, fftwf_complex* out,
                         integer sign, integer flags);
void sfftw_plan_dft_r2c_(fftwf_plan* p, integer rank, integer n, float* in, fftwf_complex* out, integer flags);
void sfftw_plan_dft_c2r_1d_(fftwf_plan* p, integer n, fftwf_complex* in, float* out, integer flags);
void sfftw_plan_many_dft_(fftwf_plan* p, integer rank, integer n, integer howmany, fftwf_complex* in, integer inembed,
                          integer istride, integer idist, fftwf_complex* out, integer onembed, integer ostride,
                          integer odist, integer sign, integer flags);
void sfftw_plan_guru_dft_r2c_(fftwf_plan* p, integer rank, integer n, integer is, integer os, integer howmany_rank,
                              integer h_n, integer h_is, integer h_os, float* in, fftwf_complex* out, integer flags);
void sfftw_plan_guru_r2r_(fftwf_plan* p, integer rank, integer n, integer is, integer os, integer howmany_rank,
                          integer h_n, integer h_is, integer h_os, float* in, float* out, integer kind, integer flags);
void sfftw_plan_r2r_(fftwf_plan* p, integer rank, integer n, float* in, float* out, integer kind, integer flags);
void sfftw_plan_r2r_3d_(fftwf_plan* p, integer nx, integer ny, integer nz, float* in, float* out, integer kindx,
                        integer kindy, integer kindz, integer flags);
void sfftw_plan_many_r2r_(fftwf_plan* p, integer rank, integer n, integer howmany, float* in, integer inembed,
                          integer istride, integer idist, float* out, integer onembed, integer ostride, integer odist,
                          integer kind, integer flags);
void sfftw_execute_(fftwf_plan* p);
void sfftw_destroy_plan_(fftwf_plan* p);
void sfftw_estimate_cost_(double* cost, fftwf_plan* p);
void sfftw_flops_(fftwf_plan* p, double* add, double* mul, double* fma);
void sfftw_init_threads_(int* ok);
void sfftw_plan_with_nthreads_(integer n);
void sfftw_planner_nthreads_(int* n);
void sfftw_export_wisdom_(void (*write_char)(char*, void*), void* data);
void sfftw_import_wisdom_(int* ok, void (*read_char)(int*, void*), void* data);
void sfftw_forget_wisdom_(void);
void sfftw_set_timelimit_(const double* seconds);

static char wisdom[100000];
static size_t written, taken;

static void write_char(char* c, void* data) {
    (void)data;
    if (written < sizeof wisdom) wisdom[written++] = *c;
}
static void read_char(int* c, void* data) {
    (void)data;
    *c = taken < written ? wisdom[taken++] : -1;
}

static void report_plans(void) {
    const char* t = "fortran";
    const int flags = FFTW_ESTIMATE, forward = -1, two = 2, three = 3, none = 0, one = 1;
    const int n[] = {8, 4}, is[] = {1, 8}, wide_os[] = {1, 8}, big[] = {10, 7};
    const int kinds[] = {FFTW_R2HC, FFTW_REDFT10}, depth = 3, dist = 70;
    fftwf_plan p;
    sfftw_plan_dft_2d_(&p, &n[0], &n[1], a, b, &forward, &flags);
    say_result(t, "dft_2d", p);
    sfftw_plan_dft_3d__(&p, &n[0], &n[1], &depth, a, b, &forward, &flags);
    say_result(t, "dft_3d", p);
    sfftw_plan_dft_r2c_(&p, &two, n, x, b, &flags);
    say_result(t, "dft_r2c", p);
    sfftw_plan_dft_c2r_1d_(&p, &n[0], a, y, &flags);
    say_result(t, "dft_c2r_1d", p);
    sfftw_plan_many_dft_(&p, &two, n, &three, a, big, &one, &dist, b, big, &one, &dist, &forward, &flags);
    say_result(t, "many_dft", p);
    sfftw_plan_r2r_(&p, &two, n, x, y, kinds, &flags);
    say_result(t, "r2r", p);
    sfftw_plan_r2r_3d_(&p, &n[0], &n[1], &depth, x, y, &kinds[0], &kinds[1], &kinds[0], &flags);
    say_result(t, "r2r_3d", p);
    sfftw_plan_many_r2r_(&p, &two, n, &three, x, big, &one, &dist, y, big, &one, &dist, kinds, &flags);
    say_result(t, "many_r2r", p);
    const int reversed_n[] = {4, 8}, reversed_is[] = {8, 1}, reversed_os[] = {5, 1};
    sfftw_plan_guru_dft_r2c_(&p, &two, reversed_n, reversed_is, reversed_os, &none, NULL, NULL, NULL, x, b, &flags);
    say_result(t, "guru_dft_r2c", p);
    sfftw_plan_guru_r2r_(&p, &two, n, is, wide_os, &none, NULL, NULL, NULL, x, y, kinds, &flags);
    say_result(t, "guru_r2r", p);
}

static void report_calls(void) {
    const char* t = "fortran";
    const int n = 96, flags = FFTW_ESTIMATE, four = 4, one = 1, forward = -1;
    const double no_limit = -1;
    int ok = -7;
    sfftw_init_threads_(&ok);
    say(t, "init_threads", ok);
    sfftw_plan_with_nthreads_(&four);
    sfftw_planner_nthreads_(&ok);
    say(t, "planner_nthreads", ok);
    sfftw_plan_with_nthreads_(&one);
    sfftw_set_timelimit_(&no_limit);
    fftwf_plan p;
    sfftw_plan_dft_2d_(&p, &n, &one, a, b, &forward, &flags);
    double cost = -1, add = -1, mul = -1, fma = -1;
    sfftw_estimate_cost_(&cost, &p);
    sfftw_flops_(&p, &add, &mul, &fma);
    say(t, "costs", cost > 0 && add > 0 && mul > 0 && fma >= 0);
    set_arrays();
    sfftw_execute_(&p);
    say(t, "execute", b[3][0]);
    sfftw_destroy_plan_(&p);
    sfftw_export_wisdom_(write_char, NULL);
    sfftw_forget_wisdom_();
    sfftw_import_wisdom_(&ok, read_char, NULL);
    say(t, "wisdom there and back", ok);
    sfftw_import_wisdom_(&ok, read_char, NULL);
    say(t, "wisdom from an empty source", ok);
}

void report_fortran(void) {
    report_plans();
    report_calls();
}
