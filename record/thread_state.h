// SPDX-License-Identifier: Apache-2.0
// The threading layer's record of one thread, in thread-local storage.
#pragma once
#include <cstdint>

// Memory of a running execution that none of its plans has taken yet.
struct scratch_range {
    char* begin = nullptr;
    char* end = nullptr;
};

struct thread_state {
    int32_t node = -1;                 // NUMA node of this thread's CPU at its last refresh (pool only)
    int32_t cpu = -1;                  // CPU at its last refresh (pool only)
    uint64_t use_plan_buffer = 0;      // 1: execute functions on this thread work in the plan's buffer
    uint64_t tarn_local_nthreads = 0;  // this thread's own counts; 0 means none set
    uint64_t tarn_group_size = 0;
    uint64_t omp_local_nthreads = 0;
    uint32_t cluster_cpu = 0;  // CPU rounded down to a multiple of 4 (pool only)
    uint64_t pool_local_nthreads = 0;
    scratch_range scratch;  // on threads that never planned
};

// Initial-exec addressing, a thread pointer and an offset: every execute function reads its thread's record, and the
// general model would put a call into each. The record is small enough for the space that the loader keeps for this.
extern constinit thread_local thread_state current_thread_state __attribute__((tls_model("initial-exec")));

inline thread_state& this_thread_state() { return current_thread_state; }
