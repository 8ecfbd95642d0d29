// SPDX-License-Identifier: Apache-2.0
// What one turn of a kernel's loop computes: loads, twiddle multiplications, the butterfly, stores, in the order in
// which they are to be printed.
#pragma once
#include "kernels/generator/graph/dag.h"
#include "kernels/generator/graph/value.h"

namespace generator {

struct body_kind {
    int size, sign;
    bool twiddled = false;    // elements 1 and up are multiplied by twiddles
    bool transposed = false;  // the two lanes are rows: vectors are loaded along the rows and transposed
    // Loads must all stand before the first store, since input and output may be one array.
    bool in_place = false;
    bool overwrites = false;  // see dag
    bool once = false;        // not the body of a loop
    bool alone = false;       // nothing else runs at the time: results are waited for
};

// Slot of a load along the rows: two complex numbers at `column` of `row`.
struct row_slot {
    int row, column;
    int pack() const { return row * 64 + column; }
    static row_slot unpack(int slot) { return {slot / 64, slot % 64}; }
};

struct body {
    dag graph;
    std::vector<int> order;  // nodes to print, operands before their users
    bool once = false;       // constants may as well be loaded where they are used
};

body make_body(const body_kind& kind);

// a + i b and a - i b both end in memory: the second is made from the first, which its store has set free, so that
// a needn't be copied.
void chain_rotated_pairs(dag& g, values& outputs);

}  // namespace generator
