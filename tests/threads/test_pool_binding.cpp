// SPDX-License-Identifier: Apache-2.0
// The CPUs that workers really get on this machine, read back from the system, against the decisions for its tables.
#include "include/qfftf.h"
#include "loop_record.h"
#include "support/faults.h"
#include "threads/numa_placement.h"

#include <vector>

namespace {

constexpr int workers = 4;

cpu_set_t cpus_of_this_thread() {
    cpu_set_t cpus;
    CPU_ZERO(&cpus);
    pthread_getaffinity_np(pthread_self(), sizeof cpus, &cpus);
    return cpus;
}

void pin_to(const cpu_set_t& cpus) { ASSERT_EQ(sched_setaffinity(0, sizeof cpus, &cpus), 0); }

cpu_set_t only(int cpu) {
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(cpu, &one);
    return one;
}

std::vector<int> members(const cpu_set_t& set) {
    std::vector<int> all;
    for (int cpu = 0; cpu < cpu_mask_bits; ++cpu)
        if (CPU_ISSET(cpu, &set)) all.push_back(cpu);
    return all;
}

class Binding : public testing::Test {
protected:
    void SetUp() override {
        everywhere = cpus_of_this_thread();
        numa_read_topology(tables, numa_system_root);
    }
    void TearDown() override {
        cpu_told = real_cpu;
        binding_fails = allowed_cpus_fail = false;
        qsl_fftf_cleanup_threads();
        pin_to(everywhere);
    }

    // Sets the count with all CPUs allowed, then holds the calling thread on one.
    void start_on(int cpu, const char* affinity) {
        setenv("QSL_FFT_AFFINITY", affinity, 1);
        pin_to(everywhere);
        numa_build_masks(tables, everywhere);
        qsl_fftf_plan_with_nthreads(workers + 1);
        pin_to(only(cpu));
        thread_refresh_binding();
    }

    // What the tables say for worker after worker; one that finds no place has the CPUs of the thread that made it.
    std::vector<std::vector<int>> expected_cpus(uint32_t mode, const thread_state& caller) {
        std::vector<std::vector<int>> all;
        for (int i = 0; i < workers; ++i) {
            numa_place place;
            if (mode == affinity_close) place = numa_close_place(tables, caller);
            if (mode == affinity_spread) {
                const int near = numa_near_count(tables, caller.node);
                place = numa_spread_place(tables, caller, 0, near);
                if (place.node < 0) place = numa_spread_place(tables, caller, near, tables.numa_node_count);
            }
            if (place.node >= 0) numa_count_placed(tables, place);
            all.push_back(members(place.node >= 0 ? place.cpus : cpus_of_this_thread()));
        }
        return all;
    }

    static std::vector<std::vector<int>> cpus_of_workers() {
        std::vector<std::vector<int>> all(workers + 1);
        thread_parallel_for(
            workers + 1, workers + 1, 1,
            [](parallel_task* task) {
                auto& seen = *static_cast<std::vector<std::vector<int>>*>(task->closure);
                seen[task->index] = members(cpus_of_this_thread());
            },
            &all);
        all.pop_back();  // the caller's own
        return all;
    }

