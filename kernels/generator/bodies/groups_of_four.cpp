// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/bodies/groups_of_four.h"

#include <algorithm>

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
        if (layout_ == real_layout::whole_rows) return store_whole_spectrum(spectrum);
        values places(last_float() + 1);
        for (int p = 0; p < int(places.size()); ++p)
            if (has_number(p)) places[p] = part_at(spectrum, p);
        store_places(places, group_part::spectrum_block);
    }

    void backward() {
        split_values spectrum(n_ / 2 + 1);
        if (layout_ == real_layout::side_by_side) {
            load_coefficients(spectrum);
        } else if (layout_ == real_layout::whole_rows) {
            load_whole_spectrum(spectrum);
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
        if (layout_ == real_layout::whole_rows) return load_whole(n_, group_part::block);
        if (layout_ != real_layout::side_by_side) return load_places(n_, group_part::block);
        values x;
        for (int j = 0; j < n_; ++j) x.push_back(load({group_part::elements, j, 0}));
        return x;
    }
    void store_sequence(const values& x) {
        if (layout_ == real_layout::whole_rows) return store_whole(x, sequence_parts);
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

    // Rows of any count of floats, from their first to their last: where they are no multiple of four the last vector
    // of a load begins inside the one before, and two floats of two rows or one of four make a vector to store.
    struct parts {
        group_part block, two, one;
    };
    static constexpr parts sequence_parts = {group_part::block, group_part::two, group_part::one};
    static constexpr parts spectrum_parts = {group_part::spectrum_block, group_part::spectrum_two,
                                             group_part::spectrum_one};

    values load_whole(int count, group_part block) {
        if (count < lanes) return load_short(count);
        values places(count);
        for (int at = 0; at < count; at += lanes) {
            const int from = std::min(at, count - lanes);
            values rows;
            for (int r = 0; r < lanes; ++r) rows.push_back(load({block, from, r}));
            const values columns = transposed(rows);
            for (int i = at - from; i < lanes; ++i) places[from + i] = columns[i];
        }
        return places;
    }
    values load_short(int count) {
        values places;
        for (int at = 0; at < count; ++at) places.push_back(load({group_part::one, at, 0}));
        return places;
    }
    void store_whole(const values& places, const parts& p) {
        const int count = int(places.size());
        int at = 0;
        for (; at + lanes <= count; at += lanes) {
            const values rows = transposed({places.begin() + at, places.begin() + at + lanes});
            for (int r = 0; r < lanes; ++r) store({p.block, at, r}, rows[r]);
        }
        if (at + 2 <= count) {
            store({p.two, at, 0}, exchanged(op::interleave_lo, plain(places[at]), plain(places[at + 1])));
            store({p.two, at, 2}, exchanged(op::interleave_hi, plain(places[at]), plain(places[at + 1])));
            at += 2;
        }
        if (at < count) store({p.one, at, 0}, places[at]);
    }

    void load_whole_spectrum(split_values& spectrum) {
        const values places = load_whole(2 * (n_ / 2 + 1), group_part::spectrum_block);
        for (int k = 0; 2 * k <= n_; ++k) {
            spectrum[k].re = places[2 * k];
            if (!is_real(k)) spectrum[k].im = places[2 * k + 1];
        }
    }
    void store_whole_spectrum(const split_values& spectrum) {
        values places;
        for (int k = 0; 2 * k <= n_; ++k) {
            places.push_back(spectrum[k].re);
            places.push_back(is_real(k) ? load({group_part::zeros, 0, 0}) : spectrum[k].im);
        }
        store_whole(places, spectrum_parts);
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
