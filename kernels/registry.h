// SPDX-License-Identifier: Apache-2.0
// Every generated kernel, for tests and benchmarks: one row for each row of the forms table, in its order.
#pragma once

using any_kernel = void (*)();

struct kernel_family {
    const char* name;
    // Forward, backward: slot s - 1 holds the kernel of size s. Null for a direction that the family hasn't.
    const any_kernel* tables[2];
};

extern const kernel_family kernel_families[];
extern const int kernel_family_count;

// The constants of the complex kernels, as built. Sizes without constants have no row.
struct kernel_pool {
    int size;
    int pairs;
    const float* floats[2];  // forward, backward
};

extern const kernel_pool kernel_pools[];
extern const int kernel_pool_count;
