// SPDX-License-Identifier: Apache-2.0
// From a formula to what is printed of it: one turn of a kernel's loop, recorded, ordered and finished by the passes.
#pragma once
#include <functional>
#include <vector>

#include "kernels/generator/forms/vectors.h"
#include "kernels/generator/graph/dag.h"
#include "kernels/generator/graph/value.h"

namespace generator {

// What became of a formula on its way, to be shown.
struct pass_history {
    std::vector<node> recorded;  // the graph before the passes
    int chained = 0;             // rotated pairs whose second was made from the first
    int into_second = 0;         // results that take the register of their second operand
    int loaded_again = 0;        // inputs that are loaded more than once
    int reloaded = 0;            // operands that later users get from memory
    int joined = 0;              // stores that waited for their neighbours
};

struct body {
    dag graph;
    std::vector<int> order;    // nodes to print, operands before their users
    bool once = false;         // constants may as well be loaded where they are used
    bool crowded = false;      // likewise, and 1/2 and 2, to leave registers to the values
    bool loads_first = false;  // no load follows a store
    pass_history did{};
};

// What passes must know of the place where a body stands.
struct surroundings {
    const vectors* in = nullptr;  // null: any that overwrite nothing
    bool loads_first = false;     // input and output may be one array: no load follows a store
    bool once = false;            // not the body of a loop
    bool loads_again = false;     // loads cost less than a copy or a place in memory
    int output_parts = 1;         // see order_wishes
    int input_blocks = 0;
    bool alone = false;  // nothing else runs at the time: results are waited for
};

// `formula` loads, computes and stores.
body record(pool constants, const surroundings& where, const std::function<void(body&)>& formula);

// For formulas: inputs 0 to count - 1; an output of real data, whose pending negation is carried out; outputs of
// complex data, made ready to be stored.
values load_all(dag& g, int count);
void store_real(dag& g, int slot, value v);
values ready(body& b, values outputs);

}  // namespace generator
