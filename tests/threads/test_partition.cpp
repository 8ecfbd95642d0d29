// SPDX-License-Identifier: Apache-2.0
// The partition arithmetic, checked at compile time where the numbers are known and against its definition elsewhere.
#include "threads/partition.h"

#include <gtest/gtest.h>

namespace {

constexpr bool gives(partition_sizes sizes, uint64_t chunk, uint64_t parts) {
    return sizes.chunk == chunk && sizes.parts == parts;
}

static_assert(gives(cut_into_partitions(1000, 8, 16), 128, 8));
static_assert(gives(cut_into_partitions(100, 8, 4), 16, 7));
static_assert(gives(cut_into_partitions(5, 2, 4), 4, 2));
static_assert(gives(cut_into_partitions(3, 8, 4), 4, 1));
static_assert(gives(cut_into_partitions(100, 4, 16), 32, 4));
static_assert(gives(cut_into_partitions(1 << 20, 100000, 1), 2048, 512));
static_assert(gives(cut_into_partitions(7, 0, 1), 7, 1));

static_assert(clamp_nthreads(0) == 1 && clamp_nthreads(-5) == 1 && clamp_nthreads(INT32_MIN) == 1);
static_assert(clamp_nthreads(1) == 1 && clamp_nthreads(512) == 512);
static_assert(clamp_nthreads(513) == 512 && clamp_nthreads(INT32_MAX) == 512);

TEST(Partition, CoversEveryItemOnce) {
    for (uint64_t multiple : {1, 4, 16})
        for (uint64_t count = 1; count <= 300; ++count)
            for (uint64_t chunks : {1, 2, 3, 4, 7, 8, 64, 511, 512, 513, 1000}) {
                const partition_sizes s = cut_into_partitions(count, chunks, multiple);
                SCOPED_TRACE(testing::Message()
                             << count << " items, " << chunks << " chunks of a multiple of " << multiple);
                EXPECT_EQ(s.chunk % multiple, 0u);
                EXPECT_LE(s.parts, std::min<uint64_t>(chunks, thread_cap));
                EXPECT_LT((s.parts - 1) * s.chunk, count);  // the last partition isn't empty
                EXPECT_GE(s.parts * s.chunk, count);
            }
}

}  // namespace
