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

}  // namespace

body make_complex_body(const complex_kind& kind) {
    return record(constants_of(kind.size, kind.sign), kind.where, [&](body& b) {
        dag& g = b.graph;
        values x = kind.transposed ? transpose_two(g, kind.size) : load_all(g, kind.size);
        for (int j = 1; kind.twiddled && j < kind.size; ++j) x[j].n = g.binary(op::mul, x[j].n, g.twiddle(j));
        const values y = ready(b, butterfly(x, kind.sign));
        for (int k = 0; k < kind.size; ++k) g.store(k, y[k].n);
    });
}

}  // namespace generator
