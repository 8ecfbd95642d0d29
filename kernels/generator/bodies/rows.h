// SPDX-License-Identifier: Apache-2.0
// Complex rows loaded and stored whole: one row, or two at once.
#pragma once
#include "kernels/generator/bodies/recording.h"
#include "kernels/generator/formulas/rows_in_pairs.h"

namespace generator {

// Vector `vector` of row 0 or 1. Other slots are elements of both rows, one in each lane.
struct row_slot {
    static constexpr int first = 256;
    int row, vector;
    int pack() const { return first + row * 64 + vector; }
    static bool is_one(int slot) { return slot >= first; }
    static row_slot unpack(int slot) { return {(slot - first) / 64, slot % 64}; }
};

constexpr int rows_of_body(int size) { return has_row_in_pairs(size) ? 1 : 2; }
body make_rows_body(int size, int sign, const vectors& in);

// Two transforms, of which one side lies in rows, the other side by side.
// Of other sizes their code would take more room than they are worth.
constexpr bool has_turned_rows(int size) { return size % 4 == 0 && size <= 32; }
enum class side { input, output };
body make_turned_rows_body(int size, int sign, const vectors& in, side in_rows);

}  // namespace generator
