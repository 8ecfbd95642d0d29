// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/formulas/rows_in_pairs.h"

#include "kernels/generator/formulas/butterflies.h"

namespace generator {

namespace {

pool::lane_numbers of_both_lanes(const exact& a, const exact& b) { return {a, a, b, b}; }

// The two numbers of a times exp(2 pi i k / n) and exp(2 pi i (k + 1) / n).
value times_two_roots(value a, int k, int n, int sign) {
    const turn first{k, n}, second{k + 1, n};
    const exact s = sign;
    return times(of_both_lanes(cosine(first), cosine(second)), of_both_lanes(s * sine(first), s * sine(second)), a);
}

// a + k b and a - k b: where multiply-adds overwrite a, the second is made from the first, once that is in other
// vectors.
void chain_fused_pairs(values& y) {
    dag& g = *y[0].graph;
    const auto opposite = [](op a, op b) {
        return (a == op::fma && b == op::fms) || (a == op::fms && b == op::fma) || (a == op::fma_i && b == op::fms_i) ||
               (a == op::fms_i && b == op::fma_i);
    };
    for (size_t i = 0; i < y.size(); ++i)
        for (size_t j = i + 1; j < y.size(); ++j) {
            const node u = g.nodes()[y[i].n], v = g.nodes()[y[j].n];
            if (!opposite(u.what, v.what) || u.a != v.a || u.b != v.b || u.k != v.k) continue;
            constant k = u.k;
            k.doublings = 1;
            if (constants_of(u.what) == constant_from::any_lane) k.everywhere = true;
            y[j].n = g.fused(v.what, y[i].n, u.b, k);
        }
}

}  // namespace

// Lane d of y[k] is the transform of the elements 2 j + d, Y_d(k): output k is Y_0(k) + w(k) Y_1(k) and output k + m
// the difference, where w(k) = exp(+-2 pi i k / n). Those of k + m / 2 are rotated by a quarter turn.
values butterfly_of_row_in_pairs(const values& x, int sign) {
    const int m = int(x.size());
    values y = butterfly(x, sign), out(m, x[0]);
    chain_fused_pairs(y);
    x[0].graph->record_at_once();
    const auto combine = [&](int k, int table_k, int quarters) {
        const value odd = exchanged(op::zip_hi, y[k], y[k + 1]), even = exchanged(op::zip_lo, y[k], y[k + 1]);
        const value turned = rotated(times_two_roots(odd, table_k, 2 * m, sign), quarters);
        out[k / 2] = even + turned;
        out[(k + m) / 2] = even - turned;
    };
    const bool by_quarters = m % 4 == 0;
    for (int k = 0; k < (by_quarters ? m / 2 : m); k += 2) {
        combine(k, k, 0);
        if (by_quarters) combine(k + m / 2, k, sign);
    }
    return out;
}

values rows_into_lanes(const two_rows& x, int n) {
    values columns(n, x.first[0]);
    for (int i = 0; i < vectors_of_row(n); ++i) {
        const int c = first_in_vector(i, n);
        columns[c + 1] = exchanged(op::zip_hi, x.first[i], x.second[i]);
        if (c == 2 * i) columns[c] = exchanged(op::zip_lo, x.first[i], x.second[i]);
    }
    return columns;
}

two_rows rows_from_lanes(const values& y) {
    const int n = int(y.size());
    two_rows rows;
    for (int i = 0; i < vectors_of_row(n); ++i) {
        const int k = first_in_vector(i, n);
        rows.second.push_back(exchanged(op::zip_hi, y[k], y[k + 1]));
        rows.first.push_back(exchanged(op::zip_lo, y[k], y[k + 1]));
    }
    return rows;
}

}  // namespace generator
