// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/complex.h"

#include "kernels/generator/formulas/butterflies.h"
#include "kernels/generator/formulas/sizes.h"

namespace generator {

namespace {

// Two rows of r numbers: vectors of two columns each, overlapping at the end of an odd row.
values transpose_two(dag& g, int r) {
    values x(r);
    for (int first = 0; first < r; first += 2) {
        const int c = first + 2 <= r ? first : r - 2;
        const int a = g.load(transposed_slot{0, c}.pack()), b = g.load(transposed_slot{1, c}.pack());
        if (c == first) x[c] = {&g, g.binary(op::zip_lo, a, b)};
        x[c + 1] = {&g, g.binary(op::zip_hi, a, b)};
    }
    return x;
}

// Likewise, and times the rows' own twiddles, which element 0 has none of: it and, of an even row, the last one come
// from both rows.
values transpose_two_multiplied(dag& g, int r) {
    const auto multiplied = [&](transposed_slot s) {
        const int x = g.load(s.pack());
        return s.column == 0 ? x : g.binary(op::mul, x, g.twiddle(s.pack()));
    };
    values x(r);
    for (int c = 0; c < r; c += c % 2 ? 2 : 1) {
        if (c == 0 || c + 1 == r) {
            x[c] = {&g, multiplied({transposed_slot::both, c})};
            continue;
        }
        const int a = multiplied({0, c}), b = multiplied({1, c});
        x[c] = {&g, g.binary(op::zip_lo, a, b)};
        x[c + 1] = {&g, g.binary(op::zip_hi, a, b)};
    }
    return x;
}

values inputs(dag& g, const complex_kind& kind) {
    if (kind.rows_twiddles) return transpose_two_multiplied(g, kind.size);
    values x = kind.transposed ? transpose_two(g, kind.size) : load_all(g, kind.size);
    for (int j = 1; kind.twiddled && j < kind.size; ++j) x[j].n = g.binary(op::mul, x[j].n, g.twiddle(j));
    return x;
}

}  // namespace

body make_complex_body(const complex_kind& kind) {
    return record(constants_of(kind.size, kind.sign), kind.where, [&](body& b) {
        dag& g = b.graph;
        const values y = ready(b, butterfly(inputs(g, kind), kind.sign));
        for (int k = 0; k < kind.size; ++k) g.store(k, y[k].n);
    });
}

}  // namespace generator