    cpu_set_t everywhere;
    numa_tables tables{};
};

TEST_F(Binding, WorkersGetTheirCpus) {
    for (const char* affinity : {"SPREAD", "CLOSE", "NO"})
        for (int cpu : members(everywhere)) {
            SCOPED_TRACE(testing::Message() << affinity << ", caller on CPU " << cpu);
            start_on(cpu, affinity);
            const thread_state& self = this_thread_state();
            const uint32_t mode = thread_get_affinity_mode();
            if (mode != affinity_none) {
                EXPECT_EQ(self.cpu, cpu);
                EXPECT_EQ(self.node, numa_node_of(tables, cpu));
                EXPECT_EQ(self.cluster_cpu, static_cast<uint32_t>(cpu) / 4 * 4);
            }
            EXPECT_EQ(cpus_of_workers(), expected_cpus(mode, self));
            qsl_fftf_cleanup_threads();
        }
}

// A worker that can't be bound runs where its maker may, and takes no place from the next one.
TEST_F(Binding, FailuresTakeNoPlace) {
    for (const char* affinity : {"SPREAD", "CLOSE"}) {
        SCOPED_TRACE(affinity);
        const int cpu = members(everywhere).front();
        start_on(cpu, affinity);
        binding_fails = true;
        bindings_tried = 0;
        for (const std::vector<int>& cpus : cpus_of_workers()) EXPECT_EQ(cpus, std::vector<int>{cpu});
        EXPECT_LE(bindings_tried, 2 * workers);  // near and far, without another try
        binding_fails = false;
        qsl_fftf_cleanup_threads();
        EXPECT_EQ(cpus_of_workers(), expected_cpus(thread_get_affinity_mode(), this_thread_state()));
        qsl_fftf_cleanup_threads();
    }
}

TEST_F(Binding, GivesNoNodeToACpuThatNoListCanHold) {
    start_on(members(everywhere).front(), "SPREAD");
    for (int cpu : {160, 161, 1023, 1024, 100000}) {
        cpu_told = cpu;
        thread_refresh_binding();
        EXPECT_EQ(this_thread_state().cpu, cpu);
        EXPECT_EQ(this_thread_state().node, -1);
        EXPECT_EQ(this_thread_state().cluster_cpu, static_cast<uint32_t>(cpu) & ~3u);
        bindings_tried = 0;
        cpus_of_workers();
        EXPECT_EQ(bindings_tried, 0);
    }
}

TEST_F(Binding, WithoutACpuNumberARefreshDoesNothing) {
    const int cpu = members(everywhere).front();
    start_on(cpu, "SPREAD");
    cpus_of_workers();
    const thread_state before = this_thread_state();
    cpu_told = -1;
    threads_made = 0;
    thread_refresh_binding();
    cpus_of_workers();
    EXPECT_EQ(threads_made, 0);
    EXPECT_EQ(this_thread_state().cpu, before.cpu);
    qsl_fftf_plan_with_nthreads(workers + 1);
    EXPECT_EQ(this_thread_state().cpu, -1);
    EXPECT_EQ(this_thread_state().node, before.node);  // the last that was known
}

// A move ends the idle workers, so that new ones are made around the new CPU; staying ends none.
TEST_F(Binding, OnlyAMoveEndsWorkers) {
    start_on(members(everywhere).front(), "SPREAD");
    cpu_told = 0;
    thread_refresh_binding();
    cpus_of_workers();
    threads_made = 0;
    thread_refresh_binding();
    cpus_of_workers();
    EXPECT_EQ(threads_made, 0);
    cpu_told = 1;
    thread_refresh_binding();
    cpus_of_workers();
    EXPECT_EQ(threads_made, workers);
}

// Its new workers find the places that those of before had.
TEST_F(Binding, AfterAMoveAllCpusAreFreeAgain) {
    const std::vector<int> cpus = members(everywhere);
    if (cpus.size() < 2) GTEST_SKIP() << "there is one CPU";
    for (const char* affinity : {"SPREAD", "CLOSE"}) {
        SCOPED_TRACE(affinity);
        start_on(cpus.front(), affinity);
        cpus_of_workers();
        cpu_told = cpus.back();
        thread_refresh_binding();
        EXPECT_EQ(cpus_of_workers(), expected_cpus(thread_get_affinity_mode(), this_thread_state()));
        cpu_told = real_cpu;
        qsl_fftf_cleanup_threads();
    }
}

TEST_F(Binding, WithoutPlacementMovesDoNotMatter) {
    start_on(members(everywhere).front(), "NO");
    cpu_told = 0;
    cpus_of_workers();
    threads_made = 0;
    cpu_told = 1;
    thread_refresh_binding();
    cpus_of_workers();
    EXPECT_EQ(threads_made, 0);
    EXPECT_NE(this_thread_state().cpu, 1);
}

TEST_F(Binding, MasksStayWhenTheAllowedCpusAreUnknown) {
    const int cpu = members(everywhere).front();
    start_on(cpu, "CLOSE");
    pin_to(everywhere);
    allowed_cpus_fail = true;
    qsl_fftf_plan_with_nthreads(workers + 1);
    EXPECT_EQ(thread_get_nthreads(), workers + 1u);
    pin_to(only(cpu));
    thread_refresh_binding();
    EXPECT_EQ(cpus_of_workers(), expected_cpus(affinity_close, this_thread_state()));
}

// Last: a process that has seen a count of one thread stays in that mode. The thread's own CPU is nobody's then, and
// what was placed stays counted when it moves.
TEST_F(Binding, FollowsLocalCounts) {
    const int cpu = members(everywhere).front();
    setenv("QSL_FFT_AFFINITY", "SPREAD", 1);
    pin_to(everywhere);
    numa_build_masks(tables, everywhere);
    cpu_told = cpu;
    qsl_fftf_plan_with_nthreads_local(workers + 1);
    tables.numa_local_mode = 1;
    numa_reserve_cpu(tables, cpu);
    thread_refresh_binding();
    std::vector<std::vector<int>> expected = expected_cpus(affinity_spread, this_thread_state());
    EXPECT_EQ(cpus_of_workers(), expected);
    cpu_told = cpu + 1;
    thread_refresh_binding();
    expected = expected_cpus(affinity_spread, this_thread_state());
    EXPECT_EQ(cpus_of_workers(), expected);
}

}  // namespace
