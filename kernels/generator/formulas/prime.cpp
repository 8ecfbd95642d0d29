// SPDX-License-Identifier: Apache-2.0
// A prime size p in its symmetric form: with s(j) = x(j) + x(p - j), d(j) = x(j) - x(p - j) and h = (p - 1) / 2,
//     a(k) = x(0) + sum over j <= h of cos(2 pi j k / p) s(j),   b(k) = sum over j <= h of sin(2 pi j k / p) d(j),
//     out(k) = a(k) +- i b(k),   out(p - k) = a(k) -+ i b(k):
// h (2h - 1) fused multiply-adds. Forward and backward differ in the signs that the pool's sines carry.
#include <algorithm>

#include "kernels/generator/formulas/butterflies.h"

namespace generator {

namespace {

constexpr int largest_unblocked = 8, block_size = 5;

}  // namespace

template <class number>
std::vector<number> prime_butterfly(const std::vector<number>& x, int sign, const exact& scale) {
    const int p = int(x.size()), h = (p - 1) / 2;
    if (p == 2) {
        const auto [sum, difference] = sum_and_difference(x[0], x[1]);
        return {sum, difference};
    }
    const auto scaled = [&](number v) { return scale * v; };
    std::vector<number> s(h + 1, x[0]), d(h + 1, x[0]), out(p, x[0]);
    number total = x[0];
    for (int j = 1; j <= h; ++j) {
        s[j] = x[j] + x[p - j];
        d[j] = x[j] - x[p - j];
        total = total + s[j];
    }
    out[0] = scaled(total);
    // Small sizes finish one k after the other. Large ones, whose s and d don't fit the registers together, go through
    // all a before any b, a block of k at a time, so that each s and each d is fetched once for a block.
    const int block = h > largest_unblocked ? block_size : 1;
    const number first = scaled(x[0]);
    std::vector<number> a(h + 1, first), b(h + 1, first);
    const auto sum_cosines = [&](int from, int to) {
        for (int j = 1; j <= h; ++j)
            for (int k = from; k < to; ++k) a[k] = a[k] + scale * cosine({j * k, p}) * s[j];
    };
    if (block > 1)
        for (int k = 1; k <= h; k += block) sum_cosines(k, std::min(k + block, h + 1));
    for (int from = 1; from <= h; from += block) {
        const int to = std::min(from + block, h + 1);
        if (block == 1) sum_cosines(from, to);
        for (int k = from; k < to; ++k) b[k] = scale * sign * sine({k, p}) * d[1];
        for (int j = 2; j <= h; ++j)
            for (int k = from; k < to; ++k) b[k] = b[k] + scale * sign * sine({j * k, p}) * d[j];
        for (int k = from; k < to; ++k) {
            const auto [plus, minus] = sum_and_difference(a[k], times_i(b[k]));
            out[k] = plus;
            out[p - k] = minus;
        }
    }
    return out;
}

template values prime_butterfly(const values&, int, const exact&);
template split_values prime_butterfly(const split_values&, int, const exact&);

}  // namespace generator
