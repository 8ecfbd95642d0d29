// SPDX-License-Identifier: Apache-2.0
// A number of a butterfly under construction. Its operators record the graph, so that butterflies read like formulas.
// A rotation by a quarter turn is remembered, not computed: the next addition takes it in.
#pragma once
#include <vector>

#include "kernels/generator/graph/dag.h"

namespace generator {

struct value {
    dag* graph;
    int n;             // node
    int quarters = 0;  // the number is the node's times i to this power
};

using values = std::vector<value>;

inline value rotated(value a, int quarters) { return {a.graph, a.n, ((a.quarters + quarters) % 4 + 4) % 4}; }
inline value operator-(value a) { return rotated(a, 2); }
inline value times_i(value a) { return rotated(a, 1); }
// Free when it is added to a number that isn't conjugated.
inline value conjugate(value a) { return {a.graph, a.graph->scale(a.n, conjugating), -a.quarters & 3}; }

value operator+(value a, value b);
inline value operator-(value a, value b) { return a + (-b); }

// The same number without a pending negation.
value plain(value a);

// Exchanges of lanes; `transposed` takes four vectors of four.
value exchanged(op what, value a, value b);
value exchanged(op what, value a);
values transposed(const values& rows);

// Outputs of a part of a formula of this size, which the rest of it won't ask for until the end: they may wait in
// memory.
values set_aside(values v, int size);

struct pair_of_values {
    value sum, difference;
};
// a + b and a - b, in the cheapest way to get both.
pair_of_values sum_and_difference(value a, value b);
// The same, where b is turned by a quarter: the difference may come with a factor of 2 that is still to be multiplied
// by. a - i b = -2 i (b + i (a + i b) / 2) takes the register of b, and a + i b that of a.
pair_of_values with_factor_two(value a, value b);
// a + (p + q) and a - (p + q), where p and q are products.
pair_of_values sum_and_difference(value a, value p, value q);

// Real vectors of four: products with a number for each lane; and, of two complex numbers in the lanes, a + i b, a - i
// b, and products with the complex numbers of these parts.
value times(pool::lane_numbers k, value a);
value plus_i(value a, value b);
value minus_i(value a, value b);
value times(const pool::lane_numbers& re, const pool::lane_numbers& im, value a);

// A factor that the pool must hold up to its sign unless it grows.
value operator*(const exact& c, value a);

value times_root(value a, turn angle);

}  // namespace generator
