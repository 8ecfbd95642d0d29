// SPDX-License-Identifier: Apache-2.0
// What idle workers do: spin, or sleep soon where QSL_FFT_IDLE asks for it, and miss no loop on the way to sleep.
#include "include/qfftf.h"
#include "loop_record.h"
#include "support/signals_at.h"
#include "threads/pool.h"

#include <unistd.h>
#include <cstdlib>
#include <ctime>

namespace {

double cpu_seconds() {
    timespec used;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + 1e-9 * static_cast<double>(used.tv_nsec);
}

class Idle : public testing::Test {
protected:
    void start(const char* idle) {
        setenv("QSL_FFT_AFFINITY", "NO", 1);
        idle ? setenv("QSL_FFT_IDLE", idle, 1) : unsetenv("QSL_FFT_IDLE");
        qsl_fftf_cleanup_threads();
        qsl_fftf_plan_with_nthreads(3);
        loop.run_and_check(3, 3, 1);
    }
    void TearDown() override {
        qsl_fftf_cleanup_threads();
        unsetenv("QSL_FFT_IDLE");
    }

    // What all threads use together while nothing is to be done.
    double cpu_use_of(int milliseconds) {
        usleep(20000);
        const double before = cpu_seconds();
        usleep(milliseconds * 1000);
        return cpu_seconds() - before;
    }
    loop_record loop;
};

TEST_F(Idle, WorkersSpinUnlessTheyAreToldToSleep) {
    for (const char* idle : {static_cast<const char*>(nullptr), "", "SPIN"}) {
        start(idle);
        EXPECT_GT(cpu_use_of(400), 0.04);
    }
    for (const char* idle : {"SLEEP", "sleep"}) {
        start(idle);
        EXPECT_LT(cpu_use_of(400), 0.02);
    }
}

// Pauses around the moment at which workers go to sleep.
TEST_F(Idle, NoLoopIsMissedOnTheWayToSleep) {
    start("SLEEP");
    for (int i = 0; i < 1000; ++i) {
        loop.run_and_check(3, 3, 1);
        const double end = cpu_seconds() + 1e-6 * (i % 80);
        while (cpu_seconds() < end) {
        }
    }
    for (int i = 0; i < 100; ++i) {
        usleep(i % 5 * 50);
        loop.run_and_check(6, 3, 1);
    }
}

// A post that nobody waits for would wake the worker later, for nothing.
TEST(PoolOrder, IsPostedToAWorkerThatSleepsAlone) {
    for (const bool naps : {false, true})
        for (const uint32_t asleep : {0u, 1u}) {
            pool_worker worker = {};
            sem_init(&worker.start_sem, 0, 0);
            worker.naps = naps;
            worker.asleep = asleep;
            pool_order(worker, control_exit);
            int posts = -1;
            sem_getvalue(&worker.start_sem, &posts);
            EXPECT_EQ(posts, naps && asleep) << (naps ? "naps, " : "spins, ") << (asleep ? "asleep" : "awake");
            EXPECT_EQ(worker.control, control_exit);
            sem_destroy(&worker.start_sem);
        }
}

TEST_F(Idle, AWorkerThatRunsCountsAsAwake) {
    start("SLEEP");
    pool_worker* const worker = pool_take_worker(0);
    ASSERT_TRUE(worker);
    while (!worker->asleep) usleep(100);
    static uint32_t asleep_within;
    asleep_within = 2;
    worker->body = [](parallel_task* task) { asleep_within = static_cast<pool_worker*>(task->closure)->asleep; };
    worker->task.closure = worker;
    pool_order(*worker, reinterpret_cast<uintptr_t>(worker));
    while (worker->control != control_idle) usleep(100);
    pool_give_back(worker);
    EXPECT_EQ(asleep_within, 0u);
}

// Sleepers wake, find no order and sleep again.
TEST_F(Idle, SignalsCutNoSleepShort) {
    start("SLEEP");
    {
        const signals_at pest({loop.partitions[0].thread, loop.partitions[1].thread, pthread_self()});
        for (int i = 0; pest.sent() < 300; ++i) {
            usleep(i % 5 * 100);
            loop.run_and_check(3, 3, 1);
        }
    }
    EXPECT_LT(cpu_use_of(400), 0.02);
}

TEST_F(Idle, SleepersEnd) {
    for (int i = 0; i < 20; ++i) {
        start("SLEEP");
        usleep(i * 20);
        qsl_fftf_cleanup_threads();
    }
}

}  // namespace
