// SPDX-License-Identifier: Apache-2.0
// Counts the threads that are made and makes chosen calls fail.
#pragma once
#include <atomic>

constexpr int real_cpu = -2;

extern std::atomic<int> threads_made;
extern std::atomic<int> heap_calls;  // malloc, calloc, realloc and free

// The number of calls that still succeed before all fail; -1 lets every call succeed.
extern std::atomic<int> creates_left;
extern std::atomic<int> callocs_left;  // counts only calls of the size of a pool_worker

extern std::atomic<int> cpu_told;        // what sched_getcpu says; real_cpu for the truth
extern std::atomic<int> bindings_tried;  // calls of pthread_setaffinity_np
extern std::atomic<bool> binding_fails;
extern std::atomic<bool> allowed_cpus_fail;  // sched_getaffinity
