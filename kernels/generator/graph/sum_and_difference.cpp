// SPDX-License-Identifier: Apache-2.0
// a + b and a - b together, as cheaply as the machine allows. Where a sum with a product takes the register of one of
// its operands, both together would need a copy.
#include <utility>

#include "kernels/generator/graph/value.h"

namespace generator {

namespace {

bool is_product(value a) { return a.graph->nodes()[a.n].what == op::scale; }

// Both were left with a factor.
bool have_common_factor(value a, value b) {
    const dag& g = *a.graph;
    return g.overwrites() && is_product(a) && is_product(b) && g.nodes()[a.n].k == two && g.nodes()[b.n].k == two;
}
value without_factor(value a) { return {a.graph, a.graph->nodes()[a.n].a, a.quarters}; }

// The number once more: if it was set aside, from memory into a register of its own.
value again(value a) {
    const node v = a.graph->nodes()[a.n];
    return v.what == op::reload ? value{a.graph, a.graph->reload(v.a), a.quarters} : a;
}

}  // namespace

// a - k b may overwrite b, and 2 a - (a - k b) may overwrite a.
pair_of_values sum_and_difference(value a, value b) {
    dag& g = *a.graph;
    if (have_common_factor(a, b)) {
        const auto [sum, difference] = sum_and_difference(without_factor(a), without_factor(b));
        const constant k = g.nodes()[a.n].k;
        return {{&g, g.scale(sum.n, k), sum.quarters}, {&g, g.scale(difference.n, k), difference.quarters}};
    }
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

pair_of_values with_factor_two(value a, value b) {
    dag& g = *a.graph;
    const int quarters = (b.quarters - a.quarters + 4) % 4;
    if (!g.overwrites() || quarters % 2 == 0 || is_product(a) || is_product(b)) return sum_and_difference(a, b);
    const value sum = a + b;
    const int other = g.fused(quarters == 1 ? op::fma_i : op::fms_i, b.n, sum.n, one_half);
    const value difference{&g, g.scale(other, two), a.quarters};
    return {sum, rotated(difference, quarters == 1 ? -1 : 1)};
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
        if (a.graph->sets_aside() && size >= registers) a.n = a.graph->reload(a.n);
    return v;
}

}  // namespace generator
