// SPDX-License-Identifier: Apache-2.0
// Where a new worker goes: decisions as pure functions of the tables and of the thread that makes the worker.
#pragma once
#include "record/thread_state.h"
#include "threads/numa_topology.h"

// A set of CPUs to bind a worker to, and where it counts.
struct numa_place {
    int32_t node = -1;  // -1: no place was found
    int32_t cpu_class;  // -1: the whole node
    cpu_set_t cpus;
};

// How many positions of the node's sorted row are its neighbourhood. 0 when the node has none, or is the only one.
int numa_near_count(const numa_tables& tables, int32_t node);

// The first free class of the nodes at positions `from` to `to` - 1 of the caller's sorted row. Every cluster of
// these nodes gets a worker before any gets a second one, and the caller's cluster comes last in the first round.
numa_place numa_spread_place(const numa_tables& tables, const thread_state& caller, int from, int to);

// The nearest node with a free CPU, one CPU of the caller's own node being left to the caller.
numa_place numa_close_place(const numa_tables& tables, const thread_state& caller);

// Counts a worker that was bound to the place.
void numa_count_placed(numa_tables& tables, const numa_place& place);
