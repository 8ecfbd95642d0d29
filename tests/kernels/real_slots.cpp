// SPDX-License-Identifier: Apache-2.0
#include "real_slots.h"

#include "kernels/generator/quarter_body.h"

namespace {

using namespace generator;

// One row in every lane.
moved_numbers rows_in_lanes(int slot) { return {{{0, slot}, {1, slot}, {2, slot}, {3, slot}}}; }

moved_numbers numbers_of_row(int first, int step, int count) {
    moved_numbers m;
    for (int i = 0; i < count; ++i) m[i].number = first + i * step;
    return m;
}

// All lanes belong to one row.
moved_numbers quarter(quarter_slot s) {
    switch (s.part) {
        case quarter_part::elements:
        case quarter_part::floats:
        case quarter_part::low_half:
            return numbers_of_row(s.first, 1, s.count);
        case quarter_part::lanes_rising:
            return numbers_of_row(s.first, 2, s.count);
        case quarter_part::lanes_falling:
            return numbers_of_row(s.first, -2, s.count);
        default:
            return {};
    }
}

bool in_quarters(const form& f, int size) { return f.loop == shape::real_row && size >= 32; }

}  // namespace

moved_numbers loaded(const form& f, int size, int slot) {
    if (!in_quarters(f, size)) return rows_in_lanes(slot);
    const quarter_slot s = quarter_slot::unpack(slot);
    if (s.part == quarter_part::same) return numbers_of_row(s.first, 0, 4);
    if (s.part != quarter_part::both) return quarter(s);
    moved_numbers m = numbers_of_row(s.first, 1, 2);
    m[2] = m[0], m[3] = m[1];
    return m;
}

moved_numbers stored(const form& f, int size, int slot) {
    if (!in_quarters(f, size)) return rows_in_lanes(slot);
    const quarter_slot s = quarter_slot::unpack(slot);
    if (s.part == quarter_part::lowest) return numbers_of_row(s.first, 0, 1);
    return s.part == quarter_part::both ? numbers_of_row(s.first, 1, 2) : quarter(s);
}
