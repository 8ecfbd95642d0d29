// SPDX-License-Identifier: Apache-2.0
// A middle stage: row 0 of the butterflies without twiddles, then rows 1 to m - 1, each with its r - 1 twiddles, along
// the columns l < L. Input element j of a row stands L behind element j - 1, output value k stands m L behind k - 1.
#include "kernels/generator/loops/address.h"
#include "kernels/generator/loops/loop_shapes.h"

namespace generator {

namespace {

// Twiddles of a row stay in registers while there are enough; else a replicating load costs what a spill would.
bool twiddles_held(int size) { return size <= 10; }

access row_access(int size) {
    access a;
    a.twiddle = [](int j) { return "load_row(w + " + std::to_string(2 * (j - 1)) + ")"; };
    a.twiddle_type = "row_twiddle";
    a.twiddles_held = twiddles_held(size);
    return a;
}

void print_column(text& out, const body& b, int size, const std::string& mask) {
    const strided_address input("a", "in_step", size), output("b", "out_step", size);
    input.declare_bases(out);
    output.declare_bases(out);
    access a = row_access(size);
    a.load = [&](int j) { return "load(" + mask + input.at(j) + ")"; };
    a.store = [&](int k, std::string v) { return "store(" + mask + output.at(k) + ", " + v + ")"; };
    print_operations(out, b, a);
}

void print_row_constants(text& out, const body& b, int size) {
    print_constants(out, b);
    if (twiddles_held(size)) print_twiddles(out, b, row_access(size));
}

// All columns of one row, which starts at `row_in` and `row_out`.
void print_row(text& out, const form& f, const body& b, int size) {
    if (f.data == layout::batch) {
        out.line("using namespace ", full_vocabulary(f), ";");
        print_row_constants(out, b, size);
        out.line("const float* a = row_in;");
        out.line("float* b = row_out;");
        out.line("for (uint64_t l = 0; l < stage->rest; ++l, a += is, b += os) {");
        print_column(out, b, size, "");
        out.line("}");
        return;
    }
    const bool neon = f.isa == instruction_set::neon;
    if (neon) {
        out.line("int64_t l = 0;");
        out.line("{");
    }
    out.line("using namespace ", full_vocabulary(f), ";");
    print_row_constants(out, b, size);
    out.line(neon ? "for (; l + 4 <= in_step; l += 4) {" : "for (int64_t l = 0; l < in_step; l += 8) {");
    if (!neon) out.line("const mask p = lanes_left(l, in_step);");
    out.line("const float* const a = base(row_in + l);");
    out.line("float* const b = base(row_out + l);");
    print_column(out, b, size, neon ? "" : "p, ");
    out.line("}");
    if (!neon) return;
    out.line("}");
    out.line("if (l < in_step) {");
    out.line("using namespace neon_one;");
    print_row_constants(out, b, size);
    out.line("const float* const a = base(row_in + l);");
    out.line("float* const b = base(row_out + l);");
    print_column(out, b, size, "");
    out.line("}");
}

}  // namespace

void print_other_stage(text& out, const form& f, int size, int sign) {
    const bool sve = is_sve(f);
    const body first = make_complex_body({.size = size, .sign = sign, .where = {.overwrites = sve}});
    const body twiddled = make_complex_body({.size = size, .sign = sign, .twiddled = true, .where = {.overwrites = sve}});
    out.line("{");
    if (f.data == layout::contig)
        out.line("constexpr int64_t is = 2, os = 2;");
    else
        out.line("const int64_t is = 2 * stage->is, os = 2 * stage->os;");
    out.line("const int64_t in_step = int64_t(stage->rest) * is, row_step = int64_t(stage->rest) * os;");
    out.line("const int64_t out_step = int64_t(stage->done) * row_step;");
    strided_address("a", "in_step", size).declare_steps(out);
    strided_address("b", "out_step", size).declare_steps(out);
    out.line("const float* row_in = in;");
    out.line("float* row_out = out;");
    out.line("{");
    print_row(out, f, first, size);
    out.line("}");
    out.line("const float* w = stage->twiddles;");
    out.line("for (uint64_t i = 1; i < stage->done; ++i) {");
    out.line("row_in += ", size, " * in_step;");
    out.line("row_out += row_step;");
    out.line("w += ", 2 * (size - 1), ";");
    print_row(out, f, twiddled, size);
    out.line("}");
    out.line("}");
}

}  // namespace generator
