// SPDX-License-Identifier: Apache-2.0
// Everything but planning for old Fortran. What a function returns comes first, as in its plan calls.
#include "shim/fortran.h"
#include "shim/include/fftw3.h"

#include <cstdio>

using plan_t = fftwf_plan*;
using complex_array = fftwf_complex*;

// Execution.

FORTRAN(execute, (plan_t p)) { fftwf_execute(*p); }
FORTRAN(execute_dft, (plan_t p, complex_array in, complex_array out)) { fftwf_execute_dft(*p, in, out); }
FORTRAN(execute_dft_r2c, (plan_t p, float* in, complex_array out)) { fftwf_execute_dft_r2c(*p, in, out); }
FORTRAN(execute_dft_c2r, (plan_t p, complex_array in, float* out)) { fftwf_execute_dft_c2r(*p, in, out); }
FORTRAN(execute_r2r, (plan_t p, float* in, float* out)) { fftwf_execute_r2r(*p, in, out); }
FORTRAN(execute_split_dft, (plan_t p, float* ri, float* ii, float* ro, float* io)) {
    fftwf_execute_split_dft(*p, ri, ii, ro, io);
}
FORTRAN(execute_split_dft_r2c, (plan_t p, float* in, float* ro, float* io)) {
    fftwf_execute_split_dft_r2c(*p, in, ro, io);
}
FORTRAN(execute_split_dft_c2r, (plan_t p, float* ri, float* ii, float* out)) {
    fftwf_execute_split_dft_c2r(*p, ri, ii, out);
}

// Plans.

FORTRAN(destroy_plan, (plan_t p)) { fftwf_destroy_plan(*p); }
FORTRAN(cleanup, (void)) { fftwf_cleanup(); }
FORTRAN(set_timelimit, (const double* seconds)) { fftwf_set_timelimit(*seconds); }
FORTRAN(flops, (plan_t p, double* add, double* mul, double* fma)) { fftwf_flops(*p, add, mul, fma); }
FORTRAN(estimate_cost, (double* cost, plan_t p)) { *cost = fftwf_estimate_cost(*p); }
FORTRAN(cost, (double* cost, plan_t p)) { *cost = fftwf_cost(*p); }

// Fortran's own output stands in other buffers.
FORTRAN(print_plan, (plan_t p)) {
    fftwf_print_plan(*p);
    fflush(stdout);
}

// Threads.

FORTRAN(init_threads, (int* ok)) { *ok = fftwf_init_threads(); }
FORTRAN(cleanup_threads, (void)) { fftwf_cleanup_threads(); }
FORTRAN(plan_with_nthreads, (const int* nthreads)) { fftwf_plan_with_nthreads(*nthreads); }
FORTRAN(planner_nthreads, (int* nthreads)) { *nthreads = fftwf_planner_nthreads(); }

// Wisdom, by the caller's subroutines write_char(c, data) and read_char(ic, data).

namespace {

struct writer {
    void (*write_char)(char* c, void* data);
    void* data;
};
struct reader {
    void (*read_char)(int* c, void* data);
    void* data;
};

}  // namespace

FORTRAN(export_wisdom, (void (*write_char)(char* c, void* data), void* data)) {
    writer w = {write_char, data};
    fftwf_export_wisdom(
        [](char c, void* to) {
            const auto* target = static_cast<writer*>(to);
            target->write_char(&c, target->data);
        },
        &w);
}

FORTRAN(import_wisdom, (int* ok, void (*read_char)(int* c, void* data), void* data)) {
    reader r = {read_char, data};
    *ok = fftwf_import_wisdom(
        [](void* from) {
            const auto* source = static_cast<reader*>(from);
            int c = EOF;
            source->read_char(&c, source->data);
            return c < 0 ? EOF : c;
        },
        &r);
}

FORTRAN(import_system_wisdom, (int* ok)) { *ok = fftwf_import_system_wisdom(); }
FORTRAN(forget_wisdom, (void)) { fftwf_forget_wisdom(); }
