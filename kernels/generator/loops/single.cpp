// SPDX-License-Identifier: Apache-2.0
// One transform, or one in every lane: no loop, everything is read before the first store. Transforms whose lanes stand
// anywhere are tested at entry: where elements are adjacent on one side and transforms on the other, whole vectors are
// loaded and stored.
#include <algorithm>

#include "kernels/generator/bodies/complex.h"
#include "kernels/generator/bodies/rows.h"
#include "kernels/generator/loops/address.h"
#include "kernels/generator/loops/loops.h"

namespace generator {

namespace {

void print_contiguous(text& out, const body& b) {
    access a;
    a.load = [](int j) { return "load(in + " + std::to_string(2 * j) + ")"; };
    a.store = [](int k, std::string v) { return "store(out + " + std::to_string(2 * k) + ", " + v + ")"; };
    print_constants(out, b);
    print_operations(out, b, a);
}

// Elements at strides, with `lane_in` and `lane_out` behind their addresses, or vectors of two rows.
void print_strided(text& out, const body& b, int size, const std::string& lane_in, const std::string& lane_out) {
    const strided_address input("in", "is", size), output("out", "os", size);
    access a;
    const auto has_elements = [&](op what) {
        return std::ranges::any_of(b.graph.nodes(),
                                   [&](const node& v) { return v.what == what && !row_slot::is_one(v.slot); });
    };
    if (has_elements(op::load)) input.declare_bases(out);
    if (has_elements(op::store)) a.before_stores = [&](text& bases) { output.declare_bases(bases); };
    a.load = [&](int j) {
        return "load(" + (row_slot::is_one(j) ? row_address("in", j, size) : input.at(j) + lane_in) + ")";
    };
    a.store = [&](int k, std::string v) {
        return "store(" + (row_slot::is_one(k) ? row_address("out", k, size) : output.at(k) + lane_out) + ", " + v +
               ")";
    };
    print_constants(out, b);
    print_operations(out, b, a);
}

void print_turned_rows(text& out, const form& f, int size, int sign) {
    out.line("if (is == 2 && odist == 1) {");
    out.line("const float* const in_second = in + 2 * idist;");
    print_strided(out, make_turned_rows_body(size, sign, *f.in, side::input), size, "", "");
    out.line("return;");
    out.line("}");
    out.line("if (os == 2 && idist == 1) {");
    out.line("float* const out_second = out + 2 * odist;");
    print_strided(out, make_turned_rows_body(size, sign, *f.in, side::output), size, "", "");
    out.line("return;");
    out.line("}");
}

}  // namespace

void print_single(text& out, const form& f, int size, int sign) {
    const surroundings where = {.in = f.in, .loads_first = true, .once = true, .alone = f.loop == shape::direct};
    const body b = make_complex_body({.size = size, .sign = sign, .where = where});
    const bool apart = f.loop == shape::assemble;
    out.line("{");
    out.line("using namespace ", f.in->vocabulary, ";");
    if (f.data == layout::contig) {
        print_contiguous(out, b);
    } else {
        out.line("is *= 2;  // from here on in floats");
        out.line("os *= 2;");
        strided_address("in", "is", size).declare_steps(out);
        strided_address("out", "os", size).declare_steps(out);
        if (apart && has_turned_rows(size)) print_turned_rows(out, f, size, sign);
        print_strided(out, b, size, apart ? ", 2 * idist" : "", apart ? ", 2 * odist" : "");
    }
    out.line("}");
}

}  // namespace generator
