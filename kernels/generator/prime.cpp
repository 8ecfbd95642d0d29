// SPDX-License-Identifier: Apache-2.0
// A prime size p in its symmetric form: with s(j) = x(j) + x(p - j), d(j) = x(j) - x(p - j) and h = (p - 1) / 2,
//     a(k) = x(0) + sum over j <= h of cos(2 pi j k / p) s(j),   b(k) = sum over j <= h of sin(2 pi j k / p) d(j),
//     out(k) = a(k) +- i b(k),   out(p - k) = a(k) -+ i b(k):
// h (2h - 1) fused multiply-adds. Forward and backward differ in the signs that the pool's sines carry.
#include "kernels/generator/butterflies.h"

namespace generator {

values prime_butterfly(const values& x, int sign, long double scale) {
    const int p = int(x.size()), h = (p - 1) / 2;
    if (p == 2) {
        const auto [sum, difference] = sum_and_difference(x[0], x[1]);
        return {sum, difference};
    }
    const auto scaled = [&](value v) { return scale == 1 ? v : scale * v; };
    values s(h + 1, x[0]), d(h + 1, x[0]), out(p, x[0]);
    value total = x[0];
    for (int j = 1; j <= h; ++j) {
        s[j] = x[j] + x[p - j];
        d[j] = x[j] - x[p - j];
        total = total + s[j];
    }
    out[0] = scaled(total);
    const value first = scaled(x[0]);
    for (int k = 1; k <= h; ++k) {
        value a = first, b = scale * sign * sine({k, p}) * d[1];
        for (int j = 1; j <= h; ++j) a = a + scale * cosine({j * k, p}) * s[j];
        for (int j = 2; j <= h; ++j) b = b + scale * sign * sine({j * k, p}) * d[j];
        const auto [plus, minus] = sum_and_difference(a, times_i(b));
        out[k] = plus;
        out[p - k] = minus;
    }
    return out;
}

}  // namespace generator
