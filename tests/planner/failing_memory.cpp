// SPDX-License-Identifier: Apache-2.0
#include "tests/planner/failing_memory.h"

#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <unordered_set>

extern "C" void* __real_calloc(size_t count, size_t size);
extern "C" void* __real_malloc(size_t size);
extern "C" void __real_free(void* block);

namespace {

thread_local bool watching = false;  // off inside this file's own bookkeeping
long failing_number, number;
size_t largest_block = SIZE_MAX;

std::mutex& lock() {
    static std::mutex mutex;
    return mutex;
}

std::unordered_set<void*>& alive() {
    static std::unordered_set<void*> blocks;
    return blocks;
}

bool fails(size_t bytes) { return watching && (number++ == failing_number || bytes > largest_block); }

void* watched(void* block) {
    if (!watching || !block) return block;
    watching = false;
    {
        std::scoped_lock hold(lock());
        alive().insert(block);
    }
    watching = true;
    return block;
}

}  // namespace

extern "C" void* __wrap_calloc(size_t count, size_t size) {
    return fails(count * size) ? nullptr : watched(__real_calloc(count, size));
}

extern "C" void* __wrap_malloc(size_t size) { return fails(size) ? nullptr : watched(__real_malloc(size)); }

extern "C" void __wrap_free(void* block) {
    const bool was_watching = watching;
    watching = false;
    {
        std::scoped_lock hold(lock());
        alive().erase(block);
    }
    watching = was_watching;
    __real_free(block);
}

memory_watch::memory_watch(long failing) {
    failing_number = failing;
    number = 0;
    watching = true;
}

memory_watch::~memory_watch() { stop(); }
void memory_watch::stop() { watching = false; }
long memory_watch::allocations() const { return number; }
void memory_watch::set_largest_block(size_t bytes) { largest_block = bytes; }
size_t memory_watch::blocks_alive() { return alive().size(); }
