// SPDX-License-Identifier: Apache-2.0
// The arithmetic that cuts a loop into partitions, the same for every back-end and at planning time.
#pragma once
#include "threads/threads.h"

#include <algorithm>

// The most threads a caller can ask for, and the most partitions of one loop.
constexpr uint64_t thread_cap = 512;

// A count given by a caller: 1 to thread_cap.
constexpr uint64_t clamp_nthreads(int32_t n) { return std::clamp<int64_t>(n, 1, thread_cap); }

// One loop: `parts` partitions of `chunk` items, of which the last may be shorter.
struct parallel_loop {
    uint64_t chunk;
    uint64_t parts;
    parallel_body body;
    void* closure;
};

struct partition_sizes {
    uint64_t chunk;
    uint64_t parts;
};

// `count` is at least 1 and `multiple` a power of two.
constexpr partition_sizes cut_into_partitions(uint64_t count, uint64_t chunks, uint64_t multiple) {
    const uint64_t wanted = std::clamp<uint64_t>(chunks, 1, thread_cap);
    const uint64_t share = (count + wanted - 1) / wanted;
    const uint64_t chunk = (share + multiple - 1) & -multiple;
    return {chunk, (count - 1 + chunk) / chunk};
}
