// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/formulas/lanes_of_four.h"

#include "kernels/generator/formulas/real_butterflies.h"

namespace generator {

namespace {

constexpr int lanes = 4;
using lane_numbers = pool::lane_numbers;
const lane_numbers conjugation = {1, -1, 1, -1};

class butterfly_in_lanes {
public:
    butterfly_in_lanes(const row_in_lanes& row, int n) : row_(row), n_(n), rest_(n / lanes) {}

    void forward() {
        values x;
        for (int t = 0; t < rest_; ++t) x.push_back(load({lanes_part::elements, lanes * t}));
        const split_values y = real_butterfly(x);
        store_row_zero(y[0].re);
        for (int k = 1; 2 * k <= rest_; k += 2) {
            // z0, -z1, z2 and -i z3: see turned_roots.
            const values z = is_last(k) ? turned_last(y[k], y[k + 1], k) : turned_rows(y[k], y[k + 1], k);
            const value sum = z[0] + z[2], difference = z[0] - z[2];
            const value other_sum = plus_i(z[3], z[1]), other = plus_i(z[1], z[3]);  // -i (z1 + z3) and z3 - z1
            store_rising(k, plus_i(sum, other_sum));
            store_rising(k + rest_, plus_i(difference, other));
            store_falling(k, 2 * rest_, plus_i(other_sum, sum));
            store_falling(k, rest_, plus_i(other, difference));
        }
    }

    void backward() {
        split_values y(rest_ / 2 + 1);
        y[0].re = load_row_zero();
        for (int k = 1; 2 * k <= rest_; k += 2) {
            const value z0 = load({lanes_part::numbers, 2 * k}), z1 = load({lanes_part::numbers, 2 * (k + rest_)});
            const value i_z2 = load_falling(k, 2 * rest_), i_z3 = load_falling(k, rest_);
            const value sum = minus_i(z0, i_z2), difference = plus_i(z0, i_z2);
            const value other_sum = minus_i(z1, i_z3), other = plus_i(z1, i_z3);
            values z = {sum + other_sum, plus_i(difference, other), sum - other_sum, minus_i(difference, other)};
            if (!is_last(k))
                for (int j = 1; j < lanes; ++j)
                    z[j] = times_pair(root(roots(k), j, +1), root(roots(k + 1), j, +1), z[j]);
            const values rows = transposed(z);
            y[k] = {rows[0], rows[1]}, y[k + 1] = {rows[2], rows[3]};
            if (is_last(k)) y[k] = turned_back(y[k], k), y[k + 1] = turned_back(y[k + 1], k + 1);
        }
        const values x = hermitian_butterfly(y, rest_);
        for (int t = 0; t < rest_; ++t) store({lanes_part::elements, lanes * t}, x[t]);
    }

private:
    value load(lanes_slot s) { return row_.load(s); }
    void store(lanes_slot s, value v) { row_.store(s, v); }

    struct lane_roots {
        lane_numbers c, s;
    };
    lane_roots roots(int k) const {
        const auto of_lanes = [&](exact (*part)(turn)) -> lane_numbers {
            return {part({0, n_}), part({k, n_}), part({2 * k, n_}), part({3 * k, n_})};
        };
        return {of_lanes(cosine), of_lanes(sine)};
    }
    // On the way forth, with -1 in lane 1 and -i in lane 3: additions with a quarter turn then give each coefficient
    // that rises as it is, and each that falls times i, whose lanes in reverse order are its conjugate.
    lane_roots turned_roots(int k) const {
        const lane_roots r = roots(k);
        return {{r.c[0], -r.c[1], r.c[2], -r.s[3]}, {r.s[0], -r.s[1], r.s[2], r.c[3]}};
    }
    // Is row k + 1 the row L / 2? Then it is real, and is turned with its lanes side by side, as row k is with it.
    bool is_last(int k) const { return 2 * (k + 1) == rest_; }

    struct complex_number {
        exact re, im;
    };
    static complex_number root(const lane_roots& r, int j, int sign) { return {r.c[j], sign * r.s[j]}; }
    // A vector of two complex numbers times one number each.
    value times_pair(complex_number f, complex_number g, value z) {
        return times({f.re, f.re, g.re, g.re}, {f.im, f.im, g.im, g.im}, z);
    }
    values turned_rows(split_value a, split_value b, int k) {
        values z = transposed({a.re, a.im, b.re, b.im});
        const lane_roots first = turned_roots(k), second = turned_roots(k + 1);
        for (int j = 1; j < lanes; ++j) z[j] = times_pair(root(first, j, -1), root(second, j, -1), z[j]);
        return z;
    }
    values turned_last(split_value a, split_value b, int k) {
        a = turned(a, k), b = turned(b, k + 1);
        return transposed({a.re, a.im, b.re, b.im});
    }
    // Row k times exp(-+2 pi i j k / n) in lane j. Row L / 2 is real before, and after the way back.
    split_value turned(split_value a, int k) {
        const auto [c, s] = turned_roots(k);
        if (2 * k == rest_) return {times(c, a.re), times(s, -a.re)};
        return {times(c, a.re) + times(s, a.im), times(c, a.im) - times(s, a.re)};
    }
    split_value turned_back(split_value a, int k) {
        const auto [c, s] = roots(k);
        if (2 * k == rest_) return {times(c, a.re) - times(s, a.im), {}};
        return {times(c, a.re) - times(s, a.im), times(c, a.im) + times(s, a.re)};
    }

    // Of the coefficients k + q L, k + 1 + q L those above n / 2 are the conjugates of end - k and end - k - 1, where
    // end is 2 L or L; here they are multiplied by i. If k + 1 is L / 2, the second of them is a mirror image of one
    // that rises.
    void store_rising(int first, value v) { store({lanes_part::numbers, 2 * first}, v); }
    void store_falling(int k, int end, value v) {
        if (is_last(k))
            store({lanes_part::two_reversed, 2 * (end - k)}, v);
        else
            store({lanes_part::reversed, 2 * (end - k - 1)}, v);
    }
    value load_falling(int k, int end) { return load({lanes_part::reversed, 2 * (end - k - 1)}); }

    // Row 0, (a, b, c, d) in the lanes: coefficient 0 is a + b + c + d, 2 L is a - b + c - d, L is a - c - i (b - d).
    void store_row_zero(value v) {
        const value swapped = exchanged(op::swap_halves, v);
        const value sums = v + swapped, other_sums = exchanged(op::swap_pairs, sums);
        store({lanes_part::one, 0}, sums + other_sums);
        store({lanes_part::one, 4 * rest_}, sums - other_sums);
        store({lanes_part::two, 2 * rest_}, times(conjugation, v - swapped));
    }
    value load_row_zero() {
        const value first = load({lanes_part::one, 0}), last = load({lanes_part::one, 4 * rest_});
        const value middle = load({lanes_part::two, 2 * rest_});
        return first + times(conjugation, last) + times({2, -2, -2, 2}, middle);
    }

    const row_in_lanes& row_;
    int n_, rest_;
};

}  // namespace

void real_butterfly_in_lanes(const row_in_lanes& row, int n) { butterfly_in_lanes(row, n).forward(); }
void hermitian_butterfly_in_lanes(const row_in_lanes& row, int n) { butterfly_in_lanes(row, n).backward(); }

}  // namespace generator
