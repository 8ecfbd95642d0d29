// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/rows.h"

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

body record_rows(int size, int sign, const surroundings& where) {
    if (has_row_in_pairs(size))
        return record(constants_of(size / 2, sign), where,
                      [&](body& b) { store_row(b, 0, butterfly_of_row_in_pairs(load_row(b.graph, 0, size), sign)); });
    return record(constants_of(size, sign), where, [&](body& b) {
        const auto [first, second] =
            butterfly_of_two_rows({load_row(b.graph, 0, size), load_row(b.graph, 1, size)}, size, sign);
        store_row(b, 0, first);
        store_row(b, 1, second);
    });
}

}  // namespace

body make_rows_body(int size, int sign, const vectors& in) {
    const surroundings where = {.in = &in, .loads_first = true};
    body b = record_rows(size, sign, where);
    b.did.joined = join_stores(b.graph, b.order, [&](int slot) {
        const auto [row, vector] = row_slot::unpack(slot);
        return row * 4 * size + 2 * first_in_vector(vector, size);
    });
    return b;
}

}  // namespace generator
