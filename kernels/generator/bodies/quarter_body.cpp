// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/quarter_body.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

#include "kernels/generator/passes/order.h"
#include "kernels/generator/formulas/real_butterflies.h"

namespace generator {

namespace {

constexpr int lanes = 4;
using lane_numbers = pool::lane_numbers;
const lane_numbers conjugation = {1, -1, 1, -1};

class recorder {
public:
    recorder(dag& g, int size) : g_(g), n_(size), rest_(size / lanes) {}

    void forward() {
        values x;
        for (int t = 0; t < rest_; ++t) x.push_back(load({quarter_part::elements, lanes * t}));
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
            const value z0 = load({quarter_part::numbers, 2 * k}), z1 = load({quarter_part::numbers, 2 * (k + rest_)});
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
        for (int t = 0; t < rest_; ++t) store({quarter_part::elements, lanes * t}, x[t]);
    }

private:
    value load(quarter_slot s) { return {&g_, g_.load(s.pack())}; }
    void store(quarter_slot s, value v) { g_.store(s.pack(), plain(v).n); }

    // a + i b and a - i b of vectors of two complex numbers
    value plus_i(value a, value b) { return {&g_, g_.binary(op::add_i, plain(a).n, plain(b).n)}; }
    value minus_i(value a, value b) { return {&g_, g_.binary(op::sub_i, plain(a).n, plain(b).n)}; }

    // A negation is taken into the numbers: what follows is a transposition, which would have to carry it out.
    value times(lane_numbers k, value a) {
        const node v = g_.nodes()[a.n];
        const bool scaled = v.what == op::scale && !is_lanes(v.k);
        const exact factor = (a.quarters == 2 ? -1 : 1) * (scaled ? g_.constants().value(v.k) : exact(1));
        for (exact& x : k) x = x * factor;
        return {&g_, g_.scale(scaled ? v.a : a.n, g_.constants().add_lanes(k))};
    }

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
        const constant im = g_.constants().add_lanes({f.im, f.im, g.im, g.im});
        return {&g_, g_.fused(op::fma_i, times({f.re, f.re, g.re, g.re}, z).n, z.n, im)};
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
    void store_rising(int first, value v) { store({quarter_part::numbers, 2 * first}, v); }
    void store_falling(int k, int end, value v) {
        if (is_last(k))
            store({quarter_part::two_reversed, 2 * (end - k)}, v);
        else
            store({quarter_part::reversed, 2 * (end - k - 1)}, v);
    }
    value load_falling(int k, int end) { return load({quarter_part::reversed, 2 * (end - k - 1)}); }

    // Row 0, (a, b, c, d) in the lanes: coefficient 0 is a + b + c + d, 2 L is a - b + c - d, L is a - c - i (b - d).
    void store_row_zero(value v) {
        const value swapped = exchanged(op::swap_halves, v);
        const value sums = v + swapped, other_sums = exchanged(op::swap_pairs, sums);
        store({quarter_part::one, 0}, sums + other_sums);
        store({quarter_part::one, 4 * rest_}, sums - other_sums);
        store({quarter_part::two, 2 * rest_}, times(conjugation, v - swapped));
    }
    value load_row_zero() {
        const value first = load({quarter_part::one, 0}), last = load({quarter_part::one, 4 * rest_});
        const value middle = load({quarter_part::two, 2 * rest_});
        return first + times(conjugation, last) + times({2, -2, -2, 2}, middle);
    }

    dag& g_;
    int n_, rest_;
};

// Where a store of four numbers of the spectrum begins, or -1.
int spectrum_start(const node& v) {
    if (v.what != op::store) return -1;
    const quarter_slot s = quarter_slot::unpack(v.slot);
    return s.part == quarter_part::numbers || s.part == quarter_part::reversed ? s.first : -1;
}

// Lets stores wait for a later one beside them: one instruction then stores both.
std::vector<int> with_stores_joined(const dag& g, const std::vector<int>& order) {
    std::map<int, int> first_of;  // by the second store of a pair
    std::set<int> waiting;
    for (size_t i = 0; i < order.size(); ++i) {
        const int start = spectrum_start(g.nodes()[order[i]]);
        if (start < 0 || first_of.contains(order[i])) continue;
        const auto is_beside = [&](int n) {
            const int other = spectrum_start(g.nodes()[n]);
            return other >= 0 && std::abs(other - start) == lanes && !first_of.contains(n);
        };
        const auto later = std::find_if(order.begin() + long(i) + 1, order.end(), is_beside);
        if (later == order.end()) continue;
        first_of[*later] = order[i];
        waiting.insert(order[i]);
    }
    std::vector<int> joined;
    for (const int n : order) {
        if (waiting.contains(n)) continue;
        if (first_of.contains(n)) joined.push_back(first_of[n]);
        joined.push_back(n);
    }
    return joined;
}

}  // namespace

body make_quarter_body(int size, int sign) {
    body result{dag(pool::growing(false), false), {}};
    recorder r(result.graph, size);
    sign < 0 ? r.forward() : r.backward();
    result.order = with_stores_joined(result.graph, print_order(result.graph, true));
    return result;
}

}  // namespace generator
