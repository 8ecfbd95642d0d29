// SPDX-License-Identifier: Apache-2.0
// The pool back-end: detached threads that the library keeps between loops. pool_workers.cpp makes and ends them,
// pool.cpp runs loops on them, pool_control.cpp sets counts and places new workers on the machine's nodes.
#pragma once
#include "threads/threads.h"

#include <pthread.h>
#include <semaphore.h>
#include <atomic>
#include <cerrno>

// With fewer threads than this, idle workers spin on their control word: a hand-over is one memory write, at the price
// of a busy CPU per idle worker. From here on they wait on semaphores.
constexpr uint64_t spin_threshold = 200;

// Values of a spinning worker's control word. Anything else offers the job in the record at that address.
constexpr uint64_t control_idle = 0;
constexpr uint64_t control_running = 1;
constexpr uint64_t control_exit = ~uint64_t{0};

struct pool_worker {
    sem_t start_sem;     // posted to hand over a job or the order to exit (waiting workers, and spinning ones asleep)
    sem_t done_sem;      // posted by the worker when a job ends (waiting workers)
    parallel_body body;  // null orders a waiting worker to exit
    parallel_task task;  // its reserved word holds the caller's use_plan_buffer
    pool_worker* next_free;
    std::atomic<uint64_t> control;
    bool spins;  // the mode it was born in, for life: the count may cross spin_threshold while it lives
    bool naps;   // a spinning worker that goes to sleep when it has been idle for a while; for life, too
    std::atomic<uint32_t> asleep;  // or about to be
};

// QSL_FFT_IDLE=SLEEP, as it stood when the pool was initialised: new workers nap.
extern std::atomic<bool> pool_workers_nap;

// How long a worker that naps spins first. Users are told of 50 microseconds at the most.
constexpr int64_t nap_after_nanoseconds = 40'000;

// Writes the control word of a spinning worker and wakes the worker if it sleeps. The fences here and in nap_for_order,
// each between a store and the load of the other side's word, leave no moment in which both miss each other. They are
// fences since emulators let a store-release and the load-acquire behind it pass each other.
inline void pool_order(pool_worker& worker, uint64_t order) {
    worker.control.store(order, std::memory_order_release);
    if (!worker.naps) return;
    std::atomic_thread_fence(std::memory_order_seq_cst);
    if (worker.asleep.load(std::memory_order_relaxed)) sem_post(&worker.start_sem);
}

extern std::atomic<uint64_t> pool_nthreads;  // the count for all threads; with local counts the sum of all teams

// A semaphore used as a lock. It guards the free list, the making of workers and the tables of placement.
extern sem_t pool_lock;

inline void wait_through_signals(sem_t* semaphore) {
    while (sem_wait(semaphore) == -1 && errno == EINTR) {
    }
}

class pool_guard {
public:
    pool_guard() { wait_through_signals(&pool_lock); }
    ~pool_guard() { sem_post(&pool_lock); }
    pool_guard(const pool_guard&) = delete;
    pool_guard& operator=(const pool_guard&) = delete;
};

// Makes the semaphores where they don't exist.
void pool_init();

// Ends the idle workers and destroys the semaphores. Nothing where the pool wasn't initialised.
void pool_cleanup();

// Around a fork: the pool stands still, and the child's has no workers. Their records stay where they are: a child may
// not rely on the heap before it calls exec.
void pool_hold();
void pool_let_go();
void pool_start_anew();

// The worker that was given back last, or a new one; null when none can be made.
pool_worker* pool_take_worker(uint64_t use_plan_buffer);
void pool_give_back(pool_worker* worker);

// Ends every idle worker. The caller holds pool_lock.
void pool_end_idle_workers();

// Binds a new worker to CPUs near the calling thread. The caller holds pool_lock.
void pool_place_worker(pthread_t worker);

// The loop.
struct parallel_loop;
void pool_run(const parallel_loop& loop);
