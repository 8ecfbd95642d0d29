// SPDX-License-Identifier: Apache-2.0
// Every execute function of a batch or reshaping plan that needs scratch: in the plan's buffer, on a thread that never
// planned, and there without memory, when nothing at all may be written. The linker sends calloc here (--wrap).
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <thread>

#include "tests/batch/reshape_support.h"
#include "tests/support/signals.h"

namespace {
std::atomic<bool> memory_is_short{false};
std::atomic<int> refused_allocations{0};
}  // namespace

extern "C" {
void* __real_calloc(size_t count, size_t size);
void* __wrap_calloc(size_t count, size_t size) {
    if (!memory_is_short) return __real_calloc(count, size);
    ++refused_allocations;
    return nullptr;
}
}

namespace {

constexpr float untouched = -3.5f;

struct scratch_case {
    const char* execute_name;
    problem p;
};

// The name is that of the function that takes the scratch: of the plan itself or of one below it.
const scratch_case cases[] = {
    {"execute_c2c_many_block_row_row", {.dims = {{2048, 1, 1}}, .batch = {{2048, 2048, 2048}}}},
    {"execute_c2c_many_block_col_col_copy", {.dims = {{64, 256, 256}}, .batch = {{256, 1, 1}}}},
    {"execute_c2c_many_block_col_col_copy", {.dims = {{64, 256, 1}}, .batch = {{256, 1, 64}}}},
    {"execute_c2c_many_block_col_col_trans", {.dims = {{4096, 65, 65}}, .batch = {{64, 1, 1}}}},
    {"execute_c2r_multidimension_bufferized", {.kind = kind_c2r, .dims = {{12, 11, 20}, {20, 1, 1}}, .batch = {}}},
    {"execute_1d_two_stages_sve", {.dims = {{100, 1, 1}}, .batch = {{3, 100, 110}}}},
    {"execute_1d_two_stages_sve", {.dims = {{100, 4, 4}}, .batch = {{4, 1, 1}}}},
    {"execute_1d_two_stages_sve", {.dims = {{100, 100, 100}, {100, 1, 1}}, .batch = {}}},
};

bool has_execute(const fft_plan& p, const char* name) {
    if (std::strcmp(p.execute_name, name) == 0) return true;
    for (int i = 0; i < p.subplan_count; ++i)
        if (has_execute(*p.subplans[i], name)) return true;
    return false;
}

// As many transforms as there are points takes a while: two blocks of rows do.
void shorten(fft_plan* plan, problem& p) {
    if (!has_execute(*plan, "execute_c2c_many_block_row_row")) return;
    plan->howmany[0].n = p.batch[0].n = 2 * plan->subplans[0]->howmany[0].n;
}

class Scratch : public ::testing::TestWithParam<scratch_case> {};

TEST_P(Scratch, BelongsToThePlanOrToTheCallAndWithoutItNothingIsWritten) {
    problem p = GetParam().p;
    float planned_in[1], planned_out[1];
    const plan_pointer plan = p.plan(planned_in, planned_out);
    ASSERT_TRUE(plan);
    ASSERT_TRUE(has_execute(*plan, GetParam().execute_name)) << tree(*plan);
    shorten(plan.get(), p);

    std::vector<float> in(2 * p.reach(true)), in_buffer(2 * p.reach(false), untouched);
    uniform_noise noise(7);
    for (float& x : in) x = noise();
    std::vector<float> in_own = in_buffer, without_memory = in_buffer;
    const std::vector<float> before = in_buffer;

    plan->execute(plan.get(), in.data(), in_buffer.data());
    std::thread([&] { plan->execute(plan.get(), in.data(), in_own.data()); }).join();
    std::thread short_of_memory([&] {
        while (!memory_is_short) std::this_thread::yield();
        plan->execute(plan.get(), in.data(), without_memory.data());
    });
    refused_allocations = 0;
    memory_is_short = true;
    short_of_memory.join();
    memory_is_short = false;

    auto same = [](const std::vector<float>& a, const std::vector<float>& b) {
        return std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
    };
    EXPECT_FALSE(same(in_buffer, before));
    EXPECT_TRUE(same(in_buffer, in_own));
    EXPECT_TRUE(same(without_memory, before));
    EXPECT_GT(refused_allocations, 0);
}

INSTANTIATE_TEST_SUITE_P(Batch, Scratch, ::testing::ValuesIn(cases), [](const auto& info) {
    return std::string(info.param.execute_name) + "_" + std::to_string(info.index);
});

}  // namespace
