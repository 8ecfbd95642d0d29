// SPDX-License-Identifier: Apache-2.0
#include "include/qfftf.h"
#include "shim/plan.h"
#include "shim/staged.h"

namespace {

float* moved(float* array, ptrdiff_t floats) { return array ? array + floats : nullptr; }

void run(const fftwf_plan_s& plan, arrays a) {
    const problem& p = plan.p;
    a = {moved(a.in, p.in_offset), moved(a.in_imag, p.in_offset), moved(a.out, p.out_offset),
         moved(a.out_imag, p.out_offset)};
    if (plan.direct)
        library_execute(plan.direct, p, a);
    else if (plan.staged && a.in && a.out)
        execute_staged(plan.staged, p, a);
}

// The caller's two arrays of a side, of which an interleaved problem takes the one that comes first.
void run_split(fftwf_plan plan, arrays a) {
    if (!plan) return;
    const problem& p = plan->p;
    if (!p.split) {
        if (p.imag_first) a = {a.in_imag, nullptr, a.out_imag, nullptr};
        a.in_imag = a.out_imag = nullptr;
    }
    run(*plan, a);
}

void run_interleaved(fftwf_plan plan, float* in, float* out) {
    if (!plan) return;
    const problem& p = plan->p;
    if (p.split)
        run(*plan, {in, p.complex_in() ? in + 1 : nullptr, out, p.complex_out() ? out + 1 : nullptr});
    else
        run(*plan, {in, nullptr, out, nullptr});
}

float* floats(fftwf_complex* array) { return reinterpret_cast<float*>(array); }

}  // namespace

void fftwf_execute(const fftwf_plan plan) {
    if (plan) run(*plan, {plan->p.in, plan->p.in_imag, plan->p.out, plan->p.out_imag});
}

void fftwf_execute_dft(const fftwf_plan plan, fftwf_complex* in, fftwf_complex* out) {
    run_interleaved(plan, floats(in), floats(out));
}
void fftwf_execute_dft_r2c(const fftwf_plan plan, float* in, fftwf_complex* out) {
    run_interleaved(plan, in, floats(out));
}
void fftwf_execute_dft_c2r(const fftwf_plan plan, fftwf_complex* in, float* out) {
    run_interleaved(plan, floats(in), out);
}
void fftwf_execute_r2r(const fftwf_plan plan, float* in, float* out) { run_interleaved(plan, in, out); }

void fftwf_execute_split_dft(const fftwf_plan plan, float* ri, float* ii, float* ro, float* io) {
    run_split(plan, {ri, ii, ro, io});
}
void fftwf_execute_split_dft_r2c(const fftwf_plan plan, float* in, float* ro, float* io) {
    run_split(plan, {in, nullptr, ro, io});
}
void fftwf_execute_split_dft_c2r(const fftwf_plan plan, float* ri, float* ii, float* out) {
    run_split(plan, {ri, ii, out, nullptr});
}
