// SPDX-License-Identifier: Apache-2.0
// Sizes a b with coprime factors: no twiddles, the index maps do it all (Good 1958, Thomas 1963).
#include "kernels/generator/formulas/butterflies.h"

namespace generator {

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

template values coprime_butterfly(const values&, int, int, int);
template split_values coprime_butterfly(const split_values&, int, int, int);

}  // namespace generator
