// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/hermitian.h"

#include "kernels/generator/bodies/complex.h"
#include "kernels/generator/formulas/butterflies.h"
#include "kernels/generator/formulas/real_butterflies.h"
#include "kernels/generator/formulas/sizes.h"

namespace generator {

namespace {

// Two columns zipped: of two rows, or of four.
void store_two_columns(dag& g, int a, int b, transposed_slot first, int rows_in_half) {
    g.store(first.pack(), g.binary(op::zip_lo, a, b));
    g.store(transposed_slot{first.row + rows_in_half, first.column}.pack(), g.binary(op::zip_hi, a, b));
}

// Two columns of four rows are whole vectors only where there are no others: row 1 stands right behind row 0 then.
void store_transposed(dag& g, const values& y, int rows) {
    const int r = int(y.size());
    int c = 0;
    for (; rows == 2 && c + 2 <= r; c += 2) store_two_columns(g, y[c].n, y[c + 1].n, {0, c}, 1);
    for (; rows == 4 && c + 4 <= r; c += 4)
        for (const op half : {op::zip_lo, op::zip_hi}) {
            const int even = g.binary(half, y[c].n, y[c + 2].n), odd = g.binary(half, y[c + 1].n, y[c + 3].n);
            store_two_columns(g, even, odd, {half == op::zip_lo ? 0 : 2, c}, 1);
        }
    for (; rows == 4 && r == 2 && c < r; c += 2) store_two_columns(g, y[0].n, y[1].n, {0, 0}, 2);
    for (; c < r; ++c) g.store(transposed_slot{rows, c}.pack(), y[c].n);
}

value part(dag& g, int slot, bool one, op which) {
    if (one) return {&g, g.load(which == op::evens ? slot : slot + 1)};
    return {&g, g.binary(which, g.load(slot), g.load(slot + 1))};
}

// Is coefficient q of the row a real number?
bool is_real_input(const edge_row_kind& kind, int q) {
    if (kind.row == edge_row::zero) return q == 0 || 2 * q == kind.size;
    return 2 * q + 1 == kind.size;
}

}  // namespace

body make_hermitian_body(const hermitian_kind& kind) {
    return record(constants_of(kind.size, +1), {.in = kind.in}, [&](body& b) {
        dag& g = b.graph;
        values x = load_all(g, stored_inputs(kind.size));
        for (int q = int(x.size()); q < kind.size; ++q) x.push_back(conjugate(value{&g, g.load(q)}));
        values y = ready(b, butterfly(x, +1));
        for (int j = 1; j < kind.size; ++j) y[j].n = g.binary(op::mul, y[j].n, g.twiddle(j));
        if (kind.transposed) return store_transposed(g, y, kind.in->lanes);
        for (int j = 0; j < kind.size; ++j) g.store(j, y[j].n);
    });
}

int edge_row_inputs(int size, edge_row row) { return row == edge_row::zero ? size / 2 + 1 : stored_inputs(size); }

body make_edge_row_body(const edge_row_kind& kind) {
    const surroundings where = {.in = kind.in, .loads_first = kind.one};
    return record(pool::growing(kind.one), where, [&](body& b) {
        dag& g = b.graph;
        split_values x(edge_row_inputs(kind.size, kind.row));
        for (int q = 0; q < int(x.size()); ++q) {
            x[q].re = part(g, 2 * q, kind.one, op::evens);
            if (!is_real_input(kind, q)) x[q].im = part(g, 2 * q, kind.one, op::odds);
        }
        const auto formula = kind.row == edge_row::zero ? hermitian_butterfly : odd_hermitian_butterfly;
        const values y = formula(x, kind.size);
        for (int j = 0; j < kind.size; ++j) store_real(g, j, y[j]);
    });
}

}  // namespace generator
