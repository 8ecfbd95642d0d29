// SPDX-License-Identifier: Apache-2.0
// Transforms of rows that are loaded and stored as they lie, two numbers to a vector: lane d of vector j holds
// x[2 j + d]. Lanes are exchanged in registers, so that no number is loaded or stored by itself.
#pragma once
#include "kernels/generator/graph/value.h"

namespace generator {

// One row of size n = 2 m, m even: m-point transforms of the even and of the odd elements, which are the lanes, and
// one exchange that leaves each in vectors of its own, for the last step of radix 2.
constexpr bool has_row_in_pairs(int n) { return n % 4 == 0; }
values butterfly_of_row_in_pairs(const values& x, int sign);

// Two rows of any size: exchanged into the lanes, a row in each, and back.
struct two_rows {
    values first, second;
};
values rows_into_lanes(const two_rows& x, int n);
two_rows rows_from_lanes(const values& y);

// The vectors of a row: whole ones, the last of an odd row overlapping the one before it. Where vector i begins.
constexpr int vectors_of_row(int n) { return (n + 1) / 2; }
constexpr int first_in_vector(int i, int n) { return 2 * i + 2 <= n ? 2 * i : n - 2; }

}  // namespace generator
