// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/body.h"

#include <cassert>

#include "kernels/generator/formulas/butterflies.h"
#include "kernels/generator/passes/order.h"

namespace generator {

namespace {

// Two rows of r numbers: vectors of two columns each, overlapping at the end of an odd row.
values transpose_two(dag& g, int r) {
    values x(r);
    for (int first = 0; first < r; first += 2) {
        const int c = first + 2 <= r ? first : r - 2;
        const int a = g.load(row_slot{0, c}.pack()), b = g.load(row_slot{1, c}.pack());
        if (c == first) x[c] = {&g, g.binary(op::zip_lo, a, b)};
        x[c + 1] = {&g, g.binary(op::zip_hi, a, b)};
    }
    return x;
}

values inputs(dag& g, const body_kind& kind) {
    if (kind.transposed) return transpose_two(g, kind.size);
    values x;
    for (int j = 0; j < kind.size; ++j) x.push_back({&g, g.load(j)});
    return x;
}

}  // namespace

void chain_rotated_pairs(dag& g, values& outputs) {
    for (size_t first = 0; first < outputs.size(); ++first)
        for (size_t second = first + 1; second < outputs.size(); ++second) {
            const int f = outputs[first].n;
            const node u = g.nodes()[f], v = g.nodes()[outputs[second].n];
            if (u.a != v.a || u.b != v.b || u.k != v.k) continue;
            constant k = u.k.entry == constant::none ? two : u.k;
            k.twice = k != two;
            if ((u.what == op::add_i && v.what == op::sub_i) || (u.what == op::fma_i && v.what == op::fms_i))
                outputs[second].n = g.fused(op::fms_i, f, u.b, k);
            else if ((u.what == op::sub_i && v.what == op::add_i) || (u.what == op::fms_i && v.what == op::fma_i))
                outputs[second].n = g.fused(op::fma_i, f, u.b, k);
        }
}

body make_body(const body_kind& kind) {
    body result{dag(pool(kind.size, kind.sign), kind.overwrites), {}, kind.once && kind.overwrites};
    dag& g = result.graph;
    values x = inputs(g, kind);
    if (kind.twiddled)
        for (int j = 1; j < kind.size; ++j) x[j].n = g.binary(op::mul, x[j].n, g.twiddle(j));
    values y = butterfly(x, kind.sign);
    if (kind.overwrites) chain_rotated_pairs(g, y);
    for (int k = 0; k < kind.size; ++k) {
        assert(y[k].quarters == 0);
        g.store(k, y[k].n);
    }
    result.order = print_order(g, kind.in_place);
    g.choose_overwritten(result.order);
    if (!kind.alone) g.reload_overwritten(result.order);
    return result;
}

}  // namespace generator
