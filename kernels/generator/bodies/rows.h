// SPDX-License-Identifier: Apache-2.0
// Complex rows loaded and stored whole: one row, or two at once.
#pragma once
#include "kernels/generator/bodies/recording.h"
#include "kernels/generator/formulas/rows_in_pairs.h"

namespace generator {

// Vector `vector` of row 0 or 1.
struct row_slot {
    int row, vector;
    int pack() const { return row * 64 + vector; }
    static row_slot unpack(int slot) { return {slot / 64, slot % 64}; }
};

constexpr int rows_of_body(int size) { return has_row_in_pairs(size) ? 1 : 2; }
body make_rows_body(int size, int sign, const vectors& in);

}  // namespace generator
