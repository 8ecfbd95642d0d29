// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/butterflies.h"

#include <cstdlib>

namespace generator {

values common_butterfly(const values& x, int a, int b, int sign) {
    std::vector<values> inner(b);
    for (int j = 0; j < b; ++j) {
        values column;
        for (int i = 0; i < a; ++i) column.push_back(x[b * i + j]);
        inner[j] = butterfly(column, sign);
    }
    values out(a * b, x[0]);
    for (int k = 0; k < a; ++k) {
        values row;
        for (int j = 0; j < b; ++j) row.push_back(times_root(inner[j][k], {sign * j * k, a * b}));
        const values y = butterfly(row, sign);
        for (int i = 0; i < b; ++i) out[k + a * i] = y[i];
    }
    return out;
}

values coprime_butterfly(const values& x, int a, int b, int sign) {
    const int n = a * b;
    std::vector<values> inner(b);
    for (int j = 0; j < b; ++j) {
        values column;
        for (int i = 0; i < a; ++i) column.push_back(x[(b * i + a * j) % n]);
        inner[j] = butterfly(column, sign);
    }
    values out(n, x[0]);
    for (int k = 0; k < a; ++k) {
        values row;
        for (int j = 0; j < b; ++j) row.push_back(inner[j][k]);
        const values y = butterfly(row, sign);
        for (int o = 0; o < n; ++o)
            if (o % a == k) out[o] = y[o % b];
    }
    return out;
}

values folded_three_butterfly(const values& x, int b, int sign) {
    const int n = 3 * b;
    values first, half, difference;
    for (int j = 0; j < b; ++j) {
        const value x0 = x[3 * j % n], x1 = x[(b + 3 * j) % n], x2 = x[(2 * b + 3 * j) % n];
        const value s = x1 + x2;
        first.push_back(x0 + s);
        half.push_back(x0 - 0.5L * s);
        difference.push_back(x1 - x2);
    }
    const values y0 = butterfly(first, sign), h = butterfly(half, sign);
    const values d = butterfly(difference, sign, sign * sine({1, 6}));
    values out(n, x[0]);
    for (int o = 0; o < n; ++o) {
        const int k = o % b;
        const auto [plus, minus] = sum_and_difference(h[k], times_i(d[k]));
        out[o] = o % 3 == 0 ? y0[k] : o % 3 == 1 ? plus : minus;
    }
    return out;
}

values butterfly(const values& x, int sign, long double scale) {
    const int n = int(x.size());
    if (scale != 1 && n % 2 == 0) {
        values y = butterfly(x, sign);
        for (value& v : y) v = scale * v;
        return y;
    }
    switch (n) {
        case 4:
            return common_butterfly(x, 2, 2, sign);
        case 6:
            return coprime_butterfly(x, 2, 3, sign);
        case 8:
            return common_butterfly(x, 2, 4, sign);
        case 9:
            return common_butterfly(x, 3, 3, sign);
        case 10:
            return coprime_butterfly(x, 2, 5, sign);
        case 12:
            return coprime_butterfly(x, 4, 3, sign);
        case 14:
            return coprime_butterfly(x, 2, 7, sign);
        case 15:
            return folded_three_butterfly(x, 5, sign);
        case 16:
            return common_butterfly(x, 4, 4, sign);
        case 18:
            return coprime_butterfly(x, 2, 9, sign);
        case 20:
            return coprime_butterfly(x, 4, 5, sign);
        case 21:
            return folded_three_butterfly(x, 7, sign);
        case 24:
            return folded_three_butterfly(x, 8, sign);
        case 32:
            return common_butterfly(x, 4, 8, sign);
        case 64:
            return common_butterfly(x, 8, 8, sign);
        default:
            return prime_butterfly(x, sign, scale);
    }
}

}  // namespace generator
