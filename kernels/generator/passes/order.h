// SPDX-License-Identifier: Apache-2.0
// The order in which a body's operations are printed. Compilers are told to keep it.
#pragma once
#include "kernels/generator/graph/dag.h"

namespace generator {

// With `loads_first` no load follows a store.
std::vector<int> print_order(const dag& graph, bool loads_first);

}  // namespace generator
