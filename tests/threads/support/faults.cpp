// SPDX-License-Identifier: Apache-2.0
// The linker sends these calls of the program here (--wrap).
#include "faults.h"

#include "threads/pool.h"

#include <sched.h>
#include <cstddef>

std::atomic<int> threads_made{0};
std::atomic<int> heap_calls{0};
std::atomic<int> creates_left{-1};
std::atomic<int> callocs_left{-1};
std::atomic<int> cpu_told{real_cpu};
std::atomic<int> bindings_tried{0};
std::atomic<bool> binding_fails{false};
std::atomic<bool> allowed_cpus_fail{false};

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
void* __real_malloc(size_t size);
void* __real_realloc(void* block, size_t size);
void __real_free(void* block);
int __real_sched_getcpu(void);
int __real_pthread_setaffinity_np(pthread_t thread, size_t size, const cpu_set_t* cpus);
int __real_sched_getaffinity(pid_t pid, size_t size, cpu_set_t* cpus);

int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* argument) {
    if (!take(creates_left)) return EAGAIN;
    ++threads_made;
    return __real_pthread_create(thread, attributes, start, argument);
}

void* __wrap_calloc(size_t count, size_t size) {
    ++heap_calls;
    if (count * size == sizeof(pool_worker) && !take(callocs_left)) return nullptr;
    return __real_calloc(count, size);
}

void* __wrap_malloc(size_t size) {
    ++heap_calls;
    return __real_malloc(size);
}

void* __wrap_realloc(void* block, size_t size) {
    ++heap_calls;
    return __real_realloc(block, size);
}

void __wrap_free(void* block) {
    ++heap_calls;
    __real_free(block);
}

int __wrap_sched_getcpu(void) { return cpu_told == real_cpu ? __real_sched_getcpu() : cpu_told.load(); }

int __wrap_pthread_setaffinity_np(pthread_t thread, size_t size, const cpu_set_t* cpus) {
    ++bindings_tried;
    return binding_fails ? EINVAL : __real_pthread_setaffinity_np(thread, size, cpus);
}

int __wrap_sched_getaffinity(pid_t pid, size_t size, cpu_set_t* cpus) {
    if (allowed_cpus_fail) {
        errno = EINVAL;
        return -1;
    }
    return __real_sched_getaffinity(pid, size, cpus);
}
}
