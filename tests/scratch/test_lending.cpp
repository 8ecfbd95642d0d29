// SPDX-License-Identifier: Apache-2.0
// A plan's storage is lent to one execution at a time. Every execute function on a thread that has planned: what it
// finds lent it leaves alone, what it was lent it gives back, and the result is the same.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "planner/scratch.h"
#include "tests/scratch/every_execution.h"
#include "tests/scratch/program_contents.h"
#include "tests/scratch/sleeping_workers.h"

namespace {
std::atomic<int> allocations{0};
}

extern "C" {
void* __real_calloc(size_t count, size_t size);
void* __wrap_calloc(size_t count, size_t size) {
    ++allocations;
    return __real_calloc(count, size);
}
}

namespace {

void fill_buffers(fft_plan& plan, int byte) {
    if (plan.buffer) memset(plan.buffer, byte, plan.buffer_size);
    for (int i = 0; i < plan.subplan_count; ++i) fill_buffers(*plan.subplans[i], byte);
}

bool buffers_hold(const fft_plan& plan, int byte) {
    const unsigned char* const buffer = static_cast<const unsigned char*>(plan.buffer);
    for (uint64_t i = 0; buffer && i < plan.buffer_size; ++i)
        if (buffer[i] != byte) return false;
    for (int i = 0; i < plan.subplan_count; ++i)
        if (!buffers_hold(*plan.subplans[i], byte)) return false;
    return true;
}

// A chain of one stage keeps a buffer that it has no use for.
bool has_buffers(const fft_plan& plan) {
    if (plan.buffer) return true;
    for (int i = 0; i < plan.subplan_count; ++i)
        if (has_buffers(*plan.subplans[i])) return true;
    return false;
}

uint32_t lending_below(const fft_plan& plan) {
    uint32_t all = 0;
    for (int i = 0; i < plan.subplan_count; ++i) all |= plan.subplans[i]->lending | lending_below(*plan.subplans[i]);
    return all;
}

fft_plan& writable(const planned_execution& e) { return const_cast<fft_plan&>(e.plan()); }

// Run by another thread, which has never planned.
arrays result_elsewhere(const planned_execution& e) {
    arrays on = e.before();
    std::thread([&] { e.execute(on); }).join();
    return on;
}

using Lending = sleeping_workers;

// The buffers hold a pattern that no transform leaves: whoever writes into storage that isn't his is seen.
void expect_left_alone(const planned_execution& e, const arrays& expected) {
    fft_plan& plan = writable(e);
    const uint32_t before = plan.lending;
    fill_buffers(plan, 0x7f);
    for (bool elsewhere : {false, true}) {
        plan.lending = storage_lent;
        const arrays got = elsewhere ? result_elsewhere(e) : e.result();
        EXPECT_EQ(plan.lending, storage_lent) << e.text();
        EXPECT_EQ(got, expected) << (elsewhere ? "elsewhere, " : "") << e.text();
        EXPECT_TRUE(buffers_hold(plan, 0x7f)) << (elsewhere ? "elsewhere, " : "") << "wrote what is lent: " << e.text();
    }
    plan.lending = before;
    fill_buffers(plan, 0);
}

// Of a tree only the root's word is looked at, and of a tree without scratch not even that. What isn't lent is brought,
// all at once.
void expect_one_word(const planned_execution& e) {
    const bool brings = e.plan().lending == storage_lacking;
    EXPECT_TRUE(brings || e.plan().lending == storage_free) << e.text();
    EXPECT_TRUE(brings || (lending_below(e.plan()) & ~uint32_t{storage_of_tree}) == 0) << e.text();
    if (e.text().find("multithread") != std::string::npos) return;  // workers' records are allocated too
    fft_plan& plan = writable(e);
    const uint32_t before = plan.lending;
    for (bool lent : {true, false}) {
        if (lent) plan.lending = storage_lent;
        arrays on = e.before();
        allocations = 0;
        e.execute(on);
        // What doesn't bring its own does without: expect_left_alone sees that it leaves the lent storage alone.
        EXPECT_LE(allocations, brings || (lent && has_buffers(plan)) ? 1 : 0) << e.text();
        plan.lending = before;
    }
}

TEST_F(Lending, IsToOneExecutionOfEachPlanAtATime) {
    execute_parts found;
    int with_scratch = 0, without = 0;
    for_each_execution([&](const planned_execution& e) {
        collect_execute_parts(e.plan(), found);
        const arrays expected = result_elsewhere(e);
        expect_left_alone(e, expected);
        EXPECT_EQ(e.result(), expected) << e.text();  // in the plan's storage, where there is any
        EXPECT_NE(e.plan().lending, storage_lent) << "not given back: " << e.text();
        EXPECT_EQ(this_thread_state().use_plan_buffer, 1u);
        EXPECT_EQ(this_thread_state().scratch.begin, nullptr);
        expect_one_word(e);
        ++(has_buffers(e.plan()) ? with_scratch : without);
    });
    EXPECT_GT(with_scratch, 500);
    EXPECT_GT(without, 500);
    EXPECT_EQ(list_of_missing_functions(execute_parts_of_this_program(), found), "") << "not reached";
}

}  // namespace
