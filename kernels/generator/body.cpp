// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/body.h"

#include <cassert>

#include "kernels/generator/butterflies.h"
#include "kernels/generator/order.h"

namespace generator {

namespace {

// Two rows of r numbers: vectors of two columns each, overlapping at the end of an odd row.
values transpose_two(dag& g, int r) {
    values x(r);
    for (int first = 0; first < r; first += 2) {
        const int c = first + 2 <= r ? first : r - 2;
        const int a = g.load(row_slot{0, c, 2}.pack()), b = g.load(row_slot{1, c, 2}.pack());
        if (c == first) x[c] = {&g, g.binary(op::zip_lo, a, b)};
        x[c + 1] = {&g, g.binary(op::zip_hi, a, b)};
    }
    return x;
}

// Four rows of two numbers fill two vectors.
values transpose_four_of_two(dag& g) {
    const int a = g.load(row_slot{0, 0, 4}.pack()), b = g.load(row_slot{0, 4, 4}.pack());
    return {{&g, g.binary(op::unzip_even, a, b)}, {&g, g.binary(op::unzip_odd, a, b)}};
}

// Four rows of r numbers, in blocks of four columns, the last block overlapping: two levels of zips a block.
values transpose_four(dag& g, int r) {
    if (r == 2) return transpose_four_of_two(g);
    values x(r);
    const int width = r < 4 ? r : 4;
    for (int first = 0; first < r; first += 4) {
        const int c = first + 4 <= r ? first : r - width;
        int row[4];
        for (int i = 0; i < 4; ++i) row[i] = g.load(row_slot{i, c, width}.pack());
        for (int half = 0; half < 2; ++half) {
            if (c + 2 * half + 1 < first) continue;
            const op level = half ? op::zip_hi : op::zip_lo;
            const int even = g.binary(level, row[0], row[2]), odd = g.binary(level, row[1], row[3]);
            if (c + 2 * half >= first) x[c + 2 * half] = {&g, g.binary(op::zip_lo, even, odd)};
            if (c + 2 * half + 1 < r) x[c + 2 * half + 1] = {&g, g.binary(op::zip_hi, even, odd)};
        }
    }
    return x;
}

values inputs(dag& g, const body_kind& kind) {
    if (kind.transposed_rows == 2) return transpose_two(g, kind.size);
    if (kind.transposed_rows == 4) return transpose_four(g, kind.size);
    values x;
    for (int j = 0; j < kind.size; ++j) x.push_back({&g, g.load(j)});
    return x;
}

}  // namespace

body make_body(const body_kind& kind) {
    body result{dag(pool(kind.size, kind.sign)), {}};
    dag& g = result.graph;
    values x = inputs(g, kind);
    if (kind.twiddled)
        for (int j = 1; j < kind.size; ++j) x[j].n = g.binary(op::mul, x[j].n, g.twiddle(j));
    const values y = butterfly(x, kind.sign);
    for (int k = 0; k < kind.size; ++k) {
        assert(y[k].quarters == 0);
        g.store(k, y[k].n);
    }
    result.order = print_order(g, kind.in_place);
    return result;
}

}  // namespace generator
