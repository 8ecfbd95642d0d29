// SPDX-License-Identifier: Apache-2.0
// The plan behind a program's handle: the library's plan of the whole problem, or stages around several of them.
#pragma once
#include "shim/include/fftw3.h"
#include "shim/problem.h"

struct staged_plan;

// The arrays of one execution, as normalise() sees them. Imaginary parts are null unless the problem is split.
struct arrays {
    float* in;
    float* in_imag;
    float* out;
    float* out_imag;
};

struct fftwf_plan_s {
    problem p;
    fft_plan* direct;
    staged_plan* staged;  // where the library took no plan of the whole; both are null for a plan that does nothing
};

// Plans and records in wisdom; null when the flags or memory don't allow a plan.
fftwf_plan finish_plan(problem& p, unsigned flags);

// How carefully a plan is made; more care serves where less was asked for.
enum care : int { care_estimate, care_measure, care_patient, care_exhaustive };

// ESTIMATE beside other bits wins: it promises not to measure.
inline care care_of(unsigned flags) {
    if (flags & FFTW_ESTIMATE) return care_estimate;
    if (flags & FFTW_EXHAUSTIVE) return care_exhaustive;
    return flags & FFTW_PATIENT ? care_patient : care_measure;
}

// The constants of both interfaces are the same; null for other problems.
inline uint32_t r2r_kind_of(const fftwf_r2r_kind* kinds, int d) { return kinds ? static_cast<uint32_t>(kinds[d]) : 0; }

// The library's plan of a problem of at most four dimensions and four batch dimensions with positive strides, for
// these arrays; null when it takes none.
fft_plan* library_plan(const problem& p, const arrays& a, bool measured);
void library_execute(fft_plan* plan, const problem& p, const arrays& a);
