// SPDX-License-Identifier: Apache-2.0
// The tarn back-end: loops run on the executors of libtarn.so, an optional parallel run-time library that is looked
// for at a path relative to this library's own file and reached through function pointers alone.
#include "record/thread_state.h"
#include "threads/backend.h"

#include <dlfcn.h>
#include <libgen.h>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace {

// The three records that cross to libtarn.so.
struct index_range {
    uint32_t dimensions;
    uint64_t start;
    uint64_t end;
    uint64_t step;
    uint64_t reserved;
};

struct loop_descriptor {
    uint64_t flags;
    const index_range* range;
    void* group;
    uint32_t concurrency;
    uint32_t reserved;
};

using range_function = void (*)(const index_range* range, void* closure);

constexpr uint64_t loop_flags = 15;

constexpr const char* function_names[] = {
    "tarn_get_executor_num",  "tarn_egroup_destroy", "tarn_egroup_create",   "tarn_parallel_for",
    "tarn_get_num_executors", "tarn_shm_win_query",  "tarn_shm_comm_create", "tarn_shm_comm_destroy",
    "tarn_shm_win_free",      "tarn_shm_win_alloc",
};

// In the order of function_names. The shared-memory functions must be there, which shows that the library is whole,
// but have no use here.
struct tarn_functions {
    int32_t (*get_executor_num)();
    void (*egroup_destroy)(void* group);
    void* (*egroup_create)(const int32_t* executors, uint64_t count);
    void (*parallel_for)(const loop_descriptor* loop, range_function run_range, void* closure);
    int32_t (*get_num_executors)();
    void* shared_memory[5];
};
static_assert(sizeof(tarn_functions) == std::size(function_names) * sizeof(void*));

tarn_functions tarn;

// One executor group per executor, indexed by executor number; each executor touches only its own entry.
void** tarn_groups = nullptr;
int32_t tarn_group_count = 0;

std::atomic<uint64_t> tarn_nthreads{1};

constexpr char library_suffix[] = "/../../../../tarn/gcc/release/lib/libtarn.so";
constexpr size_t path_size = 2048;

// Writes the path of libtarn.so that belongs to this library's own file.
bool find_library(char (&path)[path_size]) {
    Dl_info self;
    if (!dladdr(reinterpret_cast<void*>(tarn_load), &self) || !self.dli_fname) return false;
    if (strlen(self.dli_fname) + sizeof library_suffix > path_size) {
        puts("FFT Lib path is too long, must less than 2048 characters");
        return false;
    }
    char file[path_size];
    strcpy(file, self.dli_fname);
    const char* folder = dirname(file);
    if (!folder) return false;
    snprintf(path, path_size, "%s%s", folder, library_suffix);
    return true;
}

void run_range(const index_range* range, void* closure) {
    const parallel_loop& loop = *static_cast<const parallel_loop*>(closure);
    for (uint64_t index = range->start; index < range->end; index += range->step) {
        parallel_task task = {loop.chunk, index, 0, loop.closure};
        loop.body(&task);
    }
}

// The calling executor's group, which is made anew when the loop has more partitions than the group has members.
void* group_for(uint64_t parts) {
    if (!tarn_groups) return nullptr;
    const int32_t executor = tarn.get_executor_num();
    if (executor < 0 || executor >= tarn_group_count) return nullptr;
    void*& group = tarn_groups[executor];
    uint64_t& group_size = this_thread_state().tarn_group_size;
    if (parts > group_size || !group) {
        int32_t members[thread_cap];
        for (uint64_t i = 0; i < parts; ++i) members[i] = executor + static_cast<int32_t>(i);
        tarn.egroup_destroy(group);
        group = tarn.egroup_create(members, parts);
        group_size = parts;
    }
    return group;
}

void run(const parallel_loop& loop) {
    const index_range range = {.dimensions = 1, .start = 0, .end = loop.parts, .step = 1, .reserved = 0};
    const loop_descriptor descriptor = {.flags = loop_flags,
                                        .range = &range,
                                        .group = group_for(loop.parts),
                                        .concurrency = static_cast<uint32_t>(loop.parts),
                                        .reserved = 0};
    parallel_loop closure = loop;
    tarn.parallel_for(&descriptor, run_range, &closure);
}

// A second call replaces the table and leaves the groups of the first to the run-time library.
void init() {
    tarn_group_count = tarn.get_num_executors();
    tarn_groups = static_cast<void**>(calloc(tarn_group_count, sizeof(void*)));
}

void cleanup() {
    if (!tarn_groups) return;
    for (int32_t i = 0; i < tarn_group_count; ++i) tarn.egroup_destroy(tarn_groups[i]);
    free(tarn_groups);
    tarn_groups = nullptr;
}

uint64_t get_nthreads() {
    const uint64_t local = this_thread_state().tarn_local_nthreads;
    return local ? local : tarn_nthreads.load(std::memory_order_relaxed);
}

void plan_with_nthreads(uint64_t nthreads) { tarn_nthreads.store(nthreads, std::memory_order_relaxed); }
void plan_with_nthreads_local(uint64_t nthreads) { this_thread_state().tarn_local_nthreads = nthreads; }

}  // namespace

// A library that is there but lacks a function stays loaded: it may have started threads that run its code.
bool tarn_load() {
    char path[path_size];
    if (!find_library(path)) return false;
    void* library = dlopen(path, RTLD_NOW);
    if (!library) return false;
    void* found[std::size(function_names)];
    bool complete = true;
    for (size_t i = 0; i < std::size(function_names); ++i) {
        found[i] = dlsym(library, function_names[i]);
        complete = complete && found[i];
    }
    if (complete) memcpy(&tarn, found, sizeof tarn);
    return complete;
}

const thread_operations tarn_operations = {
    .get_nthreads = get_nthreads,
    .run = run,
    .limit_nthreads = unplaced::limit_nthreads,
    .set_affinity_mode = unplaced::set_affinity_mode,
    .get_affinity_mode = unplaced::get_affinity_mode,
    .refresh_binding = unplaced::refresh_binding,
    .init = init,
    .cleanup = cleanup,
    .plan_with_nthreads = plan_with_nthreads,
    .plan_with_nthreads_local = plan_with_nthreads_local,
};
