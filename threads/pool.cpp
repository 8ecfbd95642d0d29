// SPDX-License-Identifier: Apache-2.0
// The pool back-end.
#include "threads/backend.h"
#include "threads/thread_state.h"

#include <atomic>

namespace {

std::atomic<uint64_t> pool_nthreads{1};

void run(const parallel_loop& loop) {
    for (uint64_t index = 0; index < loop.parts; ++index) {
        parallel_task task = {loop.chunk, index, 0, loop.closure};
        loop.body(&task);
    }
}

uint64_t get_nthreads() {
    const uint64_t local = this_thread_state().pool_local_nthreads;
    return local ? local : pool_nthreads.load(std::memory_order_relaxed);
}

void nothing() {}
void plan_with_nthreads(uint64_t nthreads) { pool_nthreads.store(nthreads, std::memory_order_relaxed); }
void plan_with_nthreads_local(uint64_t nthreads) { this_thread_state().pool_local_nthreads = nthreads; }

}  // namespace

const thread_operations pool_operations = {
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
