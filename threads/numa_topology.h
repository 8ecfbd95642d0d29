// SPDX-License-Identifier: Apache-2.0
// The machine's NUMA layout as tables, read from the files of the kernel below a root folder, and what follows from
// the tables alone. A cluster is four consecutive CPU numbers whose first is a multiple of 4; a CPU's class is its
// place within its cluster.
#pragma once
#include <sched.h>
#include <cstdint>

constexpr int numa_node_cap = 4;    // nodes with a higher number are ignored
constexpr int numa_cpu_cap = 160;   // CPUs of one node, and CPU numbers, that the lists hold
constexpr int cpu_class_count = 4;  // CPUs in a cluster
constexpr int cpu_mask_bits = 1024;
static_assert(sizeof(cpu_set_t) * 8 == cpu_mask_bits);

// All zero at start but where it says otherwise. The pool keeps one, guarded by its lock.
struct numa_tables {
    int32_t numa_node_count = -1;                        // highest node number found, plus one; -1 while not read
    uint64_t numa_node_bits;                             // bit i is set when node i exists
    uint64_t numa_local_mode;                            // 1 once a thread has asked for a count of its own
    int32_t numa_cpu_list[numa_node_cap][numa_cpu_cap];  // ascending, the free tail filled with -1
    int32_t numa_node_of_cpu[numa_cpu_cap];              // -1 for a CPU in no list
    uint32_t numa_distance[numa_node_cap][numa_node_cap];
    int32_t numa_sorted_nodes[numa_node_cap][numa_node_cap];     // per node, the nodes in ascending distance;
    int32_t numa_sorted_distance[numa_node_cap][numa_node_cap];  // -1 in unused slots
    cpu_set_t numa_node_mask[numa_node_cap];                     // the CPUs of a node that the process may run on
    cpu_set_t numa_class_mask[numa_node_cap][cpu_class_count];
    uint32_t numa_class_capacity[numa_node_cap][cpu_class_count];  // counted when the masks were built
    uint32_t numa_class_free[numa_node_cap][cpu_class_count];      // what placements have left of it
    uint32_t numa_node_capacity[numa_node_cap];
    uint32_t numa_node_free[numa_node_cap];
    uint32_t numa_topology_read = ~uint32_t{0};  // 1 when a reading has finished
    uint32_t numa_masks_built = ~uint32_t{0};    // 1 when the masks are built
};

constexpr char numa_system_root[] = "/sys/devices/system/node";

// The number of nodes by the folder below `root`, cached in the tables; 0 when there is no folder, -1 when it has no
// nodes.
int32_t numa_count_nodes(numa_tables& tables, const char* root);

// Reads one node's CPUs. Returns 0, or -1 when the file can't be read.
int numa_read_cpus(numa_tables& tables, const char* root, int node);

// Reads what it can of the distances between nodes and stops at the first file that it can't.
void numa_read_distances(numa_tables& tables, const char* root);

// All of the above and the sorted rows.
void numa_read_topology(numa_tables& tables, const char* root);

// Pure functions of the tables.
void numa_sort_nodes(numa_tables& tables);
void numa_build_masks(numa_tables& tables, const cpu_set_t& allowed);
void numa_reset_free(numa_tables& tables);
int32_t numa_node_of(const numa_tables& tables, int32_t cpu);  // -1 for a CPU that no list can hold

// The CPUs of the first half of the nodes, so that a team stays there; -1 (no limit) when they don't divide evenly.
int32_t numa_cpu_limit(const numa_tables& tables);

// Takes a CPU out of every class mask and count.
void numa_reserve_cpu(numa_tables& tables, int32_t cpu);
