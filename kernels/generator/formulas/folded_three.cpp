// SPDX-License-Identifier: Apache-2.0
// Sizes 3 b with the sine of 60 degrees folded into the constants of b: with s = x1 + x2 and d = x1 - x2 of the three
// parts, the outputs are the transforms of x0 + s and of x0 - s / 2 +- i sin(60 degrees) d.
#include "kernels/generator/formulas/butterflies.h"

namespace generator {

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

template values folded_three_butterfly(const values&, int, int);
template split_values folded_three_butterfly(const split_values&, int, int);

}  // namespace generator
