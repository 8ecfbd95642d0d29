// SPDX-License-Identifier: Apache-2.0
// The life of the pool's workers: made on demand, kept on a free list, ended one at a time.
#include "record/thread_state.h"
#include "threads/pool.h"

#include <strings.h>
#include <cstdlib>
#include <ctime>

std::atomic<uint64_t> pool_nthreads{1};
std::atomic<bool> pool_workers_nap{false};
sem_t pool_lock;

namespace {

pool_worker* pool_free_list = nullptr;  // last in, first out
sem_t pool_exit_sem;                    // posted by a worker that ends; workers are detached, so this is the only sign
pthread_mutex_t pool_init_mutex = PTHREAD_MUTEX_INITIALIZER;
std::atomic<uint64_t> pool_initialised{0};

void run_job(pool_worker& self) {
    this_thread_state().use_plan_buffer = self.task.reserved;
    self.body(&self.task);
}

bool is_order(uint64_t word) { return word != control_idle && word != control_running; }

int64_t nanoseconds_now() {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

// No pause and no back-off: the next job should start at once.
uint64_t spin_for_order(const pool_worker& self) {
    for (;;)
        if (const uint64_t order = self.control.load(std::memory_order_acquire); is_order(order)) return order;
}

// The same for a while; a post may be left over from an order that was seen without it, and then the worker wakes once
// for nothing.
uint64_t nap_for_order(pool_worker& self) {
    for (;;) {
        const int64_t end = nanoseconds_now() + nap_after_nanoseconds;
        do {
            for (int i = 0; i < 64; ++i)
                if (const uint64_t order = self.control.load(std::memory_order_acquire); is_order(order)) return order;
        } while (nanoseconds_now() < end);
        self.asleep.store(1, std::memory_order_relaxed);
        std::atomic_thread_fence(std::memory_order_seq_cst);
        if (!is_order(self.control.load(std::memory_order_relaxed))) wait_through_signals(&self.start_sem);
        self.asleep.store(0, std::memory_order_relaxed);
    }
}

void spin_for_jobs(pool_worker& self) {
    while ((self.naps ? nap_for_order(self) : spin_for_order(self)) != control_exit) {
        self.control.store(control_running, std::memory_order_relaxed);
        run_job(self);
        self.control.store(control_idle, std::memory_order_release);
    }
}

void wait_for_jobs(pool_worker& self) {
    for (;;) {
        wait_through_signals(&self.start_sem);
        if (!self.body) break;
        run_job(self);
        sem_post(&self.done_sem);
    }
}

void* worker_main(void* record) {
    pool_worker& self = *static_cast<pool_worker*>(record);
    if (self.spins)
        spin_for_jobs(self);
    else
        wait_for_jobs(self);
    sem_post(&pool_exit_sem);  // the record may be gone from here on
    return nullptr;
}

// Starts a detached thread on the record and places it.
bool start_thread(pool_worker* worker) {
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return false;
    pthread_t thread;
    const bool started = pthread_attr_setscope(&attributes, PTHREAD_SCOPE_SYSTEM) == 0 &&
                         pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED) == 0 &&
                         pthread_create(&thread, &attributes, worker_main, worker) == 0;
    if (started) pool_place_worker(thread);
    pthread_attr_destroy(&attributes);
    return started;
}

void release(pool_worker* worker) {
    sem_destroy(&worker->done_sem);
    sem_destroy(&worker->start_sem);
    free(worker);
}

pool_worker* make_worker() {
    pool_worker* worker = static_cast<pool_worker*>(calloc(1, sizeof(pool_worker)));
    if (!worker) return nullptr;
    sem_init(&worker->start_sem, 0, 0);
    sem_init(&worker->done_sem, 0, 0);
    worker->control.store(control_idle, std::memory_order_relaxed);
    worker->spins = pool_nthreads.load(std::memory_order_relaxed) < spin_threshold;
    worker->naps = worker->spins && pool_workers_nap.load(std::memory_order_relaxed);
    if (start_thread(worker)) return worker;
    release(worker);
    return nullptr;
}

}  // namespace

pool_worker* pool_take_worker(uint64_t use_plan_buffer) {
    pool_guard guard;
    pool_worker* worker = pool_free_list;
    if (worker)
        pool_free_list = worker->next_free;
    else
        worker = make_worker();
    if (worker) worker->task.reserved = use_plan_buffer;
    return worker;
}

void pool_give_back(pool_worker* worker) {
    pool_guard guard;
    worker->next_free = pool_free_list;
    pool_free_list = worker;
}

void pool_end_idle_workers() {
    while (pool_worker* worker = pool_free_list) {
        worker->body = nullptr;
        pool_free_list = worker->next_free;
        if (worker->spins)
            pool_order(*worker, control_exit);
        else
            sem_post(&worker->start_sem);
        wait_through_signals(&pool_exit_sem);
        release(worker);
    }
}

namespace {

void make_semaphores() {
    sem_init(&pool_lock, 0, 1);
    sem_init(&pool_exit_sem, 0, 0);
    pool_free_list = nullptr;
}

}  // namespace

// Tested without the mutex first; a loop comes here every time.
void pool_init() {
    if (pool_initialised.load(std::memory_order_acquire)) return;
    pthread_mutex_lock(&pool_init_mutex);
    if (!pool_initialised.load(std::memory_order_relaxed)) {
        make_semaphores();
        const char* idle = getenv("QSL_FFT_IDLE");
        pool_workers_nap.store(idle && strcasecmp(idle, "SLEEP") == 0, std::memory_order_relaxed);
        pool_initialised.store(1, std::memory_order_release);
    }
    pthread_mutex_unlock(&pool_init_mutex);
}

void pool_cleanup() {
    pthread_mutex_lock(&pool_init_mutex);
    if (pool_initialised.load(std::memory_order_relaxed)) {
        {
            pool_guard guard;
            pool_end_idle_workers();
        }
        sem_destroy(&pool_lock);
        sem_destroy(&pool_exit_sem);
        pool_initialised.store(0, std::memory_order_release);
    }
    pthread_mutex_unlock(&pool_init_mutex);
}

void pool_hold() {
    pthread_mutex_lock(&pool_init_mutex);
    if (pool_initialised.load(std::memory_order_relaxed)) wait_through_signals(&pool_lock);
}

void pool_let_go() {
    if (pool_initialised.load(std::memory_order_relaxed)) sem_post(&pool_lock);
    pthread_mutex_unlock(&pool_init_mutex);
}

void pool_start_anew() {
    if (pool_initialised.load(std::memory_order_relaxed)) make_semaphores();
    pthread_mutex_unlock(&pool_init_mutex);
}
