// SPDX-License-Identifier: Apache-2.0
// The type I cosine transform, by its elements of even and of odd index: out[k] = e[k] + o[k] and out[n - k] = e[k] -
// o[k]. For an even n, e is the transform of half the length and o is of type II; that one splits into the same type,
// for sums, and type IV, for differences of elements that mirror each other.
#include "kernels/generator/formulas/real_butterflies.h"
#include "kernels/generator/formulas/sizes.h"

namespace generator {

namespace {

// out[p] = 2 sum over i of x[i] cos(pi (2 i + 1) (2 p + 1) / (4 n)).
values type_four(const values& x) {
    const int n = int(x.size());
    values out(n);
    for (int p = 0; p < n; ++p) {
        out[p] = 2 * cosine({2 * p + 1, 8 * n}) * x[0];
        for (int i = 1; i < n; ++i) out[p] = out[p] + 2 * cosine({(2 * i + 1) * (2 * p + 1), 8 * n}) * x[i];
    }
    return out;
}

// out[k] = 2 sum over i of x[i] cos(pi (2 i + 1) k / (2 n)), for n a power of two.
values type_two(const values& x) {
    const int n = int(x.size()), h = n / 2;
    if (n == 1) return {2 * x[0]};
    if (n % 2 != 0) throw no_method("the type II cosine transform", n);
    values sums, differences, out(n);
    for (int i = 0; i < h; ++i) {
        const auto [sum, difference] = sum_and_difference(x[i], x[n - 1 - i]);
        sums.push_back(sum);
        differences.push_back(difference);
    }
    const values even = type_two(sums), odd = type_four(differences);
    for (int p = 0; p < h; ++p) out[2 * p] = even[p], out[2 * p + 1] = odd[p];
    return out;
}

// The two halves for an odd n, from the definition, whose operations are about n^2 / 2.
constexpr int largest_odd = 7;
values odd_halves(const values& x, int parity) {
    const int n = int(x.size()) - 1;
    values out;
    for (int k = 0; 2 * k < n; ++k) {
        value sum = parity ? (k % 2 ? -x[n] : x[n]) : x[0];
        for (int j = 2 - parity; j < n; j += 2) sum = sum + 2 * cosine({j * k, 2 * n}) * x[j];
        out.push_back(sum);
    }
    return out;
}

}  // namespace

values cosine_butterfly(const values& x) {
    const int n = int(x.size()) - 1;
    values even, odd, out(n + 1);
    if (n % 2) {
        if (n > largest_odd) throw no_method("the type I cosine transform", n + 1);
        even = odd_halves(x, 0);
        odd = odd_halves(x, 1);
    } else {
        values even_elements, odd_elements;
        for (int j = 0; j <= n; ++j) (j % 2 ? odd_elements : even_elements).push_back(x[j]);
        even = cosine_butterfly(even_elements);
        odd = type_two(odd_elements);
        out[n / 2] = even[n / 2];
    }
    for (int k = 0; 2 * k < n; ++k) {
        const auto [sum, difference] = sum_and_difference(even[k], odd[k]);
        out[k] = sum;
        out[n - k] = difference;
    }
    return out;
}

}  // namespace generator
