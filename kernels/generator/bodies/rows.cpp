// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/rows.h"

#include "kernels/generator/formulas/butterflies.h"
#include "kernels/generator/formulas/sizes.h"
#include "kernels/generator/passes/passes.h"

namespace generator {

namespace {

values load_row(dag& g, int row, int size) {
    values x;
    for (int i = 0; i < vectors_of_row(size); ++i) x.push_back({&g, g.load(row_slot{row, i}.pack())});
    return x;
}

void store_row(body& b, int row, const values& y) {
    const values outputs = ready(b, y);
    for (int i = 0; i < int(y.size()); ++i) b.graph.store(row_slot{row, i}.pack(), outputs[i].n);
}

two_rows load_rows(dag& g, int size) { return {load_row(g, 0, size), load_row(g, 1, size)}; }

void store_rows(body& b, const two_rows& y) {
    store_row(b, 0, y.first);
    store_row(b, 1, y.second);
}

// Adjacent vectors of a row go to memory together.
void join_vectors(body& b, int size) {
    b.did.joined = join_stores(b.graph, b.order, [&](int slot) {
        const auto [row, vector] = row_slot::unpack(slot);
        return row * 4 * size + 2 * first_in_vector(vector, size);
    });
}

}  // namespace

body make_rows_body(int size, int sign, const vectors& in) {
    const bool one = has_row_in_pairs(size);
    const surroundings where = {.in = &in, .loads_first = true};
    body b = record(constants_of(one ? size / 2 : size, sign), where, [&](body& recorded) {
        dag& g = recorded.graph;
        if (one)
            store_row(recorded, 0, butterfly_of_row_in_pairs(load_row(g, 0, size), sign));
        else
            store_rows(recorded, rows_from_lanes(butterfly(rows_into_lanes(load_rows(g, size), size), sign)));
    });
    join_vectors(b, size);
    return b;
}

body make_turned_rows_body(int size, int sign, const vectors& in, side in_rows) {
    const surroundings where = {.in = &in, .loads_first = true};
    body b = record(constants_of(size, sign), where, [&](body& recorded) {
        dag& g = recorded.graph;
        const bool from_rows = in_rows == side::input;
        const values x = from_rows ? rows_into_lanes(load_rows(g, size), size) : load_all(g, size);
        const values y = butterfly(x, sign);
        if (!from_rows) return store_rows(recorded, rows_from_lanes(y));
        const values outputs = ready(recorded, y);
        for (int k = 0; k < size; ++k) g.store(k, outputs[k].n);
    });
    if (in_rows == side::output) join_vectors(b, size);
    return b;
}

}  // namespace generator
