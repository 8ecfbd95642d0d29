// SPDX-License-Identifier: Apache-2.0
// Runs a loop and keeps what each partition saw.
#pragma once
#include "record/thread_state.h"
#include "threads/partition.h"

#include <gtest/gtest.h>

#include <pthread.h>
#include <atomic>
#include <memory>

struct loop_record {
    struct partition {
        std::atomic<int> runs{0};
        uint64_t chunk = 0;
        uint64_t use_plan_buffer = 0;
        pthread_t thread{};
    };
    std::unique_ptr<partition[]> partitions = std::make_unique<partition[]>(thread_cap);
    std::atomic<int> out_of_range{0};
    void (*inner)() = nullptr;  // run by every partition

    static void body(parallel_task* task) {
        auto& self = *static_cast<loop_record*>(task->closure);
        if (task->index >= thread_cap) {
            ++self.out_of_range;
            return;
        }
        partition& p = self.partitions[task->index];
        ++p.runs;
        p.chunk = task->chunk;
        p.use_plan_buffer = this_thread_state().use_plan_buffer;
        p.thread = pthread_self();
        if (self.inner) self.inner();
    }

    void run(uint64_t count, uint64_t chunks, uint64_t multiple) {
        for (uint64_t i = 0; i < thread_cap; ++i) partitions[i].runs = 0;
        thread_parallel_for(count, chunks, multiple, body, this);
    }

    // Every partition of such a loop ran once with the right chunk, and no other did.
    void expect_complete(uint64_t count, uint64_t chunks, uint64_t multiple) const {
        SCOPED_TRACE(testing::Message() << count << " items, " << chunks << " chunks of a multiple of " << multiple);
        const partition_sizes sizes = cut_into_partitions(count, chunks, multiple);
        EXPECT_EQ(out_of_range, 0);
        for (uint64_t i = 0; i < thread_cap; ++i) {
            EXPECT_EQ(partitions[i].runs, i < sizes.parts ? 1 : 0) << "partition " << i;
            if (i >= sizes.parts) continue;
            EXPECT_EQ(partitions[i].chunk, sizes.chunk) << "partition " << i;
        }
    }

    void run_and_check(uint64_t count, uint64_t chunks, uint64_t multiple) {
        run(count, chunks, multiple);
        expect_complete(count, chunks, multiple);
    }
};
