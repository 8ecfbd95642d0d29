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

// A negation is taken into the numbers: what follows is a transposition, which would have to carry it out.
value times(pool::lane_numbers k, value a) {
    dag& g = *a.graph;
    const node v = g.nodes()[a.n];
    const bool scaled = v.what == op::scale && !is_lanes(v.k);
    const exact factor = (a.quarters == 2 ? -1 : 1) * (scaled ? g.constants().value(v.k) : exact(1));
    for (exact& x : k) x = x * factor;
    return {&g, g.scale(scaled ? v.a : a.n, g.constants().add_lanes(k))};
}

value plus_i(value a, value b) { return {a.graph, a.graph->binary(op::add_i, plain(a).n, plain(b).n)}; }
value minus_i(value a, value b) { return {a.graph, a.graph->binary(op::sub_i, plain(a).n, plain(b).n)}; }

value times(const pool::lane_numbers& re, const pool::lane_numbers& im, value a) {
    const constant imaginary = a.graph->constants().add_lanes(im);
    return {a.graph, a.graph->fused(op::fma_i, times(re, a).n, a.n, imaginary)};
}

value operator*(const exact& factor, value a) {
    exact c = factor;
    dag& g = *a.graph;
    if (g.constants().grows() && is_scaled(a) && !is_lanes(g.nodes()[a.n].k)) {  // one product in place of two
        c = c * g.constants().value(g.nodes()[a.n].k);
        a.n = g.nodes()[a.n].a;
    }
    if (c == 1 || c == -1) return c == 1 ? a : -a;
    found_constant k = g.constants().find(c);
    if (g.nodes()[a.n].what == op::scale && g.nodes()[a.n].k == two) {
        ++k.where.doublings;
        a.n = g.nodes()[a.n].a;
    }
    const value scaled{&g, g.scale(a.n, k.where), a.quarters};
    return k.negative ? -scaled : scaled;
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
