// SPDX-License-Identifier: Apache-2.0
#include "include/qfftf.h"
#include "shim/include/fftw3.h"

#include <atomic>

// The team of programs that come this way: they compute on threads of their own between transforms, so OpenMP's, which
// sleep when they have waited for a while, and not the library's, which spin. The library looks for this name when it
// is loaded; the environment wins.
extern "C" QFFTF_FFTW3_API const char qsl_fft_default_thread_type[] = "OMP";

namespace {
std::atomic<int> count{1};
}

int fftwf_init_threads(void) { return qsl_fftf_init_threads(); }

void fftwf_plan_with_nthreads(int nthreads) {
    count.store(nthreads < 1 ? 1 : nthreads);
    qsl_fftf_plan_with_nthreads(count.load());
}

int fftwf_planner_nthreads(void) { return count.load(); }

void fftwf_cleanup_threads(void) {
    fftwf_cleanup();
    qsl_fftf_cleanup_threads();
}

// Planning takes no lock and is safe as it is.
void fftwf_make_planner_thread_safe(void) {}

// The library's own teams do the work: the program's loop isn't called.
void fftwf_threads_set_callback(void (*)(void* (*)(char*), char*, size_t, int, void*), void*) {}
