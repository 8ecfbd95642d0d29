// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/real_body.h"

#include "kernels/generator/order.h"
#include "kernels/generator/real_butterflies.h"

namespace generator {

namespace {

bool has_imaginary_part(int k, int n) { return k != 0 && 2 * k != n; }

// A pending negation costs an operation, unless it turns a difference round.
void store(dag& g, int slot, value v) {
    if (v.quarters == 2) {
        const node u = g.nodes()[v.n];
        v.n = u.what == op::sub ? g.binary(op::sub, u.b, u.a) : g.binary(op::neg, v.n, none);
    }
    g.store(slot, v.n);
}

void record_forward(dag& g, int n) {
    values x;
    for (int j = 0; j < n; ++j) x.push_back({&g, g.load(j)});
    const split_values y = real_butterfly(x);
    for (int k = 0; 2 * k <= n; ++k) {
        store(g, 2 * k, y[k].re);
        if (has_imaginary_part(k, n)) store(g, 2 * k + 1, y[k].im);
    }
}

void record_backward(dag& g, int n) {
    split_values spectrum(n / 2 + 1);
    for (int k = 0; 2 * k <= n; ++k) {
        spectrum[k].re = {&g, g.load(2 * k)};
        if (has_imaginary_part(k, n)) spectrum[k].im = {&g, g.load(2 * k + 1)};
    }
    const values x = hermitian_butterfly(spectrum, n);
    for (int j = 0; j < n; ++j) store(g, j, x[j]);
}

}  // namespace

body make_real_body(const form& f, int size, bool everywhere) {
    body result{dag(pool::growing(everywhere), false), {}};
    (f.sign < 0 ? record_forward : record_backward)(result.graph, size);
    result.order = print_order(result.graph, true);
    return result;
}

}  // namespace generator
