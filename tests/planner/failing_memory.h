// SPDX-License-Identifier: Apache-2.0
// Memory that runs out when the test says. For programs linked with --wrap=calloc,malloc,free, in which the library's
// allocations come here. Only allocations made while a `memory_watch` lives, on its thread, are counted.
#pragma once
#include <cstddef>

class memory_watch {
public:
    // From now on the allocation of this number (0 the first) fails; none for a negative number.
    explicit memory_watch(long failing);
    ~memory_watch();
    memory_watch(const memory_watch&) = delete;
    memory_watch& operator=(const memory_watch&) = delete;

    // Ends the counting; what is still allocated stays under watch.
    void stop();
    long allocations() const;

    // Under every watch from now on, larger blocks fail.
    static void set_largest_block(size_t bytes);

    // Blocks that were allocated under some watch and have not been freed.
    static size_t blocks_alive();
};
