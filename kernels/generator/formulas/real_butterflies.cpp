// SPDX-License-Identifier: Apache-2.0
// Composite sizes n = r L (Sorensen et al. 1987): the sequences x[r t + j] have the spectra X_j, and coefficient k + q
// L comes from the numbers X_j[k] exp(-2 pi i j k / n) by a butterfly of size r. Row k = 0 of them is real, and so is
// row L / 2 before its roots of unity. The way back is the same steps in reverse.
#include "kernels/generator/formulas/real_butterflies.h"

#include "kernels/generator/formulas/butterflies.h"

namespace generator {

namespace {

// The radix r by which a composite size is split.
int radix(int n) { return n % 2 ? 1 : n == 12 ? 3 : n >= 16 ? 4 : 2; }

split_value coefficient(const split_values& spectrum, int n, int k) {
    return 2 * k <= n ? spectrum[k] : conjugate(spectrum[n - k]);
}

// Stores a coefficient of the whole spectrum at its place in the stored half.
void place(split_values& spectrum, int n, int k, split_value v) {
    spectrum[2 * k <= n ? k : n - k] = 2 * k <= n ? v : conjugate(v);
}

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
    const int n = int(x.size()), r = radix(n), rest = n / r;
    if (r == 1 || rest == 1) return prime_real_butterfly(x);
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
        for (size_t q = 0; q < y.size(); ++q) place(out, n, k + int(q) * rest, y[q]);
    }
    return out;
}

values hermitian_butterfly(const split_values& spectrum, int n) {
    const int r = radix(n), rest = n / r;
    if (r == 1 || rest == 1) return prime_hermitian_butterfly(spectrum, n);
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

// Odd sizes: exp(-pi i j (2 q + 1) / n) = (-1)^j exp(-2 pi i j p / n) with p = q - (n - 1) / 2. Even sizes, h = n / 2:
// the even q = 2 p are the transform of size h of (x[j] - i x[j + h]) exp(-pi i j / n), the odd ones their conjugates.
split_values odd_real_butterfly(const values& x) {
    const int n = int(x.size()), h = n / 2;
    split_values out((n + 1) / 2);
    if (n % 2) {
        values alternating;
        for (int j = 0; j < n; ++j) alternating.push_back(j % 2 ? -x[j] : x[j]);
        const split_values y = real_butterfly(alternating);
        out[h].re = y[0].re;
        for (int q = 0; q < h; ++q) out[q] = conjugate(y[h - q]);
        return out;
    }
    split_values z;
    for (int j = 0; j < h; ++j) z.push_back(times_root(split_value{x[j], -x[j + h]}, {-j, 2 * n}));
    const split_values y = h == 1 ? z : butterfly(z, -1);
    for (int p = 0; p < h; ++p) out[2 * p < h ? 2 * p : n - 1 - 2 * p] = 2 * p < h ? y[p] : conjugate(y[p]);
    return out;
}

values odd_hermitian_butterfly(const split_values& spectrum, int n) {
    const int h = n / 2;
    values out(n);
    if (n % 2) {
        split_values turned(h + 1);
        turned[0].re = spectrum[h].re;
        for (int p = 1; p <= h; ++p) turned[p] = conjugate(spectrum[h - p]);
        const values y = hermitian_butterfly(turned, n);
        for (int j = 0; j < n; ++j) out[j] = j % 2 ? -y[j] : y[j];
        return out;
    }
    split_values z;
    for (int p = 0; p < h; ++p) z.push_back(2 * p < h ? spectrum[2 * p] : conjugate(spectrum[n - 1 - 2 * p]));
    const split_values y = h == 1 ? z : butterfly(z, +1);
    for (int j = 0; j < h; ++j) {
        const split_value turned = 2 * times_root(y[j], {j, 2 * n});
        out[j] = turned.re;
        out[j + h] = -turned.im;
    }
    return out;
}

}  // namespace generator
