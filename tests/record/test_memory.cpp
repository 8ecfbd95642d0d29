// SPDX-License-Identifier: Apache-2.0
#include "record/memory.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(Memory, IsAlignedAndZeroed) {
    for (uint64_t size : {uint64_t{0}, uint64_t{1}, uint64_t{63}, uint64_t{64}, uint64_t{4096}}) {
        char* p = static_cast<char*>(qsl_fftf_malloc(size));
        ASSERT_NE(p, nullptr);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(p) % 64, 0u);
        for (uint64_t i = 0; i < size; ++i) EXPECT_EQ(p[i], 0) << "byte " << i << " of " << size;
        qsl_fftf_free(p);
    }
}

TEST(Memory, SizeThatWrapsGivesNull) { EXPECT_EQ(qsl_fftf_malloc(UINT64_MAX - 10), nullptr); }

TEST(Memory, FreeOfNullDoesNothing) { qsl_fftf_free(nullptr); }

TEST(Memory, FreeLeavesForeignPointersAlone) {
    alignas(64) char arena[256] = {};
    const uintptr_t above = reinterpret_cast<uintptr_t>(arena + 200),
                    far_below = reinterpret_cast<uintptr_t>(arena + 100) - 73;
    memcpy(arena + 64 - 8, &above, 8);
    qsl_fftf_free(arena + 64);
    memcpy(arena + 100 - 8, &far_below, 8);
    qsl_fftf_free(arena + 100);
}
