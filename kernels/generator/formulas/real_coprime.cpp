// SPDX-License-Identifier: Apache-2.0
// Real transforms and Hermitian spectra of sizes n = a b with coprime factors: coefficient o is number o mod b of row
// o mod a, and there are no roots of unity between the steps. Rows 0 and a / 2 are real, row a - k is the conjugate of
// row k.
#include "kernels/generator/formulas/butterflies.h"
#include "kernels/generator/formulas/real_butterflies.h"

namespace generator {

namespace {

bool is_real_row(int k, int a) { return k == 0 || 2 * k == a; }

int place_of(int k, int m, int a, int b) {
    int o = m;
    while (o % a != k) o += b;
    return o;
}

}  // namespace

split_values coprime_real_butterfly(const values& x, int a, int b) {
    const int n = a * b;
    std::vector<split_values> inner;
    for (int j = 0; j < b; ++j) {
        values column;
        for (int i = 0; i < a; ++i) column.push_back(x[(b * i + a * j) % n]);
        inner.push_back(real_butterfly(column));
    }
    split_values out(n / 2 + 1);
    for (int k = 0; 2 * k <= a; ++k) {
        values reals;
        split_values row;
        for (int j = 0; j < b; ++j) row.push_back(inner[j][k]), reals.push_back(inner[j][k].re);
        const split_values y = is_real_row(k, a) ? real_butterfly(reals) : butterfly(row, -1);
        for (int m = 0; m < int(y.size()); ++m) put_coefficient(out, n, place_of(k, m, a, b), y[m]);
    }
    return out;
}

values coprime_hermitian_butterfly(const split_values& spectrum, int a, int b) {
    const int n = a * b;
    std::vector<split_values> inner(b, split_values(a / 2 + 1));
    for (int k = 0; 2 * k <= a; ++k) {
        split_values row;
        for (int m = 0; m < (is_real_row(k, a) ? b / 2 + 1 : b); ++m)
            row.push_back(coefficient(spectrum, n, place_of(k, m, a, b)));
        if (is_real_row(k, a)) {
            const values z = hermitian_butterfly(row, b);
            for (int j = 0; j < b; ++j) inner[j][k].re = z[j];
        } else {
            const split_values z = butterfly(row, +1);
            for (int j = 0; j < b; ++j) inner[j][k] = z[j];
        }
    }
    values out(n);
    for (int j = 0; j < b; ++j) {
        const values column = hermitian_butterfly(inner[j], a);
        for (int i = 0; i < a; ++i) out[(b * i + a * j) % n] = column[i];
    }
    return out;
}

}  // namespace generator
