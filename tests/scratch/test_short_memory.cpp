// SPDX-License-Identifier: Apache-2.0
// Every execute function on a thread that never planned, where an execution brings its own storage, with every
// allocation failing in turn: the execution is complete or has written nothing at all. The program is linked so that
// every calloc comes here.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <thread>

#include "tests/scratch/every_execution.h"
#include "tests/scratch/program_contents.h"
#include "tests/scratch/sleeping_workers.h"

namespace {

constexpr int any_number = 1 << 30;
std::atomic<int> allowed_allocations{any_number};
std::atomic<int> asked{0}, refused{0};

}  // namespace

extern "C" {
void* __real_calloc(size_t count, size_t size);
void* __wrap_calloc(size_t count, size_t size) {
    ++asked;
    if (allowed_allocations == any_number || allowed_allocations-- > 0) return __real_calloc(count, size);
    allowed_allocations = 0;
    ++refused;
    return nullptr;
}
}

namespace {

// On a thread that never planned, with the first so many allocations granted.
arrays result_with(const planned_execution& e, int allowed) {
    arrays on = e.before();
    std::thread([&] {
        asked = refused = 0;
        allowed_allocations = allowed;
        e.execute(on);
        allowed_allocations = any_number;
    }).join();
    return on;
}

uint64_t scratch_bytes(const fft_plan& plan) {
    uint64_t bytes = plan.buffer ? plan.buffer_size : 0;
    for (int i = 0; i < plan.subplan_count; ++i) bytes += scratch_bytes(*plan.subplans[i]);
    return bytes;
}

bool has_function(const fft_plan& plan, const char* name) {
    if (strstr(plan.execute_name, name)) return true;
    for (int i = 0; i < plan.subplan_count; ++i)
        if (has_function(*plan.subplans[i], name)) return true;
    return false;
}

// Workers that couldn't be made cost an execution nothing but time.
bool may_complete_without(const fft_plan& plan) { return has_function(plan, "multithread"); }

// A plan that allocates beside its records' scratch, for every execution.
bool allocates_anyway(const fft_plan& plan) {
    return has_function(plan, "multithread") || has_function(plan, "bufferization");
}

bool is_identity_in_place(const fft_plan& p) { return p.in == p.out && p.rank == 1 && p.dims[0].n == 1; }

void expect_complete_or_untouched(const planned_execution& e) {
    const arrays complete = result_with(e, any_number);
    EXPECT_FALSE(complete == e.before() && !is_identity_in_place(e.plan())) << "writes nothing\n" << e.text();
    const int needed = asked;
    if (scratch_bytes(e.plan()) == 0 && !allocates_anyway(e.plan())) {
        EXPECT_EQ(needed, 0) << "allocates, though it needs no scratch\n" << e.text();
    }
    for (int allowed = 0; allowed < needed; ++allowed) {
        const arrays got = result_with(e, allowed);
        if (!may_complete_without(e.plan())) {
            EXPECT_GT(refused, 0) << e.text();
        }
        const bool right = got == e.before() || (may_complete_without(e.plan()) && got == complete);
        EXPECT_TRUE(right) << "half a result after " << allowed << " of " << needed << " allocations\n" << e.text();
    }
}

std::string list_of_missing(const execute_parts& all, const execute_parts& found) {
    std::ostringstream missing;
    for (const std::string& name : all.names)
        if (!found.names.contains(name)) missing << "  name " << name << "\n";
    return missing.str() + list_of_missing_functions(all, found);
}

using ShortMemory = sleeping_workers;

TEST_F(ShortMemory, LeavesEveryExecutionCompleteOrUntouched) {
    execute_parts found;
    int executions = 0;
    for_each_execution([&](const planned_execution& e) {
        collect_execute_parts(e.plan(), found);
        expect_complete_or_untouched(e);
        ++executions;
    });
    const execute_parts all = execute_parts_of_this_program();
    EXPECT_GT(all.names.size(), 100u);
    EXPECT_GT(all.functions.size(), 80u);
    EXPECT_EQ(list_of_missing(all, found), "") << "not reached";
    RecordProperty("executions", executions);
    printf("%d plans, %zu names, %zu functions\n", executions, all.names.size(), all.functions.size());
}

}  // namespace
