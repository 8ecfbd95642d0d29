// SPDX-License-Identifier: Apache-2.0
// a + b and a - b together, as cheaply as the machine allows. Where a sum with a product takes the register of one of
// its operands, both together would need a copy.
#include <utility>

#include "kernels/generator/graph/value.h"

namespace generator {

namespace {

bool is_product(value a) { return a.graph->nodes()[a.n].what == op::scale; }

// The number once more: if it was set aside, from memory into a register of its own.
value again(value a) {
    const node v = a.graph->nodes()[a.n];
    return v.what == op::reload ? value{a.graph, a.graph->reload(v.a), a.quarters} : a;
}

}  // namespace

// a - k b may overwrite b, and 2 a - (a - k b) may overwrite a.
pair_of_values sum_and_difference(value a, value b) {
    dag& g = *a.graph;
    if (!g.overwrites() || !is_product(b) || is_product(a)) return {a + b, again(a) - b};
    const node product = g.nodes()[b.n];
    constant k = product.k;
    k.everywhere = true;
    const int quarters = (b.quarters - a.quarters + 4) % 4;
    if (quarters % 2 == 0) {
        const int less = g.fused(op::fms, a.n, product.a, k), more = g.binary(op::twice_minus, again(a).n, less);
        const value plus{&g, more, a.quarters}, minus{&g, less, a.quarters};
        return quarters == 0 ? pair_of_values{plus, minus} : pair_of_values{minus, plus};
    }
    const value plus{&g, g.fused(op::fma_i, a.n, product.a, k), a.quarters};
    const value minus{&g, g.fused(op::fms_i, again(a).n, product.a, k), a.quarters};
    return quarters == 1 ? pair_of_values{plus, minus} : pair_of_values{minus, plus};
}

// The product that isn't turned goes first: it may overwrite its operand in place of a.
pair_of_values sum_and_difference(value a, value p, value q) {
    dag& g = *a.graph;
    if (!g.overwrites()) return {a + (p + q), a - (p + q)};
    if ((p.quarters - a.quarters) % 2 != 0) std::swap(p, q);
    const value sum = a + p + q;
    return {sum, {&g, g.binary(op::twice_minus, again(a).n, sum.n), a.quarters}};
}

// There are as many vector registers, and the rest of the transform wants some too.
values set_aside(values v, int size) {
    constexpr int registers = 32;
    for (value& a : v)
        if (a.graph->overwrites() && size >= registers) a.n = a.graph->reload(a.n);
    return v;
}

}  // namespace generator
