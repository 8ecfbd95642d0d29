// SPDX-License-Identifier: Apache-2.0
// First and middle stages: along the columns l < L. Element j of a first stage's column stands at j L + l on both
// sides; it may run in place. A middle stage has row 0 of the butterflies without twiddles, then rows 1 to m - 1, each
// with its r - 1 twiddles: input element j of a row stands L behind element j - 1, output value k stands m L behind k
// - 1. The strided first stage takes two columns at a time where its outputs are adjacent.
#include "kernels/generator/bodies/complex.h"
#include "kernels/generator/loops/address.h"
#include "kernels/generator/loops/loops.h"

namespace generator {

void print_along(text& out, const vectors& v, const std::string& length, const std::function<void()>& constants,
                 const std::function<void(const std::string& mask)>& turn) {
    const int floats = 2 * v.lanes;
    if (v.masked) {
        out.line("using namespace ", v.vocabulary, ";");
        constants();
        out.line("for (int64_t l = 0; l < ", length, "; l += ", floats, ") {");
        out.line("const mask p = lanes_left(l, ", length, ");");
        turn("p, ");
        out.line("}");
        return;
    }
    out.line("int64_t l = 0;");
    out.line("{");
    out.line("using namespace ", v.vocabulary, ";");
    constants();
    out.line("for (; l + ", floats, " <= ", length, "; l += ", floats, ") {");
    turn("");
    out.line("}");
    out.line("}");
    out.line("if (l < ", length, ") {");
    out.line("using namespace ", v.single, ";");
    constants();
    turn("");
    out.line("}");
}

void print_row_constants(text& out, const body& b, int size) {
    print_constants(out, b);
    access a;
    take_row_twiddles(a);
    if (are_twiddles_held(size)) print_twiddles(out, b, a);
}

namespace {

void declare_steps(text& out, int size) {
    strided_address("a", "in_step", size).declare_steps(out);
    strided_address("b", "out_step", size).declare_steps(out);
}

// Whether the next stage's rows may stand in blocks.
bool knows_blocks(const form& f) { return f.in->masked && f.data == layout::contig; }

// Of output that may be such rows: out_step leads from row to row of a block, `length` in every case to the row behind.
void declare_steps_of_rows(text& out, int size) {
    for (int j = 2; j < size && j <= 8; ++j)
        out.line("const int64_t out_step", j, " = ",
                 j < 4    ? std::to_string(j) + " * out_step"
                 : j == 4 ? "4 * length"
                 : j < 8  ? "out_step4 + out_step" + (j == 5 ? std::string() : std::to_string(j - 4))
                          : "2 * out_step4",
                 ";");
}

// Radices of which so many values don't fit the registers finish their outputs in two parts and load inputs for each.
bool is_in_parts(const form& f, int size) { return f.in->masked && f.data == layout::contig && size == 32; }

surroundings surroundings_in_parts(const form& f) { return {.in = f.in, .loads_again = true, .output_parts = 2}; }

// A column from a to b; `mask` is what loads and stores begin with. Of two columns each is loaded at its own place,
// with `apart` behind the address, and they are stored side by side.
void print_column(text& out, const body& b, int size, const std::string& mask, const std::string& apart) {
    const strided_address input("a", "in_step", size), output("b", "out_step", size);
    input.declare_bases(out);
    output.declare_bases(out);
    access a;
    a.load = [&](int j) { return "load(" + mask + input.at(j) + apart + ")"; };
    a.store = [&](int k, std::string v) { return "store(" + mask + output.at(k) + ", " + v + ")"; };
    take_row_twiddles(a);
    a.twiddles_held = are_twiddles_held(size);
    print_operations(out, b, a);
}

// All columns of the row that starts at `from` and `to`.
void print_row(text& out, const form& f, const body& b, int size, const std::string& from, const std::string& to) {
    const auto constants = [&] { print_row_constants(out, b, size); };
    if (f.data == layout::contig) {
        return print_along(out, *f.in, "length", constants, [&](const std::string& mask) {
            out.line("const float* const a = base(", from, " + l);");
            out.line("float* const b = base(", to, knows_blocks(f) ? " + l * columns_apart);" : " + l);");
            print_column(out, b, size, mask, "");
        });
    }
    out.line("const float* a = ", from, ";");
    out.line("float* b = ", to, ";");
    out.line("uint64_t l = 0;");
    const bool by_twos = f.data == layout::strided && f.in->lanes == 2;
    if (by_twos) {
        out.line("if (os == 2) {");
        out.line("using namespace ", f.in->vocabulary, ";");
        constants();
        out.line("for (; l + 2 <= stage->rest; l += 2, a += 2 * is, b += 4) {");
        print_column(out, b, size, "", ", is");
        out.line("}");
        out.line("}");
    }
    out.line("using namespace ", by_twos ? f.in->single : f.in->vocabulary, ";");
    constants();
    out.line("for (; l < stage->rest; ++l, a += is, b += os) {");
    print_column(out, b, size, "", "");
    out.line("}");
}

}  // namespace

void print_first_stage(text& out, const form& f, int size, int sign) {
    out.line("{");
    if (f.data != layout::contig) {
        out.line("const int64_t is = 2 * stage->is, os = 2 * stage->os;");
        out.line("const int64_t in_step = int64_t(stage->rest) * is, out_step = int64_t(stage->rest) * os;");
        declare_steps(out, size);
    } else {
        out.line("const int64_t length = 2 * int64_t(stage->rest), in_step = length;");
        strided_address("a", "in_step", size).declare_steps(out);
        out.line("const int64_t out_step = ", knows_blocks(f) ? "is_in_blocks(stage) ? 8 : length;" : "length;");
        if (knows_blocks(f)) out.line("const int64_t columns_apart = is_in_blocks(stage) ? 4 : 1;");
        declare_steps_of_rows(out, size);
    }
    if (is_in_parts(f, size)) {
        out.line("if (out + ", size, " * length <= in || in + ", size, " * length <= out) {");
        print_row(out, f, make_complex_body({.size = size, .sign = sign, .where = surroundings_in_parts(f)}), size,
                  "in", "out");
        out.line("return;");
        out.line("}");
    }
    const surroundings where = {.in = f.in, .loads_first = true};
    print_row(out, f, make_complex_body({.size = size, .sign = sign, .where = where}), size, "in", "out");
    out.line("}");
}

void print_other_stage(text& out, const form& f, int size, int sign) {
    const surroundings where = {.in = f.in, .loads_again = true};
    const surroundings row_zero = is_in_parts(f, size) ? surroundings_in_parts(f) : where;
    const body first = make_complex_body({.size = size, .sign = sign, .where = row_zero});
    const body twiddled = make_complex_body({.size = size, .sign = sign, .twiddled = true, .where = where});
    out.line("{");
    if (f.data == layout::contig)
        out.line("constexpr int64_t is = 2, os = 2;");
    else
        out.line("const int64_t is = 2 * stage->is, os = 2 * stage->os;");
    out.line("const int64_t in_step = int64_t(stage->rest) * is, row_step = int64_t(stage->rest) * os;");
    out.line("const int64_t out_step = int64_t(stage->done) * row_step;");
    if (f.data == layout::contig) out.line("const int64_t length = in_step;");
    if (knows_blocks(f)) {
        out.line("const int64_t columns_apart = is_in_blocks(stage) ? 4 : 1;");
        out.line("const int64_t step_in_block = is_in_blocks(stage) ? 8 : row_step;");
    }
    declare_steps(out, size);
    out.line("const float* row_in = in;");
    out.line("float* row_out = out;");
    out.line("{");
    print_row(out, f, first, size, "row_in", "row_out");
    out.line("}");
    out.line("const float* w = stage->twiddles;");
    out.line("for (uint64_t i = 1; i < stage->done; ++i) {");
    out.line("row_in += ", size, " * in_step;");
    if (knows_blocks(f))
        out.line("row_out = out + int64_t(i / 4 * 4) * row_step + int64_t(i % 4) * step_in_block;");
    else
        out.line("row_out += row_step;");
    out.line("w += ", 2 * (size - 1), ";");
    print_row(out, f, twiddled, size, "row_in", "row_out");
    out.line("}");
    out.line("}");
}

}  // namespace generator
