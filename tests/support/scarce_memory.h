// SPDX-License-Identifier: Apache-2.0
// Executions that find too little memory: all or nothing. For one source file of a program that is linked with
// --wrap=calloc, which sends the library's allocations here.
#pragma once
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "record/fft_plan.h"

namespace scarce_memory {

constexpr int any_number = 1 << 30;
inline std::atomic<int> allowed_allocations{any_number};
inline std::atomic<int> refused_allocations{0};

using floats = std::vector<float>;

inline bool same(const floats& a, const floats& b) {
    return std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

// Whether the plan or one below it runs by the execute function of this name.
inline bool has_execute(const fft_plan& p, const char* name) {
    if (std::strcmp(p.execute_name, name) == 0) return true;
    for (int i = 0; i < p.subplan_count; ++i)
        if (has_execute(*p.subplans[i], name)) return true;
    return false;
}

// `output` executes the plan and returns the output array, which holds `before` in advance. It is called in the plans'
// buffers and then on threads that never planned, with every allocation failing in turn. A team of threads allocates
// too, and works without.
template <class Output>
void expect_all_or_nothing(Output output, const floats& before, const std::string& tree, bool has_team = false) {
    const floats expected = output();
    EXPECT_FALSE(same(expected, before));
    bool whole = false;
    int allowed = 0;
    for (; !whole && allowed < 20; ++allowed) {
        refused_allocations = 0;
        allowed_allocations = allowed;
        floats out;
        std::thread([&] { out = output(); }).join();
        allowed_allocations = any_number;
        whole = refused_allocations == 0;
        const bool complete = whole || (has_team && !same(out, before));
        EXPECT_TRUE(same(out, complete ? expected : before)) << allowed << " allocations\n" << tree;
    }
    EXPECT_TRUE(whole);
    EXPECT_GT(allowed, 1) << "needs no memory";
}

}  // namespace scarce_memory

extern "C" {
void* __real_calloc(size_t count, size_t size);
void* __wrap_calloc(size_t count, size_t size) {
    using namespace scarce_memory;
    if (allowed_allocations == any_number || allowed_allocations-- > 0) return __real_calloc(count, size);
    allowed_allocations = 0;
    ++refused_allocations;
    return nullptr;
}
}
