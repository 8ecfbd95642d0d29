// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/quarter_body.h"

#include "kernels/generator/butterflies.h"
#include "kernels/generator/order.h"
#include "kernels/generator/real_butterflies.h"

namespace generator {

namespace {

constexpr int lanes = 4;
using lane_numbers = pool::lane_numbers;

class recorder {
public:
    recorder(dag& g, int size, quarter_layout data) : g_(g), n_(size), rest_(size / lanes), data_(data) {}

    void forward() {
        values x;
        for (int t = 0; t < rest_; ++t) x.push_back(load({quarter_part::elements, lanes * t, lanes}));
        const split_values y = real_butterfly(x);
        store_row_zero(y[0].re);
        for (int k = 1; 2 * k <= rest_; k += lanes) {
            split_values rows;
            for (int i = 0; i < lanes; ++i) rows.push_back(turned_row(y[k + i], k + i));
            const split_values z = butterfly(transposed(rows), -1);
            for (int q = 0; q < lanes; ++q) store_coefficients(z[q], k, q);
        }
    }

    void backward() {
        split_values y(rest_ / 2 + 1);
        y[0].re = load_row_zero();
        for (int k = 1; 2 * k <= rest_; k += lanes) {
            split_values z;
            for (int q = 0; q < lanes; ++q) z.push_back(load_coefficients(k, q));
            const split_values rows = transposed(butterfly(z, +1));
            for (int i = 0; i < lanes; ++i) y[k + i] = turned_back(rows[i], k + i);
        }
        const values x = hermitian_butterfly(y, rest_);
        for (int t = 0; t < rest_; ++t) store({quarter_part::elements, lanes * t, lanes}, x[t]);
    }

private:
    value load(quarter_slot s) { return {&g_, g_.load(s.pack())}; }
    void store(quarter_slot s, value v) { g_.store(s.pack(), plain(v).n); }
    bool contiguous() const { return data_ == quarter_layout::contig; }

    value times(lane_numbers k, value a) {
        const node& v = g_.nodes()[a.n];
        if (v.what == op::scale && !is_lanes(v.k)) {  // one product in place of two
            for (long double& x : k) x *= g_.constants().value(v.k);
            a.n = v.a;
        }
        if (a.quarters == 2)  // taken into the numbers: what follows is a transposition, which would have to negate
            for (long double& x : k) x = -x;
        return {&g_, g_.scale(a.n, g_.constants().add_lanes(k))};
    }

    struct lane_roots {
        lane_numbers c, s;
    };
    lane_roots roots(int k) const {
        lane_roots r;
        for (int j = 0; j < lanes; ++j) r.c[j] = cosine({j * k, n_}), r.s[j] = sine({j * k, n_});
        return r;
    }
    // Row k times exp(-2 pi i j k / n) in lane j. Row L / 2 is real before.
    split_value turned_row(split_value a, int k) {
        const auto [c, s] = roots(k);
        if (2 * k == rest_) return {times(c, a.re), -times(s, a.re)};
        return {times(c, a.re) + times(s, a.im), times(c, a.im) - times(s, a.re)};
    }
    split_value turned_back(split_value a, int k) {
        const auto [c, s] = roots(k);
        if (2 * k == rest_) return {times(c, a.re) - times(s, a.im), {}};
        return {times(c, a.re) - times(s, a.im), times(c, a.im) + times(s, a.re)};
    }

    split_values transposed(const split_values& rows) {
        values re, im;
        for (const split_value& r : rows) {
            re.push_back(r.re);
            im.push_back(r.im);
        }
        re = generator::transposed(re);
        im = generator::transposed(im);
        split_values columns;
        for (int i = 0; i < lanes; ++i) columns.push_back({re[i], im[i]});
        return columns;
    }

    // Rows k to k + 3 of the block q are the coefficients k + q L and up. Those above n / 2 are conjugates of stored
    // ones, which fall; the last of them, if the last row is row L / 2, is a mirror image of one that rises.
    struct place {
        int first;
        bool falls;
        int count;
    };
    place place_of(int k, int q) const {
        const int at = k + q * rest_;
        if (q < 2) return {at, false, lanes};
        return {n_ - at, true, 2 * (k + lanes - 1) == rest_ ? lanes - 1 : lanes};
    }

    void store_coefficients(split_value v, int k, int q) {
        const auto [first, falls, count] = place_of(k, q);
        if (falls) v = conjugate(v);
        if (!contiguous()) {
            const quarter_part part = falls ? quarter_part::lanes_falling : quarter_part::lanes_rising;
            store({part, 2 * first, count}, v.re);
            store({part, 2 * first + 1, count}, v.im);
            return;
        }
        const value low = exchanged(op::interleave_lo, v.re, v.im), high = exchanged(op::interleave_hi, v.re, v.im);
        if (!falls) {
            store({quarter_part::floats, 2 * first, 4}, low);
            store({quarter_part::floats, 2 * first + 4, 4}, high);
            return;
        }
        store({quarter_part::floats, 2 * first - 2, 4}, exchanged(op::swap_halves, low));
        if (count == lanes)
            store({quarter_part::floats, 2 * first - 6, 4}, exchanged(op::swap_halves, high));
        else
            store({quarter_part::low_half, 2 * first - 4, 2}, high);
    }

    split_value load_coefficients(int k, int q) {
        const auto [first, falls, count] = place_of(k, q);
        split_value v;
        if (!contiguous()) {
            const quarter_part part = falls ? quarter_part::lanes_falling : quarter_part::lanes_rising;
            v = {load({part, 2 * first, lanes}), load({part, 2 * first + 1, lanes})};
        } else {
            value low = load({quarter_part::floats, 2 * first - (falls ? 2 : 0), 4});
            value high = load({quarter_part::floats, 2 * first + (falls ? -6 : 4), 4});
            if (falls) {
                low = exchanged(op::swap_halves, low);
                high = exchanged(op::swap_halves, high);
            }
            v = {exchanged(op::evens, low, high), exchanged(op::odds, low, high)};
        }
        return falls ? conjugate(v) : v;
    }

    // Row 0, (a, b, c, d) in the lanes: coefficient 0 is a + b + c + d, 2 L is a - b + c - d, L is a - c - i (b - d).
    void store_row_zero(value v) {
        const value swapped = exchanged(op::swap_halves, v);
        const value sums = v + swapped, other_sums = exchanged(op::swap_pairs, sums);
        store({quarter_part::lowest, 0, 1}, sums + other_sums);
        store({quarter_part::lowest, 4 * rest_, 1}, sums - other_sums);
        store({quarter_part::both, 2 * rest_, 2}, times({1, -1, 1, -1}, v - swapped));
    }
    value load_row_zero() {
        const value first = load({quarter_part::same, 0, 1}), last = load({quarter_part::same, 4 * rest_, 1});
        const value middle = load({quarter_part::both, 2 * rest_, 2});
        return first + times({1, -1, 1, -1}, last) + times({2, -2, -2, 2}, middle);
    }

    dag& g_;
    int n_, rest_;
    quarter_layout data_;
};

}  // namespace

body make_quarter_body(int size, int sign, quarter_layout data) {
    body result{dag(pool::growing(false), false), {}};
    recorder r(result.graph, size, data);
    sign < 0 ? r.forward() : r.backward();
    result.order = print_order(result.graph, true);
    return result;
}

}  // namespace generator
