// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/formulas/butterflies.h"

#include <cstdlib>

namespace generator {

template <class number>
std::vector<number> common_butterfly(const std::vector<number>& x, int a, int b, int sign) {
    std::vector<std::vector<number>> inner(b);
    for (int j = 0; j < b; ++j) {
        std::vector<number> column;
        for (int i = 0; i < a; ++i) column.push_back(x[b * i + j]);
        inner[j] = butterfly(column, sign);
    }
    std::vector<number> out(a * b, x[0]);
    for (int k = 0; k < a; ++k) {
        std::vector<number> row;
        for (int j = 0; j < b; ++j) row.push_back(times_root(inner[j][k], {sign * j * k, a * b}));
        const std::vector<number> y = butterfly(row, sign);
        for (int i = 0; i < b; ++i) out[k + a * i] = y[i];
    }
    return out;
}

template <class number>
std::vector<number> coprime_butterfly(const std::vector<number>& x, int a, int b, int sign) {
    const int n = a * b;
    std::vector<std::vector<number>> inner(b);
    for (int j = 0; j < b; ++j) {
        std::vector<number> column;
        for (int i = 0; i < a; ++i) column.push_back(x[(b * i + a * j) % n]);
        inner[j] = butterfly(column, sign);
    }
    std::vector<number> out(n, x[0]);
    for (int k = 0; k < a; ++k) {
        std::vector<number> row;
        for (int j = 0; j < b; ++j) row.push_back(inner[j][k]);
        const std::vector<number> y = butterfly(row, sign);
        for (int o = 0; o < n; ++o)
            if (o % a == k) out[o] = y[o % b];
    }
    return out;
}

template <class number>
std::vector<number> folded_three_butterfly(const std::vector<number>& x, int b, int sign) {
    const int n = 3 * b;
    std::vector<number> first, halved, difference;
    for (int j = 0; j < b; ++j) {
        const number x0 = x[3 * j % n], x1 = x[(b + 3 * j) % n], x2 = x[(2 * b + 3 * j) % n];
        const number s = x1 + x2;
        first.push_back(x0 + s);
        halved.push_back(x0 - half * s);
        difference.push_back(x1 - x2);
    }
    const std::vector<number> y0 = butterfly(first, sign), h = butterfly(halved, sign);
    const std::vector<number> d = butterfly(difference, sign, sign * sine({1, 6}));
    std::vector<number> out(n, x[0]);
    for (int o = 0; o < n; ++o) {
        const int k = o % b;
        const auto [plus, minus] = sum_and_difference(h[k], times_i(d[k]));
        out[o] = o % 3 == 0 ? y0[k] : o % 3 == 1 ? plus : minus;
    }
    return out;
}

// With w = exp(+-2 pi i k / n), U the transform of the even elements and S and D the sum and the difference of the two
// other ones, the outputs are U(k) +- (cos S + i sin D) and U(k + n/4) +- i (cos D + i sin S).
template <class number>
std::vector<number> conjugate_pair_butterfly(const std::vector<number>& x, int sign) {
    const int n = int(x.size()), quarter = n / 4;
    std::vector<number> even, next, previous, out(n, x[0]);
    for (int j = 0; j < n; j += 2) even.push_back(x[j]);
    for (int j = 0; j < n; j += 4) next.push_back(x[j + 1]), previous.push_back(x[(j + n - 1) % n]);
    const std::vector<number> u = set_aside(butterfly(even, sign), n);
    const std::vector<number> z = butterfly(next, sign), y = butterfly(previous, sign);
    const auto outputs = [&](int k, const auto& pair) { out[k] = pair.sum, out[k + n / 2] = pair.difference; };
    const auto combine = [&](int k) {
        const number s = z[k] + y[k], d = rotated(z[k] - y[k], sign), v = u[k + quarter];
        if (k == 0) {
            outputs(k, sum_and_difference(u[k], s));
            outputs(k + quarter, sum_and_difference(v, d));
        } else if (8 * k == n) {
            const auto [plus, minus] = sum_and_difference(s, d);
            outputs(k, sum_and_difference(u[k], cosine({1, 8}) * plus));
            outputs(k + quarter, sum_and_difference(v, cosine({1, 8}) * -minus));
        } else {
            const exact c = cosine({k, n}), i = sine({k, n});
            outputs(k, sum_and_difference(u[k], c * s, i * d));
            outputs(k + quarter, sum_and_difference(v, c * d, -i * s));
        }
    };
    combine(0);
    for (int k = 1; 2 * k <= quarter; ++k) {  // k and n/4 - k have the same constants
        combine(k);
        if (2 * k < quarter) combine(quarter - k);
    }
    return out;
}

template <class number>
std::vector<number> butterfly(const std::vector<number>& x, int sign, const exact& scale) {
    const int n = int(x.size());
    if (!(scale == 1) && n % 2 == 0) {
        std::vector<number> y = butterfly(x, sign);
        for (number& v : y) v = scale * v;
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
        case 18:
            return coprime_butterfly(x, 2, 9, sign);
        case 20:
            return coprime_butterfly(x, 4, 5, sign);
        case 21:
            return folded_three_butterfly(x, 7, sign);
        case 24:
            return folded_three_butterfly(x, 8, sign);
        case 16:
        case 32:
        case 64:
        case 128:
            return conjugate_pair_butterfly(x, sign);
        default:
            return prime_butterfly(x, sign, scale);
    }
}

template values butterfly(const values&, int, const exact&);
template split_values butterfly(const split_values&, int, const exact&);

}  // namespace generator
