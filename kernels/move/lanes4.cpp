// SPDX-License-Identifier: Apache-2.0
// Groups of four transforms with interleaved elements, which the four-wide transforms work on. What moves is a unit of
// four adjacent elements, one SVE vector; the order of the units is that of a transpose (leaves.h).
#include "kernels/move/blocks.h"
#include "kernels/move/leaves.h"
#include "kernels/move/move.h"
#include "kernels/ops/complex4.h"

namespace {

constexpr int64_t lanes = 4;

void move_unit(const cpx* source, cpx* destination) { store4(&destination->re, load4(&source->re)); }

void multiply_unit(const cpx* x, const cpx* t, cpx* product) {
    store4(&product->re, mul(load4(&x->re), load4(&t->re)));
}

// With the same roundings as the vector form.
cpx multiply(cpx x, cpx t) {
    const float re = __builtin_fmaf(x.re, t.re, 0.0f), im = __builtin_fmaf(x.re, t.im, 0.0f);
    return {__builtin_fmaf(-x.im, t.im, re), __builtin_fmaf(x.im, t.re, im)};
}

// Both layouts of one array of transforms.
struct lanes4_layout {
    int64_t length;
    int64_t count;
    int64_t group_length;
    int64_t stride;
    int64_t groups() const { return count / lanes; }
    int64_t rest() const { return count % lanes; }
    int64_t grouped_at(int64_t group, int64_t r) const { return lanes * (group * group_length + r); }
    int64_t strided_at(int64_t group, int64_t r) const { return r * stride + lanes * group; }
    int64_t rest_row(int64_t i) const { return (groups() * lanes + i) * group_length; }
    int64_t rest_column(int64_t i) const { return groups() * lanes + i; }
};

constexpr int64_t strip = 4;  // groups; a strip is 128 bytes of each row of the strided side

// Calls move(grouped position, strided position) for every unit of the groups [g0, g_end) and rows [r0, r_end), by
// strips, so that the cache lines of the strided side are used whole while they are there.
template <class unit_mover>
[[gnu::always_inline]] inline void move_units(const lanes4_layout& l, int64_t g0, int64_t g_end, int64_t r0,
                                              int64_t r_end, const unit_mover& mover) {
    int64_t g = g0;
    for (; g + strip <= g_end; g += strip)
        for (int64_t r = r0; r < r_end; ++r) {
            mover.prefetch_strip(l.strided_at(g, r));
            mover.move(l.grouped_at(g, r), l.strided_at(g, r));
            mover.move(l.grouped_at(g + 1, r), l.strided_at(g + 1, r));
            mover.move(l.grouped_at(g + 2, r), l.strided_at(g + 2, r));
            mover.move(l.grouped_at(g + 3, r), l.strided_at(g + 3, r));
        }
    for (; g < g_end; ++g)
        for (int64_t r = r0; r < r_end; ++r) mover.move(l.grouped_at(g, r), l.strided_at(g, r));
}

// All units. One strip needs no cutting: its rows are walked in the same order anyway.
template <class unit_mover>
void for_each_unit(const lanes4_layout& layout, const unit_mover& mover) {
    if (layout.length < 1 || layout.groups() < 1) return;
    if (layout.groups() <= strip) return move_units(layout, 0, layout.groups(), 0, layout.length, mover);
    for_each_leaf(0, 0, layout.length, layout.groups(), [=](int64_t r, int64_t g, int64_t rows, int64_t groups) {
        const lanes4_layout l = layout;
        const unit_mover m = mover;
        move_units(l, g, g + groups, r, r + rows, m);
    });
}

struct packer {
    const cpx* strided;
    cpx* grouped;
    int64_t ahead;  // eight rows: they lie pages apart, where no hardware prefetcher follows
    void move(int64_t in_group, int64_t in_rows) const { move_unit(strided + in_rows, grouped + in_group); }
    void prefetch_strip(int64_t in_rows) const {
        __builtin_prefetch(strided + in_rows + ahead);
        __builtin_prefetch(strided + in_rows + ahead + lanes * strip / 2);
    }
};

struct unpacker {
    const cpx* grouped;
    cpx* strided;
    void move(int64_t in_group, int64_t in_rows) const { move_unit(grouped + in_group, strided + in_rows); }
    void prefetch_strip(int64_t) const {}
};

struct multiplying_unpacker {
    const cpx* grouped;
    const cpx* table;
    cpx* strided;
    void move(int64_t in_group, int64_t in_rows) const {
        multiply_unit(grouped + in_group, table + in_group, strided + in_rows);
    }
    void prefetch_strip(int64_t) const {}
};

}  // namespace

void pack_lanes4(const float* strided, float* grouped, int64_t length, int64_t count, int64_t group_length,
                 int64_t stride) {
    const lanes4_layout l = {length, count, group_length, stride};
    for_each_unit(l, packer{as_cpx(strided), as_cpx(grouped), 8 * stride});
    for (int64_t i = 0; i < l.rest(); ++i)
        copy_cpx(strided + 2 * l.rest_column(i), grouped + 2 * l.rest_row(i), length, stride, 1);
}

void unpack_lanes4(const float* grouped, float* strided, int64_t length, int64_t count, int64_t group_length,
                   int64_t stride) {
    const lanes4_layout l = {length, count, group_length, stride};
    for_each_unit(l, unpacker{as_cpx(grouped), as_cpx(strided)});
    for (int64_t i = 0; i < l.rest(); ++i)
        copy_cpx(grouped + 2 * l.rest_row(i), strided + 2 * l.rest_column(i), length, 1, stride);
}

void unpack_lanes4_twiddle(const float* grouped, const float* table, float* strided, int64_t length, int64_t count,
                           int64_t group_length, int64_t stride) {
    const lanes4_layout l = {length, count, group_length, stride};
    const cpx *from = as_cpx(grouped), *factors = as_cpx(table);
    cpx* to = as_cpx(strided);
    for_each_unit(l, multiplying_unpacker{from, factors, to});
    for (int64_t i = 0; i < l.rest(); ++i)
        for (int64_t r = 0; r < length; ++r)
            to[l.rest_column(i) + r * stride] = multiply(from[l.rest_row(i) + r], factors[l.rest_row(i) + r]);
}
