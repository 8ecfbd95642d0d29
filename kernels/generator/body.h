// SPDX-License-Identifier: Apache-2.0
// What one turn of a kernel's loop computes: loads, twiddle multiplications, the butterfly, stores, in the order in
// which they are to be printed.
#pragma once
#include "kernels/generator/dag.h"

namespace generator {

struct body_kind {
    int size, sign;
    bool twiddled = false;  // elements 1 and up are multiplied by twiddles
    // Lanes that are rows of the input, each row contiguous: vectors are loaded along the rows and transposed.
    // 1 where vectors are loaded as they are needed.
    int transposed_rows = 1;
    // Loads must all stand before the first store, since input and output may be one array.
    bool in_place = false;
};

// Slot of a load along the rows: `count` complex numbers at `column` of `row`.
struct row_slot {
    int row, column, count;
    int pack() const { return (row * 64 + column) * 8 + count; }
    static row_slot unpack(int slot) { return {slot / 8 / 64, slot / 8 % 64, slot % 8}; }
};

struct body {
    dag graph;
    std::vector<int> order;  // nodes to print, operands before their users
};

body make_body(const body_kind& kind);

}  // namespace generator
