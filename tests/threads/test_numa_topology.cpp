// SPDX-License-Identifier: Apache-2.0
// Reading the node folder: machines that are made up, files that are missing or strange, and the machine that runs
// this.
#include "made_up_machine.h"

#include <vector>

namespace {

using cpus = std::vector<int32_t>;

cpus list_of(const numa_tables& t, int node) {
    const int32_t* row = t.numa_cpu_list[node];
    const cpus listed(row, std::find(row, row + numa_cpu_cap, -1));
    for (size_t i = listed.size(); i < numa_cpu_cap; ++i) EXPECT_EQ(row[i], -1) << "tail of node " << node;
    return listed;
}

cpus range(int first, int count) {
    cpus all;
    for (int i = 0; i < count; ++i) all.push_back(first + i);
    return all;
}

cpus row(const int32_t (&values)[numa_node_cap]) { return cpus(values, values + numa_node_cap); }

TEST(Topology, ReadsOneNode) {
    made_up_machine machine;
    machine.node(0, "ff\n", "10\n");
    const auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(t->numa_node_count, 1);
    EXPECT_EQ(t->numa_node_bits, 1u);
    EXPECT_EQ(list_of(*t, 0), range(0, 8));
    EXPECT_EQ(row(t->numa_sorted_nodes[0]), (cpus{0, -1, -1, -1}));
    EXPECT_EQ(row(t->numa_sorted_distance[0]), (cpus{10, -1, -1, -1}));
    EXPECT_EQ(t->numa_node_capacity[0], 8u);
    for (int k = 0; k < 4; ++k) EXPECT_EQ(t->numa_class_capacity[0][k], 2u);
    EXPECT_EQ(t->numa_topology_read, 1u);
    EXPECT_EQ(t->numa_masks_built, 1u);
    EXPECT_EQ(numa_cpu_limit(*t), -1);
}

TEST(Topology, ReadsTwoNodesOf48) {
    made_up_machine machine;
    machine.regular(2, 48, 20);
    const auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(t->numa_node_count, 2);
    EXPECT_EQ(list_of(*t, 0), range(0, 48));
    EXPECT_EQ(list_of(*t, 1), range(48, 48));
    for (int cpu = 0; cpu < 96; ++cpu) EXPECT_EQ(numa_node_of(*t, cpu), cpu / 48);
    EXPECT_EQ(numa_node_of(*t, 96), -1);
    EXPECT_EQ(row(t->numa_sorted_nodes[0]), (cpus{0, 1, -1, -1}));
    EXPECT_EQ(row(t->numa_sorted_nodes[1]), (cpus{1, 0, -1, -1}));
    EXPECT_EQ(row(t->numa_sorted_distance[1]), (cpus{10, 20, -1, -1}));
    EXPECT_EQ(numa_cpu_limit(*t), 48);
}

TEST(Topology, UsesFourOfEightNodes) {
    made_up_machine machine;
    machine.regular(8, 16, 12);
    const auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(t->numa_node_count, 4);
    EXPECT_EQ(t->numa_node_bits, 15u);
    for (int node = 0; node < 4; ++node) EXPECT_EQ(list_of(*t, node), range(16 * node, 16));
    EXPECT_EQ(numa_node_of(*t, 64), -1);
    EXPECT_EQ(row(t->numa_sorted_nodes[2]), (cpus{2, 1, 3, 0}));
    EXPECT_EQ(row(t->numa_sorted_distance[2]), (cpus{10, 12, 12, 13}));
    EXPECT_EQ(numa_cpu_limit(*t), 32);
}

TEST(Topology, LimitNeedsEvenCounts) {
    made_up_machine machine;
    machine.regular(3, 16, 12);
    EXPECT_EQ(numa_cpu_limit(*machine.read()), -1);
    made_up_machine odd;
    odd.regular(2, 5, 12);
    EXPECT_EQ(numa_cpu_limit(*odd.read()), -1);
    made_up_machine empty_first_half;
    empty_first_half.node(0, "0\n", "10 20\n");
    empty_first_half.node(1, "ff\n", "20 10\n");
    EXPECT_EQ(numa_cpu_limit(*empty_first_half.read()), -1);
}

TEST(Topology, ReadsNothingWithoutAFolder) {
    auto t = std::make_unique<numa_tables>();
    numa_read_topology(*t, "/nonexistent/node");
    EXPECT_EQ(numa_count_nodes(*t, "/nonexistent/node"), 0);
    EXPECT_EQ(t->numa_node_count, -1);
    EXPECT_EQ(numa_node_of(*t, 5), 0);  // the tables are as at start
    EXPECT_NE(t->numa_topology_read, 1u);
    EXPECT_EQ(numa_cpu_limit(*t), -1);
    made_up_machine machine;  // the folder is tried again
    machine.node(0, "3\n", "10\n");
    EXPECT_EQ(numa_count_nodes(*t, machine.root().c_str()), 1);
}

TEST(Topology, HasNoNodesInAFolderWithoutThem) {
    made_up_machine machine;
    machine.write("online", "0\n");
    machine.write("node", "");
    machine.write("nodes/x", "");
    machine.write("node4/cpumap", "ff\n");
    const auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(numa_count_nodes(*t, machine.root().c_str()), -1);
    EXPECT_EQ(t->numa_node_count, -1);
    EXPECT_EQ(numa_node_of(*t, 0), -1);
    EXPECT_NE(t->numa_topology_read, 1u);
    EXPECT_EQ(numa_cpu_limit(*t), -1);
}

TEST(Topology, NodeCountIsCached) {
    made_up_machine machine;
    machine.regular(2, 4, 20);
    const auto t = machine.read();
    machine.regular(4, 4, 20);
    EXPECT_EQ(numa_count_nodes(*t, machine.root().c_str()), 2);
    EXPECT_EQ(numa_count_nodes(*t, "/nonexistent"), 2);
}

// The number behind "node" is read like a C constant, and anything may follow it.
TEST(Topology, CountsWhateverBeginsWithANodeNumber) {
    made_up_machine machine;
    machine.write("node0x2/cpumap", "");
    machine.write("node03.old/cpumap", "");
    machine.write("node4294967295/cpumap", "");  // -1 in 32 bits
    machine.write("node-7/cpumap", "");
    auto t = std::make_unique<numa_tables>();
    EXPECT_EQ(numa_count_nodes(*t, machine.root().c_str()), 4);
    EXPECT_EQ(t->numa_node_bits, 12u);
}

// A gap in the numbers leaves the count above the number of nodes, and reading stops there.
TEST(Topology, GapStopsReading) {
    made_up_machine machine;
    machine.node(0, "f\n", "10 20\n");
    machine.node(2, "f0\n", "20 10\n");
    const auto t = machine.read_with_all_cpus_allowed();
    EXPECT_EQ(t->numa_node_count, 3);
    EXPECT_EQ(t->numa_node_bits, 5u);
    EXPECT_EQ(list_of(*t, 0), range(0, 4));
    EXPECT_EQ(list_of(*t, 1), cpus{});
    EXPECT_EQ(list_of(*t, 2), cpus{});
    EXPECT_NE(t->numa_topology_read, 1u);
    for (int i = 0; i < numa_node_cap; ++i) EXPECT_EQ(row(t->numa_sorted_nodes[i]), (cpus{0, 0, 0, 0}));
}

TEST(Topology, UnreadableCpumapStopsReading) {
    for (bool missing : {false, true}) {
        made_up_machine machine;
        machine.regular(3, 8, 20);
        machine.remove("node1/cpumap");
        if (!missing) machine.unreadable("node1/cpumap");
        const auto t = machine.read();
        EXPECT_EQ(list_of(*t, 0), range(0, 8));
        EXPECT_EQ(list_of(*t, 1), cpus{});
        EXPECT_EQ(list_of(*t, 2), cpus{});
        EXPECT_EQ(numa_node_of(*t, 17), -1);
        EXPECT_EQ(row(t->numa_sorted_nodes[0]), (cpus{0, 0, 0, 0}));
    }
}

TEST(Topology, EmptyCpumapIsAnEmptyNode) {
    made_up_machine machine;
    machine.regular(2, 8, 20);
    machine.write("node0/cpumap", "");
    const auto t = machine.read();
    EXPECT_EQ(list_of(*t, 0), cpus{});
    EXPECT_EQ(list_of(*t, 1), range(8, 8));
    EXPECT_EQ(t->numa_topology_read, 1u);
}

struct map_case {
    const char* text;
    cpus expected;
};

TEST(Topology, ReadsCpuMaps) {
    const map_case cases[] = {
        {"ff,ffffffff\n", range(0, 40)},
        {"1\n", {0}},
        {"8\n", {3}},
        {"80000001\n", {0, 31}},
        {"a5", {0, 2, 5, 7}},
        {"00000000,00000000\n", {}},
        {"\n", {}},
        {"f\nffff\n", range(0, 4)},
        {",,3,,\n", {0, 1}},
        // An upper-case digit isn't decoded: the kernel prints lower case. 'A' less 87 has bits 1, 3, 5 to 31 but 2, 4.
        {"A\n",
         {1, 3, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31}},
    };
    for (const map_case& c : cases) {
        made_up_machine machine;
        machine.node(0, c.text, "10\n");
        EXPECT_EQ(list_of(*machine.read(), 0), c.expected) << c.text;
    }
}

TEST(Topology, CpusFrom160OnAreNotListed) {
    made_up_machine machine;
    machine.node(0, made_up_machine::cpu_map(0, 192), "10 20\n");
    machine.node(1, made_up_machine::cpu_map(192, 192), "20 10\n");
    const auto t = machine.read();
    EXPECT_EQ(list_of(*t, 0), range(0, 160));
    EXPECT_EQ(list_of(*t, 1), cpus{});
    EXPECT_EQ(numa_node_of(*t, 159), 0);
    EXPECT_EQ(numa_node_of(*t, 160), -1);
    EXPECT_EQ(numa_node_of(*t, 1023), -1);
    EXPECT_EQ(numa_node_of(*t, -1), -1);
    EXPECT_EQ(numa_cpu_limit(*t), 160);
}

TEST(Topology, ReadsLongMaps) {
    made_up_machine machine;
    machine.node(0, made_up_machine::cpu_map(0, 2112), "10\n");  // 66 groups: 593 characters and a newline
    EXPECT_EQ(list_of(*machine.read(), 0), range(0, 160));
    machine.node(0, std::string(598, '0') + "1", "10\n");  // 599 digits fit
    EXPECT_EQ(list_of(*machine.read(), 0), range(0, 1));
    machine.node(0, std::string(598, '0') + "10", "10\n");  // what doesn't fit is dropped
    EXPECT_EQ(list_of(*machine.read(), 0), range(0, 1));
    machine.node(0, std::string(5000, 'f'), "10\n");
    EXPECT_EQ(list_of(*machine.read(), 0), range(0, 160));
}

TEST(Topology, RowsAreSortedByDistance) {
    made_up_machine machine;
    machine.node(0, "f\n", "10 32 21 15\n");
    machine.node(1, "f0\n", "0x20 012 9 9\n");  // as strtoul reads them in base 0: 32 10 9 9
    machine.node(2, "f00\n", "21 9 10 40\n");
    machine.node(3, "f000\n", "15 9 40 10\n");
    const auto t = machine.read();
    EXPECT_EQ(row(t->numa_sorted_nodes[0]), (cpus{0, 3, 2, 1}));
    EXPECT_EQ(row(t->numa_sorted_distance[0]), (cpus{10, 15, 21, 32}));
    EXPECT_EQ(row(t->numa_sorted_nodes[1]), (cpus{2, 3, 1, 0}));
    EXPECT_EQ(row(t->numa_sorted_distance[1]), (cpus{9, 9, 10, 32}));
}

// Equal distances end where the exchange leaves them: 1 and 0 swap, then 1 and 2.
TEST(Topology, SortsEqualDistancesAsTold) {
    made_up_machine machine;
    machine.node(0, "f\n", "20 20 10\n");
    machine.node(1, "f0\n", "10 10 10\n");
    machine.node(2, "f00\n", "12 11 10\n");
    const auto t = machine.read();
    EXPECT_EQ(row(t->numa_sorted_nodes[0]), (cpus{2, 1, 0, -1}));
    EXPECT_EQ(row(t->numa_sorted_nodes[1]), (cpus{0, 1, 2, -1}));
    EXPECT_EQ(row(t->numa_sorted_nodes[2]), (cpus{2, 1, 0, -1}));
}

TEST(Topology, StopsReadingAtUnreadableDistances) {
    struct {
        const char* node1;
        cpus distances_of_node1;
    } const cases[] = {
        {nullptr, {0, 0, -1, -1}},                      // missing: reading stops, the row stays zero
        {"", {0, 0, -1, -1}},                           // empty
        {"x 10\n", {0, 0, -1, -1}},                     // no number
        {"18446744073709551615 10\n", {0, 0, -1, -1}},  // out of range
        {"20\n", {0, 20, -1, -1}},                      // too short: the rest reads as zero, and sorts first
    };
    for (const auto& c : cases) {
        made_up_machine machine;
        machine.node(0, "f\n", "10 20\n");
        machine.node(1, "f0\n", c.node1 ? c.node1 : "");
        if (!c.node1) machine.remove("node1/distance");
        const auto t = machine.read();
        SCOPED_TRACE(c.node1 ? c.node1 : "(no file)");
        EXPECT_EQ(row(t->numa_sorted_distance[0]), (cpus{10, 20, -1, -1}));
        EXPECT_EQ(row(t->numa_sorted_distance[1]), c.distances_of_node1);
        EXPECT_EQ(t->numa_topology_read, 1u);
    }
}

TEST(Topology, MasksHoldAllowedCpusOnly) {
    made_up_machine machine;
    machine.regular(2, 8, 20);
    const auto t = machine.read();
    cpu_set_t allowed;
    CPU_ZERO(&allowed);
    for (int cpu : {0, 1, 5, 9, 13, 100, 1000}) CPU_SET(cpu, &allowed);
    numa_build_masks(*t, allowed);
    EXPECT_EQ(t->numa_node_capacity[0], 3u);
    EXPECT_EQ(t->numa_node_free[1], 2u);
    const uint32_t node0[] = {1, 2, 0, 0}, node1[] = {0, 2, 0, 0};
    for (int k = 0; k < 4; ++k) {
        EXPECT_EQ(t->numa_class_capacity[0][k], node0[k]) << k;
        EXPECT_EQ(t->numa_class_free[1][k], node1[k]) << k;
    }
    EXPECT_TRUE(CPU_ISSET(5, &t->numa_class_mask[0][1]));
    EXPECT_EQ(CPU_COUNT(&t->numa_class_mask[0][1]), 2);
    EXPECT_EQ(CPU_COUNT(&t->numa_node_mask[0]), 3);
    EXPECT_EQ(CPU_COUNT(&t->numa_node_mask[1]), 2);
    EXPECT_EQ(CPU_COUNT(&t->numa_node_mask[2]), 0);

    // Built again with other CPUs: class masks and counts are new, node masks are added to.
    CPU_ZERO(&allowed);
    CPU_SET(2, &allowed);
    numa_build_masks(*t, allowed);
    EXPECT_EQ(t->numa_node_capacity[0], 1u);
    EXPECT_EQ(t->numa_node_capacity[1], 0u);
    EXPECT_EQ(CPU_COUNT(&t->numa_class_mask[0][1]), 0);
    EXPECT_EQ(CPU_COUNT(&t->numa_node_mask[0]), 4);
}

TEST(Topology, ReservedCpusLeaveTheClassMasks) {
    made_up_machine machine;
    machine.regular(2, 8, 20);
    const auto t = machine.read_with_all_cpus_allowed();
    for (int32_t cpu : {13, 13, -1, 160, 1024, INT32_MAX}) numa_reserve_cpu(*t, cpu);
    EXPECT_EQ(t->numa_class_free[1][1], 1u);
    EXPECT_FALSE(CPU_ISSET(13, &t->numa_class_mask[1][1]));
    EXPECT_TRUE(CPU_ISSET(13, &t->numa_node_mask[1]));
    numa_reset_free(*t);
    EXPECT_EQ(t->numa_class_free[1][1], 2u);
}

// Only what must hold anywhere.
TEST(Topology, IsConsistentOnThisMachine) {
    auto t = std::make_unique<numa_tables>();
    numa_read_topology(*t, numa_system_root);
    if (t->numa_topology_read != 1) {  // no readable folder of nodes here
        EXPECT_EQ(numa_cpu_limit(*t), -1);
        return;
    }
    ASSERT_GE(t->numa_node_count, 1);
    ASSERT_LE(t->numa_node_count, numa_node_cap);
    for (int node = 0; node < t->numa_node_count; ++node) {
        const cpus listed = list_of(*t, node);
        EXPECT_TRUE(std::is_sorted(listed.begin(), listed.end()));
        for (int32_t cpu : listed) EXPECT_EQ(numa_node_of(*t, cpu), node);
        EXPECT_EQ(t->numa_sorted_nodes[node][0], node);
    }
}

}  // namespace
