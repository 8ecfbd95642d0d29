// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/loops/real_places.h"

#include "kernels/generator/bodies/groups_of_four.h"
#include "kernels/generator/formulas/lanes_of_four.h"

namespace generator {

namespace {

constexpr int lanes = 4;

std::string number(int i) { return std::to_string(i); }

// The places of element j and of a number of the spectrum, by the offsets in the tables.
std::string element(int j) { return "a" + number(j % 2) + " + s0[" + number(j / 2) + "]"; }
std::string coefficient_part(int slot) { return (slot % 2 ? "b1 + s2[" : "b0 + s1[") + number(slot / 2) + "]"; }

bool is_reversed(lanes_part part) { return part == lanes_part::reversed || part == lanes_part::two_reversed; }

int numbers_in(lanes_part part) {
    if (part == lanes_part::one) return 1;
    return part == lanes_part::two || part == lanes_part::two_reversed ? 2 : lanes;
}

bool is_two(group_part part) { return part == group_part::two || part == group_part::spectrum_two; }

}  // namespace

access at_offsets(const form& f) {
    access a;
    auto from = f.sign < 0 ? element : coefficient_part, to = f.sign < 0 ? coefficient_part : element;
    if (f.loop == shape::cosine_rows) {
        from = [](int j) { return "in + in_offsets[" + number(j) + "]"; };
        to = [](int k) { return "out + out_offsets[" + number(k) + "]"; };
    }
    a.load = [from](int slot) { return "load(" + from(slot) + ")"; };
    a.store = [to](int slot, std::string v) { return "store(" + to(slot) + ", " + v + ")"; };
    return a;
}

access in_a_row(const form& f, int size) {
    const auto in_spectrum = [spectrum = f.spectrum, size](int slot) {
        if (spectrum != row_spectrum::half_complex) return slot;
        return slot % 2 ? size - slot / 2 : slot / 2;
    };
    const bool forward = f.sign < 0;
    access a;
    a.load = [=](int slot) { return "load(in + " + number(forward ? slot : in_spectrum(slot)) + ")"; };
    a.store = [=](int slot, std::string v) {
        return "store(out + " + number(forward ? in_spectrum(slot) : slot) + ", " + v + ")";
    };
    return a;
}

access at_offsets_apart(const form& f) {
    const auto from = f.sign < 0 ? element : coefficient_part, to = f.sign < 0 ? coefficient_part : element;
    access a;
    a.load = [from](int slot) { return "load_apart(" + from(slot) + ", d0)"; };
    a.store = [to](int slot, std::string v) { return "store_apart(" + to(slot) + ", d1, " + v + ")"; };
    return a;
}

access in_lanes(real_layout layout, int size) {
    const auto in_one_place = [=](lanes_part part) {
        return layout == real_layout::pairs || (part == lanes_part::elements && layout != real_layout::anywhere);
    };
    const auto places = [=](lanes_slot s) {
        const bool elements = s.part == lanes_part::elements;
        if (in_one_place(s.part)) {
            // Rising numbers begin behind coefficient 0: a pair of vectors needs an even distance from its base.
            if (s.part == lanes_part::numbers) return "b_rising + " + number(s.first - 2);
            return (elements ? "a0 + " : "b0 + ") + number(s.first);
        }
        const auto place = [=](int slot) {
            if (elements) return element(slot);
            if (layout == real_layout::anywhere) return coefficient_part(slot);
            return "b0 + " + number(slot % 2 ? size - slot / 2 : slot / 2);
        };
        const int count = numbers_in(s.part);
        std::string list;
        for (int i = 0; i < count; ++i)
            list += (i ? ", " : "") + place(s.first + (is_reversed(s.part) ? count - 1 - i : i));
        return list;
    };
    const auto word = [=](std::string what, lanes_part part, const char* one, const char* two) {
        if (part == lanes_part::one) what += one;
        if (numbers_in(part) == 2) what += two;
        return what + (is_reversed(part) && in_one_place(part) ? "_reversed(" : "(");
    };
    access a;
    a.load = [=](int slot) {
        const lanes_slot s = lanes_slot::unpack(slot);
        return word("load", s.part, "_same", "_both") + places(s) + ")";
    };
    a.store = [=](int slot, std::string v) {
        const lanes_slot s = lanes_slot::unpack(slot);
        return word("store", s.part, "_lowest", "_low") + places(s) + ", " + v + ")";
    };
    return a;
}

access in_groups(const form& f) {
    const std::string d[] = {f.sign < 0 ? "d0" : "d1", f.sign < 0 ? "d1" : "d0"};
    const auto place = [d](group_slot s) {
        const bool spectrum = s.part != group_part::block && s.part != group_part::two;
        switch (s.part) {
            case group_part::elements:
                return element(s.first);
            case group_part::coefficients:
                return coefficient_part(2 * s.first) + " + " + number(2 * s.row);
            case group_part::adjacent_reals:
                return coefficient_part(2 * s.first) + ", 2";
            case group_part::spectrum_one:
                return "b0 + " + number(s.first) + ", " + d[1];
            case group_part::one:
                return "a0 + " + number(s.first) + ", " + d[0];
            case group_part::zeros:
                return std::string();
            default:
                return (spectrum ? "b0 + " : "a0 + ") + number(s.row) + " * " + d[spectrum] + " + " + number(s.first) +
                       (is_two(s.part) ? ", " + d[spectrum] : "");
        }
    };
    const auto word = [](group_part part) {
        if (part == group_part::adjacent_reals || part == group_part::spectrum_one || part == group_part::one)
            return "_apart(";
        if (part == group_part::zeros) return "_zeros(";
        if (is_two(part)) return "_two_rows(";
        return part == group_part::spectrum_three ? "_three(" : "(";
    };
    access a;
    a.load = [=](int slot) {
        const group_slot s = group_slot::unpack(slot);
        return std::string("load") + word(s.part) + place(s) + ")";
    };
    a.store = [=](int slot, std::string v) {
        const group_slot s = group_slot::unpack(slot);
        return std::string("store") + word(s.part) + place(s) + ", " + v + ")";
    };
    return a;
}

}  // namespace generator
