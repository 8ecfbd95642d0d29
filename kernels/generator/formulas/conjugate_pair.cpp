// SPDX-License-Identifier: Apache-2.0
// Powers of two: one transform of the even elements and two of the odd ones, x[4 j + 1] and x[4 j - 1], whose roots of
// unity are conjugates of each other (Kamar and Elcherif 1989). With w = exp(+-2 pi i k / n), U the transform of the
// even elements and S and D the sum and the difference of the two other ones, the outputs are U(k) +- (cos S + i sin D)
// and U(k + n/4) +- i (cos D + i sin S).
#include "kernels/generator/formulas/butterflies.h"

namespace generator {

namespace {

template <class number>
std::vector<number> transform(const std::vector<number>& x, int sign, bool may_leave_factors);

// Of quarters of the input, which are combined with their like: some outputs may come with a factor of 2.
template <class number>
std::vector<number> with_factors(const std::vector<number>& x, int sign) {
    const int n = int(x.size());
    if (n >= 8) return transform(x, sign, true);
    if (n != 4) return butterfly(x, sign);
    const auto even = sum_and_difference(x[0], x[2]), odd = sum_and_difference(x[1], x[3]);
    const auto [zero, two] = sum_and_difference(even.sum, odd.sum);
    const auto [one, three] = with_factor_two(even.difference, rotated(odd.difference, sign));
    return {zero, one, two, three};
}

template <class number>
std::vector<number> transform(const std::vector<number>& x, int sign, bool may_leave_factors) {
    const int n = int(x.size()), quarter = n / 4;
    std::vector<number> even, next, previous, out(n, x[0]);
    for (int j = 0; j < n; j += 2) even.push_back(x[j]);
    for (int j = 0; j < n; j += 4) next.push_back(x[j + 1]), previous.push_back(x[(j + n - 1) % n]);
    const std::vector<number> u = set_aside(butterfly(even, sign), n);
    const std::vector<number> z = with_factors(next, sign), y = with_factors(previous, sign);
    const auto outputs = [&](int k, const auto& pair) { out[k] = pair.sum, out[k + n / 2] = pair.difference; };
    const auto combine = [&](int k) {
        const auto [s, difference] = sum_and_difference(z[k], y[k]);
        const number d = rotated(difference, sign), v = u[k + quarter];
        if (k == 0) {
            outputs(k, sum_and_difference(u[k], s));
            outputs(k + quarter, may_leave_factors ? with_factor_two(v, d) : sum_and_difference(v, d));
        } else if (8 * k == n) {
            const auto [plus, minus] = with_factor_two(s, d);
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

}  // namespace

template <class number>
std::vector<number> conjugate_pair_butterfly(const std::vector<number>& x, int sign) {
    return transform(x, sign, false);
}

template values conjugate_pair_butterfly(const values&, int);
template split_values conjugate_pair_butterfly(const split_values&, int);

}  // namespace generator
