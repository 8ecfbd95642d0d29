// SPDX-License-Identifier: Apache-2.0
// Stores that wait for a later one beside them: one instruction then stores both.
#pragma once
#include <functional>
#include <vector>

#include "kernels/generator/graph/dag.h"

namespace generator {

// `start` tells at which number a store of a whole vector begins, or -1 for one that stays alone.
// Returns how many waited.
int join_stores(const dag& graph, std::vector<int>& order, const std::function<int(int slot)>& start);

}  // namespace generator
