// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/graph/value.h"

#include <utility>

namespace generator {

namespace {

bool is_scaled(value a) { return a.graph->nodes()[a.n].what == op::scale; }

}  // namespace

// The sum inherits the pending rotation of one operand: of the one whose scaling can't be fused, else of the one
// without a rotation.
value operator+(value a, value b) {
    const bool prefer_b = is_scaled(a) != is_scaled(b) ? is_scaled(a) : a.quarters != 0 && b.quarters == 0;
    if (prefer_b) std::swap(a, b);
    return {a.graph, a.graph->sum(a.n, b.n, (b.quarters - a.quarters + 4) % 4), a.quarters};
}

// A negation costs an operation, unless it turns a difference round.
value plain(value a) {
    dag& g = *a.graph;
    if (a.quarters == 0) return a;
    const node u = g.nodes()[a.n];
    return {&g, u.what == op::sub ? g.binary(op::sub, u.b, u.a) : g.binary(op::neg, a.n, none)};
}

value exchanged(op what, value a, value b) { return {a.graph, a.graph->binary(what, plain(a).n, plain(b).n)}; }
value exchanged(op what, value a) { return {a.graph, a.graph->binary(what, plain(a).n, none)}; }

values transposed(const values& r) {
    const value a = exchanged(op::interleave_lo, r[0], r[2]), b = exchanged(op::interleave_hi, r[0], r[2]);
    const value c = exchanged(op::interleave_lo, r[1], r[3]), d = exchanged(op::interleave_hi, r[1], r[3]);
    return {exchanged(op::interleave_lo, a, c), exchanged(op::interleave_hi, a, c), exchanged(op::interleave_lo, b, d),
            exchanged(op::interleave_hi, b, d)};
}

value again(value a) {
    const node v = a.graph->nodes()[a.n];
    return v.what == op::reload ? value{a.graph, a.graph->reload(v.a), a.quarters} : a;
}

values kept(values v) {
    for (value& a : v)
        if (a.graph->overwrites()) a.n = a.graph->reload(a.n);
    return v;
}

value operator*(const exact& factor, value a) {
    exact c = factor;
    dag& g = *a.graph;
    if (g.constants().grows() && is_scaled(a) && !is_lanes(g.nodes()[a.n].k)) {  // one product in place of two
        c = c * g.constants().value(g.nodes()[a.n].k);
        a.n = g.nodes()[a.n].a;
    }
    if (c == 1 || c == -1) return c == 1 ? a : -a;
    const found_constant k = g.constants().find(c);
    const value scaled{&g, g.scale(a.n, k.where), a.quarters};
    return k.negative ? -scaled : scaled;
}

pair_of_values sum_and_difference(value a, value b) {
    dag& g = *a.graph;
    if (!g.overwrites() || !is_scaled(b) || is_scaled(a)) return {a + b, again(a) - b};
    // A sum with a product ends either operand, so that the sum and the difference together would need a copy. But
    // a - k b may overwrite b, and 2 a - (a - k b) may overwrite a.
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

pair_of_values sum_and_difference(value a, value p, value q) {
    dag& g = *a.graph;
    if (!g.overwrites()) return {a + (p + q), a - (p + q)};
    // The product that isn't turned goes first: it may overwrite its operand in place of a.
    if ((p.quarters - a.quarters) % 2 != 0) std::swap(p, q);
    const value sum = a + p + q;
    return {sum, {&g, g.binary(op::twice_minus, again(a).n, sum.n), a.quarters}};
}

namespace {

// a (c + i s) with both parts from the pool.
value times_parts(value a, const exact& c, const exact& s) {
    pool& constants = a.graph->constants();
    const found_constant real = constants.find(c), imaginary = constants.find(s);
    const auto [odd, turned] = constants.in_odd_lane(imaginary.where);
    const op what = real.negative == (imaginary.negative != turned) ? op::fma_i : op::fms_i;
    const int n = a.graph->fused(what, a.graph->scale(a.n, real.where), a.n, odd);
    return rotated({a.graph, n, a.quarters}, real.negative ? 2 : 0);
}

}  // namespace

// a exp(2 pi i angle). Eighths of a turn cost one rotated addition, whose scaling the next addition takes in. What is
// left to be rotated is half a turn at most: the sum and the difference of rotated values would cost a copy on
// machines that overwrite.
value times_root(value a, turn angle) {
    const int64_t den = angle.den, num = ((angle.num % den) + den) % den;
    if (4 * num % den == 0) return rotated(a, int(4 * num / den));
    if (8 * num % den == 0) {
        const int64_t eighth = 8 * num / den;
        const value sum = eighth % 4 == 1 ? a + times_i(a) : a - times_i(a);
        return cosine({1, 8}) * rotated(sum, eighth == 3 || eighth == 5 ? 2 : 0);
    }
    return times_parts(a, cosine({num, den}), sine({num, den}));
}

}  // namespace generator
