// SPDX-License-Identifier: Apache-2.0
// The cutting of a transpose that knows no cache size: the longer side is cut at a power of two until both sides are at
// most leaf_side, so that at some depth both source and destination of a part fit into each cache there is.
#pragma once
#include <algorithm>
#include <bit>
#include <cstdint>

constexpr int64_t leaf_side = 16;

// The largest power of two strictly below x, for x of 2 and above.
inline int64_t power_below(int64_t x) { return static_cast<int64_t>(std::bit_floor(static_cast<uint64_t>(x - 1))); }

// Calls leaf(row, column, rows, columns) for every leaf of the part that starts at (row, column).
template <class leaf_function>
void for_each_leaf(int64_t row, int64_t column, int64_t rows, int64_t columns, const leaf_function& leaf) {
    while (rows > leaf_side || columns > leaf_side) {
        if (rows > columns) {  // rows alone are above the leaf's side, or they are the longer side
            const int64_t cut = power_below(rows);
            for_each_leaf(row, column, cut, columns, leaf);
            row += cut;
            rows -= cut;
        } else {
            const int64_t cut = power_below(columns);
            for_each_leaf(row, column, rows, cut, leaf);
            column += cut;
            columns -= cut;
        }
    }
    leaf(row, column, rows, columns);
}
