// SPDX-License-Identifier: Apache-2.0
// Where workers go on machines that are made up: pure decisions, no thread is bound.
#include "made_up_machine.h"
#include "threads/numa_placement.h"

#include <string>
#include <vector>

namespace {

thread_state caller_at(const numa_tables& t, int32_t cpu) {
    thread_state caller;
    caller.cpu = cpu;
    caller.node = numa_node_of(t, cpu);
    caller.cluster_cpu = static_cast<uint32_t>(cpu) & ~3u;
    return caller;
}

std::string text(const cpu_set_t& set) {
    std::string all;
    for (int cpu = 0; cpu < cpu_mask_bits; ++cpu)
        if (CPU_ISSET(cpu, &set)) all += (all.empty() ? "" : " ") + std::to_string(cpu);
    return all;
}

numa_place spread(const numa_tables& t, const thread_state& caller) {
    const int near = numa_near_count(t, caller.node);
    numa_place place = numa_spread_place(t, caller, 0, near);
    return place.node >= 0 ? place : numa_spread_place(t, caller, near, t.numa_node_count);
}

// The CPUs that worker after worker is bound to, until none is placed.
std::vector<std::string> places(numa_tables& t, const thread_state& caller,
                                numa_place (*choose)(const numa_tables&, const thread_state&)) {
    std::vector<std::string> all;
    for (numa_place place = choose(t, caller); place.node >= 0; place = choose(t, caller)) {
        numa_count_placed(t, place);
        all.push_back(text(place.cpus));
        if (all.size() > 2000) break;
    }
    return all;
}

using expected = std::vector<std::string>;

TEST(Spread, StartsBehindACallerOnTheFirstCpuOfItsCluster) {
    made_up_machine machine;
    machine.node(0, "ff\n", "10\n");
    const auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(places(*t, caller_at(*t, 0), spread), (expected{"4", "1 5", "1 5", "2 6", "2 6", "3 7", "3 7"}));
}

// The caller's cluster is spared in the first round; the second gives its first CPU back in place of the caller's.
TEST(Spread, StartsInsideTheCallersCluster) {
    made_up_machine machine;
    machine.node(0, "ff\n", "10\n");
    auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(places(*t, caller_at(*t, 5), spread), (expected{"0", "1 4", "1 4", "2 6", "2 6", "3 7", "3 7"}));
    t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(places(*t, caller_at(*t, 6), spread), (expected{"0", "1 4 5", "1 4 5", "1 4 5", "2", "3 7", "3 7"}));
}

TEST(Spread, TakesNearNodesClusterByCluster) {
    made_up_machine machine;
    machine.regular(2, 8, 20);  // near
    auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(numa_near_count(*t, 1), 2);
    const expected near = {"8", "0 4", "0 4", "9 13", "9 13", "1 5", "1 5"};
    expected got = places(*t, caller_at(*t, 12), spread);
    EXPECT_EQ(got.size(), 15u);
    got.resize(near.size());
    EXPECT_EQ(got, near);
}

// With the other node far, near is 0 and both nodes are searched at once, class by class.
TEST(Spread, GoesByTurnsOverFarNodes) {
    made_up_machine machine;
    machine.regular(2, 4, 21);
    auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(numa_near_count(*t, 0), 0);
    EXPECT_EQ(places(*t, caller_at(*t, 0), spread), (expected{"4", "1", "5", "2", "6", "3", "7"}));
}

TEST(Spread, TakesNearNodesBeforeFarOnes) {
    made_up_machine machine;
    machine.node(0, "f\n", "10 12 30 30\n");
    machine.node(1, "f0\n", "12 10 30 30\n");
    machine.node(2, "f00\n", "30 30 10 12\n");
    machine.node(3, "f000\n", "30 30 12 10\n");
    auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(numa_near_count(*t, 0), 2);
    EXPECT_EQ(places(*t, caller_at(*t, 0), spread),
              (expected{"4", "1", "5", "2", "6", "3", "7", "8", "12", "9", "13", "10", "14", "11", "15"}));
}

TEST(Spread, WithLocalCountsTheCallerNeedsNoCare) {
    made_up_machine machine;
    machine.node(0, "ff\n", "10\n");
    const auto t = machine.read_with_all_cpus_allowed();
    t->numa_local_mode = 1;
    numa_reserve_cpu(*t, 0);
    numa_reserve_cpu(*t, 6);
    EXPECT_EQ(places(*t, caller_at(*t, 0), spread), (expected{"4", "1 5", "1 5", "2", "3 7", "3 7"}));
}

// The caller's CPU isn't allowed any more: the first round counts it all the same, and the count may fall below zero.
TEST(Spread, CountsBelowZeroPlaceNothing) {
    made_up_machine machine;
    machine.node(0, "f\n", "10\n");
    const auto t = machine.read();
    cpu_set_t none;
    CPU_ZERO(&none);
    numa_build_masks(*t, none);
    EXPECT_EQ(places(*t, caller_at(*t, 0), spread), expected{});
    EXPECT_EQ(places(*t, caller_at(*t, 0), numa_close_place), expected{});
    // One CPU, which round 1 gives to a worker although its class has none free: the count passes zero, and stops.
    EXPECT_EQ(places(*t, caller_at(*t, 1), spread), (expected{"0"}));
    EXPECT_EQ(t->numa_class_free[0][1], ~uint32_t{0});
}

TEST(Spread, PlacesNothingForCallersWithoutNode) {
    made_up_machine machine;
    machine.regular(2, 8, 20);
    const auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(places(*t, thread_state{}, spread), expected{});  // a thread that was never located
    EXPECT_EQ(places(*t, thread_state{}, numa_close_place), expected{});
    EXPECT_EQ(places(*t, caller_at(*t, 500), spread), expected{});
    EXPECT_EQ(numa_near_count(*t, -1), 0);
}

TEST(Spread, PlacesNothingWithoutATopology) {
    auto t = std::make_unique<numa_tables>();
    EXPECT_EQ(places(*t, caller_at(*t, 0), spread), expected{});
    EXPECT_EQ(places(*t, caller_at(*t, 0), numa_close_place), expected{});
}

// Every sorted row is zero then, so every position names node 0.
TEST(Spread, UsesNode0OfAHalfReadTopology) {
    made_up_machine machine;
    machine.regular(3, 4, 20);
    machine.remove("node1/cpumap");
    const auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(places(*t, caller_at(*t, 0), spread)[0], "0");  // position 1, which spares nobody
}

TEST(Close, FillsTheNearestNodeButOneCpu) {
    made_up_machine machine;
    machine.regular(3, 3, 15);
    const auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(places(*t, caller_at(*t, 4), numa_close_place),
              (expected{"3 4 5", "3 4 5", "0 1 2", "0 1 2", "0 1 2", "6 7 8", "6 7 8", "6 7 8"}));
}

TEST(Close, GivesAllCpusOfOneNode) {
    made_up_machine machine;
    machine.node(0, "f\n", "10\n");
    const auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(places(*t, caller_at(*t, 2), numa_close_place), (expected{"0 1 2 3", "0 1 2 3", "0 1 2 3"}));
}

TEST(Near, CountsNodesByDistance) {
    struct {
        int nodes;
        const char* distance;
        int near;
    } const cases[] = {
        {1, "10", 0},       {2, "10 20", 2},       {2, "10 21", 0},       {3, "10 20 20", 3},    {3, "10 20 21", 2},
        {3, "10 21 21", 0}, {4, "10 11 12 20", 4}, {4, "10 11 12 21", 3}, {4, "10 11 21 21", 2}, {4, "10 21 22 23", 0},
    };
    for (const auto& c : cases) {
        made_up_machine machine;
        for (int node = 0; node < c.nodes; ++node) machine.node(node, "f\n", std::string(c.distance) + "\n");
        EXPECT_EQ(numa_near_count(*machine.read(), 0), c.near) << c.distance;
    }
}

// 95 workers beside a caller on two nodes of 48: 23 clusters get one each before any gets a second.
TEST(Spread, TwoNodesOf48AreFilledWithoutABreak) {
    made_up_machine machine;
    machine.regular(2, 48, 20);
    for (int32_t cpu : {0, 5, 47, 48, 95}) {
        auto t = machine.read_with_all_cpus_allowed();
        EXPECT_EQ(places(*t, caller_at(*t, cpu), spread).size(), 95u) << "caller on CPU " << cpu;
        t = machine.read_with_all_cpus_allowed();
        const thread_state caller = caller_at(*t, cpu);
        for (int worker = 0; worker < 23; ++worker) {
            const numa_place place = spread(*t, caller);
            ASSERT_GE(place.node, 0);
            EXPECT_EQ(place.cpu_class, 0) << "worker " << worker << ", caller on CPU " << cpu;
            EXPECT_FALSE(CPU_ISSET(caller.cluster_cpu, &place.cpus));
            numa_count_placed(*t, place);
        }
    }
}

}  // namespace
