// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/loops/loops.h"

#include "kernels/generator/bodies/hermitian.h"
#include "kernels/generator/emit/names.h"
#include "kernels/generator/emit/print.h"
#include "kernels/generator/loops/address.h"

namespace generator {

namespace {

bool is_last(const form& f) { return f.loop == shape::hermitian_last; }

// Coefficient q of the row stands at a + q in_step, its result j at b + j out_step. Slot 2 q + 1 is the `upper` half of
// what two vectors hold of it, or its imaginary part.
void print_edge_body(text& out, const form& f, const body& b, int size, int inputs, const std::string& upper,
                     bool masked) {
    const strided_address input("a", "in_step", inputs), output("b", "out_step", size);
    access a;
    a.load = [&](int slot) {
        const std::string place = input.at(slot / 2) + (slot % 2 ? upper : "");
        return std::string("load(") + (masked ? slot % 2 ? "upper, " : "lower, " : "") + place + ")";
    };
    a.store = [&](int j, std::string v) {
        return std::string(is_last(f) ? "store(" : "store_complex(") + (masked ? "p, " : "") + output.at(j) + ", " + v +
               ")";
    };
    input.declare_bases(out);
    output.declare_bases(out);
    print_operations(out, b, a);
}

// One branch after the other.
void print_ones(text& out, const form& f, const body& b, int size, edge_row row) {
    out.line("using namespace ", f.in->reals->single, ";");
    print_constants(out, b);
    out.line("const float* a = row_in;");
    out.line("float* b = row_out;");
    out.line("for (int64_t i = 0; i < m; ++i, a += 2, b += ", is_last(f) ? 1 : 2, ") {");
    print_edge_body(out, f, b, size, edge_row_inputs(size, row), " + 1", false);
    out.line("}");
}

// A vector of branches at a time, under masks, or so that the last ones may have gone before in part: that does no harm
// between two arrays.
void print_vectors(text& out, const form& f, int size, edge_row row) {
    const vectors& v = *f.in->reals;
    const int lanes = v.lanes;
    const body b = make_edge_row_body({.size = size, .row = row, .in = &v});
    out.line("using namespace ", v.vocabulary, ";");
    print_constants(out, b);
    if (v.masked) {
        out.line("for (int64_t i = 0; i < m; i += ", lanes, ") {");
        out.line("const mask p = lanes_left(i, m), lower = lanes_left(2 * i, 2 * m), upper = lanes_left(2 * i + ",
                 lanes, ", 2 * m);");
    } else {
        out.line("for (int64_t done = 0; done < m; done += ", lanes, ") {");
        out.line("const int64_t i = done + ", lanes, " <= m ? done : m - ", lanes, ";");
    }
    out.line("const float* const a = base(row_in + 2 * i);");
    out.line("float* const b = base(row_out + ", is_last(f) ? "" : "2 * ", "i);");
    print_edge_body(out, f, b, size, edge_row_inputs(size, row), " + " + std::to_string(lanes), v.masked);
    out.line("}");
}

// A real row of all branches, from `row_in` to `row_out`.
void print_edge_row(text& out, const form& f, int size, edge_row row) {
    const body one = make_edge_row_body({.size = size, .row = row, .one = true});
    const std::string pool = pool_name(f, size, row == edge_row::zero ? "_zero" : "_middle");
    if (!one.graph.constants().empty()) {
        out.declare_pool({pool, false, one.graph.constants()});
        out.line("const float* const pool = ", pool, ";");
    }
    if (f.loop == shape::hermitian_first) return print_ones(out, f, one, size, row);
    const vectors& v = *f.in->reals;
    out.line("if (m ", v.masked ? "> 1" : ">= " + std::to_string(v.lanes), ") {");
    print_vectors(out, f, size, row);
    out.line("} else {");
    print_ones(out, f, one, size, row);
    out.line("}");
}

}  // namespace

void print_row_zero(text& out, const form& f, int size) {
    out.line("{");
    out.line("const float* const row_in = in;");
    out.line("float* const row_out = out;");
    print_edge_row(out, f, size, edge_row::zero);
    out.line("}");
}

void print_row_middle(text& out, const form& f, int size) {
    out.line("if (stage->has_middle) {");
    out.line("const float* const row_in = in + in_step / 2;");
    out.line("float* const row_out = out + ", size, " * (in_step / 2);");
    print_edge_row(out, f, size, edge_row::middle);
    out.line("}");
}

}  // namespace generator
