// SPDX-License-Identifier: Apache-2.0
// The choice of the back-end when the library is loaded, and the dispatch of the common interface to it.
#include "threads/backend.h"

#include "include/qfftf.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// A thread_backend_kind; written by choose_backend alone.
uint32_t thread_backend = backend_pool;

const thread_operations& backend() {
    static constexpr const thread_operations* backends[] = {&pool_operations, &openmp_operations, &tarn_operations};
    return *backends[thread_backend];
}

// Runs when the library is loaded, before any thread can enter it.
[[gnu::constructor]] void choose_backend() {
    watch_forks();
    const char* wish = getenv("QSL_FFT_THREAD_TYPE");
    if (!wish) return;
    if (strcmp(wish, "OMP") == 0) thread_backend = backend_openmp;
    if (strcmp(wish, "TARN") == 0) {
        if (tarn_load())
            thread_backend = backend_tarn;
        else
            fputs("QSL_FFT THREAD TYPE ERROR: Cannot find tarn_so. Use pthread in later calculation.\n", stderr);
    }
}

}  // namespace

uint32_t thread_backend_type() { return thread_backend; }
uint64_t thread_get_nthreads() { return backend().get_nthreads(); }
uint64_t thread_limit_nthreads(uint64_t requested) { return backend().limit_nthreads(requested); }
void thread_set_affinity_mode(uint32_t mode) { backend().set_affinity_mode(mode); }
uint32_t thread_get_affinity_mode() { return backend().get_affinity_mode(); }
void thread_refresh_binding() { backend().refresh_binding(); }

void thread_parallel_for(uint64_t count, uint64_t chunks, uint64_t multiple, parallel_body body, void* closure) {
    if (count == 0) return;
    const partition_sizes sizes = cut_into_partitions(count, chunks, multiple);
    backend().run({sizes.chunk, sizes.parts, body, closure});
}

int qsl_fftf_init_threads(void) {
    backend().init();
    return 1;
}

void qsl_fftf_cleanup_threads(void) { backend().cleanup(); }
void qsl_fftf_plan_with_nthreads(int n) { backend().plan_with_nthreads(clamp_nthreads(n)); }
void qsl_fftf_plan_with_nthreads_local(int n) { backend().plan_with_nthreads_local(clamp_nthreads(n)); }
