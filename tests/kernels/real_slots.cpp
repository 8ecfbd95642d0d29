// SPDX-License-Identifier: Apache-2.0
#include "real_slots.h"

#include "graph_checks.h"
#include "kernels/generator/bodies/groups_of_four.h"
#include "kernels/generator/bodies/real_row.h"
#include "kernels/generator/formulas/lanes_of_four.h"

namespace {

using namespace generator;

moved_numbers number_of_rows(int number) { return {{{0, number}, {1, number}, {2, number}, {3, number}}}; }

moved_numbers numbers_of_row(int row, int first, int count) {
    moved_numbers m;
    for (int i = 0; i < count; ++i) m[i] = {row, first + i};
    return m;
}

moved_numbers reversed_numbers_of_row(int row, int first, int count) {
    moved_numbers m;
    for (int i = 0; i < count; ++i) m[i] = {row, first + count - 1 - i};
    return m;
}

// Float `place` of a row of the spectrum.
int number_at(lane_use use, int size, int place) {
    if (use != lane_use::half_complex_in_a_row) return place;
    return 2 * place <= size ? 2 * place : 2 * (size - place) + 1;
}

moved_numbers floats_of_spectrum(lane_use use, int size, group_slot s, int count) {
    moved_numbers m;
    for (int i = 0; i < count; ++i) m[i] = {s.row, number_at(use, size, s.first + i)};
    return m;
}

moved_numbers of_four_rows(lane_use use, int size, group_slot s) {
    switch (s.part) {
        case group_part::elements:
            return number_of_rows(s.first);
        case group_part::coefficients:
            return {{{s.row, 2 * s.first},
                     {s.row, 2 * s.first + 1},
                     {s.row + 1, 2 * s.first},
                     {s.row + 1, 2 * s.first + 1}}};
        case group_part::adjacent_reals:
            return number_of_rows(2 * s.first);
        case group_part::block:
            return numbers_of_row(s.row, s.first, 4);
        case group_part::spectrum_block:
            return floats_of_spectrum(use, size, s, 4);
        case group_part::spectrum_three:
            return floats_of_spectrum(use, size, s, 3);
        case group_part::spectrum_one:
            return number_of_rows(number_at(use, size, s.first));
        case group_part::one:
            return number_of_rows(s.first);
        case group_part::two:
        case group_part::spectrum_two:
            return {{{s.row, s.first}, {s.row, s.first + 1}, {s.row + 1, s.first}, {s.row + 1, s.first + 1}}};
        case group_part::zeros:
            return {};
    }
    return {};
}

}  // namespace

lane_use lane_use_of(const form& f, int size, const body& b) {
    for (const bool everywhere : {false, true})
        if (same_graph(b, make_real_row_body(f, size, everywhere))) return lane_use::rows;
    if (f.loop == shape::whole_rows)
        return same_graph(b, make_group_body(f, size, real_layout::whole_rows)) ? lane_use::whole_rows
                                                                                : lane_use::unknown;
    const bool one_row = f.loop == shape::real_row || f.loop == shape::real_rows || f.loop == shape::alone;
    if (one_row && has_lanes_of_four(size) && same_graph(b, make_lanes_body(size, f.sign))) return lane_use::quarters;
    if (same_graph(b, make_group_body(f, size, real_layout::side_by_side))) return lane_use::side_by_side;
    if (size % 4 != 0) return lane_use::unknown;
    if (same_graph(b, make_group_body(f, size, real_layout::pairs))) return lane_use::pairs_in_a_row;
    if (same_graph(b, make_group_body(f, size, real_layout::half_complex))) return lane_use::half_complex_in_a_row;
    return lane_use::unknown;
}

moved_numbers loaded(lane_use use, int size, int slot) {
    if (use == lane_use::rows) return number_of_rows(slot);
    if (use != lane_use::quarters) return of_four_rows(use, size, group_slot::unpack(slot));
    const auto [part, first] = lanes_slot::unpack(slot);
    if (part == lanes_part::one) return {{{0, first}, {0, first}, {0, first}, {0, first}}};
    if (part == lanes_part::two) return {{{0, first}, {0, first + 1}, {0, first}, {0, first + 1}}};
    return part == lanes_part::reversed ? reversed_numbers_of_row(0, first, 4) : numbers_of_row(0, first, 4);
}

moved_numbers stored(lane_use use, int size, int slot) {
    if (use == lane_use::rows) return number_of_rows(slot);
    if (use != lane_use::quarters) return of_four_rows(use, size, group_slot::unpack(slot));
    const auto [part, first] = lanes_slot::unpack(slot);
    switch (part) {
        case lanes_part::one:
            return numbers_of_row(0, first, 1);
        case lanes_part::two:
            return numbers_of_row(0, first, 2);
        case lanes_part::two_reversed:
            return reversed_numbers_of_row(0, first, 2);
        case lanes_part::reversed:
            return reversed_numbers_of_row(0, first, 4);
        default:
            return numbers_of_row(0, first, 4);
    }
}
