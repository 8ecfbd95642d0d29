// SPDX-License-Identifier: Apache-2.0
// The pool in both modes: who runs which partition, reuse of workers, nesting, several callers, tear-down.
#include "include/qfftf.h"
#include "loop_record.h"
#include "support/faults.h"
#include "support/signals_at.h"
#include "threads/pool.h"

#include <filesystem>
#include <thread>
#include <vector>

namespace {

// Threads of this process; one that was told to end may take a moment.
size_t live_threads() {
    size_t count = 0;
    for ([[maybe_unused]] const auto& task : std::filesystem::directory_iterator("/proc/self/task")) ++count;
    return count;
}

bool threads_come_down_to(size_t count) {
    for (int i = 0; i < 5000 && live_threads() > count; ++i) usleep(1000);
    return live_threads() <= count;
}

class Pool : public testing::TestWithParam<int> {
protected:
    void SetUp() override {
        setenv("QSL_FFT_AFFINITY", "NO", 1);
        qsl_fftf_plan_with_nthreads(GetParam());
        threads_made = 0;
    }
    void TearDown() override { qsl_fftf_cleanup_threads(); }
    loop_record loop;
};

TEST_P(Pool, NoItemsAndOnePartitionTouchNoLock) {
    pool_guard guard;  // a loop that took the lock would wait for ever
    loop.run(0, 8, 4);
    for (uint64_t i = 0; i < thread_cap; ++i) EXPECT_EQ(loop.partitions[i].runs, 0);
    loop.run_and_check(3, 8, 4);
    loop.run_and_check(1, 1, 16);
    EXPECT_TRUE(pthread_equal(loop.partitions[0].thread, pthread_self()));
    EXPECT_EQ(loop.partitions[0].chunk, 16u);
    EXPECT_EQ(threads_made, 0);
}

TEST_P(Pool, EveryPartitionRunsOnce) {
    for (uint64_t multiple : {1, 4, 16})
        for (uint64_t count : {1, 2, 5, 16, 63, 1000})
            for (uint64_t chunks : {1, 3, 5}) loop.run_and_check(count, chunks, multiple);
    EXPECT_EQ(threads_made, 4);  // never more than the widest loop needs
}

TEST_P(Pool, CallerTakesLastPartition) {
    for (uint64_t chunks : {2, 3, 4}) {
        loop.run_and_check(100, chunks, 1);
        for (uint64_t i = 0; i < chunks; ++i)
            EXPECT_EQ(pthread_equal(loop.partitions[i].thread, pthread_self()) != 0, i == chunks - 1) << i;
    }
}

TEST_P(Pool, LastWorkerReturnedIsFirstReused) {
    loop.run_and_check(4, 4, 1);
    const pthread_t first[] = {loop.partitions[0].thread, loop.partitions[1].thread, loop.partitions[2].thread};
    loop.run_and_check(4, 4, 1);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(pthread_equal(loop.partitions[i].thread, first[2 - i])) << i;
    loop.run_and_check(2, 2, 1);  // returned last: the worker of partition 2
    EXPECT_TRUE(pthread_equal(loop.partitions[0].thread, first[0]));
    EXPECT_EQ(threads_made, 3);
}

TEST_P(Pool, ManyLoopsRunOnTheSameWorkers) {
    for (int i = 0; i < 200; ++i) loop.run_and_check(12, 3, 4);
    EXPECT_EQ(threads_made, 2);
}

TEST_P(Pool, LoopsOnIdleWorkersAllocateNothing) {
    std::atomic<int> runs{0};
    const auto run = [&] {
        thread_parallel_for(
            30, 3, 1, [](parallel_task* task) { ++*static_cast<std::atomic<int>*>(task->closure); }, &runs);
    };
    heap_calls = 0;
    run();
    EXPECT_EQ(heap_calls, 2);  // a record for each of the new workers
    heap_calls = 0;
    for (int i = 0; i < 20; ++i) run();
    EXPECT_EQ(heap_calls, 0);
    EXPECT_EQ(runs, 63);
}

TEST_P(Pool, WorkersInheritTheUseOfPlanBuffers) {
    for (uint64_t word : {1, 0, 1}) {
        this_thread_state().use_plan_buffer = word;
        loop.run_and_check(3, 3, 1);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(loop.partitions[i].use_plan_buffer, word) << "partition " << i;
    }
    this_thread_state().use_plan_buffer = 0;
}

void inner_loop() {
    loop_record inner;
    inner.run_and_check(6, 3, 1);
}

TEST_P(Pool, LoopsNest) {
    loop.inner = inner_loop;
    for (int i = 0; i < 10; ++i) loop.run_and_check(3, 3, 1);
    EXPECT_LE(threads_made, 8);
}

TEST_P(Pool, SeveralThreadsRunLoopsAtOnce) {
    std::vector<std::thread> callers;
    for (int t = 0; t < 3; ++t)
        callers.emplace_back([] {
            loop_record own;
            for (int i = 0; i < 30; ++i) own.run_and_check(40, 3, 4);
        });
    for (std::thread& caller : callers) caller.join();
}

TEST_P(Pool, CleanupEndsTheWorkers) {
    const size_t before = live_threads();
    for (int cycle = 0; cycle < 10; ++cycle) {
        EXPECT_EQ(qsl_fftf_init_threads(), 1);
        EXPECT_EQ(qsl_fftf_init_threads(), 1);
        loop.run_and_check(16, 4, 4);
        qsl_fftf_cleanup_threads();
        EXPECT_TRUE(threads_come_down_to(before));
        qsl_fftf_cleanup_threads();
    }
    EXPECT_EQ(threads_made, 30);
    loop.run_and_check(16, 4, 4);  // without a new init
}

// At the caller and at the workers.
TEST_P(Pool, SignalsDoNotCutWaitsShort) {
    loop.run_and_check(3, 3, 1);
    const signals_at pest({loop.partitions[0].thread, loop.partitions[1].thread, pthread_self()});
    while (pest.sent() < 100) loop.run_and_check(3, 3, 1);
    EXPECT_EQ(threads_made, 2) << "every worker came back";
}

INSTANTIATE_TEST_SUITE_P(Modes, Pool, testing::Values(8, 200),
                         [](const auto& mode) { return mode.param < 200 ? "Spinning" : "Waiting"; });

TEST(PoolLimits, AtMost511WorkersServeOneLoop) {
    setenv("QSL_FFT_AFFINITY", "NO", 1);
    qsl_fftf_plan_with_nthreads(512);
    threads_made = 0;
    loop_record loop;
    loop.run_and_check(512, 513, 1);
    loop.run_and_check(1536, 100000, 1);
    EXPECT_EQ(threads_made, 511);
    qsl_fftf_cleanup_threads();
}

// Workers keep the mode they were born in, and the caller follows it.
TEST(PoolLimits, CountMayCrossTheSpinThreshold) {
    setenv("QSL_FFT_AFFINITY", "NO", 1);
    loop_record loop;
    uint64_t chunks = 2;
    for (int nthreads : {4, 200, 4, 512, 199}) {
        qsl_fftf_plan_with_nthreads(nthreads);
        for (int i = 0; i < 3; ++i) loop.run_and_check(100, chunks, 1);
        ++chunks;  // one more worker, born in the mode of now
    }
    qsl_fftf_cleanup_threads();
}

TEST(PoolLimits, CleanupWithoutInitDoesNothing) {
    qsl_fftf_cleanup_threads();
    qsl_fftf_cleanup_threads();
}

// Another thread that moves ends the idle workers only; those that are out come back.
TEST(PoolBinding, RefreshSparesWorkersInUse) {
    unsetenv("QSL_FFT_AFFINITY");
    qsl_fftf_plan_with_nthreads(4);
    ASSERT_NE(thread_get_affinity_mode(), affinity_none);
    static std::atomic<int> arrived, released;
    arrived = released = 0;
    loop_record loop;
    loop.run_and_check(3, 3, 1);
    loop.inner = [] {
        ++arrived;
        while (!released) usleep(100);
    };
    std::thread caller([&] { loop.run_and_check(2, 2, 1); });
    while (arrived < 2) usleep(100);
    threads_made = 0;
    std::thread([] {
        thread_refresh_binding();  // a thread's first refresh counts as a move
        loop_record own;
        own.run_and_check(2, 2, 1);
    }).join();
    EXPECT_EQ(threads_made, 1);  // the idle worker was ended
    released = 1;
    caller.join();
    loop.inner = nullptr;
    threads_made = 0;
    loop.run_and_check(3, 3, 1);  // the worker that was out is back
    EXPECT_EQ(threads_made, 0);
    qsl_fftf_cleanup_threads();
}

}  // namespace
