// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/quarter_body.h"

#include "kernels/generator/order.h"
#include "kernels/generator/real_butterflies.h"

namespace generator {

namespace {

constexpr int lanes = 4;
using lane_numbers = pool::lane_numbers;
constexpr lane_numbers conjugation = {1, -1, 1, -1};

class recorder {
public:
    recorder(dag& g, int size) : g_(g), n_(size), rest_(size / lanes) {}

    void forward() {
        values x;
        for (int t = 0; t < rest_; ++t) x.push_back(load({quarter_part::elements, lanes * t}));
        const split_values y = real_butterfly(x);
        store_row_zero(y[0].re);
        for (int k = 1; 2 * k <= rest_; k += 2) {
            const split_value a = turned(y[k], k), b = turned(y[k + 1], k + 1);
            const values z = transposed({a.re, a.im, b.re, b.im});
            const value sum = z[0] + z[2], difference = z[0] - z[2];
            const value other_sum = z[1] + z[3], other = times(conjugation, exchanged(op::swap_pairs, z[1] - z[3]));
            store_rising(k, sum + other_sum);
            store_rising(k + rest_, difference + other);
            store_falling(k, 2 * rest_, sum - other_sum);
            store_falling(k, rest_, difference - other);
        }
    }

    void backward() {
        split_values y(rest_ / 2 + 1);
        y[0].re = load_row_zero();
        for (int k = 1; 2 * k <= rest_; k += 2) {
            const value z0 = load({quarter_part::numbers, 2 * k}), z1 = load({quarter_part::numbers, 2 * (k + rest_)});
            const value z2 = load_falling(k, 2 * rest_), z3 = load_falling(k, rest_);
            const value sum = z0 + z2, difference = z0 - z2, other_sum = z1 + z3;
            const value other = times(conjugation, exchanged(op::swap_pairs, z1 - z3));
            const values rows = transposed({sum + other_sum, difference - other, sum - other_sum, difference + other});
            y[k] = turned_back({rows[0], rows[1]}, k);
            y[k + 1] = turned_back({rows[2], rows[3]}, k + 1);
        }
        const values x = hermitian_butterfly(y, rest_);
        for (int t = 0; t < rest_; ++t) store({quarter_part::elements, lanes * t}, x[t]);
    }

private:
    value load(quarter_slot s) { return {&g_, g_.load(s.pack())}; }
    void store(quarter_slot s, value v) { g_.store(s.pack(), plain(v).n); }

    // A negation is taken into the numbers: what follows is a transposition, which would have to carry it out.
    value times(lane_numbers k, value a) {
        const node v = g_.nodes()[a.n];
        const bool scaled = v.what == op::scale && !is_lanes(v.k);
        const long double factor = (a.quarters == 2 ? -1 : 1) * (scaled ? g_.constants().value(v.k) : 1);
        for (long double& x : k) x *= factor;
        return {&g_, g_.scale(scaled ? v.a : a.n, g_.constants().add_lanes(k))};
    }

    struct lane_roots {
        lane_numbers c, s;
    };
    lane_roots roots(int k) const {
        lane_roots r;
        for (int j = 0; j < lanes; ++j) r.c[j] = cosine({j * k, n_}), r.s[j] = sine({j * k, n_});
        return r;
    }
    // Row k times exp(-+2 pi i j k / n) in lane j. Row L / 2 is real before, and after the way back.
    split_value turned(split_value a, int k) {
        const auto [c, s] = roots(k);
        if (2 * k == rest_) return {times(c, a.re), times(s, -a.re)};
        return {times(c, a.re) + times(s, a.im), times(c, a.im) - times(s, a.re)};
    }
    split_value turned_back(split_value a, int k) {
        const auto [c, s] = roots(k);
        if (2 * k == rest_) return {times(c, a.re) - times(s, a.im), {}};
        return {times(c, a.re) - times(s, a.im), times(c, a.im) + times(s, a.re)};
    }

    // Of the coefficients k + q L, k + 1 + q L those above n / 2 are the conjugates of end - k and end - k - 1, where
    // end is 2 L or L. If k + 1 is L / 2, the second of them is a mirror image of one that rises.
    void store_rising(int first, value v) { store({quarter_part::numbers, 2 * first}, v); }
    void store_falling(int k, int end, value v) {
        const value conjugate = times(conjugation, v);
        if (2 * (k + 1) == rest_)
            store({quarter_part::two, 2 * (end - k)}, conjugate);
        else
            store({quarter_part::numbers, 2 * (end - k - 1)}, exchanged(op::swap_halves, conjugate));
    }
    value load_falling(int k, int end) {
        const value v = load({quarter_part::numbers, 2 * (end - k - 1)});
        return times(conjugation, exchanged(op::swap_halves, v));
    }

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

}  // namespace

body make_quarter_body(int size, int sign) {
    body result{dag(pool::growing(false), false), {}};
    recorder r(result.graph, size);
    sign < 0 ? r.forward() : r.backward();
    result.order = print_order(result.graph, true);
    return result;
}

}  // namespace generator
