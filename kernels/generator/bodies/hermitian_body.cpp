// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/hermitian_body.h"

#include <cassert>

#include "kernels/generator/formulas/butterflies.h"
#include "kernels/generator/passes/order.h"
#include "kernels/generator/formulas/real_butterflies.h"

namespace generator {

namespace {

void store_transposed(dag& g, const values& y) {
    const int r = int(y.size());
    for (int c = 0; c + 2 <= r; c += 2) {
        g.store(row_slot{0, c}.pack(), g.binary(op::zip_lo, y[c].n, y[c + 1].n));
        g.store(row_slot{1, c}.pack(), g.binary(op::zip_hi, y[c].n, y[c + 1].n));
    }
    if (r % 2) g.store(row_slot{2, r - 1}.pack(), y[r - 1].n);
}

value loaded(dag& g, int slot, bool one, op part) {
    if (one) return {&g, g.load(part == op::evens ? slot : slot + 1)};
    return {&g, g.binary(part, g.load(slot), g.load(slot + 1))};
}

// A pending negation costs an operation, unless it turns a difference round.
void store_real(dag& g, int slot, value v) {
    if (v.quarters == 2) {
        const node u = g.nodes()[v.n];
        v.n = u.what == op::sub ? g.binary(op::sub, u.b, u.a) : g.binary(op::neg, v.n, none);
    }
    g.store(slot, v.n);
}

// Is coefficient q of the row a real number?
bool is_real_input(const real_row_kind& kind, int q) {
    if (kind.row == real_row::zero) return q == 0 || 2 * q == kind.size;
    return 2 * q + 1 == kind.size;
}

}  // namespace

body make_hermitian_body(const hermitian_kind& kind) {
    body result{dag(pool(kind.size, +1), kind.overwrites), {}};
    dag& g = result.graph;
    values x;
    for (int q = 0; q < kind.size; ++q) {
        const value v{&g, g.load(q)};
        x.push_back(q < stored_inputs(kind.size) ? v : conjugate(v));
    }
    values y = butterfly(x, +1);
    if (kind.overwrites) chain_rotated_pairs(g, y);
    for (const value& v : y) assert(v.quarters == 0);
    for (int j = 1; j < kind.size; ++j) y[j].n = g.binary(op::mul, y[j].n, g.twiddle(j));
    if (kind.transposed)
        store_transposed(g, y);
    else
        for (int j = 0; j < kind.size; ++j) g.store(j, y[j].n);
    result.order = print_order(g, false);
    g.choose_overwritten(result.order);
    g.reload_overwritten(result.order);
    return result;
}

int real_row_inputs(const real_row_kind& kind) {
    return kind.row == real_row::zero ? kind.size / 2 + 1 : stored_inputs(kind.size);
}

body make_real_row_body(const real_row_kind& kind) {
    body result{dag(pool::growing(kind.one), kind.overwrites), {}};
    dag& g = result.graph;
    split_values x(real_row_inputs(kind));
    for (int q = 0; q < int(x.size()); ++q) {
        x[q].re = loaded(g, 2 * q, kind.one, op::evens);
        if (!is_real_input(kind, q)) x[q].im = loaded(g, 2 * q, kind.one, op::odds);
    }
    const values y =
        kind.row == real_row::zero ? hermitian_butterfly(x, kind.size) : odd_hermitian_butterfly(x, kind.size);
    for (int j = 0; j < kind.size; ++j) store_real(g, j, y[j]);
    result.order = print_order(g, kind.one);
    g.choose_overwritten(result.order);
    g.reload_overwritten(result.order);
    return result;
}

}  // namespace generator
