// SPDX-License-Identifier: Apache-2.0
// "hand_over WORKERS [LOOPS]": runs loops on so many workers, which exist by then. Without LOOPS it runs one, whose
// hand-over and join are two regions between the markers of bench/model; the caller's partition, which lies between
// them, waits until every worker is done. With LOOPS it runs these between two writes, for a log of system calls.
#include "include/qfftf.h"
#include "threads/threads.h"

#include <unistd.h>
#include <atomic>
#include <cstdlib>

#ifdef __aarch64__
#define BEGIN_MARKER asm volatile("hint #42" ::: "memory")
#define END_MARKER asm volatile("hint #43" ::: "memory")
#else
#define BEGIN_MARKER
#define END_MARKER
#endif

namespace {

struct loop_state {
    uint64_t workers;
    std::atomic<uint64_t> done;
};

void count_partition(parallel_task* task) { ++static_cast<loop_state*>(task->closure)->done; }

void marked_partition(parallel_task* task) {
    loop_state& state = *static_cast<loop_state*>(task->closure);
    if (task->index < state.workers) {
        ++state.done;
        return;
    }
    END_MARKER;
    while (state.done < state.workers) usleep(1000);
    usleep(100000);  // by now the workers have said so in their control words
    BEGIN_MARKER;
}

}  // namespace

int main(int argc, char** argv) {
    loop_state state = {argc > 1 ? strtoul(argv[1], nullptr, 10) : 1, 0};
    const uint64_t parts = state.workers + 1;
    setenv("QSL_FFT_AFFINITY", "NO", 1);
    qsl_fftf_plan_with_nthreads(static_cast<int>(parts));
    thread_parallel_for(parts, parts, 1, count_partition, &state);
    state.done = 0;
    if (argc > 2) {
        if (write(STDOUT_FILENO, "begin\n", 6) != 6) return 1;
        for (int i = atoi(argv[2]); i > 0; --i) thread_parallel_for(parts, parts, 1, count_partition, &state);
        if (write(STDOUT_FILENO, "end\n", 4) != 4) return 1;
        return 0;
    }
    BEGIN_MARKER;
    thread_parallel_for(parts, parts, 1, marked_partition, &state);
    END_MARKER;
    return state.done == state.workers ? 0 : 1;
}
