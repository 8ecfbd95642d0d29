// SPDX-License-Identifier: Apache-2.0
// The OpenMP back-end: every loop is one parallel region of the runtime that the process has loaded. The region is
// outlined by hand and entered through the runtime's own interface, so that the compiler which builds the library
// needn't know OpenMP and the choice of runtime doesn't depend on it.
#include "record/thread_state.h"
#include "threads/backend.h"

#include <atomic>

extern "C" {
void GOMP_parallel(void (*outlined)(void*), void* data, unsigned nthreads, unsigned flags);
int omp_get_num_threads(void);
int omp_get_thread_num(void);
}

namespace {

std::atomic<uint64_t> omp_nthreads{1};
std::atomic<bool> team_is_lost{false};  // in the child of a fork

struct region {
    parallel_loop loop;
    uint64_t use_plan_buffer;  // of the thread that entered the region
};

void run_on_caller(const parallel_loop& loop) {
    for (uint64_t index = 0; index < loop.parts; ++index) {
        parallel_task task = {loop.chunk, index, 0, loop.closure};
        loop.body(&task);
    }
}

// Thread i of t takes parts / t neighbouring partitions, and the first parts % t threads take one more. The threads of
// a team are the program's own, so that each gets its own word back.
void run_share(void* data) {
    const region& r = *static_cast<const region*>(data);
    const uint64_t team = omp_get_num_threads(), i = omp_get_thread_num();
    const uint64_t quotient = r.loop.parts / team, rest = r.loop.parts % team;
    const uint64_t first = i * quotient + std::min(i, rest), count = quotient + (i < rest);
    const uint64_t own_word = this_thread_state().use_plan_buffer;
    for (uint64_t index = first; index < first + count; ++index) {
        parallel_task task = {r.loop.chunk, index, 0, r.loop.closure};
        this_thread_state().use_plan_buffer = r.use_plan_buffer;
        r.loop.body(&task);
    }
    this_thread_state().use_plan_buffer = own_word;
}

void run(const parallel_loop& loop) {
    if (team_is_lost.load(std::memory_order_relaxed)) return run_on_caller(loop);
    region r = {loop, this_thread_state().use_plan_buffer};
    GOMP_parallel(run_share, &r, static_cast<unsigned>(loop.parts), 0);
}

uint64_t get_nthreads() {
    const uint64_t local = this_thread_state().omp_local_nthreads;
    return local ? local : omp_nthreads.load(std::memory_order_relaxed);
}

void nothing() {}
void plan_with_nthreads(uint64_t nthreads) { omp_nthreads.store(nthreads, std::memory_order_relaxed); }
void plan_with_nthreads_local(uint64_t nthreads) { this_thread_state().omp_local_nthreads = nthreads; }

}  // namespace

void openmp_start_anew() { team_is_lost.store(true, std::memory_order_relaxed); }

const thread_operations openmp_operations = {
    .get_nthreads = get_nthreads,
    .run = run,
    .limit_nthreads = unplaced::limit_nthreads,
    .set_affinity_mode = unplaced::set_affinity_mode,
    .get_affinity_mode = unplaced::get_affinity_mode,
    .refresh_binding = unplaced::refresh_binding,
    .init = nothing,
    .cleanup = nothing,
    .plan_with_nthreads = plan_with_nthreads,
    .plan_with_nthreads_local = plan_with_nthreads_local,
};
