// SPDX-License-Identifier: Apache-2.0
// The linker sends pthread_create and calloc of the program here (--wrap).
#include "faults.h"

#include "threads/pool.h"

#include <cstddef>

std::atomic<int> threads_made{0};
std::atomic<int> creates_left{-1};
std::atomic<int> callocs_left{-1};

// Takes one of the calls that are left; false when none is.
static bool take(std::atomic<int>& left) {
    int now = left.load();
    while (now > 0 && !left.compare_exchange_weak(now, now - 1)) {
    }
    return now != 0;
}

extern "C" {
int __real_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* argument);
void* __real_calloc(size_t count, size_t size);

int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* argument) {
    if (!take(creates_left)) return EAGAIN;
    ++threads_made;
    return __real_pthread_create(thread, attributes, start, argument);
}

void* __wrap_calloc(size_t count, size_t size) {
    if (count * size == sizeof(pool_worker) && !take(callocs_left)) return nullptr;
    return __real_calloc(count, size);
}
}
