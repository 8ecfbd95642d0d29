// SPDX-License-Identifier: Apache-2.0
// What a body costs, read off its graph and its order.
#pragma once
#include "kernels/generator/bodies/recording.h"

namespace generator {

struct operation_counts {
    int loads, twiddles, adds, turned, scales, fused, turned_fused, products, exchanges, stores;
    int pool;  // pairs of constants, and vectors of them
    int peak;  // most vectors that are alive at once in the printed order, constants left out
    bool operator==(const operation_counts&) const = default;
};
operation_counts count_operations(const body& b);

bool same_graph(const body& a, const body& b);

}  // namespace generator
