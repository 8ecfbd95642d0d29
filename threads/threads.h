// SPDX-License-Identifier: Apache-2.0
// The one interface to the three parallel back-ends. Nothing above this layer knows which back-end runs.
#pragma once
#include <cstdint>

enum thread_backend_kind : uint32_t { backend_pool = 0, backend_openmp = 1, backend_tarn = 2 };

enum affinity_mode_kind : uint32_t {
    affinity_spread = 0,  // workers go to different clusters first
    affinity_close = 1,   // workers stay on the caller's node while it has room
    affinity_none = 2,    // the library places nothing
};

// What a body receives, valid only during the call. A body that works on a range takes the items from index * chunk up
// to the smaller of the item count and (index + 1) * chunk.
struct parallel_task {
    uint64_t chunk;     // items per partition, the same for all partitions of the loop, the last one included
    uint64_t index;     // this partition's number, from 0
    uint64_t reserved;  // not for bodies
    void* closure;      // the caller's closure pointer
};

using parallel_body = void (*)(parallel_task* task);

// Which back-end runs: a thread_backend_kind, fixed when the library is loaded.
uint32_t thread_backend_type();

// The thread count for a plan made now, at least 1.
uint64_t thread_get_nthreads();

// Cuts `count` items into at most `chunks` (and never above 512) partitions whose length is a multiple of `multiple`,
// a power of two, and runs `body` once per partition. Returns when every partition has run; loops may nest. The
// caller runs thread_refresh_binding first.
void thread_parallel_for(uint64_t count, uint64_t chunks, uint64_t multiple, parallel_body body, void* closure);

// How many of the requested threads a plan may use on this machine.
uint64_t thread_limit_nthreads(uint64_t requested);

// Chooses the affinity_mode_kind of workers made from now on; the first choice of the process stands.
void thread_set_affinity_mode(uint32_t mode);
uint32_t thread_get_affinity_mode();

// Ends idle workers when the calling thread has moved to another CPU, so that new ones are placed around it.
void thread_refresh_binding();
