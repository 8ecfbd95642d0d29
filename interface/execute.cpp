// SPDX-License-Identifier: Apache-2.0
// Execution and housekeeping calls. An execute call is a null test and one jump to what the winning solver installed.
#include "include/qfftf.h"
#include "interface/plan_call.h"
#include "planner/time_limit.h"
#include "record/fft_plan.h"

double planning_time_limit = 0.0;

namespace {

void run(fft_plan* plan, float* in, float* out) {
    if (!plan || !in || !out) return;
    plan->execute(plan, in, out);
}

}  // namespace

void qsl_fftf_execute(qsl_fftf_plan plan) {
    if (!plan || !plan->in || !plan->out) return;
    plan->execute(plan, plan->in, plan->out);
}

void qsl_fftf_execute_dft(qsl_fftf_plan plan, qsl_fftf_complex* in, qsl_fftf_complex* out) {
    run(plan, as_floats(in), as_floats(out));
}

void qsl_fftf_execute_dft_r2c(qsl_fftf_plan plan, float* in, qsl_fftf_complex* out) { run(plan, in, as_floats(out)); }

void qsl_fftf_execute_dft_c2r(qsl_fftf_plan plan, qsl_fftf_complex* in, float* out) { run(plan, as_floats(in), out); }

void qsl_fftf_execute_r2r(qsl_fftf_plan plan, float* in, float* out) { run(plan, in, out); }

// Only plans of the split planning calls have `execute_split`; which plan it is isn't tested.

void qsl_fftf_execute_split_dft(qsl_fftf_plan plan, float* in_re, float* in_im, float* out_re, float* out_im) {
    if (!plan || !in_re || !in_im || !out_re || !out_im) return;
    plan->execute_split(plan, in_re, in_im, out_re, out_im);
}

void qsl_fftf_execute_split_dft_r2c(qsl_fftf_plan plan, float* in, float* out_re, float* out_im) {
    if (!plan || !in || !out_re || !out_im) return;
    plan->execute_split(plan, in, nullptr, out_re, out_im);
}

void qsl_fftf_execute_split_dft_c2r(qsl_fftf_plan plan, float* in_re, float* in_im, float* out) {
    if (!plan || !in_re || !in_im || !out) return;
    plan->execute_split(plan, in_re, in_im, out, nullptr);
}

void qsl_fftf_destroy_plan(qsl_fftf_plan plan) { fft_plan_free(plan); }

void qsl_fftf_cleanup(void) {}

void qsl_fftf_set_timelimit(double seconds) {
    if (!(seconds < 0.0)) planning_time_limit = seconds;
}
