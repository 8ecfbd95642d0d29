// SPDX-License-Identifier: Apache-2.0
#include "threads/numa_placement.h"

#include <algorithm>

namespace {

constexpr int32_t far_distance = 21;  // nodes at 20 and below count as near

bool has_row(int32_t node) { return node >= 0 && node < numa_node_cap; }

// The node at a position of the caller's row, or -1.
int32_t node_at(const numa_tables& tables, const thread_state& caller, int position) {
    const int32_t node = tables.numa_sorted_nodes[caller.node][position];
    return has_row(node) ? node : -1;
}

bool in_mask(int32_t cpu, const cpu_set_t& mask) { return cpu >= 0 && cpu < cpu_mask_bits && CPU_ISSET(cpu, &mask); }

// Takes the caller's CPUs out of the candidates of its own node. Returns what is left of `available`, which may be
// below zero. In round 0 the caller's whole cluster is spared; round 1 gives its first CPU back.
int32_t spare_caller(const thread_state& caller, int cpu_class, cpu_set_t& mask, int32_t available) {
    const int32_t first_of_cluster = static_cast<int32_t>(caller.cluster_cpu);
    if (cpu_class == 0) {
        if (first_of_cluster < cpu_mask_bits) CPU_CLR(first_of_cluster, &mask);
        return available - 1;
    }
    if (cpu_class == 1 && caller.cpu != first_of_cluster) {
        if (first_of_cluster < cpu_mask_bits) CPU_SET(first_of_cluster, &mask);
        ++available;
    }
    if (in_mask(caller.cpu, mask)) {
        CPU_CLR(caller.cpu, &mask);
        --available;
    }
    return available;
}

}  // namespace

int numa_near_count(const numa_tables& tables, int32_t node) {
    const int32_t count = tables.numa_node_count;
    if (count < 2 || !has_row(node)) return 0;
    const int32_t* distance = tables.numa_sorted_distance[node];
    if (distance[1] >= far_distance) return 0;
    if (count == 2 || distance[2] >= far_distance) return 2;
    if (count == 3 || distance[3] >= far_distance) return 3;
    return 4;
}

numa_place numa_spread_place(const numa_tables& tables, const thread_state& caller, int from, int to) {
    if (!has_row(caller.node)) return {};
    for (int cpu_class = 0; cpu_class < cpu_class_count; ++cpu_class)
        for (int position = from; position < to; ++position) {
            const int32_t node = node_at(tables, caller, position);
            if (node < 0) continue;
            numa_place place = {node, cpu_class, tables.numa_class_mask[node][cpu_class]};
            int32_t available = static_cast<int32_t>(tables.numa_class_free[node][cpu_class]);
            if (tables.numa_local_mode == 0 && position == 0)
                available = spare_caller(caller, cpu_class, place.cpus, available);
            if (available > 0) return place;
        }
    return {};
}

numa_place numa_close_place(const numa_tables& tables, const thread_state& caller) {
    if (!has_row(caller.node)) return {};
    for (int position = 0; position < tables.numa_node_count; ++position) {
        const int32_t node = node_at(tables, caller, position);
        const uint32_t kept_for_caller = position == 0 ? 1 : 0;
        if (node >= 0 && tables.numa_node_free[node] > kept_for_caller) return {node, -1, tables.numa_node_mask[node]};
    }
    return {};
}

void numa_count_placed(numa_tables& tables, const numa_place& place) {
    if (place.cpu_class < 0)
        --tables.numa_node_free[place.node];
    else
        --tables.numa_class_free[place.node][place.cpu_class];
}
