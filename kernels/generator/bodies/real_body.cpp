// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/real_body.h"

#include "kernels/generator/passes/order.h"
#include "kernels/generator/formulas/real_butterflies.h"

namespace generator {

namespace {

bool has_imaginary_part(int k, int n) { return k != 0 && 2 * k != n; }

void store(dag& g, int slot, value v) { g.store(slot, plain(v).n); }

void record_forward(dag& g, int n) {
    values x;
    for (int j = 0; j < n; ++j) x.push_back({&g, g.load(j)});
    const split_values y = real_butterfly(x);
    for (int k = 0; 2 * k <= n; ++k) {
        store(g, 2 * k, y[k].re);
        if (has_imaginary_part(k, n)) store(g, 2 * k + 1, y[k].im);
    }
}

void record_cosine(dag& g, int n) {
    values x;
    for (int j = 0; j < n; ++j) x.push_back({&g, g.load(j)});
    const values y = cosine_butterfly(x);
    for (int k = 0; k < n; ++k) store(g, k, y[k]);
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
    const auto record = f.loop == shape::cosine_rows ? record_cosine : f.sign < 0 ? record_forward : record_backward;
    record(result.graph, size);
    result.order = print_order(result.graph, true);
    return result;
}

}  // namespace generator
