// SPDX-License-Identifier: Apache-2.0
// The pool's loop. The caller hands all partitions but the last to workers, runs the last one, and collects the
// workers. With enough idle workers it allocates nothing, and below spin_threshold it makes no system call, unless
// workers are asleep.
#include "threads/pool.h"

#include "record/thread_state.h"
#include "threads/partition.h"

namespace {

void hand_over(pool_worker& worker, const parallel_loop& loop, uint64_t index) {
    worker.task.index = index;
    worker.task.closure = loop.closure;
    worker.body = loop.body;
    worker.task.chunk = loop.chunk;
    if (worker.spins)
        pool_order(worker, reinterpret_cast<uintptr_t>(&worker));
    else
        sem_post(&worker.start_sem);
}

void join(pool_worker& worker) {
    if (worker.spins) {
        while (worker.control.load(std::memory_order_acquire) != control_idle) {
        }
    } else {
        wait_through_signals(&worker.done_sem);
    }
}

void run_here(const parallel_loop& loop, uint64_t index) {
    parallel_task task = {loop.chunk, index, 0, loop.closure};
    loop.body(&task);
}

}  // namespace

void pool_run(const parallel_loop& loop) {
    const uint64_t last = loop.parts - 1;
    if (last == 0) return run_here(loop, 0);

    pool_init();  // somebody may have cleaned up since the plan was made
    const uint64_t use_plan_buffer = this_thread_state().use_plan_buffer;
    pool_worker* team[thread_cap - 1];
    uint64_t handed_over = 0;
    for (; handed_over < last; ++handed_over) {
        pool_worker* worker = pool_take_worker(use_plan_buffer);
        if (!worker) break;
        hand_over(*worker, loop, handed_over);
        team[handed_over] = worker;
    }
    // The last partition, which may be short, and those that no worker could be made for.
    for (uint64_t index = handed_over; index <= last; ++index) run_here(loop, index);
    for (uint64_t i = 0; i < handed_over; ++i) {
        join(*team[i]);
        pool_give_back(team[i]);
    }
}
