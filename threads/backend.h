// SPDX-License-Identifier: Apache-2.0
// What a back-end provides: one table of functions each, which backend.cpp selects from.
#pragma once
#include "threads/partition.h"
#include "threads/threads.h"

struct thread_operations {
    uint64_t (*get_nthreads)();
    void (*run)(const parallel_loop& loop);
    uint64_t (*limit_nthreads)(uint64_t requested);
    void (*set_affinity_mode)(uint32_t mode);
    uint32_t (*get_affinity_mode)();
    void (*refresh_binding)();
    void (*init)();
    void (*cleanup)();
    void (*plan_with_nthreads)(uint64_t nthreads);  // both counts lie in 1 to thread_cap
    void (*plan_with_nthreads_local)(uint64_t nthreads);
};

extern const thread_operations pool_operations;
extern const thread_operations openmp_operations;
extern const thread_operations tarn_operations;

// True when the optional run-time library was found beside this one and has all its functions. Called once, at load.
bool tarn_load();

// Sets up what happens at a fork. Called once, at load.
void watch_forks();

// In a child, where the OpenMP run-time library still counts on threads that are gone: loops run on their caller.
void openmp_start_anew();

// A back-end whose threads are placed by somebody else has no limit, no mode to set and nothing to refresh.
namespace unplaced {
inline uint64_t limit_nthreads(uint64_t requested) { return requested; }
inline void set_affinity_mode(uint32_t) {}
inline uint32_t get_affinity_mode() { return affinity_none; }
inline void refresh_binding() {}
}  // namespace unplaced
