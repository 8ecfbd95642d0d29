// SPDX-License-Identifier: Apache-2.0
// What a process under a limit of the system sees. Ends with 0 where the promises hold.
//   limited_program size       prints how many KB of address space it takes to begin with
//   limited_program space      plans and executes under a limit of its address space, which its starter has set
//   limited_program threads    the same where no thread may be made; 77 where it can't become a user whom that binds
#include "include/qfftf.h"

#include <fcntl.h>
#include <grp.h>
#include <malloc.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <semaphore>
#include <thread>

namespace {

using complex_array = qsl_fftf_complex*;
constexpr int longest = 1 << 20, impulse_at = 3;
constexpr float untouched = -7;

// The arrays of every problem; a batch of transforms of an impulse, whose coefficients are known.
float in[2 * longest], out[2 * longest];

void fill(int n, int batch) {
    std::fill_n(in, 2 * n * batch, 0.0f);
    std::fill_n(out, 2 * n * batch, untouched);
    for (int i = 0; i < batch; ++i) in[2 * (n * i + impulse_at)] = 1;
}

bool is_untouched(int n, int batch) { return std::count(out, out + 2 * n * batch, untouched) == 2 * n * batch; }

bool is_complete(int n, int batch) {
    for (int i = 0; i < batch; ++i)
        for (int k = 0; k < n; ++k) {
            const float *x = out + 2 * (n * i + k), size = std::hypot(x[0], x[1]);
            if (!(std::abs(size - 1) < 1e-4f)) return false;
            if (k % 61 != 0 && n > 4096) continue;
            const double angle = -2 * M_PI * (static_cast<double>(k) * impulse_at / n);
            if (!(std::hypot(x[0] - std::cos(angle), x[1] - std::sin(angle)) < 1e-4)) return false;
        }
    return true;
}

qsl_fftf_plan make_plan(int n, int batch, unsigned flags) {
    return qsl_fftf_plan_many_dft(1, &n, batch, complex_array(in), nullptr, 1, n, complex_array(out), nullptr, 1, n,
                                  QSL_FFTF_FORWARD, flags);
}

size_t address_space_in_use() {
    char text[64] = {};
    const int file = open("/proc/self/statm", O_RDONLY);
    if (read(file, text, sizeof text - 1) <= 0) return 0;
    close(file);
    return strtoull(text, nullptr, 10) * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

// By a call that needs no memory: one folder for each.
size_t threads_now() {
    struct stat folder = {};
    stat("/proc/self/task", &folder);
    return folder.st_nlink;
}

// Address space that is held so that nothing but a chosen amount in one piece is left.
class ballast {
public:
    void leave(size_t bytes) {
        for (; count_ > 0; --count_) munmap(held_[count_ - 1].begin, held_[count_ - 1].size);
        const piece gap = {bytes ? reserved(bytes) : nullptr, bytes};
        for (size_t size = largest; size >= smallest; size /= 2)
            while (void* const begin = count_ < most ? reserved(size) : nullptr) held_[count_++] = {begin, size};
        if (gap.begin) munmap(gap.begin, gap.size);
    }

private:
    struct piece {
        void* begin;
        size_t size;
    };
    static void* reserved(size_t size) {
        void* const begin = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        return begin == MAP_FAILED ? nullptr : begin;
    }

    static constexpr size_t largest = 64 << 20, smallest = 16 << 10, most = 1000;
    piece held_[most];
    size_t count_ = 0;
};

// A thread that never plans and that is there before memory is short.
class other_thread {
public:
    ~other_thread() {
        plan_ = nullptr;
        begin_.release();
        thread_.join();
    }
    void execute(qsl_fftf_plan plan) {
        plan_ = plan;
        begin_.release();
        end_.acquire();
    }

private:
    void work() {
        for (begin_.acquire(); plan_; begin_.acquire()) {
            qsl_fftf_execute(plan_);
            end_.release();
        }
    }
    qsl_fftf_plan plan_ = nullptr;
    std::binary_semaphore begin_{0}, end_{0};
    std::thread thread_{[this] { work(); }};
};

struct outcomes {
    int refused = 0, complete = 0, left_alone = 0, wrong = 0;
    void count(const char* what, int n, int batch, size_t left, bool may_be_left_alone) {
        if (is_complete(n, batch))
            ++complete;
        else if (may_be_left_alone && is_untouched(n, batch))
            ++left_alone;
        else
            ++wrong, printf("wrong: %s, n %d, batch %d, %zu KB left\n", what, n, batch, left >> 10);
    }
};

ballast held;

// Every plan is executed here and, with next to nothing left, by a thread that has to bring storage of its own.
int under_little_space() {
    qsl_fftf_plan_with_nthreads(1);
    other_thread other;
    outcomes seen;
    for (const size_t left : {0, 1 << 18, 1 << 20, 1 << 22, 1 << 24, 1 << 25})
        for (const int n : {96, 1009, 4096, 100003, 1 << 18, longest})
            for (const unsigned flags : {QSL_FFTF_RULES, QSL_FFTF_MEASURED}) {
                if (flags == QSL_FFTF_MEASURED && n > 4096) continue;
                const int batch = n == 96 ? 40 : 1;
                held.leave(left);
                qsl_fftf_plan plan = make_plan(n, batch, flags);
                seen.refused += !plan;
                if (!plan) continue;
                fill(n, batch);
                qsl_fftf_execute(plan);
                seen.count("by this thread", n, batch, left, true);
                held.leave(0);
                fill(n, batch);
                other.execute(plan);
                seen.count("by another thread", n, batch, left, true);
                qsl_fftf_destroy_plan(plan);
            }
    held.leave(size_t{1} << 25);
    printf("%d plans refused, %d executions complete, %d left alone, %d wrong\n", seen.refused, seen.complete,
           seen.left_alone, seen.wrong);
    return seen.wrong == 0 && seen.refused > 0 && seen.complete > 0 && seen.left_alone > 0 ? 0 : 1;
}

// Plans of four threads where none can be made, by `forbid` from before the first execution on.
template <class Forbid>
int without_workers(Forbid forbid) {
    pthread_attr_t attributes;  // whose stacks are larger than any reserve
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 16 << 20);
    pthread_setattr_default_np(&attributes);
    const int n = 384, batch = 48;
    qsl_fftf_plan_with_nthreads(4);
    qsl_fftf_plan plan = make_plan(n, batch, QSL_FFTF_RULES);
    if (!plan) return puts("no plan"), 1;
    forbid();
    bool made = true;
    try {
        std::thread([] {}).join();
    } catch (const std::system_error&) {
        made = false;
    }
    if (made) return puts("threads can be made all the same"), 1;
    const size_t before = threads_now();
    outcomes seen;
    for (int i = 0; i < 3; ++i) {
        fill(n, batch);
        qsl_fftf_execute(plan);
        seen.count("without workers", n, batch, 0, false);
    }
    if (threads_now() != before) return puts("there are threads"), 1;
    qsl_fftf_destroy_plan(plan);
    qsl_fftf_cleanup_threads();
    return seen.complete == 3 ? 0 : 1;
}

// The limit counts the threads of a user, and doesn't bind root.
void forbid_threads() {
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_NPROC, &none);
}

}  // namespace

int main(int argc, char** argv) {
    const char* what = argc > 1 ? argv[1] : "";
    if (strcmp(what, "size") == 0) return printf("%zu\n", address_space_in_use() >> 10) > 2 ? 0 : 1;
    if (strcmp(what, "space") == 0) {
        mallopt(M_MMAP_THRESHOLD, 1 << 14);  // what is freed isn't kept for the next execution
        // Without workers first: stacks of threads that have ended are kept for the next.
        const int status = without_workers([] { held.leave(0); });
        held.leave(1 << 25);
        return status ? status : under_little_space();
    }
    if (strcmp(what, "threads") == 0) {
        constexpr uid_t nobody_in_particular = 54321;
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setuid(nobody_in_particular) != 0)) return 77;
        return without_workers(forbid_threads);
    }
    return 2;
}
