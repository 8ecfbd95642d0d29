// SPDX-License-Identifier: Apache-2.0
// Does what its arguments say, one after the other, and prints what the threading layer shows: for tests of the
// environment, which is read once per process.
#include "include/qfftf.h"
#include "record/thread_state.h"
#include "threads/partition.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

extern "C" {
void GOMP_parallel(void (*outlined)(void*), void* data, unsigned nthreads, unsigned flags);
int omp_get_thread_num(void);
}

namespace {

// A number for each thread that asks; a thread's handle may be that of one that has ended.
int this_thread() {
    static std::atomic<int> threads{0};
    static thread_local const int number = ++threads;
    return number;
}

struct seen {
    uint64_t chunk, use_plan_buffer;
    int thread;
    bool ran;
};

// "loop COUNT CHUNKS MULTIPLE": one line per partition. Threads are named by the first partition that they ran.
void run_loop(uint64_t count, uint64_t chunks, uint64_t multiple) {
    std::vector<seen> partitions(thread_cap);
    fflush(stdout);
    thread_parallel_for(
        count, chunks, multiple,
        [](parallel_task* task) {
            (*static_cast<std::vector<seen>*>(task->closure))[task->index] = {
                task->chunk, this_thread_state().use_plan_buffer, this_thread(), true};
        },
        &partitions);
    for (size_t i = 0; i < partitions.size(); ++i) {
        const seen& p = partitions[i];
        if (!p.ran) continue;
        size_t first = 0;
        while (!partitions[first].ran || partitions[first].thread != p.thread) ++first;
        printf("partition %zu chunk %d thread %zu%s%s\n", i, static_cast<int>(p.chunk), first,
               p.thread == this_thread() ? " (caller)" : "", p.use_plan_buffer ? " plan buffer" : "");
    }
}

// "team N": the words of the N threads of the program's own OpenMP team, the caller first.
void print_team(unsigned size) {
    std::vector<uint64_t> words(size, 99);
    GOMP_parallel(
        [](void* words) {
            (*static_cast<std::vector<uint64_t>*>(words))[omp_get_thread_num()] = this_thread_state().use_plan_buffer;
        },
        &words, size, 0);
    for (unsigned i = 0; i < size; ++i) printf("word of %u: %d\n", i, static_cast<int>(words[i]));
}

void print_count() { printf("nthreads %d\n", static_cast<int>(thread_get_nthreads())); }

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const auto number = [&] { return atoi(argv[++i]); };
        if (word == "backend") printf("backend %u\n", thread_backend_type());
        if (word == "count") print_count();
        if (word == "count_elsewhere") std::thread(print_count).join();
        if (word == "global") qsl_fftf_plan_with_nthreads(number());
        if (word == "local") qsl_fftf_plan_with_nthreads_local(number());
        if (word == "limit") printf("limit %d\n", static_cast<int>(thread_limit_nthreads(number())));
        if (word == "mode") printf("mode %u\n", thread_get_affinity_mode());
        if (word == "set_mode") thread_set_affinity_mode(number());
        if (word == "refresh") thread_refresh_binding();
        if (word == "init") printf("init %d\n", qsl_fftf_init_threads());
        if (word == "cleanup") qsl_fftf_cleanup_threads();
        if (word == "team") print_team(number());
        if (word == "planned") this_thread_state().use_plan_buffer = 1;
        if (word == "loop") {
            const int count = number(), chunks = number();
            run_loop(count, chunks, number());
        }
    }
}
