// SPDX-License-Identifier: Apache-2.0
// From a problem to a plan, and back to nothing.
#include "shim/plan.h"

#include "include/qfftf.h"
#include "shim/measured_arrays.h"
#include "shim/staged.h"
#include "shim/wisdom.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

namespace {

constexpr double no_limit = -1.0;
std::atomic<double> time_limit{no_limit};

// Several dimensions from complex to real use their input as scratch.
bool would_overwrite_kept_input(const problem& p, unsigned flags) {
    return p.kind == kind_c2r && p.rank > 1 && !p.in_place() && (flags & FFTW_PRESERVE_INPUT);
}

// MEASURE too takes the library's rules, unless the user wants to wait for the clock.
bool is_measured(unsigned flags) {
    if (time_limit.load() == 0.0) return false;
    const care c = care_of(flags);
    if (c == care_measure) {
        const char* wish = getenv("QFFTF_FFTW3_MEASURE");
        return wish && strcmp(wish, "1") == 0;
    }
    return c > care_measure;
}

bool strides_are_positive(const dimension* list, int count) {
    for (int i = 0; i < count; ++i)
        if (list[i].is < 1 || list[i].os < 1) return false;
    return true;
}

bool bases_agree(const problem& p) {
    const bool meet = p.in == p.out || (p.split && (p.in == p.out_imag || p.in_imag == p.out));
    return !meet || p.in_offset == p.out_offset;
}

bool fits_the_library(const problem& p) {
    return p.rank <= max_rank && p.batch_rank <= max_rank && (p.rank > 0 || !p.split) &&
           strides_are_positive(p.dims, p.rank) && strides_are_positive(p.batch, p.batch_rank) && bases_agree(p);
}

// Measuring runs on arrays of its own: no plan call overwrites the caller's.
fft_plan* plan_directly(const problem& p, bool measured) {
    if (!fits_the_library(p)) return nullptr;
    if (measured) {
        const measured_arrays own(p);
        if (own) return library_plan(p, own.get(), true);
    }
    return library_plan(p, {p.in, p.in_imag, p.out, p.out_imag}, false);
}

}  // namespace

fftwf_plan finish_plan(problem& p, unsigned flags) {
    if (!p.empty && would_overwrite_kept_input(p, flags)) return nullptr;
    if (!p.empty) normalise(p);
    if ((flags & FFTW_WISDOM_ONLY) && !wisdom_knows(p, care_of(flags))) return nullptr;
    auto* plan = static_cast<fftwf_plan>(calloc(1, sizeof(fftwf_plan_s)));
    if (!plan) return nullptr;
    plan->p = p;
    if (p.empty) return plan;
    const bool measured = is_measured(flags);
    plan->direct = plan_directly(p, measured);
    if (!plan->direct) plan->staged = new_staged_plan(p, measured);
    if (!plan->direct && !plan->staged) {
        free(plan);
        return nullptr;
    }
    if (time_limit.load() != 0.0) wisdom_learns(p, care_of(flags));
    return plan;
}

void fftwf_destroy_plan(fftwf_plan plan) {
    if (!plan) return;
    qsl_fftf_destroy_plan(plan->direct);
    delete_staged_plan(plan->staged);
    free(plan);
}

// Here a negative limit is none, and 0 forbids measuring; in the library 0 is none.
void fftwf_set_timelimit(double seconds) {
    time_limit.store(seconds < 0.0 ? no_limit : seconds);
    qsl_fftf_set_timelimit(seconds < 0.0 ? 0.0 : seconds);
}

void fftwf_cleanup(void) {
    fftwf_forget_wisdom();
    fftwf_set_timelimit(no_limit);
    fftwf_plan_with_nthreads(1);
}
