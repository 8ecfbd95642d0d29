// SPDX-License-Identifier: Apache-2.0
// The pool's thread counts, its affinity mode, and the binding of workers to CPUs near the thread that makes them.
#include "record/thread_state.h"
#include "threads/backend.h"
#include "threads/numa_placement.h"
#include "threads/pool.h"

#include <strings.h>
#include <cstdlib>

namespace {

numa_tables numa{};  // guarded by pool_lock
std::atomic<int32_t> numa_max_cpus{-1};
std::atomic<uint32_t> affinity_mode{affinity_spread};
std::atomic<uint32_t> affinity_mode_fixed{0};

constexpr auto relaxed = std::memory_order_relaxed;

// The CPU and the node of the calling thread. Returns false where the system can't tell the CPU.
bool locate_thread(thread_state& self) {
    self.cpu = sched_getcpu();
    if (self.cpu == -1) return false;
    self.node = numa_node_of(numa, self.cpu);
    return true;
}

// Locates the calling thread anew; all CPUs count as free again, unless threads with counts of their own share them.
void refresh_thread() {
    thread_state& self = this_thread_state();
    if (locate_thread(self) && self.node != -1 && numa.numa_local_mode == 0) numa_reset_free(numa);
}

void read_machine() {
    numa_read_topology(numa, numa_system_root);
    cpu_set_t allowed;
    if (numa_count_nodes(numa, numa_system_root) != 0 && sched_getaffinity(0, sizeof allowed, &allowed) == 0)
        numa_build_masks(numa, allowed);
    const int32_t limit = numa_cpu_limit(numa);
    if (limit > 0) numa_max_cpus.store(limit, relaxed);
}

// What the environment says wins over what plans ask for.
void apply_environment() {
    const char* wish = getenv("QSL_FFT_AFFINITY");
    uint32_t mode = affinity_spread;
    if (wish && strcasecmp(wish, "CLOSE") == 0) mode = affinity_close;
    if (wish && strcasecmp(wish, "NO") == 0) mode = affinity_none;
    affinity_mode.store(mode, relaxed);
    if (wish) affinity_mode_fixed.store(1, relaxed);
}

void plan_with_nthreads(uint64_t nthreads) {
    pool_init();
    pool_guard guard;
    read_machine();
    if (affinity_mode.load(relaxed) != affinity_none) refresh_thread();
    pool_nthreads.store(nthreads, relaxed);
    apply_environment();
}

// Teams of several threads that plan for themselves: the pool's count becomes the sum of all teams, and no team's
// worker lands on the CPU of another team's caller.
void plan_with_nthreads_local(uint64_t nthreads) {
    pool_init();
    thread_state& self = this_thread_state();
    self.pool_local_nthreads = nthreads;
    pool_guard guard;
    if (numa.numa_local_mode) {
        pool_nthreads.store(pool_nthreads.load(relaxed) + nthreads, relaxed);
    } else {
        numa.numa_local_mode = 1;
        pool_nthreads.store(nthreads, relaxed);
        read_machine();
        apply_environment();
    }
    if (affinity_mode.load(relaxed) != affinity_none) locate_thread(self);
    numa_reserve_cpu(numa, self.cpu);
}

uint64_t get_nthreads() {
    const uint64_t local = this_thread_state().pool_local_nthreads;
    return local ? local : pool_nthreads.load(relaxed);
}

uint64_t limit_nthreads(uint64_t requested) {
    const int32_t limit = numa_max_cpus.load(relaxed);
    return limit > 0 ? std::min(requested, static_cast<uint64_t>(limit)) : requested;
}

void set_affinity_mode(uint32_t mode) {
    if (affinity_mode_fixed.load(relaxed)) return;
    affinity_mode.store(mode, relaxed);
    affinity_mode_fixed.store(1, relaxed);
}

uint32_t get_affinity_mode() { return affinity_mode.load(relaxed); }

// Workers that other threads are using stay: only idle ones are ended.
void refresh_binding() {
    if (get_affinity_mode() == affinity_none) return;
    const int cpu = sched_getcpu();
    if (cpu == -1) return;
    thread_state& self = this_thread_state();
    self.cluster_cpu = static_cast<uint32_t>(cpu) & ~3u;
    if (cpu == self.cpu) return;
    pool_init();
    pool_guard guard;
    pool_end_idle_workers();
    refresh_thread();
}

bool bind(pthread_t worker, const numa_place& place) {
    if (place.node < 0 || pthread_setaffinity_np(worker, sizeof place.cpus, &place.cpus) != 0) return false;
    numa_count_placed(numa, place);
    return true;
}

}  // namespace

// A worker for which no place is found, or whose binding fails, runs wherever the system puts it.
void pool_place_worker(pthread_t worker) {
    const thread_state& caller = this_thread_state();
    const uint32_t mode = get_affinity_mode();
    if (mode == affinity_close) bind(worker, numa_close_place(numa, caller));
    if (mode != affinity_spread) return;
    const int near = numa_near_count(numa, caller.node);
    if (!bind(worker, numa_spread_place(numa, caller, 0, near)))
        bind(worker, numa_spread_place(numa, caller, near, numa.numa_node_count));
}

const thread_operations pool_operations = {
    .get_nthreads = get_nthreads,
    .run = pool_run,
    .limit_nthreads = limit_nthreads,
    .set_affinity_mode = set_affinity_mode,
    .get_affinity_mode = get_affinity_mode,
    .refresh_binding = refresh_binding,
    .init = pool_init,
    .cleanup = pool_cleanup,
    .plan_with_nthreads = plan_with_nthreads,
    .plan_with_nthreads_local = plan_with_nthreads_local,
};
