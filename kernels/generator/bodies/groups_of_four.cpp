// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/groups_of_four.h"

#include "kernels/generator/formulas/real_butterflies.h"

namespace generator {

namespace {

constexpr int lanes = 4;

class recorder {
public:
    recorder(dag& g, int size, real_layout layout) : g_(g), n_(size), layout_(layout) {}

    void forward() {
        const split_values spectrum = real_butterfly(load_sequence());
        if (layout_ == real_layout::side_by_side) return store_coefficients(spectrum);
        values places(last_float() + 1);
        for (int p = 0; p < int(places.size()); ++p)
            if (has_number(p)) places[p] = part_at(spectrum, p);
        store_places(places, group_part::spectrum_block);
    }

    void backward() {
        split_values spectrum(n_ / 2 + 1);
        if (layout_ == real_layout::side_by_side) {
            load_coefficients(spectrum);
        } else {
            const values places = load_places(last_float() + 1, group_part::spectrum_block);
            for (int p = 0; p < int(places.size()); ++p)
                if (has_number(p)) part_at(spectrum, p) = places[p];
        }
        store_sequence(hermitian_butterfly(spectrum, n_));
    }

private:
    value load(group_slot s) { return {&g_, g_.load(s.pack())}; }
    void store(group_slot s, value v) { store_real(g_, s.pack(), v); }

    values load_sequence() {
        if (layout_ != real_layout::side_by_side) return load_places(n_, group_part::block);
        values x;
        for (int j = 0; j < n_; ++j) x.push_back(load({group_part::elements, j, 0}));
        return x;
    }
    void store_sequence(const values& x) {
        if (layout_ != real_layout::side_by_side) return store_places(x, group_part::block);
        for (int j = 0; j < n_; ++j) store({group_part::elements, j, 0}, x[j]);
    }

    bool is_real(int k) const { return k == 0 || 2 * k == n_; }

    void store_coefficients(const split_values& spectrum) {
        for (int k = 0; 2 * k <= n_; ++k) {
            const auto [re, im] = spectrum[k];
            if (is_real(k)) {
                store({group_part::adjacent_reals, k, 0}, re);
                continue;
            }
            store({group_part::coefficients, k, 0}, exchanged(op::interleave_lo, re, im));
            store({group_part::coefficients, k, 2}, exchanged(op::interleave_hi, re, im));
        }
    }
    void load_coefficients(split_values& spectrum) {
        for (int k = 0; 2 * k <= n_; ++k) {
            if (is_real(k)) {
                spectrum[k].re = load({group_part::adjacent_reals, k, 0});
                continue;
            }
            const value low = load({group_part::coefficients, k, 0}), high = load({group_part::coefficients, k, 2});
            spectrum[k] = {exchanged(op::evens, low, high), exchanged(op::odds, low, high)};
        }
    }

    // The floats of a row of the spectrum. As pairs, the second is the imaginary part that coefficient 0 hasn't, and so
    // would be the one behind the last.
    bool has_number(int place) const { return layout_ == real_layout::half_complex || place != 1; }
    int last_float() const { return layout_ == real_layout::half_complex ? n_ - 1 : n_; }
    value& part_at(split_values& spectrum, int place) const {
        if (layout_ == real_layout::half_complex) return 2 * place <= n_ ? spectrum[place].re : spectrum[n_ - place].im;
        return place % 2 ? spectrum[place / 2].im : spectrum[place / 2].re;
    }
    value part_at(const split_values& spectrum, int place) const {
        split_values copy = spectrum;
        return part_at(copy, place);
    }

    // Whole vectors along the rows, and three floats at the end of a row of pairs.
    int first_in_blocks(int count) const { return count % lanes == 0 ? 0 : 2; }

    values load_places(int count, group_part part) {
        values places(count);
        int at = first_in_blocks(count);
        if (at > 0) places[0] = load({group_part::spectrum_one, 0, 0});
        for (; at < count; at += lanes) {
            values rows;
            const bool three = at + lanes > count;
            for (int r = 0; r < lanes; ++r) rows.push_back(load({three ? group_part::spectrum_three : part, at, r}));
            const values columns = transposed(rows);
            for (int i = 0; i < lanes && at + i < count; ++i) places[at + i] = columns[i];
        }
        return places;
    }
    void store_places(const values& places, group_part part) {
        const int count = int(places.size());
        int at = first_in_blocks(count);
        if (at > 0) store({group_part::spectrum_one, 0, 0}, places[0]);
        for (; at < count; at += lanes) {
            const bool three = at + lanes > count;
            const values columns(places.begin() + at, places.begin() + at + (three ? 3 : lanes));
            values padded = columns;
            if (three) padded.push_back(columns.back());
            const values rows = transposed(padded);
            for (int r = 0; r < lanes; ++r) store({three ? group_part::spectrum_three : part, at, r}, rows[r]);
        }
    }

    dag& g_;
    int n_;
    real_layout layout_;
};

}  // namespace

body make_group_body(const form& f, int size, real_layout layout) {
    return record(pool::growing(false), {.loads_first = true}, [&](body& b) {
        recorder r(b.graph, size, layout);
        f.sign < 0 ? r.forward() : r.backward();
    });
}

}  // namespace generator
