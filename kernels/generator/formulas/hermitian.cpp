// SPDX-License-Identifier: Apache-2.0
// Composite sizes n = r L (Sorensen et al. 1987): the sequences x[r t + j] have the spectra X_j, and coefficient k + q
// L comes from the numbers X_j[k] exp(-2 pi i j k / n) by a butterfly of size r. Row k = 0 of them is real, and so is
// row L / 2 before its roots of unity. The way back is the same steps in reverse.
#include "kernels/generator/formulas/real_butterflies.h"

#include "kernels/generator/formulas/butterflies.h"
#include "kernels/generator/formulas/sizes.h"

namespace generator {

namespace {

split_values prime_real_butterfly(const values& x) {
    const int p = int(x.size()), h = p / 2;
    if (p == 2) {
        const auto [sum, difference] = sum_and_difference(x[0], x[1]);
        return {{sum, {}}, {difference, {}}};
    }
    split_values out(h + 1);
    values s, d;
    value total = x[0];
    for (int j = 1; j <= h; ++j) {
        s.push_back(x[j] + x[p - j]);
        d.push_back(x[p - j] - x[j]);
        total = total + s.back();
    }
    out[0].re = total;
    for (int k = 1; k <= h; ++k) {
        out[k] = {x[0], sine({k, p}) * d[0]};
        for (int j = 1; j <= h; ++j) {
            out[k].re = out[k].re + cosine({j * k, p}) * s[j - 1];
            if (j > 1) out[k].im = out[k].im + sine({j * k, p}) * d[j - 1];
        }
    }
    return out;
}

values prime_hermitian_butterfly(const split_values& spectrum, int p) {
    const int h = p / 2;
    if (p == 2) {
        const auto [sum, difference] = sum_and_difference(spectrum[0].re, spectrum[1].re);
        return {sum, difference};
    }
    values out(p);
    value sum = spectrum[1].re;
    for (int k = 2; k <= h; ++k) sum = sum + spectrum[k].re;
    out[0] = spectrum[0].re + 2 * sum;
    for (int j = 1; j <= h; ++j) {
        value a = spectrum[0].re, b = 2 * sine({j, p}) * spectrum[1].im;
        for (int k = 1; k <= h; ++k) a = a + 2 * cosine({j * k, p}) * spectrum[k].re;
        for (int k = 2; k <= h; ++k) b = b + 2 * sine({j * k, p}) * spectrum[k].im;
        const auto [plus, minus] = sum_and_difference(a, b);
        out[j] = minus;
        out[p - j] = plus;
    }
    return out;
}

}  // namespace

split_values real_butterfly(const values& x) {
    const int n = int(x.size());
    const auto [how, r, rest] = real_way_of(n);
    if (how == method::prime) return prime_real_butterfly(x);
    if (how == method::coprime) return coprime_real_butterfly(x, r, rest);
    std::vector<split_values> inner(r);
    for (int j = 0; j < r; ++j) {
        values column;
        for (int t = 0; t < rest; ++t) column.push_back(x[r * t + j]);
        inner[j] = real_butterfly(column);
    }
    split_values out(n / 2 + 1);
    for (int k = 0; 2 * k <= rest; ++k) {
        const bool real = k == 0 || 2 * k == rest;
        values plain;
        split_values turned;
        for (int j = 0; j < r; ++j)
            if (real)
                plain.push_back(inner[j][k].re);
            else
                turned.push_back(times_root(inner[j][k], {-j * k, n}));
        const split_values y = k == 0 ? real_butterfly(plain)
                               : real ? odd_real_butterfly(plain)
                                      : butterfly(turned, -1);
        for (size_t q = 0; q < y.size(); ++q) put_coefficient(out, n, k + int(q) * rest, y[q]);
    }
    return out;
}

values hermitian_butterfly(const split_values& spectrum, int n) {
    const auto [how, r, rest] = real_way_of(n);
    if (how == method::prime) return prime_hermitian_butterfly(spectrum, n);
    if (how == method::coprime) return coprime_hermitian_butterfly(spectrum, r, rest);
    std::vector<split_values> inner(r, split_values(rest / 2 + 1));
    for (int k = 0; 2 * k <= rest; ++k) {
        const bool real = k == 0 || 2 * k == rest;
        split_values row;
        for (int q = 0; q < r; ++q) {
            const int from = k + q * rest;
            if (!real || 2 * from <= n) row.push_back(coefficient(spectrum, n, from));
        }
        if (real) {
            const values y = k == 0 ? hermitian_butterfly(row, r) : odd_hermitian_butterfly(row, r);
            for (int j = 0; j < r; ++j) inner[j][k].re = y[j];
        } else {
            const split_values y = butterfly(row, +1);
            for (int j = 0; j < r; ++j) inner[j][k] = times_root(y[j], {j * k, n});
        }
    }
    values out(n);
    for (int j = 0; j < r; ++j) {
        const values column = hermitian_butterfly(inner[j], rest);
        for (int t = 0; t < rest; ++t) out[r * t + j] = column[t];
    }
    return out;
}

}  // namespace generator
