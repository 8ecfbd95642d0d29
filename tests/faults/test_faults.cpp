// SPDX-License-Identifier: Apache-2.0
// What surrounds a transform goes wrong: the clock, small stacks, forks, memory that isn't given back. Failing
// allocations are in tests/planner and tests/scratch, threads that can't be made
// and signals in tests/threads.
#include "include/qfftf.h"
#include "tests/scratch/every_execution.h"
#include "tests/support/emulated.h"
#include "tests/support/signals.h"

#include <gtest/gtest.h>

#include <pthread.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

// The program is linked with --wrap for these calls: the library's clock, and the number of blocks that it holds.
namespace {

std::atomic<int64_t> clock_step = 0, clock_now = 1'000'000'000'000;  // microseconds; one step at each reading
std::atomic<int64_t> blocks_held = 0;
std::atomic<bool> clock_jumps = false;  // by turns a day ahead and a day back

constexpr int n = 384, howmany = 24;  // enough rows for each of four threads

}  // namespace

extern "C" {
int __wrap_gettimeofday(timeval* now, void*) {
    int64_t t = clock_now += clock_step;
    if (clock_jumps) t += (t / 7 % 2 ? 1 : -1) * int64_t(86'400'000'000);
    now->tv_sec = t / 1'000'000;
    now->tv_usec = t % 1'000'000;
    return 0;
}
void* __real_calloc(size_t count, size_t size);
void* __real_malloc(size_t size);
void* __real_realloc(void* p, size_t size);
ssize_t __real_getline(char** line, size_t* size, FILE* file);
ssize_t __real___getdelim(char** line, size_t* size, int end, FILE* file);
void __real_free(void* p);
void* __wrap_calloc(size_t count, size_t size) {
    void* p = __real_calloc(count, size);
    blocks_held += p != nullptr;
    return p;
}
void* __wrap_realloc(void* old, size_t size) {
    void* p = __real_realloc(old, size);
    blocks_held += !old && p;
    return p;
}
// The block of a line that is read; getline is one of these two, as the compiler likes.
ssize_t __wrap_getline(char** line, size_t* size, FILE* file) {
    const bool had_none = !*line;
    const ssize_t length = __real_getline(line, size, file);
    blocks_held += had_none && *line;
    return length;
}
ssize_t __wrap___getdelim(char** line, size_t* size, int end, FILE* file) {
    const bool had_none = !*line;
    const ssize_t length = __real___getdelim(line, size, end, file);
    blocks_held += had_none && *line;
    return length;
}
void* __wrap_malloc(size_t size) {
    void* p = __real_malloc(size);
    blocks_held += p != nullptr;
    return p;
}
void __wrap_free(void* p) {
    blocks_held -= p != nullptr;
    __real_free(p);
}
}

namespace {

// A batch of complex rows, executed and compared with the same rows by one thread and the rules.
class rows {
public:
    rows() : in_(2 * n * howmany), out_(in_.size()), expected_(in_.size()) {
        qsl_fftf_plan plan = make(1, QSL_FFTF_RULES);
        fill();
        qsl_fftf_execute(plan);
        expected_ = out_;
        qsl_fftf_destroy_plan(plan);
    }
    qsl_fftf_plan make(int threads, unsigned flags) {
        const auto pairs = [](floats& x) { return reinterpret_cast<qsl_fftf_complex*>(x.data()); };
        qsl_fftf_plan_with_nthreads(threads);
        return qsl_fftf_plan_many_dft(1, &size_, howmany, pairs(in_), nullptr, 1, n, pairs(out_), nullptr, 1, n,
                                      QSL_FFTF_FORWARD, flags);
    }
    bool compute(qsl_fftf_plan plan) {
        if (!plan) return false;
        fill();
        std::fill(out_.begin(), out_.end(), -1.0f);
        qsl_fftf_execute(plan);
        double difference = 0, size = 0;
        for (size_t i = 0; i < out_.size(); ++i) {
            difference += (out_[i] - expected_[i]) * (out_[i] - expected_[i]);
            size += expected_[i] * expected_[i];
        }
        return difference < 1e-12 * size;
    }

private:
    void fill() {
        uniform_noise noise(2);
        for (float& x : in_) x = noise();
    }
    const int size_ = n;
    floats in_, out_, expected_;
};

class Faults : public testing::Test {
protected:
    void SetUp() override { setenv("QSL_FFT_AFFINITY", "NO", 1); }
    void TearDown() override {
        qsl_fftf_cleanup_threads();
        clock_step = 0;
        clock_jumps = false;
        qsl_fftf_set_timelimit(0);
    }
    rows rows_;
};

void expect_measured_plan_computes(rows& r) {
    for (const double limit : {0.0, 1e-3, 1e3}) {
        qsl_fftf_set_timelimit(limit);
        qsl_fftf_plan plan = r.make(1, QSL_FFTF_MEASURED);
        EXPECT_TRUE(r.compute(plan)) << "time limit " << limit;
        qsl_fftf_destroy_plan(plan);
    }
}

}  // namespace

TEST_F(Faults, AClockThatStandsStillEndsNoMeasuredPlanningWithoutAPlan) { expect_measured_plan_computes(rows_); }

TEST_F(Faults, AClockThatRunsBackwardsGivesAPlanThatComputes) {
    clock_step = -1000;
    expect_measured_plan_computes(rows_);
}

TEST_F(Faults, AClockThatJumpsByADayGivesAPlanThatComputes) {
    clock_step = 5;
    clock_jumps = true;
    expect_measured_plan_computes(rows_);
}

namespace {

void on_a_stack_of(size_t bytes, std::function<void()> work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, bytes), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(
                  &thread, &attributes,
                  [](void* w) -> void* {
                      (*static_cast<std::function<void()>*>(w))();
                      return nullptr;
                  },
                  &work),
              0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

}  // namespace

// The smallest that the system has, 128 KB on Arm; beyond its end is a page that ends the program.
TEST_F(Faults, TheSmallestStackIsEnoughToPlanAndExecuteEveryProblem) {
    int computed = 0;
    size_t bytes = static_cast<size_t>(sysconf(_SC_THREAD_STACK_MIN));
#if defined(QFFTF_SANITIZE)
    bytes += 1 << 20;  // red zones
#endif
    on_a_stack_of(bytes, [&] {
        for (const problem_case& problem : every_problem())
            if (const planned_execution e(problem, -1); e) {
                arrays on = e.before();
                e.execute(on);
                computed += on.in != e.before().in || on.out != e.before().out;
            }
    });
    EXPECT_GT(computed, 200);
}

// Children of a process whose workers stand, begun by two threads at once while a third computes.
TEST_F(Faults, ChildrenOfManyForksComputeAndEnd) {
    if (is_emulated) GTEST_SKIP() << "qemu-user can't start threads in the child of a program that has some";
    qsl_fftf_plan plan = rows_.make(4, QSL_FFTF_RULES);
    EXPECT_TRUE(rows_.compute(plan));
    std::atomic<int> failed = 0, forked = 0;
    const auto storm = [&] {
        rows own;
        qsl_fftf_plan own_plan = own.make(3, QSL_FFTF_RULES);
        for (int i = 0; i < 8; ++i) {
            const pid_t child = fork();
            if (child == 0) {
                alarm(60);
                bool right = own.compute(own_plan);
                if (i % 4 == 3) {  // a child of its own, and another program in its place
                    const pid_t grandchild = fork();
                    if (grandchild == 0) {
                        if (!own.compute(own_plan)) _exit(1);
                        execl("/proc/self/exe", "test_faults", "--gtest_filter=None", static_cast<char*>(nullptr));
                        _exit(2);
                    }
                    int status = 1;
                    waitpid(grandchild, &status, 0);
                    right = right && status == 0;
                }
                _exit(right ? 0 : 1);
            }
            int status = 1;
            waitpid(child, &status, 0);
            ++forked;
            failed += status != 0;
        }
        qsl_fftf_destroy_plan(own_plan);
    };
    std::thread first(storm), second(storm);
    while (forked < 16) EXPECT_TRUE(rows_.compute(plan));
    first.join();
    second.join();
    EXPECT_EQ(failed, 0);
    EXPECT_TRUE(rows_.compute(plan)) << "the parent goes on";
    qsl_fftf_destroy_plan(plan);
}

// Every block that planning and executing took is given back, by the rules and measured, on threads and alone.
TEST_F(Faults, NoBlockIsHeldAfterEverythingIsDestroyed) {
    const auto everything = [&] {
        for (size_t i = 0; i < every_problem().size(); i += 5)
            if (const planned_execution e(every_problem()[i], -1); e) e.result();
        for (const unsigned flags : {QSL_FFTF_RULES, QSL_FFTF_MEASURED})
            for (const int threads : {1, 4}) {
                qsl_fftf_plan plan = rows_.make(threads, flags);
                EXPECT_TRUE(rows_.compute(plan));
                std::thread([&] { EXPECT_TRUE(rows_.compute(plan)); }).join();  // in storage of its own
                qsl_fftf_destroy_plan(plan);
            }
        qsl_fftf_free(qsl_fftf_malloc(100));
        qsl_fftf_cleanup_threads();
    };
    everything();  // what is kept for good, as the table of the machine's nodes, is made now
    const int64_t before = blocks_held;
    everything();
    EXPECT_EQ(blocks_held, before);
}
