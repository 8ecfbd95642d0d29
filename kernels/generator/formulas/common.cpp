// SPDX-License-Identifier: Apache-2.0
// Sizes a b in general: b transforms of size a, roots of unity, a transforms of size b (Cooley and Tukey 1965).
#include "kernels/generator/formulas/butterflies.h"

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

template values common_butterfly(const values&, int, int, int);
template split_values common_butterfly(const split_values&, int, int, int);

}  // namespace generator
