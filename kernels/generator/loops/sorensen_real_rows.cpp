// SPDX-License-Identifier: Apache-2.0
#include "kernels/generator/loops/sorensen_real_rows.h"

#include "kernels/generator/loops/address.h"
#include "kernels/generator/bodies/hermitian.h"
#include "kernels/generator/emit/print.h"

namespace generator {

namespace {

bool is_last(const form& f) { return f.loop == shape::sorensen_last; }

std::string real_pool_name(const form& f, int size, edge_row row) {
    return std::string("pool_") + f.name + (size < 10 ? "_n0" : "_n") + std::to_string(size) +
           (row == edge_row::zero ? "_zero" : "_middle");
}

edge_row_kind vector_kind(const form& f, int size, edge_row row) {
    return {.size = size, .row = row, .overwrites = is_sve(f)};
}
edge_row_kind one_kind(int size, edge_row row) { return {.size = size, .row = row, .one = true}; }

// Coefficient q of a real row stands at a + q in_step, its result j at b + j out_step.
void print_real_body(text& out, const form& f, const body& b, int size, int inputs, const std::string& mask) {
    const strided_address input("a", "in_step", inputs), output("b", "out_step", size);
    const bool one = mask == "one", sve = !one && is_sve(f);
    const char* upper = one ? " + 1" : sve ? " + 8" : " + 4";
    access a;
    a.load = [&](int slot) {
        const std::string place = input.at(slot / 2) + (slot % 2 ? upper : "");
        return std::string("load(") + (sve ? slot % 2 ? "upper, " : "lower, " : "") + place + ")";
    };
    a.store = [&](int j, std::string v) {
        return std::string(is_last(f) ? "store(" : "store_complex(") + (sve ? "p, " : "") + output.at(j) + ", " + v +
               ")";
    };
    input.declare_bases(out);
    output.declare_bases(out);
    print_operations(out, b, a);
}

// One branch after the other.
void print_real_ones(text& out, const form& f, int size, edge_row row) {
    const edge_row_kind kind = one_kind(size, row);
    const body b = make_edge_row_body(kind);
    const char* width = is_last(f) ? "1" : "2";
    out.line("using namespace real_one;");
    print_constants(out, b);
    out.line("const float* a = row_in;");
    out.line("float* b = row_out;");
    out.line("for (int64_t i = 0; i < m; ++i, a += 2, b += ", width, ") {");
    print_real_body(out, f, b, size, edge_row_inputs(size, row), "one");
    out.line("}");
}

// Eight branches at a time under masks (SVE), or four, of which the last may have gone before in part: that does no
// harm between two arrays.
void print_real_vectors(text& out, const form& f, int size, edge_row row) {
    const edge_row_kind kind = vector_kind(f, size, row);
    const body b = make_edge_row_body(kind);
    out.line("using namespace ", is_sve(f) ? "real_oct;" : "real_quad;");
    print_constants(out, b);
    if (is_sve(f)) {
        out.line("for (int64_t i = 0; i < m; i += 8) {");
        out.line(
            "const mask p = lanes_left(i, m), lower = lanes_left(2 * i, 2 * m), upper = lanes_left(2 * i + 8, 2 * m);");
    } else {
        out.line("for (int64_t done = 0; done < m; done += 4) {");
        out.line("const int64_t i = done + 4 <= m ? done : m - 4;");
    }
    out.line("const float* const a = base(row_in + 2 * i);");
    out.line("float* const b = base(row_out + ", is_last(f) ? "" : "2 * ", "i);");
    print_real_body(out, f, b, size, edge_row_inputs(size, row), is_sve(f) ? "p" : "");
    out.line("}");
}

// A real row of all branches, from `row_in` to `row_out`.
void print_real_row(text& out, const form& f, int size, edge_row row) {
    if (!make_edge_row_body(one_kind(size, row)).graph.constants().entries().empty())
        out.line("const float* const pool = ", real_pool_name(f, size, row), ";");
    if (f.loop == shape::sorensen_first) return print_real_ones(out, f, size, row);
    out.line(is_sve(f) ? "if (m > 1) {" : "if (m >= 4) {");
    print_real_vectors(out, f, size, row);
    out.line("} else {");
    print_real_ones(out, f, size, row);
    out.line("}");
}

}  // namespace

void print_row_zero(text& out, const form& f, int size) {
    out.line("{");
    out.line("const float* const row_in = in;");
    out.line("float* const row_out = out;");
    print_real_row(out, f, size, edge_row::zero);
    out.line("}");
}

void print_row_middle(text& out, const form& f, int size) {
    out.line("if (stage->has_middle) {");
    out.line("const float* const row_in = in + in_step / 2;");
    out.line("float* const row_out = out + ", size, " * (in_step / 2);");
    print_real_row(out, f, size, edge_row::middle);
    out.line("}");
}

std::vector<named_pool> sorensen_pools(const form& f, int size) {
    std::vector<named_pool> pools;
    for (edge_row row : {edge_row::zero, edge_row::middle}) {
        if (is_last(f) && row == edge_row::middle) continue;
        const body b = make_edge_row_body(one_kind(size, row));
        if (!b.graph.constants().entries().empty())
            pools.push_back({real_pool_name(f, size, row), false, b.graph.constants()});
    }
    return pools;
}

}  // namespace generator
