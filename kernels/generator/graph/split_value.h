// SPDX-License-Identifier: Apache-2.0
// A complex number as two real ones, for vectors that hold real parts or imaginary parts alone. Rotations by a quarter
// turn exchange the parts, and the negations that they leave are taken into the next addition.
#pragma once
#include "kernels/generator/graph/value.h"

namespace generator {

struct split_value {
    value re, im;
};

using split_values = std::vector<split_value>;

inline split_value operator+(split_value a, split_value b) { return {a.re + b.re, a.im + b.im}; }
inline split_value operator-(split_value a, split_value b) { return {a.re - b.re, a.im - b.im}; }
inline split_value operator-(split_value a) { return {-a.re, -a.im}; }
inline split_value operator*(const exact& c, split_value a) { return {c * a.re, c * a.im}; }
inline split_value times_i(split_value a) { return {-a.im, a.re}; }
inline split_value conjugate(split_value a) { return {a.re, -a.im}; }

struct pair_of_split_values {
    split_value sum, difference;
};
inline pair_of_split_values sum_and_difference(split_value a, split_value b) {
    const auto [re_sum, re_difference] = sum_and_difference(a.re, b.re);
    const auto [im_sum, im_difference] = sum_and_difference(a.im, b.im);
    return {{re_sum, im_sum}, {re_difference, im_difference}};
}
inline pair_of_split_values with_factor_two(split_value a, split_value b) { return sum_and_difference(a, b); }
inline pair_of_split_values sum_and_difference(split_value a, split_value p, split_value q) {
    return sum_and_difference(a, p + q);
}

inline split_values set_aside(split_values v, int) { return v; }

split_value rotated(split_value a, int quarters);
split_value times_root(split_value a, turn angle);

}  // namespace generator
